#include "collection.h"

#include "oa/oaObject.h"

#include <algorithm>

namespace OpenAccess_4 {

oaUInt4 oaBaseCollection::getCount() const { return kind_->count(kit::CollectionAccess::question(*this)); }

oaBoolean oaBaseCollection::isEmpty() const {
  kit::Row position = kit::kNoRow;
  kit::Row hint = 0;
  return kind_->next(kit::CollectionAccess::question(*this), position, hint) == nullptr;
}

oaBoolean oaBaseCollection::includes(const oaObject *object) const {
  kit::Row position = kit::kNoRow;
  kit::Row hint = 0;
  while (const oaObject *member = kind_->next(kit::CollectionAccess::question(*this), position, hint)) {
    if (member == object) {
      return true;
    }
  }
  return false;
}

namespace kit {

oaUInt4 CollectionKind::count(const CollectionQuestion &question) const {
  Row position = kNoRow;
  Row hint = 0;
  oaUInt4 members = 0;
  while (next(question, position, hint) != nullptr) {
    ++members;
  }
  return members;
}

oaObject *WholeTableKind::next(const CollectionQuestion &question, Row &position, Row &) const {
  if (question.table == nullptr) {
    return nullptr;
  }
  Row row = position;
  do {
    row = question.table->nextAlive(row);
    if (row == kNoRow) {
      return nullptr;
    }
  } while (!accepts(question, row));
  position = row;
  return question.table->handle(row, question.table->kindOf(row));
}

oaUInt4 WholeTableKind::count(const CollectionQuestion &question) const {
  if (question.table == nullptr) {
    return 0;
  }
  return isFiltered(question) ? CollectionKind::count(question) : question.table->countAlive();
}

oaObject *OwnedRowsKind::next(const CollectionQuestion &question, Row &position, Row &hint) const {
  const RowSpan rows = members(question);
  // `hint` is the place behind the row returned last, unless members came or went meanwhile.
  std::size_t place = hint;
  if (position == kNoRow) {
    place = 0;
  } else if (place == 0 || place > rows.size() || rows[place - 1] != position) {
    place = static_cast<std::size_t>(std::upper_bound(rows.begin(), rows.end(), position) - rows.begin());
  }
  while (place < rows.size() && !accepts(question, rows[place])) {
    ++place;
  }
  if (place == rows.size()) {
    return nullptr;
  }
  position = rows[place];
  hint = static_cast<Row>(place + 1);
  return memberTable(question).handle(position);
}

oaUInt4 OwnedRowsKind::count(const CollectionQuestion &question) const {
  const RowSpan rows = members(question);
  return static_cast<oaUInt4>(std::count_if(rows.begin(), rows.end(), [&](Row row) { return accepts(question, row); }));
}

} // namespace kit
} // namespace OpenAccess_4
