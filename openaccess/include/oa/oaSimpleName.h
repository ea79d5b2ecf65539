// A scalar, vector or bit name, alone or as a member of a bundle.
#ifndef OASIMPLENAME_H
#define OASIMPLENAME_H

#include <variant>

#include "oa/oaNameSpace.h"
#include "oa/oaScalarName.h"
#include "oa/oaVectorBitName.h"
#include "oa/oaVectorName.h"

namespace OpenAccess_4 {

class oaSimpleName {
public:
  oaSimpleName() = default;
  /// Decides the kind by the text; oacInvalidNameSyntax for a bundle, oacInvalidNameLength for the empty text.
  oaSimpleName(const oaNameSpace &nSpace, const oaChar *in) { init(nSpace, in); }
  oaSimpleName(const oaScalarName &name) : name_(name) {}
  oaSimpleName(const oaVectorBitName &name) : name_(name) {}
  oaSimpleName(const oaVectorName &name) : name_(name) {}

  void init(const oaNameSpace &nSpace, const oaChar *in);
  void get(const oaNameSpace &nSpace, oaString &out) const;
  /// The native form.
  void get(oaString &out) const;
  /// The name of a bit by its place, counted from 0; oacBitNotInRangeForName beyond the last.
  void getBitName(const oaNameSpace &nSpace, oaUInt4 bit, oaString &out) const;

  oaNameType getType() const { return static_cast<oaNameTypeEnum>(name_.index()); }
  /// How often the bundle has this member; 1 outside a bundle.
  oaUInt4 getRepeat() const { return repeat_; }
  /// Hierarchy levels.
  oaUInt4 getNumMembers() const;
  /// Without the repeat count.
  oaUInt4 getNumBits() const;

  /// The name inside this one, NULL when it is of another kind.
  oaScalarName *getScalar() const { return std::get_if<oaScalarName>(&name_); }
  oaVectorName *getVector() const { return std::get_if<oaVectorName>(&name_); }
  oaVectorBitName *getVectorBit() const { return std::get_if<oaVectorBitName>(&name_); }
  const oaNameMem &operator[](oaUInt4 i) const;

  /// As in oaNameBase; oacInvalidName for an empty name.
  void addHierPath(const oaScalarName &path);
  void addHierPath(const oaVectorBitName &path);
  void addHierMem(const oaNameSpace &nSpace, const oaChar *in, oaUInt4 len);
  void addHierMem(const oaNameMem &in);

  // Repeat counts do not matter here; bundles compare them.
  oaBoolean operator==(const oaSimpleName &name) const { return name_ == name.name_; }
  oaBoolean operator==(const oaScalarName &name) const { return getScalar() && *getScalar() == name; }
  oaBoolean operator==(const oaVectorName &name) const { return getVector() && *getVector() == name; }
  oaBoolean operator==(const oaVectorBitName &name) const { return getVectorBit() && *getVectorBit() == name; }
  oaBoolean operator!=(const oaSimpleName &name) const { return !(*this == name); }
  oaBoolean operator!=(const oaScalarName &name) const { return !(*this == name); }
  oaBoolean operator!=(const oaVectorName &name) const { return !(*this == name); }
  oaBoolean operator!=(const oaVectorBitName &name) const { return !(*this == name); }

private:
  friend class oaBundleName;
  oaNameBase &base();

  // The kinds stand in the order of oaNameTypeEnum. Mutable, because the API gives writable names out of a const one.
  mutable std::variant<std::monostate, oaScalarName, oaVectorName, oaVectorBitName> name_;
  oaUInt4 repeat_ = 1;
};

} // namespace OpenAccess_4

#endif
