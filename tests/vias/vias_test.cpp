// Vias in a block: parameters, places, nets and pins, definitions that come, change and go.

#include "viatest.h"

using namespace viatest;
using testing::ElementsAre;

namespace {

class ViasOfBlock : public Vias {};

oaViaParam paramsOf(const oaStdVia *via) {
  oaViaParam params;
  via->getViaParams(params);
  return params;
}

std::string nameOf(const oaVia *via) {
  oaString name;
  via->getViaDefName(name);
  return std::string(name);
}

} // namespace

TEST_F(ViasOfBlock, ParametersAreOwnOrTheDefinitions) {
  oaStdViaDef *def = stdDef("v");
  const oaViaParam two = columns(2);
  oaStdVia *via = place(def, 0, 0, &two);
  EXPECT_EQ(paramsOf(via).getCutColumns(), 2u);
  EXPECT_FALSE(paramsOf(via).hasDefault(oacCutColumnsViaParamType));
  EXPECT_EQ(paramsOf(via).getCutWidth(), 100u);
  EXPECT_TRUE(paramsOf(via).hasDefault(oacCutSizeViaParamType));

  // Own values replace those that there were.
  oaViaParam wide;
  wide.setCutWidth(300);
  via->setViaParams(wide);
  EXPECT_EQ(paramsOf(via).getCutColumns(), 1u);
  EXPECT_TRUE(paramsOf(via).hasDefault(oacCutColumnsViaParamType));
  EXPECT_EQ(paramsOf(via).getCutWidth(), 300u);

  // What was read and is flagged as default is the definition's.
  oaViaParam all = paramsOf(via);
  all.setDefault(oacCutWidthViaParamType);
  via->setViaParams(all);
  oaViaParam changed = oneCut();
  changed.setCutWidth(110);
  changed.setCutRows(2);
  changed.setCutPatternVal(1, 0, false);
  def->setParams(changed);
  EXPECT_TRUE(paramsOf(via).isEqual(changed));
  EXPECT_EQ(boxOf(via), "-85 -100 85 100");
}

TEST_F(ViasOfBlock, CutPatternGoesWithRowsAndColumns) {
  oaViaParam grid = oneCut();
  grid.setCutRows(2);
  grid.setCutColumns(2);
  grid.setCutPatternVal(0, 1, false);
  oaStdViaDef *def = stdDef("v", grid);
  oaViaParam own;
  def->getParams(own);
  own.setCutPatternVal(0, 1, true);
  own.setCutPatternVal(1, 1, false);
  oaViaParam row;
  row.setCutRows(2);
  const struct {
    const char *name;
    const oaViaParam *params;
    bool cut01, cut11;
  } cases[] = {
      {"the definition's", NULL, false, true},
      {"other cuts left out", &own, true, false},
      {"own rows have no pattern", &row, true, true},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const oaViaParam params = paramsOf(place(def, 0, 0, c.params));
    EXPECT_EQ(params.getCutPatternVal(0, 1), c.cut01);
    EXPECT_EQ(params.getCutPatternVal(1, 1), c.cut11);
  }
  EXPECT_EQ(block_->getViaHeaders().getCount(), 4u);
  // A pattern that was made for other counts is out of date.
  grid.setCutColumns(3);
  def->setParams(grid);
  oaIter<oaVia> vias(block_->getVias());
  while (const oaVia *via = vias.getNext()) {
    EXPECT_TRUE(paramsOf(static_cast<const oaStdVia *>(via)).hasDefaultCutPattern());
  }
}

