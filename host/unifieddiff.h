#ifndef UNIFIEDDIFF_H
#define UNIFIEDDIFF_H

#include <QByteArray>

struct DiffText {
  QByteArray name; // as the first two lines of the difference show it
  QByteArray lines;
};

// The difference of two texts in the unified format, with three lines of context and, behind the numbers of each hunk,
// the last line before it that is not indented. Empty for equal texts.
//
// The smallest difference as long as few thousand lines differ; beyond that a correct one that is found in reasonable
// time. Lines are compared byte by byte. Time grows with the length of the texts times the number of differences that
// are no plain insertions of new lines; memory with the length of the texts. After E. W. Myers, "An O(ND) Difference
// Algorithm and Its Variations", Algorithmica 1 (1986), in the variant that needs linear space.
QByteArray unifiedDiff(const DiffText &before, const DiffText &after);

#endif
