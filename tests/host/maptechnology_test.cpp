// The technology that goes with a layer map, and what import-gds makes of it.

#include "maptechnology.h"

#include "gdsbytes.h"
#include "hostprocess.h"
#include "layermap.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;

// "4 poly, 6 metal1"
std::string textOf(const QList<MapTechnology::Numbered> &numbered) {
  QStringList entries;
  for (const MapTechnology::Numbered &entry : numbered)
    entries.append(QStringLiteral("%1 %2").arg(entry.number).arg(entry.name));
  return entries.join(QStringLiteral(", ")).toStdString();
}

TEST(MapTechnology, NamesOfLayersAndPurposes) {
  const struct {
    const char *name, *map, *layers, *purposes;
  } cases[] = {
      {"own form", "6 1 metal1.pin\n6 0 metal1\n4 0 poly\n", "4 poly, 6 metal1.pin", "0 drawing0, 1 drawing1"},
      {"own form, layer first", "6 0 metal1\n6 1 metal1.pin\n4 0 poly\n", "4 poly, 6 metal1", "0 drawing0, 1 pin"},
      {"drawing names the layer", "n,p,layer:datatype,d\nmet1,pin,68:16,\nmet1x,drawing,68:20,\n", "68 met1x",
       "16 pin, 20 drawing20"},
      {"one number, two names", "n,p,layer:datatype,d\nli1,drawing,67:20,\nmcon,drawing,67:44,\n", "67 li1",
       "20 drawing20, 44 drawing44"},
      {"one name, two numbers", "1 0 a\n2 0 a\n", "1 a, 2 a2", "0 drawing0"},
      {"one purpose, two numbers", "n,p,layer:datatype,d\na,pin,1:5,\na,pin,1:6,\n", "1 a", "5 pin, 6 pin6"},
      {"first purpose of a datatype", "n,p,layer:datatype,d\na,pin,1:5,\nb,label,2:5,\n", "1 a, 2 b", "5 pin"},
      {"router map", "Metal1 NET,VIA 8 0\nNAME Metal1/PIN 8 25\n", "8 Metal1", "0 net, 25 label"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const MapTechnology technology(LayerMap::fromText(c.map, "test"));
    EXPECT_EQ(textOf(technology.layers), c.layers);
    EXPECT_EQ(textOf(technology.purposes), c.purposes);
  }
}

TEST(MapTechnology, NamesThatALayerCannotHaveAreListed) {
  const struct {
    const char *name, *map, *lost;
  } cases[] = {
      {"purposes", "6 0 metal1\n6 1 metal1.pin\n6 2 metal1-label\n", ""},
      {"other names", "n,p,layer:datatype,d\nli1,drawing,67:20,\nmcon,drawing,67:44,\nmcon,pin,67:48,\n",
       "67 li1 (not mcon)"},
      {"one begins like the other", "68 0 met1\n68 1 met1x\n", "68 met1 (not met1x)"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const MapTechnology technology(LayerMap::fromText(c.map, "test"));
    EXPECT_EQ(technology.lostNames.join("; ").toStdString(), c.lost);
  }
}

class ImportedTechnology : public testing::Test {
protected:
  ImportedTechnology() {
    GdsBytes gds;
    gds.head().structure("TOP").boundary(6, {0, 0, 0, 50, 100, 50, 100, 0, 0, 0}).endStructure().endLibrary();
    host.write("chip.gds", gds.bytes);
    host.write("map", "6 0 metal1\n6 1 metal1.pin\n7 0 via\n");
  }
  HostResult import() const {
    return host.run(
        QStringList{"import-gds", "chip.gds", "--lib", "chip", "--path", host.path("chip"), "--layers", "map"});
  }
  // What the kit says of the library's layers or purposes.
  std::string members(const char *query) const {
    const HostResult result = host.run(QStringList{
        "tcl", "-c",
        QStringLiteral("set all [oa::%1 [oa::TechOpen chip r]]\n"
                       "while {[set o [oa::getNext $all]] ne {}} {\n"
                       "  if {[oa::getNumber $o] < 65536} {puts -nonewline \"[oa::getNumber $o] [oa::getName $o], \"}\n"
                       "}")
            .arg(QLatin1String(query))});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    return result.output.toStdString();
  }
  HostProcess host;
};

TEST_F(ImportedTechnology, HoldsTheLayersOfTheMap) {
  const HostResult imported = import();
  ASSERT_EQ(imported.exitCode, 0) << imported.errors;
  EXPECT_EQ(imported.errors, "");
  EXPECT_EQ(members("getLayers"), "6 metal1, 7 via, ");
  EXPECT_EQ(members("getPurposes"), "0 drawing0, 1 pin, ");
  EXPECT_THAT(import().errors, testing::Not(HasSubstr("keeps the names"))) << "the same map again";
  const HostResult layers = host.run("layers chip");
  EXPECT_EQ(layers.exitCode, 0) << layers.errors;
  EXPECT_THAT(layers.output.toStdString(), HasSubstr("metal1"));
  EXPECT_THAT(host.run("dump chip TOP layout").output.toStdString(), HasSubstr("units 1000 per micron\n"));
}

TEST_F(ImportedTechnology, KeepsWhatIsThere) {
  ASSERT_EQ(import().exitCode, 0);
  host.write("map", "6 0 renamed\n8 0 metal1\n6 2 renamed.label\n");
  const HostResult again = import();
  EXPECT_EQ(again.exitCode, 0) << again.errors;
  EXPECT_THAT(again.errors,
              HasSubstr("library chip keeps the names of its technology: layer 6 metal1 (not renamed)\n"));
  EXPECT_EQ(members("getLayers"), "6 metal1, 7 via, 8 metal1_8, ");
  EXPECT_EQ(members("getPurposes"), "0 drawing0, 1 pin, 2 label, ");
}

} // namespace
