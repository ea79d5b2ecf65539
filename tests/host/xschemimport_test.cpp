#include "hosterror.h"
#include "hostprocess.h"
#include "schematicconnectivity.h"
#include "xschemdrawing.h"
#include "xschemimporter.h"

#include <gmock/gmock.h>

#include <unistd.h>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

std::string pointsText(const QPolygon &points) {
  QStringList texts;
  for (const QPoint &point : points)
    texts.append(QStringLiteral("%1,%2").arg(point.x()).arg(point.y()));
  return texts.join(QLatin1Char(' ')).toStdString();
}

// The drawing of one line of a file, at four database units: kind, points, colour or expression.
std::string drawn(const QByteArray &line, ImportReport &report) {
  const auto file = parseXschem(line, QStringLiteral("f.sym"), report);
  SchematicModel model;
  const XschemDrawing drawing(*file, 4, report);
  for (const XschemObject &object : file->objects)
    drawing.addShape(object, model);
  const char *const kinds[] = {"rect", "circle", "polygon", "polyline", "arc", "text", "evaluated"};
  std::string text;
  for (const SchematicShape &shape : model.shapes) {
    text +=
        (text.empty() ? "" : "; ") + std::string(kinds[static_cast<int>(shape.kind)]) + ' ' + pointsText(shape.points);
    if (!shape.text.isEmpty())
      text += " \"" + shape.text.toStdString() + "\" " + std::to_string(shape.rotation);
  }
  return text;
}

TEST(XschemDrawing, TurnsObjectsIntoShapes) {
  const struct {
    const char *name, *line, *expected;
  } cases[] = {
      {"line, y upwards", "L 4 0 10 5 -2.5 {}", "polyline 0,-40 20,10"},
      {"box", "B 4 0 0 10 5 {}", "rect 0,0 40,-20"},
      {"filled polygon", "P 4 4 0 0 5 0 5 5 0 0 {fill=true}", "polygon 0,0 20,0 20,-20"},
      {"open polygon", "P 4 4 0 0 5 0 5 5 0 0 {}", "polyline 0,0 20,0 20,-20 0,0"},
      {"circle", "A 4 10 0 5 90 360 {}", "circle 20,-20 60,20"},
      {"text from its left end", "T {ab} 0 0 0 0 0.2 0.2 {}", "text 0,-22 \"ab\" 0"},
      {"text to its right end", "T {ab} 0 0 0 1 0.2 0.2 {}", "text -14,-22 \"ab\" 0"},
      {"text above its origin", "T {ab} 0 0 2 1 0.2 0.2 {}", "text 0,10 \"ab\" 0"},
      {"text downwards is turned", "T {ab} 0 0 1 0 0.2 0.2 {}", "text -10,-14 \"ab\" 90"},
      {"text upwards", "T {ab} 0 0 3 0 0.2 0.2 {}", "text 22,0 \"ab\" 90"},
      {"centred text", "T {ab} 0 0 0 0 0.2 0.2 {hcenter=true vcenter=true}", "text -7,-6 \"ab\" 0"},
      {"lines of a text", "T {a\n\nb} 0 0 0 0 0.2 0.2 {}", "text 0,-22 \"a\" 0; text 0,-86 \"b\" 0"},
      {"expression", "T {@name} 0 0 0 0 0.2 0.2 {}", "evaluated 0,-22 \"@name\" 0"},
      {"mail address", "T {a@ b} 0 0 0 0 0.2 0.2 {}", "text 0,-22 \"a@ b\" 0"},
      {"hidden text", "T {a} 0 0 0 0 1 1 {hide=true}", ""},
      {"no length", "L 4 0 0 0 0 {}", ""},
      {"too far outside", "L 4 0 0 1e300 0 {}", ""},
      {"arc too far outside", "A 4 0 0 1e300 0 90 {}", ""},
      {"strange layer", "B 1e300 0 0 10 5 {}", "rect 0,0 40,-20"},
  };
  for (const auto &c : cases) {
    ImportReport report;
    EXPECT_EQ(drawn(c.line, report), c.expected) << c.name;
    EXPECT_EQ(report.problemCount(), std::string(c.name).find("too far") != std::string::npos) << c.name;
  }
}

