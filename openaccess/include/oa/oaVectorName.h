// A name with a range of bits: from start towards stop in steps, without passing stop.
#ifndef OAVECTORNAME_H
#define OAVECTORNAME_H

#include "oa/oaScalarName.h"

namespace OpenAccess_4 {

class oaVectorName : public oaNameBase {
public:
  oaVectorName() = default;
  /// The text is the base and is read as a scalar name. A step of 0 raises oacInvalidVectorValue, here and below.
  oaVectorName(const oaNameSpace &nSpace, const oaChar *in, oaUInt4 start, oaUInt4 stop, oaUInt4 step = 1);
  oaVectorName(const oaNameSpace &nSpace, const oaChar *in) { init(nSpace, in); }
  oaVectorName(const oaScalarName &in, oaUInt4 start, oaUInt4 stop, oaUInt4 step = 1);

  /// With `baseOnly` the whole text is the base, and the numbers stay.
  void init(const oaNameSpace &nSpace, const oaChar *in, oaBoolean baseOnly = false);
  void get(const oaNameSpace &nSpace, oaString &out) const;
  /// The native form, here and below.
  void get(oaString &out) const;
  void getBaseName(const oaNameSpace &nSpace, oaString &out) const;
  void getBaseName(oaString &out) const;
  void getBaseName(oaScalarName &out) const;
  /// The name of the bit with that place in the range, counted from 0; oacBitNotInRangeForName beyond it.
  void getBitName(const oaNameSpace &nSpace, oaUInt4 bit, oaString &out) const;
  /// The number of that bit.
  oaUInt4 getBitIndex(oaUInt4 bit) const;

  /// 0 for the empty name.
  oaUInt4 getNumBits() const;
  oaUInt4 getStart() const { return start_; }
  oaUInt4 getStop() const { return stop_; }
  oaUInt4 getStep() const { return step_; }
  void setStart(oaUInt4 val) { start_ = val; }
  void setStop(oaUInt4 val) { stop_ = val; }
  void setStep(oaUInt4 val);

  oaBoolean operator==(const oaVectorName &name) const {
    return hasEqualMembers(name) && start_ == name.start_ && stop_ == name.stop_ && step_ == name.step_;
  }
  oaBoolean operator!=(const oaVectorName &name) const { return !(*this == name); }

private:
  oaUInt4 start_ = 0;
  oaUInt4 stop_ = 0;
  oaUInt4 step_ = 1;
};

} // namespace OpenAccess_4

#endif
