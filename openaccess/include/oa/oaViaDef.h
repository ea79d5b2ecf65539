#ifndef OAVIADEF_H
#define OAVIADEF_H

#include "oa/oaTechObject.h"
#include "oa/oaViaParam.h"

namespace OpenAccess_4 {

class oaNameSpace;
class oaPhysicalLayer;
class oaScalarName;
class oaString;

// How to connect two layers. Names are unique over both kinds.
class oaViaDef : public oaTechObject {
public:
  void destroy();
  void getName(oaString &name) const;
  // NULL when there is no layer of that number any more. Layer 1 is meant to be the lower one.
  void getLayers(oaPhysicalLayer *&layer1, oaPhysicalLayer *&layer2) const;
  oaPhysicalLayer *getLayer1() const;
  oaPhysicalLayer *getLayer2() const;
  oaLayerNum getLayer1Num() const;
  oaLayerNum getLayer2Num() const;
  // Ohms.
  oaFloat getResistancePerCut() const;
  void setResistancePerCut(oaFloat resPerCut);

  // NULL when there is none.
  static oaViaDef *find(const oaTech *tech, const oaString &name);
  static oaViaDef *find(const oaTech *tech, const oaString &name, oaBoolean local);
};

// A via that is computed from parameters.
class oaStdViaDef : public oaViaDef {
public:
  // Every default flag is set.
  void getParams(oaViaParam &params) const;
  void setParams(const oaViaParam &params);
  oaBoolean hasImplant1() const;
  oaBoolean hasImplant2() const;
  oaPhysicalLayer *getImplant1() const;
  oaPhysicalLayer *getImplant2() const;
  // Raise oacStdViaDefDoesNotHaveImplant1 and oacStdViaDefDoesNotHaveImplant2.
  oaLayerNum getImplant1Num() const;
  oaLayerNum getImplant2Num() const;

  // Raises oacViaDefExists.
  static oaStdViaDef *create(oaTech *tech, const oaString &name, oaPhysicalLayer *layer1, oaPhysicalLayer *layer2,
                             const oaViaParam &params, oaPhysicalLayer *implant1 = NULL,
                             oaPhysicalLayer *implant2 = NULL);
};

// A via that is drawn in a cell view.
class oaCustomViaDef : public oaViaDef {
public:
  void getLibName(oaScalarName &libName) const;
  void getCellName(oaScalarName &cellName) const;
  void getViewName(oaScalarName &viewName) const;
  void getLibName(const oaNameSpace &ns, oaString &out) const;
  void getCellName(const oaNameSpace &ns, oaString &out) const;
  void getViewName(const oaNameSpace &ns, oaString &out) const;
  void setMaster(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName);

  // The cell view need not exist. Raises oacViaDefExists.
  static oaCustomViaDef *create(oaTech *tech, const oaString &name, const oaScalarName &libName,
                                const oaScalarName &cellName, const oaScalarName &viewName, oaPhysicalLayer *layer1,
                                oaPhysicalLayer *layer2);
};

} // namespace OpenAccess_4

#endif
