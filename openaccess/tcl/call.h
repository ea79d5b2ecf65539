#ifndef OATCL_CALL_H
#define OATCL_CALL_H

// One call of a command: its arguments as C++ values, and its result. The generated code consists of calls of these
// functions.

#include "handles.h"
#include "parameter.h"
#include "texts.h"
#include "values.h"

#include <cstring>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace OpenAccess_4 {
namespace tcl {

class Call {
public:
  Call(Tcl_Interp *interp, const Form &form, int count, Tcl_Obj *const *arguments)
      : interp_(interp), form_(form), count_(count), arguments_(arguments) {}
  ~Call();
  Call(const Call &) = delete;
  Call &operator=(const Call &) = delete;

  // How badly the argument fits the parameter: 0 is best, kNoFit not at all.
  static constexpr int kNoFit = 1000;
  static int misfit(const Parameter &parameter, Tcl_Obj *argument, Tcl_Obj *firstArgument);

  Tcl_Interp *interp() const { return interp_; }
  bool given(int i) const { return i < count_; }
  Tcl_Obj *argument(int i) const { return arguments_[i]; }

  // Arguments. NULL for an optional object that is missing or NULL.
  template <class T> T *object(int i) const { return static_cast<T *>(anyObject(i)); }
  oaString string(int i) const { return textOf(arguments_[i]); }
  oaString path(int i) const { return pathOf(arguments_[i]); }
  // As Tcl has it.
  const oaChar *utf8(int i) const { return Tcl_GetString(arguments_[i]); }
  oaChar character(int i) const { return *string(i); }
  template <class Integer> Integer integer(int i) const { return static_cast<Integer>(wideInteger(i)); }
  double number(int i) const;
  bool boolean(int i) const;
  template <class Enum> Enum enumeration(int i) const { return static_cast<Enum>(enumNumber(i)); }
  oaCoord coordinate(int i);
  oaDist distance(int i);
  template <class T> T value(int i) {
    const ClassInfo &cls = classOf<T>();
    if (Value *held = readValue(arguments_[i]).value; held != nullptr && &held->cls == &cls && isInUnit(*held)) {
      return held->as<T>();
    }
    T result{};
    readInto(i, cls, &result);
    return result;
  }
  // An object of another class of names is converted where the API does so.
  template <class T> T name(int i) {
    if (Value *held = readValue(arguments_[i]).value; held != nullptr && held->isObject()) {
      return nameFrom<T, oaScalarName, oaVectorName, oaVectorBitName, oaSimpleName, oaBundleName, oaName>(*held);
    }
    return value<T>(i);
  }
  // Lives as long as the call; NULL when the argument is missing or NULL.
  template <class T> T *pointer(int i) {
    if (!given(i) || readHandle(arguments_[i]).state == HandleState::null) {
      return nullptr;
    }
    const auto copy = std::make_shared<T>(value<T>(i));
    kept_.push_back(copy);
    return copy.get();
  }
  // An object, to be changed in place.
  template <class T> T &changed(int i) const { return readValue(arguments_[i]).value->as<T>(); }
  const oaNameSpace &nameSpace(int i) const { return changed<oaNameSpace>(i); }
  oaAttrType attribute(int i, int objectAt) const;

  // Results. Several make a list, in the order of the calls, after giveList().
  void giveList() { isList_ = true; }
  void give(const oaObject *object) { add(newHandle(object)); }
  void give(const oaString &text) { add(newText(text)); }
  void give(const oaChar *text) { add(newText(text, std::strlen(text))); }
  void give(oaChar letter) { add(newText(&letter, 1)); }
  void givePath(const oaString &path) { add(newPath(path)); }
  void give(bool flag) { add(Tcl_NewIntObj(flag)); }
  void give(oaInt4 number) { add(Tcl_NewWideIntObj(number)); }
  void give(oaUInt4 number) { add(Tcl_NewWideIntObj(number)); }
  void give(oaInt8 number) { add(Tcl_NewWideIntObj(number)); }
  void give(oaUInt8 number);
  void give(double number) { add(Tcl_NewDoubleObj(number)); }
  void give(oaFloat number);
  void give(const oaEnumCollection &texts);
  void give(const oaBaseCollection &members);
  void giveLength(oaInt8 dbu);
  // A number in square database units.
  void giveArea(double area);
  template <class Enum> void giveEnum(const Enum &wrapper) { give(wrapper.getName()); }
  void giveAttribute(const oaAttrType &attribute, const oaObject *object);
  // A value in its plain form; an object when its class has none.
  template <class T> void giveValue(const T &content) {
    const ClassInfo &cls = classOf<T>();
    if (cls.makePlain == nullptr) {
      giveNew(content);
    } else {
      addPlain(new ValueOf<T>(cls, cls.hasLengths ? dbuPerUU() : 1, content));
    }
  }
  template <class T> void giveNew(T content) {
    add(newObject(new ValueOf<T>(classOf<T>(), 1, std::move(content)))); // a copy of an array would lose its size
  }
  // What the pointer leads to; "" for NULL.
  template <class T> void giveCopy(const T *content) {
    if (content == nullptr) {
      give("");
    } else {
      giveNew(T(*content));
    }
  }
  void giveNewEnum(const ClassInfo &cls, oaUInt4 number);
  // The argument itself.
  void giveArgument(int i) { add(arguments_[i]); }
  void add(Tcl_Obj *result);
  // Sets the interpreter's result.
  void finish();

  // The unit of the call: that of the design of the first argument, or one that suits plain values; 1 for objects of
  // utility classes and when nothing has a unit.
  double dbuPerUU();
  // Lengths are database units whatever the first argument is: constructors.
  void useDatabaseUnits() {
    dbuPerUU_ = 1;
    takesDatabaseUnits_ = true;
  }

private:
  template <class T, class Source, class... Others> T nameFrom(Value &held) {
    if constexpr (std::is_constructible<T, const Source &>::value) {
      if (&held.cls == &classOf<Source>()) {
        return T(held.as<Source>());
      }
    }
    if constexpr (sizeof...(Others) != 0) {
      return nameFrom<T, Others...>(held);
    }
    return held.as<T>(); // misfit() has let nothing else through
  }
  bool isInUnit(const Value &held);
  oaObject *anyObject(int i) const;
  oaInt8 wideInteger(int i) const;
  oaUInt4 enumNumber(int i) const;
  void readInto(int i, const ClassInfo &cls, void *target);
  void addPlain(Value *value);

  Tcl_Interp *interp_;
  const Form &form_;
  int count_;
  Tcl_Obj *const *arguments_;
  double dbuPerUU_ = 0;
  bool takesDatabaseUnits_ = false; // of plain values: what a constructor or an object takes over
  bool hasUnitOfLists_ = false;     // one that means nothing outside of the call
  bool isList_ = false;
  std::vector<Tcl_Obj *> results_;
  std::vector<std::shared_ptr<void>> kept_;
};

} // namespace tcl
} // namespace OpenAccess_4

#endif
