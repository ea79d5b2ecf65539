#ifndef KLAYOUTPEER_H
#define KLAYOUTPEER_H

#include <QString>

// The peer: Debian's klayout on the same rectangles as GDSII, timed inside its own process by klayoutpeer.py.
struct KlayoutFigures {
  // Nanoseconds a rectangle: writing the file flushed to disk, loading it, and visiting every shape of what was loaded.
  double writeNs = 0, loadNs = 0, walkNs = 0;
  qint64 fileBytes = 0;
};

// Whether the program is there.
bool hasKlayout();

// One run over `count` rectangles with its file in `folder`. Raises std::runtime_error when the program fails or its
// result is not `count` rectangles.
KlayoutFigures runKlayout(int count, const QString &folder);

#endif
