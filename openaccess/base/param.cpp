#include "oa/oaParam.h"

#include <algorithm>

#include "raise.h"

namespace OpenAccess_4 {

oaParam::oaParam() : type_(oacIntParamType), number_{0} {}

oaParam::oaParam(const oaString &nameIn, oaInt4 value) : name_(nameIn) { setIntVal(value); }

oaParam::oaParam(const oaString &nameIn, oaFloat value) : name_(nameIn) { setFloatVal(value); }

oaParam::oaParam(const oaString &nameIn, const oaString &value) : name_(nameIn) { setStringVal(value); }

oaParam::oaParam(const oaString &nameIn, oaDouble value) : name_(nameIn) { setDoubleVal(value); }

oaParam::oaParam(const oaString &nameIn, const oaString &appTypeIn, oaUInt4 numBytesIn, const oaByte *byteDataIn)
    : name_(nameIn), type_(oacAppParamType), number_{0}, text_(appTypeIn), bytes_(byteDataIn, numBytesIn) {}

void oaParam::require(oaParamTypeEnum type) const {
  if (type_ != type)
    raiseBase(oacParamTypeDoesNotMatchWithGetFunction,
              "parameter \"" + std::string(name_) + "\" is of type " + std::string(oaParamType(type_).getName()) +
                  ", but its " + std::string(oaParamType(type).getName()) + " value was asked for");
}

oaInt4 oaParam::getIntVal() const {
  require(oacIntParamType);
  return static_cast<oaInt4>(number_.integer);
}

oaFloat oaParam::getFloatVal() const {
  require(oacFloatParamType);
  return static_cast<oaFloat>(number_.real);
}

const oaChar *oaParam::getStringVal() const {
  require(oacStringParamType);
  return text_;
}

void oaParam::getStringVal(oaString &value) const { value = getStringVal(); }

oaDouble oaParam::getDoubleVal() const {
  require(oacDoubleParamType);
  return number_.real;
}

oaBoolean oaParam::getBooleanVal() const {
  require(oacBooleanParamType);
  return number_.integer != 0;
}

oaTime oaParam::getTimeVal() const {
  require(oacTimeParamType);
  return static_cast<oaTime>(number_.integer);
}

void oaParam::getAppVal(oaByte *byteData) const {
  require(oacAppParamType);
  std::copy_n(bytes_.getElements(), bytes_.getNumElements(), byteData);
}

oaUInt4 oaParam::getNumBytes() const {
  switch (type_) {
  case oacIntParamType:
    return sizeof(oaInt4);
  case oacFloatParamType:
    return sizeof(oaFloat);
  case oacStringParamType:
    return text_.getLength();
  case oacAppParamType:
    return bytes_.getNumElements();
  case oacDoubleParamType:
    return sizeof(oaDouble);
  case oacBooleanParamType:
    return sizeof(oaBoolean);
  case oacTimeParamType:
    return sizeof(oaTime);
  }
  return 0;
}

void oaParam::getAppType(oaString &value) const {
  require(oacAppParamType);
  value = text_;
}

void oaParam::setIntVal(oaInt4 value) {
  type_ = oacIntParamType;
  number_.integer = value;
}

void oaParam::setFloatVal(oaFloat value) {
  type_ = oacFloatParamType;
  number_.real = value;
}

void oaParam::setStringVal(const oaChar *value) {
  type_ = oacStringParamType;
  number_.integer = 0;
  text_ = value;
}

void oaParam::setDoubleVal(oaDouble value) {
  type_ = oacDoubleParamType;
  number_.real = value;
}

void oaParam::setBooleanVal(oaBoolean value) {
  type_ = oacBooleanParamType;
  number_.integer = value;
}

void oaParam::setTimeVal(oaTime value) {
  type_ = oacTimeParamType;
  number_.integer = value;
}

void oaParam::setAppType(const oaChar *value) {
  if (type_ != oacAppParamType) {
    type_ = oacAppParamType;
    bytes_.setNumElements(0);
  }
  text_ = value;
}

void oaParam::setAppVal(oaUInt4 numBytes, const oaByte *byteData) {
  if (type_ != oacAppParamType) {
    type_ = oacAppParamType;
    text_ = "";
  }
  bytes_.set(byteData, numBytes);
}

oaBoolean oaParam::operator==(const oaParam &p) const {
  if (type_ != p.type_ || name_ != p.name_)
    return false;
  switch (type_) {
  case oacFloatParamType:
  case oacDoubleParamType:
    return number_.real == p.number_.real;
  case oacStringParamType:
    return text_ == p.text_;
  case oacAppParamType:
    return text_ == p.text_ && bytes_ == p.bytes_;
  case oacIntParamType:
  case oacBooleanParamType:
  case oacTimeParamType:
    break;
  }
  return number_.integer == p.number_.integer;
}

oaBoolean oaParamArray::find(const oaString &name, oaParam &param) const {
  oaString candidate;
  for (oaUInt4 i = 0; i < numElements_; ++i) {
    elements_[i].getName(candidate);
    if (candidate == name) {
      param = elements_[i];
      return true;
    }
  }
  return false;
}

} // namespace OpenAccess_4
