#ifndef OAFONT_H
#define OAFONT_H

#include "oa/oaDesignEnums.h"

namespace OpenAccess_4 {

enum oaFontEnum {
  oacEuroStyleFont = 0,
  oacGothicFont = 1,
  oacMathFont = 2,
  oacRomanFont = 3,
  oacScriptFont = 4,
  oacStickFont = 5,
  oacFixedFont = 6,
  oacSwedishFont = 7,
  oacMilSpecFont = 8
};
const oaEnumNames &oaEnumNamesOf(oaFontEnum);

// A font. The default is "stick".
class oaFont : public oaEnumWrapper<oaFontEnum> {
public:
  using oaEnumWrapper<oaFontEnum>::oaEnumWrapper;
  oaFont() : oaEnumWrapper<oaFontEnum>(oacStickFont) {}

  // The box of a text, the same for all fonts: each character is 0.6 of the height wide, a line break begins a further
  // line one height below, letters with descenders reach a quarter of the height below the base line, and an overbar
  // adds a tenth above. The origin is the alignment point; the box is turned about it.
  void calcBBox(const oaPoint &origin, const oaString &text, oaDist height, oaTextAlign textAlign, oaOrient orient,
                oaBoolean hasOverbar, oaBox &bBox);
  void calcBBox(const oaPoint &origin, const oaChar *text, oaDist height, oaTextAlign textAlign, oaOrient orient,
                oaBoolean hasOverbar, oaBox &bBox);
};

} // namespace OpenAccess_4

#endif
