// Sets of equivalent nets. Each net of a set names the same net of it in the column `equivalents`, and one of them has
// the flag kNetPreferred; a set has two nets at least.

#include "connectivityaccess.h"
#include "multibit.h"
#include "oa/oaNet.h"

namespace OpenAccess_4 {

namespace kit {

namespace {

OwnerIndex &equivalentNets(DesignDatabase &design) {
  OwnerIndex &index = design.equivalentNets;
  if (!index.isBuilt()) {
    index.clear();
    for (Row net = design.nets.nextAlive(kNoRow); net != kNoRow; net = design.nets.nextAlive(net)) {
      if (design.nets.equivalents[net] != kNoRow) {
        index.add(design.nets.equivalents[net], net);
      }
    }
    index.setBuilt();
  }
  return index;
}

void setPreferred(DesignDatabase &design, Row net, bool isPreferred) {
  const std::uint8_t flags = design.nets.flags[net];
  design.nets.flags.set(
      net, static_cast<std::uint8_t>(isPreferred ? flags | kNetPreferred : flags & ~unsigned(kNetPreferred)));
}

void moveTo(DesignDatabase &design, Row net, Row set) {
  OwnerIndex &index = equivalentNets(design); // built before the column changes
  const Row old = design.nets.equivalents[net];
  if (old != kNoRow) {
    index.remove(old, net);
  }
  design.nets.equivalents.set(net, set);
  if (set != kNoRow) {
    index.add(set, net);
  }
}

} // namespace

RowSpan equivalentsOf(DesignDatabase &design, Row net) {
  const Row set = design.nets.equivalents[net];
  return set == kNoRow ? RowSpan() : equivalentNets(design).rows(set);
}

void leaveEquivalents(DesignDatabase &design, Row net) {
  if (design.nets.equivalents[net] == kNoRow) {
    return;
  }
  const bool wasPreferred = (design.nets.flags[net] & kNetPreferred) != 0;
  const Row set = design.nets.equivalents[net];
  moveTo(design, net, kNoRow);
  setPreferred(design, net, false);
  const std::vector<Row> rest = equivalentNets(design).rows(set).copy();
  if (rest.size() == 1) {
    moveTo(design, rest.front(), kNoRow);
    setPreferred(design, rest.front(), false);
    return;
  }
  if (wasPreferred && !rest.empty()) {
    setPreferred(design, rest.front(), true);
  }
  // The net that gives the set its number may be the one that has left.
  if (set == net) {
    for (const Row other : rest) {
      moveTo(design, other, rest.front());
    }
  }
}

} // namespace kit

using namespace kit;

namespace {

Row preferredOf(const DesignRow &at) {
  for (const Row net : equivalentsOf(at.design, at.row)) {
    if ((at.design.nets.flags[net] & kNetPreferred) != 0) {
      return net;
    }
  }
  return at.row;
}

class EquivalentNets : public OwnedRowsKind {
protected:
  RowSpan members(const CollectionQuestion &question) const override {
    return equivalentsOf(static_cast<DesignDatabase &>(question.table->database()), question.owner);
  }
  Table &memberTable(const CollectionQuestion &question) const override { return *question.table; }
};

} // namespace

oaBoolean oaBitNet::isPreferredEquivalent() const { return getPreferredEquivalent() == this; }

oaBitNet *oaBitNet::getPreferredEquivalent() const {
  const DesignRow at = netRow(this);
  return objectAt<oaBitNet>(at.design.nets, preferredOf(at));
}

void oaBitNet::setPreferredEquivalent() {
  const DesignRow at = netRow(this);
  if (equivalentsOf(at.design, at.row).empty()) {
    return;
  }
  setPreferred(at.design, preferredOf(at), false);
  setPreferred(at.design, at.row, true);
  at.design.touch();
}

void oaBitNet::makeEquivalent(oaBitNet *equivNet) {
  const DesignRow at = netRow(this);
  const DesignRow other = netRow(equivNet);
  if (&at.design != &other.design) {
    refuse(at.design, oacNetFigNotInSameBlock, "equivalent nets must be in one design");
  }
  DesignDatabase &design = at.design;
  const Row set = design.nets.equivalents[at.row] == kNoRow ? at.row : design.nets.equivalents[at.row];
  if (at.row == other.row || design.nets.equivalents[other.row] == set) {
    return;
  }
  if (design.nets.equivalents[at.row] == kNoRow) {
    moveTo(design, at.row, set);
    setPreferred(design, at.row, true);
  }
  std::vector<Row> joining = equivalentsOf(design, other.row).copy();
  if (joining.empty()) {
    joining.push_back(other.row);
  }
  for (const Row net : joining) {
    moveTo(design, net, set);
    setPreferred(design, net, false);
  }
  design.touch();
}

void oaBitNet::breakEquivalence() {
  const DesignRow at = netRow(this);
  if (equivalentsOf(at.design, at.row).empty()) {
    refuse(at.design, kNetsNotEquivalent, netNames(at.design).describe(at.row) + " has no equivalent nets");
  }
  leaveEquivalents(at.design, at.row);
  at.design.touch();
}

oaCollection<oaBitNet, oaBitNet> oaBitNet::getEquivalentNets() const {
  static const EquivalentNets kind;
  const DesignRow at = netRow(this);
  return CollectionAccess::make<oaCollection<oaBitNet, oaBitNet>>(kind, &at.design.nets, at.row);
}

} // namespace OpenAccess_4
