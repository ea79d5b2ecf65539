#ifndef OATEXT_H
#define OATEXT_H

#include "oa/oaFont.h"
#include "oa/oaShape.h"

namespace OpenAccess_4 {

// A text as a shape. Nothing is checked: it may be empty, and its height 0. Its box follows oaFont::calcBBox(),
// invisible or not.
class oaText : public oaShape {
public:
  static oaText *create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaString &text,
                        const oaPoint &origin, oaTextAlign alignment, oaOrient orient, oaFont font, oaDist height,
                        oaBoolean overbar = false, oaBoolean visible = true, oaBoolean drafting = true);
  // The text that is shown: for an evaluated text, what its evaluator makes of the expression.
  void getText(oaString &text) const;
  void getOrigin(oaPoint &origin) const;
  oaTextAlign getAlignment() const;
  oaOrient getOrient() const;
  oaFont getFont() const;
  oaDist getHeight() const;
  oaBoolean hasOverbar() const;
  oaBoolean isVisible() const;
  oaBoolean isDrafting() const;
  void setText(const oaString &text);
  void setOrigin(const oaPoint &origin);
  void setAlignment(oaTextAlign alignment);
  void setOrient(oaOrient orient);
  void setFont(oaFont font);
  void setHeight(oaDist height);
  void setOverbar(oaBoolean overbar);
  void setVisible(oaBoolean visible);
  void setDrafting(oaBoolean drafting);
};

} // namespace OpenAccess_4

#endif
