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
class oaVia;

// What terminals, instance terminals and figures are connected to.
//
// A net of several bits brings its bits and members into being as implicit nets: they can be found and read, and that
// is all until somebody creates them by name, which makes the same object explicit. What a net of several bits needs
// stays: destroying it then makes it implicit again. Destroying a net destroys its terminals and their pins; figures
// and instance terminals stay, without a net.
class oaNet : public oaBlockObject {
public:
  // Raises oacCannotDestroyImplicitNet.
  void destroy();
  // No terminals, instance terminals or figures.
  oaBoolean isEmpty() const;
  oaBoolean isImplicit() const;
  // An implicit net is as global as the nets that it belongs to.
  oaBoolean isGlobal() const;
  oaUInt4 getNumBits() const;
  // The bit at that place, counted from 0 in the order in which the name is written, repeats included. Raises
  // oacInvalidBusNetBitIndex beyond the last bit.
  oaBitNet *getBit(oaUInt4 bitIndex) const;
  void getName(oaName &name) const;
  void getName(const oaNameSpace &ns, oaString &name) const;
  oaSigType getSigType() const;
  oaInt4 getPriority() const;
  // The setters raise for an implicit net.
  void setGlobal(oaBoolean isGlobal);
  void setSigType(const oaSigType &sigType);
  void setPriority(oaInt4 priority);
  // Takes over everything that is connected to `fromNet`, which must have as many bits, and destroys that one.
  void merge(oaNet *fromNet);
  oaCollection<oaTerm, oaNet> getTerms(oaUInt4 filterflags = oacTermIterNotImplicit) const;
  oaCollection<oaInstTerm, oaNet> getInstTerms(oaUInt4 filterFlags = oacInstTermIterNotImplicit) const;
  // The different bits of the net, in the order in which they occur first.
  oaCollection<oaBitNet, oaNet> getSingleBitMembers() const;
  // Pins of the net's terminals.
  oaCollection<oaPin, oaNet> getPins() const;
  // Shapes on the net itself; with oacShapeIterNetPins also those of its pins.
  oaCollection<oaShape, oaNet> getShapes(oaUInt4 filterFlags = oacShapeIterNetRoutes) const;
  // The same for vias, with oacViaIterNetPins.
  oaCollection<oaVia, oaNet> getVias(oaUInt4 filterFlags = oacViaIterNetRoutes) const;

  // The class follows from the kind of name. Raises oacInvalidNetName for the empty name and for one of more than a
  // million bits, oacHierPathDoesNotExist for one with "/", oacNetExists when there is an explicit net of that name,
  // oacScalarNetNameMatchesBusBaseName and oacBusNetBaseNameMatchesScalarName when a scalar and a bus would share a
  // name, oacBusNetNameMatchesAutoName when the base of a bus looks like an automatic name.
  static oaNet *create(oaBlock *block, const oaName &name, oaSigType sigType = oacSignalSigType,
                       oaBoolean isGlobal = false, oaBlockDomainVisibility view = oacInheritFromTopBlock);
  // Implicit nets are found too. NULL when there is none.
  static oaNet *find(const oaBlock *block, const oaName &name);
  // Whether create() would accept the name.
  static oaBoolean isValidName(const oaBlock *block, const oaName &name);
};

// A net of one bit. Several of them may be declared equivalent; one of such a set is the preferred one.
class oaBitNet : public oaNet {
public:
  // True for a net without equivalents.
  oaBoolean isPreferredEquivalent() const;
  oaBitNet *getPreferredEquivalent() const;
  void setPreferredEquivalent();
  // Joins the sets of the two nets; the preferred net of this one's set stays preferred.
  void makeEquivalent(oaBitNet *equivNet);
  // Takes this net out of its set. Raises when it has no equivalents.
  void breakEquivalence();
  // The nets of the set, this one included; empty without equivalents.
  oaCollection<oaBitNet, oaBitNet> getEquivalentNets() const;
};

class oaScalarNet : public oaBitNet {
public:
  using oaNet::getName;
  void getName(oaScalarName &name) const;
  // Raises as create() does, oacCannotSetNameOfImplicitNet, and oacCannotSetNameOfNetInBundleNet.
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
