#ifndef OACOLLECTION_H
#define OACOLLECTION_H

#include "oa/oaTypes.h"

namespace OpenAccess_4 {

class oaObject;
class oaBaseIter;

namespace kit {
class Table;
class CollectionKind;
class CollectionAccess;
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
      : kind_(kind), table_(table), owner_(owner), flags_(flags) {}

private:
  friend class oaBaseIter;
  friend class kit::CollectionAccess;

  const kit::CollectionKind *kind_;
  kit::Table *table_;
  oaUInt4 owner_;
  oaUInt4 flags_;
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
  oaObject *nextObject();

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
