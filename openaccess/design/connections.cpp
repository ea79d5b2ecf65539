#include "connections.h"

#include "multibit.h"
#include "nametext.h"

#include <algorithm>
#include <functional>
#include <string_view>

namespace OpenAccess_4 {
namespace kit {

namespace {

// Up to so many connections of an instance are looked through one by one; beyond, an index answers.
constexpr std::size_t kFewConnections = 16;

} // namespace

ConnectionKey keyOfTerm(const oaName &name) {
  if (name.getScalar() != nullptr) {
    return {oacScalarNameType, nativeText(*name.getScalar())};
  }
  oaString key;
  keyOf(name, key);
  return {name.getType(), textOf(key)};
}

ConnectionKey keyOfTerm(std::uint32_t position) { return {oacEmptyNameType, std::string(), position}; }

// Look-ups.

std::uint64_t Connections::slotOf(Row inst, const ConnectionKey &key) {
  const std::uint64_t owner = (std::uint64_t(inst) << 3 | key.kind) * 0x9e3779b97f4a7c15u + key.position;
  return (std::hash<std::string_view>()(key.text) ^ owner) >> 1; // the index keeps the largest numbers to itself
}

ConnectionKey Connections::keyOf(Row row) const {
  const InstTermTable &instTerms = design_.instTerms;
  if (isByPosition(row)) {
    return keyOfTerm(instTerms.termPosition[row]);
  }
  const auto kind = checkedEnum<oaNameTypeEnum>(instTerms, row, instTerms.termNameKind[row], oacBundleNameType + 1,
                                                "the kind of the terminal's name");
  return {kind, design_.strings().text(instTerms.termName[row])};
}

bool Connections::matches(Row row, const ConnectionKey &key) const {
  const InstTermTable &instTerms = design_.instTerms;
  if (instTerms.termPosition[row] != key.position) {
    return false;
  }
  return key.kind == oacEmptyNameType ||
         (instTerms.termNameKind[row] == key.kind && design_.strings().view(instTerms.termName[row]) == key.text);
}

Row Connections::find(Row inst, const ConnectionKey &key) const {
  RowSpan candidates = instTermsOfInst(design_).rows(inst);
  if (candidates.size() > kFewConnections) {
    OwnerIndex &index = design_.connectivity.instTermsByName;
    if (!index.isBuilt()) {
      index.clear();
      const InstTermTable &instTerms = design_.instTerms;
      for (Row row = instTerms.nextAlive(kNoRow); row != kNoRow; row = instTerms.nextAlive(row)) {
        index.add(slotOf(instTerms.inst[row], keyOf(row)), row);
      }
      index.setBuilt();
    }
    candidates = index.rows(slotOf(inst, key));
  }
  for (const Row row : candidates) {
    if (design_.instTerms.inst[row] == inst && matches(row, key)) {
      return row;
    }
  }
  return kNoRow;
}

bool Connections::usesPositions(Row inst) const {
  const RowSpan instTerms = instTermsOfInst(design_).rows(inst);
  return !instTerms.empty() && isByPosition(instTerms.front());
}

void Connections::getName(Row row, oaName &name) const {
  const ConnectionKey key = keyOf(row);
  if (key.kind == oacScalarNameType) {
    oaScalarName scalar;
    getStoredName(design_.strings(), design_.instTerms.termName[row], scalar);
    name = scalar;
    return;
  }
  name = oaName(oaNativeNS(), key.text.c_str());
  // A bundle of one member reads like that member.
  if (key.kind == oacBundleNameType && name.getType() != oacBundleNameType) {
    oaBundleName bundle;
    bundle.append(oaSimpleName(oaNativeNS(), key.text.c_str()));
    name = bundle;
  }
  if (name.getType() != key.kind || key.kind == oacEmptyNameType) {
    raiseCorrupted(design_.instTerms, row, "the terminal's name " + key.text + " is of the wrong kind");
  }
}

BitsTable::Span Connections::span(Row row) const {
  const BitsTable::Span span = design_.instTerms.members[row];
  if (span.count != 0) { // the rows may come from a damaged file
    design_.instTermMembers.checkSpan(span.begin, span.count, "an instance terminal");
  }
  return span;
}

Row Connections::member(Row row, std::uint32_t index) const {
  const Row found = design_.instTermMembers.members[span(row).begin + index].object;
  design_.instTerms.checkRow(found, "an instance terminal");
  if (memberCount(found) != 0) {
    raiseCorrupted(design_.instTerms, row, "a bit has bits itself");
  }
  return found;
}

std::vector<Row> Connections::differentMembers(Row row) const {
  std::vector<Row> members(memberCount(row));
  for (std::uint32_t i = 0; i < members.size(); ++i) {
    members[i] = member(row, i);
  }
  std::sort(members.begin(), members.end());
  members.erase(std::unique(members.begin(), members.end()), members.end());
  return members;
}

OwnerIndex &Connections::ownersOf() const {
  OwnerIndex &index = design_.instTermsOfInstTerm;
  if (!index.isBuilt()) {
    index.clear();
    const InstTermTable &instTerms = design_.instTerms;
    for (Row row = instTerms.nextAlive(kNoRow); row != kNoRow; row = instTerms.nextAlive(row)) {
      if (memberCount(row) != 0) {
        for (const Row bit : differentMembers(row)) {
          index.add(bit, row);
        }
      }
    }
    index.setBuilt();
  }
  return index;
}

RowSpan Connections::owners(Row row) const {
  // Most designs have no wide connections, and need no index of them.
  return design_.instTermMembers.rowCount() == 0 ? RowSpan() : ownersOf().rows(row);
}

bool Connections::hasOneBit(Row row) const {
  if (memberCount(row) != 0) {
    return false;
  }
  const Row net = design_.instTerms.net[row];
  return !isByPosition(row) || net == kNoRow || netNames(design_).numBits(net) == 1;
}

std::string Connections::describe(const Attempt &attempt) const {
  const ConnectionKey &key = attempt.key;
  return instNames(design_).describe(attempt.inst) + ", " +
         (key.kind == oacEmptyNameType ? "position " + std::to_string(key.position) : "terminal " + key.text);
}

// Checks.

bool Connections::agree(Row net, Row other) const {
  const Row set = design_.nets.equivalents[net];
  return net == other || (set != kNoRow && set == design_.nets.equivalents[other]);
}

Connections::Nets Connections::netsByOwners(const std::vector<Row> &bits, Row except) const {
  std::vector<Row> wide;
  for (const Row bit : bits) {
    if (bit != kNoRow) {
      const RowSpan all = owners(bit);
      wide.insert(wide.end(), all.begin(), all.end());
    }
  }
  std::sort(wide.begin(), wide.end());
  wide.erase(std::unique(wide.begin(), wide.end()), wide.end());
  Nets nets;
  for (const Row row : wide) {
    const Row net = design_.instTerms.net[row];
    if (row == except || net == kNoRow) {
      continue;
    }
    const std::vector<Row> netBits = netNames(design_).bitsOf(design_.nets.checkRow(net, "an instance terminal"));
    if (netBits.size() != memberCount(row)) {
      raiseCorrupted(design_.instTerms, row, "the net has another number of bits");
    }
    for (std::uint32_t i = 0; i < netBits.size(); ++i) {
      nets.emplace(member(row, i), netBits[i]);
    }
  }
  return nets;
}

void Connections::checkWidth(const Attempt &attempt, Row net, std::uint64_t bits) const {
  const std::uint32_t instBits = instNames(design_).numBits(attempt.inst);
  const std::uint64_t width = bits * instBits;
  if (width > kMostBits) {
    refuse(design_, oacInvalidTermName,
           describe(attempt) + " would have " + std::to_string(width) + " bits, at most " + std::to_string(kMostBits) +
               " are possible");
  }
  if (net == kNoRow) {
    return;
  }
  const MultiBit nets = netNames(design_);
  const std::uint32_t netBits = nets.numBits(net);
  // Of an unknown terminal this much is known: each bit of the instance takes as many bits of the net.
  const bool fits = bits == 0 ? instBits != 0 && netBits % instBits == 0 : netBits == width;
  if (!fits) {
    refuse(design_, oacNetInstTermWidthMismatchForInstTerm,
           describe(attempt) + " needs " +
               (bits == 0 ? "a multiple of " + std::to_string(instBits) : std::to_string(width)) + " bits, " +
               nets.describe(net) + " has " + std::to_string(netBits));
  }
}

// A bit is on one net, however many connections share it and however often one of them repeats it.
void Connections::checkBits(const Attempt &attempt, Row self, const Plan &plan) const {
  if (plan.nets.empty()) {
    return;
  }
  const Nets others = netsByOwners(plan.rows, self);
  for (std::size_t i = 0; i < plan.nets.size(); ++i) {
    if (!agree(plan.nets[i], plan.nets[plan.first[i]])) {
      refuse(design_, oacInstTermNetMismatchInRepeatedMembers,
             describe(attempt) + " repeats a bit, which would be on different nets");
    }
    const Row bit = plan.rows[i];
    if (bit == kNoRow) {
      continue;
    }
    const auto said = others.find(bit);
    const Row present = said != others.end() ? said->second : isImplicit(bit) ? kNoRow : design_.instTerms.net[bit];
    if (present != kNoRow && !agree(plan.nets[i], present)) {
      refuse(design_, oacInstTermBitAlreadyExists,
             describe(attempt) + ": " + describe({design_.instTerms.inst[bit], keyOf(bit)}) + " is on " +
                 netNames(design_).describe(present) + " already, not on " + netNames(design_).describe(plan.nets[i]));
    }
  }
}

} // namespace kit
} // namespace OpenAccess_4
