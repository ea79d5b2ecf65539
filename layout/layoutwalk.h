#ifndef LAYOUTWALK_H
#define LAYOUTWALK_H

#include <memory>
#include <unordered_set>
#include <vector>

#include <QString>
#include <QStringList>

#include "buffers.h"
#include "directsignal.h"
#include "evaluationfaults.h"
#include "headermap.h"
#include "mastertable.h"
#include "oapluginmain.h"
#include "shapesender.h"

// One walk over a design and everything under it, depth first: a master is sent before the first reference to it. The
// cells that are being sent form a stack in memory, not a chain of calls, so the depth of a hierarchy is limited by
// memory alone.
//
// The header that all instances of one master share inside a block leads to what the walk knows of that master, so each
// further instance costs its two signals and no look-up by name.
class LayoutWalk {
public:
  // `currentLib` is the library that is being read: the host's names of its cells are the bare ones. `faults`
  // is what went wrong in evaluators since before the design to send was opened; it is told with the cells.
  LayoutWalk(oaPlugInMain &host, const QString &currentLib, const EvaluationFaults &faults);

  // The host's name of a design in this walk.
  QString cellNameOf(oa::oaDesign *design, const QStringList &cellData) const;
  // Sends an open design and returns the host's name of it.
  QString send(oa::oaDesign *design, const QStringList &cellData);

private:
  // A cell that is being sent.
  struct Cell {
    Cell(oa::oaDesign *cellDesign, Master *cellMaster, oa::oaBlock *block);

    oa::oaDesign *design;
    // Null for the top design, which its caller closes.
    Master *master;
    oa::oaIter<oa::oaInst> insts;
    oa::oaIter<oa::oaVia> vias;
    bool hasSentInsts = false;
    // The reference that follows as soon as the cells above this one on the stack are complete.
    oa::oaRef *waiting = nullptr;
    Master *waitingMaster = nullptr;
    HeaderMap placedByHeader;
  };

  void begin(oa::oaDesign *design, Master *master, const QString &cellName, const QStringList &cellData);
  void advance();
  void end();
  // These return whether a cell has to be sent first; it is on the stack then, and the reference waits.
  bool sendInst(Cell &cell, oa::oaInst *inst);
  bool sendVia(Cell &cell, oa::oaVia *via);
  bool descend(Cell &cell, oa::oaRef *ref, const Placed &placed);
  void sendReference(oa::oaRef *ref, const Master &master);
  void printConnectivity(oa::oaDesign *design);

  template <typename Find> const Placed &placedOf(Cell &cell, const oa::oaObject *header, Find find);
  void tellFirstMeeting(Master &master);
  void report(const Master &master);
  void reportMissingContent(oa::oaDesign *design);
  void reportIncompleteContent(oa::oaDesign *design);

  oaPlugInMain &host_;
  const DirectSignal<QString> existCell_;
  const DirectSignal<QString, QPoint, QString, QString> addCellRef_;
  const EvaluationFaults &faults_;
  MasterTable masters_;
  ShapeSender shapes_;
  TextBuffer name_;
  oa::oaString nameText_;
  std::vector<std::unique_ptr<Cell>> cells_;
  std::unordered_set<const oa::oaDesign *> designsBeingSent_;
};

#endif
