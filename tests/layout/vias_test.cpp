// Vias as references: read from designs, written from what was read.

#include "layouttest.h"
#include "viaparameters.h"

#include <algorithm>

using namespace oa;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

const Lines kReferences{"addCellRef", "addCellRefArray"};

class ViasTest : public LayoutTest {
protected:
  // Layers 31 and 32, the standard definition "V" with one cut of 100 by 80 on layer 30, and the custom one "C".
  ViasTest() {
    tech = oaTech::create(scalar("lib"));
    oaPhysicalLayer *m1 = oaPhysicalLayer::create(tech, "m1", 31, oacMetalMaterial);
    oaPhysicalLayer *m2 = oaPhysicalLayer::create(tech, "m2", 32, oacMetalMaterial);
    oaViaParam params;
    params.setCutLayer(30);
    params.setCutWidth(100);
    params.setCutHeight(80);
    params.setLayer1Enc(oaVector(10, 20));
    params.setLayer2Enc(oaVector(30, 5));
    stdDef = oaStdViaDef::create(tech, "V", m1, m2, params);
    custom = oaCustomViaDef::create(tech, "C", scalar("lib"), scalar("drawn"), scalar("layout"), m1, m2);
    tech->save();
  }
  ~ViasTest() override {
    if (oaTech *open = oaTech::find(scalar("lib"))) {
      open->purge();
    }
    oaTech::destroy(scalar("lib"));
  }

  // The list that the reader sends for a via of "V" with these values.
  static QStringList listOf(const oaStdVia *via) {
    oaViaParam params;
    via->getViaParams(params);
    const oaViaDef *def = via->getViaDef();
    oaString name;
    def->getName(name);
    return oaConvert::toViaParameterList(params, oaConvert::toString(name), def->getLayer1Num(), def->getLayer2Num());
  }

  void save(const QStringList &list, const QPoint &origin, const QString &trans,
            const QStringList &nets = QStringList()) {
    QStringList names;
    QStringList values;
    for (int i = 0; i + 1 < list.size(); i += 2) {
      names << list.at(i);
      values << list.at(i + 1);
    }
    plugIn.saveCellref("lib", "drawn", "layout", origin, trans, "any", names, values, {}, nets);
  }

  // The hashes in the names of cells, by which variants are told apart, as "~1", "~2" in the order of appearance.
  static Lines withNumberedHashes(Lines lines) {
    Lines hashes;
    for (std::string &line : lines) {
      const std::size_t at = line.find('~');
      if (at != std::string::npos) {
        const std::string hash = line.substr(at + 1, 32);
        const auto known = std::find(hashes.begin(), hashes.end(), hash);
        const auto number = known - hashes.begin() + 1;
        if (known == hashes.end()) {
          hashes.push_back(hash);
        }
        line.replace(at + 1, 32, std::to_string(number));
      }
    }
    return lines;
  }

  oaTech *tech;
  oaStdViaDef *stdDef;
  oaCustomViaDef *custom;
};

TEST_F(ViasTest, MastersAreSentOnceAndViasAsReferences) {
  { CellBuilder(std::string("lib"), "drawn").rect(31, 0, 1, 2, 3, 4); }
  {
    const CellBuilder top("lib", "top");
    oaViaParam wide;
    wide.setCutColumns(2);
    wide.setCutSpacing(oaVector(40, 0));
    oaStdVia::create(*top, stdDef, oaTransform(1000, 0));
    oaStdVia::create(*top, stdDef, oaTransform(2000, 0, oacR90), &wide);
    oaStdVia::create(*top, stdDef, oaTransform(3000, 0, oacMX));
    oaCustomVia::create(*top, custom, oaTransform(0, 500));
  }
  EXPECT_THAT(withNumberedHashes(read("top", Lines{"addCell", "addBox", "addCellRef", "endCell", "reportError"})),
              ElementsAre("addCell \"top\"",                                                              //
                          "addCell \"V~1\"", "addBox -50 -40 100 80 30 0", "addBox -60 -60 120 120 31 0", //
                          "addBox -80 -45 160 90 32 0", "endCell",                                        //
                          "addCellRef \"V~1\" (1000 0) \"\" \"V\"",                                       //
                          "addCell \"V~2\"", "addBox -120 -40 100 80 30 0", "addBox 20 -40 100 80 30 0",  //
                          "addBox -130 -60 260 120 31 0", "addBox -150 -45 300 90 32 0", "endCell",       //
                          "addCellRef \"V~2\" (2000 0) \"R270\" \"V\"",                                   //
                          "addCellRef \"V~1\" (3000 0) \"M\" \"V\"",                                      //
                          "addCell \"drawn~3\"", "addBox 1 2 2 2 31 0", "endCell",                        //
                          "addCellRef \"drawn~3\" (0 500) \"\" \"C\"", "endCell"));
}

