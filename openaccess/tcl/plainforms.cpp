#include "plainforms.h"

#include "classes.h"
#include "handles.h"
#include "numbertext.h"
#include "scripterror.h"
#include "session.h"
#include "texts.h"
#include "units.h"

#include <cstdlib>
#include <type_traits>

namespace OpenAccess_4 {
namespace tcl {

namespace {

// The elements of a list, which stay valid while this lives. An object is no list, although its text could be read as
// one; reading it so would also destroy it.
class List {
public:
  explicit List(Tcl_Obj *text) {
    const ReadValue read = readValue(text);
    if (read.isLost || (read.value != nullptr && read.value->isObject())) {
      return;
    }
    list_ = Tcl_DuplicateObj(text); // reading it as a list must not take a value's own form away
    Tcl_IncrRefCount(list_);
    if (Tcl_ListObjGetElements(nullptr, list_, &count_, &elements_) != TCL_OK) {
      count_ = -1;
    }
  }
  ~List() {
    if (list_ != nullptr) {
      Tcl_DecrRefCount(list_);
    }
  }
  List(const List &) = delete;
  List &operator=(const List &) = delete;

  int count() const { return count_; } // -1: no list
  Tcl_Obj *operator[](int i) const { return elements_[i]; }

private:
  Tcl_Obj *list_ = nullptr;
  int count_ = -1;
  Tcl_Obj **elements_ = nullptr;
};

Tcl_Obj *pair(Tcl_Obj *first, Tcl_Obj *second) {
  Tcl_Obj *const both[] = {first, second};
  return Tcl_NewListObj(2, both);
}

Tcl_Obj *newCoordinates(oaCoord x, oaCoord y, double dbuPerUU) {
  return pair(newLength(x, dbuPerUU), newLength(y, dbuPerUU));
}

bool readCoordinates(Tcl_Obj *text, double dbuPerUU, oaCoord *x, oaCoord *y) {
  const ReadValue read = readValue(text);
  if (read.value != nullptr && read.value->isObject()) {
    const bool isPoint = &read.value->cls == &classOf<oaPoint>();
    if (isPoint && x != nullptr) {
      const oaPoint &point = read.value->as<oaPoint>();
      *x = point.x();
      *y = point.y();
    }
    return isPoint;
  }
  const List list(text);
  double xUU = 0, yUU = 0;
  if (list.count() != 2 || Tcl_GetDoubleFromObj(nullptr, list[0], &xUU) != TCL_OK ||
      Tcl_GetDoubleFromObj(nullptr, list[1], &yUU) != TCL_OK) {
    return false;
  }
  if (x != nullptr) {
    *x = toCoordinate(xUU, dbuPerUU);
    *y = toCoordinate(yUU, dbuPerUU);
  }
  return true;
}

// Takes an element that is an object of its class.
template <class Element> bool readObject(Tcl_Obj *text, Element &element) {
  if constexpr (!std::is_same<Element, oaString>::value) {
    const ReadValue read = readValue(text);
    if (read.value != nullptr && read.value->isObject() && &read.value->cls == &classOf<Element>()) {
      element = read.value->as<Element>();
      return true;
    }
  }
  return false;
}

// The elements of an array; an element may be an object of its class. A list of one has the text of its element, which
// must not be taken apart.
template <class Element, class Array> bool readArray(Tcl_Obj *text, double dbuPerUU, Array *array) {
  if (Element only; readObject(text, only)) {
    if (array != nullptr) {
      array->append(only);
    }
    return true;
  }
  const List list(text);
  for (int i = 0; i < list.count(); ++i) {
    Element element;
    if (!readObject(list[i], element) &&
        !PlainForm<Element>::read(list[i], dbuPerUU, array != nullptr ? &element : nullptr)) {
      return false;
    }
    if (array != nullptr) {
      array->append(element);
    }
  }
  return list.count() >= 0;
}

template <class Element, class Array> Tcl_Obj *makeArray(const Array &array, double dbuPerUU) {
  Tcl_Obj *list = Tcl_NewListObj(0, nullptr);
  for (oaUInt4 i = 0; i < array.getNumElements(); ++i) {
    Tcl_ListObjAppendElement(nullptr, list, PlainForm<Element>::make(array[i], dbuPerUU));
  }
  return list;
}

// Arrays of objects: lists of handles.
template <class Object, class Array> bool readObjects(Tcl_Obj *text, Array *array) {
  const List list(text);
  for (int i = 0; i < list.count(); ++i) {
    const Handle handle = readHandle(list[i]);
    if (handle.state != HandleState::alive ||
        managedClass(handle.object->getType()).distanceTo(classOf<Object>()) < 0) {
      return false;
    }
    if (array != nullptr) {
      array->append(static_cast<Object *>(handle.object));
    }
  }
  return list.count() >= 0;
}

template <class Array> Tcl_Obj *makeObjects(const Array &array) {
  Tcl_Obj *list = Tcl_NewListObj(0, nullptr);
  for (oaUInt4 i = 0; i < array.getNumElements(); ++i) {
    Tcl_ListObjAppendElement(nullptr, list, newHandle(array[i]));
  }
  return list;
}

Tcl_Obj *newBytes(const oaByteArray &bytes) {
  return Tcl_NewByteArrayObj(bytes.getElements(), static_cast<int>(bytes.getNumElements()));
}

Tcl_Obj *contentOf(const oaParam &param) {
  switch (param.getType()) {
  case oacIntParamType:
    return Tcl_NewIntObj(param.getIntVal());
  case oacFloatParamType:
    return Tcl_NewDoubleObj(kit::doubleOfDigits(param.getFloatVal()));
  case oacDoubleParamType:
    return Tcl_NewDoubleObj(param.getDoubleVal());
  case oacBooleanParamType:
    return Tcl_NewIntObj(param.getBooleanVal());
  case oacTimeParamType:
    return Tcl_NewWideIntObj(param.getTimeVal());
  case oacStringParamType:
    return newText(param.getStringVal());
  case oacAppParamType:
    break;
  }
  oaByteArray bytes;
  bytes.setNumElements(param.getNumBytes());
  if (bytes.getNumElements() != 0) {
    param.getAppVal(&bytes[0]);
  }
  return newBytes(bytes);
}

// Sets the content of a parameter of a type; false when the text is none of that type.
bool setContent(oaParam &param, oaParamTypeEnum type, Tcl_Obj *text) {
  Tcl_WideInt whole = 0;
  double number = 0;
  int flag = 0;
  switch (type) {
  case oacIntParamType:
    if (Tcl_GetWideIntFromObj(nullptr, text, &whole) != TCL_OK || whole != static_cast<oaInt4>(whole)) {
      return false;
    }
    param.setIntVal(static_cast<oaInt4>(whole));
    return true;
  case oacTimeParamType:
    if (Tcl_GetWideIntFromObj(nullptr, text, &whole) != TCL_OK) {
      return false;
    }
    param.setTimeVal(static_cast<oaTime>(whole));
    return true;
  case oacFloatParamType:
  case oacDoubleParamType:
    if (Tcl_GetDoubleFromObj(nullptr, text, &number) != TCL_OK) {
      return false;
    }
    if (type == oacFloatParamType) {
      param.setFloatVal(static_cast<oaFloat>(number));
    } else {
      param.setDoubleVal(number);
    }
    return true;
  case oacBooleanParamType:
    if (Tcl_GetBooleanFromObj(nullptr, text, &flag) != TCL_OK) {
      return false;
    }
    param.setBooleanVal(flag != 0);
    return true;
  case oacStringParamType:
    if (oaString content; readText(text, &content)) {
      param.setStringVal(content);
      return true;
    }
    return false;
  case oacAppParamType:
    break; // the list has no room for the application's type name
  }
  return false;
}

} // namespace

bool PlainForm<oaPoint>::read(Tcl_Obj *text, double dbuPerUU, oaPoint *value) {
  return readCoordinates(text, dbuPerUU, value ? &value->x() : nullptr, value ? &value->y() : nullptr);
}
Tcl_Obj *PlainForm<oaPoint>::make(const oaPoint &value, double dbuPerUU) {
  return newCoordinates(value.x(), value.y(), dbuPerUU);
}

// Vectors are spacings, enclosures and the like.
bool PlainForm<oaVector>::read(Tcl_Obj *text, double dbuPerUU, oaVector *value) {
  if (!readCoordinates(text, dbuPerUU, value ? &value->x() : nullptr, value ? &value->y() : nullptr)) {
    return false;
  }
  if (value != nullptr && value->x() == 0 && value->y() == 0) {
    refuseVanished(text, dbuPerUU);
  }
  return true;
}
Tcl_Obj *PlainForm<oaVector>::make(const oaVector &value, double dbuPerUU) {
  return newCoordinates(value.x(), value.y(), dbuPerUU);
}

bool PlainForm<oaBox>::read(Tcl_Obj *text, double dbuPerUU, oaBox *value) {
  const List list(text);
  return list.count() == 2 && PlainForm<oaPoint>::read(list[0], dbuPerUU, value ? &value->lowerLeft() : nullptr) &&
         PlainForm<oaPoint>::read(list[1], dbuPerUU, value ? &value->upperRight() : nullptr);
}
Tcl_Obj *PlainForm<oaBox>::make(const oaBox &value, double dbuPerUU) {
  return pair(PlainForm<oaPoint>::make(value.lowerLeft(), dbuPerUU),
              PlainForm<oaPoint>::make(value.upperRight(), dbuPerUU));
}

bool PlainForm<oaSegment>::read(Tcl_Obj *text, double dbuPerUU, oaSegment *value) {
  const List list(text);
  return list.count() == 2 && PlainForm<oaPoint>::read(list[0], dbuPerUU, value ? &value->head() : nullptr) &&
         PlainForm<oaPoint>::read(list[1], dbuPerUU, value ? &value->tail() : nullptr);
}
Tcl_Obj *PlainForm<oaSegment>::make(const oaSegment &value, double dbuPerUU) {
  return pair(PlainForm<oaPoint>::make(value.head(), dbuPerUU), PlainForm<oaPoint>::make(value.tail(), dbuPerUU));
}

bool PlainForm<oaTransform>::read(Tcl_Obj *text, double dbuPerUU, oaTransform *value) {
  const List list(text);
  if (list.count() != 2 || !PlainForm<oaPoint>::read(list[0], dbuPerUU, value ? &value->offset() : nullptr)) {
    return false;
  }
  const char *name = Tcl_GetString(list[1]);
  for (oaUInt4 orient = oacR0; orient <= oacMXR90; ++orient) {
    if (oaEnumNamesOf(oaOrientEnum()).nameOf(orient) == name) {
      if (value != nullptr) {
        value->orient() = oaOrient(static_cast<oaOrientEnum>(orient));
      }
      return true;
    }
  }
  return false;
}
Tcl_Obj *PlainForm<oaTransform>::make(const oaTransform &value, double dbuPerUU) {
  return pair(PlainForm<oaPoint>::make(value.offset(), dbuPerUU), newText(value.orient().getName()));
}

namespace {

// "int" for "intParam": what scripts write.
std::string shortTypeName(oaUInt4 type) {
  const std::string name(oaEnumNamesOf(oaParamTypeEnum()).nameOf(type));
  return name.substr(0, name.size() - std::string("Param").size());
}

bool findParamType(const std::string &word, oaParamTypeEnum &type) {
  for (oaUInt4 number = oacIntParamType; number <= oacTimeParamType; ++number) {
    const std::string own = shortTypeName(number);
    if (word == own || word == own + "Param") { // both are met in scripts
      type = static_cast<oaParamTypeEnum>(number);
      return true;
    }
  }
  return false;
}

std::string faultOfParam(Tcl_Obj *text) {
  const List list(text);
  oaParamTypeEnum type = oacIntParamType;
  oaParam param;
  if (list.count() != 3) {
    return "";
  }
  const std::string name = Tcl_GetString(list[0]), word = Tcl_GetString(list[1]), content = Tcl_GetString(list[2]);
  if (!findParamType(word, type) || type == oacAppParamType) {
    return "the type \"" + word + "\" of parameter " + name + " is none of int, float, double, string, boolean, time";
  }
  if (!readText(list[0], nullptr) || (type == oacStringParamType && !readText(list[2], nullptr))) {
    return "\"" + content + "\" or the name " + name + " has characters beyond Latin-1";
  }
  return setContent(param, type, list[2]) ? "" : "\"" + content + "\" of parameter " + name + " is no " + word;
}

} // namespace

std::string faultInParams(const ClassInfo &cls, Tcl_Obj *text) {
  if (&cls == &classOf<oaParam>()) {
    return faultOfParam(text);
  }
  std::string fault;
  if (&cls == &classOf<oaParamArray>()) {
    const List list(text);
    for (int i = 0; i < list.count() && fault.empty(); ++i) {
      fault = faultOfParam(list[i]);
    }
  }
  return fault;
}

bool PlainForm<oaParam>::read(Tcl_Obj *text, double, oaParam *value) {
  const List list(text);
  oaParamTypeEnum type = oacIntParamType;
  oaParam param;
  oaString name;
  if (list.count() != 3 || !readText(list[0], &name) || !findParamType(Tcl_GetString(list[1]), type) ||
      !setContent(param, type, list[2])) {
    return false;
  }
  if (value != nullptr) {
    param.setName(name);
    *value = param;
  }
  return true;
}
Tcl_Obj *PlainForm<oaParam>::make(const oaParam &value, double) {
  oaString name;
  value.getName(name);
  Tcl_Obj *const parts[] = {newText(name), newText(shortTypeName(value.getType()).c_str()), contentOf(value)};
  return Tcl_NewListObj(3, parts);
}

bool PlainForm<oaDMAttr>::read(Tcl_Obj *text, double, oaDMAttr *value) {
  const List list(text);
  if (list.count() == 2 && value != nullptr) {
    *value = oaDMAttr(textOf(list[0]), textOf(list[1]));
  }
  return list.count() == 2;
}
Tcl_Obj *PlainForm<oaDMAttr>::make(const oaDMAttr &value, double) {
  return pair(newText(value.getName()), newText(value.getValue()));
}

bool PlainForm<oaString>::read(Tcl_Obj *text, double, oaString *value) {
  if (value != nullptr) {
    *value = textOf(text);
  }
  return true;
}
Tcl_Obj *PlainForm<oaString>::make(const oaString &value, double) { return newText(value); }

bool PlainForm<oaByteArray>::read(Tcl_Obj *text, double, oaByteArray *value) {
  if (readValue(text).value != nullptr && readValue(text).value->isObject()) {
    return false;
  }
  if (value != nullptr) {
    Tcl_Obj *copy = Tcl_DuplicateObj(text);
    Tcl_IncrRefCount(copy);
    int length = 0;
    const unsigned char *bytes = Tcl_GetByteArrayFromObj(copy, &length);
    value->set(bytes, static_cast<oaUInt4>(length));
    Tcl_DecrRefCount(copy);
  }
  return true;
}
Tcl_Obj *PlainForm<oaByteArray>::make(const oaByteArray &value, double) { return newBytes(value); }

#define OATCL_ARRAY_FORM(Array, Element)                                                                               \
  bool PlainForm<Array>::read(Tcl_Obj *text, double dbuPerUU, Array *value) {                                          \
    return readArray<Element>(text, dbuPerUU, value);                                                                  \
  }                                                                                                                    \
  Tcl_Obj *PlainForm<Array>::make(const Array &value, double dbuPerUU) { return makeArray<Element>(value, dbuPerUU); }

OATCL_ARRAY_FORM(oaPointArray, oaPoint)
OATCL_ARRAY_FORM(oaBoxArray, oaBox)
OATCL_ARRAY_FORM(oaParamArray, oaParam)
OATCL_ARRAY_FORM(oaDMAttrArray, oaDMAttr)
OATCL_ARRAY_FORM(oaStringArray, oaString)

#define OATCL_OBJECT_ARRAY_FORM(Array, Object)                                                                         \
  bool PlainForm<Array>::read(Tcl_Obj *text, double, Array *value) { return readObjects<Object>(text, value); }        \
  Tcl_Obj *PlainForm<Array>::make(const Array &value, double) { return makeObjects(value); }

OATCL_OBJECT_ARRAY_FORM(oaTechArray, oaTech)
OATCL_OBJECT_ARRAY_FORM(oaTechHeaderArray, oaTechHeader)

namespace {

// Whether the text may be a name of one of the types in the current name space. One that the name space cannot read at
// all may be: reading it for good then raises the reason.
bool mayBe(Tcl_Obj *text, std::initializer_list<oaNameTypeEnum> types) {
  oaString bytes;
  if (!readText(text, &bytes)) {
    return true;
  }
  try {
    const oaNameTypeEnum found = Session::current().nameSpace().getType(bytes);
    for (const oaNameTypeEnum type : types) {
      if (type == found) {
        return true;
      }
    }
    return false;
  } catch (const oaException &) {
    return true;
  }
}

template <class Name> bool readName(Tcl_Obj *text, Name *value) {
  if (value != nullptr) {
    *value = Name(Session::current().nameSpace(), textOf(text));
  }
  return true;
}

template <class Name> Tcl_Obj *makeName(const Name &value) {
  oaString text;
  value.get(Session::current().nameSpace(), text);
  return newText(text);
}

} // namespace

#define OATCL_NAME_FORM(Name, condition)                                                                               \
  bool PlainForm<Name>::read(Tcl_Obj *text, double, Name *value) { return (condition) && readName(text, value); }      \
  Tcl_Obj *PlainForm<Name>::make(const Name &value, double) { return makeName(value); }

// A scalar name may be written with any text.
OATCL_NAME_FORM(oaScalarName, true)
OATCL_NAME_FORM(oaVectorName, mayBe(text, {oacVectorNameType}))
OATCL_NAME_FORM(oaVectorBitName, mayBe(text, {oacVectorBitNameType}))
OATCL_NAME_FORM(oaSimpleName, mayBe(text, {oacScalarNameType, oacVectorNameType, oacVectorBitNameType}))
OATCL_NAME_FORM(oaBundleName, true)
OATCL_NAME_FORM(oaName, true)

} // namespace tcl
} // namespace OpenAccess_4
