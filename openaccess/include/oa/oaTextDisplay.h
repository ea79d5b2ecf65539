#ifndef OATEXTDISPLAY_H
#define OATEXTDISPLAY_H

#include "oa/oaFont.h"
#include "oa/oaShape.h"

namespace OpenAccess_4 {

class oaTextDisplay;

// The displays that show an object.
class oaTextDisplayCollection : public oaBaseCollection {
public:
  oaTextDisplayCollection(const oaObject *object); // NOLINT(google-explicit-constructor)

private:
  friend class kit::CollectionAccess;
  explicit oaTextDisplayCollection(const oaBaseCollection &base) : oaBaseCollection(base) {}
};

class oaTextDisplayIter : public oaIter<oaTextDisplay> {
public:
  using oaIter<oaTextDisplay>::oaIter;
};

// A shape that shows a property or an attribute of another object and dies with it. Its text, and with it its box,
// follows the object.
class oaTextDisplay : public oaShape {
public:
  // The displays of an object; for an instance also those that show something of its master.
  static oaTextDisplayCollection getTextDisplays(const oaObject *object);

  // By format: the name, the value, or "name=value".
  void getText(oaString &text) const;
  void getOrigin(oaPoint &origin) const;
  oaTextAlign getAlignment() const;
  oaOrient getOrient() const;
  oaFont getFont() const;
  oaDist getHeight() const;
  oaTextDisplayFormat getFormat() const;
  oaBoolean hasOverbar() const;
  oaBoolean isVisible() const;
  oaBoolean isDrafting() const;
  void setOrigin(const oaPoint &origin);
  void setAlignment(oaTextAlign alignment);
  void setOrient(oaOrient orient);
  void setFont(oaFont font);
  void setHeight(oaDist height);
  void setFormat(oaTextDisplayFormat format);
  void setOverbar(oaBoolean overbar);
  void setVisible(oaBoolean visible);
  void setDrafting(oaBoolean drafting);
};

} // namespace OpenAccess_4

#endif
