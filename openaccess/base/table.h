#ifndef OAKIT_TABLE_H
#define OAKIT_TABLE_H

// Rows of one kind in a database, and the handles (oaObject) that clients hold on them. Invariants:
//  (1) a row number never changes and is never used again while the database is open, so a handle may keep it;
//  (2) row order is creation order;
//  (3) a handle is made when somebody first asks for it, and stays at its address until the database is purged; then it
//  reads as dead
//      (type 0, no table) until its memory is handed out again, which happens as late as possible.

#include "column.h"
#include "oa/oaObject.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace OpenAccess_4 {
namespace kit {

class Database;

// How the rows of a table live and die.
enum class TableLife {
  kinds,      // a column `kind` holds the oaType of each row; 0 marks a destroyed row
  referenced, // a row lives as long as a living row refers to it (strings, payloads of shapes)
  pool        // elements are owned in spans by rows of other tables (points, bytes)
};

// Handles of 1,024 consecutive rows.
struct HandleBlock {
  static constexpr unsigned kShift = 10;
  static constexpr Row kHandles = Row(1) << kShift;
  oaObject handles[kHandles];
};

class Table {
public:
  Table(Database &database, std::uint16_t id, const char *name, TableLife life);
  virtual ~Table();
  Table(const Table &) = delete;
  Table &operator=(const Table &) = delete;

  Database &database() const { return *database_; }
  std::uint16_t id() const { return id_; }
  const char *name() const { return name_; }
  TableLife life() const { return life_; }
  const std::vector<ColumnBase *> &columns() const { return columns_; }

  Row rowCount() const { return rowCount_; }
  // Adds a row with default values; for a table with kinds the caller sets `kind` next. Raises when the row numbers are
  // used up.
  Row addRow();
  // For pools: adds `count` rows at once and returns the first.
  Row addRows(Row count);
  // The kind (oaTypeEnum) of a row, 0 when it is destroyed. Only for tables with kinds.
  std::uint8_t kindOf(Row row) const { return kinds_ ? (*kinds_)[row] : std::uint8_t(row < rowCount_); }
  bool isAlive(Row row) const { return row < rowCount_ && kindOf(row) != 0; }
  bool hasDestroyedRows() const { return destroyedRows_ != 0; }
  Row liveRowCount() const { return rowCount_ - destroyedRows_; }
  // The next living row after `row` (kNoRow: the first), or kNoRow.
  Row nextAlive(Row row) const {
    const Row next = row + 1; // kNoRow + 1 is 0
    return next < rowCount_ && kindOf(next) != 0 ? next : searchAlive(next);
  }
  // Number of living rows of a table with kinds. Counts once after loading, since a file does not say it.
  Row countAlive() const;
  // Raises oacInvalidReference when `row`, read from a file, is not a living row of this table. `what` names the
  // referring place.
  Row checkRow(Row row, const char *what) const;
  // Likewise for a span of a pool.
  void checkSpan(Row begin, Row count, const char *what) const;

  // The handle of a living row. kNoRow gives NULL.
  oaObject *handle(Row row) {
    if (row == kNoRow) {
      return nullptr;
    }
    const std::size_t index = row >> HandleBlock::kShift;
    HandleBlock *block = index < blocks_.size() ? blocks_[index] : nullptr;
    if (block == nullptr) {
      block = addBlock(index);
    }
    oaObject &object = block->handles[row & (HandleBlock::kHandles - 1)];
    if (object.table_ == nullptr) {
      initHandle(object, row);
    }
    return &object;
  }
  // The same for a row that is known to be alive and of that kind.
  oaObject *handle(Row row, std::uint8_t kind) {
    const std::size_t index = row >> HandleBlock::kShift;
    if (__builtin_expect(index >= blocks_.size() || blocks_[index] == nullptr, 0)) {
      addBlock(index);
    }
    oaObject &object = blocks_[index]->handles[row & (HandleBlock::kHandles - 1)];
    // Writing what is there already costs less than asking.
    object.table_ = this;
    object.row_ = row;
    object.type_ = kind;
    return &object;
  }
  // The same when that takes no more room; NULL otherwise.
  oaObject *readyHandle(Row row, std::uint8_t kind) {
    const std::size_t index = row >> HandleBlock::kShift;
    HandleBlock *block = __builtin_expect(index < blocks_.size(), 1) ? blocks_[index] : nullptr;
    if (__builtin_expect(block == nullptr, 0)) {
      return nullptr;
    }
    oaObject &object = block->handles[row & (HandleBlock::kHandles - 1)];
    object.table_ = this;
    object.row_ = row;
    object.type_ = kind;
    return &object;
  }
  // The same as handle(), with a note of the table's own that asideOf() gives back as long as the handle lives. 0 means
  // no note.
  oaObject *handle(Row row, std::uint8_t kind, std::uint16_t aside) {
    oaObject *object = handle(row, kind);
    object->aside_ = aside;
    return object;
  }
  // The same for a row whose neighbours in its block of handles (see HandleBlock) were asked for before.
  oaObject *handleInBlock(Row row, std::uint8_t kind, std::uint16_t aside) {
    oaObject &object = blocks_[row >> HandleBlock::kShift]->handles[row & (HandleBlock::kHandles - 1)];
    object.table_ = this;
    object.row_ = row;
    object.type_ = kind;
    object.aside_ = aside;
    return &object;
  }
  // For a table whose rows are all of one type, with a number that the column of kinds cannot hold.
  oaObject *handleOfType(Row row, oaTypeEnum type) {
    oaObject *object = handle(row);
    if (object != nullptr) {
      object->type_ = static_cast<std::uint16_t>(type);
    }
    return object;
  }
  static void dropAside(oaObject *object) { object->aside_ = 0; }
  // Sets the kind of a row. 0 destroys it: its handle, if any, reads as dead from now on.
  void setKind(Row row, std::uint8_t kind);
  // Makes every handle of this table dead and gives its memory back.
  void killHandles();