TEST(XschemDrawing, ArcsRunAnticlockwiseAsDrawn) {
  ImportReport report;
  const std::string quarter = drawn("A 4 0 0 25 0 90 {}", report);
  EXPECT_EQ(quarter.find("polyline 100,0 "), 0u) << quarter;
  EXPECT_THAT(quarter, AllOf(HasSubstr(" 71,71 "), testing::EndsWith(" 0,100")));
  EXPECT_THAT(drawn("A 4 0 0 25 90 -90 {}", report), AllOf(HasSubstr("polyline 0,100 "), testing::EndsWith(" 100,0")));
  EXPECT_EQ(report.lines(), QStringList());
}

TEST(XschemDrawing, PointsBetweenDatabaseUnitsAreToldOnce) {
  ImportReport report;
  EXPECT_EQ(drawn("L 4 0.25 0 0.1 1 {}\nL 4 0 0.3 0 1 {}", report), "polyline 1,0 0,-4; polyline 0,-1 0,-4");
  EXPECT_EQ(report.lines().join('|').toStdString(),
            "2 times: a point between database units is rounded (first: f.sym:1, (0.1, 1))");
}

TEST(XschemDrawing, WhatCannotBeDrawnIsTold) {
  const struct {
    const char *line, *told;
  } cases[] = {
      {"B 4 0 0 10 5 {fill=true}", "a filled box or circle is drawn as its outline (f.sym:1)"},
      {"A 4 0 0 5 0 360 {fill=full}", "a filled box or circle is drawn as its outline (f.sym:1)"},
      {"A 4 0 0 5 0 90 {fill=true}", ""},
      {"B 4 0 0 10 5 {fill=false}", ""},
      {"L 4 0 0 10 5 {lock=true\nhide=true}",
       "attribute lock of a shape is left out (f.sym:1)|attribute hide of a shape is left out (f.sym:1)"},
      {"B 4 0 0 10 5 {flags=graph y1=0 x2=3 fill=true}", "a graph or picture is drawn as its frame (f.sym:1)"},
      {"T {a} 0 0 0 0 1 1 {floater=x1 font=Arial layer=4}",
       "attribute floater of a text is left out (f.sym:1)|texts have one size and font (f.sym:1)"},
  };
  for (const auto &c : cases) {
    ImportReport report;
    EXPECT_NE(drawn(c.line, report), "") << c.line;
    EXPECT_EQ(report.lines().join('|').toStdString(), c.told) << c.line;
  }
}

// Files in a folder of their own and what becomes of them.
class XschemImport : public testing::Test {
protected:
  HostProcess folder;
  ImportReport report;
  XschemImportOptions options;
  std::unique_ptr<XschemImporter> importer;

