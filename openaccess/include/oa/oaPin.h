#ifndef OAPIN_H
#define OAPIN_H

#include "oa/oaTerm.h"

namespace OpenAccess_4 {

class oaPinFig;

// A place at which a terminal can be reached, made of figures. Its figures outlive it.
class oaPin : public oaBlockObject {
public:
  void destroy();
  oaTerm *getTerm() const;
  void getName(oaString &name) const;
  // A union of oacTop, oacBottom, oacLeft and oacRight.
  oaUInt4 getAccessDir() const;
  oaPlacementStatus getPlacementStatus() const;
  oaPinType getPinType() const;
  // A name that is in use there is replaced by an automatic one.
  void setTerm(oaTerm *term);
  // Raises oacPinExists.
  void setName(const oaString &name);
  void setAccessDir(oaUInt4 accessDir);
  void setPlacementStatus(oaPlacementStatus status);
  void setPinType(oaPinType pinType);
  oaCollection<oaPinFig, oaPin> getFigs() const;

  // Under an automatic name: P__ and a number. Both forms raise oacTermCannotBeImplicit.
  static oaPin *create(oaTerm *term, oaUInt4 accessDir = oacNone);
  // Names are unique on the terminal: oacPinExists.
  static oaPin *create(oaTerm *term, const oaString &name, oaUInt4 accessDir = oacNone);
  // Without this a plain 0 could be taken for a NULL text.
  static oaPin *create(oaTerm *term, int accessDir) { return create(term, static_cast<oaUInt4>(accessDir)); }
  static oaPin *find(const oaTerm *term, const oaString &name);
};

} // namespace OpenAccess_4

#endif
