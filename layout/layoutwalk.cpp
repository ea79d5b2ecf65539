#include "layoutwalk.h"

#include <cstdio>

using namespace oa;

namespace {

// Most faults name the design themselves.
QString withFault(const QString &path, const QString &fault) {
  if (fault.isEmpty()) {
    return path;
  }
  return fault.contains(path) ? fault : path + QLatin1String(": ") + fault;
}

QString recursiveReference() { return oaPlugInMain::tr("recursive cell reference, the cell is not read again"); }

} // namespace

LayoutWalk::Cell::Cell(oaDesign *cellDesign, Master *cellMaster, oaBlock *block)
    : design(cellDesign), master(cellMaster), insts(block->getInsts()), vias(block->getVias()) {}

LayoutWalk::LayoutWalk(oaPlugInMain &host, const QString &currentLib, const EvaluationFaults &faults)
    : host_(host), existCell_(host, "existCell(QString)"),
      addCellRef_(host, "addCellRef(QString,QPoint,QString,QString)"), faults_(faults), masters_(currentLib),
      shapes_(host) {}

QString LayoutWalk::cellNameOf(oaDesign *design, const QStringList &cellData) const {
  return masters_.cellNameOf(design, cellData);
}

QString LayoutWalk::send(oaDesign *design, const QStringList &cellData) {
  QString cellName = cellNameOf(design, cellData);
  masters_.claimName(cellName, design);
  begin(design, nullptr, cellName, cellData);
  while (!cells_.empty()) {
    advance();
  }
  return cellName;
}

// Sends what belongs to the cell itself and puts it on the stack for its references; a cell without content ends at
// once.
void LayoutWalk::begin(oaDesign *design, Master *master, const QString &cellName, const QStringList &cellData) {
  emit host_.addCell(cellName);
  if (oaConvert::debug) {
    std::printf("load cell %s\n", static_cast<const oaChar *>(oaConvert::toOaString(cellName)));
  }
  host_.sendCellData(design);
  for (int i = 0; i + 1 < cellData.size(); i += 2) {
    emit host_.addCellData(cellData.at(i), cellData.at(i + 1));
  }
  oaBlock *block = design->getTopBlock();
  if (!block) {
    reportMissingContent(design);
    emit host_.endCell();
    return;
  }
  reportIncompleteContent(design);
  shapes_.sendShapes(block);
  shapes_.sendPinLabels(block);
  cells_.emplace_back(new Cell(design, master, block));
  designsBeingSent_.insert(design);
  masters_.begin(design);
}

// Carries on with the references of the cell on top of the stack until another cell comes on top or this one is
// complete.
void LayoutWalk::advance() {
  Cell &cell = *cells_.back();
  if (oaRef *ref = cell.waiting) {
    cell.waiting = nullptr;
    sendReference(ref, *cell.waitingMaster);
  }
  if (!cell.hasSentInsts) {
    while (oaInst *inst = cell.insts.getNext()) {
      if (sendInst(cell, inst)) {
        return;
      }
    }
    cell.hasSentInsts = true;
    if (oaConvert::debug) {
      printConnectivity(cell.design);
    }
  }
  while (oaVia *via = cell.vias.getNext()) {
    if (sendVia(cell, via)) {
      return;
    }
  }
  end();
}

void LayoutWalk::end() {
  emit host_.endCell();
  const Cell &cell = *cells_.back();
  designsBeingSent_.erase(cell.design);
  masters_.end();
  Master *master = cell.master;
  cells_.pop_back();
  if (master) {
    masters_.released(*master);
  }
}

// The entry of a header; `find` looks the master up when the block meets this header for the first time.
template <typename Find> const Placed &LayoutWalk::placedOf(Cell &cell, const oaObject *header, Find find) {
  if (const Placed *known = cell.placedByHeader.find(header)) {
    return *known;
  }
  Master *master = find();
  tellFirstMeeting(*master);
  const bool isRecursive = master->design && designsBeingSent_.count(master->design) != 0;
  if (isRecursive) {
    emit host_.reportError(recursiveReference(), 1,
                           oaPlugInMain::tr("%1 places %2, which contains it")
                               .arg(MasterTable::pathOf(cell.design), MasterTable::pathOf(master->design)));
  }
  return cell.placedByHeader.insert(header, {master, isRecursive});
}

// What is told of a master once, not with each reference.
void LayoutWalk::tellFirstMeeting(Master &master) {
  if (master.isRefused() && !master.detail.isEmpty()) {
    emit host_.reportError(master.fault == Master::kEndlessVariants
                               ? recursiveReference()
                               : oaPlugInMain::tr("too many variants of parametric cells place each other, the rest is "
                                                  "left out"),
                           1, master.detail);
  }
  if (!master.clash.isEmpty()) {
    emit host_.reportError(oaPlugInMain::tr("different cells have the same name, the first is shown for all"), 2,
                           master.clash);
    master.clash.clear();
  }
}

bool LayoutWalk::sendInst(Cell &cell, oaInst *inst) {
  if (oaConvert::debug) {
    oaString lib;
    oaString name;
    oaString view;
    oaParamArray params;
    inst->getLibName(oaConvert::ns, lib);
    inst->getCellName(oaConvert::ns, name);
    inst->getViewName(oaConvert::ns, view);
    inst->getParams(params);
    std::printf("need cell %s %s %s %d\n", static_cast<const oaChar *>(lib), static_cast<const oaChar *>(name),
                static_cast<const oaChar *>(view), int(params.getNumElements()));
  }
  return descend(cell, inst, placedOf(cell, inst->getHeader(), [&] { return masters_.find(inst); }));
}

