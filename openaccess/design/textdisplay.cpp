#include "textdisplay.h"

#include "attributetext.h"
#include "connectivity.h"
#include "figureindexes.h"
#include "oa/oaDesignDB.h"
#include "oa/oaProp.h"
#include "shapeaccess.h"
#include "textstyle.h"

namespace OpenAccess_4 {

namespace kit {

namespace {

// What a display shows, split as its format wants it.
struct NameAndValue {
  oaString name, value;
};

void getProperty(const oaProp *prop, NameAndValue &shown) {
  prop->getName(shown.name);
  prop->getValue(shown.value);
}

// What an instance's display shows while its master is not bound: the name or text that was stored.
NameAndValue lastKnown(const DesignDatabase &design, Row payload) {
  NameAndValue shown;
  design.strings().get(design.textDisplays.masterText[payload], shown.name);
  return shown;
}

NameAndValue shownBy(DesignDatabase &design, Row shape, Row payload, const oaNameSpace &ns) {
  NameAndValue shown;
  const oaObject *display = design.shapes.handle(shape);
  switch (oaTypeEnum(display->getType())) {
  case oacPropDisplayType:
    if (const oaProp *prop = static_cast<const oaPropDisplay *>(display)->getProp()) {
      getProperty(prop, shown);
    }
    break;
  case oacAttrDisplayType: {
    const oaObject *object = static_cast<const oaAttrDisplay *>(display)->getObject();
    if (object != nullptr) {
      const oaUInt4 attribute = design.textDisplays.attribute[payload];
      shown.name = attributeName(object->getType(), attribute);
      getAttributeText(object, attribute, ns, shown.value);
    }
    break;
  }
  case oacInstPropDisplayType:
    if (const oaProp *prop = static_cast<const oaInstPropDisplay *>(display)->getMasterProp()) {
      getProperty(prop, shown);
    } else {
      shown = lastKnown(design, payload);
    }
    break;
  case oacInstAttrDisplayType: {
    const oaUInt4 attribute = design.textDisplays.attribute[payload];
    shown.name = attributeName(oacDesignType, attribute);
    const oaInst *inst = static_cast<const oaInstAttrDisplay *>(display)->getInst();
    if (oaDesign *master = inst == nullptr ? nullptr : inst->getMaster()) {
      getAttributeText(master, attribute, ns, shown.value);
    }
    break;
  }
  default: // a text override
    static_cast<const oaTextOverride *>(display)->getMasterTextText(shown.value);
    shown.name = shown.value;
    break;
  }
  return shown;
}

} // namespace

void displayText(DesignDatabase &design, Row shape, const oaNameSpace &ns, oaString &text) {
  const Row payload = checkedRow(design.textDisplays, design.shapes.payload[shape], "a text display");
  const bool isOverride = design.shapes.kindOf(shape) == oacTextOverrideType;
  const oaTextDisplayFormatEnum format =
      checkedEnum<oaTextDisplayFormatEnum>(design.textDisplays, payload, design.textDisplays.format[payload],
                                           oacNameValueTextDisplayFormat + 1, "the format");
  const NameAndValue shown = shownBy(design, shape, payload, ns);
  if (format == oacNameTextDisplayFormat || isOverride) {
    text = shown.name;
  } else if (format == oacValueTextDisplayFormat) {
    text = shown.value;
  } else {
    text = shown.name;
    if (!shown.value.isEmpty()) {
      text += "=";
      text += shown.value;
    }
  }
}

oaBox displayBox(DesignDatabase &design, Row shape) {
  const Row payload = checkedRow(design.textDisplays, design.shapes.payload[shape], "a text display");
  const TextStyle style = design.textDisplays.style[payload];
  checkTextStyle(design.textDisplays, payload, style);
  return shownTextBox(design, shape, style);
}

void mergeDisplayBoxes(DesignDatabase &design, oaBox &box) {
  for (const Row display : allDisplays(design)) {
    if (design.shapes.isAlive(display)) {
      box.merge(displayBox(design, display));
    }
  }
}

} // namespace kit

using namespace kit;

namespace {

StyledShape displayOf(const oaTextDisplay *display) { return StyledShape(display, StyledShape::Kind::display); }

} // namespace

oaTextDisplayCollection oaTextDisplay::getTextDisplays(const oaObject *object) {
  return oaTextDisplayCollection(object);
}

void oaTextDisplay::getText(oaString &text) const {
  const StyledShape at = displayOf(this);
  displayText(at.design, at.row, oaNativeNS(), text);
}

void oaTextDisplay::getOrigin(oaPoint &origin) const { origin = displayOf(this).style.origin; }
oaTextAlign oaTextDisplay::getAlignment() const { return displayOf(this).alignment(); }
oaOrient oaTextDisplay::getOrient() const { return displayOf(this).orient(); }
oaFont oaTextDisplay::getFont() const { return displayOf(this).font(); }
oaDist oaTextDisplay::getHeight() const { return displayOf(this).style.heightDbu; }
oaBoolean oaTextDisplay::hasOverbar() const { return displayOf(this).has(kTextOverbar); }
oaBoolean oaTextDisplay::isVisible() const { return displayOf(this).has(kTextVisible); }
oaBoolean oaTextDisplay::isDrafting() const { return displayOf(this).has(kTextDrafting); }

oaTextDisplayFormat oaTextDisplay::getFormat() const {
  const StyledShape at = displayOf(this);
  return static_cast<oaTextDisplayFormatEnum>(at.design.textDisplays.format[at.payload]);
}

void oaTextDisplay::setOrigin(const oaPoint &origin) {
  StyledShape at = displayOf(this);
  at.style.origin = origin;
  at.store();
}

void oaTextDisplay::setAlignment(oaTextAlign alignment) {
  StyledShape at = displayOf(this);
  at.style.alignment = static_cast<std::uint8_t>(alignment);
  at.store();
}

void oaTextDisplay::setOrient(oaOrient orient) {
  StyledShape at = displayOf(this);
  at.style.orient = static_cast<std::uint8_t>(orient);
  at.store();
}

void oaTextDisplay::setFont(oaFont font) {
  StyledShape at = displayOf(this);
  at.style.font = static_cast<std::uint8_t>(font);
  at.store();
}

void oaTextDisplay::setHeight(oaDist height) {
  StyledShape at = displayOf(this);
  at.style.heightDbu = height;
  at.store();
}

void oaTextDisplay::setFormat(oaTextDisplayFormat format) {
  StyledShape at = displayOf(this);
  at.design.textDisplays.format.set(at.payload, static_cast<std::uint8_t>(format));
  at.store();
}

void oaTextDisplay::setOverbar(oaBoolean overbar) {
  StyledShape at = displayOf(this);
  at.set(kTextOverbar, overbar);
  at.store();
}

void oaTextDisplay::setVisible(oaBoolean visible) {
  StyledShape at = displayOf(this);
  at.set(kTextVisible, visible);
  at.store();
}

void oaTextDisplay::setDrafting(oaBoolean drafting) {
  StyledShape at = displayOf(this);
  at.set(kTextDrafting, drafting);
  at.store();
}

} // namespace OpenAccess_4
