// Parameters of parametric cells: a name and a value of one of seven types.
#ifndef OAPARAM_H
#define OAPARAM_H

#include "oa/oaArray.h"
#include "oa/oaEnumWrapper.h"

namespace OpenAccess_4 {

enum oaParamTypeEnum {
  oacIntParamType = 0,
  oacFloatParamType = 1,
  oacStringParamType = 2,
  oacAppParamType = 3,
  oacDoubleParamType = 4,
  oacBooleanParamType = 5,
  oacTimeParamType = 6
};

/// Text names: intParam, floatParam, stringParam, appParam, doubleParam, booleanParam, timeParam.
OA_ENUM_WRAPPER(oaParamType);

/// Setters set value and type; a getter of another type than the parameter's raises
/// oacParamTypeDoesNotMatchWithGetFunction.
class oaParam {
public:
  /// The integer 0 without a name.
  oaParam();
  oaParam(const oaString &nameIn, oaInt4 value);
  oaParam(const oaString &nameIn, oaFloat value);
  oaParam(const oaString &nameIn, const oaString &value);
  oaParam(const oaString &nameIn, oaDouble value);
  /// A value that only the application understands; the bytes are copied.
  oaParam(const oaString &nameIn, const oaString &appTypeIn, oaUInt4 numBytesIn, const oaByte *byteDataIn);

  void getName(oaString &name) const { name = name_; }
  oaParamType getType() const { return type_; }

  oaInt4 getIntVal() const;
  oaFloat getFloatVal() const;
  /// Lives as long as the parameter is not changed.
  const oaChar *getStringVal() const;
  void getStringVal(oaString &value) const;
  oaDouble getDoubleVal() const;
  oaBoolean getBooleanVal() const;
  oaTime getTimeVal() const;
  /// Writes getNumBytes() bytes.
  void getAppVal(oaByte *byteData) const;
  /// The bytes of an application value; for the other types the size of the value, of a string without its end.
  oaUInt4 getNumBytes() const;
  void getAppType(oaString &value) const;

  void setName(const oaChar *nameIn) { name_ = nameIn; }
  void setIntVal(oaInt4 value);
  void setFloatVal(oaFloat value);
  void setStringVal(const oaChar *value);
  void setDoubleVal(oaDouble value);
  void setBooleanVal(oaBoolean value);
  void setTimeVal(oaTime value);
  /// Makes it an application value, without bytes when it was of another type.
  void setAppType(const oaChar *value);
  void setAppVal(oaUInt4 numBytes, const oaByte *byteData);

  /// Name, type and value are the same.
  oaBoolean operator==(const oaParam &p) const;
  oaBoolean operator!=(const oaParam &p) const { return !(*this == p); }

private:
  void require(oaParamTypeEnum type) const;

  oaString name_;
  oaParamTypeEnum type_;
  union {
    oaInt8 integer; // int, boolean and time
    oaDouble real;  // float and double
  } number_;
  oaString text_; // the string, or the type of an application value
  oaByteArray bytes_;
};

class oaParamArray : public oaArray<oaParam> {
public:
  using oaArray<oaParam>::oaArray;

  /// The place of the equal parameter, or oacNullIndex.
  oaUInt4 find(const oaParam &param) const { return oaArray<oaParam>::find(param); }
  /// Copies the parameter of that name; false, with `param` untouched, when there is none.
  oaBoolean find(const oaString &name, oaParam &param) const;
};

} // namespace OpenAccess_4

#endif
