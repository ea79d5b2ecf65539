#ifndef TCLLIST_H
#define TCLLIST_H

#include <QString>
#include <QStringList>

class PluginSession;

// Scripts that ask the plug-in for what its signals do not tell. The Tcl binding takes texts as the plug-in does, so a
// name from a signal is found again, and equal to the one that a script gives.

// Runs the script in an interpreter of its own, with `arguments` in the list variable `arguments`; gives the elements
// of the list that it returns. Throws HostError, with the plug-in's message behind `what`, when the script fails.
QStringList runTclScript(PluginSession &session, const char *script, const QStringList &arguments, const QString &what);

// The elements of a list inside another one. Throws HostError for a text that is no list.
QStringList elementsOf(const QString &list);

#endif