  // Forgets all rows.
  virtual void clear();
  // Called after the rows of a file were taken over, before anything is read from them.
  virtual void loaded();
  // Called when the row's properties and everything else that hangs on it should go; see Database::destroyRow.
  void setRowCount(Row rows) { rowCount_ = rows; }

protected:
  void setKindColumn(Column<std::uint8_t> &kinds) { kinds_ = &kinds; }

private:
  friend class ColumnBase;
  void addColumn(ColumnBase &column) { columns_.push_back(&column); }
  // The first living row from `row` on, or kNoRow.
  Row searchAlive(Row row) const;
  HandleBlock *addBlock(std::size_t index);
  void initHandle(oaObject &object, Row row);

  Database *database_;
  std::uint16_t id_;
  const char *name_;
  TableLife life_;
  Row rowCount_ = 0;
  mutable Row destroyedRows_ = 0;
  mutable bool destroyedRowsCounted_ = true;
  Column<std::uint8_t> *kinds_ = nullptr;
  std::vector<ColumnBase *> columns_;
  std::vector<HandleBlock *> blocks_;
};

// Rows of an OwnerIndex, ascending. Valid until the index changes.
class RowSpan {
public:
  RowSpan() = default;
  RowSpan(const Row *begin, std::size_t size) : begin_(begin), size_(size) {}
  const Row *begin() const { return begin_; }
  const Row *end() const { return begin_ + size_; }
  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  Row operator[](std::size_t place) const { return begin_[place]; }
  Row front() const { return begin_[0]; }
  Row back() const { return begin_[size_ - 1]; }
  // For walks that change the index.
  std::vector<Row> copy() const { return std::vector<Row>(begin(), end()); }

private:
  const Row *begin_ = nullptr;
  std::size_t size_ = 0;
};

// The rows that belong to one owner (the pins of a terminal, the properties of an object), in creation order. Built by
// the owner of the index at first need, then kept up to date.
//
// All rows lie in one array, those of an owner side by side. An owner whose place is full moves to the array's end with
// room for as many again, unless it is there already: filling the index in the order of the owners moves nothing. Eight
// owners with neighbouring numbers have their slots side by side, and a table with open addressing says where: a walk
// over objects in the order of their rows stays in memory that is at hand.
class OwnerIndex {
public:
  bool isBuilt() const { return isBuilt_; }
  void setBuilt() { isBuilt_ = true; }
  void clear();
  // Fills an empty index with the rows below `rows` that have an owner: those for which `ownerOf(Row, Owner &)` says so
  // and sets it. Quicker than adding one by one, and without gaps. The rows may be asked twice.
  template <typename Owner, typename OwnerOf> void fill(Row rows, OwnerOf ownerOf);
  void add(std::uint64_t owner, Row row);
  void remove(std::uint64_t owner, Row row);
  // Empty when the owner has none.
  RowSpan rows(std::uint64_t owner) const {
    if (places_.empty()) {
      return RowSpan();
    }
    const Place &place = places_[placeOf(owner >> kGroupShift)];
    if (place.group == kNoGroup) {
      return RowSpan();
    }
    const Slot &slot = groups_[place.slots].slots[owner & (kGroupSlots - 1)];
    return RowSpan(rows_.data() + slot.begin, slot.size);
  }

private:
  static constexpr unsigned kGroupShift = 3;
  static constexpr unsigned kGroupSlots = 1u << kGroupShift;
  struct Slot {
    std::size_t begin = 0;
    std::uint32_t size = 0;
    std::uint32_t room = 0;
  };
  struct Group {
    Slot slots[kGroupSlots];
  };
  static constexpr std::uint64_t kNoGroup = ~std::uint64_t(0); // more than any owner leads to
  // Where the slots of a group of owners are.
  struct Place {
    std::uint64_t group = kNoGroup;
    std::size_t slots = 0;
  };

