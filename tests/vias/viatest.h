#ifndef VIATEST_H
#define VIATEST_H

#include "temporarylibrary.h"

#include <gmock/gmock.h>
#include <vector>

namespace viatest {

using namespace oa;
using connectivitytest::idRaisedBy;
using connectivitytest::TemporaryLibrary;
using Lines = std::vector<std::string>;

inline std::string textOf(const oaBox &box) {
  if (box.isInverted()) {
    return "none";
  }
  return std::to_string(box.left()) + " " + std::to_string(box.bottom()) + " " + std::to_string(box.right()) + " " +
         std::to_string(box.top());
}

// "31: -60 -60 60 60" for each rectangle.
inline Lines rectsOf(const oaDesign *design) {
  Lines lines;
  oaIter<oaShape> shapes(design->getTopBlock()->getShapes());
  while (oaShape *shape = shapes.getNext()) {
    oaBox box;
    shape->getBBox(box);
    EXPECT_EQ(shape->getType(), oacRectType);
    EXPECT_EQ(shape->getPurposeNum(), oavPurposeNumberDrawing);
    lines.push_back(std::to_string(shape->getLayerNum()) + ": " + textOf(box));
  }
  return lines;
}

template <typename Figure> std::string boxOf(const Figure *figure) {
  oaBox box;
  figure->getBBox(box);
  return textOf(box);
}

// A technology with the layers cut (30), m1 (31), m2 (32) and two implants (5, 6), and a design.
class Vias : public TemporaryLibrary {
protected:
  Vias() {
    tech_ = oaTech::create(scalar(libName()));
    cut_ = oaPhysicalLayer::create(tech_, "cut", 30, oacCutMaterial);
    m1_ = oaPhysicalLayer::create(tech_, "m1", 31, oacMetalMaterial);
    m2_ = oaPhysicalLayer::create(tech_, "m2", 32, oacMetalMaterial);
    nplus_ = oaPhysicalLayer::create(tech_, "nplus", 5, oacNImplantMaterial);
    pplus_ = oaPhysicalLayer::create(tech_, "pplus", 6, oacPImplantMaterial);
    design_ = open("cell", 'w');
    block_ = oaBlock::create(design_);
  }
  ~Vias() override {
    if (design_->isValid()) {
      design_->purge();
    }
    if (tech_->isValid()) {
      tech_->purge();
    }
  }

  // One cut of 100 by 80, with enclosures of 10/20 and 30/5.
  static oaViaParam oneCut() {
    oaViaParam params;
    params.setCutLayer(30);
    params.setCutWidth(100);
    params.setCutHeight(80);
    params.setLayer1Enc(oaVector(10, 20));
    params.setLayer2Enc(oaVector(30, 5));
    return params;
  }
  static oaViaParam columns(oaUInt4 count) {
    oaViaParam params;
    params.setCutColumns(count);
    return params;
  }
  oaStdViaDef *stdDef(const char *name, const oaViaParam &params = oneCut()) {
    return oaStdViaDef::create(tech_, name, m1_, m2_, params);
  }
  oaCustomViaDef *customDef(const char *name, const std::string &cell) {
    return oaCustomViaDef::create(tech_, name, scalar(libName()), scalar(cell), scalar("layout"), m1_, m2_);
  }
  oaStdVia *place(const oaStdViaDef *def, int x, int y, const oaViaParam *params = NULL) {
    return oaStdVia::create(block_, def, oaTransform(x, y), params);
  }
  std::string libPath() const {
    oaString path;
    design_->getLib()->getFullPath(path);
    return std::string(path);
  }
  void reread(char mode = 'a') {
    design_->save();
    design_->close();
    design_ = open("cell", mode);
    block_ = design_->getTopBlock();
  }
  oaVia *firstVia() const { return oaIter<oaVia>(block_->getVias()).getNext(); }
  // "std(3) std/sub(2)": definition, / for sub headers, number of vias.
  Lines headers() const {
    Lines lines;
    oaIter<oaViaHeader> all(block_->getViaHeaders());
    while (oaViaHeader *header = all.getNext()) {
      oaString name;
      header->getViaDefName(name);
      const char *kind = header->isSubHeader() ? "/sub" : header->isSuperHeader() ? "/super" : "";
      lines.push_back(std::string(name) + kind + "(" + std::to_string(header->getVias().getCount()) + ")");
    }
    return lines;
  }

  oaTech *tech_;
  oaPhysicalLayer *cut_, *m1_, *m2_, *nplus_, *pplus_;
  oaDesign *design_;
  oaBlock *block_;
};

} // namespace viatest

#endif
