// An ordered list of simple names, each with a repeat count.
#ifndef OABUNDLENAME_H
#define OABUNDLENAME_H

#include <vector>

#include "oa/oaSimpleName.h"

namespace OpenAccess_4 {

class oaBundleName {
public:
  oaBundleName() = default;
  oaBundleName(const oaNameSpace &nSpace, const oaChar *in) { init(nSpace, in); }
  // A repeat count of 0 raises oacInvalidRepeat, here and in append().
  oaBundleName(const oaScalarName &in, oaUInt4 repeat = 1) { append(in, repeat); }
  oaBundleName(const oaVectorName &in, oaUInt4 repeat = 1) { append(in, repeat); }
  oaBundleName(const oaVectorBitName &in, oaUInt4 repeat = 1) { append(in, repeat); }
  oaBundleName(const oaSimpleName &in, oaUInt4 repeat = 1) { append(in, repeat); }

  void init(const oaNameSpace &nSpace, const oaChar *in);
  void get(const oaNameSpace &nSpace, oaString &out) const;
  /// The native form.
  void get(oaString &out) const;
  /// The name of a bit by its place in the bundle, counted from 0; oacBitNotInRangeForName beyond the last.
  void getBitName(const oaNameSpace &nSpace, oaUInt4 bit, oaString &out) const;

  void append(const oaScalarName &name, oaUInt4 repeat = 1) { append(oaSimpleName(name), repeat); }
  void append(const oaVectorName &name, oaUInt4 repeat = 1) { append(oaSimpleName(name), repeat); }
  void append(const oaVectorBitName &name, oaUInt4 repeat = 1) { append(oaSimpleName(name), repeat); }
  void append(const oaSimpleName &name, oaUInt4 repeat = 1);

  /// To every member, as in oaNameBase; oacInvalidName for an empty bundle.
  void addHierPath(const oaScalarName &path);
  void addHierPath(const oaVectorBitName &path);
  void addHierMem(const oaNameSpace &nSpace, const oaChar *in, oaUInt4 len);
  void addHierMem(const oaNameMem &in);

  oaBoolean isEmpty() const { return members_.empty(); }
  oaUInt4 getNumMembers() const { return static_cast<oaUInt4>(members_.size()); }
  /// Repeats counted; at most oacNullIndex.
  oaUInt4 getNumBits() const;
  /// The members that there is room for.
  oaUInt4 getSize() const { return static_cast<oaUInt4>(members_.capacity()); }
  /// Makes room for `newSize` members; further ones are dropped.
  void resize(oaUInt4 newSize);

  const oaSimpleName &operator[](oaUInt4 i) const { return members_[i]; }
  /// Member by member with their repeat counts: A,A is not 2*A.
  oaBoolean operator==(const oaBundleName &name) const;
  oaBoolean operator!=(const oaBundleName &name) const { return !(*this == name); }

private:
  std::vector<oaSimpleName> members_;
};

} // namespace OpenAccess_4

#endif
