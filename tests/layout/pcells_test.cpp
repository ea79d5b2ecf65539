// Parametric cells: read with their defaults and as placed, through the entry with parameters, and written back.

#include "layouttest.h"
#include "layoutwalk.h"
#include "testevaluator.h"

#include <stdexcept>

using namespace oa;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

const Lines kContents{"addCell", "addBox", "addCellRef", "addCellRefArray", "endCell", "reportError"};

// MD5 of "w=1.5e-06;m=2;f=0.5;model=nch lvt;on=true;", and the same with m=3.
const char kDefaultHash[] = "372fb8b8f9150060f60f3b109df1971c";
const char kThreeHash[] = "4c6a04417a42a5fd1d092c685eb96056";
// MD5 of "m=2;" and the like.
const char kM1[] = "020e21f2581968638eced15a11da1d6f";
const char kM2[] = "f65fc36a8f53bd93dccb6ac2ebac57da";
const char kM3[] = "8f3180b29ca8256fb64f91b440aab87f";

// One parameter of each type that travels.
oaParamArray everyType() {
  return paramsOf({oaParam("w", oaDouble(1.5e-6)), oaParam("m", oaInt4(2)), oaParam("f", oaFloat(0.5f)),
                   oaParam("model", oaString("nch lvt")), booleanParam("on", true)});
}

oaParamArray justM(oaInt4 m) { return paramsOf({oaParam("m", m)}); }

// m boxes side by side.
void drawBoxes(oaDesign *design, const oaParamArray &params) {
  oaBlock *block = oaBlock::create(design);
  for (int i = 0; i < intValueOf(params, "m"); ++i) {
    oaRect::create(block, 4, 0, oaBox(10 * i, 0, 10 * i + 5, 5));
  }
}

class PcellsTest : public LayoutTest {
protected:
  // A parametric cell, whose own contents never show.
  void createPcell(const std::string &cell, const TestEvaluator &evaluator, const oaParamArray &defaults,
                   const std::string &lib = "lib") {
    CellBuilder builder(lib, cell);
    builder.rect(9, 9, 0, 0, 1, 1);
    evaluator.define(builder.design(), defaults);
  }

  static oaScalarInst *place(const CellBuilder &top, const char *name, const char *cell, const oaParamArray &params,
                             int x = 0, const char *lib = "lib") {
    return oaScalarInst::create(*top, scalar(lib), scalar(cell), scalar("layout"), scalar(name), oaTransform(x, 0),
                                &params);
  }

  TestEvaluator boxes{"boxes", drawBoxes};
};

TEST_F(PcellsTest, MasterIsReadWithItsDefaultsAndANotice) {
  createPcell("pc", boxes, everyType());
  const std::string name = std::string("\"pc~") + kDefaultHash + '"';
  EXPECT_THAT(read("pc"),
              ElementsAre("reportError \"Parametric cell, open with default parameter\" 2 \"lib/pc/layout\"",
                          "setUnits 0.001 1e-09", "addCell " + name, "addCellNumData 1 \"lib\"",
                          "addCellNumData 3 \"pc\"", "addCellNumData 4 \"layout\"", "addCellDataFloat \"w\" 1.5e-06",
                          "addCellDataInt \"m\" 2", "addCellDataFloat \"f\" 0.5", "addCellData \"model\" \"nch lvt\"",
                          "addCellData \"on\" \"true\"", "addBox 0 0 5 5 4 0", "addBox 10 0 5 5 4 0", "endCell",
                          "setCurrentCell " + name));
  EXPECT_EQ(boxes.evaluationCount(), 1);
  EXPECT_EQ(oaDesign::find(scalar("lib"), scalar("pc"), scalar("layout")), nullptr) << "left open";
}

