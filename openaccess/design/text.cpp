#include "oa/oaText.h"

#include "shapeaccess.h"
#include "textstyle.h"

namespace OpenAccess_4 {

using namespace kit;

namespace {

StyledShape textOf(const oaText *text) { return StyledShape(text, StyledShape::Kind::text); }

// What a walk asks of every text takes this way; NULL: see readyPayload, or the attributes are out of range.
inline const TextStyle *readyStyle(const oaText *object) {
  const TextStyle *style =
      readyPayload<TextStyle>(object, oacTextType, [](const DesignDatabase &design) -> const LongColumn<TextStyle> & {
        return design.texts.style;
      });
  const bool isSound = style != nullptr && style->alignment <= oacLowerRightTextAlign && style->orient <= oacMXR90 &&
                       style->font <= oacMilSpecFont;
  return OA_LIKELY(isSound) ? style : nullptr;
}

} // namespace

oaText *oaText::create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaString &text,
                       const oaPoint &origin, oaTextAlign alignment, oaOrient orient, oaFont font, oaDist height,
                       oaBoolean overbar, oaBoolean visible, oaBoolean drafting) {
  DesignDatabase &design = designOfShapes(block);
  design.lppFor(layerNum, purposeNum); // refuses purposes before a payload is made
  const std::string_view content(text, text.getLength());
  const Row payload = design.texts.addRow();
  design.texts.style.set(payload, toTextStyle(origin, alignment, orient, font, height, overbar, visible, drafting));
  design.texts.text.set(payload, design.strings().add(content));
  const oaBox box = textBox(content, origin, height, alignment, orient, overbar);
  return shapeAt<oaText>(design, addShape(design, layerNum, purposeNum, oacTextType, box, payload));
}

void oaText::getText(oaString &text) const {
  if (OA_LIKELY(readyStyle(this) != nullptr)) {
    const Row *stored = readyPayload<Row>(
        this, oacTextType, [](const DesignDatabase &design) -> const LongColumn<Row> & { return design.texts.text; });
    if (OA_LIKELY(stored != nullptr)) {
      designOf(*tableOf(this)).strings().get(*stored, text);
      return;
    }
  }
  const StyledShape at = textOf(this);
  shownText(at.design, at.row, text);
}

void oaText::getOrigin(oaPoint &origin) const {
  const TextStyle *ready = readyStyle(this);
  origin = OA_LIKELY(ready != nullptr) ? ready->origin : textOf(this).style.origin;
}

oaTextAlign oaText::getAlignment() const { return textOf(this).alignment(); }

oaOrient oaText::getOrient() const {
  const TextStyle *ready = readyStyle(this);
  return OA_LIKELY(ready != nullptr) ? static_cast<oaOrientEnum>(ready->orient) : textOf(this).orient();
}

oaFont oaText::getFont() const { return textOf(this).font(); }
oaDist oaText::getHeight() const { return textOf(this).style.heightDbu; }
oaBoolean oaText::hasOverbar() const { return textOf(this).has(kTextOverbar); }
oaBoolean oaText::isVisible() const { return textOf(this).has(kTextVisible); }
oaBoolean oaText::isDrafting() const { return textOf(this).has(kTextDrafting); }

void oaText::setText(const oaString &text) {
  StyledShape at = textOf(this);
  at.design.texts.text.set(at.payload, at.design.strings().add(std::string_view(text, text.getLength())));
  at.design.noteAbandonedRows();
  at.store();
}

void oaText::setOrigin(const oaPoint &origin) {
  StyledShape at = textOf(this);
  at.style.origin = origin;
  at.store();
}

void oaText::setAlignment(oaTextAlign alignment) {
  StyledShape at = textOf(this);
  at.style.alignment = static_cast<std::uint8_t>(alignment);
  at.store();
}

void oaText::setOrient(oaOrient orient) {
  StyledShape at = textOf(this);
  at.style.orient = static_cast<std::uint8_t>(orient);
  at.store();
}

void oaText::setFont(oaFont font) {
  StyledShape at = textOf(this);
  at.style.font = static_cast<std::uint8_t>(font);
  at.store();
}

void oaText::setHeight(oaDist height) {
  StyledShape at = textOf(this);
  at.style.heightDbu = height;
  at.store();
}

void oaText::setOverbar(oaBoolean overbar) {
  StyledShape at = textOf(this);
  at.set(kTextOverbar, overbar);
  at.store();
}

void oaText::setVisible(oaBoolean visible) {
  StyledShape at = textOf(this);
  at.set(kTextVisible, visible);
  at.store();
}

void oaText::setDrafting(oaBoolean drafting) {
  StyledShape at = textOf(this);
  at.set(kTextDrafting, drafting);
  at.store();
}

} // namespace OpenAccess_4
