#ifndef OANET_H
#define OANET_H

#include "oa/oaConnectivityEnums.h"
#include "oa/oaDesignObject.h"

namespace OpenAccess_4 {

class oaBitNet;
class oaInstTerm;
class oaPin;
class oaShape;
class oaTerm;

// What terminals, instance terminals and figures are connected to. Destroying a net destroys its terminals and their
// pins; figures and instance terminals stay, without a net.
//
// Only scalar nets can be created in this release of the kit; a bus, bit or bundle name raises oacNotYetSupported.
class oaNet : public oaBlockObject {
public:
  void destroy();
  // No terminals, instance terminals or figures.
  oaBoolean isEmpty() const;
  oaBoolean isImplicit() const;
  oaBoolean isGlobal() const;
  oaUInt4 getNumBits() const;
  // Raises oacInvalidBusNetBitIndex beyond the last bit.
  oaBitNet *getBit(oaUInt4 bitIndex) const;
  void getName(oaName &name) const;
  void getName(const oaNameSpace &ns, oaString &name) const;
  oaSigType getSigType() const;
  oaInt4 getPriority() const;
  void setGlobal(oaBoolean isGlobal);
  void setSigType(const oaSigType &sigType);
  void setPriority(oaInt4 priority);
  // Takes over everything that is connected to `fromNet`, and destroys that one.
  void merge(oaNet *fromNet);
  oaCollection<oaTerm, oaNet> getTerms(oaUInt4 filterflags = oacTermIterNotImplicit) const;
  oaCollection<oaInstTerm, oaNet> getInstTerms(oaUInt4 filterFlags = oacInstTermIterNotImplicit) const;
  // Pins of the net's terminals.
  oaCollection<oaPin, oaNet> getPins() const;
  // Shapes on the net itself; with oacShapeIterNetPins also those of its pins.
  oaCollection<oaShape, oaNet> getShapes(oaUInt4 filterFlags = oacShapeIterNetRoutes) const;

  // The class follows from the kind of name. Raises oacInvalidNetName for the empty name, oacHierPathDoesNotExist for
  // one with "/", oacNetExists when the name is in use.
  static oaNet *create(oaBlock *block, const oaName &name, oaSigType sigType = oacSignalSigType,
                       oaBoolean isGlobal = false, oaBlockDomainVisibility view = oacInheritFromTopBlock);
  // NULL when there is none.
  static oaNet *find(const oaBlock *block, const oaName &name);
  // Whether create() would accept the name.
  static oaBoolean isValidName(const oaBlock *block, const oaName &name);
};

class oaBitNet : public oaNet {};

class oaScalarNet : public oaBitNet {
public:
  using oaNet::getName;
  void getName(oaScalarName &name) const;
  // Raises as create() does.
  void setName(const oaScalarName &name);
  static oaScalarNet *create(oaBlock *block, const oaScalarName &name, oaSigType sigType = oacSignalSigType,
                             oaBoolean isGlobal = false, oaBlockDomainVisibility view = oacInheritFromTopBlock);
  // Under an automatic name: N__ and a number.
  static oaScalarNet *create(oaBlock *block, oaSigType sigType = oacSignalSigType, oaBoolean isGlobal = false,
                             oaBlockDomainVisibility view = oacInheritFromTopBlock);
  static oaScalarNet *find(const oaBlock *block, const oaScalarName &name);
  static oaBoolean isValidName(const oaBlock *block, const oaScalarName &name);
};

} // namespace OpenAccess_4

#endif
