#include "familycheck.h"

#include "oa/oaConnectivityEnums.h"

#include <tuple>

namespace OpenAccess_4 {
namespace kit {
namespace check {

namespace {

std::uint64_t bitCount(const BitsTable::Range &range) {
  const std::uint64_t distance = range.start < range.stop ? range.stop - range.start : range.start - range.stop;
  return distance / range.step + 1;
}

std::uint32_t bitIndex(const BitsTable::Range &range, std::uint32_t place) {
  return range.start <= range.stop ? range.start + place * range.step : range.start - place * range.step;
}

Row storedKinds(const BitsFamily &family) { return std::min(family.objects.rowCount(), family.kind.size()); }

// Rows of ranges that can be in use: each has an object.
Row usableRanges(const BitsFamily &family) {
  return std::min(family.ranges.rowCount(), std::max(storedKinds(family), family.ranges.range.size()));
}

} // namespace

FamilyCheck::FamilyCheck(const TableCheck &check, const BitsFamily &family, std::uint8_t secondScalarKind)
    : check_(check), family_(family), secondScalarKind_(secondScalarKind), widths_(storedKinds(family)),
      isNeeded_(storedKinds(family)), isDefUsed_(std::min(family.defs.rowCount(), family.defs.kind.size())),
      claimedRanges_(usableRanges(family)) {}

void FamilyCheck::run() {
  noteNeeds();
  checkDefs();
  checkObjects();
  checkNeeds();
  checkNames();
}

bool FamilyCheck::hasMembers(Row object) const {
  return isSound(object) && (kind(object) == family_.rangeKind || isBundle(object));
}

bool FamilyCheck::listBits(Row object, std::vector<Row> &bits) const {
  constexpr std::uint64_t kMostBitsInAll = std::uint64_t(1) << 28;
  bits.clear();
  listedBits_ += width(object);
  if (!isSound(object) || listedBits_ > kMostBitsInAll) {
    return false;
  }
  append(object, bits);
  return true;
}

void FamilyCheck::append(Row object, std::vector<Row> &bits) const {
  if (!hasMembers(object)) {
    bits.push_back(object);
    return;
  }
  const BitsTable::Span members = span(object);
  for (Row i = 0; i < members.count; ++i) {
    const MemberTable::Member member = family_.members.members[members.begin + i];
    const std::size_t begin = bits.size();
    append(member.object, bits); // a bundle has no bundles, a range has bits only
    const std::size_t count = bits.size() - begin;
    for (std::uint32_t time = 1; time < member.repeat; ++time) {
      for (std::size_t bit = 0; bit < count; ++bit) {
        bits.push_back(bits[begin + bit]);
      }
    }
  }
}

// Whatever else is wrong with an object, it needs its members and its definition.
void FamilyCheck::noteNeeds() {
  for (Row i = 0; i < family_.members.members.size(); ++i) {
    const Row object = family_.members.members[i].object;
    if (object < isNeeded_.size()) {
      isNeeded_[object] = true;
    }
  }
  for (Row i = 0; i < family_.ranges.def.size(); ++i) {
    const Row def = family_.ranges.def[i];
    if (def < isDefUsed_.size()) {
      isDefUsed_[def] = true;
    }
  }
}

void FamilyCheck::checkDefs() {
  const BitsDefTable &defs = family_.defs;
  check_.checkKinds(defs, {family_.defKind});
  TableCheck::forEachRow(defs, [&](Row def) {
    if (check_.checkName(defs, def, defs.name)) {
      bases_.emplace_back(check_.texts().number(defs.name[def]), def);
    }
    check_.checkEnum(defs, def, defs.bitOrder, oaBitOrderEnum());
    check_.checkBelow(defs, def, defs.isExplicit, 2);
  });
  check_.checkUnique(defs, "name", bases_, "name");
}

// Scalars and bits first, then ranges, then bundles: each is known to be sound before others build on it.
void FamilyCheck::checkObjects() {
  TableCheck::forEachRow(family_.objects, [&](Row object) { checkObject(object); });
  TableCheck::forEachRow(family_.objects, [&](Row object) {
    if (kind(object) == family_.rangeKind && widths_[object] != 0 && !checkRangeMembers(object)) {
      widths_[object] = 0;
    }
  });
  TableCheck::forEachRow(family_.objects, [&](Row object) {
    if (isBundle(object) && checkBitsRow(object, false)) {
      checkBundle(object);
    }
  });
}

void FamilyCheck::checkObject(Row object) {
  const std::uint8_t found = kind(object);
  if (found == family_.scalarKind || (found == secondScalarKind_ && found != 0)) {
    checkScalar(object);
  } else if (found == family_.bitKind || found == family_.rangeKind) {
    if (checkBitsRow(object, true)) {
      const Row bits = family_.bits[object];
      found == family_.bitKind ? checkBit(object, bits) : checkRange(object, bits);
    }
  } else if (!isBundle(object)) {
    damage(object, "kind", [&] {
      return Fault{"is " + std::to_string(found), std::string("the type of a ") + family_.what};
    });
  }
}

void FamilyCheck::checkScalar(Row object) {
  widths_[object] = 1;
  if (family_.bits[object] != kNoRow) {
    damage(object, "bits", [&] {
      return Fault{"is row " + std::to_string(family_.bits[object]), "none for a scalar"};
    });
  }
  if (!check_.checkName(family_.objects, object, family_.name)) {
    return;
  }
  scalars_.emplace_back(check_.texts().number(family_.name[object]), object);
}

// A row of ranges and members that belongs to this object alone.
bool FamilyCheck::checkBitsRow(Row object, bool needsDef) {
  if (family_.name[object] != kNoRow) {
    damage(object, "name", [&] { return Fault{"is there", "none; the name follows from the bits"}; });
  }
  const Row bits = family_.bits[object];
  if (bits == kNoRow) {
    damage(object, "bits", [&] { return Fault{"is none", std::string("a row of table ") + family_.ranges.name()}; });
    return false;
  }
  if (bits >= family_.ranges.rowCount()) {
    return false; // told with the references
  }
  if (!claimedRanges_.claim(bits)) {
    damage(object, "bits", [&] {
      return Fault{"row " + std::to_string(bits) + " belongs to another object too, or is one too many",
                   "a row of its own"};
    });
    return false;
  }
  const Row def = family_.ranges.def[bits];
  if ((def == kNoRow) == needsDef) {
    check_.report().damage(family_.ranges, bits, "def", needsDef ? "is none" : "is there",
                           needsDef ? "the definition that has the base name" : "none for a bundle");
    return false;
  }
  if (def != kNoRow && !family_.defs.isAlive(def)) {
    return false;
  }
  return check_.isSoundSpan(family_.ranges.members, bits);
}

void FamilyCheck::checkBit(Row object, Row bits) {
  const BitsTable::Range range = family_.ranges.range[bits];
  if (range.stop != range.start || range.step != 1) {
    check_.report().damage(family_.ranges, bits, "range", [&] {
      return Fault{"goes from " + std::to_string(range.start) + " to " + std::to_string(range.stop) + " by " +
                       std::to_string(range.step),
                   "one index, twice, and a step of 1 for a bit"};
    });
  }
  if (family_.ranges.members[bits].count != 0) {
    check_.report().damage(family_.ranges, bits, "members", "are there", "none for a bit");
  }
  widths_[object] = 1;
}

void FamilyCheck::checkRange(Row object, Row bits) {
  const BitsTable::Range range = family_.ranges.range[bits];
  if (range.step == 0) {
    check_.report().damage(family_.ranges, bits, "range", "has a step of 0", "1 or more");
    return;
  }
  const std::uint64_t expected = bitCount(range);
  const std::uint32_t count = family_.ranges.members[bits].count;
  if (count != expected || expected > kMostBits) {
    check_.report().damage(family_.ranges, bits, "members", [&] {
      return Fault{"are " + std::to_string(count) + " bits, the range has " + std::to_string(expected),
                   "the same number, at most " + std::to_string(kMostBits)};
    });
    return;
  }
  widths_[object] = count;
}

bool FamilyCheck::checkRangeMembers(Row object) {
  const Row bits = family_.bits[object];
  const BitsTable::Range range = family_.ranges.range[bits];
  const BitsTable::Span members = span(object);
  bool isSound = true;
  for (Row i = 0; i < members.count; ++i) {
    const MemberTable::Member member = family_.members.members[members.begin + i];
    const bool isBit =
        family_.objects.isAlive(member.object) && kind(member.object) == family_.bitKind && widths_[member.object] == 1;
    const std::uint32_t index = bitIndex(range, i);
    const Row bitRow = isBit ? family_.bits[member.object] : kNoRow;
    if (!isBit || member.repeat != 1 || family_.ranges.def[bitRow] != family_.ranges.def[bits] ||
        family_.ranges.range[bitRow].start != index) {
      check_.report().damage(family_.members, members.begin + i, "members", [&] {
        return Fault{std::string("names ") + family_.what + " " + std::to_string(member.object) + ", " +
                         std::to_string(member.repeat) + " times",
                     "bit " + std::to_string(index) + " of the base name of " + family_.what + " " +
                         std::to_string(object) + ", once"};
      });
      isSound = false;
    }
  }
  return isSound;
}

void FamilyCheck::checkBundle(Row object) {
  const BitsTable::Span members = span(object);
  std::uint64_t width = 0;
  bool isSound = members.count != 0;
  if (!isSound) {
    check_.report().damage(family_.ranges, family_.bits[object], "members", "are none", "one at least for a bundle");
  }
  for (Row i = 0; i < members.count; ++i) {
    const MemberTable::Member member = family_.members.members[members.begin + i];
    const bool isAlive = family_.objects.isAlive(member.object);
    const bool fits = isAlive && !isBundle(member.object) && member.repeat != 0;
    if (!fits && (isAlive || member.object == kNoRow)) { // other rows are told with the references
      check_.report().damage(family_.members, members.begin + i, "members", [&] {
        return Fault{std::string("names ") + family_.what + " " + std::to_string(member.object) + " of kind " +
                         std::to_string(kind(member.object)) + ", " + std::to_string(member.repeat) + " times",
                     "what is no bundle, once or more"};
      });
    }
    isSound = isSound && fits && widths_[member.object] != 0;
    width += fits ? std::uint64_t(widths_[member.object]) * member.repeat : 0;
  }
  if (width > kMostBits) {
    damage(object, "bits", [&] {
      return Fault{"describes " + std::to_string(width) + " bits", "at most " + std::to_string(kMostBits)};
    });
    isSound = false;
  }
  widths_[object] = isSound ? static_cast<std::uint32_t>(width) : 0;
}

void FamilyCheck::checkNeeds() const {
  TableCheck::forEachRow(family_.objects, [&](Row object) {
    if ((family_.flags[object] & family_.implicitFlag) != 0 && !isNeeded_[object]) {
      damage(object, "flags", [&] {
        return Fault{"says implicit, but nothing needs the object", "an object that has it as a member"};
      });
    }
  });
  TableCheck::forEachRow(family_.defs, [&](Row def) {
    if (family_.defs.isExplicit[def] == 0 && !isDefUsed_[def]) {
      check_.report().damage(family_.defs, def, "isExplicit", "is 0, but no object has this base name");
    }
  });
}

// Objects of one kind and name are one object, and a scalar never has the name of a definition.
void FamilyCheck::checkNames() {
  check_.checkUnique(family_.objects, "name", scalars_, "name");
  Row last = kNoRow;
  for (const auto &[name, row] : scalars_) {
    const Row object = row;
    if (name == last) {
      continue; // looked at already, however many objects of a hostile file share the text
    }
    last = name;
    const std::string_view text = check_.texts().view(name);
    if (text.find('/') != std::string_view::npos || text.find('\0') != std::string_view::npos) {
      damage(object, "name", [&] { return Fault{"is " + quoted(text), "no slash and no zero byte in a scalar name"}; });
    }
    const auto base = std::lower_bound(bases_.begin(), bases_.end(), std::make_pair(name, Row(0)));
    if (base != bases_.end() && base->first == name) {
      const Row def = base->second;
      const Table &baseTable = family_.defs;
      damage(object, "name", [&] {
        return Fault{"is the base name of row " + std::to_string(def) + " of table " + baseTable.name(), {}};
      });
    }
  }
  using Key = std::tuple<Row, std::uint32_t, std::uint32_t, std::uint32_t>;
  std::vector<std::pair<Key, Row>> bits, ranges;
  std::vector<Row> bundles;
  TableCheck::forEachRow(family_.objects, [&](Row object) {
    if (widths_[object] == 0 || family_.bits[object] == kNoRow) {
      return;
    }
    const Row row = family_.bits[object];
    const BitsTable::Range range = family_.ranges.range[row];
    const Row def = family_.ranges.def[row];
    if (kind(object) == family_.bitKind) {
      bits.push_back({Key(def, range.start, 0, 0), object});
    } else if (kind(object) == family_.rangeKind) {
      ranges.push_back({Key(def, range.start, range.stop, range.step), object});
    } else if (isBundle(object)) {
      bundles.push_back(object);
    }
  });
  check_.checkUnique(family_.objects, "bits", bits, "base name and index");
  check_.checkUnique(family_.objects, "bits", ranges, "base name and range");
  checkBundleNames(bundles);
}

void FamilyCheck::checkBundleNames(std::vector<Row> &bundles) const {
  const MemberTable::Member *pool = family_.members.members.span(0, family_.members.members.size());
  const auto order = [&](Row a, Row b) {
    const BitsTable::Span first = span(a), second = span(b);
    for (Row i = 0; i < std::min(first.count, second.count); ++i) {
      const MemberTable::Member &x = pool[first.begin + i], &y = pool[second.begin + i];
      if (x.object != y.object || x.repeat != y.repeat) {
        return std::tie(x.object, x.repeat) < std::tie(y.object, y.repeat) ? -1 : 1;
      }
    }
    return first.count < second.count ? -1 : first.count > second.count ? 1 : 0;
  };
  std::sort(bundles.begin(), bundles.end(), [&](Row a, Row b) {
    const int found = order(a, b);
    return found != 0 ? found < 0 : a < b;
  });
  for (std::size_t i = 1; i < bundles.size(); ++i) {
    if (order(bundles[i - 1], bundles[i]) == 0) {
      damage(bundles[i], "bits", [&] {
        return Fault{"has the members of row " + std::to_string(bundles[i - 1]), "a name of its own"};
      });
    }
  }
}

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
