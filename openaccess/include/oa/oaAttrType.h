#ifndef OAATTRTYPE_H
#define OAATTRTYPE_H

// Attributes that a text display can show, by the kind of object.

#include "oa/oaTechDB.h"

namespace OpenAccess_4 {

// An attribute whose kind of object is known from elsewhere.
class oaAttrType {
public:
  oaAttrType() = default;
  oaAttrType(oaUInt4 valueIn) : value_(valueIn) {} // NOLINT(google-explicit-constructor)
  virtual ~oaAttrType() = default;
  oaAttrType(const oaAttrType &) = default;
  oaAttrType &operator=(const oaAttrType &) = default;
  oaUInt4 getRawValue() const { return value_; }

protected:
  oaUInt4 value_ = 0;
};

template <typename Enum> class oaNamedAttrType : public oaAttrType {
public:
  oaNamedAttrType(Enum valueIn) : oaAttrType(oaUInt4(valueIn)) {} // NOLINT(google-explicit-constructor)
  // Raises for a text that names no attribute of this kind of object.
  oaNamedAttrType(const oaString &name)
      : oaAttrType(oaEnumNamesOf(Enum()).valueOf(name)) {} // NOLINT(google-explicit-constructor)
  oaNamedAttrType(oaAttrType attr) : oaAttrType(attr) {}   // NOLINT(google-explicit-constructor)
  virtual const oaString &getName() const { return oaEnumNamesOf(Enum()).nameOf(value_); }
  Enum getValue() const { return static_cast<Enum>(value_); }
};

enum oaInstAttrTypeEnum {
  oacLibNameInstAttrType = 0,
  oacCellNameInstAttrType = 1,
  oacViewNameInstAttrType = 2,
  oacNameInstAttrType = 3,
  oacNumBitsInstAttrType = 4,
  oacIsBoundInstAttrType = 5
};
const oaEnumNames &oaEnumNamesOf(oaInstAttrTypeEnum);
class oaInstAttrType : public oaNamedAttrType<oaInstAttrTypeEnum> {
public:
  using oaNamedAttrType<oaInstAttrTypeEnum>::oaNamedAttrType;
};

enum oaTermAttrTypeEnum { oacNameTermAttrType = 0, oacHasPinsTermAttrType = 1, oacNumBitsTermAttrType = 2 };
const oaEnumNames &oaEnumNamesOf(oaTermAttrTypeEnum);
class oaTermAttrType : public oaNamedAttrType<oaTermAttrTypeEnum> {
public:
  using oaNamedAttrType<oaTermAttrTypeEnum>::oaNamedAttrType;
};

enum oaNetAttrTypeEnum {
  oacNameNetAttrType = 0,
  oacSigTypeNetAttrType = 1,
  oacIsGlobalNetAttrType = 2,
  oacIsImplicitNetAttrType = 3,
  oacIsEmptyNetAttrType = 4,
  oacNumBitsNetAttrType = 5
};
const oaEnumNames &oaEnumNamesOf(oaNetAttrTypeEnum);
class oaNetAttrType : public oaNamedAttrType<oaNetAttrTypeEnum> {
public:
  using oaNamedAttrType<oaNetAttrTypeEnum>::oaNamedAttrType;
};

enum oaInstTermAttrTypeEnum { oacNameInstTermAttrType = 0 };
const oaEnumNames &oaEnumNamesOf(oaInstTermAttrTypeEnum);
class oaInstTermAttrType : public oaNamedAttrType<oaInstTermAttrTypeEnum> {
public:
  using oaNamedAttrType<oaInstTermAttrTypeEnum>::oaNamedAttrType;
};

enum oaDesignAttrTypeEnum {
  oacLibNameDesignAttrType = 0,
  oacCellNameDesignAttrType = 1,
  oacViewNameDesignAttrType = 2,
  oacCellTypeDesignAttrType = 3,
  oacLastSavedTimeDesignAttrType = 4
};
const oaEnumNames &oaEnumNamesOf(oaDesignAttrTypeEnum);
class oaDesignAttrType : public oaNamedAttrType<oaDesignAttrTypeEnum> {
public:
  using oaNamedAttrType<oaDesignAttrTypeEnum>::oaNamedAttrType;
};

} // namespace OpenAccess_4

#endif
