#ifndef OAKIT_COLUMN_H
#define OAKIT_COLUMN_H

// One attribute of all rows of a table, as a plain array. Invariants:
//  (1) a column is borrowed (points into the mapped file) or owned (points to memory of its own), never both; the first
//  change
//      turns a borrowed column into an owned one;
//  (2) rows at or beyond size() have the column's default value, so an attribute that nobody sets costs nothing, in
//  memory or on disk; (3) no element of a borrowed column is handed out before the checksum of its segment was
//  verified.
// Elements are trivially copyable and stored little-endian.

#include <cassert>
#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>
#include <vector>

namespace OpenAccess_4 {
namespace kit {

class DatabaseImage;
class Table;

using Row = std::uint32_t;
constexpr Row kNoRow = 0xffffffffu;

// Rows covered by one checksum: the unit in which a column is verified.
constexpr unsigned kSegmentShift = 16;
constexpr Row kSegmentRows = Row(1) << kSegmentShift;

// A row number (or the beginning of a span of rows) of another table, inside each element of a column. The writer
// renumbers these when rows have been destroyed.
struct ColumnReference {
  // Table id, or kTableFromRow when the table depends on the row (then `tableOf` tells).
  std::uint16_t table = 0;
  std::uint32_t offsetBytes = 0;
  // Set for a span {begin, count} of a pool: the position of the count within the element.
  std::int32_t countOffsetBytes = -1;
  std::uint16_t (*tableOf)(const Table &table, Row row) = nullptr;
};
constexpr std::uint16_t kTableFromRow = 0xffff;

// The few references of one column, without memory of their own: opening a design makes a hundred columns.
class ColumnReferences {
public:
  void add(const ColumnReference &reference) {
    assert(count_ < kMost);
    references_[count_++] = reference;
  }
  const ColumnReference *begin() const { return references_; }
  const ColumnReference *end() const { return references_ + count_; }

private:
  static constexpr std::size_t kMost = 2;
  ColumnReference references_[kMost];
  std::size_t count_ = 0;
};

// Where a borrowed column lies in an image.
struct ColumnView {
  const void *elements = nullptr;
  Row rows = 0;
  const std::uint64_t *checksums = nullptr; // one per segment
};

// The part of a column that does not depend on the type of its elements.
class ColumnBase {
public:
  ColumnBase(Table &table, std::uint16_t id, const char *name, std::uint32_t elementBytes, const void *defaultValue);
  ~ColumnBase();
  ColumnBase(const ColumnBase &) = delete;
  ColumnBase &operator=(const ColumnBase &) = delete;

  // Declares that each element holds a reference; see ColumnReference.
  ColumnBase &refersTo(std::uint16_t table, std::uint32_t offsetBytes = 0);
  ColumnBase &refersTo(std::uint16_t (*tableOf)(const Table &, Row), std::uint32_t offsetBytes = 0);
  ColumnBase &spansPool(std::uint16_t table, std::uint32_t beginOffsetBytes, std::uint32_t countOffsetBytes);

  std::uint16_t id() const { return id_; }
  const char *name() const { return name_; }
  std::uint32_t elementBytes() const { return elementBytes_; }
  // Rows that are stored; the others have the default value.
  Row size() const { return size_; }
  bool isBorrowed() const { return image_ != nullptr; }
  const ColumnReferences &references() const { return references_; }

  // The bytes of one element; raises oacChecksumMismatch for a damaged segment.
  const void *element(Row row) const {
    if (row >= size_) {
      return default_;
    }
    if (isUnverified(row)) {
      verifySegmentOf(row);
    }
    return data_ + std::size_t(row) * elementBytes_;
  }

  void borrow(const DatabaseImage &image, const ColumnView &view);
  void clear();
  // Makes room for `rows` elements, so that filling does not move the memory again and again.
  void reserve(Row rows);
  // Verifies every segment that covers rows [begin, end).
  void verify(Row begin, Row end) const;

protected:
  // Whether the stored row lies in a segment whose checksum was not looked at yet.
  bool isUnverified(Row row) const { return unverifiedSegments_ != 0 && !verified_[row >> kSegmentShift]; }
  void verifySegmentOf(Row row) const;
  void own();
  void grow(Row rows);
  // Makes rows up to `row` stored and owned and returns the element.
  unsigned char *writable(Row row) {
    if (image_ != nullptr) {
      own();
    }
    if (row >= size_) {
      grow(row + 1);
    }
    return data_ + std::size_t(row) * elementBytes_;
  }

  Table &table_;
  const char *name_;
  std::uint16_t id_;
  std::uint32_t elementBytes_;
  Row size_ = 0;
  Row capacity_ = 0;
  unsigned char *data_ = nullptr; // borrowed data is never written through this pointer
  mutable std::uint32_t unverifiedSegments_ = 0;
  const DatabaseImage *image_ = nullptr;
  const std::uint64_t *checksums_ = nullptr;
  mutable std::unique_ptr<bool[]> verified_;
  const void *default_; // the typed column's default value
  ColumnReferences references_;
};

template <typename T> class Column : public ColumnBase {
public:
  static_assert(std::is_trivially_copyable<T>::value, "columns are copied to disk as they are");

  Column(Table &table, std::uint16_t id, const char *name, const T &defaultValue = T())
      : ColumnBase(table, id, name, sizeof(T), &defaultValue_), defaultValue_(defaultValue) {}

  T operator[](Row row) const {
    if (row >= size_) {
      return defaultValue_;
    }
    if (isUnverified(row)) {
      verifySegmentOf(row);
    }
    return reinterpret_cast<const T *>(data_)[row];
  }

  // The element when it can be had without further ado: stored and verified. NULL otherwise.
  const T *ready(Row row) const {
    return row < size_ && !isUnverified(row) ? reinterpret_cast<const T *>(data_) + row : nullptr;
  }

  // Setting the default value beyond the stored rows stores nothing.
  void set(Row row, const T &value) {
    if (row >= size_ && std::memcmp(&value, &defaultValue_, sizeof(T)) == 0) {
      return;
    }
    // Appending within the room that is there already is the hot path of writing.
    if (row == size_ && size_ < capacity_) {
      reinterpret_cast<T *>(data_)[size_++] = value;
      return;
    }
    *reinterpret_cast<T *>(writable(row)) = value;
  }

  // Elements [begin, begin + count) as they lie in memory, valid until the next change. The caller has checked that
  // they are stored (see Table::checkSpan).
  const T *span(Row begin, Row count) const {
    if (count != 0 && (isUnverified(begin) || isUnverified(begin + count - 1) || count > kSegmentRows)) {
      verify(begin, begin + count);
    }
    return reinterpret_cast<const T *>(data_) + begin;
  }

  // Appends `count` elements at the end of the stored rows and returns the row of the first.
  Row append(const T *elements, Row count) {
    const Row begin = size_;
    if (count != 0) {
      writable(begin + count - 1);
      std::memcpy(data_ + std::size_t(begin) * sizeof(T), elements, std::size_t(count) * sizeof(T));
    }
    return begin;
  }

private:
  T defaultValue_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