  void write(const char *name, const QByteArray &text) {
    QFileInfo(folder.path(name)).dir().mkpath(QStringLiteral("."));
    folder.write(name, "v {xschem version=3.1.0 file_version=1.2}\n" + text);
  }
  void import(const QStringList &inputs) {
    options.library = QStringLiteral("lib");
    options.inputs.clear();
    for (const QString &input : inputs)
      options.inputs.append(folder.path(input));
    importer = std::make_unique<XschemImporter>(options, report);
    importer->run([](qint64, qint64) {});
  }
  const SchematicModel &schematic(const QString &cell) {
    for (const XschemCellSchematic &schematic : importer->schematics()) {
      if (schematic.cell == cell)
        return schematic.model;
    }
    throw std::runtime_error("no schematic " + cell.toStdString());
  }
  const SymbolModel &symbol(const QString &cell) { return *importer->symbolTable().value("lib/" + cell); }
  std::string symbolNames() {
    QStringList names;
    for (const XschemSymbol *symbol : importer->symbols())
      names.append(symbol->cell);
    return names.join(' ').toStdString();
  }
  // "A: x1.P x2.P; B: x1.Q", with globals marked.
  std::string nets(const QString &cell) {
    const SchematicModel &model = schematic(cell);
    const SchematicConnectivity found = findConnectivity(model, importer->symbolTable());
    EXPECT_EQ(found.problems, QStringList());
    QStringList texts;
    for (const SchematicNet &net : found.nets) {
      QString text = net.name + (net.isGlobal ? QStringLiteral("!:") : QStringLiteral(":"));
      for (const int terminal : net.terminals) {
        const PlacedTerminal &placed = found.terminals[static_cast<size_t>(terminal)];
        text += ' ' + model.placements[static_cast<size_t>(placed.placement)].name + '.' + placed.terminal;
      }
      texts.append(text);
    }
    return texts.join("; ").toStdString();
  }
  std::string told() { return report.lines().join('\n').replace(folder.path("") + '/', "").toStdString(); }
};

const QByteArray kTwoPins =
    "K {type=subcircuit\nformat=\"@name @pinlist\"\ntemplate=\"name=x1 w=\\\\\"2 u\\\\\" m=1\"}\n"
    "B 5 -12.5 -2.5 -7.5 2.5 {name=P dir=in name=p1}\n"
    "B 5 17.5 -12.5 22.5 -7.5 {name=Q[1:0] dir=out}\nL 4 -10 0 20 -10 {}\n"
    "T {@name} 0 0 0 0 0.2 0.2 {}\n";

TEST_F(XschemImport, SymbolHasPinsDrawingAndProperties) {
  write("two.sym", kTwoPins + "B 5 -1 -1 1 1 {name=B}\nB 5 0 0 1 1 {}\nN 0 0 5 0 {}\n");
  import({"two.sym"});
  const SymbolModel &model = symbol("two");
  QStringList ports, data;
  for (const SchematicPort &port : model.ports)
    ports.append(
        QStringLiteral("%1 %2,%3 %4").arg(port.name).arg(port.position.x()).arg(port.position.y()).arg(port.type));
  EXPECT_EQ(ports.join('|').toStdString(), "P -40,0 input|Q<1:0> 80,40 output|B 0,0 input output");
  for (const auto &[name, value] : model.data)
    data.append(name + '=' + value);
  EXPECT_EQ(data.join('|').toStdString(), "xschem.header=xschem version=3.1.0 file_version=1.2|xschem.type=subcircuit|"
                                          "xschem.format=@name @pinlist|w=2 u|m=1");
  EXPECT_EQ(model.shapes.size(), 4u);
  EXPECT_EQ(report.problemCount(), 0) << told();
}

// Numbers for simulation order the pins when each has one.
TEST_F(XschemImport, PinsHaveTheOrderOfTheirNumbers) {
  const QByteArray a = "B 5 -1 -1 1 1 {name=A dir=in sim_pinnumber=10 goto=1}\n";
  const QByteArray b = "B 5 -1 9 1 11 {name=B dir=in sim_pinnumber=9 verilog_type=reg}\n";
  const QByteArray c = "B 5 -1 19 1 21 {name=C dir=out goto=2}\n";
  write("all.sym", a + b);
  write("some.sym", a + b + c);
  import({"all.sym", "some.sym"});
  const auto pins = [&](const char *cell) {
    QString names;
    for (const SchematicPort &port : symbol(cell).ports)
      names += port.name;
    return names.toStdString();
  };
  EXPECT_EQ(pins("all"), "BA");
  EXPECT_EQ(pins("some"), "ABC");
  EXPECT_EQ(told(), "3 times: attribute goto of a pin is left out (first: all.sym:2)\n"
                    "2 times: attribute verilog_type of a pin is left out (first: all.sym:3)\n"
                    "not every pin of a symbol has a number in sim_pinnumber, the pins keep their order (some.sym:2)");
}

