#ifndef USERMESSAGE_H
#define USERMESSAGE_H

#include <QString>

// Prints "oahost: <message>" on standard error, clear of a progress bar that stands there, with the middle of very long
// names left out. May be called from any thread.
void tellUser(const QString &message);

// How messages name a cell view: lib/cell/view.
QString cellViewName(const QString &lib, const QString &cell, const QString &view);

// "1 path", "2 paths".
QString counted(quint64 count, const QString &singular, const QString &plural = QString());

#endif
