#include "techtest.h"

using namespace techtest;

namespace {

class DamagedTech : public TechTest {
protected:
  // Everything of the technology, so that each table is read.
  static std::string everythingIn(oaTech *tech) {
    std::string text = textOf<oaLayer>(tech->getLayers()) + textOf<oaPurpose>(tech->getPurposes());
    oaIter<oaLayer> layers(tech->getLayers());
    while (oaLayer *layer = layers.getNext()) {
      if (layer->getType() == oacPhysicalLayerType) {
        text += std::string(static_cast<oaPhysicalLayer *>(layer)->getMaterial().getName());
      } else if (layer->getType() == oacDerivedLayerType) {
        text += std::string(static_cast<oaDerivedLayer *>(layer)->getOperation().getName());
      }
    }
    oaIter<oaViaDef> defs(tech->getViaDefs());
    while (oaViaDef *def = defs.getNext()) {
      oaViaParam params;
      oaScalarName cell;
      if (def->getType() == oacStdViaDefType) {
        static_cast<oaStdViaDef *>(def)->getParams(params);
      } else if (def->getType() == oacCustomViaDefType) {
        static_cast<oaCustomViaDef *>(def)->getCellName(cell);
      }
      text += std::to_string(params.getCutRows());
    }
    return text + std::to_string(tech->getDBUPerUU(layoutType()));
  }
  static const oaViewType *layoutType() { return oaViewType::get(oacMaskLayout); }
};

TEST_F(DamagedTech, ForeignFilesRaiseAndStay) {
  const struct {
    const char *name;
    std::string bytes;
  } cases[] = {
      {"licensed kit", std::string("\x67\x45\x23\x01", 4) + " and what follows"},
      {"text", "layer 1 metal\n"},
      {"management data", ""},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    std::string bytes = c.bytes;
    if (bytes.empty()) {
      oaLibDMData *data = oaLibDMData::open(named("L"), 'w');
      data->save();
      data->close();
      bytes = readFile(path("L/data.dm"));
      oaLibDMData::destroy(named("L"));
    }
    writeFile(path("L/tech.db"), bytes);
    for (const char mode : {'r', 'a'}) {
      std::string message;
      EXPECT_LT(raisedBy([&] { oaTech::open(lib, mode); }, &message), 300u) << message;
      EXPECT_THAT(message, testing::HasSubstr(path("L/tech.db")));
    }
    EXPECT_EQ(raisedBy([&] { oaTech::create(lib); }), oacTechAlreadyExists);
    if (std::string(c.name) != "management data") {
      EXPECT_EQ(raisedBy([&] { oaTech::open(lib, 'w'); }), oacInvalidDatabaseFile);
    }
    EXPECT_EQ(readFile(path("L/tech.db")), bytes);
    EXPECT_EQ(oaTech::find(lib), nullptr);
  }
}

TEST_F(DamagedTech, EmptyFileCountsAsNone) {
  writeFile(path("L/tech.db"), "");
  EXPECT_FALSE(oaTech::exists(lib));
  EXPECT_EQ(raisedBy([&] { oaTech::open(lib, 'r'); }), oacCannotFindLibraryTech);
  oaTech *tech = oaTech::create(lib);
  tech->save();
  tech->close();
  EXPECT_TRUE(oaTech::exists(lib));
}

// Bytes flipped all over the file, and lengths cut: an exception of the kit that names the file or table, or the same
// contents.
TEST_F(DamagedTech, NoByteOfTheFileIsTrusted) {
  oaTech *tech = oaTech::create(lib);
  oaPhysicalLayer *a = oaPhysicalLayer::create(tech, "a", 1, oacMetalMaterial);
  oaPhysicalLayer *b = oaPhysicalLayer::create(tech, "b", 2);
  oaDerivedLayer::create(a, b, oacNotLayerOp, "ab", 3);
  oaViaParam params;
  params.setCutRows(2);
  params.setCutPatternVal(1, 0, false);
  oaStdViaDef::create(tech, "std", a, b, params);
  oaCustomViaDef::create(tech, "custom", named("L"), named("c"), named("v"), a, b);
  tech->setDBUPerUU(layoutType(), 2000);
  tech->save();
  const std::string expected = everythingIn(tech);
  tech->close();
  const std::string good = readFile(path("L/tech.db"));

  const auto tryFile = [&](const std::string &bytes) {
    writeFile(path("L/tech.db"), bytes);
    try {
      oaTech *damaged = oaTech::open(lib, 'r');
      const std::string found = everythingIn(damaged);
      damaged->close();
      return found;
    } catch (const oaException &) {
      if (oaTech *open = oaTech::find(lib)) {
        open->purge();
      }
      return std::string("refused");
    }
  };
  EXPECT_EQ(tryFile(good), expected);
  std::size_t refused = 0;
  for (std::size_t i = 0; i < good.size(); i += 3) {
    std::string bytes = good;
    bytes[i] = static_cast<char>(bytes[i] ^ 0x41);
    const std::string found = tryFile(bytes);
    refused += found == "refused" ? 1 : 0;
    ASSERT_TRUE(found == "refused" || found == expected) << "byte " << i << ": " << found;
  }
  EXPECT_GT(refused, good.size() / 12);
  for (std::size_t length = 1; length < good.size(); length += 29) {
    EXPECT_EQ(tryFile(good.substr(0, length)), "refused") << length << " bytes";
  }
}

} // namespace