TEST_F(ViasOfBlock, BoxesFollowPlaceAndDefinition) {
  oaStdViaDef *def = stdDef("v");
  oaStdVia *via = oaStdVia::create(block_, def, oaTransform(1000, 2000, oacR90));
  EXPECT_EQ(boxOf(via), "940 1920 1060 2080");
  EXPECT_EQ(boxOf(block_), "940 1920 1060 2080");
  oaRect::create(block_, 1, 1, oaBox(0, 0, 10, 10));
  EXPECT_EQ(boxOf(block_), "0 0 1060 2080");
  via->setOrigin(oaPoint(0, 0));
  via->setOrient(oacMX);
  EXPECT_EQ(boxOf(block_), "-80 -60 80 60");
  via->move(oaTransform(5, 0, oacMYR90));
  oaTransform xform;
  via->getTransform(xform);
  EXPECT_EQ(xform, oaTransform(oaTransform(0, 0, oacMX), oaTransform(5, 0, oacMYR90)));

  oaViaParam larger = oneCut();
  larger.setLayer1Enc(oaVector(1000, 0));
  via->setTransform(oaTransform());
  EXPECT_EQ(boxOf(block_), "-80 -60 80 60");
  def->setParams(larger);
  EXPECT_EQ(boxOf(block_), "-1050 -45 1050 45");
  EXPECT_EQ(rectsOf(via->getMaster())[1], "31: -1050 -40 1050 40");
  const oaViaParam two = columns(2);
  via->setViaParams(two);
  EXPECT_EQ(boxOf(block_), "-1100 -45 1100 45");
  via->destroy();
  EXPECT_EQ(boxOf(block_), "0 0 10 10");
  EXPECT_EQ(idRaisedBy([&] { via->getHeader(); }), oacDeletedDatabase);
}

TEST_F(ViasOfBlock, BoxesAtAnyHeightFollowTheDefinition) {
  oaStdViaDef *def = stdDef("v");
  oaStdVia::create(block_, def, oaTransform());
  design_->save();
  oaDesign *middle = open("middle", 'w'), *top = open("top", 'w');
  TemporaryLibrary::place(oaBlock::create(middle), "cell", "I", oaTransform())->getMaster();
  middle->save();
  TemporaryLibrary::place(oaBlock::create(top), "middle", "I", oaTransform())->getMaster();
  EXPECT_EQ(boxOf(top->getTopBlock()), "-80 -60 80 60");
  oaViaParam larger = oneCut();
  larger.setLayer1Enc(oaVector(1000, 0));
  def->setParams(larger);
  EXPECT_EQ(boxOf(top->getTopBlock()), "-1050 -45 1050 45");
  top->purge();
  middle->purge();
}

TEST_F(ViasOfBlock, CopiesKeepParametersAndPurpose) {
  const oaViaParam two = columns(2);
  oaStdVia *via = place(stdDef("v"), 10, 20, &two);
  via->setPurposeNum(7);
  EXPECT_EQ(idRaisedBy([&] { via->setPurposeNum(oavPurposeNumberAny); }), oacInvalidPurposeNumber);
  auto *copy = static_cast<oaStdVia *>(via->copy(oaTransform(100, 0)));
  EXPECT_EQ(copy->getHeader(), via->getHeader());
  EXPECT_EQ(copy->getPurposeNum(), 7u);
  oaPoint origin;
  copy->getOrigin(origin);
  EXPECT_EQ(origin, oaPoint(110, 20));

  oaDesign *other = open("other", 'w');
  oaBlock *block = oaBlock::create(other);
  makeLeaf("drawn", oaBox(1, 2, 3, 4));
  const oaVia *custom = oaCustomVia::create(block_, customDef("c", "drawn"), oaTransform());
  const auto *moved = static_cast<const oaStdVia *>(via->move(oaTransform(), block));
  EXPECT_FALSE(via->isValid());
  EXPECT_EQ(paramsOf(moved).getCutColumns(), 2u);
  EXPECT_EQ(boxOf(static_cast<const oaCustomVia *>(custom->copy(oaTransform(5, 5), block))), "6 7 8 9");
  EXPECT_EQ(block->getVias().getCount(), 2u);
  other->purge();
}

