#include "stdviamaster.h"

#include "designaccess.h"
#include "diskname.h"
#include "geometry.h"
#include "library.h"
#include "oa/oaBlock.h"
#include "oa/oaDesign.h"
#include "oa/oaLayer.h"
#include "oa/oaNameSpaces.h"
#include "oa/oaRect.h"
#include "oa/oaScalarName.h"
#include "oa/oaTech.h"
#include "oa/oaViaDef.h"
#include "techdatabase.h"
#include "viavalues.h"

#include <limits>
#include <memory>
#include <unordered_map>

namespace OpenAccess_4 {
namespace kit {

namespace {

constexpr const char *kMasterView = "layout";
constexpr const char *kMasterFile = "layout.oa"; // never written; says that the view is a layout

std::unordered_map<std::string, DesignDatabase *> &openMasters() {
  // Never destroyed: designs that are open at the end of the process are dropped after it would be.
  static std::unordered_map<std::string, DesignDatabase *> &masters =
      *new std::unordered_map<std::string, DesignDatabase *>;
  return masters;
}

// The largest multiple of `step` that is not above `value`.
Wide roundedDown(Wide value, Wide step) {
  const Wide rest = value % step;
  return value - (rest < 0 ? rest + step : rest);
}

// A box that need not fit into coordinates.
struct WideBox {
  Wide left, bottom, right, top;

  WideBox enlarged(const oaVector &by) const { return {left - by.x(), bottom - by.y(), right + by.x(), top + by.y()}; }
  WideBox moved(const oaVector &by) const { return {left + by.x(), bottom + by.y(), right + by.x(), top + by.y()}; }
  bool hasArea() const { return left < right && bottom < top; }
  bool fits() const {
    constexpr Wide least = std::numeric_limits<oaCoord>::min();
    constexpr Wide most = std::numeric_limits<oaCoord>::max();
    return left >= least && bottom >= least && right <= most && top <= most;
  }
};

// All cuts together, without those that a pattern leaves out.
WideBox cutArray(const StdViaMaster &master) {
  const oaViaParam &params = master.params;
  const oaVector &spacing = params.getCutSpacing();
  const Wide columns = params.getCutColumns();
  const Wide rows = params.getCutRows();
  const Wide width = columns * params.getCutWidth() + (columns - 1) * spacing.x();
  const Wide height = rows * params.getCutHeight() + (rows - 1) * spacing.y();
  // Odd sizes: the lower left corner goes down, so that the size stays.
  Wide left = roundedDown(-width, 2) / 2 + params.getOriginOffset().x();
  Wide bottom = roundedDown(-height, 2) / 2 + params.getOriginOffset().y();
  if (master.gridDbu != 0 && columns * rows > 1) {
    left = roundedDown(left, master.gridDbu);
    bottom = roundedDown(bottom, master.gridDbu);
  }
  return {left, bottom, left + width, bottom + height};
}

class ViaDrawing {
public:
  ViaDrawing(DesignDatabase &design, const StdViaMaster &master)
      : design_(design), master_(master), block_(oaBlock::create(design.design())) {}

  void draw() {
    const oaViaParam &params = master_.params;
    const WideBox cuts = cutArray(master_);
    drawCuts(cuts);
    const WideBox layer1 = cuts.enlarged(params.getLayer1Enc()).moved(params.getLayer1Offset());
    const WideBox layer2 = cuts.enlarged(params.getLayer2Enc()).moved(params.getLayer2Offset());
    drawBox(master_.layer1, layer1);
    drawBox(master_.layer2, layer2);
    if (master_.hasImplant1) {
      drawBox(master_.implant1, layer1.enlarged(params.getImplant1Enc()));
    }
    if (master_.hasImplant2) {
      drawBox(master_.implant2, layer2.enlarged(params.getImplant2Enc()));
    }
  }

private:
  // What has no area is left out.
  void drawBox(oaLayerNum layer, const WideBox &box) {
    if (!box.hasArea()) {
      return;
    }
    if (!box.fits()) {
      raiseDesign(oacRectBBoxInvalid, design_.label() + ": the parameters make a rectangle on layer " +
                                          std::to_string(layer) + " beyond the range of coordinates");
    }
    oaRect::create(block_, layer, oavPurposeNumberDrawing,
                   oaBox(static_cast<oaCoord>(box.left), static_cast<oaCoord>(box.bottom),
                         static_cast<oaCoord>(box.right), static_cast<oaCoord>(box.top)));
  }

