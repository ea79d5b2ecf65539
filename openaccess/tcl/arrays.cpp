// The commands of arrays. The C++ classes do not check places; scripts need that.

#include "call.h"
#include "classes.h"
#include "forms.h"
#include "scripterror.h"

#include <type_traits>
#include <vector>

namespace OpenAccess_4 {
namespace tcl {

namespace {

template <class Array> oaUInt4 checkedPlace(Call &call, const Array &array) {
  const oaUInt4 place = call.integer<oaUInt4>(1);
  if (place >= array.getNumElements()) {
    throw valueError("place " + std::to_string(place) + " is outside of the array, which has " +
                     std::to_string(array.getNumElements()) + " elements");
  }
  return place;
}

// Elements are values, objects, or no class of their own.
template <class Element> Element elementAt(Call &call, int i) {
  if constexpr (std::is_pointer<Element>::value) {
    return call.object<typename std::remove_pointer<Element>::type>(i);
  } else {
    return call.value<Element>(i);
  }
}
template <> oaString elementAt<oaString>(Call &call, int i) { return call.string(i); }
template <> oaByte elementAt<oaByte>(Call &call, int i) { return call.integer<oaByte>(i); }
template <class Element> void giveElement(Call &call, const Element &element) {
  if constexpr (std::is_pointer<Element>::value) {
    call.give(element);
  } else {
    call.giveValue(element);
  }
}
template <> void giveElement<oaString>(Call &call, const oaString &element) { call.give(element); }
template <> void giveElement<oaByte>(Call &call, const oaByte &element) { call.give(oaUInt4(element)); }

template <class Element> constexpr Parameter elementParameter() {
  return {std::is_pointer<Element>::value ? ParameterKind::object : ParameterKind::value, "element",
          &classOf<typename std::remove_pointer<Element>::type>()};
}
template <> constexpr Parameter elementParameter<oaString>() { return {ParameterKind::string, "element"}; }
template <> constexpr Parameter elementParameter<oaByte>() {
  return {ParameterKind::integer, "element", nullptr, 0, 255};
}

constexpr Parameter kPlace = {ParameterKind::integer, "index", nullptr, 0, UINT_MAX};
// More would be a mistake of the script rather than an array: a gigabyte of points.
constexpr Parameter kSize = {ParameterKind::integer, "size", nullptr, 0, 1 << 27};

// `Self` says what is taken for the array: any text can be read as bytes or as a list of texts, so these must be
// values.
template <class Array, class Element, ParameterKind Self> struct ArrayForms {
  static constexpr bool kIsText = Self == ParameterKind::held;
  static constexpr Parameter kRead = {Self, "array", &classOf<Array>()};
  static constexpr Parameter kChanged = {ParameterKind::changed, "array", &classOf<Array>()};
  static constexpr Parameter kNew[] = {kSize};
  static constexpr Parameter kFrom[] = {{ParameterKind::value, "elements", &classOf<Array>()}};
  static constexpr Parameter kReadAt[] = {kRead, kPlace};
  static constexpr Parameter kResize[] = {kChanged, kSize};
  static constexpr Parameter kWithElement[] = {kChanged, elementParameter<Element>()};
  static constexpr Parameter kFind[] = {kRead, elementParameter<Element>()};
  static constexpr Parameter kWithArray[] = {kChanged, {ParameterKind::held, "other", &classOf<Array>()}};

  static void make(Call &call) {
    call.useDatabaseUnits();
    call.giveNew(Array(call.given(0) ? call.integer<oaUInt4>(0) : 0));
  }
  static void makeFrom(Call &call) {
    Tcl_WideInt number = 0;
    if (kIsText && !readValue(call.argument(0)).value &&
        Tcl_GetWideIntFromObj(nullptr, call.argument(0), &number) == TCL_OK) {
      // It is the size, as it is for the other arrays, which would have refused this one.
      throw valueError(std::string("oa::") + classOf<Array>().name + ": size: expected unsigned integer from " +
                       std::to_string(kSize.min) + " to " + std::to_string(kSize.max) + " but got \"" +
                       Tcl_GetString(call.argument(0)) + "\"");
    }
    call.useDatabaseUnits();
    call.giveNew(call.value<Array>(0));
  }
  static void get(Call &call) {
    const Array array = call.value<Array>(0);
    giveElement<Element>(call, array.get(checkedPlace(call, array)));
  }

  static std::vector<Form> all() {
    const char *className = classOf<Array>().name;
    return {
        {className, kNew, 1, 0, Effect::none, make},
        {className, kFrom, 1, 1, Effect::none, makeFrom},
        {"getNumElements", &kRead, 1, 1, Effect::none,
         [](Call &call) { call.give(call.value<Array>(0).getNumElements()); }},
        {"getSize", &kRead, 1, 1, Effect::none,
         [](Call &call) {
           Value *held = readValue(call.argument(0)).value;
           const bool isArray = held != nullptr && held->isObject() && held->cls.distanceTo(classOf<Array>()) >= 0;
           call.give(isArray ? held->as<Array>().getSize() : call.value<Array>(0).getNumElements());
         }},
        {"get", kReadAt, 2, 2, Effect::none, get},
        {"getElement", kReadAt, 2, 2, Effect::none, get},
        {"setNumElements", kResize, 2, 2, Effect::none,
         [](Call &call) { call.changed<Array>(0).setNumElements(call.integer<oaUInt4>(1)); }},
        {"setSize", kResize, 2, 2, Effect::none,
         [](Call &call) { call.changed<Array>(0).setSize(call.integer<oaUInt4>(1)); }},
        {"append", kWithElement, 2, 2, Effect::none,
         [](Call &call) { call.changed<Array>(0).append(elementAt<Element>(call, 1)); }},
        {"append", kWithArray, 2, 2, Effect::none,
         [](Call &call) {
           call.changed<Array>(0).append(static_cast<const oaArray<Element> &>(call.value<Array>(1)));
         }},
        {"remove", kWithElement, 2, 2, Effect::none,
         [](Call &call) { call.changed<Array>(0).remove(elementAt<Element>(call, 1)); }},
        {"find", kFind, 2, 2, Effect::none,
         [](Call &call) {
           const oaArray<Element> &array = call.value<Array>(0);
           call.give(array.find(elementAt<Element>(call, 1)));
         }},
    };
  }
};

// The corners of a box, which must be an object: a list of two points is an array of two points.
constexpr Parameter kBox[] = {{ParameterKind::held, "box", &classOf<oaBox>()}};

const std::vector<Form> &arrayForms() {
  static const std::vector<Form> &forms = *new std::vector<Form>([] {
    std::vector<Form> all = {{"PointArray", kBox, 1, 1, Effect::none, [](Call &call) {
                                call.useDatabaseUnits();
                                call.giveNew(oaPointArray(call.value<oaBox>(0)));
                              }}};
    for (const std::vector<Form> &some : {ArrayForms<oaPointArray, oaPoint, ParameterKind::value>::all(),
                                          ArrayForms<oaBoxArray, oaBox, ParameterKind::value>::all(),
                                          ArrayForms<oaParamArray, oaParam, ParameterKind::value>::all(),
                                          ArrayForms<oaDMAttrArray, oaDMAttr, ParameterKind::value>::all(),
                                          ArrayForms<oaTechArray, oaTech *, ParameterKind::value>::all(),
                                          ArrayForms<oaTechHeaderArray, oaTechHeader *, ParameterKind::value>::all(),
                                          ArrayForms<oaStringArray, oaString, ParameterKind::held>::all(),
                                          ArrayForms<oaByteArray, oaByte, ParameterKind::held>::all()}) {
      all.insert(all.end(), some.begin(), some.end());
    }
    return all;
  }());
  return forms;
}

} // namespace

const FormTable kArrayForms = {arrayForms().data(), arrayForms().size()};

} // namespace tcl
} // namespace OpenAccess_4