bool LayoutWalk::sendVia(Cell &cell, oaVia *via) {
  if (oaConvert::debug) {
    via->getViaDefName(nameText_);
    std::printf("via: %s,", static_cast<const oaChar *>(nameText_));
  }
  return descend(cell, via, placedOf(cell, via->getHeader(), [&] { return masters_.find(via, cell.design); }));
}

// Asks the host whether it holds the master. If not, the master goes onto the stack and true is returned; otherwise the
// reference is sent at once.
bool LayoutWalk::descend(Cell &cell, oaRef *ref, const Placed &placed) {
  Master &master = *placed.master;
  if (master.fault != Master::kNone) {
    report(master);
    return false;
  }
  emit existCell_(master.cellName);
  if (!host_.cellExistsReply && !placed.isRecursive) {
    if (!master.design && !masters_.reopen(master, ref, cell.design)) {
      report(master);
      return false;
    }
    cell.waiting = ref;
    cell.waitingMaster = &master;
    begin(master.design, &master, master.cellName, master.cellData);
    return true;
  }
  sendReference(ref, master);
  if (!placed.isRecursive) {
    masters_.released(master);
  }
  return false;
}

void LayoutWalk::sendReference(oaRef *ref, const Master &master) {
  oaTransform xform;
  ref->getTransform(xform);
  const QPoint at(xform.xOffset(), xform.yOffset());
  const QString &trans = shapes_.transOf(xform.orient());
  const oaTypeEnum type = ref->getType();
  if (type == oacStdViaType || type == oacCustomViaType) {
    emit addCellRef_(master.cellName, at, trans, master.viaDefName);
    return;
  }
  static_cast<oaInst *>(ref)->getName(oaConvert::ns, nameText_);
  const QString &name = name_.set(nameText_);
  if (type == oacArrayInstType) {
    const oaArrayInst *array = static_cast<oaArrayInst *>(ref);
    emit host_.addCellRefArray(master.cellName, at, array->getDX(), array->getDY(), int(array->getNumCols()),
                               int(array->getNumRows()), trans, name);
  } else {
    emit addCellRef_(master.cellName, at, trans, name);
  }
}

void LayoutWalk::report(const Master &master) {
  QString message;
  switch (master.fault) {
  case Master::kNone:
  case Master::kEndlessVariants: // told when it was met
  case Master::kTooManyVariants:
    return;
  case Master::kComponentView:
    if (oaConvert::debug) {
      std::printf("TarnwickdaleComponent cannot loaded into Tarnwickdale window");
    }
    message = oaPlugInMain::tr("schematic devices cannot be loaded into layout window");
    break;
  case Master::kNoLibrary:
    message = oaPlugInMain::tr("library not found");
    break;
  case Master::kNoCell:
    message = oaPlugInMain::tr("cell not found");
    break;
  case Master::kNoStdViaDef:
    message = oaPlugInMain::tr("std via definition not found");
    break;
  case Master::kNoCustomVia:
    message = oaPlugInMain::tr("custom via not found");
    break;
  }
  emit host_.reportError(message, 1, master.detail);
}

// A parametric cell that could not be evaluated has no block; its evaluator is what the user is missing, unless it says
// itself what went wrong.
void LayoutWalk::reportMissingContent(oaDesign *design) {
  const QString path = MasterTable::pathOf(design);
  emit host_.reportError(oaPlugInMain::tr("no layout data or parametic cell can not be created"), 1,
                         withFault(path, faults_.ofCell(design)));
  oaDesign *super = design->isSubMaster() ? design->getSuperMaster() : design;
  if (!super || !super->isSuperMaster()) {
    return;
  }
  oaString evaluator;
  super->getPcellEvaluatorName(evaluator);
  QString shown = oaConvert::toString(evaluator);
  if (shown.startsWith(QLatin1String("cn"))) {
    shown.prepend(QLatin1String("PyCell - "));
  }
  emit host_.reportError(
      oaPlugInMain::tr("require OpenAccess-parametric-cell-plugin '%1' may not be available, please install it.")
          .arg(shown),
      1, path);
}

// What an evaluator drew before it failed is shown, but not passed off as the whole.
void LayoutWalk::reportIncompleteContent(oaDesign *design) {
  const QString fault = faults_.ofEvaluation(design);
  if (!fault.isEmpty()) {
    emit host_.reportError(oaPlugInMain::tr("the parametric cell is incomplete, its evaluation failed"), 1,
                           withFault(MasterTable::pathOf(design), fault));
  }
}

void LayoutWalk::printConnectivity(oaDesign *design) {
  oaBlock *block = design->getTopBlock();
  oaString name;
  oaIter<oaPin> pins(block->getPins());
  while (oaPin *pin = pins.getNext()) {
    pin->getName(name);
    std::printf("pin:  \"%s\",", static_cast<const oaChar *>(name));
  }
  oaIter<oaNet> nets(block->getNets());
  while (oaNet *net = nets.getNext()) {
    net->getName(oaConvert::ns, name);
    std::printf("net: \"%s\",", static_cast<const oaChar *>(name));
  }
}
