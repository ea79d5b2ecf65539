#include "table.h"

#include "database.h"
#include "handlepool.h"
#include "oa/oaBaseMsgIds.h"
#include "raise.h"

#include <algorithm>

namespace OpenAccess_4 {
namespace kit {

void raiseDeadObject() {
  raiseBase(oacDeletedDatabase, "the object is NULL, was destroyed, or its database has been closed");
}

Table::Table(Database &database, std::uint16_t id, const char *name, TableLife life)
    : database_(&database), id_(id), name_(name), life_(life) {
  columns_.reserve(12);
  database.addTable(*this);
}

Table::~Table() { killHandles(); }

Row Table::addRow() { return addRows(1); }

Row Table::addRows(Row count) {
  if (count > kNoRow - rowCount_) {
    raiseMemory(database_->label() + ": table " + name_ + " is full");
  }
  const Row first = rowCount_;
  rowCount_ += count;
  return first;
}

Row Table::searchAlive(Row row) const {
  const Row end = kinds_ != nullptr ? std::min(rowCount_, kinds_->size()) : rowCount_;
  for (Row next = row; next < end; ++next) {
    if (kindOf(next) != 0) {
      return next;
    }
  }
  return kNoRow;
}

Row Table::countAlive() const {
  if (kinds_ == nullptr) {
    return rowCount_;
  }
  if (!destroyedRowsCounted_) {
    const Row stored = std::min(rowCount_, kinds_->size());
    const std::uint8_t *kinds = kinds_->span(0, stored);
    destroyedRows_ = rowCount_ - static_cast<Row>(stored - std::count(kinds, kinds + stored, 0));
    destroyedRowsCounted_ = true;
  }
  return rowCount_ - destroyedRows_;
}

Row Table::checkRow(Row row, const char *what) const {
  if (!isAlive(row)) {
    raiseBase(oacInvalidReference, database_->label() + ": damaged: " + what + " refers to row " + std::to_string(row) +
                                       " of table " + name_ + ", which has " + std::to_string(rowCount_) + " rows");
  }
  return row;
}

void Table::checkSpan(Row begin, Row count, const char *what) const {
  const Row stored = columns_.empty() ? rowCount_ : std::min(rowCount_, columns_.front()->size());
  if (begin > stored || count > stored - begin) {
    raiseBase(oacInvalidReference, database_->label() + ": damaged: " + what + " refers to " + std::to_string(count) +
                                       " elements at " + std::to_string(begin) + " of table " + name_ + ", which has " +
                                       std::to_string(stored));
  }
}

void Table::setKind(Row row, std::uint8_t kind) {
  const std::uint8_t old = kindOf(row);
  kinds_->set(row, kind);
  if (destroyedRowsCounted_ && old != 0 && kind == 0) {
    ++destroyedRows_;
  }
  const std::size_t index = row >> HandleBlock::kShift;
  HandleBlock *block = index < blocks_.size() ? blocks_[index] : nullptr;
  if (block == nullptr) {
    return;
  }
  oaObject &object = block->handles[row & (HandleBlock::kHandles - 1)];
  if (object.table_ == nullptr) {
    return;
  }
  object.type_ = kind;
  if (kind == 0) {
    object.table_ = nullptr;
    object.aside_ = 0;
  }
}

HandleBlock *Table::addBlock(std::size_t index) {
  if (index >= blocks_.size()) {
    blocks_.resize(index + 1);
  }
  blocks_[index] = HandlePool::instance().take();
  return blocks_[index];
}

void Table::initHandle(oaObject &object, Row row) {
  const std::uint8_t kind = kindOf(row);
  if (kind == 0) {
    raiseBase(oacInvalidReference, database_->label() + ": row " + std::to_string(row) + " of table " + name_ +
                                       " is asked for, but does not exist");
  }
  object.table_ = this;
  object.row_ = row;
  object.type_ = kind;
}

void Table::killHandles() {
  for (std::size_t index = 0; index < blocks_.size(); ++index) {
    if (blocks_[index] != nullptr) {
      // Most tables of most designs have a handful of rows.
      const Row first = static_cast<Row>(index << HandleBlock::kShift);
      HandlePool::instance().giveBack(blocks_[index], std::min(HandleBlock::kHandles, rowCount_ - first));
    }
  }
  blocks_.clear();
}

void Table::clear() {
  for (ColumnBase *column : columns_) {
    column->clear();
  }
  rowCount_ = 0;
  destroyedRows_ = 0;
  destroyedRowsCounted_ = true;
}

void Table::loaded() {
  destroyedRows_ = 0;
  destroyedRowsCounted_ = kinds_ == nullptr;
}

void OwnerIndex::clear() {
  isBuilt_ = false;
  shift_ = 64;
  places_ = std::vector<Place>();
  groups_ = std::vector<Group>();
  rows_ = std::vector<Row>();
}

void OwnerIndex::enlarge() {
  constexpr unsigned kFirstBits = 4;
  const unsigned bits = places_.empty() ? kFirstBits : 64 - shift_ + 1;
  std::vector<Place> old(std::size_t(1) << bits);
  old.swap(places_);
  shift_ = 64 - bits;
  for (const Place &place : old) {
    if (place.group != kNoGroup) {
      places_[placeOf(place.group)] = place;
    }
  }
}

std::size_t OwnerIndex::groupFor(std::uint64_t group) {
  if (groups_.size() * 2 >= places_.size()) {
    enlarge();
  }
  Place &place = places_[placeOf(group)];
  if (place.group == kNoGroup) {
    place.group = group;
    place.slots = groups_.size();
    groups_.emplace_back();
  }
  return place.slots;
}

// Moves a full slot to the end of the array.
void OwnerIndex::makeRoom(Slot &slot) {
  const std::uint32_t room = std::max<std::uint32_t>(slot.room * 2, 1);
  const std::size_t begin = rows_.size();
  rows_.resize(begin + room, kNoRow);
  std::copy_n(rows_.begin() + static_cast<std::ptrdiff_t>(slot.begin), slot.size,
              rows_.begin() + static_cast<std::ptrdiff_t>(begin));
  slot.begin = begin;
  slot.room = room;
}

void OwnerIndex::add(std::uint64_t owner, Row row) {
  Slot &slot = slotFor(owner);
  if (slot.room == 0) {
    slot.begin = rows_.size();
  }
  const bool isLast = slot.size == 0 || rows_[slot.begin + slot.size - 1] < row;
  if (slot.size == slot.room) {
    if (slot.begin + slot.room == rows_.size()) {
      rows_.push_back(row);
      ++slot.room;
    } else {
      makeRoom(slot);
    }
  }
  ++slot.size;
  if (isLast) {
    rows_[slot.begin + slot.size - 1] = row;
    return;
  }
  const auto begin = rows_.begin() + static_cast<std::ptrdiff_t>(slot.begin);
  const auto end = begin + slot.size;
  const auto place = std::lower_bound(begin, end - 1, row);
  std::copy_backward(place, end - 1, end);
  *place = row;
}

void OwnerIndex::remove(std::uint64_t owner, Row row) {
  if (places_.empty()) {
    return;
  }
  const Place &group = places_[placeOf(owner >> kGroupShift)];
  if (group.group == kNoGroup) {
    return;
  }
  Slot &slot = groups_[group.slots].slots[owner & (kGroupSlots - 1)];
  const auto begin = rows_.begin() + static_cast<std::ptrdiff_t>(slot.begin);
  const auto end = begin + slot.size;
  const auto place = std::lower_bound(begin, end, row);
  if (place != end && *place == row) {
    std::copy(place + 1, end, place);
    --slot.size;
  }
}

void NameIndex::remove(const std::string &name, Row row) {
  const auto range = rows_.equal_range(name);
  for (auto entry = range.first; entry != range.second; ++entry) {
    if (entry->second == row) {
      rows_.erase(entry);
      return;
    }
  }
}

Row NameIndex::find(const std::string &name) const {
  Row oldest = kNoRow;
  const auto range = rows_.equal_range(name);
  for (auto entry = range.first; entry != range.second; ++entry) {
    oldest = std::min(oldest, entry->second);
  }
  return oldest;
}

} // namespace kit
} // namespace OpenAccess_4
