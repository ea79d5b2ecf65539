#include "column.h"

#include "databaseimage.h"
#include "oa/oaBaseMsgIds.h"
#include "raise.h"
#include "table.h"

#include <algorithm>
#include <cstdlib>

namespace OpenAccess_4 {
namespace kit {

ColumnBase::ColumnBase(Table &table, std::uint16_t id, const char *name, std::uint32_t elementBytes,
                       const void *defaultValue)
    : table_(table), name_(name), id_(id), elementBytes_(elementBytes), default_(defaultValue) {
  table.addColumn(*this);
}

ColumnBase::~ColumnBase() { clear(); }

ColumnBase &ColumnBase::refersTo(std::uint16_t table, std::uint32_t offsetBytes) {
  ColumnReference reference;
  reference.table = table;
  reference.offsetBytes = offsetBytes;
  references_.add(reference);
  return *this;
}

ColumnBase &ColumnBase::refersTo(std::uint16_t (*tableOf)(const Table &, Row), std::uint32_t offsetBytes) {
  ColumnReference reference;
  reference.table = kTableFromRow;
  reference.offsetBytes = offsetBytes;
  reference.tableOf = tableOf;
  references_.add(reference);
  return *this;
}

ColumnBase &ColumnBase::spansPool(std::uint16_t table, std::uint32_t beginOffsetBytes, std::uint32_t countOffsetBytes) {
  ColumnReference reference;
  reference.table = table;
  reference.offsetBytes = beginOffsetBytes;
  reference.countOffsetBytes = static_cast<std::int32_t>(countOffsetBytes);
  references_.add(reference);
  return *this;
}

void ColumnBase::borrow(const DatabaseImage &image, const ColumnView &view) {
  clear();
  if (view.rows == 0) {
    return;
  }
  image_ = &image;
  data_ = static_cast<unsigned char *>(const_cast<void *>(view.elements));
  size_ = view.rows;
  checksums_ = view.checksums;
  if (checksums_ != nullptr) {
    unverifiedSegments_ = (size_ - 1) / kSegmentRows + 1;
    verified_.reset(new bool[unverifiedSegments_]());
  }
}

void ColumnBase::clear() {
  if (image_ == nullptr) {
    std::free(data_);
  }
  data_ = nullptr;
  size_ = 0;
  capacity_ = 0;
  image_ = nullptr;
  checksums_ = nullptr;
  verified_.reset();
  unverifiedSegments_ = 0;
}

void ColumnBase::verifySegmentOf(Row row) const {
  const Row segment = row >> kSegmentShift;
  const Row begin = segment << kSegmentShift;
  const Row rows = std::min(kSegmentRows, size_ - begin);
  image_->verify(data_ + std::size_t(begin) * elementBytes_, std::size_t(rows) * elementBytes_, checksums_[segment],
                 std::string("table ") + table_.name() + ", column " + name_);
  verified_[segment] = true;
  --unverifiedSegments_;
}

void ColumnBase::verify(Row begin, Row end) const {
  end = std::min(end, size_);
  if (unverifiedSegments_ == 0 || begin >= end) {
    return;
  }
  for (Row segment = begin >> kSegmentShift; segment <= (end - 1) >> kSegmentShift; ++segment) {
    if (isUnverified(segment << kSegmentShift)) {
      verifySegmentOf(segment << kSegmentShift);
    }
  }
}

void ColumnBase::own() {
  verify(0, size_);
  const unsigned char *borrowed = data_;
  const Row rows = size_;
  // Forget the borrowed memory first: reserve() must not free it.
  image_ = nullptr;
  checksums_ = nullptr;
  verified_.reset();
  unverifiedSegments_ = 0;
  data_ = nullptr;
  size_ = 0;
  capacity_ = 0;
  reserve(rows);
  std::memcpy(data_, borrowed, std::size_t(rows) * elementBytes_);
  size_ = rows;
}

void ColumnBase::reserve(Row rows) {
  if (image_ != nullptr) {
    own();
  }
  if (rows <= capacity_) {
    return;
  }
  // realloc moves large blocks by remapping their pages, so growing does not copy them.
  void *grown = std::realloc(data_, std::size_t(rows) * elementBytes_);
  if (grown == nullptr) {
    raiseMemory(std::string("table ") + table_.name() + ", column " + name_ + ": no memory for " +
                std::to_string(rows) + " rows");
  }
  data_ = static_cast<unsigned char *>(grown);
  capacity_ = rows;
}

void ColumnBase::grow(Row rows) {
  if (rows > capacity_) {
    const std::uint64_t wanted = std::max<std::uint64_t>({rows, std::uint64_t(capacity_) + capacity_ / 2, 16});
    reserve(static_cast<Row>(std::min<std::uint64_t>(wanted, kNoRow)));
  }
  // The one new row of an append is filled by the caller; rows skipped over get the default.
  for (Row row = size_; row < rows; ++row) {
    std::memcpy(data_ + std::size_t(row) * elementBytes_, default_, elementBytes_);
  }
  size_ = rows;
}

} // namespace kit
} // namespace OpenAccess_4
