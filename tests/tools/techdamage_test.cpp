// Technologies whose checksums are right and whose contents are not.

#include "oachecktest.h"

#include "techdatabase.h"

#include <functional>

using namespace oachecktest;

namespace {

using kit::kNoRow;
using kit::TechDatabase;

class TechDamage : public OacheckTest {
protected:
  TechDamage() {
    oaTech *tech = oaTech::create(lib());
    oaPhysicalLayer *poly = oaPhysicalLayer::create(tech, "poly", 1, oacPolyMaterial);
    oaPhysicalLayer *metal = oaPhysicalLayer::create(tech, "metal", 2, oacMetalMaterial);
    oaDerivedLayer::create(poly, metal, oaLayerOp(oacAndLayerOp), "gate", 3);
    oaDerivedLayer::create(poly, oaLayer::find(tech, "gate"), oaLayerOp(oacOrLayerOp), "more", 4);
    oaPurpose::create(tech, "own", 7);
    oaViaParam params;
    params.setCutRows(2);
    params.setCutColumns(3);
    params.setCutPatternVal(1, 2, false);
    oaStdViaDef::create(tech, "std", poly, metal, params, nullptr, metal);
    oaCustomViaDef::create(tech, "custom", scalar("l"), scalar("c"), scalar("v"), poly, metal);
    tech->setDBUPerUU(oaViewType::get(oacMaskLayout), 2000);
    tech->save();
    tech->close();
    path_ = libFolder() / "tech.db";
    good_ = bytesOf(path_);
  }

  fs::path path_;
  std::string good_;
};

TEST_F(TechDamage, IsFoundAndNamed) {
  EXPECT_EQ(checkedFile(path_).text(), "");
  const struct {
    const char *name;
    std::function<void(TechDatabase &)> damage;
    const char *place, *what;
  } cases[] = {
      {"two rows of attributes", [](TechDatabase &t) { t.attributes.kind.set(t.attributes.addRow(), oacTechType); },
       "table attributes", "has 2 rows"},
      {"view type", [](TechDatabase &t) { t.units.viewType.set(0, 99); }, "table units, row 0, column viewType",
       "is 99"},
      {"user unit", [](TechDatabase &t) { t.units.userUnits.set(0, 7); }, "table units, row 0, column userUnits",
       "is 7"},
      {"kind of layer", [](TechDatabase &t) { t.layers.kind.set(0, oacPinType); }, "table layers, row 0, column kind",
       "expected 1"},
      {"layer without a name", [](TechDatabase &t) { t.layers.name.set(0, kNoRow); },
       "table layers, row 0, column name", "is empty"},
      {"name twice", [](TechDatabase &t) { t.layers.name.set(1, t.layers.name[0]); },
       "table layers, row 1, column name", "of row 0"},
      {"number twice", [](TechDatabase &t) { t.layers.number.set(1, 1); }, "table layers, row 1, column number",
       "of row 0"},
      {"material", [](TechDatabase &t) { t.layers.material.set(0, 14); }, "table layers, row 0, column material",
       "is 14"},
      {"operation", [](TechDatabase &t) { t.layers.operation.set(2, 9); }, "table layers, row 2, column operation",
       "is 9"},
      {"derived from nothing", [](TechDatabase &t) { t.layers.layer1.set(2, 99); },
       "table layers, row 2, column layer1", "is layer 99"},
      {"derived from itself", [](TechDatabase &t) { t.layers.layer2.set(2, 4); }, "table layers, row 3, column layer2",
       "derive from itself"},
      {"purpose twice", [](TechDatabase &t) { t.purposes.number.set(0, 7); }, "table purposes", "the number of row"},
      {"via definition without a payload", [](TechDatabase &t) { t.viaDefs.payload.set(0, kNoRow); },
       "table via definitions, row 0, column payload", "is none"},
      {"via definition's payload", [](TechDatabase &t) { t.viaDefs.payload.set(0, 9); },
       "table via definitions, row 0, column payload", "refers to row 9"},
      {"custom via definition", [](TechDatabase &t) { t.customViaDefs.cell.set(0, kNoRow); },
       "table custom via definitions, row 0, column cell", "is empty"},
      {"cut that is none",
       [](TechDatabase &t) {
         t.missingCuts.cuts.set(0, {2, 0});
       },
       "table missing cuts, row 0, column cuts", "is row 2"},
      {"via without cuts",
       [](TechDatabase &t) {
         kit::ViaParamValues params = t.stdViaDefs.params[0];
         params.cutRows = 0;
         t.stdViaDefs.params.set(0, params);
       },
       "table standard via definitions, row 0, column params", "has no cuts"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    writeBytes(path_, good_);
    TechDatabase tech((kit::DatabasePlace()));
    tech.load(path_.string());
    c.damage(tech);
    tech.writeTo(path_.string());
    const Outcome outcome = checkedFile(path_);
    EXPECT_NE(outcome.damages, 0U);
    const std::string text = outcome.text();
    const std::size_t place = text.find(std::string(": ") + c.place);
    ASSERT_NE(place, std::string::npos) << text;
    EXPECT_NE(text.find(c.what, place), std::string::npos) << text;
  }
}

} // namespace