TEST_F(PcellsTest, EachVariantIsACellOfItsOwn) {
  createLib("devices");
  createPcell("pc", boxes, justM(2), "devices");
  {
    const CellBuilder top("lib", "top");
    place(top, "I1", "pc", justM(3), 100, "devices");
    place(top, "I2", "pc", justM(1), 200, "devices");
    place(top, "I3", "pc", justM(3), 300, "devices");
    const oaParamArray one = justM(1);
    oaArrayInst::create(*top, scalar("devices"), scalar("pc"), scalar("layout"), scalar("A"), oaTransform(0, 50), 10,
                        20, 2, 3, &one);
  }
  const int before = boxes.evaluationCount();
  const std::string three = std::string("\"pc~devices~") + kM3 + '"';
  const std::string single = std::string("\"pc~devices~") + kM1 + '"';
  EXPECT_THAT(read("top", kContents),
              ElementsAre("addCell \"top\"",                                                                      //
                          "addCell " + three, "addBox 0 0 5 5 4 0", "addBox 10 0 5 5 4 0", "addBox 20 0 5 5 4 0", //
                          "endCell", "addCellRef " + three + " (100 0) \"\" \"I1\"",                              //
                          "addCell " + single, "addBox 0 0 5 5 4 0", "endCell",                                   //
                          "addCellRef " + single + " (200 0) \"\" \"I2\"",                                        //
                          "addCellRef " + three + " (300 0) \"\" \"I3\"",                                         //
                          "addCellRefArray " + single + " (0 50) 10 20 3 2 \"\" \"A\"", "endCell"));
  EXPECT_EQ(boxes.evaluationCount(), before + 2);
}

// To OpenAccess a value that was given is not the same as a default that was left; to the host it is.
TEST_F(PcellsTest, EqualValuesAreOneCellToTheHost) {
  createPcell("pc", boxes, justM(2));
  {
    const CellBuilder top("lib", "top");
    place(top, "I1", "pc", oaParamArray());
    place(top, "I2", "pc", justM(2));
  }
  const std::string name = std::string("\"pc~") + kM2 + '"';
  EXPECT_THAT(read("top", Lines{"addCell", "addCellRef"}),
              ElementsAre("addCell \"top\"", "addCell " + name, "addCellRef " + name + " (0 0) \"\" \"I1\"",
                          "addCellRef " + name + " (0 0) \"\" \"I2\""));
}

TEST_F(PcellsTest, EvaluatorMayPlaceOtherVariants) {
  createPcell("pc", boxes, justM(2));
  TestEvaluator nested("nested", [](oaDesign *design, const oaParamArray &params) {
    oaBlock *block = oaBlock::create(design);
    const oaInt4 m = intValueOf(params, "m");
    const oaParamArray less = justM(m - 1);
    oaScalarInst::create(block, scalar("lib"), scalar(m > 1 ? "nested" : "pc"), scalar("layout"), scalar("I"),
                         oaTransform(m, 0), m > 1 ? &less : nullptr);
  });
  createPcell("nested", nested, justM(3));
  EXPECT_THAT(read("nested", Lines{"addCell", "endCell", "addCellRef"}),
              ElementsAre(std::string("addCell \"nested~") + kM3 + '"', std::string("addCell \"nested~") + kM2 + '"',
                          std::string("addCell \"nested~") + kM1 + '"', std::string("addCell \"pc~") + kM2 + '"',
                          "endCell", HasSubstr("(1 0)"), "endCell", HasSubstr("(2 0)"), "endCell", HasSubstr("(3 0)"),
                          "endCell"));
}

TEST_F(PcellsTest, CellThatPlacesItselfIsToldAndEndsTheWalk) {
  TestEvaluator endless("endless", [](oaDesign *design, const oaParamArray &) {
    oaScalarInst::create(oaBlock::create(design), scalar("lib"), scalar("endless"), scalar("layout"), scalar("I"),
                         oaTransform(1, 0));
  });
  createPcell("endless", endless, justM(1));
  recorder.answerExistCell([](const QString &) { return false; }); // or else the host ends it
  EXPECT_THAT(read("endless", Lines{"reportError", "endCell"}),
              ElementsAre(HasSubstr("Parametric cell"), HasSubstr("recursive cell reference"), "endCell", "endCell"));
  EXPECT_LE(endless.evaluationCount(), 3);
}

// More variants than the walk keeps open, each met in several cells.
TEST_F(PcellsTest, EveryVariantIsEvaluatedOnce) {
  createPcell("pc", boxes, justM(2));
  const int count = 300;
  for (const char *cell : {"row1", "row2"}) {
    const CellBuilder row("lib", cell);
    for (int i = 0; i < 2 * count; ++i) {
      place(row, ("I" + std::to_string(i)).c_str(), "pc", justM(i % count));
    }
  }
  {
    CellBuilder top("lib", "top");
    top.inst("R1", "row1");
    top.inst("R2", "row2");
  }
  const int before = boxes.evaluationCount();
  EXPECT_EQ(read("top", Lines{"addCellRef"}).size(), 2 + 4u * count);
  EXPECT_EQ(boxes.evaluationCount(), before + count);
  EXPECT_EQ(recorder.lines({"addCell"}).size(), 3u + count);
}

