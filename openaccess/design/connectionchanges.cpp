// Connections come into being, move to other nets, and go.

#include "connections.h"

#include "multibit.h"
#include "properties.h"

#include <algorithm>
#include <string_view>

namespace OpenAccess_4 {
namespace kit {

namespace {

// The keys of a name's bits in order, repeats included.
std::vector<ConnectionKey> bitKeys(const oaName &name) {
  std::vector<ConnectionKey> keys;
  const auto append = [&](const oaSimpleName &member) {
    const oaVectorName *vector = member.getVector();
    if (vector == nullptr) {
      keys.push_back(keyOfTerm(oaName(member)));
      return;
    }
    oaScalarName base;
    vector->getBaseName(base);
    for (oaUInt4 bit = 0; bit < vector->getNumBits(); ++bit) {
      keys.push_back(keyOfTerm(oaName(oaVectorBitName(base, vector->getBitIndex(bit)))));
    }
  };
  if (const oaBundleName *bundle = name.getBundle()) {
    for (oaUInt4 i = 0; i < bundle->getNumMembers(); ++i) {
      for (oaUInt4 time = 0; time < (*bundle)[i].getRepeat(); ++time) {
        append((*bundle)[i]);
      }
    }
  } else if (name.getVector() != nullptr) {
    append(oaSimpleName(*name.getVector()));
  } else {
    keys.push_back(keyOfTerm(name));
  }
  return keys;
}

// For each place the one where the same value occurs first.
template <typename Value, typename Values> std::vector<std::uint32_t> firstPlaces(const Values &values) {
  std::unordered_map<Value, std::uint32_t> seen;
  std::vector<std::uint32_t> first;
  first.reserve(values.size());
  for (const auto &value : values) {
    first.push_back(seen.emplace(Value(value), static_cast<std::uint32_t>(first.size())).first->second);
  }
  return first;
}

} // namespace

// Making.

// Runs cannot change: from now on the index answers, without looking through all rows again for each change.
void Connections::forgetRuns() {
  if (design_.connectivity.instTermRuns.isBuilt()) {
    design_.connectivity.instTermRuns.clear();
    instTermsOfInst(design_);
  }
}

void Connections::noteJoined(Row net, Row row) {
  OwnerIndex &index = connectionIndexOf(design_, net);
  if (index.isBuilt()) {
    index.add(net, row);
  }
}

void Connections::noteLeft(Row net, Row row) {
  OwnerIndex &index = connectionIndexOf(design_, net);
  if (index.isBuilt()) {
    index.remove(net, row);
  }
}

Row Connections::addRow(Row inst, Row net, const ConnectionKey &key, bool isImplicit) {
  InstTermTable &instTerms = design_.instTerms;
  const Row row = instTerms.addRow();
  instTerms.kind.set(row, oacInstTermType);
  instTerms.inst.set(row, inst);
  if (key.kind == oacEmptyNameType) {
    instTerms.termPosition.set(row, key.position);
  } else {
    instTerms.termName.set(row, design_.strings().intern(key.text));
    if (key.kind != oacScalarNameType) {
      instTerms.termNameKind.set(row, static_cast<std::uint8_t>(key.kind));
    }
  }
  if (isImplicit) {
    instTerms.flags.set(row, kInstTermImplicit);
  }
  forgetRuns();
  if (design_.instTermsOfInst.isBuilt()) {
    design_.instTermsOfInst.add(inst, row);
  }
  if (design_.connectivity.instTermsByName.isBuilt()) {
    design_.connectivity.instTermsByName.add(slotOf(inst, key), row);
  }
  instTerms.net.set(row, net);
  if (net != kNoRow) {
    noteJoined(net, row);
  }
  design_.touch();
  return row;
}

void Connections::setMembers(Row row, const std::vector<Row> &members) {
  OwnerIndex &index = ownersOf();
  const Row begin = design_.instTermMembers.addRows(static_cast<Row>(members.size()));
  for (std::size_t i = 0; i < members.size(); ++i) {
    design_.instTermMembers.members.set(begin + static_cast<Row>(i), {members[i], 1});
  }
  design_.instTerms.members.set(row, {begin, static_cast<std::uint32_t>(members.size())});
  for (const Row bit : differentMembers(row)) {
    index.add(bit, row);
  }
}

Connections::Plan Connections::planOf(Row inst, Row net, const oaName &name) const {
  const std::vector<ConnectionKey> keys = bitKeys(name);
  std::vector<std::string> texts;
  texts.reserve(keys.size());
  for (const ConnectionKey &bit : keys) {
    texts.push_back(static_cast<char>(bit.kind) + bit.text);
  }
  const std::vector<std::uint32_t> first = firstPlaces<std::string_view>(texts);
  Plan plan;
  for (const Row instBit : instNames(design_).bitsOf(inst)) {
    const std::uint32_t begin = static_cast<std::uint32_t>(plan.rows.size());
    for (std::size_t i = 0; i < keys.size(); ++i) {
      plan.rows.push_back(find(instBit, keys[i]));
      plan.first.push_back(begin + first[i]);
    }
  }
  if (net != kNoRow) {
    plan.nets = netNames(design_).bitsOf(net);
  }
  return plan;
}

Row Connections::makeWide(const Attempt &attempt, Row net, const oaName &name) {
  Plan plan = planOf(attempt.inst, net, name);
  checkBits(attempt, kNoRow, plan);
  const std::vector<ConnectionKey> keys = bitKeys(name);
  const std::vector<Row> instBits = instNames(design_).bitsOf(attempt.inst);
  const Row row = addRow(attempt.inst, net, attempt.key, false);
  for (std::size_t i = 0; i < plan.rows.size(); ++i) {
    const Row bitNet = plan.nets.empty() ? kNoRow : plan.nets[i];
    Row &bit = plan.rows[i];
    if (plan.first[i] != i) {
      bit = plan.rows[plan.first[i]];
    } else if (bit == kNoRow) {
      bit = addRow(instBits[i / keys.size()], bitNet, keys[i % keys.size()], true);
    } else if (design_.instTerms.net[bit] == kNoRow) {
      setNet(bit, bitNet);
    }
  }
  setMembers(row, plan.rows);
  return row;
}

Row Connections::make(Row inst, Row net, const oaName &name) {
  const ConnectionKey key = keyOfTerm(name);
  const Attempt attempt{inst, key};
  checkWidth(attempt, net, name.getNumBits());
  if (name.getVector() != nullptr || name.getBundle() != nullptr || instNames(design_).hasMembers(inst)) {
    return makeWide(attempt, net, name);
  }
  const Row known = find(inst, key);
  if (known == kNoRow) {
    return addRow(inst, net, key, false);
  }
  if (net != kNoRow) {
    checkBits(attempt, kNoRow, {{known}, {0}, {net}});
    setNet(known, net);
  }
  setImplicit(known, false);
  return known;
}

Row Connections::make(Row inst, Row net, std::uint32_t position, std::uint32_t bits) {
  const ConnectionKey key = keyOfTerm(position);
  checkWidth({inst, key}, net, bits);
  return addRow(inst, net, key, false);
}

// Moving and leaving.

void Connections::setNet(Row row, Row net) {
  const Row old = design_.instTerms.net[row];
  if (old == net) {
    return;
  }
  if (old != kNoRow) {
    noteLeft(old, row);
  }
  design_.instTerms.net.set(row, net);
  if (net != kNoRow) {
    noteJoined(net, row);
  }
  design_.touch();
}

void Connections::setImplicit(Row row, bool isImplicit) {
  forgetRuns();
  design_.instTerms.flags.set(row, isImplicit ? kInstTermImplicit : 0);
  design_.touch();
}

Connections::Plan Connections::planOf(Row row, Row net) const {
  Plan plan;
  for (std::uint32_t i = 0; i < memberCount(row); ++i) {
    plan.rows.push_back(member(row, i));
  }
  plan.first = firstPlaces<Row>(plan.rows);
  if (net != kNoRow) {
    plan.nets = netNames(design_).bitsOf(net);
  }
  return plan;
}

void Connections::moveToNet(Row row, Row net, std::uint32_t bits) {
  const Row inst = design_.insts.checkRow(design_.instTerms.inst[row], "an instance terminal");
  const ConnectionKey key = keyOf(row);
  const Attempt attempt{inst, key};
  checkWidth(attempt, net, bits);
  if (memberCount(row) == 0) {
    const Nets others = netsByOwners({row}, kNoRow);
    if (!others.empty() && others.count(row) != 0 && (net == kNoRow || !agree(net, others.at(row)))) {
      refuse(design_, oacInstTermBitAlreadyExists,
             describe(attempt) + ": a connection of several bits has it on " +
                 netNames(design_).describe(others.at(row)));
    }
    setNet(row, net);
    return;
  }
  const Plan plan = planOf(row, net);
  if (!plan.nets.empty() && plan.nets.size() != plan.rows.size()) {
    raiseCorrupted(design_.instTerms, row, "the number of bits is not that of the name");
  }
  checkBits(attempt, row, plan);
  setNet(row, net);
  for (std::size_t i = 0; i < plan.nets.size(); ++i) {
    if (!isImplicit(plan.rows[i]) && design_.instTerms.net[plan.rows[i]] == kNoRow) {
      setNet(plan.rows[i], plan.nets[i]);
    }
  }
  refresh(plan.rows);
}

void Connections::refresh(const std::vector<Row> &bits) {
  const Nets nets = netsByOwners(bits, kNoRow);
  for (const Row bit : bits) {
    if (isImplicit(bit)) {
      const auto said = nets.find(bit);
      setNet(bit, said == nets.end() ? kNoRow : said->second);
    }
  }
}

void Connections::drop(Row row) {
  if (owners(row).empty()) {
    design_.destroyRow(design_.instTerms, row);
    return;
  }
  design_.properties().destroyOf(design_.instTerms, row);
  setImplicit(row, true);
  refresh({row});
}

void Connections::destroyWithOwners(Row row) {
  const std::vector<Row> wide = owners(row).copy();
  for (const Row owner : wide) {
    if (design_.instTerms.isAlive(owner)) {
      design_.destroyRow(design_.instTerms, owner);
    }
  }
  if (design_.instTerms.isAlive(row)) {
    design_.destroyRow(design_.instTerms, row);
  }
}

void Connections::leave(Row row) {
  const Row inst = design_.instTerms.inst[row];
  if (design_.connectivity.instTermsByName.isBuilt()) {
    design_.connectivity.instTermsByName.remove(slotOf(inst, keyOf(row)), row);
  }
  forgetRuns();
  if (design_.instTermsOfInst.isBuilt()) {
    design_.instTermsOfInst.remove(inst, row);
  }
  const Row net = design_.instTerms.net[row];
  if (net != kNoRow) {
    noteLeft(net, row);
  }
  if (memberCount(row) == 0) {
    return;
  }
  std::vector<Row> bits = differentMembers(row);
  std::vector<Row> shared;
  // The newest first, which is where lists of rows are cheapest to shorten.
  std::reverse(bits.begin(), bits.end());
  for (const Row bit : bits) {
    ownersOf().remove(bit, row);
    if (!isImplicit(bit)) {
      continue;
    }
    if (!owners(bit).empty()) {
      shared.push_back(bit);
    } else {
      design_.destroyRow(design_.instTerms, bit);
    }
  }
  refresh(shared);
}

void Connections::loseNet(Row row) {
  if (memberCount(row) == 0) {
    const Nets others = netsByOwners({row}, kNoRow);
    const auto said = others.find(row);
    setNet(row, said == others.end() ? kNoRow : said->second);
    return;
  }
  setNet(row, kNoRow);
  refresh(differentMembers(row));
}

} // namespace kit
} // namespace OpenAccess_4
