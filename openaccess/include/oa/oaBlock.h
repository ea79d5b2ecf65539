#ifndef OABLOCK_H
#define OABLOCK_H

#include "oa/oaDesignObject.h"

namespace OpenAccess_4 {

class oaBusNetDef;
class oaBusTermDef;
class oaInst;
class oaInstHeader;
class oaInstTerm;
class oaLayerHeader;
class oaLPPHeader;
class oaNet;
class oaPin;
class oaShape;
class oaTerm;
class oaVectorInstDef;
class oaVia;
class oaViaHeader;

// The contents of a design: figures and connectivity. A design has one block or none.
class oaBlock : public oaBlockObject {
public:
  // Raises oacTopBlockAlreadyExists.
  static oaBlock *create(const oaDesign *design, oaBoolean visibleToModule = true);
  // Everything in the block goes too.
  void destroy();

  // Of the technology, for the design's view type; its default when the library has no technology.
  oaUInt4 getDBUPerUU() const;
  oaUserUnitsType getUserUnits() const;
  // Union of all figures; inverted for an empty block.
  void getBBox(oaBox &bBox) const;
  oaBoolean isVisibleToModule() const;
  void setVisibleToModule();
  // Makes queries by region fast; nothing to do here.
  void initForRegionQuery();

  // Every shape, in creation order: shapes on nets and in pins and text displays included.
  oaCollection<oaShape, oaBlock> getShapes() const;
  oaCollection<oaLPPHeader, oaBlock> getLPPHeaders() const;
  oaCollection<oaLayerHeader, oaBlock> getLayerHeaders() const;

  // Connectivity. The flags are the oac...Iter constants; contradicting ones raise oacInvalidBlockNetIterFlags and
  // oacInvalidBlockTermIterFlags.

  // Whether there is any net, terminal or instance terminal.
  oaBoolean hasConnectivity() const;
  oaBoolean hasMultiBitNet() const;
  oaBoolean hasMultiBitTerm() const;
  oaBoolean hasGlobalNet() const;
  oaCollection<oaNet, oaBlock> getNets(oaUInt4 filterFlags = oacNetIterAll | oacNetIterNotImplicit) const;
  oaCollection<oaTerm, oaBlock> getTerms(oaUInt4 filterFlags = oacTermIterAllNotHidden | oacTermIterNotImplicit) const;
  oaCollection<oaPin, oaBlock> getPins() const;
  oaCollection<oaInst, oaBlock> getInsts(oaUInt4 filterFlags = oacInstIterNotImplicit) const;
  oaCollection<oaInstTerm, oaBlock> getInstTerms(oaUInt4 filterFlags = oacInstTermIterNotImplicit) const;
  oaCollection<oaInstHeader, oaBlock> getInstHeaders() const;
  oaCollection<oaVia, oaBlock> getVias() const;
  oaCollection<oaViaHeader, oaBlock> getViaHeaders() const;
  oaCollection<oaBusNetDef, oaBlock> getBusNetDefs() const;
  oaCollection<oaBusTermDef, oaBlock> getBusTermDefs() const;
  oaCollection<oaVectorInstDef, oaBlock> getVectorInstDefs() const;
};

} // namespace OpenAccess_4

#endif
