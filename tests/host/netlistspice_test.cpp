// SPICE text of netlists that are made by hand.

#include "netlistspice.h"
#include "spicenames.h"

#include <gtest/gtest.h>

namespace {

// A cell "top" with the nets a, b and D<0>, and one device of two terminals on a and b.
Netlist oneDevice(const NetlistSymbol &symbol, const NetlistParameters &parameters, const QString &name = "M1") {
  Netlist netlist;
  const NetlistSymbol *owned = &netlist.symbols.emplace("lib/dev", symbol).first->second;
  NetlistDevice device;
  device.name = name;
  device.device = device.cell = "dev";
  device.library = "lib";
  device.symbol = owned;
  device.terminals = QStringList{"P", "N"};
  device.nodes = {0, 1};
  device.parameters = parameters;
  netlist.cells.push_back({"lib", "top", "schematic", {"a", "b", "D<0>"}, {{"a", 0}}, {}, {device}, nullptr});
  netlist.mastersFirst = {0};
  return netlist;
}

// What stands between .subckt and .ends.
std::string bodyOf(const Netlist &netlist) {
  ImportReport report;
  const QString text = QString::fromUtf8(toSpice(netlist, report));
  const int start = text.indexOf(".subckt");
  const int body = text.indexOf('\n', start) + 1;
  return text.mid(body, text.indexOf(".ends") - body).toStdString();
}

TEST(NetlistSpice, DeviceLinesFollowThePropertiesAndTheSymbol) {
  const struct {
    const char *name;
    NetlistParameters symbol, instance;
    const char *device, *expected;
  } cases[] = {
      {"nothing known", {}, {}, "M1", "XM1 a b dev\n"},
      {"prefix and model", {{"spiceprefix", "M"}, {"model", "nmos"}}, {}, "q1", "Mq1 a b nmos\n"},
      {"prefix that the name has", {{"spiceprefix", "m"}}, {}, "M1", "M1 a b dev\n"},
      {"instance over symbol, symbol's order first",
       {{"w", "1u"}, {"l", "2u"}, {"model", "n"}},
       {{"m", "4"}, {"l", "9u"}, {"model", "p"}},
       "M1",
       "XM1 a b p w=1u l=9u m=4\n"},
      {"administrative ones", {{"xschem.type", "nmos"}}, {{"xschem.x", "1"}, {"w", "1"}}, "M1", "XM1 a b dev w=1\n"},
      {"values with blanks",
       {},
       {{"w", "2 * wn"}, {"f", "f('x', 1)"}, {"n", ""}},
       "M1",
       "XM1 a b dev w='2 * wn' f={f('x', 1)} n=\"\"\n"},
      {"references",
       {{"nf", "2"}},
       {{"ad", "expr('@nf * @name')"}, {"as", "@loop"}, {"loop", "@as"}, {"x", "@other"}},
       "M1",
       "XM1 a b dev nf=2 ad='2 * M1' as=@loop loop=@as x=@other\n"},
      {"a bit", {}, {}, "x1<3>", "x1[3] a b dev\n"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(bodyOf(oneDevice({{}, c.symbol}, c.instance, c.device)), c.expected);
  }
}

TEST(NetlistSpice, SymbolPrescribesItsLine) {
  const struct {
    const char *name, *format, *extra, *expected;
  } cases[] = {
      {"all terminals", "@name @pinlist @symname w=@w", "", "M1 a b dev w=1\n"},
      {"prefix and text behind a value", "@spiceprefix@name @pinlist sky__@model", "", "ZM1 a b sky__nch\n"},
      {"pins by name", "@name @@N @@P dev", "", "M1 b a dev\n"},
      {"unknown pin", "@name @@Q @#7 @#N[1:0] dev", "", "M1 dev\n"},
      {"pins by number", "@name @#1 @#P:net_name dev @#1:name", "", "M1 b a dev N\n"},
      {"a backslash ends a name", "@name @@P @model\\\\_1", "", "M1 a nch_1\n"},
      {"a property that names a net", "@name @@P @bulk dev", "bulk model", "M1 a D[0] dev\n"},
      {"continuation and a second line", "@name @pinlist dev\n+ w=@w\nC@name @@P 0 1f", "",
       "M1 a b dev w=1\nCM1 a 0 1f\n"},
      {"expressions", "@name @pinlist dev ad=@area", "", "M1 a b dev ad='2 * 1'\n"},
      {"computed by Tcl, hence the ordinary line", "tcleval(@name)", "w area bulk spiceprefix",
       "ZM1 a b nch w=1 area='2 * 1' bulk=D[0]\n"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const NetlistSymbol symbol = {{},
                                  {{"xschem.format", c.format},
                                   {"xschem.extra", c.extra},
                                   {"w", "1"},
                                   {"model", "nch"},
                                   {"area", "\"expr('2 * @w')\""},
                                   {"bulk", "D[0]"},
                                   {"spiceprefix", "Z"}},
                                  {"P", "N"}};
    EXPECT_EQ(bodyOf(oneDevice(symbol, {})), c.expected);
  }
}

TEST(NetlistSpice, FormatThatCannotBeFollowedIsTold) {
  for (const char *format : {"tcleval(@name @pinlist)", "@name @#0 @#Z:net", "@name @ @pinlist", "@name @-1"}) {
    SCOPED_TRACE(format);
    Netlist netlist = oneDevice({{}, {{"xschem.format", format}}}, {});
    netlist.cells.front().devices.push_back(netlist.cells.front().devices.front());
    ImportReport report;
    EXPECT_TRUE(toSpice(netlist, report).contains("\nXM1 a b dev\nXM1_2 a b dev\n"));
    EXPECT_EQ(report.problemCount(), 2);
    EXPECT_TRUE(report.lines().first().contains("2 times: the netlist line of symbol lib/dev cannot be followed"))
        << report.lines().first().toStdString();
  }
}

TEST(NetlistSpice, PropertyThatNothingSetsIsTold) {
  ImportReport report;
  toSpice(oneDevice({}, {{"model", "@kind"}}), report);
  ASSERT_EQ(report.lines().size(), 1);
  EXPECT_TRUE(report.lines().first().contains("lib/top/schematic, device M1, property kind"));
  EXPECT_EQ(report.problemCount(), 0);
}

TEST(NetlistSpice, LongLinesAreContinued) {
  NetlistParameters parameters;
  for (int i = 0; i < 20; ++i)
    parameters.push_back({QString("parameter%1").arg(i), "1"});
  const QString body = QString::fromStdString(bodyOf(oneDevice({}, parameters)));
  QStringList lines = body.trimmed().split('\n');
  EXPECT_GT(lines.size(), 3);
  for (int i = 0; i < lines.size(); ++i) {
    EXPECT_LE(lines[i].size(), 80);
    EXPECT_EQ(lines[i].startsWith("+ "), i > 0) << lines[i].toStdString();
  }
}

TEST(SpiceNames, AreLegalAndDifferWithoutRegardToCase) {
  SpiceNames names;
  const struct {
    const char *name, *expected;
  } cases[] = {{"D<3>", "D[3]"}, {"a", "a"},       {"A", "A_2"},
               {"a", "a_3"},     {"a_2", "a_2_2"}, {"a b=(c)", "a_b__c_"},
               {"*x", "_*x"},    {"", "_"},        {"vccd1.extra", "vccd1.extra"}};
  for (const auto &c : cases)
    EXPECT_EQ(names.unique(c.name).toStdString(), c.expected) << c.name;
}

} // namespace