// The pin at (20, -10) goes where xschem draws it: flipped left to right first, then turned clockwise.
TEST_F(XschemImport, PlacementsAreFlippedAndTurned) {
  write("two.sym", kTwoPins);
  const QPoint xschemPlaces[2][4] = {{{20, -10}, {10, 20}, {-20, 10}, {-10, -20}},
                                     {{-20, -10}, {10, -20}, {20, 10}, {-10, 20}}};
  for (int flip = 0; flip < 2; ++flip) {
    for (int rotation = 0; rotation < 4; ++rotation) {
      write("s.sch", QStringLiteral("C {two.sym} 100 200 %1 %2 {name=x1}\n").arg(rotation).arg(flip).toUtf8());
      import({"s.sch"});
      const auto terminals = findConnectivity(schematic("s"), importer->symbolTable()).terminals;
      const QPoint place = QPoint(100, 200) + xschemPlaces[flip][rotation];
      ASSERT_EQ(terminals.size(), 2u);
      EXPECT_EQ(terminals[1].position, QPoint(4 * place.x(), -4 * place.y())) << rotation << ' ' << flip;
    }
  }
}

TEST_F(XschemImport, PortsLabelsAndWiresBecomeNets) {
  write("two.sym", kTwoPins);
  write("s.sch", "N 0 0 40 0 {lab=wrong}\nN 20 0 20 50 {lab=wrong}\nN 110 -10 160 -10 {lab=B[1:0]}\nN 0 7 0 7 {}\n"
                 "C {devices/ipin.sym} 0 0 0 0 {name=p1 lab=A}\n"
                 "C {two.sym} 30 50 0 0 {name=x1 model=m\nw=3}\nC {two.sym} 90 0 0 0 {name=x2[3:0]}\n"
                 "C {two.sym} 300 0 0 0 {name=x3}\n"
                 "C {devices/lab_pin.sym} 40 0 0 0 {name=l1 sig_type=std_logic lab=A}\n"
                 "C {lab_wire.sym} 80 0 0 0 {name=l2 lab=A}\n"
                 "C {devices/opin.sym} 160 -10 0 0 {name=p2 lab=Q[7:0]}\n"
                 "C {devices/vdd.sym} 290 0 0 0 {name=l3}\nC {devices/gnd.sym} 500 0 0 0 {name=l4}\n"
                 "C {devices/iopin.sym} 500 0 0 0 {name=p5 lab=0}\n"
                 "C {devices/lab_pin.sym} 600 0 0 0 {name=l5 lab=VSS global=true}\n"
                 "C {devices/noconn.sym} 320 -10 0 0 {name=l6}\nC {devices/title.sym} 0 0 0 0 {name=l7 author=me}\n");
  import({"s.sch"});
  EXPECT_EQ(nets("s"), "A: x1.P x2.P; Q<7:0>: x2.Q<1:0>; VDD!: x3.P; 0!:; VSS!:");
  const SchematicModel &model = schematic("s");
  EXPECT_TRUE(model.wires[2].isBus && !model.wires[1].isBus);
  EXPECT_EQ(model.wires.size(), 3u);
  EXPECT_EQ(model.placements[0].data, (std::vector<QPair<QString, QString>>{{"model", "m"}, {"w", "3"}}));
  EXPECT_TRUE(model.placements[1].isVector);
  EXPECT_EQ(model.data.back(), (QPair<QString, QString>("xschem.title.l7", "name=l7 author=me")));
  EXPECT_EQ(symbolNames(), "two");
  EXPECT_EQ(report.problemCount(), 0);
  EXPECT_THAT(told(), AllOf(HasSubstr("a wire without length is left out (s.sch:5)"),
                            HasSubstr("the mark of an open end is left out (s.sch:18)")));
}

