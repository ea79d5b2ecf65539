// Opening a schematic: the order of the stream, what the plug-in keeps, and designs that are not what they should be.

#include <QFile>

#include "schematictest.h"

using namespace oa;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

class ReaderTest : public SchematicTest {
protected:
  static QString fileOf(const char *cell) { return folder().filePath(QString("lib/%1/schematic/sch.oa").arg(cell)); }

  static QByteArray bytesOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  static void writeBytes(const QString &path, const QByteArray &bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
  }

  // A schematic with something in every table that the reader looks at.
  static void buildFull(const char *cell) {
    SchematicBuilder schematic(cell, "schematic", SchematicBuilder::schematic);
    const oaPoint ends[] = {{0, 0}, {10, 0}};
    for (int i = 0; i < 8; ++i) {
      const oaScalarName name = scalar("N" + std::to_string(i));
      oaNet *net = oaNet::create(*schematic, name);
      oaLine::create(*schematic, 228, 1, oaPointArray(ends, 2))->addToNet(net);
      oaRect::create(*schematic, 229, 1, oaBox(0, 0, 16, 16))
          ->addToPin(oaPin::create(oaTerm::create(net, name), oaUInt4(0)));
      oaStringProp::create(oaRect::create(*schematic, 231, 1, oaBox(0, 0, 5, 5)), "color", "red");
      oaText::create(*schematic, 228, 1, "label", oaPoint(0, 0), oacLowerLeftTextAlign, oacR0, oacStickFont, 12);
      oaInst *inst = oaScalarInst::create(*schematic, scalar("lib"), scalar("inv"), scalar("symbol"),
                                          scalar("I" + std::to_string(i)), oaTransform(0, 0));
      oaIntProp::create(inst, "m", i);
      oaInstTerm::create(net, inst, oaName(scalar("A")));
    }
    oaNet *bus = oaNet::create(*schematic, oaName(oaConvert::ns, "D[0:3]"));
    oaNet *bundle = oaNet::create(*schematic, oaName(oaConvert::ns, "N0,D[1:2],2*N1"));
    oaLine::create(*schematic, 228, 1, oaPointArray(ends, 2))->addToNet(bundle);
    oaInst *iterated = oaVectorInst::create(*schematic, scalar("lib"), scalar("inv"), scalar("symbol"), scalar("X"), 0,
                                            3, oaTransform(0, 0));
    oaInstTerm::create(bus, iterated, oaName(scalar("A")));
  }
};

TEST_F(ReaderTest, CellThenInstancesThenShapes) {
  {
    SchematicBuilder schematic("top", "schematic", SchematicBuilder::schematic);
    oaRect::create(*schematic, 231, 1, oaBox(0, 0, 10, 5));
    oaScalarInst::create(*schematic, scalar("lib"), scalar("inv"), scalar("symbol"), scalar("I1"), oaTransform(7, 8));
  }
  EXPECT_THAT(read("top"), ElementsAre("addCellNumData 1 \"lib\"", "addCellNumData 3 \"top\"",
                                       "addCellNumData 4 \"schematic\"", "addPlacement \"inv\" \"lib.oa\" (7 8) \"\"",
                                       "setDataString \"devicename\" \"I1\"", "addRect (0 0) (10 5) \"deviceColor\""));
  ASSERT_NE(plugIn.currentDesign, nullptr);
  EXPECT_FALSE(plugIn.currentDesign->isValid());
  EXPECT_EQ(plugIn.currentBlock, nullptr);
}

TEST_F(ReaderTest, LibraryIsOpenedAtThePathGiven) {
  const QString path = folder().filePath("away");
  oaLib *lib = oaLib::create(scalar("away"), oaConvert::toOaPath(path));
  {
    SchematicBuilder schematic("top", "schematic", SchematicBuilder::schematic, "away");
    oaRect::create(*schematic, 231, 1, oaBox(0, 0, 10, 5));
  }
  lib->close();
  plugIn.openSchematic("away", "top", "schematic", path);
  EXPECT_THAT(recorder.lines({"addRect", "reportError"}), ElementsAre("addRect (0 0) (10 5) \"deviceColor\""));
}

TEST_F(ReaderTest, WhatCannotBeOpenedIsPrintedAndReported) {
  const struct {
    const char *name, *lib, *cell;
  } cases[] = {{"unknown library", "nolib", "top"}, {"unknown cell", "lib", "nocell"}};
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    recorder.clear();
    const std::string printed = printedBy([&] { plugIn.openSchematic(c.lib, c.cell, "schematic", ""); });
    EXPECT_THAT(printed, AllOf(StartsWith("ERROR (openSchematic): "), HasSubstr(c.lib), testing::EndsWith(" \n")));
    const std::string path = std::string(c.lib) + "/" + c.cell + "/schematic";
    EXPECT_THAT(recorder.lines(), ElementsAre(AllOf(StartsWith("reportError"), HasSubstr(path))));
  }
}

