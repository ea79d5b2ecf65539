#ifndef XSCHEMREPORT_H
#define XSCHEMREPORT_H

#include "importreport.h"
#include "xschemproperties.h"

#include <QString>
#include <QStringList>

// What an import from xschem tells about attributes and characters that it cannot keep.

// A notice for each attribute that is not among those that `meant` lists. `object` is "a pin", "a line", ...
void tellLeftOutAttributes(const XschemProperties &properties, const QStringList &meant, const QString &object,
                           const QString &place, ImportReport &report);

// A problem when a text holds characters beyond Latin-1: the library has "?" in their place.
void tellLostCharacters(const QString &text, const QString &place, ImportReport &report);

// The name with "_u03A9" in place of a character beyond Latin-1, which is told: by its code, so that different names
// stay different and one name is the same in all files.
QString latin1Name(const QString &name, const QString &place, ImportReport &report);
QString latin1Name(const QString &name);

#endif
