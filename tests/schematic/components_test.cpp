// The list of a library's components and its cache.

#include <cstring>
#include <functional>

#include <QFile>

#include "schematictest.h"

using namespace oa;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

std::vector<std::string> names(const QStringList &list) {
  std::vector<std::string> texts;
  for (const QString &text : list) {
    texts.push_back(text.toStdString());
  }
  return texts;
}

// The working directory of a test is its folder.
QString libPath() { return QDir::current().filePath("lib"); }

void reopen(oaLibMode mode) {
  oaLib::find(scalar("lib"))->close();
  oaLib::open(scalar("lib"), oaConvert::toOaPath(libPath()), "", mode);
}

class ComponentsTest : public SchematicTest {
protected:
  ~ComponentsTest() override {
    if (oaLibDMData::exists(scalar("lib"))) {
      oaLibDMData::destroy(scalar("lib"));
    }
  }

  static void build(const char *cell, const char *view, SchematicBuilder::Kind kind = SchematicBuilder::symbol) {
    SchematicBuilder design(cell, view, kind);
  }

  Lines listed(bool useCache, const char *lib = "lib") { return names(plugIn.getComponents(lib, "", useCache)); }

  // "property application type: value" for each property of the library's management data.
  static Lines stored() {
    Lines lines;
    if (!oaLibDMData::exists(scalar("lib"))) {
      return lines;
    }
    oaLibDMData *data = oaLibDMData::open(scalar("lib"), 'r');
    oaIter<oaProp> properties(data->getProps());
    while (oaProp *property = properties.getNext()) {
      oaString name;
      oaString value;
      oaString type;
      property->getName(name);
      property->getValue(value);
      if (property->getType() == oacAppPropType) {
        static_cast<oaAppProp *>(property)->getAppType(type);
      }
      lines.push_back(std::string(name) + " " + std::string(type) + ": " + std::string(value));
    }
    data->close();
    return lines;
  }

  static void storeCache(const char *text) {
    oaLibDMData *data = oaLibDMData::open(scalar("lib"), 'w');
    oaAppProp::create(data, "cachedComponents", "Tarnwickdale", oaUInt4(std::strlen(text)),
                      reinterpret_cast<const oaByte *>(text));
    oaStringProp::create(data, "owner", "me");
    data->save();
    data->close();
  }
};

