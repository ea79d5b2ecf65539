#ifndef OATCL_PARAMETER_H
#define OATCL_PARAMETER_H

// The table that all commands are made from: a form is one way to call a command, with its parameters and the function
// that does the work. Most forms are generated from the public headers.

#include "classinfo.h"

#include <cstdint>

namespace OpenAccess_4 {
namespace tcl {

class Call;

enum class ParameterKind : std::uint8_t {
  object,         // handle of an object of a class
  optionalObject, // the same, or NULL
  nothing,        // only NULL: a pointer to a class that is not bound
  string,
  character, // the first letter
  integer,   // from min to max
  number,
  boolean,
  enumeration,
  enumObject, // an object of the wrapper class: the first argument of a member function
  coordinate, // in user units
  distance,   // in user units, not negative
  value,      // of a utility class
  held,       // the same, but no mere text: an object or the result of a command
  optionalValue,
  name,      // of a name class: its text in the current name space, or an object
  changed,   // an object of a utility class, changed in place
  nameSpace, // an object
  attribute, // of a text display, by the class of the first argument
  collection,
  any,
};

struct Parameter {
  ParameterKind kind;
  const char *name;
  const ClassInfo *cls = nullptr;
  std::int64_t min = 0;
  std::int64_t max = 0;
  // Chosen after others that fit as well.
  bool isSecondChoice = false;
};

// What a form may do, for sessions that are confined to one design.
enum class Effect : std::uint8_t {
  none,    // works on values
  reads,   // changes nothing that is stored
  changes, // changes the design that the first argument belongs to
  copies,  // changes the design that the last argument that is an object belongs to
  outside, // the session, libraries, files, the life of designs and technologies
};

struct Form {
  const char *command; // without "oa::"
  const Parameter *parameters;
  std::uint8_t count;
  std::uint8_t required;
  Effect effect;
  void (*invoke)(Call &call);
};

struct FormTable {
  const Form *forms;
  std::size_t count;
};

} // namespace tcl
} // namespace OpenAccess_4

#endif
