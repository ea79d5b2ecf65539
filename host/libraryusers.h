#ifndef LIBRARYUSERS_H
#define LIBRARYUSERS_H

#include <QString>

// Which other processes use a library. Its access is a lock on the file .oalib, the right to edit a view is one on a
// file that ends in .cdslck; both are flock() locks. Looking changes nothing.

// Waits until nobody writes to the library in that directory, `timeoutMs` at most. True also when that cannot be told.
bool waitForLibrary(const QString &directory, int timeoutMs);
// "process 4711 (tclsh8.6)" for one that has access to the library, of those on this machine; empty when none is found.
QString accessHolder(const QString &directory);
// Who edits a view of the library, as its lock file says: "cell/view: login ann, host pc7, process 4711, ...". Empty
// when nobody does. An empty `view` stands for all views of the cell, and for the cell's own data.
QString viewEditor(const QString &directory, const QString &cell, const QString &view);

#endif