TEST_F(XschemImport, DotsStandWhereWiresMeet) {
  write("s.sch", "N 0 0 40 0 {}\nN 20 0 20 9 {}\n"                  // one ends on the other
                 "N 0 20 5 20 {}\nN 5 20 5 30 {}\nN 5 20 9 20 {}\n" // three ends
                 "N 0 40 5 40 {}\nN 5 40 5 50 {}\n"                 // a corner
                 "N 0 70 40 70 {}\nN 20 60 20 80 {}\n"              // a crossing
                 "N 100 0 110 0 {}\nN 100 0 200 0 {}\nN 150 0 150 5 {}\n");
  import({"s.sch"});
  const std::vector<QPoint> &dots = schematic("s").wireDots;
  EXPECT_EQ(pointsText(QPolygon(QVector<QPoint>(dots.begin(), dots.end()))), "80,0 20,-80 440,0 600,0");
}

TEST_F(XschemImport, ParasiticCapacitorIsADevice) {
  write("s.sch", "N 0 0 10 0 {}\nC {devices/lab_pin.sym} 0 0 0 0 {lab=A}\n"
                 "C {devices/parax_cap.sym} 10 10 0 0 {name=C1 value=5f}\n");
  import({"s.sch"});
  EXPECT_EQ(nets("s"), "A: C1.p");
  EXPECT_EQ(symbolNames(), "parax_cap");
}

TEST_F(XschemImport, FindsSymbolsAsReferencesSay) {
  const QByteArray pin = "B 5 -1 -1 1 1 {name=A dir=in}\n";
  for (const char *name : {"top/mine/beside.sym", "top/above.sym", "top/mine/other/whole.sym", "elsewhere/whole.sym",
                           "elsewhere/parts.sym", "top/used/devices/nmos4.sym"}) {
    write(name, pin);
  }
  // A label symbol of another library, whose pin is not at its origin.
  write("elsewhere/power.sym", "K {type=label global=1 template=\"name=l1 lab=VPP\"}\nB 5 9 -1 11 1 {name=p dir=in}\n");
  write("top/mine/s.sch", "C {beside.sym} 0 0 0 0 {name=x1}\nC {above} 10 0 0 0 {name=x2}\n"
                          "C {other/whole.sym} 20 0 0 0 {name=x3}\nC {a/b/parts.sym} 30 0 0 0 {name=x4}\n"
                          "C {used/devices/nmos4.sym} 40 0 0 0 {name=x5}\nC {power.sym} 50 0 0 1 {}\n");
  options.symbolDirectories = QStringList{folder.path("elsewhere")};
  import({"top/mine"});
  EXPECT_EQ(report.problemCount(), 0) << told();
  EXPECT_EQ(symbolNames(), "beside whole above parts nmos4");
  EXPECT_EQ(schematic("s").ports.at(0).name, "VPP");
  EXPECT_EQ(schematic("s").ports.at(0).position, QPoint(160, 0));
}

TEST_F(XschemImport, UnknownSymbolsAreToldAndPlaced) {
  write("broken.sym", "");
  folder.write("broken.sym", QByteArray("\0\0", 2));
  write("s.sch", "C {missing.sym} 0 0 0 0 {name=x1 w=1}\nC {missing.sym} 9 0 0 0 {name=x2}\n"
                 "C {broken.sym} 0 0 0 0 {name=x3}\nC {gen.tcl(3)} 0 0 0 0 {name=x4}\nC {sub.sch} 0 0 0 0 {name=x5}\n"
                 "C {../../../../../../../../../../etc/passwd} 0 0 0 0 {name=x6}\n");
  import({"s.sch"});
  EXPECT_EQ(schematic("s").placements.size(), 6u);
  EXPECT_EQ(schematic("s").placements[0].device, "missing");
  EXPECT_EQ(symbolNames(), "");
  EXPECT_EQ(report.problemCount(), 7);
  EXPECT_THAT(told(), AllOf(HasSubstr("2 times: symbol missing.sym is placed without terminals: there is no such file"),
                            HasSubstr("(first: s.sch:2)"), HasSubstr("its name is a program"),
                            HasSubstr("broken.sym cannot be read")));
}

