// A name of any kind.
#ifndef OANAME_H
#define OANAME_H

#include <variant>

#include "oa/oaBundleName.h"

namespace OpenAccess_4 {

class oaName {
public:
  oaName() = default;
  /// Decides the kind by the text; the empty text gives the empty name.
  oaName(const oaNameSpace &nSpace, const oaChar *in) { init(nSpace, in); }
  oaName(const oaSimpleName &name) { *this = name; }
  oaName(const oaBundleName &name) : name_(name) {}
  oaName(const oaVectorName &name) : name_(name) {}
  oaName(const oaVectorBitName &name) : name_(name) {}
  oaName(const oaScalarName &name) : name_(name) {}
  oaName(const oaName &name) = default;
  oaName &operator=(const oaName &name) = default;
  oaName &operator=(const oaSimpleName &name);
  oaName &operator=(const oaBundleName &name) { return *this = oaName(name); }
  oaName &operator=(const oaVectorName &name) { return *this = oaName(name); }
  oaName &operator=(const oaVectorBitName &name) { return *this = oaName(name); }
  oaName &operator=(const oaScalarName &name) { return *this = oaName(name); }

  void init(const oaNameSpace &nSpace, const oaChar *in);
  void get(const oaNameSpace &nSpace, oaString &out) const;
  /// The native form.
  void get(oaString &out) const;
  /// The name of a bit by its place, counted from 0; oacBitNotInRangeForName beyond the last.
  void getBitName(const oaNameSpace &nSpace, oaUInt4 bit, oaString &out) const;

  oaNameType getType() const { return static_cast<oaNameTypeEnum>(name_.index()); }
  oaUInt4 getNumBits() const;
  /// The name inside this one, NULL when it is of another kind.
  oaScalarName *getScalar() const { return std::get_if<oaScalarName>(&name_); }
  oaVectorName *getVector() const { return std::get_if<oaVectorName>(&name_); }
  oaVectorBitName *getVectorBit() const { return std::get_if<oaVectorBitName>(&name_); }
  oaBundleName *getBundle() const { return std::get_if<oaBundleName>(&name_); }

  /// As in oaNameBase, for a bundle to every member; oacInvalidName for an empty name.
  void addHierPath(const oaScalarName &path);
  void addHierPath(const oaVectorBitName &path);
  void addHierMem(const oaNameSpace &nSpace, const oaChar *in, oaUInt4 len);
  void addHierMem(const oaNameMem &in);

  // A name equals a name of the same kind only: the bit A[3] is not the bundle of that bit.
  oaBoolean operator==(const oaName &name) const { return name_ == name.name_; }
  oaBoolean operator==(const oaSimpleName &name) const { return *this == oaName(name); }
  oaBoolean operator==(const oaBundleName &name) const { return getBundle() && *getBundle() == name; }
  oaBoolean operator==(const oaVectorName &name) const { return getVector() && *getVector() == name; }
  oaBoolean operator==(const oaVectorBitName &name) const { return getVectorBit() && *getVectorBit() == name; }
  oaBoolean operator==(const oaScalarName &name) const { return getScalar() && *getScalar() == name; }
  oaBoolean operator!=(const oaName &name) const { return !(*this == name); }
  oaBoolean operator!=(const oaSimpleName &name) const { return !(*this == name); }
  oaBoolean operator!=(const oaBundleName &name) const { return !(*this == name); }
  oaBoolean operator!=(const oaVectorName &name) const { return !(*this == name); }
  oaBoolean operator!=(const oaVectorBitName &name) const { return !(*this == name); }
  oaBoolean operator!=(const oaScalarName &name) const { return !(*this == name); }

private:
  // The kinds stand in the order of oaNameTypeEnum. Mutable, because the API gives writable names out of a const one.
  mutable std::variant<std::monostate, oaScalarName, oaVectorName, oaVectorBitName, oaBundleName> name_;
};

} // namespace OpenAccess_4

#endif
