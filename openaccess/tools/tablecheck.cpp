#include "tablecheck.h"

#include <cstring>

namespace OpenAccess_4 {
namespace kit {
namespace check {

namespace {

std::uint32_t load32(const void *element, std::uint32_t offsetBytes) {
  std::uint32_t value;
  std::memcpy(&value, static_cast<const unsigned char *>(element) + offsetBytes, sizeof value);
  return value;
}

// Rows whose elements are stored; the others have default values, which refer to nothing.
Row storedRows(const Table &table, const ColumnBase &column) { return std::min(column.size(), table.rowCount()); }

// The first row of the next segment, or the last row that can be.
Row nextSegment(Row row) {
  const Row next = ((row >> kSegmentShift) + 1) << kSegmentShift;
  return next > row ? next : kNoRow;
}

bool mayBeDestroyed(const Table &table) { return table.life() == TableLife::kinds; }

} // namespace

void TableCheck::run(oaTypeEnum databaseType) {
  for (const Table *table : database_.tables()) {
    checkSpans(*table);
  }
  const auto strings = soundSpans_.find(&database_.strings().spans);
  texts_.reset(
      new Texts(database_.strings(), strings == soundSpans_.end() ? std::vector<bool>() : std::move(strings->second)));
  for (const Table *table : database_.tables()) {
    for (const ColumnBase *column : table->columns()) {
      for (const ColumnReference &reference : column->references()) {
        if (reference.countOffsetBytes < 0) {
          guarded([&] { checkReferences(*table, *column, reference); });
        }
      }
    }
  }
  tellLostTexts();
  guarded([&] { checkDatabaseRow(databaseType); });
  guarded([&] { checkProperties(*this); });
}

bool TableCheck::isSoundSpan(const ColumnBase &column, Row row) const {
  if (row >= column.size()) {
    return true; // the default, an empty span
  }
  const auto found = soundSpans_.find(&column);
  return found != soundSpans_.end() && row < found->second.size() && found->second[row];
}

void TableCheck::checkSpans(const Table &table) {
  for (const ColumnBase *column : table.columns()) {
    for (const ColumnReference &reference : column->references()) {
      if (reference.countOffsetBytes >= 0) {
        soundSpans_[column].assign(storedRows(table, *column), false);
        guarded([&] { checkSpans(table, *column, reference); });
      }
    }
  }
}

void TableCheck::checkSpans(const Table &table, const ColumnBase &column, const ColumnReference &reference) {
  const Table &pool = *database_.table(reference.table);
  const Row elements = std::min(pool.rowCount(), pool.columns().front()->size());
  ClaimedRows &claimed = claimed_.emplace(reference.table, ClaimedRows(elements)).first->second;
  std::vector<bool> &isSound = soundSpans_[&column];
  const std::vector<bool> areSpansReadable = soundSegments(column, static_cast<Row>(isSound.size()));
  const std::vector<bool> areElementsReadable = soundSegments(*pool.columns().front(), elements);
  for (Row row = 0; row < isSound.size(); ++row) {
    if (!areSpansReadable[row >> kSegmentShift] || (mayBeDestroyed(table) && !table.isAlive(row))) {
      continue;
    }
    const void *element = column.element(row);
    const Row begin = load32(element, reference.offsetBytes);
    const Row count = load32(element, static_cast<std::uint32_t>(reference.countOffsetBytes));
    isSound[row] = claimed.claim(begin, count);
    if (!isSound[row]) {
      report_.damage(table, row, column.name(), [&] {
        const bool isInside = begin <= elements && count <= elements - begin;
        return Fault{"owns " + std::to_string(count) + " elements at " + std::to_string(begin) + " of table " +
                         pool.name() + (isInside ? ", which overlap those of another row" : ""),
                     isInside ? "elements of its own" : "elements below " + std::to_string(elements)};
      });
    }
    // Elements that cannot be read cannot be used either.
    for (Row at = begin; isSound[row] && count != 0 && at <= begin + (count - 1); at = nextSegment(at)) {
      isSound[row] = areElementsReadable[at >> kSegmentShift];
    }
  }
}

std::vector<bool> TableCheck::soundSegments(const ColumnBase &column, Row rows) {
  std::vector<bool> areSound;
  for (Row begin = 0; begin < rows; begin = nextSegment(begin)) {
    areSound.push_back(true);
    try {
      column.verify(begin, begin + 1);
    } catch (const oaException &) {
      areSound.back() = false;
    }
  }
  return areSound;
}

void TableCheck::tellLostTexts() const {
  if (lostTexts_ != 0) {
    report_.warning(std::to_string(lostTexts_) +
                    " names and other texts are damaged as told, and what depends on them is not checked");
  }
}

void TableCheck::checkReferences(const Table &table, const ColumnBase &column, const ColumnReference &reference) {
  const bool dependsOnRow = reference.table == kTableFromRow;
  std::uint16_t targetId = reference.table;
  const Table *target = dependsOnRow ? nullptr : database_.table(targetId);
  const bool isText = targetId == kStringTable;
  const Row stored = storedRows(table, column);
  for (Row row = 0; row < stored; ++row) {
    const Row to = load32(column.element(row), reference.offsetBytes);
    if (to == kNoRow || (mayBeDestroyed(table) && !table.isAlive(row))) {
      continue;
    }
    if (dependsOnRow) {
      targetId = reference.tableOf(table, row);
      target = database_.table(targetId);
    }
    const bool isThere = isText ? texts_->exists(to) : target != nullptr && target->isAlive(to);
    lostTexts_ += isText && isThere && !texts_->isReadable(to) ? 1 : 0;
    if (!isThere) {
      tellReference(table, column, row, targetId, to);
    }
  }
}

void TableCheck::tellReference(const Table &table, const ColumnBase &column, Row row, std::uint16_t targetId,
                               Row target) const {
  report_.damage(table, row, column.name(), [&] {
    const Table *to = database_.table(targetId);
    if (to == nullptr) {
      return Fault{"refers to row " + std::to_string(target) + ", though nothing is to be referred to",
                   "no reference; table " + std::to_string(targetId) + " is none"};
    }
    const bool isDestroyed = target < to->rowCount() && to->life() == TableLife::kinds;
    return Fault{"refers to row " + std::to_string(target) + " of table " + to->name() +
                     (isDestroyed ? ", which is destroyed" : ""),
                 isDestroyed ? "a living row" : "a row below " + std::to_string(to->rowCount())};
  });
}

void TableCheck::checkDatabaseRow(oaTypeEnum type) const {
  const DatabaseTable &table = database_.databaseTable();
  if (table.rowCount() != 1) {
    report_.damage(table.name(), "", {"has " + std::to_string(table.rowCount()) + " rows", "1"});
  } else if (table.kind[0] != type) {
    report_.damage(table, 0, "kind", [&] {
      return Fault{"is " + std::to_string(table.kind[0]), std::to_string(type)};
    });
  }
}

void TableCheck::checkKinds(const Table &table, std::initializer_list<std::uint8_t> kinds) const {
  forEachRow(table, [&](Row row) {
    const std::uint8_t kind = table.kindOf(row);
    if (std::find(kinds.begin(), kinds.end(), kind) != kinds.end()) {
      return;
    }
    report_.damage(table, row, "kind", [&] {
      std::string expected;
      for (const std::uint8_t each : kinds) {
        expected += (expected.empty() ? "" : " or ") + std::to_string(each);
      }
      return Fault{"is " + std::to_string(kind), expected};
    });
  });
}

void TableCheck::checkValue(const Table &table, Row row, const char *column, std::uint32_t value,
                            const oaEnumNames &names) const {
  if (!names.contains(value)) {
    report_.damage(table, row, column, [&] {
      return Fault{"is " + std::to_string(value), "a value of the enumeration"};
    });
  }
}

void TableCheck::checkBelow(const Table &table, Row row, const Column<std::uint8_t> &column,
                            std::uint32_t count) const {
  if (column[row] >= count) {
    report_.damage(table, row, column.name(), [&] {
      return Fault{"is " + std::to_string(column[row]), "less than " + std::to_string(count)};
    });
  }
}

bool TableCheck::checkName(const Table &table, Row row, const Column<Row> &column) const {
  const Row text = column[row];
  if (!texts_->isReadable(text)) {
    return false; // told with the references or with the texts
  }
  if (texts_->isEmpty(text)) {
    report_.damage(table, row, column.name(), "is empty", "a name");
    return false;
  }
  return true;
}

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
