// The small value classes around enumerations. A header says
//
//     enum oaSigTypeEnum { oacSignalSigType = 0, oacPowerSigType = 1 };
//     OA_ENUM_WRAPPER(oaSigType);
//
// and one source file, which includes "raise.h" for the layer's raise function, gives the text names in the order
// of the numbers from 0 on:
//
//     OA_ENUM_NAMES(oaSigType, raiseDesign, oacInvalidSigTypeName, "signal type", "signal", "power")
//
// oaSigType then has oaSigType() (number 0), oaSigType(oaSigTypeEnum), oaSigType(const oaString &), getName() and the
// conversion to oaSigTypeEnum. A wrapper with members of its own derives from oaEnumWrapper<oaSigTypeEnum> by hand.
// Enumerations with gaps use OA_ENUM_NAMES_AT with pairs {oacFutureDomain, "future"}. Names work during static
// construction.
#ifndef OAENUMWRAPPER_H
#define OAENUMWRAPPER_H

#include <initializer_list>
#include <string>
#include <vector>

#include "oa/oaString.h"

namespace OpenAccess_4 {

/// The text names of one enumeration.
class oaEnumNames {
public:
  /// One of raiseBase, raiseDM, raiseTech, raiseDesign.
  typedef void (*Raise)(oaUInt4 id, const std::string &message);
  struct Entry {
    oaUInt4 value;
    const oaChar *name;
  };

  /// `what` names the kind of value in the message of the exception `invalidNameId`.
  oaEnumNames(Raise raise, oaUInt4 invalidNameId, const oaChar *what, std::initializer_list<const oaChar *> names);
  /// The entries stand in ascending order of their values.
  oaEnumNames(Raise raise, oaUInt4 invalidNameId, const oaChar *what, std::initializer_list<Entry> entries);

  /// Raises invalidNameId for a number that has no name.
  const oaString &nameOf(oaUInt4 value) const;
  /// Raises invalidNameId for a text that is no name; case counts.
  oaUInt4 valueOf(const oaString &name) const;
  /// Whether the number, which may come from a file, is one of the enumeration.
  bool contains(oaUInt4 value) const { return find(value) != nullptr; }

private:
  struct NamedValue {
    oaUInt4 value;
    oaString name;
  };
  const NamedValue *find(oaUInt4 value) const;
  [[noreturn]] void raiseUnknown(const std::string &found) const;

  Raise raise_;
  oaUInt4 invalidNameId_;
  const oaChar *what_;
  std::vector<NamedValue> values_;
};

template <class Enum> class oaEnumWrapper {
public:
  oaEnumWrapper() : value_(static_cast<Enum>(0)) {}
  oaEnumWrapper(Enum valueIn) : value_(valueIn) {}
  oaEnumWrapper(const oaString &name) : value_(static_cast<Enum>(oaEnumNamesOf(Enum()).valueOf(name))) {}

  const oaString &getName() const { return oaEnumNamesOf(value_).nameOf(static_cast<oaUInt4>(value_)); }
  operator Enum() const { return value_; }

private:
  Enum value_;
};

#define OA_ENUM_WRAPPER(Wrapper)                                                                                       \
  const oaEnumNames &oaEnumNamesOf(Wrapper##Enum);                                                                     \
  class Wrapper : public oaEnumWrapper<Wrapper##Enum> {                                                                \
  public:                                                                                                              \
    using oaEnumWrapper<Wrapper##Enum>::oaEnumWrapper;                                                                 \
    Wrapper() = default;                                                                                               \
  }

// The table is never destroyed, so that names also work while static objects are destroyed.
#define OA_ENUM_NAMES(Wrapper, raise, invalidNameId, what, ...)                                                        \
  const oaEnumNames &oaEnumNamesOf(Wrapper##Enum) {                                                                    \
    static const oaEnumNames &names =                                                                                  \
        *new oaEnumNames(raise, invalidNameId, what, std::initializer_list<const oaChar *>{__VA_ARGS__});              \
    return names;                                                                                                      \
  }

#define OA_ENUM_NAMES_AT(Wrapper, raise, invalidNameId, what, ...)                                                     \
  const oaEnumNames &oaEnumNamesOf(Wrapper##Enum) {                                                                    \
    static const oaEnumNames &names =                                                                                  \
        *new oaEnumNames(raise, invalidNameId, what, std::initializer_list<oaEnumNames::Entry>{__VA_ARGS__});          \
    return names;                                                                                                      \
  }

} // namespace OpenAccess_4

#endif
