#ifndef OATCL_COLLECTIONS_H
#define OATCL_COLLECTIONS_H

// A collection in Tcl is its own iterator.

#include "values.h"

namespace OpenAccess_4 {
namespace tcl {

extern const ClassInfo kCollectionClass;

class Collection {
public:
  // `container` is the object that was asked, or NULL for a collection of the session.
  Collection(const oaBaseCollection &members, const oaObject *container);

  // Each of them raises ScriptError when the container is gone.
  oaObject *next();
  void reset();
  oaUInt4 count() const;
  bool isEmpty() const;
  bool includes(const oaObject *object) const;

private:
  class Walk : public oaBaseIter {
  public:
    explicit Walk(const oaBaseCollection &members) : oaBaseIter(members) {}
    using oaBaseIter::nextObject;
  };
  void check() const;

  oaBaseCollection members_;
  Walk walk_;
  const oaObject *container_;
  const void *table_; // of the container when the collection was made: a handle's memory is used again one day
  oaUInt4 row_;
};

} // namespace tcl
} // namespace OpenAccess_4

#endif
