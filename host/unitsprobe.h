#ifndef UNITSPROBE_H
#define UNITSPROBE_H

#include <QString>

class PluginSession;

struct LayoutUnits {
  double userUnitsPerDbu = 0;
  double metresPerDbu = 0;
};

// The units of a library's layouts, as setUnits() reports them for the first cell that has the view and tells them; 0
// when there is none. The interface has no other way to ask. Masters are not read.
LayoutUnits probeUnits(PluginSession &session, const QString &lib, const QString &view);
// The database unit alone.
double probeMetresPerDbu(PluginSession &session, const QString &lib, const QString &view);

#endif