TEST_F(XschemImport, EmbeddedSymbolsServeTheWholeFile) {
  write("s.sch", "C {two.sym} 0 0 0 0 {name=x1 embed=true}\nC {two.sym} 30 -10 0 0 {name=x2 embed=true}\n[\n" +
                     kTwoPins + "]\nN 20 -10 20 0 {}\nN 20 -10 20 -20 {}\n");
  import({"s.sch"});
  EXPECT_EQ(symbolNames(), "two");
  const auto problems = findConnectivity(schematic("s"), importer->symbolTable()).problems;
  ASSERT_EQ(problems.size(), 1);
  EXPECT_THAT(problems[0].toStdString(), HasSubstr("Q<1:0> of placement x1 at (20, -10) has 2 bits"));
  EXPECT_EQ(report.problemCount(), 0) << told();
}

TEST_F(XschemImport, ProblemsOfTheConnectivityTellTheirPlace) {
  write("two.sym", kTwoPins);
  write("s.sch", "C {two.sym} 680 200 0 0 {name=x4}\nC {devices/lab_pin.sym} 700 190 0 0 {lab=E[0:3]}\n"
                 "N 0 0 12.5 0 {lab=A locked=1}\nC {devices/ipin.sym} 0 0 0 0 {lab=A}\n"
                 "C {devices/lab_pin.sym} 12.5 0 0 0 {lab=B}\nC {gone.sym} 0 50 0 0 {name=x5}\n");
  import({"s.sch"});
  QStringList problems = findConnectivity(schematic("s"), importer->symbolTable()).problems;
  EXPECT_EQ(problems.replaceInStrings(folder.path(""), "").join('|').toStdString(),
            "/s.sch:7: the symbol lib/gone of placement x5 is missing: it has no terminals to connect|"
            "/s.sch:6: net A is also called B by the label at (12.5, 0)|"
            "/s.sch:2: terminal Q<1:0> of placement x4 at (700, 190) has 2 bits, but net E<0:3> has 4");
  EXPECT_THAT(told(), HasSubstr("attribute locked of a wire is left out (s.sch:4)"));
}

// The library has characters of eight bits: names stay different, and other texts are told.
TEST_F(XschemImport, CharactersBeyondLatin1AreTold) {
  write("p.sym", "K {type=res\ntemplate=\"name=x1 w=2\u03A9\"}\nB 5 -1 -1 1 1 {name=\u03A9 dir=in}\n"
                 "B 5 9 -1 11 1 {name=\u0394[1:0] dir=in}\n");
  write("s.sch", "T {10 k\u03A9} 0 0 0 0 1 1 {}\nC {p.sym} 0 0 0 0 {name=x\u0394 value=5\u03A9}\n"
                 "C {p.sym} 0 50 0 0 {name=x\u03A9 value=5\u00B5}\n"
                 "C {devices/lab_pin.sym} 0 0 0 0 {lab=\u03A9}\nC {devices/lab_pin.sym} 0 50 0 0 {lab=\u0394}\n"
                 "C {devices/title.sym} 0 0 0 0 {name=l1 author=\U0001D49C}\n");
  import({"s.sch"});
  EXPECT_EQ(nets("s"), "_u03A9: x_u0394._u03A9; _u0394: x_u03A9._u03A9");
  EXPECT_EQ(symbol("p").ports[1].name, "_u0394<1:0>");
  EXPECT_EQ(report.problemCount(), 4);
  const std::string lost = "characters that are not in Latin-1 become \"?\" (first: s.sch:2, \"10 k\u03A9\")";
  EXPECT_THAT(told(), AllOf(HasSubstr(lost), HasSubstr("(first: p.sym:4, \"\u03A9\" becomes _u03A9)")));
}

