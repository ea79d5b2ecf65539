#include "call.h"

#include "classes.h"
#include "collections.h"
#include "numbertext.h"
#include "scripterror.h"
#include "units.h"

#include <cstdlib>
#include <cstring>
#include <limits>

namespace OpenAccess_4 {
namespace tcl {

namespace {

// Misfits: an argument that is the thing itself, one whose text means it, and one that could mean anything. The steps
// between are wide enough for the number of steps in a class hierarchy.
constexpr int kExact = 0;
constexpr int kPlain = 12;
constexpr int kInteger = 20;     // a number where an integer is asked for
constexpr int kName = 18;        // names that look like numbers are names before they are positions
constexpr int kIntegerText = 30; // text that is a number: other meanings come first
constexpr int kNumber = 24;
constexpr int kText = 18;

bool isHandle(Tcl_Obj *text) {
  const HandleState state = readHandle(text).state;
  return state == HandleState::alive || state == HandleState::dead;
}

bool readInteger(Tcl_Obj *text, oaInt8 &number) {
  Tcl_WideInt wide = 0;
  const ReadValue read = readValue(text);
  if (read.value != nullptr && &read.value->cls == &kUInt4Class) {
    number = read.value->as<oaUInt4>();
    return true;
  }
  if (read.isLost || read.value != nullptr || Tcl_GetWideIntFromObj(nullptr, text, &wide) != TCL_OK) {
    return false;
  }
  number = wide;
  return true;
}

int misfitOfObject(const Parameter &parameter, Tcl_Obj *argument) {
  const Handle handle = readHandle(argument);
  if (handle.state == HandleState::null) {
    return parameter.kind == ParameterKind::object ? Call::kNoFit : kExact;
  }
  if (handle.state != HandleState::alive || parameter.kind == ParameterKind::nothing) {
    return Call::kNoFit;
  }
  const int distance = managedClass(handle.object->getType()).distanceTo(*parameter.cls);
  return distance < 0 ? Call::kNoFit : distance;
}

int misfitOfInteger(const Parameter &parameter, Tcl_Obj *argument) {
  oaInt8 number = 0;
  if (!readInteger(argument, number) || number < parameter.min || number > parameter.max) {
    return Call::kNoFit;
  }
  const Value *forced = readValue(argument).value;
  return forced != nullptr && parameter.min == 0 ? kExact : kInteger;
}

int misfitOfNumber(Tcl_Obj *argument) {
  double number = 0;
  oaInt8 whole = 0;
  if (readValue(argument).value != nullptr || Tcl_GetDoubleFromObj(nullptr, argument, &number) != TCL_OK) {
    return Call::kNoFit;
  }
  return readInteger(argument, whole) ? kNumber : kInteger;
}

int misfitOfText(const Parameter &parameter, Tcl_Obj *argument) {
  const ReadValue read = readValue(argument);
  if (read.isLost || (read.value != nullptr && read.value->isObject()) || isHandle(argument)) {
    return Call::kNoFit;
  }
  double number = 0;
  if (parameter.kind == ParameterKind::character) {
    return *Tcl_GetString(argument) == '\0' ? Call::kNoFit : kText;
  }
  return Tcl_GetDoubleFromObj(nullptr, argument, &number) == TCL_OK ? kIntegerText : kText;
}

int misfitOfEnumeration(const Parameter &parameter, Tcl_Obj *argument) {
  const ReadValue read = readValue(argument);
  if (read.value != nullptr) {
    return &read.value->cls == parameter.cls ? kExact : Call::kNoFit;
  }
  if (parameter.kind == ParameterKind::enumObject || read.isLost) {
    return Call::kNoFit;
  }
  oaInt8 number = 0;
  const oaEnumNames &names = parameter.cls->names();
  if (readInteger(argument, number)) {
    const bool isNumber = number >= 0 && number <= UINT_MAX && names.contains(static_cast<oaUInt4>(number));
    return isNumber ? kNumber : Call::kNoFit;
  }
  try {
    names.valueOf(Tcl_GetString(argument));
    return kPlain;
  } catch (const oaException &) {
    return Call::kNoFit;
  }
}

bool isName(const ClassInfo &cls) { return cls.kind == ClassKind::name; }

bool isOfManaged(const ClassInfo &array) {
  return array.element != nullptr && array.element->kind == ClassKind::managed;
}

// Any text can be read as one, and an integer may have been meant as such.
bool isIntegerForText(const ClassInfo &cls, Tcl_Obj *argument) {
  oaInt8 number = 0;
  return (&cls == &classOf<oaStringArray>() || &cls == &classOf<oaByteArray>()) && readInteger(argument, number);
}

// Whether the API makes a name of one class from a name of the other.
bool isConvertible(const ClassInfo &from, const ClassInfo &to) {
  const bool isSimple =
      &from == &classOf<oaScalarName>() || &from == &classOf<oaVectorName>() || &from == &classOf<oaVectorBitName>();
  if (&to == &classOf<oaSimpleName>()) {
    return isSimple;
  }
  if (&to == &classOf<oaBundleName>()) {
    return isSimple || &from == &classOf<oaSimpleName>();
  }
  return &to == &classOf<oaName>() && isName(from);
}

int misfitOfValue(const Parameter &parameter, Tcl_Obj *argument) {
  const ReadValue read = readValue(argument);
  if (read.isLost) {
    return Call::kNoFit;
  }
  const ClassInfo &cls = *parameter.cls;
  if (read.value != nullptr) {
    const int distance = read.value->cls.distanceTo(cls);
    if (parameter.kind == ParameterKind::changed || parameter.kind == ParameterKind::nameSpace) {
      return distance < 0 || !read.value->isObject() ? Call::kNoFit : distance;
    }
    if (distance >= 0) {
      return kExact + 1;
    }
    if (read.value->isObject() && parameter.kind != ParameterKind::held) {
      if (&read.value->cls == cls.element) {
        return kPlain; // a list of one object has the text of the object
      }
      return isConvertible(read.value->cls, cls) ? kExact + 2 : Call::kNoFit;
    }
  }
  if (parameter.kind == ParameterKind::changed || parameter.kind == ParameterKind::nameSpace ||
      parameter.kind == ParameterKind::held || cls.readPlain == nullptr || (isHandle(argument) && !isOfManaged(cls)) ||
      !cls.readPlain(argument, 1, nullptr)) {
    return Call::kNoFit;
  }
  if (isIntegerForText(cls, argument)) {
    return kIntegerText;
  }
  return isName(cls) ? kName : kPlain;
}

const oaEnumNames *attributeNames(const oaObject *object) {
  const ClassInfo &cls = managedClass(object->getType());
  const struct {
    const ClassInfo &owner;
    const oaEnumNames &names;
  } kinds[] = {
      {classOf<oaInst>(), oaEnumNamesOf(oaInstAttrTypeEnum())},
      {classOf<oaTerm>(), oaEnumNamesOf(oaTermAttrTypeEnum())},
      {classOf<oaNet>(), oaEnumNamesOf(oaNetAttrTypeEnum())},
      {classOf<oaInstTerm>(), oaEnumNamesOf(oaInstTermAttrTypeEnum())},
      {classOf<oaDesign>(), oaEnumNamesOf(oaDesignAttrTypeEnum())},
  };
  for (const auto &kind : kinds) {
    if (cls.distanceTo(kind.owner) >= 0) {
      return &kind.names;
    }
  }
  return nullptr;
}

// The number of an attribute; -1 when the argument is none.
oaInt8 attributeNumber(Tcl_Obj *argument, const oaObject *object) {
  const ReadValue read = readValue(argument);
  if (read.value != nullptr) {
    return read.value->cls.kind == ClassKind::enumeration ? oaInt8(read.value->as<EnumValue>().number) : -1;
  }
  const oaEnumNames *names = attributeNames(object);
  oaInt8 number = -1;
  if (names == nullptr) {
    return -1;
  }
  if (readInteger(argument, number)) {
    return number >= 0 && number <= UINT_MAX && names->contains(static_cast<oaUInt4>(number)) ? number : -1;
  }
  try {
    return names->valueOf(Tcl_GetString(argument));
  } catch (const oaException &) {
    return -1;
  }
}

} // namespace

Call::~Call() {
  for (Tcl_Obj *result : results_) {
    Tcl_DecrRefCount(result);
  }
}

int Call::misfit(const Parameter &parameter, Tcl_Obj *argument, Tcl_Obj *firstArgument) {
  int flag = 0;
  oaInt8 number = 0;
  switch (parameter.kind) {
  case ParameterKind::object:
  case ParameterKind::optionalObject:
  case ParameterKind::nothing:
    return misfitOfObject(parameter, argument);
  case ParameterKind::string:
  case ParameterKind::character:
    return misfitOfText(parameter, argument);
  case ParameterKind::integer:
    return misfitOfInteger(parameter, argument);
  case ParameterKind::number:
  case ParameterKind::coordinate:
  case ParameterKind::distance:
    return misfitOfNumber(argument) + (parameter.isSecondChoice ? 1 : 0);
  case ParameterKind::boolean:
    if (readValue(argument).value != nullptr || Tcl_GetBooleanFromObj(nullptr, argument, &flag) != TCL_OK) {
      return kNoFit;
    }
    return readInteger(argument, number) ? kNumber : kPlain;
  case ParameterKind::enumeration:
  case ParameterKind::enumObject:
    return misfitOfEnumeration(parameter, argument);
  case ParameterKind::optionalValue:
    if (readHandle(argument).state == HandleState::null) {
      return kExact;
    }
    return misfitOfValue(parameter, argument);
  case ParameterKind::value:
  case ParameterKind::held:
  case ParameterKind::name:
  case ParameterKind::changed:
  case ParameterKind::nameSpace:
  case ParameterKind::collection: {
    Parameter exact = parameter;
    if (parameter.kind == ParameterKind::collection) {
      exact.kind = ParameterKind::changed;
    }
    return misfitOfValue(exact, argument) + (parameter.isSecondChoice ? 1 : 0);
  }
  case ParameterKind::attribute: {
    const Handle object = readHandle(firstArgument);
    return object.state == HandleState::alive && attributeNumber(argument, object.object) >= 0 ? kPlain : kNoFit;
  }
  case ParameterKind::any:
    return kText;
  }
  return kNoFit;
}

oaObject *Call::anyObject(int i) const { return given(i) ? readHandle(arguments_[i]).object : nullptr; }

oaInt8 Call::wideInteger(int i) const {
  oaInt8 number = 0;
  readInteger(arguments_[i], number);
  return number;
}

double Call::number(int i) const {
  double number = 0;
  Tcl_GetDoubleFromObj(nullptr, arguments_[i], &number);
  return number;
}

bool Call::boolean(int i) const {
  int flag = 0;
  Tcl_GetBooleanFromObj(nullptr, arguments_[i], &flag);
  return flag != 0;
}

oaUInt4 Call::enumNumber(int i) const {
  if (Value *held = readValue(arguments_[i]).value; held != nullptr) {
    return held->as<EnumValue>().number;
  }
  oaInt8 number = 0;
  if (readInteger(arguments_[i], number)) {
    return static_cast<oaUInt4>(number);
  }
  return form_.parameters[i].cls->names().valueOf(Tcl_GetString(arguments_[i]));
}

oaCoord Call::coordinate(int i) { return toCoordinate(number(i), dbuPerUU()); }
oaDist Call::distance(int i) {
  const oaDist distance = toDistance(number(i), dbuPerUU());
  if (distance == 0) {
    refuseVanished(arguments_[i], dbuPerUU());
  }
  return distance;
}

bool Call::isInUnit(const Value &held) {
  return held.isObject() || !held.cls.hasLengths || held.dbuPerUU == dbuPerUU() || takesDatabaseUnits_;
}

void Call::readInto(int i, const ClassInfo &cls, void *target) {
  if (!cls.readPlain(arguments_[i], cls.hasLengths ? dbuPerUU() : 1, target)) {
    throw valueError(std::string("\"") + Tcl_GetString(arguments_[i]) + "\" is no " + cls.name);
  }
}

oaAttrType Call::attribute(int i, int objectAt) const {
  return static_cast<oaUInt4>(attributeNumber(arguments_[i], anyObject(objectAt)));
}

double Call::dbuPerUU() {
  if (dbuPerUU_ != 0) {
    return dbuPerUU_;
  }
  dbuPerUU_ = 1;
  if (count_ == 0 || form_.count == 0) {
    return dbuPerUU_;
  }
  const ReadValue read = readValue(arguments_[0]);
  if (form_.parameters[0].kind == ParameterKind::object && readHandle(arguments_[0]).state == HandleState::alive) {
    dbuPerUU_ = dbuPerUUOf(readHandle(arguments_[0]).object);
  } else if (read.value != nullptr && read.value->isObject()) {
    useDatabaseUnits();
  } else if (read.value != nullptr && areWhole(arguments_ + 1, count_ - 1, read.value->dbuPerUU)) {
    dbuPerUU_ = read.value->dbuPerUU;
  } else if (form_.parameters[0].kind == ParameterKind::value && form_.parameters[0].cls->hasLengths) {
    dbuPerUU_ = unitOfLists(arguments_, count_);
    hasUnitOfLists_ = true;
  }
  return dbuPerUU_;
}

void Call::add(Tcl_Obj *result) {
  Tcl_IncrRefCount(result);
  results_.push_back(result);
}

void Call::addPlain(Value *value) {
  // What scripts take apart most comes as a list at once.
  const bool isSmall = &value->cls == &classOf<oaPoint>() || &value->cls == &classOf<oaVector>() ||
                       &value->cls == &classOf<oaBox>() || &value->cls == &classOf<oaSegment>();
  const bool keepsUnit = !value->cls.hasLengths || !hasUnitOfLists_;
  if (!isSmall && keepsUnit && value->cls.kind != ClassKind::name) {
    add(newPlainValue(value));
    return;
  }
  const std::unique_ptr<Value> owner(value);
  add(value->cls.makePlain(value->data(), value->dbuPerUU));
}

void Call::give(oaUInt8 number) {
  // Tcl's wide integers have a sign; larger numbers are read from their digits.
  if (number <= static_cast<oaUInt8>(std::numeric_limits<oaInt8>::max())) {
    add(Tcl_NewWideIntObj(static_cast<oaInt8>(number)));
  } else {
    add(Tcl_NewStringObj(std::to_string(number).c_str(), -1));
  }
}

void Call::give(oaFloat number) { add(Tcl_NewDoubleObj(kit::doubleOfDigits(number))); }

void Call::give(const oaEnumCollection &texts) {
  oaEnumPropIter walk(texts);
  oaString text;
  giveList();
  while (walk.getNext(text)) {
    give(text);
  }
}

void Call::giveLength(oaInt8 dbu) { add(newLength(dbu, dbuPerUU())); }

void Call::giveArea(double area) { give(area / (dbuPerUU() * dbuPerUU())); }

void Call::giveAttribute(const oaAttrType &attribute, const oaObject *object) {
  const oaEnumNames *names = attributeNames(object);
  if (names != nullptr && names->contains(attribute.getRawValue())) {
    give(names->nameOf(attribute.getRawValue()));
  } else {
    give(attribute.getRawValue());
  }
}

void Call::giveNewEnum(const ClassInfo &cls, oaUInt4 number) {
  add(newObject(new ValueOf<EnumValue>(cls, 1, EnumValue{number})));
}

void Call::finish() {
  if (isList_) {
    Tcl_SetObjResult(interp_, Tcl_NewListObj(static_cast<int>(results_.size()), results_.data()));
  } else if (!results_.empty()) {
    Tcl_SetObjResult(interp_, results_.front());
  } else {
    Tcl_ResetResult(interp_);
  }
}

} // namespace tcl
} // namespace OpenAccess_4