TEST_F(ViasOfBlock, BelongToNetsOfOneBitOrToPins) {
  oaStdViaDef *def = stdDef("v");
  oaStdVia *via = place(def, 0, 0);
  oaStdVia *pinned = place(def, 1, 0);
  oaScalarNet *net = oaScalarNet::create(block_, scalar("n"));
  oaNet *bus = oaNet::create(block_, oaName(oaNativeNS(), "b[0:3]"));
  oaPin *pin = oaPin::create(oaScalarTerm::create(net, scalar("t")));
  EXPECT_EQ(idRaisedBy([&] { via->addToNet(bus); }), 1424u);
  EXPECT_EQ(idRaisedBy([&] { via->addToNet(bus->getBit(0)); }), oacCannotAddFigToImplicitNet);
  EXPECT_FALSE(via->hasNet());
  via->addToNet(net);
  pinned->addToPin(pin);
  EXPECT_EQ(idRaisedBy([&] { via->addToPin(pin); }), oacCannotAddNetFigToPin);
  EXPECT_EQ(idRaisedBy([&] { pinned->addToNet(net); }), oacCannotAddPinFigToNet);

  reread();
  oaIter<oaVia> vias(block_->getVias());
  oaVia *onNet = vias.getNext();
  oaVia *inPin = vias.getNext();
  net = oaScalarNet::find(block_, scalar("n"));
  EXPECT_EQ(onNet->getNet(), net);
  EXPECT_EQ(oaIter<oaVia>(net->getVias()).getNext(), onNet);
  EXPECT_EQ(net->getVias().getCount(), 1u);
  EXPECT_EQ(net->getVias(oacViaIterNetPins).getCount(), 2u);
  EXPECT_EQ(oaIter<oaPinFig>(inPin->getPin()->getFigs()).getNext(), inPin);
  EXPECT_EQ(net->getShapes().getCount(), 0u);
  onNet->removeFromNet();
  EXPECT_EQ(net->getVias().getCount(), 0u);
  onNet->addToNet(net);
  net->destroy();
  EXPECT_FALSE(onNet->hasNet() || inPin->hasPin());
}

TEST_F(ViasOfBlock, SurviveSaving) {
  makeLeaf("drawn", oaBox(1, 2, 3, 4));
  const oaViaParam two = columns(2);
  oaViaParam pattern = columns(3);
  pattern.setCutPatternVal(0, 1, false);
  oaStdViaDef *def = stdDef("v");
  oaStdVia *first = place(def, 1, 2, &pattern);
  place(def, 10, 20, &two);
  place(def, 100, 200, &two)->setPurposeNum(9);
  oaCustomVia::create(block_, customDef("c", "drawn"), oaTransform(7, 8, oacR180));
  first->destroy(); // its header and parameters are left out, what follows gets other rows
  place(def, 1000, 2000, &pattern);
  reread();
  Lines lines;
  oaIter<oaVia> vias(block_->getVias());
  while (oaVia *via = vias.getNext()) {
    std::string line = nameOf(via) + ": " + boxOf(via) + ", " + std::to_string(oaInt4(via->getPurposeNum()));
    if (via->getType() == oacStdViaType) {
      line += ", " + std::to_string(paramsOf(static_cast<oaStdVia *>(via)).getCutColumns()) + " columns";
      line += paramsOf(static_cast<oaStdVia *>(via)).hasDefaultCutPattern() ? "" : " with gaps";
    }
    lines.push_back(line);
  }
  EXPECT_THAT(lines, ElementsAre("v: -120 -40 140 80, -1, 2 columns", "v: -30 140 230 260, 9, 2 columns",
                                 "c: 4 4 6 6, -1", "v: 820 1940 1180 2060, -1, 3 columns with gaps"));
  EXPECT_THAT(headers(), ElementsAre("v/super(0)", "v/sub(2)", "c(1)", "v/sub(1)"));
}

TEST_F(ViasOfBlock, KeepNameAndBoxWithoutTheirDefinition) {
  makeLeaf("drawn", oaBox(1, 2, 3, 4));
  oaStdViaDef *def = stdDef("v");
  place(def, 0, 0);
  oaCustomVia::create(block_, customDef("c", "drawn"), oaTransform());
  reread();
  oaIter<oaVia> vias(block_->getVias());
  const auto *via = static_cast<const oaStdVia *>(vias.getNext());
  const auto *custom = static_cast<const oaCustomVia *>(vias.getNext());
  EXPECT_EQ(via->getViaDef(), def);
  EXPECT_TRUE(via->isBound() && custom->isBound());
  def->destroy();
  oaViaDef::find(tech_, "c")->destroy();
  EXPECT_EQ(via->getViaDef(), nullptr);
  EXPECT_EQ(nameOf(via), "v");
  EXPECT_FALSE(via->isBound() || custom->isBound());
  EXPECT_EQ(via->getMaster(), nullptr);
  EXPECT_TRUE(paramsOf(via) == oaViaParam());
  EXPECT_EQ(boxOf(via), "-80 -60 80 60");
  EXPECT_EQ(boxOf(block_), "-80 -60 80 60");
  oaString cell;
  custom->getCellName(oaNativeNS(), cell);
  EXPECT_EQ(std::string(cell), "drawn");
  EXPECT_EQ(boxOf(custom), "1 2 3 4");

  // The names are taken, each by vias of its kind.
  EXPECT_EQ(idRaisedBy([&] { place(stdDef("c"), 0, 0); }), oacStdViaDefSameNameAsCustomViaDef);
  oaCustomViaDef *other = customDef("v", "drawn");
  EXPECT_EQ(idRaisedBy([&] { oaCustomVia::create(block_, other, oaTransform()); }), oacCustomViaDefSameNameAsStdViaDef);
  EXPECT_EQ(via->getViaDef(), nullptr) << "a definition of the other kind is not meant";
  other->destroy();
  oaStdViaDef *back = stdDef("v", columns(2));
  EXPECT_EQ(via->getViaDef(), back);
  EXPECT_EQ(paramsOf(via).getCutColumns(), 2u);
}

