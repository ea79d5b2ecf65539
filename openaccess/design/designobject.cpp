#include "oa/oaDesignObject.h"

#include "designaccess.h"
#include "oa/oaBlock.h"
#include "oa/oaDesign.h"

namespace OpenAccess_4 {

using namespace kit;

namespace {

bool isBetween(const oaObject *object, oaTypeEnum first, oaTypeEnum last) {
  const oaTypeEnum type = object->getType();
  return type >= first && type <= last;
}

} // namespace

oaBoolean oaDesignObject::isNode() const { return isBetween(this, oacNodeType, oacGroundedNodeType); }

oaBoolean oaDesignObject::isBlockObject() const { return liveTable(this).id() >= kBlockTable; }

oaBoolean oaDesignObject::isModObject() const { return isBetween(this, oacModScalarInstType, oacModInstHeaderType); }

oaBoolean oaDesignObject::isOccObject() const { return isBetween(this, oacOccScalarInstType, oacOccInstHeaderType); }

oaDesign *oaDesignObject::getDesign() const { return designOf(this).design(); }

oaBoolean oaBlockObject::isNet() const { return isBetween(this, oacBundleNetType, oacScalarNetType); }

oaBoolean oaBlockObject::isBitNet() const { return isBetween(this, oacBusNetBitType, oacScalarNetType); }

oaBoolean oaBlockObject::isTerm() const { return isBetween(this, oacBundleTermType, oacScalarTermType); }

oaBoolean oaBlockObject::isBitTerm() const { return isBetween(this, oacBusTermBitType, oacScalarTermType); }

oaBoolean oaBlockObject::isInst() const { return isBetween(this, oacArrayInstType, oacVectorInstBitType); }

oaBoolean oaBlockObject::isBitInst() const { return isInst() && getType() != oacVectorInstType; }

oaBoolean oaBlockObject::isConnectDef() const { return isBetween(this, oacNetConnectDefType, oacTermConnectDefType); }

oaBoolean oaBlockObject::isFig() const { return isPinFig(); }

oaBoolean oaBlockObject::isConnFig() const { return isPinFig(); }

oaBoolean oaBlockObject::isPinFig() const { return isShape() || isRef(); }

oaBoolean oaBlockObject::isShape() const { return isBetween(this, oacArcType, oacInstAttrDisplayType); }

oaBoolean oaBlockObject::isOccShape() const { return isBetween(this, oacOccArcType, oacOccInstAttrDisplayType); }

oaBoolean oaBlockObject::isTextDisplay() const { return isBetween(this, oacPropDisplayType, oacInstAttrDisplayType); }

oaBoolean oaBlockObject::isOccTextDisplay() const {
  return isBetween(this, oacOccPropDisplayType, oacOccInstAttrDisplayType);
}

oaBoolean oaBlockObject::isRef() const { return isInst() || isVia(); }

oaBoolean oaBlockObject::isBoundary() const { return isBetween(this, oacAreaBoundaryType, oacClusterBoundaryType); }

oaBoolean oaBlockObject::isVia() const { return isBetween(this, oacStdViaType, oacCustomViaType); }

oaBoolean oaBlockObject::isViaHeader() const { return isBetween(this, oacStdViaHeaderType, oacCustomViaHeaderType); }

oaBlock *oaBlockObject::getBlock() const { return blockOf(designOf(this)); }

} // namespace OpenAccess_4
