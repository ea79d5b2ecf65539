#ifndef OABUSNET_H
#define OABUSNET_H

#include "oa/oaNet.h"

namespace OpenAccess_4 {

class oaBusNet;
class oaBusNetBit;

// What all buses and bits of one base name have in common. It appears with the first of them and goes with the last,
// unless it was created explicitly.
class oaBusNetDef : public oaBlockObject {
public:
  // Raises oacCannotDestroyBusNetDefWithNets.
  void destroy();
  // Over all bits, implicit ones included; 0 when there are none.
  oaUInt4 getMinIndex() const;
  oaUInt4 getMaxIndex() const;
  oaUInt4 getNumBits() const;
  void getName(oaScalarName &name) const;
  void getName(const oaNameSpace &ns, oaString &name) const;
  oaBitOrder getBitOrder() const;
  // Came into being with a bus or bit.
  oaBoolean isImplicit() const;
  void setBitOrder(oaBitOrder order);
  // Implicit ones included.
  oaCollection<oaBusNet, oaBusNetDef> getBusNets() const;
  oaCollection<oaBusNetBit, oaBusNetDef> getBusNetBits() const;
  // Makes an implicit definition explicit. Raises oacInvalidNetName, oacHierPathDoesNotExist,
  // oacBusNetBaseNameMatchesScalarName.
  static oaBusNetDef *create(const oaBlock *block, const oaScalarName &name, oaBitOrder order);
  static oaBusNetDef *find(const oaBlock *block, const oaScalarName &name);
};

// A range of bits of one base name, in the order in which it was written. Ranges of one base may overlap: they share
// bits.
class oaBusNet : public oaNet {
public:
  using oaNet::getName;
  oaBusNetDef *getDef() const;
  oaUInt4 getStart() const;
  oaUInt4 getStop() const;
  oaUInt4 getStep() const;
  void getName(oaVectorName &name) const;
  // These raise as oaNet::create() does. A bit name makes a bus of one bit.
  static oaBusNet *create(oaBlock *block, const oaScalarName &baseName, oaUInt4 start, oaUInt4 stop, oaUInt4 step,
                          oaSigType sigType = oacSignalSigType, oaBoolean isGlobal = false,
                          oaBlockDomainVisibility view = oacInheritFromTopBlock);
  static oaBusNet *create(oaBlock *block, const oaVectorName &name, oaSigType sigType = oacSignalSigType,
                          oaBoolean isGlobal = false, oaBlockDomainVisibility view = oacInheritFromTopBlock);
  static oaBusNet *create(oaBlock *block, const oaVectorBitName &name, oaSigType sigType = oacSignalSigType,
                          oaBoolean isGlobal = false, oaBlockDomainVisibility view = oacInheritFromTopBlock);
  static oaBusNet *find(const oaBlock *block, const oaScalarName &baseName, oaUInt4 start, oaUInt4 stop, oaUInt4 step);
  static oaBoolean isValidName(const oaBlock *block, const oaScalarName &baseName, oaUInt4 start, oaUInt4 stop,
                               oaUInt4 step);
};

// One bit of a base name. It needs no bus.
class oaBusNetBit : public oaBitNet {
public:
  using oaNet::getName;
  oaBusNetDef *getDef() const;
  oaUInt4 getBitIndex() const;
  void getName(oaVectorBitName &name) const;
  static oaBusNetBit *create(oaBlock *block, const oaScalarName &baseName, oaUInt4 bitIndex,
                             oaSigType sigType = oacSignalSigType, oaBoolean isGlobal = false,
                             oaBlockDomainVisibility view = oacInheritFromTopBlock);
  static oaBusNetBit *create(oaBlock *block, const oaVectorBitName &bitName, oaSigType sigType = oacSignalSigType,
                             oaBoolean isGlobal = false, oaBlockDomainVisibility view = oacInheritFromTopBlock);
  static oaBusNetBit *find(const oaBlock *block, const oaScalarName &baseName, oaUInt4 bitIndex);
  static oaBoolean isValidName(const oaBlock *block, const oaScalarName &baseName, oaUInt4 bitIndex);
};

// An ordered list of nets, each with a repeat count. A bundle of one member is a net beside that member.
class oaBundleNet : public oaNet {
public:
  using oaNet::getName;
  // Members, not bits.
  oaUInt4 getNumMembers() const;
  // These raise oacInvalidBundleNetMemberIndex beyond the last member.
  oaUInt4 getRepeat(oaUInt4 index) const;
  oaNet *getMember(oaUInt4 index) const;
  void getName(oaBundleName &name) const;
  // In order, each as often as the name lists it.
  oaCollection<oaNet, oaBundleNet> getMembers() const;
  static oaBundleNet *create(oaBlock *block, const oaBundleName &name, oaSigType sigType = oacSignalSigType,
                             oaBoolean isGlobal = false, oaBlockDomainVisibility view = oacInheritFromTopBlock);
  static oaBundleNet *find(const oaBlock *block, const oaBundleName &name);
  static oaBoolean isValidName(oaBlock *block, const oaBundleName &name);
};

} // namespace OpenAccess_4

#endif
