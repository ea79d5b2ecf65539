// Name spaces turn text into structured names and back. A name itself belongs to no space: it keeps plain characters,
// and each space writes them with its own delimiters and escapes. Name spaces work during static construction.
#ifndef OANAMESPACE_H
#define OANAMESPACE_H

#include "oa/oaEnumWrapper.h"

namespace OpenAccess_4 {

class oaBundleName;
class oaName;
class oaNameMem;
class oaScalarName;
class oaSimpleName;
class oaVectorBitName;
class oaVectorName;

namespace kit {
class NameGrammar;
}

enum oaNameTypeEnum {
  oacEmptyNameType = 0,
  oacScalarNameType = 1,
  oacVectorNameType = 2,
  oacVectorBitNameType = 3,
  oacBundleNameType = 4
};

/// Text names: empty, scalarName, vectorName, vectorBitName, bundleName.
OA_ENUM_WRAPPER(oaNameType);

class oaNameSpace {
public:
  virtual ~oaNameSpace();

  /// Whether both names are the same, letting case aside where the space does.
  virtual oaBoolean isEqual(const oaScalarName &n1, const oaScalarName &n2) const;
  virtual oaBoolean isEqual(const oaVectorName &n1, const oaVectorName &n2) const;
  virtual oaBoolean isEqual(const oaVectorBitName &n1, const oaVectorBitName &n2) const;
  virtual oaBoolean isEqual(const oaBundleName &n1, const oaBundleName &n2) const;
  virtual oaBoolean isEqual(const oaSimpleName &n1, const oaSimpleName &n2) const;
  virtual oaBoolean isEqual(const oaName &n1, const oaName &n2) const;
  virtual oaBoolean isEqual(const oaNameMem &n1, const oaNameMem &n2) const;

  /// The kind of name that the text is. Raises as the constructor of oaName does.
  virtual oaNameType getType(const oaChar *in) const;

  // Text to name. These raise oacInvalidNameLength, oacInvalidNameSyntax, oacInvalidNameChar and their finer forms for
  // a text that is no such name, and oacIndexedNameInvalid, oacVectorNameInvalid, oacStepNameInvalid,
  // oacBundleNameInvalid where the space has no such names. With `baseOnly` the whole text is the base; the numbers of
  // `out` stay.
  virtual void getInternalScalar(const oaChar *in, oaScalarName &out) const;
  virtual void getInternalVBit(const oaChar *in, oaVectorBitName &out, oaBoolean baseOnly = false) const;
  virtual void getInternalVector(const oaChar *in, oaVectorName &out, oaBoolean baseOnly = false) const;
  virtual void getInternalBundle(const oaChar *in, oaBundleName &out) const;

  // Name to text. The text replaces what `out` holds from `loc` on, and `loc` moves behind it. They raise
  // oacHierNameInvalid, oacIndexedNameInvalid, oacVectorNameInvalid, oacStepNameInvalid, oacBundleNameInvalid where the
  // space has no such names.
  virtual void getScalarName(const oaScalarName &in, oaString &out, oaUInt4 &loc) const;
  virtual void getVectorName(const oaVectorName &in, oaString &out, oaUInt4 &loc) const;
  virtual void getVectorBitName(const oaVectorBitName &in, oaString &out, oaUInt4 &loc) const;
  virtual void getBundleName(const oaBundleName &in, oaString &out, oaUInt4 &loc) const;
  virtual void getSimpleName(const oaSimpleName &in, oaString &out, oaUInt4 &loc) const;

  /// How this space writes names.
  virtual const kit::NameGrammar &grammar() const = 0;

protected:
  oaNameSpace() = default;
  oaNameSpace(const oaNameSpace &) = default;
  oaNameSpace &operator=(const oaNameSpace &) = default;
};

} // namespace OpenAccess_4

#endif
