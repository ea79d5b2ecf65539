#include "designcheck.h"

#include "oa/oaNet.h"
#include "oa/oaPin.h"
#include "oa/oaTerm.h"

namespace OpenAccess_4 {
namespace kit {
namespace check {

namespace {

constexpr std::uint32_t kNoPosition = 0xffffffffu;

// Each net of a set names the same net of it, and one of them is preferred.
class EquivalentsCheck {
public:
  EquivalentsCheck(const TableCheck &check, const DesignDatabase &design)
      : check_(check), nets_(design.nets), members_(std::min(nets_.rowCount(), nets_.kind.size())),
        preferred_(members_.size()) {}

  void run() {
    TableCheck::forEachRow(nets_, [&](Row net) { count(net); });
    TableCheck::forEachRow(nets_, [&](Row net) {
      if (members_[net] != 0 && (members_[net] < 2 || preferred_[net] != 1)) {
        check_.report().damage(nets_, net, "equivalents", [&] {
          return Fault{"is named by a set of " + std::to_string(members_[net]) + " nets with " +
                           std::to_string(preferred_[net]) + " preferred ones",
                       "2 nets or more, one of them preferred"};
        });
      }
    });
  }

private:
  void count(Row net) {
    const Row set = nets_.equivalents[net];
    const bool isPreferred = (nets_.flags[net] & kNetPreferred) != 0;
    if (set == kNoRow) {
      if (isPreferred) {
        check_.report().damage(nets_, net, "flags", "says preferred, but the net has no equivalents");
      }
      return;
    }
    if (!nets_.isAlive(set)) {
      return;
    }
    if (nets_.equivalents[set] != set) {
      check_.report().damage(nets_, net, "equivalents", [&] {
        return Fault{"is net " + std::to_string(set) + ", which is not of the set itself", "a net that names itself"};
      });
    }
    if (nets_.kind[net] != oacScalarNetType && nets_.kind[net] != oacBusNetBitType) {
      check_.report().damage(nets_, net, "equivalents", "is there, though the net has several bits");
    }
    ++members_[set];
    preferred_[set] += isPreferred ? 1 : 0;
  }

  const TableCheck &check_;
  const NetTable &nets_;
  std::vector<std::uint32_t> members_, preferred_;
};

class TermCheck {
public:
  TermCheck(const TableCheck &check, const DesignDatabase &design, const FamilyCheck &terms, const FamilyCheck &nets)
      : check_(check), design_(design), table_(design.terms), terms_(terms), nets_(nets) {}

  void run() {
    std::vector<std::pair<std::uint32_t, Row>> positions;
    TableCheck::forEachRow(table_, [&](Row term) {
      check_.checkEnum(table_, term, table_.termType, oaTermTypeEnum());
      check_.checkBelow(table_, term, table_.flags, 2 * kTermHidden);
      if (table_.position[term] != kNoPosition) {
        positions.emplace_back(table_.position[term], term);
      }
      checkNet(term);
    });
    check_.checkUnique(table_, "position", positions, "position");
  }

private:
  void checkNet(Row term) {
    const Row net = table_.net[term];
    const bool isImplicit = (table_.flags[term] & kTermImplicit) != 0;
    if (net == kNoRow) {
      if (!isImplicit) {
        check_.report().damage(table_, term, "net", "is none", "a net for an explicit terminal");
      }
      return;
    }
    if (!design_.nets.isAlive(net)) {
      return;
    }
    if (!isImplicit && (design_.nets.flags[net] & kNetImplicit) != 0) {
      check_.report().damage(table_, term, "net", [&] {
        return Fault{"is net " + std::to_string(net) + ", which is implicit", "an explicit net"};
      });
    }
    const std::uint32_t bits = terms_.width(term), netBits = nets_.width(net);
    if (bits == 0 || netBits == 0) {
      return; // one of them is damaged itself
    }
    if (bits != netBits) {
      check_.report().damage(table_, term, "net", [&] {
        return Fault{"is net " + std::to_string(net) + " of " + std::to_string(netBits) + " bits, the terminal has " +
                         std::to_string(bits),
                     "equal widths"};
      });
    } else if (terms_.hasMembers(term)) {
      checkBits(term, net);
    }
  }

  void checkBits(Row term, Row net) {
    if (!terms_.listBits(term, termBits_) || !nets_.listBits(net, netBits_)) {
      return;
    }
    for (std::size_t i = 0; i < termBits_.size(); ++i) {
      const Row found = table_.net[termBits_[i]];
      if (found != netBits_[i]) {
        check_.report().damage(table_, termBits_[i], "net", [&] {
          return Fault{"is " + (found == kNoRow ? "none" : "net " + std::to_string(found)),
                       "net " + std::to_string(netBits_[i]) + ", the bit of the net of terminal " +
                           std::to_string(term)};
        });
      }
    }
  }

  const TableCheck &check_;
  const DesignDatabase &design_;
  const TermTable &table_;
  const FamilyCheck &terms_, &nets_;
  std::vector<Row> termBits_, netBits_;
};

void checkPins(const TableCheck &check, const DesignDatabase &design) {
  const PinTable &pins = design.pins;
  check.checkKinds(pins, {oacPinType});
  std::vector<std::pair<std::pair<Row, Row>, Row>> names;
  TableCheck::forEachRow(pins, [&](Row pin) {
    if (pins.term[pin] == kNoRow) {
      check.report().damage(pins, pin, "term", "is none", "a terminal");
    }
    check.checkEnum(pins, pin, pins.placementStatus, oaPlacementStatusEnum());
    check.checkEnum(pins, pin, pins.pinType, oaPinTypeEnum());
    names.push_back({{pins.term[pin], check.texts().number(pins.name[pin])}, pin});
  });
  check.checkUnique(pins, "name", names, "terminal and the name");
}

} // namespace

void checkNets(const TableCheck &check, DesignDatabase &design) {
  const NetTable &nets = design.nets;
  TableCheck::forEachRow(nets, [&](Row net) {
    check.checkEnum(nets, net, nets.signalType, oaSigTypeEnum());
    check.checkBelow(nets, net, nets.flags, 2 * kNetPreferred);
  });
  EquivalentsCheck(check, design).run();
}

void checkTerms(const TableCheck &check, DesignDatabase &design, const FamilyCheck &terms, const FamilyCheck &nets) {
  TermCheck(check, design, terms, nets).run();
  checkPins(check, design);
}

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
