#ifndef OAKIT_COLLECTION_H
#define OAKIT_COLLECTION_H

// How the members of a collection are found. One constant object of a class derived from CollectionKind exists for each
// kind of collection; the collection itself only names the kind, a table, the owner's row and the filter flags.

#include "oa/oaCollection.h"
#include "table.h"

namespace OpenAccess_4 {
namespace kit {

// All living rows of the table.
class WholeTableKind : public CollectionKind {
public:
  oaObject *next(const CollectionQuestion &question, Row &position, Row &hint) const override;
  oaUInt4 count(const CollectionQuestion &question) const override;

protected:
  // Filters by row and flags; accepts all by default.
  virtual bool accepts(const CollectionQuestion &, Row) const { return true; }
  virtual bool isFiltered(const CollectionQuestion &) const { return false; }
};

// The rows that belong to an owner, in creation order. `members` gives the table that holds them and their row numbers
// in ascending order; it is asked again at each step, so members may come and go meanwhile.
class OwnedRowsKind : public CollectionKind {
public:
  oaObject *next(const CollectionQuestion &question, Row &position, Row &hint) const override;
  oaUInt4 count(const CollectionQuestion &question) const override;

protected:
  virtual RowSpan members(const CollectionQuestion &question) const = 0;
  virtual Table &memberTable(const CollectionQuestion &question) const = 0;
  virtual bool accepts(const CollectionQuestion &, Row) const { return true; }
};

// The only maker of collections.
class CollectionAccess {
public:
  template <typename Collection>
  static Collection make(const CollectionKind &kind, Table *table, Row owner, oaUInt4 flags = 0) {
    return Collection(oaBaseCollection(&kind, table, owner, flags));
  }
  static CollectionQuestion question(const oaBaseCollection &collection) { return collection.question_; }
};

// A collection of all living rows of `table`.
template <typename Collection> Collection wholeTable(Table &table) {
  static const WholeTableKind kind;
  return CollectionAccess::make<Collection>(kind, &table, 0);
}
// A collection without members.
template <typename Collection> Collection emptyCollection() {
  static const WholeTableKind kind;
  return CollectionAccess::make<Collection>(kind, nullptr, 0);
}

} // namespace kit
} // namespace OpenAccess_4

#endif
