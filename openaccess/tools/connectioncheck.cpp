#include "designcheck.h"

#include "connections.h"
#include "oa/oaBundleName.h"
#include "oa/oaNameSpaces.h"
#include "oa/oaVectorName.h"

#include <map>
#include <tuple>

namespace OpenAccess_4 {
namespace kit {
namespace check {

namespace {

constexpr std::uint32_t kNoPosition = 0xffffffffu;

// A terminal's name and, once they were asked for, the keys of its bits: kind of name, number of the text.
struct TermName {
  bool isSound = false;
  oaName name;
  std::vector<std::pair<std::uint8_t, Row>> bits;
};

class ConnectionCheck {
public:
  ConnectionCheck(const TableCheck &check, const DesignDatabase &design, const FamilyCheck &insts,
                  const FamilyCheck &nets)
      : check_(check), table_(design.instTerms), members_(design.instTermMembers), nets_(design.nets), insts_(insts),
        netFamily_(nets), wayOfInst_(std::min(design.insts.rowCount(), design.insts.kind.size())),
        isNeeded_(std::min(table_.rowCount(), table_.kind.size())), isTold_(isNeeded_.size()) {}

  void run() {
    check_.checkKinds(table_, {oacInstTermType});
    for (Row i = 0; i < members_.members.size(); ++i) {
      const Row bit = members_.members[i].object;
      if (bit < isNeeded_.size()) {
        isNeeded_[bit] = true;
      }
    }
    TableCheck::forEachRow(table_, [&](Row row) { checkRow(row); });
    check_.checkUnique(table_, "termName", keys_, "instance and terminal");
    std::sort(said_.begin(), said_.end());
    TableCheck::forEachRow(table_, [&](Row row) { checkImplicit(row); });
  }

private:
  template <typename Describe> void damage(Row row, const char *column, Describe describe) const {
    check_.report().damage(table_, row, column, describe);
  }
  bool isImplicit(Row row) const { return (table_.flags[row] & kInstTermImplicit) != 0; }
  bool isByPosition(Row row) const { return table_.termPosition[row] != kNoPosition; }

  void checkRow(Row row) {
    check_.checkBelow(table_, row, table_.flags, 2 * kInstTermImplicit);
    const Row inst = table_.inst[row];
    if (inst >= wayOfInst_.size()) {
      if (inst == kNoRow) {
        damage(row, "inst", [&] { return Fault{"is none", "an instance"}; });
      }
      return;
    }
    checkWay(row, inst);
    if (isByPosition(row)) {
      checkPosition(row, inst);
    } else {
      checkName(row, inst);
    }
  }

  // All connections of an instance are by name, or all by position.
  void checkWay(Row row, Row inst) {
    const std::uint8_t way = isByPosition(row) ? 2 : 1;
    if (wayOfInst_[inst] == 0) {
      wayOfInst_[inst] = way;
    } else if (wayOfInst_[inst] != way) {
      damage(row, "termPosition", [&] {
        return Fault{"connects by " + std::string(way == 1 ? "name" : "position"),
                     way == 1 ? "a position, as others of the instance" : "a name, as others of the instance"};
      });
    }
  }

  void checkPosition(Row row, Row inst) {
    keys_.push_back({{inst, oacEmptyNameType, table_.termPosition[row]}, row});
    if (table_.termName[row] != kNoRow || table_.members[row].count != 0 || isImplicit(row)) {
      damage(row, "termPosition", [&] { return Fault{"is there beside a name, bits or the implicit flag", {}}; });
    }
    const std::uint32_t instBits = insts_.width(inst), netBits = widthOfNet(row);
    if (instBits != 0 && netBits % instBits != 0) {
      damage(row, "net", [&] {
        return Fault{"has " + std::to_string(netBits) + " bits", "a multiple of " + std::to_string(instBits)};
      });
    }
  }