TEST_F(PcellsTest, MissingEvaluatorIsToldAndTheRestIsRead) {
  const struct {
    const char *evaluator, *shown;
  } cases[] = {{"boxes", "boxes"}, {"cnBoxes", "PyCell - cnBoxes"}, {"CNBoxes", "CNBoxes"}, {"c", "c"}};
  boxes.unlink();
  recorder.answerExistCell([](const QString &) { return false; }); // nothing is left from the case before
  for (const auto &c : cases) {
    SCOPED_TRACE(c.evaluator);
    {
      TestEvaluator evaluator(c.evaluator, drawBoxes);
      createPcell("pc", evaluator, justM(2));
      CellBuilder(std::string("lib"), "plain").rect(1, 0, 0, 0, 1, 1);
      CellBuilder top("lib", "top");
      top.rect(2, 0, 0, 0, 1, 1);
      place(top, "I1", "pc", justM(3));
      top.inst("I2", "plain");
    }
    const std::string name = std::string("\"pc~") + kM3 + '"';
    const std::string missing = "reportError \"require OpenAccess-parametric-cell-plugin '" + std::string(c.shown) +
                                "' may not be available, please install it.\" 1 \"lib/pc/layout\"";
    EXPECT_THAT(read("top", kContents),
                ElementsAre("addCell \"top\"", "addBox 0 0 1 1 2 0", "addCell " + name,
                            testing::AllOf(testing::StartsWith("reportError \"no layout data or parametic cell can not "
                                                               "be created\" 1 \""),
                                           HasSubstr("lib/pc/layout")),
                            missing, "endCell", "addCellRef " + name + " (0 0) \"\" \"I1\"", "addCell \"plain\"",
                            "addBox 0 0 1 1 1 0", "endCell", "addCellRef \"plain\" (0 0) \"\" \"I2\"", "endCell"));
    EXPECT_THAT(read("pc", Lines{"setUnits", "addCell", "addCellDataInt", "reportError", "endCell", "setCurrentCell"}),
                ElementsAre(HasSubstr("Parametric cell, open with default parameter"),
                            std::string("addCell \"pc~") + kM2 + '"', "addCellDataInt \"m\" 2",
                            HasSubstr("no layout data or parametic cell"), missing, "endCell",
                            std::string("setCurrentCell \"pc~") + kM2 + '"'));
  }
  boxes.link();
}

TEST_F(PcellsTest, ParametersThatTheMasterHasNoMoreAreToldAndTheRestIsRead) {
  createPcell("pc", boxes, justM(2));
  {
    CellBuilder top("lib", "top");
    place(top, "I1", "pc", justM(3));
    place(top, "I2", "pc", oaParamArray());
  }
  createPcell("pc", boxes, paramsOf({oaParam("n", oaInt4(1))}));
  EXPECT_THAT(
      read("top", Lines{"reportError", "addCellRef"}),
      ElementsAre(testing::StartsWith("reportError \"cell not found\" 1 \"lib/pc/layout: "), HasSubstr("\"I2\"")));
}

// The parameters are stored with the cell, and the variants come back with the evaluator.
TEST_F(PcellsTest, EvaluatorThatComesLaterIsFound) {
  createPcell("pc", boxes, justM(2));
  boxes.unlink();
  EXPECT_THAT(read("pc", Lines{"addBox"}), IsEmpty());
  boxes.link();
  EXPECT_EQ(read("pc", Lines{"addBox"}).size(), 2u);
}

