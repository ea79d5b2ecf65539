#ifndef COMMANDVALUES_H
#define COMMANDVALUES_H

#include <QString>

#include <string>

// Checks of what the command line names. Each throws HostError with the value and what is wrong with it, before
// anything is opened or made.

// A library, cell or view name. Libraries hold Latin-1 text only; what is outside it would reach another name.
QString nameFromCommandLine(const std::string &text);

// A directory that the plug-in is given, as an absolute path. The plug-in takes paths in Latin-1: one that the system
// writes in other bytes, such as UTF-8, would reach another directory.
QString libraryPathFromCommandLine(const std::string &text);

// Refuses an output file that exists and is a directory, device, pipe or socket: renaming a new file over it would
// replace it by an ordinary file.
void requireOrdinaryOutput(const QString &fileName);

#endif
