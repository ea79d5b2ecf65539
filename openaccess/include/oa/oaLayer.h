#ifndef OALAYER_H
#define OALAYER_H

#include "oa/oaTechObject.h"

namespace OpenAccess_4 {

class oaString;

// A layer of a technology: a name and a number, each used once. Finds give NULL when there is none; with `local` set
// they leave out the technologies that this one refers to.
class oaLayer : public oaTechObject {
public:
  // Destroys the derived layers and via definitions that use the layer, too.
  void destroy();
  oaLayerNum getNumber() const;
  void getName(oaString &name) const;
  // Raises oacLayerNumberExists. Derived layers and via definitions that use the layer by its old number are destroyed.
  void setNumber(oaLayerNum number);
  // Raises oacLayerNameExists.
  void setName(const oaString &name);

  static oaLayer *find(const oaTech *tech, const oaString &name);
  static oaLayer *find(const oaTech *tech, oaLayerNum number);
  static oaLayer *find(const oaTech *tech, const oaString &name, oaBoolean local);
  static oaLayer *find(const oaTech *tech, oaLayerNum number, oaBoolean local);
};

class oaPhysicalLayer : public oaLayer {
public:
  oaMaterial getMaterial() const;
  oaPrefRoutingDir getPrefRoutingDir() const;
  // The place of the layer in the mask order, from the bottom up; oacUnsetMaskNumber when it has none.
  oaUInt4 getMaskNumber() const;
  // Database units; the technology's default when not set.
  oaDist getManufacturingGrid() const;
  // The layer of that material with the next higher or lower mask number, or NULL.
  oaPhysicalLayer *getLayerAbove(oaMaterial material) const;
  oaPhysicalLayer *getLayerBelow(oaMaterial material) const;
  void setMaterial(oaMaterial material);
  void setPrefRoutingDir(oaPrefRoutingDir dir);
  void setMaskNumber(oaUInt4 number);
  void setManufacturingGrid(oaDist grid);
  void resetManufacturingGrid();

  // Raises oacLayerNameExists or oacLayerNumberExists.
  static oaPhysicalLayer *create(oaTech *tech, const oaString &name, oaLayerNum number,
                                 oaMaterial material = oacOtherMaterial, oaUInt4 maskNumber = oacUnsetMaskNumber);
  static oaPhysicalLayer *find(const oaTech *tech, const oaString &name);
  static oaPhysicalLayer *find(const oaTech *tech, oaLayerNum number);
  static oaPhysicalLayer *find(const oaTech *tech, const oaString &name, oaBoolean local);
  static oaPhysicalLayer *find(const oaTech *tech, oaLayerNum number, oaBoolean local);
};

// A layer that is computed from two others.
class oaDerivedLayer : public oaLayer {
public:
  // NULL when there is no such layer any more.
  oaLayer *getLayer1() const;
  oaLayer *getLayer2() const;
  oaLayerNum getLayer1Num() const;
  oaLayerNum getLayer2Num() const;
  oaLayerOp getOperation() const;

  static oaDerivedLayer *create(oaLayer *layer1, oaLayer *layer2, oaLayerOp operation, const oaString &name,
                                oaLayerNum number);
  static oaDerivedLayer *create(oaTech *tech, oaLayer *layer1, oaLayer *layer2, oaLayerOp operation,
                                const oaString &name, oaLayerNum number);
  static oaDerivedLayer *find(const oaTech *tech, const oaString &name);
  static oaDerivedLayer *find(const oaTech *tech, const oaString &name, oaBoolean local);
  static oaDerivedLayer *find(const oaTech *tech, oaLayerNum number);
  static oaDerivedLayer *find(const oaTech *tech, oaLayerNum number, oaBoolean local);
  static oaDerivedLayer *find(const oaLayer *layer1, const oaLayer *layer2, oaLayerOp operation);
};

} // namespace OpenAccess_4

#endif