TEST_F(XschemImport, OneCellHasOneSymbolAndOneSchematic) {
  write("a/two.sym", kTwoPins);
  write("b/two.sym", "");
  folder.write("b/two.sym", "v {another remark file_version=1.2}\n" + kTwoPins);
  write("a/s.sch", "N 0 0 1 0 {}\n");
  write("b/s.sch", "N 0 0 1 0 {}\n");
  import({"a", "b"});
  EXPECT_EQ(report.problemCount(), 0) << told();
  EXPECT_EQ(importer->symbols().size() + importer->schematics().size(), 2u);
  write("b/two.sym", kTwoPins + "L 4 0 0 1 1 {}\n");
  write("b/s.sch", "N 0 0 2 0 {}\n");
  import({"a", "b"});
  EXPECT_EQ(report.problemCount(), 2);
  EXPECT_THAT(told(), AllOf(HasSubstr("cell two has a symbol from a/two.sym already; the one of b/two.sym is left out"),
                            HasSubstr("cell s has a schematic from a/s.sch already; the one of b/s.sch is left out")));
}

TEST_F(XschemImport, DirectoriesAreWalkedOnceWhateverTheLinks) {
  write("a/b/two.sym", kTwoPins);
  ASSERT_EQ(symlink(".", folder.path("a/b/self").toLocal8Bit().constData()), 0);
  ASSERT_EQ(symlink("../..", folder.path("a/b/up").toLocal8Bit().constData()), 0);
  ASSERT_EQ(symlink("loop.sch", folder.path("a/loop.sch").toLocal8Bit().constData()), 0);
  import({"a", "a/b", "a/b/two.sym"});
  EXPECT_EQ(symbolNames(), "two");
  EXPECT_EQ(told(), "texts have one size and font (a/b/two.sym:8)\n"
                    "is no ordinary file; it is left out (a/loop.sch)");
}

TEST_F(XschemImport, SchematicsOfPlacedSymbolsAreReadWhenWanted) {
  write("two.sym", kTwoPins);
  write("leaf.sym", kTwoPins);
  write("two.sch", "C {leaf.sym} 0 0 0 0 {name=x1}\n");
  write("leaf.sch", "C {leaf.sym} 0 0 0 0 {name=x1}\n");
  write("top.sch", "C {two.sym} 0 0 0 0 {name=x1}\n");
  import({"top.sch"});
  EXPECT_EQ(importer->schematics().size(), 1u);
  options.isRecursive = true;
  import({"top.sch"});
  EXPECT_EQ(importer->schematics().size(), 3u);
  EXPECT_EQ(symbolNames(), "two leaf");
}

TEST_F(XschemImport, OldSymbolsHaveTheirAttributesInG) {
  folder.write("old.sym", "G {type=subcircuit template=\"name=x1 w=1\"}\nB 5 -1 -1 1 1 {name=A dir=in}\n");
  write("code.sch", "G {entity}\nV {assign a = b;\n}\nN 0 0 1 0 {}\n");
  import({"."});
  EXPECT_EQ(symbol("old").data, (std::vector<QPair<QString, QString>>{{"xschem.type", "subcircuit"}, {"w", "1"}}));
  EXPECT_EQ(schematic("code").data[1], (QPair<QString, QString>("xschem.vhdl", "entity")));
  EXPECT_EQ(schematic("code").data[2], (QPair<QString, QString>("xschem.verilog", "assign a = b;")));
}

TEST_F(XschemImport, ExampleIsConnectedAsItsReadmeSays) {
  options.inputs = QStringList{QStringLiteral(EXAMPLES_DIR "/smallschematic")};
  options.library = QStringLiteral("lib");
  importer = std::make_unique<XschemImporter>(options, report);
  importer->run([](qint64, qint64) {});
  EXPECT_EQ(report.problemCount(), 0) << told();
  EXPECT_EQ(nets("inv"), "A: M2.G M1.G; Y: M2.D M1.D; VDD!: M2.S M2.B; 0!: M1.S M1.B");
  EXPECT_EQ(nets("inv4"), "A<3:0>: xinv.A; Y<3:0>: xinv.Y");
  EXPECT_EQ(nets("top"), "D<3:0>:; EN:; Q<3:0>: xsecond.Y<3:0>; PAD: xpad.Y; EN,D<2:0>: xfirst.A<3:0>; "
                         "T<3:0>: xfirst.Y<3:0> xsecond.A<3:0>; Q<0>: xpad.A");
}