// The library is not writable for as long as this lives, however it is opened.
class WriteProtection {
public:
  WriteProtection() : file_(libPath() + "/.oalib") {
    EXPECT_TRUE(file_.open(QIODevice::ReadOnly));
    before_ = file_.readAll();
    file_.close();
    oaLib *lib = oaLib::find(scalar("lib"));
    EXPECT_TRUE(lib->getAccess(oacWriteLibAccess));
    oaDMAttrArray attributes;
    attributes.append(oaDMAttr("libReadOnly", "yes"));
    lib->setAttributes(attributes);
    lib->releaseAccess();
    reopen(oacSharedLibMode);
  }
  ~WriteProtection() {
    EXPECT_TRUE(file_.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file_.write(before_);
    file_.close();
    reopen(oacSharedLibMode);
  }

private:
  QFile file_;
  QByteArray before_;
};

TEST_F(ComponentsTest, CellsWithASymbolViewAreListed) {
  build("inv", "symbol");
  build("inv", "schematic", SchematicBuilder::schematic);
  build("odd", "symbol", SchematicBuilder::schematic);
  build("wide", "Symbol");
  build("other", "sym2");
  build("top", "schematic", SchematicBuilder::schematic);
  EXPECT_THAT(names(oaConvert::getComponents("lib", "")), testing::UnorderedElementsAre("inv", "odd"));
  EXPECT_EQ(oaLib::find(scalar("lib"))->getAccessLevel(), oacNoLibAccessLevel);
}

TEST_F(ComponentsTest, NoSymbolsMeanNoComponents) {
  build("top", "schematic", SchematicBuilder::schematic);
  EXPECT_THAT(listed(false), IsEmpty());
  EXPECT_THAT(stored(), ElementsAre("cachedComponents Tarnwickdale: "));
  EXPECT_THAT(listed(true), IsEmpty()); // not one component without a name
}

TEST_F(ComponentsTest, CacheIsMadeServedAndRenewed) {
  build("inv", "symbol");
  build("nand", "symbol");
  const Lines both = listed(true);
  EXPECT_THAT(both, testing::UnorderedElementsAre("inv", "nand"));
  EXPECT_THAT(stored(), ElementsAre("cachedComponents Tarnwickdale: " + both[0] + ";" + both[1]));

  storeCache("stale;;nand ;");
  EXPECT_THAT(listed(true), ElementsAre("stale", "", "nand ", ""));
  EXPECT_THAT(listed(false), testing::UnorderedElementsAre("inv", "nand"));
  EXPECT_THAT(stored(), ElementsAre("owner : me", "cachedComponents Tarnwickdale: " + both[0] + ";" + both[1]));
  EXPECT_EQ(oaLibDMData::find(scalar("lib")), nullptr);
}

TEST_F(ComponentsTest, CacheOfAnyKindOfPropertyIsServed) {
  oaLibDMData *data = oaLibDMData::open(scalar("lib"), 'a');
  oaStringProp::create(data, "cachedComponents", "a;b");
  data->save();
  data->close();
  EXPECT_THAT(listed(true), ElementsAre("a", "b"));
}

TEST_F(ComponentsTest, AccessThatIsStillHeldIsGivenBack) {
  storeCache("a");
  oaLib *lib = oaLib::find(scalar("lib"));
  ASSERT_TRUE(lib->getAccess(oacReadLibAccess));
  EXPECT_THAT(listed(true), ElementsAre("a"));
  EXPECT_EQ(lib->getAccessLevel(), oacNoLibAccessLevel);
}

TEST_F(ComponentsTest, LibraryThatCannotBeWrittenKeepsTheListAndNoCache) {
  build("inv", "symbol");
  const WriteProtection protection;
  Lines components;
  const std::string printed = printedBy([&] { components = listed(true); });
  EXPECT_THAT(components, ElementsAre("inv"));
  EXPECT_THAT(printed, testing::AllOf(StartsWith("ERROR ( getComponents): "), HasSubstr("lib")));
  EXPECT_THAT(stored(), IsEmpty());
  EXPECT_EQ(oaLib::find(scalar("lib"))->getAccessLevel(), oacNoLibAccessLevel);
  EXPECT_EQ(oaLibDMData::find(scalar("lib")), nullptr);
}

TEST_F(ComponentsTest, LibraryOpenedForReadingIsOpenedAgainToStoreTheCache) {
  build("inv", "symbol");
  reopen(oacReadOnlyLibMode);
  EXPECT_THAT(printedBy([&] { EXPECT_THAT(listed(false), ElementsAre("inv")); }), IsEmpty());
  EXPECT_THAT(stored(), ElementsAre("cachedComponents Tarnwickdale: inv"));
  const oaLib *lib = oaLib::find(scalar("lib"));
  EXPECT_TRUE(lib->isWritable());
  EXPECT_EQ(lib->getAccessLevel(), oacNoLibAccessLevel);
}

TEST_F(ComponentsTest, UnknownLibraryIsPrinted) {
  const struct {
    const char *name;
    std::function<QStringList()> list;
    const char *printed;
  } cases[] = {
      {"listing", [] { return oaConvert::getComponents("nolib", ""); }, "ERROR (getComponents ): e \n"},
      {"from the cache", [this] { return plugIn.getComponents("nolib", "", true); },
       "ERROR (get Components): e \nERROR (getComponents ): e \nERROR ( getComponents): e \n"},
      {"anew", [this] { return plugIn.getComponents("nolib", "", false); },
       "ERROR (getComponents ): e \nERROR ( getComponents): e \n"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    QStringList components("none yet");
    EXPECT_EQ(printedBy([&] { components = c.list(); }), c.printed);
    EXPECT_TRUE(components.isEmpty());
  }
}

TEST_F(ComponentsTest, ExistenceIsThatOfTheViewBehindTheDeviceName) {
  build("inv", "symbol");
  build("inv", "sym2");
  build("top", "schematic", SchematicBuilder::schematic);
  const struct {
    const char *lib, *device;
    bool exists;
  } cases[] = {{"lib", "inv", true},           {"lib", "sym2@inv", true}, {"lib", "symbol@inv", true},
               {"lib", "schematic@top", true}, {"lib", "top", false},     {"lib", "sym3@inv", false},
               {"lib", "@inv", false},         {"lib", "", false},        {"nolib", "inv", false}};
  for (const auto &c : cases) {
    SCOPED_TRACE(std::string(c.lib) + " " + c.device);
    EXPECT_THAT(printedBy([&] { EXPECT_EQ(plugIn.existComponent(c.lib, c.device), c.exists); }), IsEmpty());
  }
}

TEST_F(ComponentsTest, WritingTheCacheIsToldWhenSwitchedOn) {
  build("inv", "symbol");
  oaConvert::debug = true;
  const std::string printed = printedBy([&] { listed(false); });
  oaConvert::debug = false;
  EXPECT_EQ(printed, "write cached components lib\n");
}

} // namespace
