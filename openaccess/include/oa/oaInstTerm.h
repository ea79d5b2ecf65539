#ifndef OAINSTTERM_H
#define OAINSTTERM_H

#include "oa/oaInst.h"
#include "oa/oaTerm.h"

namespace OpenAccess_4 {

// The connection of one terminal of an instance to a net, which may be missing. An instance is connected all by names
// or all by positions. By name or position the master need not be open, nor have such a terminal.
class oaInstTerm : public oaBlockObject {
public:
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
  oaUInt4 getNumBits() const;
  oaInstTerm *getBit(oaUInt4 bitIndex) const;
  oaBoolean isBound() const;
  oaBoolean isImplicit() const;
  oaBoolean usesTermPosition() const;
  // Raises oacNetInstTermWidthMismatchForInstTerm.
  void addToNet(oaNet *net);
  void removeFromNet();

  // All raise oacInstTermAlreadyExists, oacNetInstTermWidthMismatchForInstTerm, oacNetAndInstNotInSameDesign, and
  // oacInstTermMustBeByPosition or oacInstTermMustBeByName when the instance is connected the other way.
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
