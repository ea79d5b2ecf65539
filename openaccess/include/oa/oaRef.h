#ifndef OAREF_H
#define OAREF_H

#include "oa/oaDesign.h"
#include "oa/oaFig.h"

namespace OpenAccess_4 {

class oaRefHeader;

// The placement of a master: an instance or a via. The orientation is applied first, then the origin is added.
class oaRef : public oaPinFig {
public:
  oaRefHeader *getHeader() const;
  // Opens the master for reading when it is not bound yet, and keeps it bound as long as the design is open. NULL when
  // it cannot be found or opened, or when it would contain itself.
  oaDesign *getMaster() const;
  void getOrigin(oaPoint &origin) const;
  oaOrient getOrient() const;
  void getTransform(oaTransform &xform) const;
  oaBoolean isBound() const;
  void setOrigin(const oaPoint &origin);
  void setOrient(oaOrient orient);
  void setTransform(const oaTransform &xform);
};

// What all placements of one master have in common.
class oaRefHeader : public oaBlockObject {
public:
  oaDesign *getMaster() const;
  // Box of the master's block; what was stored at the last save while the master is not bound; inverted when unknown.
  void getMasterBBox(oaBox &bBox) const;
  // Union of the boxes of all placements.
  void getBBox(oaBox &bBox) const;
  // Of a sub header, see oaViaHeader; NULL for others.
  oaRefHeader *getSuperHeader() const;
  oaBoolean isBound() const;
  oaBoolean isSuperHeader() const;
  oaBoolean isSubHeader() const;
};

} // namespace OpenAccess_4

#endif
