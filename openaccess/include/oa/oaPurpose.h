#ifndef OAPURPOSE_H
#define OAPURPOSE_H

#include "oa/oaTechObject.h"

namespace OpenAccess_4 {

class oaString;

// What shapes on a layer are for. The reserved purposes are part of every technology and cannot be changed
// (oacCannotChangeReservedPurpose, oacCannotDestroyReservedPurpose).
class oaPurpose : public oaTechObject {
public:
  void destroy();
  oaPurposeNum getNumber() const;
  void getName(oaString &name) const;
  // Drawing for every purpose that is not reserved.
  oaPurposeType getPurposeType() const;
  oaBoolean isReserved() const;
  // Raises oacPurposeNumberExists or oacPurposeNumberIsReserved.
  void setNumber(oaPurposeNum number);
  // Raises oacPurposeNameExists.
  void setName(const oaString &name);

  static oaPurpose *create(oaTech *tech, const oaString &name, oaPurposeNum number);
  // NULL when there is none.
  static oaPurpose *find(const oaTech *tech, const oaString &name);
  static oaPurpose *find(const oaTech *tech, oaPurposeNum number);
  static oaPurpose *find(const oaTech *tech, const oaString &name, oaBoolean local);
  static oaPurpose *find(const oaTech *tech, oaPurposeNum number, oaBoolean local);
  // The reserved purpose of that type.
  static oaPurpose *get(oaTech *tech, oaPurposeType type);
};

} // namespace OpenAccess_4

#endif
