#ifndef OAPROPS_H
#define OAPROPS_H

// The classes of properties. See oaProp for what they have in common.

#include "oa/oaArray.h"
#include "oa/oaProp.h"

namespace OpenAccess_4 {

class oaIntProp : public oaProp {
public:
  using oaProp::getValue;
  oaInt4 getValue() const;
  void setValue(oaInt4 value);
  static oaIntProp *create(oaObject *object, const oaString &name, oaInt4 value);
};

class oaFloatProp : public oaProp {
public:
  using oaProp::getValue;
  oaFloat getValue() const;
  void setValue(oaFloat value);
  static oaFloatProp *create(oaObject *object, const oaString &name, oaFloat value);
};

class oaDoubleProp : public oaProp {
public:
  using oaProp::getValue;
  oaDouble getValue() const;
  void setValue(oaDouble value);
  static oaDoubleProp *create(oaObject *object, const oaString &name, oaDouble value);
};

class oaBooleanProp : public oaProp {
public:
  using oaProp::getValue;
  oaBoolean getValue() const;
  void setValue(oaBoolean value);
  static oaBooleanProp *create(oaObject *object, const oaString &name, oaBoolean value);
};

class oaTimeProp : public oaProp {
public:
  using oaProp::getValue;
  oaTime getValue() const;
  void setValue(oaTime value);
  static oaTimeProp *create(oaObject *object, const oaString &name, oaTime value);
};

class oaStringProp : public oaProp {
public:
  void getValue(oaString &value) const;
  void setValue(const oaString &value);
  static oaStringProp *create(oaObject *object, const oaString &name, const oaString &value);
};

// Bytes that only the application understands, with a text that says whose they are. No bytes at all are legal.
class oaAppProp : public oaProp {
public:
  using oaProp::getValue;
  oaUInt4 getSize() const;
  // `value` has room for getSize() bytes.
  void getValue(oaByte *value) const;
  void getValue(oaByteArray &valueArray) const;
  void getAppType(oaString &appType) const;
  void setAppType(const oaString &appType);
  void setValue(oaUInt4 size, const oaByte *value);
  void setValue(const oaByteArray &valueArray);
  static oaAppProp *create(oaObject *object, const oaString &name, const oaString &appType, const oaUInt4 size,
                           const oaByte *value);
  static oaAppProp *create(oaObject *object, const oaString &name, const oaString &appType,
                           const oaByteArray &valueArray);
};

// No value of its own, only further properties.
class oaHierProp : public oaProp {
public:
  static oaHierProp *create(oaObject *object, const oaString &name);
};

// The texts an enumeration property may have, in the order given at its creation.
class oaEnumCollection {
public:
  oaUInt4 getCount() const;
  oaBoolean isEmpty() const;
  oaBoolean includes(const oaString &value) const;

private:
  friend class oaEnumProp;
  friend class oaEnumPropIter;
  explicit oaEnumCollection(const class oaEnumProp *prop) : prop_(prop) {}
  const class oaEnumProp *prop_;
};

class oaEnumPropIter {
public:
  oaEnumPropIter(const oaEnumCollection &collection) : prop_(collection.prop_) {} // NOLINT(google-explicit-constructor)
  // False at the end.
  oaBoolean getNext(oaString &enumV);
  void reset() { next_ = 0; }

private:
  const class oaEnumProp *prop_;
  oaUInt4 next_ = 0;
};

// One of a list of texts. A value that is not in the list raises oacInvalidEnumValue.
class oaEnumProp : public oaProp {
public:
  void getValue(oaString &value) const;
  void setValue(const oaString &value);
  oaEnumCollection getEnums() const;
  static oaEnumProp *create(oaObject *object, const oaString &name, const oaString &value, oaUInt4 numEnums,
                            const oaString *enums);
  static oaEnumProp *create(oaObject *object, const oaString &name, const oaString &value, const oaStringArray &enums);
};

// A number within bounds, both included. A value outside raises oacInvalidValueForIntRange or
// oacInvalidValueForFloatRange.
class oaIntRangeProp : public oaProp {
public:
  using oaProp::getValue;
  oaInt4 getValue() const;
  oaInt4 getLowerBound() const;
  oaInt4 getUpperBound() const;
  void setValue(oaInt4 value);
  void set(oaInt4 lowerBound, oaInt4 value, oaInt4 upperBound);
  static oaIntRangeProp *create(oaObject *object, const oaString &name, oaInt4 lowerBound, oaInt4 value,
                                oaInt4 upperBound);
};

class oaFloatRangeProp : public oaProp {
public:
  using oaProp::getValue;
  oaFloat getValue() const;
  oaFloat getLowerBound() const;
  oaFloat getUpperBound() const;
  void setValue(oaFloat value);
  void set(oaFloat lowerBound, oaFloat value, oaFloat upperBound);
  static oaFloatRangeProp *create(oaObject *object, const oaString &name, oaFloat lowerBound, oaFloat value,
                                  oaFloat upperBound);
};

class oaDoubleRangeProp : public oaProp {
public:
  using oaProp::getValue;
  oaDouble getValue() const;
  oaDouble getLowerBound() const;
  oaDouble getUpperBound() const;
  void setValue(oaDouble value);
  void set(oaDouble lowerBound, oaDouble value, oaDouble upperBound);
  static oaDoubleRangeProp *create(oaObject *object, const oaString &name, oaDouble lowerBound, oaDouble value,
                                   oaDouble upperBound);
};

} // namespace OpenAccess_4

#endif