TEST_F(ViasTest, WhatWasReadIsWrittenBack) {
  { CellBuilder(std::string("lib"), "drawn").rect(31, 0, 1, 2, 3, 4); }
  QStringList plain;
  QStringList wide;
  QStringList drawn;
  {
    const CellBuilder top("lib", "top");
    oaViaParam params;
    params.setCutColumns(2);
    params.setCutSpacing(oaVector(40, -7));
    params.setLayer2Offset(oaVector(1, -1));
    plain = listOf(oaStdVia::create(*top, stdDef, oaTransform(1000, 0)));
    wide = listOf(oaStdVia::create(*top, stdDef, oaTransform(2000, 0, oacR90), &params));
    drawn = toCustomViaParameterList(oaParamArray(), "C", custom);
    oaCustomVia::create(*top, custom, oaTransform(0, 500, oacMX));
  }
  beginLayout("copy");
  save(plain, QPoint(1000, 0), "");
  save(wide, QPoint(2000, 0), "R90", {"n"});
  save(drawn, QPoint(0, 500), oaConvert::toTrans(oacMX));
  plugIn.saveClose();
  EXPECT_THAT(reports(), ElementsAre());
  // The names hold a hash of everything in the data of the vias' cells.
  EXPECT_EQ(read("copy", kReferences), read("top", kReferences));

  const OpenCell copy("lib", "copy");
  oaIter<oaVia> vias((*copy)->getVias());
  oaViaParam params;
  static_cast<oaStdVia *>(vias.getNext())->getViaParams(params);
  EXPECT_TRUE(params.hasDefault(oacCutLayerViaParamType)) << "what equals the definition's follows the definition";
  oaVia *onNet = vias.getNext();
  ASSERT_TRUE(onNet->hasNet());
  oaString net;
  onNet->getNet()->getName(oaConvert::ns, net);
  EXPECT_EQ(std::string(net), "n");
  EXPECT_EQ((*copy)->getInsts().getCount(), 0u);
}

TEST_F(ViasTest, ArraysBecomeSingleVias) {
  const QStringList names{"oaType", "oaViaDefName", "cutRows"};
  beginLayout("top");
  plugIn.saveCellrefArray("lib", "any", "layout", QPoint(1, 2), "R180", "any", names, {"oaStdVia", "V", "2"}, 10, -20,
                          2, 3);
  plugIn.saveCellrefArray("lib", "any", "layout", QPoint(2147483600, 0), "", "any", names, {"oaStdVia", "V", "1"}, 100,
                          0, 2, 1);
  plugIn.saveClose();
  EXPECT_THAT(reports(), ElementsAre(HasSubstr("beyond the range of coordinates")));
  Lines origins;
  const OpenCell top("lib", "top");
  oaIter<oaVia> vias((*top)->getVias());
  while (oaVia *via = vias.getNext()) {
    oaPoint origin;
    via->getOrigin(origin);
    origins.push_back(std::to_string(origin.x()) + " " + std::to_string(origin.y()));
  }
  EXPECT_THAT(origins, ElementsAre("1 2", "11 2", "1 -18", "11 -18", "1 -38", "11 -38", "2147483600 0"));
}

TEST_F(ViasTest, MissingStandardDefinitionsAreCreated) {
  const QStringList list{"oaType",   "oaStdVia", "oaViaDefName", "new", "cutWidth", "50", "cutHeight", "60",
                         "cutLayer", "30",       "layer1Enc",    "3/4", "layer1",   "31", "layer2",    "77"};
  beginLayout("top");
  save(list, QPoint(0, 0), "");
  save(list, QPoint(100, 0), "");
  save(list.mid(0, 12), QPoint(0, 0), "");
  plugIn.saveClose();
  EXPECT_THAT(reports(), ElementsAre());
  tech->purge();
  tech = oaTech::open(scalar("lib"), 'r');
  const auto *def = static_cast<oaStdViaDef *>(oaViaDef::find(tech, "new"));
  ASSERT_NE(def, nullptr);
  EXPECT_EQ(def->getLayer1Num(), 31u);
  EXPECT_NE(def->getLayer2(), nullptr);
  oaViaParam params;
  def->getParams(params);
  EXPECT_EQ(params.getLayer1Enc(), oaVector(3, 4));
  EXPECT_EQ((*OpenCell("lib", "top"))->getVias().getCount(), 3u);
}

