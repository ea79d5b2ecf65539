#include "multibit.h"

#include "nametext.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <unordered_set>

namespace OpenAccess_4 {
namespace kit {

namespace {

// First character of the keys that are no plain text.
constexpr char kMark = '\x01';

std::uint32_t bitCount(const BitsTable::Range &range) {
  const std::uint32_t distance = range.start < range.stop ? range.stop - range.start : range.start - range.stop;
  const std::uint32_t steps = distance / std::max<std::uint32_t>(range.step, 1);
  return steps == 0xffffffffu ? steps : steps + 1;
}

std::uint32_t bitIndex(const BitsTable::Range &range, std::uint32_t bit) {
  return range.start <= range.stop ? range.start + bit * range.step : range.start - bit * range.step;
}

BitsTable::Range rangeOf(const oaVectorName &name) { return {name.getStart(), name.getStop(), name.getStep()}; }

template <typename VectorOrBitName> std::string baseOf(const VectorOrBitName &name) {
  oaScalarName base;
  name.getBaseName(base);
  return nativeText(base);
}

oaScalarName scalarName(const std::string &text) { return oaScalarName(oaNativeNS(), text.c_str()); }

bool isAutomatic(const std::string &name, const std::string &prefix) {
  return name.size() > prefix.size() && name.compare(0, prefix.size(), prefix) == 0 &&
         std::all_of(name.begin() + static_cast<std::ptrdiff_t>(prefix.size()), name.end(),
                     [](unsigned char c) { return std::isdigit(c) != 0; });
}

// The members of a name, each with its repeat count; the name itself when it is no bundle.
std::vector<oaSimpleName> simpleNames(const oaName &name) {
  std::vector<oaSimpleName> members;
  switch (name.getType()) {
  case oacScalarNameType:
    members.emplace_back(*name.getScalar());
    break;
  case oacVectorNameType:
    members.emplace_back(*name.getVector());
    break;
  case oacVectorBitNameType:
    members.emplace_back(*name.getVectorBit());
    break;
  case oacBundleNameType:
    for (oaUInt4 i = 0; i < name.getBundle()->getNumMembers(); ++i) {
      members.push_back((*name.getBundle())[i]);
    }
    break;
  default:
    break;
  }
  return members;
}

} // namespace

BitsFamily netFamily(DesignDatabase &design) {
  NetTable &nets = design.nets;
  return {design,
          nets,
          nets.kind,
          nets.name,
          nets.bits,
          nets.flags,
          kNetImplicit,
          design.netBits,
          design.netMembers,
          design.busNetDefs,
          design.netsByName,
          design.netBitsIndexes,
          oacScalarNetType,
          oacBusNetBitType,
          oacBusNetType,
          oacBundleNetType,
          oacBusNetDefType,
          oacInvalidNetName,
          oacHierPathDoesNotExist,
          oacScalarNetNameMatchesBusBaseName,
          oacBusNetBaseNameMatchesScalarName,
          oacBusNetNameMatchesAutoName,
          "N__",
          "net"};
}

BitsFamily termFamily(DesignDatabase &design) {
  TermTable &terms = design.terms;
  return {design,
          terms,
          terms.kind,
          terms.name,
          terms.bits,
          terms.flags,
          kTermImplicit,
          design.termBits,
          design.termMembers,
          design.busTermDefs,
          design.termsByName,
          design.termBitsIndexes,
          oacScalarTermType,
          oacBusTermBitType,
          oacBusTermType,
          oacBundleTermType,
          oacBusTermDefType,
          oacInvalidTermName,
          oacInvalidHierTermName,
          oacScalarTermNameMatchesBusBaseName,
          oacBusTermBaseNameMatchesScalarName,
          0,
          "",
          "terminal"};
}

BitsFamily instFamily(DesignDatabase &design) {
  InstTable &insts = design.insts;
  return {design,
          insts,
          insts.kind,
          insts.name,
          insts.bits,
          insts.flags,
          kInstImplicit,
          design.instBits,
          design.instMembers,
          design.vectorInstDefs,
          design.instsByName,
          design.instBitsIndexes,
          oacScalarInstType,
          oacVectorInstBitType,
          oacVectorInstType,
          0,
          oacVectorInstDefType,
          oacInvalidNameLength,
          oacInvalidHierInstName,
          oacInstNameOverlapsOtherInst,
          oacInstNameOverlapsOtherInst,
          oacVectorInstNameMatchesAutoName,
          "I__",
          "instance"};
}

// Keys.

std::string MultiBit::scalarKey(const std::string &text) {
  return text.empty() || text.front() != kMark ? text : std::string{kMark, 's'} + text;
}

std::string MultiBit::bitKey(const std::string &base, std::uint32_t index) {
  return std::string{kMark, 'b'} + std::to_string(index) + ':' + base;
}

std::string MultiBit::rangeKey(const std::string &base, const BitsTable::Range &range) {
  return std::string{kMark, 'r'} + std::to_string(range.start) + ':' + std::to_string(range.stop) + ':' +
         std::to_string(range.step) + ':' + base;
}

std::string MultiBit::keyOf(const oaSimpleName &name) {
  switch (name.getType()) {
  case oacScalarNameType:
    return scalarKey(nativeText(*name.getScalar()));
  case oacVectorBitNameType:
    return bitKey(baseOf(*name.getVectorBit()), name.getVectorBit()->getIndex());
  case oacVectorNameType:
    return rangeKey(baseOf(*name.getVector()), rangeOf(*name.getVector()));
  default:
    return std::string();
  }
}

namespace {

// Members in order; their lengths keep them apart.
std::string appendedKey(const std::string &memberKey, std::uint32_t repeat) {
  return std::to_string(repeat) + '*' + std::to_string(memberKey.size()) + ':' + memberKey;
}

} // namespace

std::string MultiBit::keyOf(const oaName &name) {
  if (name.getType() != oacBundleNameType) {
    const std::vector<oaSimpleName> simple = simpleNames(name);
    return simple.empty() ? std::string() : keyOf(simple.front());
  }
  std::string key{kMark, 'B'};
  for (const oaSimpleName &member : simpleNames(name)) {
    key += appendedKey(keyOf(member), member.getRepeat());
  }
  return key;
}

std::string MultiBit::keyOf(Row object) const {
  if (isScalar(object)) {
    return scalarKey(family_.design.strings().text(family_.name[object]));
  }
  if (isBundle(object)) {
    std::string key{kMark, 'B'};
    const std::uint32_t members = memberCount(object);
    for (std::uint32_t i = 0; i < members; ++i) {
      const MemberTable::Member entry = member(object, i);
      key += appendedKey(keyOf(entry.object), entry.repeat);
    }
    return key;
  }
  return hasMembers(object) ? rangeKey(baseName(object), range(object)) : bitKey(baseName(object), range(object).start);
}

// Look-ups.

NameIndex &MultiBit::byName() const {
  NameIndex &index = family_.byName;
  if (!index.isBuilt()) {
    index.clear();
    for (Row row = family_.objects.nextAlive(kNoRow); row != kNoRow; row = family_.objects.nextAlive(row)) {
      index.add(keyOf(row), row);
    }
    index.setBuilt();
  }
  return index;
}

NameIndex &MultiBit::defsByName() const {
  NameIndex &index = family_.indexes.defsByName;
  if (!index.isBuilt()) {
    index.clear();
    for (Row row = family_.defs.nextAlive(kNoRow); row != kNoRow; row = family_.defs.nextAlive(row)) {
      index.add(family_.design.strings().text(family_.defs.name[row]), row);
    }
    index.setBuilt();
  }
  return index;
}

OwnerIndex &MultiBit::objectsOfDef() const {
  OwnerIndex &index = family_.indexes.objectsOfDef;
  if (!index.isBuilt()) {
    index.clear();
    index.fill<Row>(family_.objects.rowCount(), [&](Row row, Row &owner) {
      owner = family_.objects.isAlive(row) ? def(row) : kNoRow;
      return owner != kNoRow;
    });
    index.setBuilt();
  }
  return index;
}

OwnerIndex &MultiBit::ownersOf() const {
  OwnerIndex &index = family_.indexes.ownersOf;
  if (!index.isBuilt()) {
    index.clear();
    // Rows come in ascending order, so a member that an owner repeats has that owner last.
    for (Row row = family_.objects.nextAlive(kNoRow); row != kNoRow; row = family_.objects.nextAlive(row)) {
      const std::uint32_t members = memberCount(row);
      for (std::uint32_t i = 0; i < members; ++i) {
        const Row object = member(row, i).object;
        const RowSpan known = index.rows(object);
        if (known.empty() || known.back() != row) {
          index.add(object, row);
        }
      }
    }
    index.setBuilt();
  }
  return index;
}

RowSpan MultiBit::owners(Row object) const {
  // Without ranges and bundles there is nothing to look up, and no index to build.
  return family_.ranges.rowCount() == 0 ? RowSpan() : ownersOf().rows(object);
}

// What a row says. It may come from a damaged file.

Row MultiBit::rangeRow(Row object) const { return family_.ranges.checkRow(family_.bits[object], family_.what); }

BitsTable::Span MultiBit::span(Row object) const {
  const BitsTable::Span span = family_.ranges.members[rangeRow(object)];
  family_.members.checkSpan(span.begin, span.count, family_.what);
  return span;
}

std::uint32_t MultiBit::memberCount(Row object) const { return hasMembers(object) ? span(object).count : 0; }

MemberTable::Member MultiBit::member(Row object, std::uint32_t index) const {
  const MemberTable::Member found = family_.members.members[span(object).begin + index];
  family_.objects.checkRow(found.object, family_.what);
  // Neither bundles of bundles nor ranges of ranges: a walk down always ends.
  const bool fits = isBundle(object) ? !isBundle(found.object) : family_.kind[found.object] == family_.bitKind;
  if (!fits || found.repeat == 0 || (found.repeat != 1 && !isBundle(object))) {
    raiseCorrupted(family_.objects, object, "a member is of the wrong kind");
  }
  return found;
}

BitsTable::Range MultiBit::range(Row object) const { return family_.ranges.range[rangeRow(object)]; }

Row MultiBit::def(Row object) const {
  // By the kind: clients of a bit or range rely on its definition.
  const std::uint8_t kind = family_.kind[object];
  if (kind != family_.bitKind && kind != family_.rangeKind) {
    return kNoRow;
  }
  return family_.defs.checkRow(family_.ranges.def[rangeRow(object)], family_.what);
}

std::string MultiBit::baseName(Row object) const {
  return family_.design.strings().text(family_.defs.name[def(object)]);
}

std::uint32_t MultiBit::numBits(Row object) const {
  if (!hasMembers(object)) {
    return 1;
  }
  if (!isBundle(object)) {
    return span(object).count;
  }
  std::uint64_t bits = 0;
  const std::uint32_t members = memberCount(object);
  for (std::uint32_t i = 0; i < members; ++i) {
    const MemberTable::Member entry = member(object, i);
    bits += std::uint64_t(numBits(entry.object)) * entry.repeat;
  }
  if (bits > kMostBits) {
    raiseCorrupted(family_.objects, object, "the bundle has too many bits");
  }
  return static_cast<std::uint32_t>(bits);
}

Row MultiBit::bit(Row object, std::uint32_t index) const {
  if (!hasMembers(object)) {
    return index == 0 ? object : kNoRow;
  }
  const std::uint32_t members = memberCount(object);
  if (!isBundle(object)) {
    return index < members ? member(object, index).object : kNoRow;
  }
  std::uint64_t first = 0;
  for (std::uint32_t i = 0; i < members; ++i) {
    const MemberTable::Member entry = member(object, i);
    const std::uint32_t width = numBits(entry.object);
    const std::uint64_t all = std::uint64_t(width) * entry.repeat;
    if (width != 0 && index < first + all) {
      return bit(entry.object, static_cast<std::uint32_t>((index - first) % width));
    }
    first += all;
  }
  return kNoRow;
}

std::uint32_t MultiBit::placeOf(Row object, Row bit) const {
  if (object == bit) {
    return 0;
  }
  if (!hasMembers(object)) {
    return kNoRow;
  }
  if (!isBundle(object)) {
    // By the numbers: a range may be long.
    if (isScalar(bit) || def(bit) != def(object)) {
      return kNoRow;
    }
    const BitsTable::Range numbers = range(object);
    const std::uint32_t index = range(bit).start;
    const std::uint32_t distance =
        numbers.start <= numbers.stop ? index - numbers.start : numbers.start - index; // huge when on the other side
    const std::uint32_t step = std::max<std::uint32_t>(numbers.step, 1);
    return distance % step == 0 && distance / step < memberCount(object) ? distance / step : kNoRow;
  }
  std::uint32_t first = 0;
  const std::uint32_t members = memberCount(object);
  for (std::uint32_t i = 0; i < members; ++i) {
    const MemberTable::Member entry = member(object, i);
    const std::uint32_t place = placeOf(entry.object, bit);
    if (place != kNoRow) {
      return first + place;
    }
    first += numBits(entry.object) * entry.repeat;
  }
  return kNoRow;
}

std::vector<Row> MultiBit::bitsOf(Row object) const {
  if (!hasMembers(object)) {
    return {object};
  }
  std::vector<Row> bits;
  bits.reserve(numBits(object));
  const std::uint32_t members = memberCount(object);
  for (std::uint32_t i = 0; i < members; ++i) {
    const MemberTable::Member entry = member(object, i);
    const std::vector<Row> inner = bitsOf(entry.object);
    for (std::uint32_t time = 0; time < entry.repeat; ++time) {
      bits.insert(bits.end(), inner.begin(), inner.end());
    }
  }
  return bits;
}

// Names.

void MultiBit::appendSimpleName(Row object, oaBundleName &name, std::uint32_t repeat) const {
  oaName member;
  getName(object, member);
  const std::vector<oaSimpleName> simple = simpleNames(member);
  name.append(simple.front(), repeat);
}

void MultiBit::getName(Row object, oaName &name) const {
  const std::uint8_t kind = family_.kind[object];
  const bool needsBits = kind == family_.bitKind || kind == family_.rangeKind || isBundle(object);
  if (needsBits == isScalar(object)) { // callers know the kind of name by the kind of object
    raiseCorrupted(family_.objects, object, "the name is not of the object's kind");
  }
  if (isScalar(object)) {
    oaScalarName scalar;
    getStoredName(family_.design.strings(), family_.name[object], scalar);
    name = scalar;
  } else if (isBundle(object)) {
    oaBundleName bundle;
    const std::uint32_t members = memberCount(object);
    for (std::uint32_t i = 0; i < members; ++i) {
      const MemberTable::Member entry = member(object, i);
      appendSimpleName(entry.object, bundle, entry.repeat);
    }
    name = bundle;
  } else if (hasMembers(object)) {
    const BitsTable::Range numbers = range(object);
    if (numbers.step == 0) {
      raiseCorrupted(family_.objects, object, "the step of the range is 0");
    }
    name = oaVectorName(scalarName(baseName(object)), numbers.start, numbers.stop, numbers.step);
  } else {
    name = oaVectorBitName(scalarName(baseName(object)), range(object).start);
  }
}

void MultiBit::getName(Row object, const oaNameSpace &ns, oaString &name) const {
  if (isScalar(object)) {
    getStoredName(family_.design.strings(), family_.name[object], ns, name);
    return;
  }
  oaName structured;
  getName(object, structured);
  structured.get(ns, name);
}

std::string MultiBit::text(Row object) const {
  oaString name;
  getName(object, oaNativeNS(), name);
  return textOf(name);
}

// Checks.

void MultiBit::checkScalarText(const std::string &text) const {
  if (text.empty()) {
    refuse(family_.design, family_.emptyNameId, std::string("the name of a new ") + family_.what + " is empty");
  }
  if (text.find('/') != std::string::npos) {
    refuse(family_.design, family_.hierNameId,
           std::string(family_.what) + " " + text + ": the name leads into a hierarchy (\"/\") that does not exist");
  }
}

void MultiBit::checkBase(const oaScalarName &base) const {
  const std::string text = nativeText(base);
  checkScalarText(text);
  if (family_.autoNameId != 0 && isAutomatic(text, family_.autoPrefix)) {
    refuse(family_.design, family_.autoNameId,
           std::string(family_.what) + " " + text + ": automatic names cannot be names of several bits");
  }
  if (byName().find(scalarKey(text)) != kNoRow) {
    refuse(family_.design, family_.baseMatchesScalarId,
           std::string("there is a ") + family_.what + " " + text + ", so no other can have bits of that name");
  }
}

void MultiBit::checkSimple(const oaSimpleName &name) const {
  oaScalarName base;
  switch (name.getType()) {
  case oacScalarNameType: {
    const std::string text = nativeText(*name.getScalar());
    checkScalarText(text);
    if (findDef(text) != kNoRow) {
      refuse(family_.design, family_.scalarMatchesBaseId,
             std::string(family_.what) + " " + text + ": there are bits of that name");
    }
    return;
  }
  case oacVectorNameType:
    name.getVector()->getBaseName(base);
    break;
  case oacVectorBitNameType:
    name.getVectorBit()->getBaseName(base);
    break;
  default:
    checkScalarText(std::string());
  }
  checkBase(base);
}

void checkLength(const DesignDatabase &design, const char *what, const oaName &name) {
  if (name.getType() != oacBundleNameType) { // others are as long as their members allow
    return;
  }
  const std::string text = nativeText(name);
  if (text.size() > kMaxNameLength) {
    raiseBase(oacInvalidNameLength, design.label() + ": " + what + " " + text.substr(0, 40) + "...: the name has " +
                                        std::to_string(text.size()) + " characters, at most " +
                                        std::to_string(kMaxNameLength) + " are possible");
  }
}

void MultiBit::check(const oaName &name) const {
  const std::vector<oaSimpleName> members = simpleNames(name);
  if (members.empty()) {
    checkScalarText(std::string());
  }
  checkLength(family_.design, family_.what, name);
  std::uint64_t bits = 0;
  for (const oaSimpleName &member : members) {
    bits += std::uint64_t(member.getNumBits()) * member.getRepeat();
  }
  if (bits > kMostBits) {
    refuse(family_.design, family_.emptyNameId,
           std::string(family_.what) + " " + nativeText(name) + " would have " + std::to_string(bits) +
               " bits, at most " + std::to_string(kMostBits) + " are possible");
  }
  std::unordered_set<std::string> scalars, bases;
  for (const oaSimpleName &member : members) {
    checkSimple(member);
    if (member.getType() == oacScalarNameType) {
      scalars.insert(nativeText(*member.getScalar()));
    } else {
      bases.insert(member.getType() == oacVectorNameType ? baseOf(*member.getVector())
                                                         : baseOf(*member.getVectorBit()));
    }
  }
  for (const std::string &base : bases) {
    if (scalars.count(base) != 0) {
      refuse(family_.design, family_.baseMatchesScalarId,
             std::string(family_.what) + " " + nativeText(name) + ": " + base + " is a member and has bits");
    }
  }
}

bool MultiBit::isUsable(const oaName &name) const {
  try {
    check(name);
  } catch (const oaException &) {
    return false;
  }
  const Row user = find(name);
  return user == kNoRow || isImplicit(user);
}

// Making and leaving.

Row MultiBit::makeDef(const std::string &base) {
  const Row known = findDef(base);
  if (known != kNoRow) {
    return known;
  }
  const Row row = family_.defs.addRow();
  family_.defs.kind.set(row, family_.defKind);
  family_.defs.name.set(row, family_.design.strings().add(base));
  defsByName().add(base, row);
  return row;
}

Row MultiBit::createDef(const oaScalarName &base, oaBitOrder order) {
  checkBase(base);
  const Row row = makeDef(nativeText(base));
  family_.defs.isExplicit.set(row, 1);
  family_.defs.bitOrder.set(row, static_cast<std::uint8_t>(order));
  family_.design.touch();
  return row;
}

void MultiBit::destroyDef(Row def) {
  defsByName().remove(family_.design.strings().text(family_.defs.name[def]), def);
  family_.design.destroyRow(family_.defs, def);
  family_.design.noteAbandonedRows();
}

Row MultiBit::newObject(std::uint8_t kind, const std::string &key, std::vector<Row> &made) {
  const Row row = family_.objects.addRow();
  family_.kind.set(row, kind);
  family_.flags.set(row, family_.implicitFlag);
  byName().add(key, row);
  made.push_back(row);
  return row;
}

void MultiBit::setMembers(Row object, Row bits, const std::vector<MemberTable::Member> &members) {
  const Row begin = family_.members.addRows(static_cast<Row>(members.size()));
  for (std::size_t i = 0; i < members.size(); ++i) {
    family_.members.members.set(begin + static_cast<Row>(i), members[i]);
  }
  family_.ranges.members.set(bits, {begin, static_cast<std::uint32_t>(members.size())});
  OwnerIndex &owners = ownersOf();
  for (const MemberTable::Member &entry : members) {
    const RowSpan known = owners.rows(entry.object);
    if (!std::binary_search(known.begin(), known.end(), object)) {
      owners.add(entry.object, object);
    }
  }
}

Row MultiBit::obtain(const oaSimpleName &name, std::vector<Row> &made) {
  const std::string key = keyOf(name);
  const Row known = byName().find(key);
  if (known != kNoRow) {
    return known;
  }
  if (name.getType() == oacScalarNameType) {
    const Row row = newObject(family_.scalarKind, key, made);
    family_.name.set(row, family_.design.strings().add(nativeText(*name.getScalar())));
    return row;
  }
  // Both indexes before the first row that they would have to hold.
  ownersOf();
  objectsOfDef();
  const bool isRange = name.getType() == oacVectorNameType;
  const std::string base = isRange ? baseOf(*name.getVector()) : baseOf(*name.getVectorBit());
  const Row def = makeDef(base);
  const Row row = newObject(isRange ? family_.rangeKind : family_.bitKind, key, made);
  const Row bits = family_.ranges.addRow();
  family_.ranges.def.set(bits, def);
  family_.bits.set(row, bits);
  objectsOfDef().add(def, row);
  if (!isRange) {
    const std::uint32_t index = name.getVectorBit()->getIndex();
    family_.ranges.range.set(bits, {index, index, 1});
    return row;
  }
  const BitsTable::Range numbers = rangeOf(*name.getVector());
  family_.ranges.range.set(bits, numbers);
  std::vector<MemberTable::Member> members(bitCount(numbers));
  oaScalarName baseName;
  name.getVector()->getBaseName(baseName);
  for (std::uint32_t i = 0; i < members.size(); ++i) {
    members[i] = {obtain(oaVectorBitName(baseName, bitIndex(numbers, i)), made), 1};
  }
  setMembers(row, bits, members);
  return row;
}

Row MultiBit::make(const oaName &name, std::vector<Row> &made) {
  Row row;
  if (name.getType() != oacBundleNameType) {
    row = obtain(simpleNames(name).front(), made);
  } else {
    const std::string key = keyOf(name);
    ownersOf();
    std::vector<MemberTable::Member> members;
    for (const oaSimpleName &member : simpleNames(name)) {
      members.push_back({obtain(member, made), member.getRepeat()});
    }
    row = newObject(family_.bundleKind, key, made);
    const Row bits = family_.ranges.addRow();
    family_.bits.set(row, bits);
    setMembers(row, bits, members);
  }
  setImplicit(row, false);
  family_.design.touch();
  return row;
}

void MultiBit::setImplicit(Row object, bool isImplicit) const {
  const std::uint8_t flags = family_.flags[object];
  family_.flags.set(object, static_cast<std::uint8_t>(isImplicit ? flags | family_.implicitFlag
                                                                 : flags & ~unsigned(family_.implicitFlag)));
}

void MultiBit::leave(Row object) {
  if (family_.byName.isBuilt()) {
    family_.byName.remove(keyOf(object), object);
  }
  if (isScalar(object)) {
    return;
  }
  const std::uint32_t members = memberCount(object);
  std::vector<Row> orphans;
  for (std::uint32_t i = members; i-- > 0;) {
    const Row part = member(object, i).object;
    ownersOf().remove(part, object);
    if (isImplicit(part) && owners(part).empty()) {
      orphans.push_back(part);
    }
  }
  // The newest first, which is where lists of rows are cheapest to shorten. A bundle may list one member twice.
  std::sort(orphans.begin(), orphans.end(), std::greater<Row>());
  orphans.erase(std::unique(orphans.begin(), orphans.end()), orphans.end());
  for (const Row orphan : orphans) {
    if (family_.objects.isAlive(orphan)) {
      family_.design.destroyRow(family_.objects, orphan);
    }
  }
  const Row base = def(object);
  if (base != kNoRow) {
    objectsOfDef().remove(base, object);
    if (objectsOfDef().rows(base).empty() && family_.defs.isExplicit[base] == 0) {
      destroyDef(base);
    }
  }
}

void MultiBit::destroyWithOwners(Row object) {
  while (family_.objects.isAlive(object) && !owners(object).empty()) {
    destroyWithOwners(owners(object).front());
  }
  if (family_.objects.isAlive(object)) {
    family_.design.destroyRow(family_.objects, object);
  }
}

} // namespace kit
} // namespace OpenAccess_4
