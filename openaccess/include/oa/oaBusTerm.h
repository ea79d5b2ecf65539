#ifndef OABUSTERM_H
#define OABUSTERM_H

#include "oa/oaTerm.h"

namespace OpenAccess_4 {

class oaBusTerm;
class oaBusTermBit;

// What all bus terminals and terminal bits of one base name have in common; see oaBusNetDef.
class oaBusTermDef : public oaBlockObject {
public:
  // Raises oacCannotDestroyBusTermDefWithTerms.
  void destroy();
  oaUInt4 getMinIndex() const;
  oaUInt4 getMaxIndex() const;
  oaUInt4 getNumBits() const;
  void getName(oaScalarName &name) const;
  void getName(const oaNameSpace &ns, oaString &name) const;
  oaBitOrder getBitOrder() const;
  oaBoolean isImplicit() const;
  void setBitOrder(oaBitOrder order);
  oaCollection<oaBusTerm, oaBusTermDef> getBusTerms() const;
  oaCollection<oaBusTermBit, oaBusTermDef> getBusTermBits() const;
  // Raises oacInvalidTermName, oacInvalidHierTermName, oacBusTermBaseNameMatchesScalarName.
  static oaBusTermDef *create(const oaBlock *block, const oaScalarName &name, oaBitOrder order);
  static oaBusTermDef *find(const oaBlock *block, const oaScalarName &name);
};

class oaBusTerm : public oaTerm {
public:
  using oaTerm::getName;
  oaBusTermDef *getDef() const;
  oaUInt4 getStart() const;
  oaUInt4 getStop() const;
  oaUInt4 getStep() const;
  void getName(oaVectorName &name) const;
  // These raise as oaTerm::create() does. A bit name makes a terminal with a range of one bit.
  static oaBusTerm *create(oaNet *net, const oaScalarName &name, oaUInt4 start, oaUInt4 stop, oaUInt4 step,
                           oaTermType termType = oacInputOutputTermType,
                           oaBlockDomainVisibility view = oacInheritFromTopBlock);
  static oaBusTerm *create(oaNet *net, const oaVectorName &name, oaTermType termType = oacInputOutputTermType,
                           oaBlockDomainVisibility view = oacInheritFromTopBlock);
  static oaBusTerm *create(oaNet *net, const oaVectorBitName &name, oaTermType termType = oacInputOutputTermType,
                           oaBlockDomainVisibility view = oacInheritFromTopBlock);
  static oaBusTerm *find(const oaBlock *block, const oaScalarName &name, oaUInt4 start, oaUInt4 stop, oaUInt4 step);
  static oaBoolean isValidName(const oaBlock *block, const oaNet *net, const oaScalarName &name, oaUInt4 start,
                               oaUInt4 stop, oaUInt4 step);
};

class oaBusTermBit : public oaBitTerm {
public:
  using oaTerm::getName;
  oaBusTermDef *getDef() const;
  oaUInt4 getBitIndex() const;
  void getName(oaVectorBitName &name) const;
  static oaBusTermBit *create(oaBitNet *net, const oaScalarName &baseName, oaUInt4 bitIndex,
                              oaTermType termType = oacInputOutputTermType,
                              oaBlockDomainVisibility view = oacInheritFromTopBlock);
  static oaBusTermBit *create(oaBitNet *net, const oaVectorBitName &bitName,
                              oaTermType termType = oacInputOutputTermType,
                              oaBlockDomainVisibility view = oacInheritFromTopBlock);
  static oaBusTermBit *find(const oaBlock *block, const oaScalarName &baseName, oaUInt4 bitIndex);
  static oaBoolean isValidName(const oaBitNet *net, const oaScalarName &baseName, oaUInt4 bitIndex);
};

class oaBundleTerm : public oaTerm {
public:
  using oaTerm::getName;
  oaUInt4 getNumMembers() const;
  // Raises oacInvalidBundleNetMemberIndex beyond the last member.
  oaTerm *getMember(oaUInt4 index) const;
  void getName(oaBundleName &name) const;
  oaCollection<oaTerm, oaBundleTerm> getMembers() const;
  static oaBundleTerm *create(oaNet *net, const oaBundleName &name, oaTermType termType = oacInputOutputTermType,
                              oaBlockDomainVisibility view = oacInheritFromTopBlock);
  static oaBundleTerm *find(const oaBlock *block, const oaBundleName &name);
  static oaBoolean isValidName(oaBlock *block, oaNet *net, const oaBundleName &name);
};

} // namespace OpenAccess_4

#endif