  void checkName(Row row, Row inst) {
    const std::uint8_t kind = table_.termNameKind[row];
    if (kind < oacScalarNameType || kind > oacBundleNameType) {
      damage(row, "termNameKind", [&] { return Fault{"is " + std::to_string(kind), "1 to 4, a kind of name"}; });
      return;
    }
    if (!check_.checkName(table_, row, table_.termName)) {
      return;
    }
    const Row number = check_.texts().number(table_.termName[row]);
    keys_.push_back({{inst, kind, number}, row});
    TermName &name = nameOf(kind, number);
    if (!name.isSound) {
      damage(row, "termName", [&] {
        return Fault{"is " + quoted(check_.texts().view(table_.termName[row])),
                     "a name of the kind that the column termNameKind says"};
      });
      return;
    }
    checkBits(row, inst, kind, name);
  }

  void checkBits(Row row, Row inst, std::uint8_t kind, TermName &name) {
    const std::uint32_t instBits = insts_.width(inst);
    if (instBits == 0 || !check_.isSoundSpan(table_.members, row)) {
      return;
    }
    const bool isWide = kind == oacVectorNameType || kind == oacBundleNameType || insts_.hasMembers(inst);
    const std::uint64_t width = std::uint64_t(name.name.getNumBits()) * instBits;
    const BitsTable::Span span = table_.members[row];
    if (span.count != (isWide ? width : 0)) {
      damage(row, "members", [&] {
        return Fault{"are " + std::to_string(span.count),
                     std::to_string(isWide ? width : 0) + ", the bits of the name"};
      });
      return;
    }
    const std::uint32_t netBits = widthOfNet(row);
    if (netBits != 0 && netBits != width) {
      damage(row, "net", [&] {
        return Fault{"has " + std::to_string(netBits) + " bits", std::to_string(width) + ", the bits of the name"};
      });
    }
    if (isWide) {
      checkMembers(row, inst, kind, name);
    }
  }

  void checkMembers(Row row, Row inst, std::uint8_t kind, TermName &name) {
    listBitKeys(kind, name);
    if (!insts_.listBits(inst, instBits_) || name.bits.empty()) {
      return;
    }
    const BitsTable::Span span = table_.members[row];
    netBits_.clear();
    const bool hasNet = widthOfNet(row) == span.count && netFamily_.listBits(table_.net[row], netBits_);
    for (Row i = 0; i < span.count; ++i) {
      const MemberTable::Member member = members_.members[span.begin + i];
      if (member.object == kNoRow) {
        check_.report().damage(members_, span.begin + i, "members", "is none", "the connection of a bit");
      }
      if (!table_.isAlive(member.object)) {
        continue; // told here or with the references
      }
      const Row instBit = instBits_[i / name.bits.size()];
      const auto &key = name.bits[i % name.bits.size()];
      const bool isBit = member.repeat == 1 && table_.members[member.object].count == 0 &&
                         !isByPosition(member.object) && table_.inst[member.object] == instBit &&
                         table_.termNameKind[member.object] == key.first && isNamed(member.object, key.second);
      if (!isBit) {
        check_.report().damage(members_, span.begin + i, "members", [&] {
          return Fault{"names row " + std::to_string(member.object) + " of table " + table_.name(),
                       "the connection of bit " + std::to_string(i) + " of row " + std::to_string(row)};
        });
      }
      isTold_[member.object] = isTold_[member.object] || hasNet || table_.net[row] == kNoRow;
      if (isBit && hasNet) {
        said_.emplace_back(member.object, netBits_[i]);
      }
    }
  }

  // As far as the name can be read.
  bool isNamed(Row row, Row number) const {
    const Row name = table_.termName[row];
    return !check_.texts().isReadable(name) || check_.texts().number(name) == number;
  }

  // An implicit connection is a bit of another one, and on a net that such a one says.
  void checkImplicit(Row row) {
    const auto first = std::lower_bound(said_.begin(), said_.end(), std::make_pair(row, Row(0)));
    const bool isAnythingSaid = first != said_.end() && first->first == row;
    const Row net = table_.net[row];
    const bool isSaid = isAnythingSaid && std::binary_search(first, said_.end(), std::make_pair(row, net));
    const auto describe = [&] {
      return Fault{"is " + (net == kNoRow ? "none" : "net " + std::to_string(net)),
                   isAnythingSaid
                       ? "net " + std::to_string(first->second) + ", the bit of the net of a connection of several bits"
                       : "none, like the connections that the bit belongs to"};
    };
    if (!isImplicit(row)) {
      if (isAnythingSaid && !isSaid && !isEquivalent(net, first->second)) {
        check_.report().warning(table_, row, "net", describe);
      }
      return;
    }
    if (!isNeeded_[row]) {
      damage(row, "flags", [&] { return Fault{"says implicit, but the connection is no bit of another one", {}}; });
    } else if (isTold_[row] && (isAnythingSaid ? !isSaid : net != kNoRow)) {
      damage(row, "net", describe);
    }
  }

