#ifndef OACOLLECTION_H
#define OACOLLECTION_H

#include "oa/oaTypes.h"

namespace OpenAccess_4 {

class oaObject;
class oaBaseIter;

namespace kit {
class Table;
class CollectionAccess;

// What a collection asks for: members of the table, of the row that owns them, with filter flags.
struct CollectionQuestion {
  Table *table;
  oaUInt4 owner;
  oaUInt4 flags;
};

// How the members of one kind of collection are found. Clients have no use for it; it stands here so that a step of an
// iterator is one call.
class CollectionKind {
public:
  virtual ~CollectionKind() = default;
  // The member after `position` (0xffffffff: the first), or NULL. Updates `position`; `hint` starts at 0 and belongs to
  // the kind.
  virtual oaObject *next(const CollectionQuestion &question, oaUInt4 &position, oaUInt4 &hint) const = 0;
  // Number of members; the default walks.
  virtual oaUInt4 count(const CollectionQuestion &question) const;
};
} // namespace kit

// The members of a container. A collection costs nothing to make and is a question, not a copy: it is answered when an
// iterator walks it. Members come in the order of their creation, or in file order for library definitions.
class oaBaseCollection {
public:
  oaUInt4 getCount() const;
  // Cheaper than getCount().
  oaBoolean isEmpty() const;
  oaBoolean includes(const oaObject *object) const;

protected:
  oaBaseCollection(const kit::CollectionKind *kind, kit::Table *table, oaUInt4 owner, oaUInt4 flags)
      : kind_(kind), question_{table, owner, flags} {}

private:
  friend class oaBaseIter;
  friend class kit::CollectionAccess;

  const kit::CollectionKind *kind_;
  kit::CollectionQuestion question_;
};

template <typename Member, typename Container> class oaCollection : public oaBaseCollection {
public:
  oaCollection(const oaCollection &) = default;
  oaCollection &operator=(const oaCollection &) = default;
  oaBoolean includes(const Member *member) const { return oaBaseCollection::includes(member); }

private:
  friend class kit::CollectionAccess;
  explicit oaCollection(const oaBaseCollection &base) : oaBaseCollection(base) {}
};

// Walks a collection. The object returned last, and all before it, may be destroyed during the walk, and may change
// their class; the walk then still meets every other member exactly once. Adding members during a walk is allowed but
// they may or may not be met.
class oaBaseIter {
public:
  void reset() {
    position_ = 0xffffffffu;
    hint_ = 0;
  }

protected:
  explicit oaBaseIter(const oaBaseCollection &collection) : collection_(collection) {}
  oaObject *nextObject() { return collection_.kind_->next(collection_.question_, position_, hint_); }

private:
  friend class kit::CollectionAccess;

  oaBaseCollection collection_;
  oaUInt4 position_ = 0xffffffffu;
  oaUInt4 hint_ = 0;
};

template <typename Member> class oaIter : public oaBaseIter {
public:
  // Not explicit: `oaIter<oaInst> it = block->getInsts();` is common.
  oaIter(const oaBaseCollection &collection) : oaBaseIter(collection) {} // NOLINT(google-explicit-constructor)
  // NULL at the end.
  Member *getNext() { return static_cast<Member *>(nextObject()); }
  Member *next() { return getNext(); }
};

} // namespace OpenAccess_4

#endif
