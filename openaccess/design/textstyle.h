#ifndef OAKIT_TEXTSTYLE_H
#define OAKIT_TEXTSTYLE_H

// What texts and text displays have in common.

#include "designdatabase.h"
#include "oa/oaFont.h"

#include <string_view>

namespace OpenAccess_4 {

class oaShape;

namespace kit {

// See oaFont::calcBBox().
oaBox textBox(std::string_view text, const oaPoint &origin, oaDist height, oaTextAlignEnum alignment,
              oaOrientEnum orient, bool hasOverbar);

TextStyle toTextStyle(const oaPoint &origin, oaTextAlignEnum alignment, oaOrientEnum orient, oaFontEnum font,
                      oaDist height, bool hasOverbar, bool isVisible, bool isDrafting);

// The text that a text, an evaluated text or a display (a row of the shape table) shows, with names in the native name
// space.
void shownText(DesignDatabase &design, Row shape, oaString &text);
// The box of that text.
oaBox shownTextBox(DesignDatabase &design, Row shape, const TextStyle &style);

// The text attributes of a shape. Raises oacInvalidReference when it is none of the kind asked for, and
// oacCorruptedDatabase when they are out of range.
class StyledShape {
public:
  enum class Kind { text, display };
  StyledShape(const oaShape *shape, Kind kind);

  oaTextAlignEnum alignment() const { return static_cast<oaTextAlignEnum>(style.alignment); }
  oaOrientEnum orient() const { return static_cast<oaOrientEnum>(style.orient); }
  oaFontEnum font() const { return static_cast<oaFontEnum>(style.font); }
  bool has(TextFlag flag) const { return (style.flags & flag) != 0; }
  void set(TextFlag flag, bool isSet) {
    style.flags = static_cast<std::uint8_t>(isSet ? style.flags | flag : style.flags & ~flag);
  }
  // Writes the style back, and the box that follows from it.
  void store();

  DesignDatabase &design;
  Row row;
  Row payload;
  TextStyle style;

private:
  Kind kind_;
};

// Raises oacCorruptedDatabase for attributes out of range.
void checkTextStyle(const Table &table, Row row, const TextStyle &style);

} // namespace kit
} // namespace OpenAccess_4

#endif