  bool isEquivalent(Row net, Row other) const {
    return nets_.isAlive(net) && nets_.isAlive(other) && nets_.equivalents[net] != kNoRow &&
           nets_.equivalents[net] == nets_.equivalents[other];
  }

  // 0 when there is none that can be told.
  std::uint32_t widthOfNet(Row row) const {
    const Row net = table_.net[row];
    return net == kNoRow ? 0 : netFamily_.width(net);
  }

  TermName &nameOf(std::uint8_t kind, Row number) {
    const auto [entry, isNew] = names_.try_emplace({kind, number});
    if (isNew) {
      read(kind, check_.texts().view(number), entry->second);
    }
    return entry->second;
  }

  static void read(std::uint8_t kind, std::string_view view, TermName &out) {
    const std::string text(view);
    if (text.find('\0') != std::string::npos) {
      return;
    }
    try {
      const oaNativeNS ns;
      if (kind == oacScalarNameType) {
        out.name = oaScalarName(ns, text.c_str());
      } else {
        out.name = oaName(ns, text.c_str());
        if (kind == oacBundleNameType && out.name.getType() != oacBundleNameType) {
          oaBundleName bundle; // one of one member reads like that member
          bundle.append(oaSimpleName(ns, text.c_str()));
          out.name = bundle;
        }
      }
      out.isSound = out.name.getType() == kind && out.name.getNumBits() != 0;
    } catch (const oaException &) {
      out.isSound = false;
    }
  }

  void addKey(const oaName &bit, TermName &name) const {
    const ConnectionKey key = keyOfTerm(bit);
    name.bits.emplace_back(static_cast<std::uint8_t>(key.kind), check_.texts().find(key.text));
  }

  void listBitKeys(std::uint8_t kind, TermName &name) const {
    if (!name.bits.empty()) {
      return;
    }
    const auto append = [&](const oaSimpleName &member) {
      const oaVectorName *vector = member.getVector();
      if (vector == nullptr) {
        addKey(oaName(member), name);
        return;
      }
      oaScalarName base;
      vector->getBaseName(base);
      for (oaUInt4 bit = 0; bit < vector->getNumBits(); ++bit) {
        addKey(oaName(oaVectorBitName(base, vector->getBitIndex(bit))), name);
      }
    };
    if (kind == oacBundleNameType) {
      const oaBundleName &bundle = *name.name.getBundle();
      for (oaUInt4 i = 0; i < bundle.getNumMembers(); ++i) {
        for (oaUInt4 time = 0; time < bundle[i].getRepeat(); ++time) {
          append(bundle[i]);
        }
      }
    } else if (kind == oacVectorNameType) {
      append(oaSimpleName(*name.name.getVector()));
    } else {
      addKey(name.name, name);
    }
  }

  const TableCheck &check_;
  const InstTermTable &table_;
  const MemberTable &members_;
  const NetTable &nets_;
  const FamilyCheck &insts_, &netFamily_;
  std::vector<std::uint8_t> wayOfInst_;
  std::vector<bool> isNeeded_;
  std::vector<bool> isTold_; // a sound connection of several bits says something of its net, or that it has none
  std::map<std::pair<std::uint8_t, Row>, TermName> names_;
  std::vector<std::pair<std::tuple<Row, std::uint8_t, Row>, Row>> keys_;
  std::vector<std::pair<Row, Row>> said_; // bit, and a net that it should be on
  std::vector<Row> instBits_, netBits_;
};

} // namespace

void checkConnections(const TableCheck &check, DesignDatabase &design, const FamilyCheck &insts,
                      const FamilyCheck &nets) {
  ConnectionCheck(check, design, insts, nets).run();
}

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
