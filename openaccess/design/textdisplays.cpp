#include "oa/oaTextDisplays.h"

#include "attributetext.h"
#include "collection.h"
#include "figureindexes.h"
#include "oa/oaDesignDB.h"
#include "oa/oaProp.h"
#include "shapeaccess.h"
#include "textdisplay.h"
#include "textstyle.h"

#include <algorithm>

namespace OpenAccess_4 {

using namespace kit;

namespace {

// Raised for an object or attribute that no display can show; it has no name in the list of messages.
constexpr oaUInt4 kInvalidObjectForAttrDisplay = 1606;

// The displays of the object that the question names by table and row.
class DisplaysKind : public CollectionKind {
public:
  oaObject *next(const CollectionQuestion &question, Row &position, Row &) const override {
    if (question.table == nullptr) {
      return nullptr;
    }
    DesignDatabase &design = designOf(*question.table);
    for (const Row display : displaysOf(design, *question.table, question.owner)) {
      if (position == kNoRow || display > position) {
        position = display;
        return design.shapes.handle(display);
      }
    }
    return nullptr;
  }
};

const DisplaysKind &displaysKind() {
  static const DisplaysKind kind;
  return kind;
}

bool isInDesign(const oaObject *object) { return databaseOf(object).kind() == DatabaseKind::design; }

// Attributes of a new display.
struct NewDisplay {
  oaTypeEnum kind;
  const oaObject *object;
  oaUInt4 attribute;
  std::string masterText;
  oaLayerNum layer;
  oaPurposeNum purpose;
  oaTextDisplayFormatEnum format;
  TextStyle style;

