#include "textstyle.h"

#include "oa/oaDesignDB.h"
#include "shapeaccess.h"
#include "textdisplay.h"

#include <algorithm>

namespace OpenAccess_4 {
namespace kit {

namespace {

struct TextExtent {
  std::int64_t widestLine = 0; // characters
  std::int64_t lines = 1;
  bool hasDescender = false;
};

TextExtent extentOf(std::string_view text) {
  TextExtent extent;
  std::int64_t line = 0;
  for (const char c : text) {
    if (c == '\n') {
      ++extent.lines;
      line = 0;
      continue;
    }
    const bool isContinued = (static_cast<unsigned char>(c) & 0xc0U) == 0x80U; // a further byte of a UTF-8 character
    line += isContinued ? 0 : 1;
    extent.widestLine = std::max(extent.widestLine, line);
    extent.hasDescender = extent.hasDescender || c == 'g' || c == 'j' || c == 'p' || c == 'q' || c == 'y';
  }
  return extent;
}

bool isTextKind(std::uint8_t kind) { return kind == oacTextType || kind == oacEvalTextType; }

} // namespace

oaBox textBox(std::string_view text, const oaPoint &origin, oaDist height, oaTextAlignEnum alignment,
              oaOrientEnum orient, bool hasOverbar) {
  const TextExtent extent = extentOf(text);
  const std::int64_t size = height;
  const std::int64_t width = (extent.widestLine * size * 6 + 5) / 10;
  const std::int64_t letters = extent.lines * size;
  const int column = alignment / 3, line = alignment % 3; // left, centre, right; upper, centre, lower
  const std::int64_t left = column == 0 ? 0 : column == 1 ? -(width / 2) : -width;
  const std::int64_t base = line == 2 ? 0 : line == 1 ? -(letters / 2) : -letters;
  const std::int64_t bottom = base - (extent.hasDescender ? (size + 2) / 4 : 0);
  const std::int64_t top = base + letters + (hasOverbar ? (size + 5) / 10 : 0);
  oaBox box = boxAround(oaPoint(0, 0), left, bottom, left + width, top);
  box.transform(oaTransform(oaPoint(0, 0), orient));
  return boxAround(origin, box.left(), box.bottom(), box.right(), box.top());
}

TextStyle toTextStyle(const oaPoint &origin, oaTextAlignEnum alignment, oaOrientEnum orient, oaFontEnum font,
                      oaDist height, bool hasOverbar, bool isVisible, bool isDrafting) {
  const int flags = (hasOverbar ? kTextOverbar : 0) | (isVisible ? kTextVisible : 0) | (isDrafting ? kTextDrafting : 0);
  return {origin,
          height,
          static_cast<std::uint8_t>(alignment),
          static_cast<std::uint8_t>(orient),
          static_cast<std::uint8_t>(font),
          static_cast<std::uint8_t>(flags)};
}

void shownText(DesignDatabase &design, Row shape, oaString &text) {
  const std::uint8_t kind = design.shapes.kindOf(shape);
  if (ShapeTable::isDisplayKind(kind)) {
    displayText(design, shape, oaNativeNS(), text);
    return;
  }
  const Row payload = checkedRow(design.texts, design.shapes.payload[shape], "a text");
  if (kind == oacEvalTextType && design.texts.evaluator[payload] != kNoRow) {
    oaString name, expression;
    design.strings().get(design.texts.evaluator[payload], name);
    if (const oaEvalTextLink *link = oaEvalTextLink::find(name)) {
      design.strings().get(design.texts.text[payload], expression);
      link->getIEvalText()->onEval(expression, text);
      return;
    }
  }
  design.strings().get(design.texts.text[payload], text);
}

oaBox shownTextBox(DesignDatabase &design, Row shape, const TextStyle &style) {
  oaString text;
  shownText(design, shape, text);
  return textBox(std::string_view(text, text.getLength()), style.origin, style.heightDbu,
                 static_cast<oaTextAlignEnum>(style.alignment), static_cast<oaOrientEnum>(style.orient),
                 (style.flags & kTextOverbar) != 0);
}

void checkTextStyle(const Table &table, Row row, const TextStyle &style) {
  checkedEnum<oaTextAlignEnum>(table, row, style.alignment, oacLowerRightTextAlign + 1, "the alignment");
  checkedEnum<oaOrientEnum>(table, row, style.orient, oacMXR90 + 1, "the orientation");
  checkedEnum<oaFontEnum>(table, row, style.font, oacMilSpecFont + 1, "the font");
}

StyledShape::StyledShape(const oaShape *shape, Kind kind)
    : design(designOf(shapesOf(shape))), row(rowOf(shape)), payload(design.shapes.payload[row]), style(), kind_(kind) {
  const std::uint8_t found = design.shapes.kindOf(row);
  if (kind == Kind::text ? !isTextKind(found) : !ShapeTable::isDisplayKind(found)) {
    raiseWrongShape(shape, kind == Kind::text ? oacTextType : oacPropDisplayType);
  }
  if (kind == Kind::text) {
    style = design.texts.style[checkedRow(design.texts, payload, "a text")];
    checkTextStyle(design.texts, payload, style);
  } else {
    style = design.textDisplays.style[checkedRow(design.textDisplays, payload, "a text display")];
    checkTextStyle(design.textDisplays, payload, style);
    checkedEnum<oaTextDisplayFormatEnum>(design.textDisplays, payload, design.textDisplays.format[payload],
                                         oacNameValueTextDisplayFormat + 1, "the format");
  }
}

void StyledShape::store() {
  if (kind_ == Kind::text) {
    design.texts.style.set(payload, style);
  } else {
    design.textDisplays.style.set(payload, style);
  }
  setShapeBox(design, row, shownTextBox(design, row, style));
}

} // namespace kit
} // namespace OpenAccess_4
