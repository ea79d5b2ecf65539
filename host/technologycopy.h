#ifndef TECHNOLOGYCOPY_H
#define TECHNOLOGYCOPY_H

#include <QString>

class PluginSession;

// What the writing operations need of a technology and do not make themselves. It is made by the plug-in's Tcl
// operations. Both throw HostError when OpenAccess refuses.

// Gives a new library a technology with the units, physical layers and purposes of another library's. Nothing happens
// when that one has no technology.
void copyTechnology(PluginSession &session, const QString &source, const QString &lib);

struct CustomViaDefinition {
  QString name;
  // The master.
  QString lib;
  QString cell;
  QString view;
  // Numbers.
  QString layer1;
  QString layer2;
};

// Enters the definition into the technology of a library, unless it has one of that name, or uses the technology of
// another library.
void defineCustomVia(PluginSession &session, const CustomViaDefinition &definition, const QString &lib);

#endif