TEST_F(PcellsTest, FailingEvaluatorIsToldWithItsReason) {
  TestEvaluator failing("failing", [](oaDesign *design, const oaParamArray &params) {
    if (intValueOf(params, "m") == 0) {
      throw std::runtime_error("no such device");
    }
    drawBoxes(design, params);
  });
  createPcell("pc", failing, justM(0));
  {
    const CellBuilder top("lib", "top");
    place(top, "I0", "pc", oaParamArray());
    place(top, "I1", "pc", justM(1));
  }
  EXPECT_THAT(
      read("top", Lines{"reportError", "addBox", "addCellRef"}),
      ElementsAre(testing::AllOf(HasSubstr("no layout data"), HasSubstr("lib/pc/layout"), HasSubstr("no such device")),
                  HasSubstr("'failing'"), HasSubstr("\"I0\""), "addBox 0 0 5 5 4 0", HasSubstr("\"I1\"")));
}

// Kits may leave what was drawn before the failure; this one does not.
TEST_F(PcellsTest, HalfDrawnCellIsNotPassedOffAsTheWhole) {
  createPcell("pc", boxes, justM(1));
  EvaluationFaults faults;
  oaDesign *variant = oaDesign::open(scalar("lib"), scalar("pc"), scalar("layout"), oaParamArray());
  faults.onError(variant, "out of memory", oacPcellEvalError);
  recorder.clear();
  LayoutWalk(plugIn, "lib", faults).send(variant, QStringList());
  variant->close();
  EXPECT_THAT(recorder.lines({"reportError", "addBox"}),
              ElementsAre("reportError \"the parametric cell is incomplete, its evaluation failed\" 1 "
                          "\"lib/pc/layout: out of memory\"",
                          "addBox 0 0 5 5 4 0"));
}

TEST_F(PcellsTest, EntryWithParametersReadsOneVariant) {
  createPcell("pc", boxes, everyType());
  const struct {
    const char *name;
    QStringList names, values;
    const char *hash;
    unsigned boxes;
  } cases[] = {
      {"none", {}, {}, kDefaultHash, 2},
      {"one", {"m"}, {"3"}, kThreeHash, 3},
      {"of a name given twice the last counts", {"m", "m"}, {"7", "3"}, kThreeHash, 3},
      {"foreign names", {"x", "m", "M"}, {"1", "3", "9"}, kThreeHash, 3},
      {"names without values", {"m", "w"}, {"3"}, kThreeHash, 3},
  };
  recorder.answerExistCell([](const QString &) { return false; });
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    recorder.clear();
    const QString cell = plugIn.openLayout("lib", "pc", "layout", QString(), c.names, c.values);
    EXPECT_EQ(cell, QString("pc~") + c.hash);
    EXPECT_EQ(recorder.lines({"addBox"}).size(), c.boxes);
    EXPECT_EQ(recorder.lines().front(), "existCell \"" + cell.toStdString() + '"');
    EXPECT_THAT(recorder.lines({"setUnits", "setCurrentCell", "reportError"}), IsEmpty());
  }
  recorder.answerExistCell([](const QString &) { return true; });
  recorder.clear();
  EXPECT_EQ(plugIn.openLayout("lib", "pc", "layout", QString(), {"m"}, {"3"}), QString("pc~") + kThreeHash);
  EXPECT_EQ(recorder.lines().size(), 1u) << "a cell that the host holds is not sent";
}

// Parameters that were given to an instance, "m=3".
Lines givenOf(const oaInst *inst) {
  oaParamArray params;
  inst->getParams(params);
  Lines lines;
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    oaString name;
    params[i].getName(name);
    oaParam own;
    QString value;
    switch (oaParamTypeEnum(params[i].getType())) {
    case oacIntParamType:
      value = QString("int %1").arg(params[i].getIntVal());
      break;
    case oacDoubleParamType:
      value = QString("double %1").arg(params[i].getDoubleVal());
      break;
    case oacFloatParamType:
      value = QString("float %1").arg(double(params[i].getFloatVal()));
      break;
    case oacBooleanParamType:
      value = QString("boolean %1").arg(params[i].getBooleanVal());
      break;
    default:
      value = QString("string ") + params[i].getStringVal();
      break;
    }
    lines.push_back(std::string(name) + ' ' + value.toStdString());
  }
  return lines;
}