  // The place of the group, or the free one where it belongs.
  std::size_t placeOf(std::uint64_t group) const {
    std::size_t place = static_cast<std::size_t>(group * 0x9e3779b97f4a7c15u >> shift_);
    while (places_[place].group != group && places_[place].group != kNoGroup) {
      place = (place + 1) & (places_.size() - 1);
    }
    return place;
  }
  // The number of the owner's group among those that have slots, which it gets when it has none.
  std::size_t groupFor(std::uint64_t group);
  Slot &slotFor(std::uint64_t owner) {
    return groups_[groupFor(owner >> kGroupShift)].slots[owner & (kGroupSlots - 1)];
  }
  void enlarge();
  void makeRoom(Slot &slot);
  // As fill(). False, with part of the rows in the index, when those of an owner do not stand side by side.
  template <typename Owner, typename OwnerOf> bool fillInOrder(Row rows, OwnerOf &ownerOf);

  bool isBuilt_ = false;
  unsigned shift_ = 64;
  std::vector<Place> places_; // a power of two, or none
  std::vector<Group> groups_;
  std::vector<Row> rows_;
};

template <typename Owner, typename OwnerOf> bool OwnerIndex::fillInOrder(Row rows, OwnerOf &ownerOf) {
  std::uint64_t lastGroup = kNoGroup;
  std::size_t lastPlace = 0;
  for (Row row = 0; row < rows; ++row) {
    Owner owner;
    if (!ownerOf(row, owner)) {
      continue;
    }
    const std::uint64_t group = std::uint64_t(owner) >> kGroupShift;
    if (group != lastGroup) {
      lastGroup = group;
      lastPlace = groupFor(group);
    }
    Slot &slot = groups_[lastPlace].slots[std::size_t(owner) & (kGroupSlots - 1)];
    if (slot.size == 0) {
      slot.begin = rows_.size();
    } else if (slot.begin + slot.size != rows_.size()) {
      return false;
    }
    rows_.push_back(row);
    ++slot.size;
    ++slot.room;
  }
  return true;
}

template <typename Owner, typename OwnerOf> void OwnerIndex::fill(Row rows, OwnerOf ownerOf) {
  if (fillInOrder<Owner>(rows, ownerOf)) {
    return;
  }
  clear();
  constexpr std::size_t kNoSlot = ~std::size_t(0);
  std::vector<std::size_t> slots(rows, kNoSlot); // of each row: its place in the groups, one after the other
  std::uint64_t lastGroup = kNoGroup;
  std::size_t lastPlace = 0;
  for (Row row = 0; row < rows; ++row) {
    Owner owner;
    if (!ownerOf(row, owner)) {
      continue;
    }
    const std::uint64_t group = std::uint64_t(owner) >> kGroupShift;
    if (group != lastGroup) {
      lastGroup = group;
      lastPlace = groupFor(group);
    }
    const std::size_t lane = std::size_t(owner) & (kGroupSlots - 1);
    ++groups_[lastPlace].slots[lane].room;
    slots[row] = lastPlace << kGroupShift | lane;
  }
  std::size_t end = 0;
  for (Group &group : groups_) {
    for (Slot &slot : group.slots) {
      slot.begin = end;
      end += slot.room;
    }
  }
  rows_.resize(end, kNoRow);
  for (Row row = 0; row < rows; ++row) {
    if (slots[row] != kNoSlot) {
      Slot &slot = groups_[slots[row] >> kGroupShift].slots[slots[row] & (kGroupSlots - 1)];
      rows_[slot.begin + slot.size++] = row;
    }
  }
}

// Rows by name. Names may be used by several rows; find() gives the oldest.
class NameIndex {
public:
  bool isBuilt() const { return isBuilt_; }
  void setBuilt() { isBuilt_ = true; }
  void clear() {
    isBuilt_ = false;
    rows_.clear();
  }
  void add(const std::string &name, Row row) { rows_.emplace(name, row); }
  void remove(const std::string &name, Row row);
  Row find(const std::string &name) const;

private:
  bool isBuilt_ = false;
  std::unordered_multimap<std::string, Row> rows_;
};

// Access to the table and row behind an API object. Every member function of the API begins with one of these.
inline Table *tableOf(const oaObject *object) { return object->table_; }
inline Row rowOf(const oaObject *object) { return object->row_; }
inline std::uint16_t asideOf(const oaObject *object) { return object->aside_; }
[[noreturn]] void raiseDeadObject();
// The table of a living object; raises oacDeletedDatabase for a dead one and for NULL.
inline Table &liveTable(const oaObject *object) {
  if (object == nullptr || object->table_ == nullptr) {
    raiseDeadObject();
  }
  return *object->table_;
}

} // namespace kit
} // namespace OpenAccess_4

#endif