// The list of a via tells no implants; the definition that it came from does.
TEST_F(ViasTest, MissingStandardDefinitionsAreCopiedFromTheirLibrary) {
  oaPhysicalLayer *nplus = oaPhysicalLayer::create(tech, "nplus", 5, oacNImplantMaterial);
  oaViaParam defaults;
  stdDef->getParams(defaults);
  oaViaParam wide = defaults;
  wide.setCutColumns(4);
  oaStdViaDef::create(tech, "I", stdDef->getLayer1(), stdDef->getLayer2(), wide, nplus);
  QStringList list = oaConvert::toViaParameterList(defaults, "I", 31, 32);
  list.replace(list.indexOf("implant1Enc") + 1, "7/8");
  tech->save();
  createLib("target");
  const auto definitionFrom = [&](const QString &library) {
    QStringList names;
    QStringList values;
    for (int i = 0; i + 1 < list.size(); i += 2) {
      names << list.at(i);
      values << list.at(i + 1);
    }
    recorder.clear();
    plugIn.saveLayout("target", "top", "layout", true, {}, {});
    plugIn.saveCellref(library, "I", "layout", QPoint(0, 0), "", "any", names, values, {}, {});
    plugIn.saveClose();
    oaTech *target = oaTech::open(scalar("target"), 'r');
    const auto *def = static_cast<oaStdViaDef *>(oaViaDef::find(target, "I"));
    EXPECT_NE(def, nullptr);
    oaViaParam params;
    def->getParams(params);
    std::string text = std::to_string(params.getCutColumns()) + " columns";
    if (def->hasImplant1()) {
      oaString name;
      def->getImplant1()->getName(name);
      text += ", implant " + std::string(name);
    }
    target->purge();
    oaTech::destroy(scalar("target"));
    return text;
  };
  EXPECT_EQ(definitionFrom("lib"), "4 columns, implant nplus");
  EXPECT_THAT(reports(), ElementsAre());
  EXPECT_EQ(definitionFrom("elsewhere"), "1 columns");
  EXPECT_THAT(reports(), ElementsAre(HasSubstr("\"std via definition is created without implants\" 2 \"I\"")));
}

// Each is written, for the list tells neither; it is told once for a design.
TEST_F(ViasTest, DefinitionsThatDrawSomethingElseAreTold) {
  { CellBuilder(std::string("lib"), "drawn").rect(31, 0, 1, 2, 3, 4); }
  oaPhysicalLayer *nplus = oaPhysicalLayer::create(tech, "nplus", 5, oacNImplantMaterial);
  oaViaParam params;
  stdDef->getParams(params);
  oaStdViaDef::create(tech, "I", stdDef->getLayer1(), stdDef->getLayer2(), params, nplus);
  tech->save();
  createLib("source");
  oaTech *source = oaTech::create(scalar("source"));
  oaPhysicalLayer *m1 = oaPhysicalLayer::create(source, "m1", 31, oacMetalMaterial);
  oaPhysicalLayer *m2 = oaPhysicalLayer::create(source, "m2", 32, oacMetalMaterial);
  oaPhysicalLayer *implant = oaPhysicalLayer::create(source, "implant", 5, oacNImplantMaterial);
  oaStdViaDef::create(source, "V", m1, m2, params, nullptr, implant);
  oaStdViaDef::create(source, "I", m1, m2, params, implant);
  source->save();
  source->close();
  const QStringList std{"oaType", "oaViaDefName", "layer1", "layer2", "implant2Enc"};
  const QStringList custom{"oaType", "oaViaDefName"};
  const struct {
    const char *name;
    const char *lib, *cell;
    QStringList names, values;
    Lines reports;
  } cases[] = {
      {"the same", "lib", "V", std, {"oaStdVia", "V", "31", "32", "0/0"}, {}},
      {"the same elsewhere", "source", "I", std, {"oaStdVia", "I", "31", "32", "0/0"}, {}},
      {"other implants",
       "source",
       "V",
       std,
       {"oaStdVia", "V", "31", "32", "0/0"},
       {"reportError \"std via definition has other implants\" 2 \"V: on layers none, none in library lib, on layers "
        "none, 5 in library source\""}},
      {"an original that is not known",
       "gone",
       "V",
       std,
       {"oaStdVia", "V", "31", "32", "4/4"},
       {"reportError \"std via definition is without implants\" 2 \"V\""}},
      {"not known and without implants", "gone", "V", std, {"oaStdVia", "V", "31", "32", "0/0"}, {}},
      {"the same master", "lib", "drawn", custom, {"oaCustomVia", "C"}, {}},
      {"copied with its master", "source", "drawn", custom, {"oaCustomVia", "C"}, {}},
      {"another master",
       "lib",
       "other",
       custom,
       {"oaCustomVia", "C"},
       {"reportError \"custom via definition has another master\" 2 \"C: lib/drawn/layout, that of the via is "
        "lib/other/layout\""}},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    beginLayout("top");
    for (int x : {0, 100}) {
      plugIn.saveCellref(c.lib, c.cell, "layout", QPoint(x, 0), "", "any", c.names, c.values, {}, {});
    }
    plugIn.saveClose();
    EXPECT_EQ(reports(), c.reports);
    EXPECT_EQ((*OpenCell("lib", "top"))->getVias().getCount(), 2u);
  }
}