TEST_F(PcellsTest, WrittenParametersHaveTheMastersTypes) {
  createPcell("pc", boxes, everyType());
  const QStringList names{"w", "m", "f", "model", "on"};
  beginLayout("top");
  plugIn.saveCellref("lib", "pc", "layout", QPoint(0, 0), "", "all", names, {"2.5e-06", "3", "0.25", "pch", "false"},
                     {}, {});
  plugIn.saveCellref("lib", "pc", "layout", QPoint(0, 0), "", "defaults", names,
                     {"1.50000005e-06", "2", "0.5", "nch lvt", "true"}, {}, {});
  plugIn.saveCellref("lib", "pc", "layout", QPoint(0, 0), "", "twice", {"m", "m"}, {"8", "4"}, {}, {});
  plugIn.saveCellrefArray("lib", "pc", "layout", QPoint(0, 0), "", "array", {"m"}, {"5"}, 100, 100, 2, 2);
  plugIn.saveCellref("lib", "pc", "layout", QPoint(0, 0), "", "foreign", {"x", "m", "y"}, {"1", "6", "2"}, {}, {});
  plugIn.saveClose();
  EXPECT_THAT(reports(), ElementsAre("reportError \"parameters of a cell reference are left out\" 2 "
                                     "\"lib/pc/layout: the cell has no x, y\""));
  const OpenCell top("lib", "top");
  const auto given = [&](const char *name) { return givenOf(oaInst::find(*top, oaSimpleName(scalar(name)))); };
  EXPECT_THAT(given("all"), testing::UnorderedElementsAre("w double 2.5e-06", "m int 3", "f float 0.25",
                                                          "model string pch", "on boolean 0"));
  EXPECT_THAT(given("defaults"), IsEmpty()) << "what the master has anyway follows the master";
  EXPECT_THAT(given("twice"), ElementsAre("m int 4"));
  EXPECT_THAT(given("array"), ElementsAre("m int 5"));
  EXPECT_THAT(given("foreign"), ElementsAre("m int 6"));
}

// Doubles reach the host as floats, in whose texts a default comes back. What is only near it was meant.
TEST_F(PcellsTest, ValuesNearADefaultAreStored) {
  createPcell("pc", boxes, paramsOf({oaParam("w", oaDouble(1.25)), oaParam("v", oaDouble(1.0 / 3))}));
  const struct {
    const char *name;
    const char *value;
    bool isStored;
  } cases[] = {
      {"w", "1.25", false},
      {"w", "1.25000001", true},
      {"w", "1.2500001", true},
      {"v", "0.33333333333333331", false}, // the default itself
      {"v", "0.33333334", false},          // shortest text of its float
      {"v", "0.333333343", false},         // in as many digits as floats have
      {"v", "0.3333333432674408", false},  // the float as a double
      {"v", "0.333333", true},
      {"v", "0.33333333", true},
  };
  beginLayout("top");
  int number = 0;
  for (const auto &c : cases) {
    plugIn.saveCellref("lib", "pc", "layout", QPoint(0, 0), "", QString("I%1").arg(number++), {c.name}, {c.value}, {},
                       {});
  }
  plugIn.saveClose();
  EXPECT_THAT(reports(), IsEmpty());
  const OpenCell top("lib", "top");
  number = 0;
  for (const auto &c : cases) {
    SCOPED_TRACE(std::string(c.name) + " = " + c.value);
    oaParamArray given;
    oaInst::find(*top, oaSimpleName(scalar("I" + std::to_string(number++))))->getParams(given);
    ASSERT_EQ(given.getNumElements(), c.isStored ? 1u : 0u);
    if (c.isStored) {
      EXPECT_EQ(given[0].getDoubleVal(), QString(c.value).toDouble());
    }
  }
}

// Of variants that were closed, others get the addresses.
TEST_F(PcellsTest, FaultsAreNotThoseOfAnEarlierDesign) {
  createPcell("pc", boxes, justM(2));
  createPcell("other", boxes, justM(2));
  boxes.unlink();
  EvaluationFaults faults;
  std::map<const oaDesign *, std::string> cellByDesign;
  bool isReused = false;
  for (int i = 0; i < 20000 && !isReused; ++i) {
    const std::string cell = i % 3 == 0 ? "pc" : "other";
    oaDesign *variant = oaDesign::open(scalar("lib"), scalar(cell), scalar("layout"), justM(i));
    ASSERT_THAT(faults.ofEvaluation(variant).toStdString(), HasSubstr("lib/" + cell + "/layout: evaluator"));
    isReused = cellByDesign.emplace(variant, cell).first->second != cell;
    variant->close();
  }
  EXPECT_TRUE(isReused);
  boxes.link();
}

} // namespace
