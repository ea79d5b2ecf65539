#ifndef SCHEMATICCOPYCHECK_H
#define SCHEMATICCOPYCHECK_H

#include "importreport.h"

#include <QString>

struct ViewNetlist;

// Says how a written copy of a schematic or symbol differs from what it was copied from. `where` is the copy's name.

// Differences of the connections, each a problem: nets and their names, what leads outside, terminals of devices. A net
// that is only called otherwise is one difference. At most 20 are told, the rest is counted.
void compareNetlists(const ViewNetlist &source, const ViewNetlist &copy, const QString &where, ImportReport &report);

// Whether two dumps are equal but for the names in their headers.
bool isSameContent(const QString &dump, const QString &other);

// Other differences of the dumps: a notice with the number of lines that the copy lacks. Nothing when one dump is
// empty.
void compareDumps(const QString &sourceDump, const QString &copyDump, const QString &where, ImportReport &report);

#endif
