// A name with one index.
#ifndef OAVECTORBITNAME_H
#define OAVECTORBITNAME_H

#include "oa/oaScalarName.h"

namespace OpenAccess_4 {

class oaVectorBitName : public oaNameBase {
public:
  oaVectorBitName() = default;
  oaVectorBitName(const oaNameSpace &nSpace, const oaChar *in) { init(nSpace, in); }
  /// The text is the base and is read as a scalar name.
  oaVectorBitName(const oaNameSpace &nSpace, const oaChar *in, oaUInt4 index);
  oaVectorBitName(const oaScalarName &in, oaUInt4 index) : oaNameBase(in), index_(index) {}

  /// With `baseOnly` the whole text is the base, and the index stays.
  void init(const oaNameSpace &nSpace, const oaChar *in, oaBoolean baseOnly = false);
  void get(const oaNameSpace &nSpace, oaString &out) const;
  /// The native form, here and below.
  void get(oaString &out) const;
  void getBaseName(const oaNameSpace &nSpace, oaString &out) const;
  void getBaseName(oaString &out) const;
  void getBaseName(oaScalarName &out) const;

  /// 1, or 0 for the empty name.
  oaUInt4 getNumBits() const { return isEmpty() ? 0 : 1; }
  oaUInt4 getIndex() const { return index_; }
  void setIndex(oaUInt4 val) { index_ = val; }

  oaBoolean operator==(const oaVectorBitName &name) const { return hasEqualMembers(name) && index_ == name.index_; }
  oaBoolean operator!=(const oaVectorBitName &name) const { return !(*this == name); }

private:
  oaUInt4 index_ = 0;
};

} // namespace OpenAccess_4

#endif
