#include "references.h"

#include "designlife.h"
#include "instaccess.h"
#include "instheaders.h"
#include "viareferences.h"

#include <algorithm>
#include <limits>

namespace OpenAccess_4 {

namespace kit {

oaOrientEnum orientOfRef(const RefTable &refs, Row row) {
  return checkedEnum<oaOrientEnum>(refs, row, refs.orient[row], oacMXR90 + 1, "the orientation");
}

namespace {

oaCoord clamped(std::int64_t value) {
  return static_cast<oaCoord>(
      std::clamp<std::int64_t>(value, std::numeric_limits<oaCoord>::min(), std::numeric_limits<oaCoord>::max()));
}

// A box shifted by steps that may lead beyond the range of coordinates: it then ends at the range's end.
oaBox shifted(const oaBox &box, std::int64_t dx, std::int64_t dy) {
  return oaBox(clamped(box.left() + dx), clamped(box.bottom() + dy), clamped(box.right() + dx),
               clamped(box.top() + dy));
}

ArrayTable::Array arrayOf(const DesignDatabase &design, Row inst) {
  const Row row = design.insts.array[inst];
  if (row >= design.arrays.rowCount()) {
    raiseCorrupted(design.insts, inst, "the array instance lacks its rows and columns");
  }
  return design.arrays.arrays[row];
}

oaBox placed(const DesignDatabase &design, Row inst, const oaBox &masterBox) {
  oaBox box = placedBox(design.insts, inst, masterBox);
  if (!box.isInverted() && design.insts.kind[inst] == oacArrayInstType) {
    const ArrayTable::Array array = arrayOf(design, inst);
    const std::int64_t lastColumn = std::max<std::int64_t>(array.columns, 1) - 1;
    const std::int64_t lastRow = std::max<std::int64_t>(array.rows, 1) - 1;
    box.merge(shifted(box, lastColumn * array.dxDbu, lastRow * array.dyDbu));
  }
  return box;
}

bool fits(std::int64_t value) {
  return value >= std::numeric_limits<oaCoord>::min() && value <= std::numeric_limits<oaCoord>::max();
}

} // namespace

oaBox placedBox(const RefTable &refs, Row row, const oaBox &masterBox) {
  oaBox box = masterBox;
  if (box.isInverted()) {
    return box;
  }
  // In 64 bits: a file may place a box where its coordinates overflow.
  box.transform(oaTransform(0, 0, orientOfRef(refs, row)));
  const oaPoint origin = refs.origin[row];
  return shifted(box, origin.x(), origin.y());
}

oaBox refBox(DesignDatabase &design, const Table &table, Row row) {
  if (table.id() == kViaTable) {
    return viaBox(design, row);
  }
  const Row header = design.instHeaders.checkRow(design.insts.header[row], "an instance");
  const oaBox masterBox = masterBoxOf(design, header);
  // Binding may show that the master is parametric; the instance then lies under another header.
  const Row now = design.insts.header[row];
  return placed(design, row, now == header ? masterBox : masterBoxOf(design, now));
}

void moveRef(DesignDatabase &design, Table &table, Row row, const oaTransform &xform) {
  if (table.id() == kViaTable) {
    moveVia(design, row, xform);
    return;
  }
  requireExplicitInst(design, row, oacCannotMoveImplicitInst, "moved");
  const oaPoint origin = design.insts.origin[row];
  // The rotation alone cannot overflow a point that is not at the very end of the range; the sum can.
  const oaPoint turned(origin, oaTransform(0, 0, xform.orient()));
  const std::int64_t x = std::int64_t(turned.x()) + xform.xOffset();
  const std::int64_t y = std::int64_t(turned.y()) + xform.yOffset();
  if (!fits(x) || !fits(y)) {
    refuse(design, oacInvalidBBoxAfterTransform,
           instNames(design).describe(row) + " would leave the range of coordinates");
  }
  const oaOrient orient = oaOrient(orientOfRef(design.insts, row)).concat(xform.orient());
  visitWithBits(design, row, [&](Row moved) {
    design.insts.origin.set(moved, oaPoint(static_cast<oaCoord>(x), static_cast<oaCoord>(y)));
    design.insts.orient.set(moved, static_cast<std::uint8_t>(orient));
  });
  if (design.insts.kind[row] == oacArrayInstType) {
    ArrayTable::Array array = arrayOf(design, row);
    const oaTransform turn(0, 0, xform.orient());
    const oaPoint column(oaPoint(array.dxDbu, 0), turn);
    const oaPoint line(oaPoint(0, array.dyDbu), turn);
    // After a quarter turn the steps of the columns run along y: what was a column is a row now.
    if (column.y() != 0 || line.x() != 0) {
      array = {line.x(), column.y(), array.columns, array.rows};
    } else {
      array.dxDbu = column.x();
      array.dyDbu = line.y();
    }
    design.arrays.arrays.set(design.insts.array[row], array);
  }
  instsChanged(design);
}

oaFig *copyRef(DesignDatabase &design, const Table &table, Row row, const oaTransform &xform, DesignDatabase &target) {
  if (table.id() == kViaTable) {
    return copyVia(design, row, xform, target);
  }
  if (isImplicitInst(design, row)) {
    refuse(design, oacCannotCopyImplicitInst, "an implicit instance bit cannot be copied without its vector instance");
  }
  if (design.insts.bits[row] != kNoRow) {
    const bool isBit = design.insts.kind[row] == oacVectorInstBitType;
    refuse(design, isBit ? oacVectorInstBitNameMatchesAutoName : oacVectorInstNameMatchesAutoName,
           "the copy of a vector instance or of an instance bit would get an automatic name, which has no bits; create "
           "it under a base name of its own");
  }
  const StringTable &strings = design.strings();
  const Row from = design.insts.header[row];
  oaParamArray params;
  getInstHeaderParams(design, from, params);
  const Row header =
      instHeaderFor(target, strings.text(design.instHeaders.lib[from]), strings.text(design.instHeaders.cell[from]),
                    strings.text(design.instHeaders.view[from]), params);
  const std::string name = automaticName(instsByName(target), "I__", target.nextInstNumber);
  const Row copy = target.insts.addRow();
  target.insts.kind.set(copy, design.insts.kind[row]);
  target.insts.header.set(copy, header);
  target.insts.name.set(copy, target.strings().add(name));
  target.insts.origin.set(copy, design.insts.origin[row]);
  target.insts.orient.set(copy, design.insts.orient[row]);
  target.insts.placementStatus.set(copy, design.insts.placementStatus[row]);
  target.insts.priority.set(copy, design.insts.priority[row]);
  if (design.insts.kind[row] == oacArrayInstType) {
    const Row array = target.arrays.addRow();
    target.arrays.arrays.set(array, arrayOf(design, row));
    target.insts.array.set(copy, array);
  }
  target.instHeaders.insts.set(header, target.instHeaders.insts[header] + 1);
  target.instsByName.add(MultiBit::scalarKey(name), copy);
  if (target.instsOfHeader.isBuilt()) {
    target.instsOfHeader.add(header, copy);
  }
  moveRef(target, target.insts, copy, xform);
  return objectAt<oaFig>(target.insts, copy);
}

void destroyRef(DesignDatabase &design, Table &table, Row row) {
  if (table.id() == kInstTable) {
    requireExplicitInst(design, row, oacCannotDestroyImplicitInst, "destroyed");
  }
  design.destroyRow(table, row);
}

void mergeRefBoxes(DesignDatabase &design, oaBox &box) {
  ConnectivityState &state = design.connectivity;
  std::vector<oaBox> masterBoxes(design.instHeaders.rowCount());
  for (Row header = design.instHeaders.nextAlive(kNoRow); header != kNoRow;
       header = design.instHeaders.nextAlive(header)) {
    const oaBox masterBox = masterBoxOf(design, header);
    masterBoxes.resize(std::max<std::size_t>(masterBoxes.size(), header + 1)); // binding may add headers
    masterBoxes[header] = masterBox;
  }
  if (!state.isRefBoxKnown || state.masterBoxes != masterBoxes) {
    state.refBox.init();
    for (Row inst = design.insts.nextAlive(kNoRow); inst != kNoRow; inst = design.insts.nextAlive(inst)) {
      const Row header = design.instHeaders.checkRow(design.insts.header[inst], "an instance");
      const oaBox instBox = placed(design, inst, masterBoxes[header]);
      if (!instBox.isInverted()) {
        state.refBox.merge(instBox);
      }
    }
    state.masterBoxes = std::move(masterBoxes);
    state.isRefBoxKnown = true;
  }
  if (!state.refBox.isInverted()) {
    box.merge(state.refBox);
  }
  mergeViaBoxes(design, box);
}

void bindMasters(DesignDatabase &design) {
  const PinnedDesign pinned(design);
  for (Row header = design.instHeaders.nextAlive(kNoRow); header != kNoRow && !design.isGone();
       header = design.instHeaders.nextAlive(header)) {
    (void)bindMaster(design, header);
  }
  bindViaMasters(design);
}

} // namespace kit

using namespace kit;

namespace {

// The table of an instance or via.
RefTable &refsOf(const oaObject *ref) {
  Table *table = tableOf(ref);
  if (OA_UNLIKELY(table == nullptr || (table->id() != kInstTable && table->id() != kViaTable))) {
    raiseDeadObject();
  }
  return static_cast<RefTable &>(*table);
}

// Calls `change` with each row that has to follow: vector instances have the same place as their bits.
template <typename Change> void changePlace(const oaRef *ref, Change change) {
  RefTable &refs = refsOf(ref);
  DesignDatabase &design = designOf(refs);
  const Row row = rowOf(ref);
  if (refs.id() == kViaTable) {
    change(refs, row);
    design.viaState.isBoxKnown = false;
  } else {
    requireExplicitInst(design, row, oacCannotMoveImplicitInst, "moved");
    visitWithBits(design, row, [&](Row moved) { change(refs, moved); });
  }
  instsChanged(design);
}

} // namespace

oaRefHeader *oaRef::getHeader() const {
  const RefTable &refs = refsOf(this);
  if (OA_UNLIKELY(refs.id() == kViaTable)) {
    return headerOfViaHandle(this);
  }
  InstHeaderTable &headers = designOf(refs).instHeaders;
  const std::uint16_t aside = asideOf(this);
  if (OA_LIKELY(aside != 0)) { // noted by the walk that made the handle
    return static_cast<oaRefHeader *>(headers.handle(aside - 1U, oacInstHeaderType));
  }
  const Row header = checkedRow(headers, static_cast<const InstTable &>(refs).header[rowOf(this)], "an instance");
  return static_cast<oaRefHeader *>(headers.handle(header, oacInstHeaderType));
}

oaDesign *oaRef::getMaster() const {
  const oaRefHeader *header = getHeader();
  oaDesign *master = header->getMaster();
  // Binding may show that the master is parametric; the reference then lies under another header.
  return getHeader() == header ? master : getHeader()->getMaster();
}

void oaRef::getOrigin(oaPoint &origin) const { origin = refsOf(this).origin[rowOf(this)]; }

oaOrient oaRef::getOrient() const { return orientOfRef(refsOf(this), rowOf(this)); }

void oaRef::getTransform(oaTransform &xform) const {
  const RefTable &refs = refsOf(this);
  const Row row = rowOf(this);
  const oaPoint *origin = refs.origin.ready(row);
  const std::uint8_t *orient = refs.orient.ready(row);
  if (OA_LIKELY(origin != nullptr && orient != nullptr && *orient <= oacMXR90)) {
    xform.set(*origin, static_cast<oaOrientEnum>(*orient));
    return;
  }
  xform = oaTransform(refs.origin[row], orientOfRef(refs, row));
}

oaBoolean oaRef::isBound() const { return getHeader()->isBound(); }

void oaRef::setOrigin(const oaPoint &origin) {
  changePlace(this, [&](RefTable &refs, Row row) { refs.origin.set(row, origin); });
}

void oaRef::setOrient(oaOrient orient) {
  changePlace(this, [&](RefTable &refs, Row row) { refs.orient.set(row, static_cast<std::uint8_t>(orient)); });
}

void oaRef::setTransform(const oaTransform &xform) {
  setOrigin(xform.offset());
  setOrient(xform.orient());
}

} // namespace OpenAccess_4