  // None as long as cut layer and cut size are not set.
  void drawCuts(const WideBox &array) {
    const oaViaParam &params = master_.params;
    const oaDist width = params.getCutWidth();
    const oaDist height = params.getCutHeight();
    if (width == 0 || height == 0 || params.getCutLayer() == oaViaParam().getCutLayer()) {
      return;
    }
    if (cutCount(params) > kMaxViaCuts) {
      raiseBase(oacNotYetSupported, design_.label() + ": the parameters make " + std::to_string(cutCount(params)) +
                                        " cuts, more than " + std::to_string(kMaxViaCuts));
    }
    for (oaUInt4 row = 0; row < params.getCutRows(); ++row) {
      for (oaUInt4 column = 0; column < params.getCutColumns(); ++column) {
        if (params.getCutPatternVal(row, column)) {
          const Wide left = array.left + column * (Wide(width) + params.getCutSpacing().x());
          const Wide bottom = array.bottom + row * (Wide(height) + params.getCutSpacing().y());
          drawBox(params.getCutLayer(), {left, bottom, left + width, bottom + height});
        }
      }
    }
  }

  DesignDatabase &design_;
  const StdViaMaster &master_;
  oaBlock *block_;
};

std::unique_ptr<StdViaMaster> masterFor(const oaStdViaDef *definition, const oaViaParam &params) {
  auto master = std::make_unique<StdViaMaster>();
  master->params = params;
  master->params.setAllNonDefault();
  master->layer1 = definition->getLayer1Num();
  master->layer2 = definition->getLayer2Num();
  master->hasImplant1 = definition->hasImplant1();
  master->hasImplant2 = definition->hasImplant2();
  master->implant1 = master->hasImplant1 ? definition->getImplant1Num() : 0;
  master->implant2 = master->hasImplant2 ? definition->getImplant2Num() : 0;
  oaTech *tech = TechDatabase::of(definition).object();
  const oaPhysicalLayer *cutLayer = oaPhysicalLayer::find(tech, params.getCutLayer());
  master->gridDbu = cutLayer != nullptr ? cutLayer->getManufacturingGrid() : tech->getDefaultManufacturingGrid();
  return master;
}

std::string keyOf(const StdViaMaster &master, const TechDatabase &tech, const std::string &name) {
  std::string key = tech.place().key() + '\0' + name + '\0';
  for (const oaUInt4 number : {master.layer1, master.layer2, oaUInt4(master.hasImplant1), master.implant1,
                               oaUInt4(master.hasImplant2), master.implant2, master.gridDbu}) {
    key += std::to_string(number) + ' ';
  }
  return key + viaParamKey(master.params);
}

} // namespace

StdViaMaster::~StdViaMaster() { openMasters().erase(key); }

oaDesign *openStdViaMaster(const oaStdViaDef *definition, const oaViaParam &params) {
  const TechDatabase &tech = TechDatabase::of(definition);
  oaString name;
  definition->getName(name);
  std::unique_ptr<StdViaMaster> master = masterFor(definition, params);
  std::string key = keyOf(*master, tech, std::string(name));
  const auto known = openMasters().find(key);
  if (known != openMasters().end()) {
    known->second->addReference();
    return known->second->design();
  }
  DatabasePlace place;
  place.libraryName = tech.place().libraryName;
  place.libraryPath = tech.place().libraryPath;
  place.fileName = kMasterFile;
  place.label = "master of via definition " + std::string(name) + " of the " + tech.label();
  auto design =
      std::make_unique<DesignDatabase>(std::move(place), diskName(oaScalarName(oaNativeNS(), name)), kMasterView);
  master->key = std::move(key);
  design->stdViaMaster = std::move(master);
  design->openScratch();
  openMasters().emplace(design->stdViaMaster->key, design.get());
  return DesignDatabase::registry().add(std::move(design)).design();
}

void drawStdVia(DesignDatabase &design, const StdViaMaster &master) { ViaDrawing(design, master).draw(); }

} // namespace kit

using namespace kit;

oaDesign *oaDesign::open(oaStdViaDef *viaDef, oaViaParam *params) {
  oaViaParam definition;
  viaDef->getParams(definition);
  return openStdViaMaster(viaDef, params == nullptr ? definition : effectiveViaParam(*params, definition));
}

oaBoolean oaDesign::isStdViaMaster() const { return designOf(this).stdViaMaster != nullptr; }

void oaDesign::getParams(oaViaParam &params) const {
  const DesignDatabase &design = designOf(this);
  if (design.stdViaMaster == nullptr) {
    raiseDesign(oacInvalidStdViaMaster, design.label() + ": is not the master of a standard via");
  }
  params = design.stdViaMaster->params;
}

} // namespace OpenAccess_4
