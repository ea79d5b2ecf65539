#include "databasewriter.h"

#include "columnfile.h"

#include <algorithm>
#include <cstring>

namespace OpenAccess_4 {
namespace kit {

namespace {

std::uint32_t load32(const void *place) {
  std::uint32_t value;
  std::memcpy(&value, place, sizeof value);
  return value;
}

void store32(void *place, std::uint32_t value) { std::memcpy(place, &value, sizeof value); }

std::uint16_t targetOf(const ColumnReference &reference, const Table &table, Row row) {
  return reference.table == kTableFromRow ? reference.tableOf(table, row) : reference.table;
}

} // namespace

void DatabaseWriter::writeTo(const std::string &path, const std::function<void()> &beforeRename) {
  const bool renumbers = isAnythingLeftOut();
  if (renumbers) {
    renumber();
  }
  ColumnFileWriter writer(path);
  for (const Table *table : database_.tables()) {
    const Row rows = renumbers ? renumbering_.at(table->id()).rows : table->rowCount();
    if (rows == 0) {
      continue;
    }
    writer.beginTable(table->id(), table->name(), rows);
    for (const ColumnBase *column : table->columns()) {
      if (column->size() == 0) {
        continue;
      }
      writer.beginColumn(column->id(), column->name(), column->elementBytes());
      if (!renumbers) {
        writeColumnAsIs(writer, *column);
      } else if (table->life() == TableLife::pool) {
        writePool(writer, *table);
      } else {
        writeColumnRenumbered(writer, *table, *column);
      }
      writer.endColumn();
    }
  }
  writer.finish(static_cast<std::uint8_t>(database_.kind()), beforeRename);
}

bool DatabaseWriter::isAnythingLeftOut() const {
  if (database_.hasAbandonedRows()) {
    return true;
  }
  return std::any_of(database_.tables().begin(), database_.tables().end(), [](const Table *table) {
    return table->life() == TableLife::kinds && table->countAlive() != table->rowCount();
  });
}

// Tables that refer come before those referred to: rows with kinds stand for themselves, payloads live by them, texts
// by both.
std::vector<const Table *> DatabaseWriter::inReferenceOrder() const {
  std::vector<const Table *> order(database_.tables().begin(), database_.tables().end());
  const auto rank = [](const Table *table) {
    switch (table->life()) {
    case TableLife::kinds:
      return 0;
    case TableLife::referenced:
      return table->id() == kStringTable ? 2 : 1;
    case TableLife::pool:
      break;
    }
    return 3;
  };
  std::stable_sort(order.begin(), order.end(), [&](const Table *a, const Table *b) { return rank(a) < rank(b); });
  return order;
}

void DatabaseWriter::renumber() {
  const std::vector<const Table *> order = inReferenceOrder();
  for (const Table *table : order) {
    std::vector<bool> &live = live_[table->id()];
    live.assign(table->rowCount(), false);
    if (table->life() == TableLife::kinds) {
      for (Row row = table->nextAlive(kNoRow); row != kNoRow; row = table->nextAlive(row)) {
        live[row] = true;
      }
    }
  }
  for (const Table *table : order) {
    if (table->life() != TableLife::pool) {
      mark(*table);
      number(*table);
    }
  }
  layOutPools();
}

// Keeps alive what the living rows of a table refer to.
void DatabaseWriter::mark(const Table &table) {
  const std::vector<bool> &live = live_[table.id()];
  for (const ColumnBase *column : table.columns()) {
    for (const ColumnReference &reference : column->references()) {
      if (reference.countOffsetBytes >= 0) {
        continue;
      }
      const Row stored = std::min(column->size(), table.rowCount());
      for (Row row = 0; row < stored; ++row) {
        if (!live[row]) {
          continue;
        }
        const Row target = load32(static_cast<const unsigned char *>(column->element(row)) + reference.offsetBytes);
        const Table *to = target == kNoRow ? nullptr : database_.table(targetOf(reference, table, row));
        if (to != nullptr && to->life() == TableLife::referenced) {
          std::vector<bool> &targets = live_[to->id()];
          if (target < targets.size()) {
            targets[target] = true;
          }
        }
      }
    }
  }
}

void DatabaseWriter::number(const Table &table) {
  const std::vector<bool> &live = live_[table.id()];
  Renumbering &renumbering = renumbering_[table.id()];
  renumbering.newRow.assign(live.size(), kNoRow);
  for (Row row = 0; row < live.size(); ++row) {
    if (live[row]) {
      renumbering.newRow[row] = renumbering.rows++;
    }
  }
}

void DatabaseWriter::layOutPools() {
  for (const Table *table : database_.tables()) {
    renumbering_[table->id()];
  }
  for (const Table *table : database_.tables()) {
    const std::vector<bool> &live = live_[table->id()];
    for (const ColumnBase *column : table->columns()) {
      for (const ColumnReference &reference : column->references()) {
        if (reference.countOffsetBytes < 0) {
          continue;
        }
        std::vector<Row> &begins = newBegins_[column];
        Row &poolRows = renumbering_[reference.table].rows;
        const Table *pool = database_.table(reference.table);
        const Row stored = std::min(column->size(), table->rowCount());
        for (Row row = 0; row < stored; ++row) {
          if (!live[row]) {
            continue;
          }
          const unsigned char *element = static_cast<const unsigned char *>(column->element(row));
          const Row begin = load32(element + reference.offsetBytes);
          const Row count = load32(element + reference.countOffsetBytes);
          pool->checkSpan(begin, count, table->name());
          begins.push_back(poolRows);
          poolRows += count;
          pieces_[reference.table].push_back({begin, count});
        }
      }
    }
  }
}

Row DatabaseWriter::newRowOf(std::uint16_t table, Row row) const {
  const auto entry = renumbering_.find(table);
  if (row == kNoRow || entry == renumbering_.end() || row >= entry->second.newRow.size()) {
    return kNoRow;
  }
  return entry->second.newRow[row];
}

void DatabaseWriter::writeColumnAsIs(ColumnFileWriter &writer, const ColumnBase &column) {
  for (Row row = 0; row < column.size(); row += kSegmentRows) {
    writer.addElements(column.element(row), std::min(kSegmentRows, column.size() - row));
  }
}

void DatabaseWriter::writeColumnRenumbered(ColumnFileWriter &writer, const Table &table, const ColumnBase &column) {
  const std::vector<bool> &live = live_[table.id()];
  const auto begins = newBegins_.find(&column);
  std::size_t nextBegin = 0;
  std::vector<unsigned char> element(column.elementBytes());
  const Row stored = std::min(column.size(), table.rowCount());
  for (Row row = 0; row < stored; ++row) {
    if (!live[row]) {
      continue;
    }
    std::memcpy(element.data(), column.element(row), element.size());
    for (const ColumnReference &reference : column.references()) {
      unsigned char *place = element.data() + reference.offsetBytes;
      if (reference.countOffsetBytes >= 0) {
        store32(place, begins->second[nextBegin++]);
      } else {
        store32(place, newRowOf(targetOf(reference, table, row), load32(place)));
      }
    }
    writer.addElements(element.data(), 1);
  }
}

void DatabaseWriter::writePool(ColumnFileWriter &writer, const Table &table) {
  const ColumnBase &column = *table.columns().front();
  std::vector<unsigned char> element(column.elementBytes());
  for (const PoolPiece &piece : pieces_[table.id()]) {
    column.verify(piece.begin, piece.begin + piece.count);
    if (piece.count != 0 && column.references().begin() == column.references().end()) {
      writer.addElements(column.element(piece.begin), piece.count);
      continue;
    }
    for (Row row = piece.begin; row < piece.begin + piece.count; ++row) {
      std::memcpy(element.data(), column.element(row), element.size());
      for (const ColumnReference &reference : column.references()) {
        unsigned char *place = element.data() + reference.offsetBytes;
        store32(place, newRowOf(reference.table, load32(place)));
      }
      writer.addElements(element.data(), 1);
    }
  }
}

} // namespace kit
} // namespace OpenAccess_4
