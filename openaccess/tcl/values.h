#ifndef OATCL_VALUES_H
#define OATCL_VALUES_H

// Values of utility classes in Tcl. There are two sorts:
//
//   objects, made by a constructor command (oa::Point 1 2): they print as "oa:Point:0x1", hold plain database units,
//   may be changed in place by a command, and die with the last Tcl value that refers to them, or a good while after it
//   when Tcl took such a value for something else and kept only its text;
//
//   plain values, the results of commands (oa::getPoints $polygon): they print in their plain form, lengths in user
//   units, and never change. The C++ value is kept beside the text until Tcl takes the value for something else.

#include "classinfo.h"

#include <utility>

namespace OpenAccess_4 {
namespace tcl {

// The hierarchies of utility classes with virtual functions meet in one root, so that an address means one thing.
template <class T> struct RootOf { typedef T Type; };
template <> struct RootOf<oaNativeNS> { typedef oaNameSpace Type; };
template <> struct RootOf<oaUnixNS> { typedef oaNameSpace Type; };
template <> struct RootOf<oaCdbaNS> { typedef oaNameSpace Type; };
template <> struct RootOf<oaVerilogNS> { typedef oaNameSpace Type; };
template <> struct RootOf<oaSpiceNS> { typedef oaNameSpace Type; };
template <> struct RootOf<oaLefNS> { typedef oaNameSpace Type; };
template <> struct RootOf<oaDefNS> { typedef oaNameSpace Type; };

class Value {
public:
  Value(const ClassInfo &valueClass, double unitsPerUU) : cls(valueClass), dbuPerUU(unitsPerUU) {}
  virtual ~Value();
  Value(const Value &) = delete;
  Value &operator=(const Value &) = delete;

  virtual const void *data() const = 0;
  template <class T> T &as() {
    return static_cast<T &>(*static_cast<typename RootOf<T>::Type *>(const_cast<void *>(data())));
  }
  bool isObject() const { return serial != 0; }

  const ClassInfo &cls;
  const double dbuPerUU; // of a plain value; 1 for objects
  oaUInt8 serial = 0;    // of an object
  oaUInt4 holders = 0;
};

template <class T> class ValueOf : public Value {
public:
  ValueOf(const ClassInfo &valueClass, double unitsPerUU, T content)
      : Value(valueClass, unitsPerUU), content_(std::move(content)) {}
  const void *data() const override { return static_cast<const typename RootOf<T>::Type *>(&content_); }

private:
  T content_;
};

// An object of the wrapper class of an enumeration.
struct EnumValue {
  oaUInt4 number;
};

// A new object, or a plain value, that takes over the value.
Tcl_Obj *newObject(Value *value);
Tcl_Obj *newPlainValue(Value *value);
// One more reference to the value.
Tcl_Obj *newReference(Value *value);

// The number of the object that was made last. While objects up to a number are hidden, no text names them; 0 hides
// none.
oaUInt8 lastObjectSerial();
void hideObjectsUpTo(oaUInt8 serial);

// Whether the Tcl value holds an object or a plain value, its text apart.
bool isValue(const Tcl_Obj *text);

struct ReadValue {
  Value *value; // NULL: none
  bool isLost;  // the text names an object that does not exist any more
};
// The value in a Tcl value, without changing that.
ReadValue readValue(Tcl_Obj *text);

} // namespace tcl
} // namespace OpenAccess_4

#endif
