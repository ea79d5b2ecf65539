#ifndef OAINSTTERM_H
#define OAINSTTERM_H

#include "oa/oaInst.h"
#include "oa/oaTerm.h"

namespace OpenAccess_4 {

// The connection of one terminal of an instance to a net, which may be missing. An instance is connected all by names
// or all by positions. By name or position the master need not be open, nor have such a terminal.
//
// The net has as many bits as the terminal (or its name) times the instance. A connection of several bits brings one
// implicit connection for each bit into being, of the instance's bit where the instance is a vector; bits come in the
// order of the instance's bits, for each in the order of the terminal's bits. Connections that share bits must have
// those on the same nets, or on equivalent ones; one without a net contradicts nobody. Creating the connection of a
// single bit that exists implicitly makes the same object explicit; destroying it makes it implicit again while it is
// needed. Connections by position have no bits of their own.
class oaInstTerm : public oaBlockObject {
public:
  // Raises oacCannotDestroyImplicitInstTerm.
  void destroy();
  oaNet *getNet(oaBoolean preferred = false) const;
  oaInst *getInst() const;
  // Binds the master. NULL when it cannot be bound or has no such terminal.
  oaTerm *getTerm() const;
  // Raise oacInstTermConnectsByPosition.
  void getTermName(oaName &name) const;
  void getTermName(const oaNameSpace &ns, oaString &name) const;
  // Raises oacInstTermConnectsByName.
  oaUInt4 getTermPosition() const;
  // Of the net; without a net, bits of the terminal times bits of the instance; 0 when that is unknown.
  oaUInt4 getNumBits() const;
  // The connection of that bit: this one when its name and instance are of a single bit. Raises
  // oacInvalidBusNetBitIndex beyond the last bit, and for every bit of several by position.
  oaInstTerm *getBit(oaUInt4 bitIndex) const;
  oaBoolean isBound() const;
  oaBoolean isImplicit() const;
  oaBoolean usesTermPosition() const;
  // The bits go along, except where another connection has them on a net. Raise what create() raises about nets,
  // oacInstTermBitAlreadyExists also for a single bit that one of several bits has on another net, and
  // oacCannotModifyImplicitInstTerm.
  void addToNet(oaNet *net);
  void removeFromNet();

  // All raise oacInstTermAlreadyExists, oacInstTermBitAlreadyExists when a shared bit is on another net,
  // oacInstTermNetMismatchInRepeatedMembers when a name repeats a bit on different nets, oacInstTermInstImplicit,
  // oacInstTermNetImplicit, oacNetInstTermWidthMismatchForInstTerm, oacNetAndInstNotInSameDesign, oacInvalidTermName
  // for an empty name and for more than a million bits, and oacInstTermMustBeByPosition or oacInstTermMustBeByName when
  // the instance is connected the other way. By position the width is checked as far as the open master tells it.
  //
  // Raises oacTermNotInInstMasterForInstTerm in addition.
  static oaInstTerm *create(oaNet *net, oaInst *inst, oaTerm *term,
                            oaBlockDomainVisibility view = oacInheritFromTopBlock);
  static oaInstTerm *create(oaNet *net, oaInst *inst, const oaName &termName,
                            oaBlockDomainVisibility view = oacInheritFromTopBlock);
  static oaInstTerm *create(oaNet *net, oaInst *inst, oaUInt4 termPosition,
                            oaBlockDomainVisibility view = oacInheritFromTopBlock);
  // NULL when there is none. Asking by name on an instance connected by positions raises
  // oacInstTermInstUsesTermPosition; the other way round oacInstTermInstUsesTermName.
  static oaInstTerm *find(const oaInst *inst, const oaTerm *term);
  static oaInstTerm *find(const oaInst *inst, const oaName &termName);
  static oaInstTerm *find(const oaInst *inst, oaUInt4 termPosition);
};

} // namespace OpenAccess_4

#endif
