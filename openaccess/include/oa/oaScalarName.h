// A name without an index.
#ifndef OASCALARNAME_H
#define OASCALARNAME_H

#include "oa/oaNameMem.h"

namespace OpenAccess_4 {

class oaScalarName : public oaNameBase {
public:
  oaScalarName() = default;
  /// Raises what oaNameSpace::getInternalScalar raises; the empty text gives the empty name.
  oaScalarName(const oaNameSpace &nSpace, const oaChar *in) { init(nSpace, in); }

  void init(const oaNameSpace &nSpace, const oaChar *in);
  void get(const oaNameSpace &nSpace, oaString &out) const;
  /// The native form.
  void get(oaString &out) const;
  /// 1, or 0 for the empty name.
  oaUInt4 getNumBits() const { return isEmpty() ? 0 : 1; }
  /// Adds a hierarchy level at the end.
  void append(const oaNameMem &in) { oaNameBase::append(in); }
  void clear() { oaNameBase::clear(); }

  oaBoolean operator==(const oaScalarName &name) const { return hasEqualMembers(name); }
  oaBoolean operator!=(const oaScalarName &name) const { return !(*this == name); }
};

} // namespace OpenAccess_4

#endif
