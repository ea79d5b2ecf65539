#ifndef OATEXTDISPLAYS_H
#define OATEXTDISPLAYS_H

// The kinds of text displays. Those of instances show something of the instance's master, which must be bound when they
// are made (oacNoMasterForTextDisplay); later, while it is not, they show what they showed last.

#include "oa/oaAttrType.h"
#include "oa/oaTextDisplay.h"

namespace OpenAccess_4 {

class oaInst;
class oaText;

class oaPropDisplay : public oaTextDisplay {
public:
  // Raises oacNonDesignTextDisplay unless the property belongs to an object of a design that has a block.
  static oaPropDisplay *create(oaProp *prop, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaPoint &origin,
                               oaTextAlign alignment, oaOrient orient, oaFont font, oaDist height,
                               oaTextDisplayFormat format = oacNameTextDisplayFormat, oaBoolean overbar = false,
                               oaBoolean visible = true, oaBoolean drafting = true);
  oaProp *getProp() const;
};

// Shows an attribute of a net, terminal, instance, instance terminal, or of the design.
class oaAttrDisplay : public oaTextDisplay {
public:
  // Raises message 1606 for another object or an attribute that its kind does not have.
  static oaAttrDisplay *create(oaObject *object, oaAttrType attribute, oaLayerNum layerNum, oaPurposeNum purposeNum,
                               const oaPoint &origin, oaTextAlign alignment, oaOrient orient, oaFont font,
                               oaDist height, oaTextDisplayFormat format = oacNameTextDisplayFormat,
                               oaBoolean overbar = false, oaBoolean visible = true, oaBoolean drafting = true);
  using oaTextDisplay::getText;
  // With names in that name space.
  void getText(const oaNameSpace &ns, oaString &text) const;
  oaObject *getObject() const;
  oaAttrType getAttribute() const;
  // An object of the same kind in the same design.
  void setObject(oaObject *object);
};

// Shows a text of an instance's master with other attributes.
class oaTextOverride : public oaTextDisplay {
public:
  // Raises oacTextNotInInstanceMaster.
  static oaTextOverride *create(oaText *masterText, oaInst *inst, oaLayerNum layerNum, oaPurposeNum purposeNum,
                                const oaPoint &origin, oaTextAlign alignment, oaOrient orient, oaFont font,
                                oaDist height, oaTextDisplayFormat format = oacNameTextDisplayFormat,
                                oaBoolean overbar = false, oaBoolean visible = true, oaBoolean drafting = true);
  // NULL while the master is not bound or has no such text any more.
  oaText *getMasterText() const;
  void getMasterTextText(oaString &text) const;
  oaInst *getInst() const;
  oaBoolean isBound() const;
};

// Shows a property of an instance's master.
class oaInstPropDisplay : public oaTextDisplay {
public:
  // Raises oacPropNotOnInstanceMaster.
  static oaInstPropDisplay *create(oaInst *inst, oaProp *masterProp, oaLayerNum layerNum, oaPurposeNum purposeNum,
                                   const oaPoint &origin, oaTextAlign alignment, oaOrient orient, oaFont font,
                                   oaDist height, oaTextDisplayFormat format = oacNameTextDisplayFormat,
                                   oaBoolean overbar = false, oaBoolean visible = true, oaBoolean drafting = true);
  // NULL while the master is not bound or has no such property any more.
  oaProp *getMasterProp() const;
  oaInst *getInst() const;
  oaBoolean isBound() const;
};

// Shows an attribute of an instance's master.
class oaInstAttrDisplay : public oaTextDisplay {
public:
  static oaInstAttrDisplay *create(oaInst *inst, oaDesignAttrType masterAttribute, oaLayerNum layerNum,
                                   oaPurposeNum purposeNum, const oaPoint &origin, oaTextAlign alignment,
                                   oaOrient orient, oaFont font, oaDist height,
                                   oaTextDisplayFormat format = oacNameTextDisplayFormat, oaBoolean overbar = false,
                                   oaBoolean visible = true, oaBoolean drafting = true);
  using oaTextDisplay::getText;
  void getText(const oaNameSpace &ns, oaString &text) const;
  oaInst *getInst() const;
  oaDesignAttrType getMasterAttribute() const;
  oaBoolean isBound() const;
};

} // namespace OpenAccess_4

#endif
