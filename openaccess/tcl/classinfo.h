#ifndef OATCL_CLASSINFO_H
#define OATCL_CLASSINFO_H

// What the binding knows about one class of the API. The objects are generated from the public headers.

#include "oa/oaDesignDB.h"

#include <string_view>

#include <tcl.h>

namespace OpenAccess_4 {
namespace tcl {

enum class ClassKind {
  managed,     // lives in a database; scripts hold handles
  utility,     // a value; scripts hold objects, or plain lists where the class has a plain form
  name,        // a utility class whose plain form is its text in the current name space
  enumeration, // its text, or an object of the wrapper class
};

struct ClassInfo {
  const char *name; // without "oa"
  const ClassInfo *base;
  ClassKind kind;

  // Utility classes with a plain form, such as {x y}; both NULL for the others.
  // Reads `text`, in user units of `dbuPerUU`, into `value`; false when the text has another form. With `value` NULL
  // nothing is converted and nothing raised.
  bool (*readPlain)(Tcl_Obj *text, double dbuPerUU, void *value) = nullptr;
  Tcl_Obj *(*makePlain)(const void *value, double dbuPerUU) = nullptr;

  bool hasLengths = false; // its plain form depends on the unit

  // Enumerations.
  const oaEnumNames &(*names)() = nullptr;

  // Of an array; NULL for those of numbers and texts.
  const ClassInfo *element = nullptr;

  // How many steps up the hierarchy `ancestor` is; -1 when it is none.
  int distanceTo(const ClassInfo &ancestor) const {
    int steps = 0;
    for (const ClassInfo *cls = this; cls != nullptr; cls = cls->base, ++steps) {
      if (cls == &ancestor) {
        return steps;
      }
    }
    return -1;
  }
};

// The description of an API class. Specialised by the generated "classes.h".
template <class T> constexpr const ClassInfo &classOf();

// The class of a living object of this type; oaObject's for a type that is not bound.
const ClassInfo &managedClass(oaTypeEnum type);

// Whether there are objects "oa:NAME:0x1".
bool isObjectClass(std::string_view name);

} // namespace tcl
} // namespace OpenAccess_4

#endif