TEST_F(ViasOfBlock, NeedADefinitionOfTheirTechnology) {
  oaTech *foreign = oaTech::create(oaLib::create(scalar(libName() + "x"), (libPath() + "x").c_str()));
  oaPhysicalLayer *layer = oaPhysicalLayer::create(foreign, "m", 1, oacMetalMaterial);
  const oaStdViaDef *def = oaStdViaDef::create(foreign, "v", layer, layer, oneCut());
  const oaCustomViaDef *custom =
      oaCustomViaDef::create(foreign, "c", scalar("l"), scalar("c"), scalar("v"), layer, layer);
  EXPECT_EQ(idRaisedBy([&] { place(def, 0, 0); }), oacViaDefNotInTechAssociatedWithDesign);
  EXPECT_EQ(idRaisedBy([&] { oaCustomVia::create(block_, custom, oaTransform()); }),
            oacViaDefNotInTechAssociatedWithDesign);
  stdDef("v");
  EXPECT_EQ(idRaisedBy([&] { place(def, 0, 0); }), oacViaDefNotInTechAssociatedWithDesign) << "an equal name";
  EXPECT_EQ(block_->getViaHeaders().getCount(), 0u);
  oaLib *lib = foreign->getLib();
  foreign->purge();
  lib->close();
}

TEST_F(ViasOfBlock, CustomViasPlaceTheirMaster) {
  oaCustomViaDef *def = customDef("c", "drawn");
  oaCustomVia *via = oaCustomVia::create(block_, def, oaTransform(100, 0));
  EXPECT_FALSE(via->isBound()) << "there is no such cell yet";
  makeLeaf("drawn", oaBox(1, 2, 3, 4));
  EXPECT_EQ(boxOf(via), "101 2 103 4");
  oaDesign *master = via->getMaster();
  EXPECT_EQ(master, oaDesign::find(scalar(libName()), scalar("drawn"), scalar("layout")));
  EXPECT_EQ(master->getRefCount(), 1u);

  oaParamArray params;
  via->getParams(params);
  EXPECT_EQ(params.getNumElements(), 0u);
  via->setParams(params);
  params.append(oaParam("w", oaInt4(1)));
  EXPECT_EQ(idRaisedBy([&] { via->setParams(params); }), oacParamsSuppliedForNonPCellViaMaster);
  EXPECT_EQ(idRaisedBy([&] { oaCustomVia::create(block_, def, oaTransform(), &params); }),
            oacParamsSuppliedForNonPCellViaMaster);

  makeLeaf("next", oaBox(0, 0, 1, 1));
  def->setMaster(scalar(libName()), scalar("next"), scalar("layout"));
  oaString cell;
  via->getHeader()->getCellName(oaNativeNS(), cell);
  EXPECT_EQ(std::string(cell), "next");
  EXPECT_EQ(boxOf(via), "100 0 101 1");
  EXPECT_FALSE(master->isValid()) << "nobody uses it any more";

  // A design cannot contain itself.
  def->setMaster(scalar(libName()), scalar("cell"), scalar("layout"));
  design_->save();
  EXPECT_EQ(via->getMaster(), nullptr);
  EXPECT_FALSE(design_->hasRecursion());
}
