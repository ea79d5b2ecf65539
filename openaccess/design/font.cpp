#include "oa/oaFont.h"

#include "textstyle.h"

namespace OpenAccess_4 {

void oaFont::calcBBox(const oaPoint &origin, const oaString &text, oaDist height, oaTextAlign textAlign,
                      oaOrient orient, oaBoolean hasOverbar, oaBox &bBox) {
  bBox = kit::textBox(std::string_view(text, text.getLength()), origin, height, textAlign, orient, hasOverbar);
}

void oaFont::calcBBox(const oaPoint &origin, const oaChar *text, oaDist height, oaTextAlign textAlign, oaOrient orient,
                      oaBoolean hasOverbar, oaBox &bBox) {
  bBox = kit::textBox(text == nullptr ? std::string_view() : std::string_view(text), origin, height, textAlign, orient,
                      hasOverbar);
}

} // namespace OpenAccess_4