  template <typename Display> Display *create() const {
    DesignDatabase &design = designOf(object);
    design.lppFor(layer, purpose); // refuses purposes before a payload is made
    const Row payload = design.textDisplays.addRow();
    design.textDisplays.style.set(payload, style);
    design.textDisplays.format.set(payload, static_cast<std::uint8_t>(format));
    design.textDisplays.objectTable.set(payload, liveTable(object).id());
    design.textDisplays.objectRow.set(payload, rowOf(object));
    design.textDisplays.attribute.set(payload, attribute);
    design.textDisplays.masterText.set(payload, design.strings().add(masterText));
    const Row shape = addShape(design, layer, purpose, kind, oaBox(style.origin, style.origin), payload);
    displayShows(design, shape);
    setShapeBox(design, shape, shownTextBox(design, shape, style));
    return shapeAt<Display>(design, shape);
  }
};

Row payloadOf(const oaTextDisplay *display, oaTypeEnum kind) {
  return shapeRow(display, kind, [](const DesignDatabase &design) -> const Table & { return design.textDisplays; })
      .payload;
}

// The object that a display shows; NULL when it is gone.
oaObject *shownObject(const oaTextDisplay *display, oaTypeEnum kind) {
  DesignDatabase &design = designOf(display);
  const Row payload = payloadOf(display, kind);
  Table *table = design.table(design.textDisplays.objectTable[payload]);
  const Row row = design.textDisplays.objectRow[payload];
  return table == nullptr || table->life() != TableLife::kinds || !table->isAlive(row) ? nullptr : table->handle(row);
}

oaInst *shownInst(const oaTextDisplay *display, oaTypeEnum kind) {
  oaObject *object = shownObject(display, kind);
  return object == nullptr || liveTable(object).id() != kInstTable ? nullptr : static_cast<oaInst *>(object);
}

oaDesign *masterOf(const oaTextDisplay *display, oaTypeEnum kind) {
  const oaInst *inst = shownInst(display, kind);
  return inst == nullptr ? nullptr : inst->getMaster();
}

std::string storedMasterText(const oaTextDisplay *display, oaTypeEnum kind) {
  DesignDatabase &design = designOf(display);
  return design.strings().text(design.textDisplays.masterText[payloadOf(display, kind)]);
}

// The master of an instance, for a display that is being made.
oaDesign *masterForDisplay(const oaInst *inst) {
  oaDesign *master = inst->getMaster();
  if (master == nullptr) {
    oaString name;
    inst->getName(oaNativeNS(), name);
    raiseDesign(oacNoMasterForTextDisplay,
                designOf(inst).label() + ": the master of instance " + std::string(name) + " cannot be opened");
  }
  return master;
}

} // namespace

oaTextDisplayCollection::oaTextDisplayCollection(const oaObject *object)
    : oaBaseCollection(&displaysKind(), isInDesign(object) ? &liveTable(object) : nullptr, rowOf(object), 0) {}

oaPropDisplay *oaPropDisplay::create(oaProp *prop, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaPoint &origin,
                                     oaTextAlign alignment, oaOrient orient, oaFont font, oaDist height,
                                     oaTextDisplayFormat format, oaBoolean overbar, oaBoolean visible,
                                     oaBoolean drafting) {
  if (!isInDesign(prop) || designOf(prop).blockRow() == kNoRow) {
    raiseDesign(oacNonDesignTextDisplay,
                databaseOf(prop).label() + ": the property is on no object of a design with a block");
  }
  const TextStyle style = toTextStyle(origin, alignment, orient, font, height, overbar, visible, drafting);
  return NewDisplay{oacPropDisplayType, prop, 0, "", layerNum, purposeNum, format, style}.create<oaPropDisplay>();
}

oaProp *oaPropDisplay::getProp() const {
  oaObject *object = shownObject(this, oacPropDisplayType);
  return object == nullptr || !object->isProp() ? nullptr : static_cast<oaProp *>(object);
}

oaAttrDisplay *oaAttrDisplay::create(oaObject *object, oaAttrType attribute, oaLayerNum layerNum,
                                     oaPurposeNum purposeNum, const oaPoint &origin, oaTextAlign alignment,
                                     oaOrient orient, oaFont font, oaDist height, oaTextDisplayFormat format,
                                     oaBoolean overbar, oaBoolean visible, oaBoolean drafting) {
  const oaEnumNames *attributes = attributesOf(object->getType());
  if (!isInDesign(object) || designOf(object).blockRow() == kNoRow || attributes == nullptr ||
      !attributes->contains(attribute.getRawValue())) {
    raiseDesign(kInvalidObjectForAttrDisplay, databaseOf(object).label() + ": an object of type " +
                                                  std::string(object->getType().getName()) + " has no attribute " +
                                                  std::to_string(attribute.getRawValue()) + " to show");
  }
  const TextStyle style = toTextStyle(origin, alignment, orient, font, height, overbar, visible, drafting);
  return NewDisplay{oacAttrDisplayType, object, attribute.getRawValue(), "", layerNum, purposeNum, format, style}
      .create<oaAttrDisplay>();
}

void oaAttrDisplay::getText(const oaNameSpace &ns, oaString &text) const {
  displayText(designOf(this), rowOf(this), ns, text);
}

oaObject *oaAttrDisplay::getObject() const { return shownObject(this, oacAttrDisplayType); }

oaAttrType oaAttrDisplay::getAttribute() const {
  return designOf(this).textDisplays.attribute[payloadOf(this, oacAttrDisplayType)];
}

void oaAttrDisplay::setObject(oaObject *object) {
  DesignDatabase &design = designOf(this);
  const Row payload = payloadOf(this, oacAttrDisplayType);
  Table &table = liveTable(object);
  if (&table.database() != &design || table.id() != design.textDisplays.objectTable[payload]) {
    raiseDesign(kInvalidObjectForAttrDisplay,
                design.label() + ": a display can only go to an object of the same kind in its design");
  }
  design.textDisplays.objectRow.set(payload, rowOf(object));
  displayShows(design, rowOf(this));
  design.touch();
}

oaTextOverride *oaTextOverride::create(oaText *masterText, oaInst *inst, oaLayerNum layerNum, oaPurposeNum purposeNum,
                                       const oaPoint &origin, oaTextAlign alignment, oaOrient orient, oaFont font,
                                       oaDist height, oaTextDisplayFormat format, oaBoolean overbar, oaBoolean visible,
                                       oaBoolean drafting) {
  if (masterForDisplay(inst) != masterText->getDesign()) {
    raiseDesign(oacTextNotInInstanceMaster, designOf(inst).label() + ": the text is not in the instance's master");
  }
  oaString text;
  masterText->getText(text);
  const TextStyle style = toTextStyle(origin, alignment, orient, font, height, overbar, visible, drafting);
  return NewDisplay{oacTextOverrideType, inst, 0, std::string(text), layerNum, purposeNum, format, style}
      .create<oaTextOverride>();
}

oaText *oaTextOverride::getMasterText() const {
  const oaDesign *master = masterOf(this, oacTextOverrideType);
  const oaBlock *block = master == nullptr ? nullptr : master->getTopBlock();
  if (block == nullptr) {
    return nullptr;
  }
  // The first text that reads the same: masters are stored apart from the designs that place them, so there is nothing
  // else to go by.
  const std::string wanted = storedMasterText(this, oacTextOverrideType);
  oaIter<oaShape> shapes(block->getShapes());
  oaString text;
  while (oaShape *shape = shapes.getNext()) {
    if (shape->getType() == oacTextType || shape->getType() == oacEvalTextType) {
      static_cast<oaText *>(shape)->getText(text);
      if (wanted == std::string(text)) {
        return static_cast<oaText *>(shape);
      }
    }
  }
  return nullptr;
}

void oaTextOverride::getMasterTextText(oaString &text) const {
  text = storedMasterText(this, oacTextOverrideType).c_str();
}

oaInst *oaTextOverride::getInst() const { return shownInst(this, oacTextOverrideType); }

oaBoolean oaTextOverride::isBound() const { return getMasterText() != nullptr; }

oaInstPropDisplay *oaInstPropDisplay::create(oaInst *inst, oaProp *masterProp, oaLayerNum layerNum,
                                             oaPurposeNum purposeNum, const oaPoint &origin, oaTextAlign alignment,
                                             oaOrient orient, oaFont font, oaDist height, oaTextDisplayFormat format,
                                             oaBoolean overbar, oaBoolean visible, oaBoolean drafting) {
  oaString name;
  masterProp->getName(name);
  if (oaProp::find(masterForDisplay(inst), name) != masterProp) {
    raiseDesign(oacPropNotOnInstanceMaster,
                designOf(inst).label() + ": property " + std::string(name) + " is not on the instance's master");
  }
  const TextStyle style = toTextStyle(origin, alignment, orient, font, height, overbar, visible, drafting);
  return NewDisplay{oacInstPropDisplayType, inst, 0, std::string(name), layerNum, purposeNum, format, style}
      .create<oaInstPropDisplay>();
}

oaProp *oaInstPropDisplay::getMasterProp() const {
  oaDesign *master = masterOf(this, oacInstPropDisplayType);
  return master == nullptr ? nullptr : oaProp::find(master, storedMasterText(this, oacInstPropDisplayType).c_str());
}

oaInst *oaInstPropDisplay::getInst() const { return shownInst(this, oacInstPropDisplayType); }

oaBoolean oaInstPropDisplay::isBound() const { return getMasterProp() != nullptr; }

oaInstAttrDisplay *oaInstAttrDisplay::create(oaInst *inst, oaDesignAttrType masterAttribute, oaLayerNum layerNum,
                                             oaPurposeNum purposeNum, const oaPoint &origin, oaTextAlign alignment,
                                             oaOrient orient, oaFont font, oaDist height, oaTextDisplayFormat format,
                                             oaBoolean overbar, oaBoolean visible, oaBoolean drafting) {
  masterForDisplay(inst);
  const TextStyle style = toTextStyle(origin, alignment, orient, font, height, overbar, visible, drafting);
  return NewDisplay{
      oacInstAttrDisplayType, inst, masterAttribute.getRawValue(), "", layerNum, purposeNum, format, style}
      .create<oaInstAttrDisplay>();
}

void oaInstAttrDisplay::getText(const oaNameSpace &ns, oaString &text) const {
  displayText(designOf(this), rowOf(this), ns, text);
}

oaInst *oaInstAttrDisplay::getInst() const { return shownInst(this, oacInstAttrDisplayType); }

oaDesignAttrType oaInstAttrDisplay::getMasterAttribute() const {
  return oaAttrType(designOf(this).textDisplays.attribute[payloadOf(this, oacInstAttrDisplayType)]);
}

oaBoolean oaInstAttrDisplay::isBound() const { return masterOf(this, oacInstAttrDisplayType) != nullptr; }

} // namespace OpenAccess_4
