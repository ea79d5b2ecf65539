#ifndef OADESIGNOBJECT_H
#define OADESIGNOBJECT_H

#include "oa/oaTechDB.h"

namespace OpenAccess_4 {

class oaBlock;
class oaDesign;

// The design itself and every object in it.
class oaDesignObject : public oaObject {
public:
  oaBoolean isNode() const;
  oaBoolean isBlockObject() const;
  oaBoolean isModObject() const;
  oaBoolean isOccObject() const;
  oaDesign *getDesign() const;
};

// An object of the block: the block itself, headers, figures, connectivity.
class oaBlockObject : public oaDesignObject {
public:
  oaBoolean isNet() const;
  oaBoolean isBitNet() const;
  oaBoolean isTerm() const;
  oaBoolean isBitTerm() const;
  oaBoolean isInst() const;
  oaBoolean isBitInst() const;
  oaBoolean isConnectDef() const;
  oaBoolean isFig() const;
  oaBoolean isConnFig() const;
  oaBoolean isPinFig() const;
  // Text displays included.
  oaBoolean isShape() const;
  oaBoolean isOccShape() const;
  oaBoolean isTextDisplay() const;
  oaBoolean isOccTextDisplay() const;
  // Instances and vias.
  oaBoolean isRef() const;
  oaBoolean isBoundary() const;
  oaBoolean isVia() const;
  oaBoolean isViaHeader() const;
  oaBlock *getBlock() const;
};

} // namespace OpenAccess_4

#endif
