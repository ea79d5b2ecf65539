#include "properties.h"

#include "oa/oaType.h"
#include "tablecheck.h"

#include <cstring>

namespace OpenAccess_4 {
namespace kit {
namespace check {

namespace {

double doubleOf(std::uint64_t bits) {
  double value;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

bool isInRange(const PropertyTable &properties, Row row) {
  const std::uint64_t value = properties.value[row], lower = properties.lower[row], upper = properties.upper[row];
  switch (properties.kind[row]) {
  case oacIntRangePropType:
    return static_cast<std::int64_t>(lower) <= static_cast<std::int64_t>(value) &&
           static_cast<std::int64_t>(value) <= static_cast<std::int64_t>(upper);
  case oacFloatRangePropType:
  case oacDoubleRangePropType:
    return doubleOf(lower) <= doubleOf(value) && doubleOf(value) <= doubleOf(upper);
  default:
    return true;
  }
}

// The texts of an enumeration, each ended by a zero byte.
bool holdsText(std::string_view texts, std::string_view wanted) {
  for (std::size_t end; (end = texts.find('\0')) != std::string_view::npos; texts.remove_prefix(end + 1)) {
    if (texts.substr(0, end) == wanted) {
      return true;
    }
  }
  return false;
}

class PropertyCheck {
public:
  explicit PropertyCheck(const TableCheck &check) : check_(check), properties_(check.database().properties()) {}

  void run() {
    std::vector<std::pair<std::pair<std::uint64_t, Row>, Row>> names;
    TableCheck::forEachRow(properties_, [&](Row row) {
      checkKind(row);
      checkOwner(row);
      checkValue(row);
      if (check_.checkName(properties_, row, properties_.name)) {
        const std::uint64_t owner = (std::uint64_t(properties_.ownerTable[row]) << 32) | properties_.ownerRow[row];
        names.push_back({{owner, check_.texts().number(properties_.name[row])}, row});
      }
    });
    check_.checkUnique(properties_, "name", names, "owner and the name");
    for (const Row row : properties_.circles()) {
      check_.report().damage(properties_, row, "ownerRow", "belongs to itself, directly or through others");
    }
  }

private:
  void checkKind(Row row) const {
    const std::uint8_t kind = properties_.kind[row];
    if (kind < oacIntPropType || kind > oacEnumPropType) {
      check_.report().damage(properties_, row, "kind", [&] {
        return Fault{"is " + std::to_string(kind), "the type of a property"};
      });
    }
  }

  void checkOwner(Row row) const {
    const std::uint16_t tableId = properties_.ownerTable[row];
    const Table *owner = check_.database().table(tableId);
    if (owner == nullptr || owner->life() != TableLife::kinds) {
      check_.report().damage(properties_, row, "ownerTable", [&] {
        return Fault{"is " + std::to_string(tableId), "the number of a table of objects"};
      });
    }
  }

  void checkValue(Row row) {
    const std::uint8_t kind = properties_.kind[row];
    const std::uint64_t value = properties_.value[row];
    if (kind == oacBooleanPropType && value > 1) {
      check_.report().damage(properties_, row, "value", [&] {
        return Fault{"is " + std::to_string(value), "0 or 1, a truth value"};
      });
    }
    if (!isInRange(properties_, row)) {
      check_.report().damage(properties_, row, "value", "lies outside its range");
    }
    const Row text = properties_.text[row], texts = properties_.typeText[row];
    if (kind == oacEnumPropType && check_.texts().isReadable(text) && check_.texts().isReadable(texts) &&
        mayLookAt(texts) && !holdsText(check_.texts().view(texts), check_.texts().view(text))) {
      check_.report().damage(properties_, row, "text", "is none of the texts of the enumeration");
    }
  }

  // Many properties of a hostile file may share one long list of texts.
  bool mayLookAt(Row texts) {
    constexpr std::uint64_t kMostBytes = std::uint64_t(1) << 30;
    enumBytes_ += check_.texts().view(texts).size();
    return enumBytes_ < kMostBytes;
  }

  const TableCheck &check_;
  const PropertyTable &properties_;
  std::uint64_t enumBytes_ = 0;
};

} // namespace

void checkProperties(const TableCheck &check) { PropertyCheck(check).run(); }

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