TEST_F(ViasTest, WhatCannotBeAViaIsToldAndLeftOut) {
  const struct {
    const char *name;
    QStringList list;
    const char *report;
  } cases[] = {
      {"no layers to create it with", {"oaType", "oaStdVia", "oaViaDefName", "none"}, "std via definition not found"},
      {"custom", {"oaType", "oaCustomVia", "oaViaDefName", "none"}, "custom via definition not found"},
      {"custom by the name of a standard one",
       {"oaType", "oaCustomVia", "oaViaDefName", "V"},
       "custom via definition not found"},
      {"standard by the name of a custom one",
       {"oaType", "oaStdVia", "oaViaDefName", "C"},
       "std via definition not found"},
      {"no name",
       {"oaType", "oaStdVia", "oaViaDefName", "", "cutWidth", "50", "cutHeight", "60", "cutLayer", "30", "layer1", "31",
        "layer2", "32"},
       "std via definition not found\" 1 \"oaViaDefName is empty"},
      {"custom without a name",
       {"oaType", "oaCustomVia", "oaViaDefName", ""},
       "custom via definition not found\" 1 \"oaViaDefName is empty"},
      {"another first layer",
       {"oaType", "oaStdVia", "oaViaDefName", "V", "layer1", "33", "layer2", "32"},
       "std via definition not found\" 1 \"V: the one of the technology has layer1 31, that of the via 33\""},
      {"another second layer",
       {"oaType", "oaStdVia", "oaViaDefName", "V", "layer1", "31", "layer2", "m2"},
       "std via definition not found\" 1 \"V: the one of the technology has layer2 32, that of the via m2\""},
      {"custom with another layer",
       {"oaType", "oaCustomVia", "oaViaDefName", "C", "layer1", "32", "layer1", "31", "layer2", "34"},
       "custom via definition not found\" 1 \"C: the one of the technology has layer2 32, that of the via 34\""},
      {"no rows", {"oaType", "oaStdVia", "oaViaDefName", "V", "cutRows", "0"}, "0 cut rows"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    recorder.clear();
    beginLayout("top");
    save(c.list, QPoint(0, 0), "");
    plugIn.saveClose();
    EXPECT_THAT(reports(), ElementsAre(HasSubstr(c.report)));
    EXPECT_EQ((*OpenCell("lib", "top"))->getVias().getCount(), 0u);
  }
}

TEST_F(ViasTest, MissingDefinitionIsReportedByTheReader) {
  {
    const CellBuilder top("lib", "top");
    oaStdVia::create(*top, stdDef, oaTransform());
    oaCustomVia::create(*top, custom, oaTransform());
  }
  stdDef->destroy();
  EXPECT_THAT(read("top", Lines{"reportError", "addCellRef"}),
              ElementsAre("reportError \"std via definition not found\" 1 \"V\"", HasSubstr("custom via not found")));
}

} // namespace
