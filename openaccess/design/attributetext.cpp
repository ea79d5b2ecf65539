#include "attributetext.h"

#include "oa/oaDesignDB.h"

#include <ctime>
#include <string>

namespace OpenAccess_4 {
namespace kit {

namespace {

void setNumber(oaUInt4 number, oaString &text) { text = std::to_string(number).c_str(); }
void setFlag(bool isSet, oaString &text) { text = isSet ? "true" : "false"; }

void getNetText(const oaNet *net, oaUInt4 attribute, const oaNameSpace &ns, oaString &text) {
  switch (attribute) {
  case oacNameNetAttrType:
    net->getName(ns, text);
    break;
  case oacSigTypeNetAttrType:
    text = net->getSigType().getName();
    break;
  case oacIsGlobalNetAttrType:
    setFlag(net->isGlobal(), text);
    break;
  case oacIsImplicitNetAttrType:
    setFlag(net->isImplicit(), text);
    break;
  case oacIsEmptyNetAttrType:
    setFlag(net->isEmpty(), text);
    break;
  default:
    setNumber(net->getNumBits(), text);
    break;
  }
}

void getTermText(const oaTerm *term, oaUInt4 attribute, const oaNameSpace &ns, oaString &text) {
  switch (attribute) {
  case oacNameTermAttrType:
    term->getName(ns, text);
    break;
  case oacHasPinsTermAttrType:
    setFlag(!term->getPins().isEmpty(), text);
    break;
  default:
    setNumber(term->getNumBits(), text);
    break;
  }
}

void getInstText(const oaInst *inst, oaUInt4 attribute, const oaNameSpace &ns, oaString &text) {
  switch (attribute) {
  case oacLibNameInstAttrType:
    inst->getLibName(ns, text);
    break;
  case oacCellNameInstAttrType:
    inst->getCellName(ns, text);
    break;
  case oacViewNameInstAttrType:
    inst->getViewName(ns, text);
    break;
  case oacNameInstAttrType:
    inst->getName(ns, text);
    break;
  case oacNumBitsInstAttrType:
    setNumber(inst->getNumBits(), text);
    break;
  default:
    setFlag(inst->isBound(), text);
    break;
  }
}

void getDesignText(const oaDesign *design, oaUInt4 attribute, const oaNameSpace &ns, oaString &text) {
  switch (attribute) {
  case oacLibNameDesignAttrType:
    design->getLibName(ns, text);
    break;
  case oacCellNameDesignAttrType:
    design->getCellName(ns, text);
    break;
  case oacViewNameDesignAttrType:
    design->getViewName(ns, text);
    break;
  case oacCellTypeDesignAttrType:
    text = design->getCellType().getName();
    break;
  default: {
    const std::time_t saved = design->getLastSavedTime();
    std::tm local{};
    char buffer[64] = "";
    if (saved != 0 && localtime_r(&saved, &local) != nullptr) {
      std::strftime(buffer, sizeof buffer, "%a %b %e %H:%M:%S %Y", &local); // as ctime(), without its line feed
    }
    text = buffer;
    break;
  }
  }
}

bool isType(oaTypeEnum type, oaTypeEnum first, oaTypeEnum last) { return type >= first && type <= last; }
bool isNetType(oaTypeEnum type) { return isType(type, oacBundleNetType, oacScalarNetType); }
bool isTermType(oaTypeEnum type) { return isType(type, oacBundleTermType, oacScalarTermType); }
bool isInstType(oaTypeEnum type) { return isType(type, oacArrayInstType, oacVectorInstBitType); }

} // namespace

const oaEnumNames *attributesOf(oaTypeEnum type) {
  if (isNetType(type)) {
    return &oaEnumNamesOf(oaNetAttrTypeEnum());
  }
  if (isTermType(type)) {
    return &oaEnumNamesOf(oaTermAttrTypeEnum());
  }
  if (isInstType(type)) {
    return &oaEnumNamesOf(oaInstAttrTypeEnum());
  }
  if (type == oacInstTermType) {
    return &oaEnumNamesOf(oaInstTermAttrTypeEnum());
  }
  return type == oacDesignType ? &oaEnumNamesOf(oaDesignAttrTypeEnum()) : nullptr;
}

const oaString &attributeName(oaTypeEnum type, oaUInt4 attribute) {
  static const oaString none;
  const oaEnumNames *attributes = attributesOf(type);
  return attributes != nullptr && attributes->contains(attribute) ? attributes->nameOf(attribute) : none;
}

void getAttributeText(const oaObject *object, oaUInt4 attribute, const oaNameSpace &ns, oaString &text) {
  const oaTypeEnum type = object->getType();
  const oaEnumNames *attributes = attributesOf(type);
  text = "";
  if (attributes == nullptr || !attributes->contains(attribute)) {
    return; // only a damaged file can say so
  }
  if (isNetType(type)) {
    getNetText(static_cast<const oaNet *>(object), attribute, ns, text);
  } else if (isTermType(type)) {
    getTermText(static_cast<const oaTerm *>(object), attribute, ns, text);
  } else if (isInstType(type)) {
    getInstText(static_cast<const oaInst *>(object), attribute, ns, text);
  } else if (type == oacInstTermType) {
    const oaInstTerm *instTerm = static_cast<const oaInstTerm *>(object);
    if (!instTerm->usesTermPosition()) {
      instTerm->getTermName(ns, text);
    }
  } else {
    getDesignText(static_cast<const oaDesign *>(object), attribute, ns, text);
  }
}

} // namespace kit
} // namespace OpenAccess_4
