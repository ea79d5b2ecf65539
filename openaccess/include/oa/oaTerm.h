#ifndef OATERM_H
#define OATERM_H

#include "oa/oaNet.h"

namespace OpenAccess_4 {

class oaBitTerm;

// A terminal: where the block is connected to the outside. It is always on a net of as many bits as it has itself.
// Destroying it destroys its pins.
//
// Terminals of several bits bring implicit ones into being, by the rules of nets (see oaNet). Terminals that share bits
// must have those on the same nets.
class oaTerm : public oaBlockObject {
public:
  // Raises oacCannotDestroyImplicitTerm.
  void destroy();
  oaBoolean isImplicit() const;
  // Part of the block's interface, which every terminal is unless told otherwise.
  oaBoolean isInterface() const;
  oaNet *getNet(oaBoolean preferred = false) const;
  oaUInt4 getNumBits() const;
  // As for nets. Raises oacInvalidBusNetBitIndex beyond the last bit.
  oaBitTerm *getBit(oaUInt4 bitIndex) const;
  oaTermType getTermType() const;
  // oacNullIndex when unset.
  oaUInt4 getPosition() const;
  void getName(oaName &name) const;
  void getName(const oaNameSpace &ns, oaString &name) const;
  // Raises oacNetTermWidthMismatch, oacCannotCreateTermWithImplicitNet, and oacTermMemberExists when bits are shared
  // with other terminals.
  void moveToNet(oaNet *net);
  // Raises for a bit of a terminal of several bits, whose type is the type of all its bits.
  void setTermType(oaTermType termType);
  void setIsInterface(oaBoolean isInterface);
  // Raises oacTermPositionAlreadyTaken.
  void setPosition(oaUInt4 position);
  void unsetPosition();
  oaCollection<oaPin, oaTerm> getPins() const;

  // Raises oacInvalidTermName for the empty name, oacInvalidHierTermName for one with "/", oacNetTermWidthMismatch,
  // oacTermExists, oacCannotCreateTermWithImplicitNet, oacScalarTermNameMatchesBusBaseName and
  // oacBusTermBaseNameMatchesScalarName, oacTermMemberExists when a bit exists on another net, and
  // oacTermNetMismatchInRepeatedMembers when a bit that the name repeats would be on two nets.
  static oaTerm *create(oaNet *net, const oaName &name, oaTermType termType = oacInputOutputTermType,
                        oaBlockDomainVisibility view = oacInheritFromTopBlock);
  static oaTerm *find(const oaBlock *block, const oaName &name);
  static oaTerm *find(const oaBlock *block, oaUInt4 position);
  static oaBoolean isValidName(const oaNet *net, const oaName &name);
  // The highest position in use, oacNullIndex when no terminal has one.
  static oaUInt4 getMaxPosition(const oaBlock *block);
};

class oaBitTerm : public oaTerm {};

class oaScalarTerm : public oaBitTerm {
public:
  using oaTerm::getName;
  void getName(oaScalarName &name) const;
  void setName(const oaScalarName &name);
  static oaScalarTerm *create(oaBitNet *net, const oaScalarName &name, oaTermType type = oacInputOutputTermType,
                              oaBlockDomainVisibility view = oacInheritFromTopBlock);
  static oaScalarTerm *find(const oaBlock *block, const oaScalarName &name);
  static oaBoolean isValidName(const oaBlock *block, const oaScalarName &name);
};

} // namespace OpenAccess_4

#endif