// A text for the user leaves the operation, and nothing stays open behind it.
TEST_F(ReaderTest, DesignWithoutBlockIsThrownAsText) {
  oaDesign *design = oaDesign::open(scalar("lib"), scalar("hollow"), scalar("schematic"),
                                    oaViewType::get(oaReservedViewType(oacSchematic)), 'w');
  design->save();
  design->close();
  QString thrown;
  const std::string printed = printedBy([&] {
    try {
      read("hollow");
    } catch (const QString &text) {
      thrown = text;
    }
  });
  EXPECT_EQ(thrown, QString("no data"));
  EXPECT_THAT(printed, IsEmpty());
  EXPECT_EQ(oaDesign::find(scalar("lib"), scalar("hollow"), scalar("schematic")), nullptr);
  EXPECT_EQ(plugIn.currentBlock, nullptr);
}

// A read takes the place of a design that was left open for writing, but not of one that others read.
TEST_F(ReaderTest, DesignLeftOpenForWritingIsGivenUp) {
  buildFull("top");
  plugIn.saveLayout("lib", "half", "layout", true, QStringList(), QStringList());
  plugIn.saveBox(QRect(QPoint(0, 5), QPoint(5, 0)), 1, 1);
  read("top");
  EXPECT_THAT(reports(), ElementsAre(HasSubstr("lib/half/layout")));
  EXPECT_EQ(oaDesign::find(scalar("lib"), scalar("half"), scalar("layout")), nullptr);

  const OpenView other("top");
  read("top");
  read("top");
  EXPECT_THAT(reports(), IsEmpty());
  EXPECT_EQ(other->getRefCount(), 1U);
  plugIn.saveBox(QRect(QPoint(0, 5), QPoint(5, 0)), 1, 1);
  EXPECT_THAT(reports(), ElementsAre(HasSubstr("no design is open for writing")));
}

// What the host does inside a slot is its own walk and does not disturb this one.
TEST_F(ReaderTest, SlotMayReadAnotherSchematic) {
  buildFull("inner");
  buildFull("outer");
  const size_t alone = read("outer").size();
  bool isNested = false;
  recorder.onSignal([&](const std::string &signalName) {
    if (signalName == "addPlacement" && !isNested) {
      isNested = true;
      plugIn.openSchematic("lib", "inner", "schematic", "");
    }
  });
  EXPECT_EQ(read("outer").size(), 2 * alone);
}

// A design that somebody else has open is theirs, before, during and after a read.
TEST_F(ReaderTest, DesignsOfOthersAreLeftAlone) {
  buildFull("top");
  oaDesign *other = oaDesign::open(scalar("lib"), scalar("top"), scalar("schematic"), 'a');
  const oaUInt4 shapes = other->getTopBlock()->getShapes().getCount();
  recorder.onSignal([&](const std::string &signalName) {
    if (signalName == "addPlacement") {
      plugIn.saveWireDot(QPoint(0, 0), -1);
    }
  });
  read("top");
  EXPECT_THAT(reports(), testing::Each(HasSubstr("no design is open for writing")));
  EXPECT_EQ(other->getTopBlock()->getShapes().getCount(), shapes);
  recorder.onSignal(nullptr);
  recorder.clear();
  plugIn.saveLayout("lib", "x", "layout", true, QStringList(), QStringList());
  plugIn.saveClose();
  read("top");
  plugIn.saveSymbol("lib", "x", "symbol");
  plugIn.saveClose();
  ASSERT_TRUE(other->isValid());
  EXPECT_EQ(other->getRefCount(), 1U);
  EXPECT_THAT(reports(), IsEmpty());
  other->close();
}

TEST_F(ReaderTest, SlotMayBeginAnotherDesign) {
  buildFull("top");
  const Lines whole = read("top");
  bool hasBegun = false;
  recorder.onSignal([&](const std::string &signalName) {
    if (signalName == "addPlacement" && !hasBegun) {
      hasBegun = true;
      plugIn.saveSchematic("lib", "written", "schematic");
    }
  });
  EXPECT_EQ(read("top"), whole);
  plugIn.saveGlobalPort("VDD");
  plugIn.saveClose();
  EXPECT_THAT(reports(), IsEmpty());
  const OpenView written("written");
  EXPECT_EQ((*written)->getNets().getCount(), 1U);
}

// Whatever was damaged is told; what arrives nevertheless is complete lines of the undamaged schematic.
TEST_F(ReaderTest, DamagedFilesAreToldAndNeverCrash) {
  buildFull("top");
  const QByteArray good = bytesOf(fileOf("top"));
  ASSERT_GT(good.size(), 1000);
  const Lines whole = read("top");

  const auto expectTold = [&](const QByteArray &bytes) {
    writeBytes(fileOf("top"), bytes);
    Lines lines;
    const std::string printed = printedBy([&] {
      try {
        lines = read("top");
      } catch (const QString &text) {
        lines = {"reportError", text.toStdString()};
      }
    });
    if (lines != whole && printed.empty()) {
      EXPECT_THAT(lines, testing::Contains(StartsWith("reportError")));
    }
    EXPECT_LT(printed.size(), 100000U);
  };
  for (int length = 0; length < good.size(); length += 97) {
    SCOPED_TRACE("cut to " + std::to_string(length) + " bytes");
    expectTold(good.left(length));
  }
  for (int offset = 0; offset < good.size(); offset += 23) {
    SCOPED_TRACE("flipped at " + std::to_string(offset));
    QByteArray bytes = good;
    bytes[offset] = char(bytes[offset] ^ 0x5a);
    expectTold(bytes);
  }
  writeBytes(fileOf("top"), good);
  EXPECT_EQ(read("top"), whole);
}

} // namespace
