#ifndef UNITSPROBE_H
#define UNITSPROBE_H

#include <QString>

class PluginSession;

// The database unit of a library's layouts in metres, as setUnits() reports it for the first cell that has the view; 0
// when there is none. The interface has no other way to ask. Masters are not read.
double probeMetresPerDbu(PluginSession &session, const QString &lib, const QString &view);

#endif
