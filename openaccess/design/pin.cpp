#include "oa/oaPin.h"

#include "connectivityaccess.h"
#include "figureindexes.h"
#include "multibit.h"

namespace OpenAccess_4 {

OA_ENUM_NAMES(oaPinType, raiseBase, oacInvalidEnumValue, "pin type", "none", "core", "bump")

using namespace kit;

namespace {

Row findPin(const DesignRow &term, const std::string &name) {
  for (const Row pin : pinsOfTerm(term.design).rows(term.row)) {
    if (term.design.strings().view(term.design.pins.name[pin]) == name) {
      return pin;
    }
  }
  return kNoRow;
}

std::string automaticPinName(const DesignRow &term) {
  std::string name;
  do {
    name = "P__" + std::to_string(term.design.nextPinNumber++);
  } while (findPin(term, name) != kNoRow);
  return name;
}

oaPin *createPin(const DesignRow &term, const std::string &name, oaUInt4 accessDir) {
  DesignDatabase &design = term.design;
  if ((design.terms.flags[term.row] & kTermImplicit) != 0) {
    refuse(design, oacTermCannotBeImplicit, "pin " + name + " cannot be made on an implicit terminal");
  }
  const Row row = design.pins.addRow();
  design.pins.kind.set(row, oacPinType);
  design.pins.name.set(row, design.strings().add(name));
  design.pins.term.set(row, term.row);
  design.pins.accessDir.set(row, static_cast<std::uint8_t>(accessDir));
  if (design.pinsOfTerm.isBuilt()) {
    design.pinsOfTerm.add(term.row, row);
  }
  design.touch();
  return objectAt<oaPin>(design.pins, row);
}

[[noreturn]] void refuseUsedName(const DesignRow &term, const std::string &name) {
  refuse(term.design, oacPinExists, termNames(term.design).describe(term.row) + " has a pin \"" + name + "\" already");
}

} // namespace

void oaPin::destroy() {
  const DesignRow at = pinRow(this);
  at.design.destroyRow(at.design.pins, at.row);
}

oaTerm *oaPin::getTerm() const {
  const DesignRow at = pinRow(this);
  return objectAt<oaTerm>(at.design.terms, at.design.terms.checkRow(at.design.pins.term[at.row], "a pin"));
}

void oaPin::getName(oaString &name) const {
  const DesignRow at = pinRow(this);
  at.design.strings().get(at.design.pins.name[at.row], name);
}

oaUInt4 oaPin::getAccessDir() const {
  const DesignRow at = pinRow(this);
  return at.design.pins.accessDir[at.row];
}

oaPlacementStatus oaPin::getPlacementStatus() const {
  const DesignRow at = pinRow(this);
  return static_cast<oaPlacementStatusEnum>(at.design.pins.placementStatus[at.row]);
}

oaPinType oaPin::getPinType() const {
  const DesignRow at = pinRow(this);
  return static_cast<oaPinTypeEnum>(at.design.pins.pinType[at.row]);
}

void oaPin::setTerm(oaTerm *term) {
  const DesignRow at = pinRow(this);
  const DesignRow to = termRow(term);
  if (&at.design != &to.design) {
    refuse(at.design, oacPinAndFigNotInSameBlock, "a pin cannot move to a terminal of another design");
  }
  if (at.design.pins.term[at.row] == to.row) {
    return;
  }
  if (findPin(to, at.design.strings().text(at.design.pins.name[at.row])) != kNoRow) {
    at.design.pins.name.set(at.row, at.design.strings().add(automaticPinName(to)));
    at.design.noteAbandonedRows();
  }
  OwnerIndex &index = pinsOfTerm(at.design);
  index.remove(at.design.pins.term[at.row], at.row);
  at.design.pins.term.set(at.row, to.row);
  index.add(to.row, at.row);
  at.design.touch();
}

void oaPin::setName(const oaString &name) {
  const DesignRow at = pinRow(this);
  const DesignRow term = {at.design, at.design.pins.term[at.row]};
  const Row user = findPin(term, textOf(name));
  if (user == at.row) {
    return;
  }
  if (user != kNoRow) {
    refuseUsedName(term, textOf(name));
  }
  at.design.pins.name.set(at.row, at.design.strings().add(textOf(name)));
  at.design.noteAbandonedRows();
  at.design.touch();
}

void oaPin::setAccessDir(oaUInt4 accessDir) {
  const DesignRow at = pinRow(this);
  at.design.pins.accessDir.set(at.row, static_cast<std::uint8_t>(accessDir));
  at.design.touch();
}

void oaPin::setPlacementStatus(oaPlacementStatus status) {
  const DesignRow at = pinRow(this);
  at.design.pins.placementStatus.set(at.row, static_cast<std::uint8_t>(status));
  at.design.touch();
}

void oaPin::setPinType(oaPinType pinType) {
  const DesignRow at = pinRow(this);
  at.design.pins.pinType.set(at.row, static_cast<std::uint8_t>(pinType));
  at.design.touch();
}

oaCollection<oaPinFig, oaPin> oaPin::getFigs() const {
  const DesignRow at = pinRow(this);
  return figsInPin(at.design, at.row);
}

oaPin *oaPin::create(oaTerm *term, oaUInt4 accessDir) {
  const DesignRow at = termRow(term);
  return createPin(at, automaticPinName(at), accessDir);
}

oaPin *oaPin::create(oaTerm *term, const oaString &name, oaUInt4 accessDir) {
  const DesignRow at = termRow(term);
  if (findPin(at, textOf(name)) != kNoRow) {
    refuseUsedName(at, textOf(name));
  }
  return createPin(at, textOf(name), accessDir);
}

oaPin *oaPin::find(const oaTerm *term, const oaString &name) {
  const DesignRow at = termRow(term);
  return objectAt<oaPin>(at.design.pins, findPin(at, textOf(name)));
}

oaCollection<oaPin, oaBlock> oaBlock::getPins() const {
  return wholeTable<oaCollection<oaPin, oaBlock>>(designOfBlock(this).pins);
}

} // namespace OpenAccess_4
