// Vias, their headers and their parameters whose checksums are right and whose contents are not.

#include "oachecktest.h"

#include "techdatabase.h"

#include <functional>

using namespace oachecktest;

namespace {

using kit::DesignDatabase;
using kit::kNoRow;

class ViaDamage : public OacheckTest {
protected:
  // Headers: 0 super and 1, 2 subs of "std", 3 of "custom". Vias: 0 and 1 of the subs, 2 custom.
  ViaDamage() {
    oaTech *tech = oaTech::create(lib());
    oaPhysicalLayer *m1 = oaPhysicalLayer::create(tech, "m1", 31, oacMetalMaterial);
    oaPhysicalLayer *m2 = oaPhysicalLayer::create(tech, "m2", 32, oacMetalMaterial);
    oaViaParam params;
    params.setCutRows(2);
    params.setCutColumns(3);
    params.setCutPatternVal(1, 2, false);
    const oaStdViaDef *standard = oaStdViaDef::create(tech, "std", m1, m2, params);
    makeCell("master");
    const oaCustomViaDef *custom =
        oaCustomViaDef::create(tech, "custom", scalar(libName()), scalar("master"), scalar("layout"), m1, m2);
    oaBlock *block = newBlock("vias");
    oaNet *net = oaNet::create(block, fulldesign::native("n"));
    oaPin *pin = oaPin::create(oaTerm::create(net, fulldesign::native("n")));
    oaStdVia::create(block, standard, oaTransform(0, 0))->addToNet(net);
    oaViaParam own = params;
    own.setCutRows(4);
    own.setCutPatternVal(3, 1, false);
    oaStdVia::create(block, standard, oaTransform(9, 9), &own)->addToPin(pin);
    oaCustomVia::create(block, custom, oaTransform(5, 5, oacR90));
    block->getDesign()->save();
    block->getDesign()->close();
    tech->save();
    tech->close();
    good_ = bytesOf(file("vias"));
  }
  std::string good_;
};

TEST_F(ViaDamage, IsFoundAndNamed) {
  EXPECT_EQ(checkedFile(file("vias")).text(), "");
  const struct {
    const char *name;
    std::function<void(DesignDatabase &)> damage;
    const char *place, *what;
  } cases[] = {
      {"kind", [](DesignDatabase &d) { d.vias.kind.set(0, oacPinType); }, "table vias, row 0, column kind", "expected"},
      {"no header", [](DesignDatabase &d) { d.vias.header.set(0, kNoRow); }, "table vias, row 0, column header",
       "is none"},
      {"header", [](DesignDatabase &d) { d.vias.header.set(0, 77); }, "table vias, row 0, column header", "row 77"},
      {"super header", [](DesignDatabase &d) { d.vias.header.set(0, 0); }, "table vias, row 0, column header",
       "places no vias"},
      {"header of another kind", [](DesignDatabase &d) { d.vias.header.set(2, 1); }, "table vias, row 2, column header",
       "places no vias"},
      {"net and pin", [](DesignDatabase &d) { d.vias.pin.set(0, 0); }, "table vias, row 0, column net", "and in a pin"},
      {"implicit net", [](DesignDatabase &d) { d.nets.flags.set(0, kit::kNetImplicit); },
       "table vias, row 0, column net", "implicit"},
      {"orientation", [](DesignDatabase &d) { d.vias.orient.set(2, 8); }, "table vias, row 2, column orient", "is 8"},
      {"count", [](DesignDatabase &d) { d.viaHeaders.users.set(0, 5); }, "table viaHeaders, row 0, column users",
       "counts 5 users, there are 2"},
      {"no name", [](DesignDatabase &d) { d.viaHeaders.name.set(3, kNoRow); }, "table viaHeaders, row 3, column name",
       "is empty"},
      {"sub header of a custom one", [](DesignDatabase &d) { d.viaHeaders.super.set(1, 3); },
       "table viaHeaders, row 1, column super", "a super header of the same kind"},
      {"sub header of a sub header", [](DesignDatabase &d) { d.viaHeaders.super.set(2, 1); },
       "table viaHeaders, row 2, column super", "a super header of the same kind"},
      {"no parameters", [](DesignDatabase &d) { d.viaHeaders.params.set(1, kNoRow); },
       "table viaHeaders, row 1, column params", "is none"},
      {"parameters of another", [](DesignDatabase &d) { d.viaHeaders.params.set(2, d.viaHeaders.params[1]); },
       "table viaHeaders, row 2, column params", "another header"},
      {"no cuts",
       [](DesignDatabase &d) {
         kit::ViaParamValues params = d.viaParams.params[0];
         params.cutColumns = 0;
         d.viaParams.params.set(0, params);
       },
       "table viaParams, row 0, column params", "has no cuts"},
      {"cut that is none",
       [](DesignDatabase &d) {
         d.viaMissingCuts.cuts.set(0, {99, 0});
       },
       "row 0, column cuts", "is row 99"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    writeBytes(file("vias"), good_);
    kit::DatabasePlace place;
    place.label = "vias";
    DesignDatabase design(place, "vias", "layout");
    design.load(file("vias").string());
    c.damage(design);
    design.writeTo(file("vias").string());
    const Outcome outcome = checkedFile(file("vias"));
    EXPECT_NE(outcome.damages, 0U);
    const std::string text = outcome.text();
    const std::size_t found = text.find(c.place);
    ASSERT_NE(found, std::string::npos) << text;
    EXPECT_NE(text.find(c.what, found), std::string::npos) << text;
  }
}

TEST_F(ViaDamage, DefinitionsThatAreNotThereAreWarnings) {
  EXPECT_EQ(checkedLibrary().text(), "");
  const fs::path techFile = libFolder() / "tech.db";
  {
    kit::TechDatabase tech((kit::DatabasePlace()));
    tech.load(techFile.string());
    tech.viaDefs.name.set(0, tech.strings().add("renamed"));
    tech.writeTo(techFile.string());
  }
  Outcome outcome = checkedLibrary();
  EXPECT_EQ(outcome.warnings, 1U) << outcome.text();
  EXPECT_NE(outcome.text().find("table viaHeaders, row 0, column name: via definition \"std\" is not"),
            std::string::npos)
      << outcome.text();
  fs::remove(techFile);
  outcome = checkedLibrary();
  EXPECT_EQ(outcome.damages, 0U) << outcome.text();
  EXPECT_EQ(outcome.warnings, 2U) << outcome.text();
  // Attached to the technology of another library, which may have them.
  oaLibDMData *data = oaLibDMData::open(scalar(libName()), 'a');
  oaStringProp::create(data, "techLibName", "other");
  data->save();
  data->close();
  EXPECT_EQ(checkedLibrary().text(), "");
}

} // namespace