TEST_F(XschemImport, InputsHaveToBeThere) {
  write("text.txt", "");
  QDir(folder.path("")).mkdir("empty");
  for (const char *input : {"missing.sch", "text.txt", "empty"})
    EXPECT_THROW(import({input}), HostError) << input;
}

// From here on through the command and the plug-in, into a library on disk.
class ImportXschemCommand : public XschemImport {
protected:
  HostResult run(const QStringList &inputs, const QStringList &options = {}) {
    return folder.run(QStringList{"import-xschem"} + inputs + QStringList{"--lib", "lib", "--path", "libdir"} +
                      options);
  }
};

TEST_F(ImportXschemCommand, ExampleComesBackAsSignals) {
  const HostResult result = run({QStringLiteral(EXAMPLES_DIR "/smallschematic")});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(result.output, "library lib: 4 symbols, 3 schematics, 6 placements, 9 ports, 21 wires, 13 nets\n");
  EXPECT_EQ(folder.run("cells lib").output, "inv\ninv4\nnmos\npmos\ntop\n");
  const HostResult top = folder.run("read lib top schematic");
  EXPECT_EQ(top.exitCode, 0) << top.errors;
  for (const char *text : {"\"xfirst\"", "\"EN,D<2:0>\"", "\"Q<3:0>\"", "\"PAD\""})
    EXPECT_THAT(top.output.toStdString(), HasSubstr(text));
  const HostResult inv4 = folder.run("read lib inv4 schematic");
  EXPECT_THAT(inv4.output.toStdString(), HasSubstr("\"xinv"));
}

TEST_F(ImportXschemCommand, ViewsThatExistAreKeptUnlessReplaced) {
  write("two.sym", kTwoPins);
  write("s.sch", "C {two.sym} 0 0 0 0 {name=x1}\n");
  ASSERT_EQ(run({"s.sch"}).exitCode, 0);
  const HostResult again = run({"s.sch"});
  EXPECT_EQ(again.exitCode, 1);
  EXPECT_THAT(again.errors, HasSubstr("lib/s/schematic exists already; --replace writes over it"));
  EXPECT_EQ(run({"s.sch"}, {"--replace"}).exitCode, 0);
  write("t.sch", "C {two.sym} 0 0 0 0 {name=x1}\n");
  const HostResult other = run({"t.sch"});
  EXPECT_EQ(other.exitCode, 0);
  EXPECT_THAT(other.errors, HasSubstr("a placed symbol is in the library already and stays as it is there (two)"));
  EXPECT_EQ(other.output, "library lib: 0 symbols, 1 schematic, 1 placement, 0 ports, 0 wires, 0 nets\n");
}

TEST_F(ImportXschemCommand, FaultyFilesLeaveTheOthers) {
  write("good.sch", "N 0 0 10 0 {}\nL 4 0 0 bad 1 {}\nC {missing.sym} 0 0 0 0 {name=x1}\n");
  folder.write("bad.sch", QByteArray("\0", 1));
  const HostResult result = run({"."});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, AllOf(HasSubstr("bad.sch:1"), HasSubstr("good.sch:3, found \"bad\""),
                                   HasSubstr("symbol missing.sym is placed without terminals")));
  EXPECT_EQ(result.output, "library lib: 0 symbols, 1 schematic, 1 placement, 0 ports, 1 wire, 1 net\n");
  EXPECT_EQ(folder.run("import-xschem bad.sch --lib other --path otherdir").exitCode, 1);
  EXPECT_FALSE(QFileInfo::exists(folder.path("otherdir"))); // nothing to write, no library
}

} // namespace
