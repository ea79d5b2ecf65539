// References to other cells: saveCellref, saveCellrefArray, getInst.

#include "layouttest.h"

using namespace oa;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class CellrefTest : public LayoutTest {
protected:
  void place(const QString &instance, const QString &trans = QString(), const QStringList &terminals = QStringList(),
             const QStringList &nets = QStringList()) {
    plugIn.saveCellref("lib", "leaf", "layout", QPoint(10, -20), trans, instance, {}, {}, terminals, nets);
  }
};

const Lines kReferences{"addCellRef", "addCellRefArray"};

// Orientation texts are read in the other sense than they are sent, quarter turns come back half a turn further.
TEST_F(CellrefTest, OrientationsFollowBothTables) {
  { CellBuilder leaf("lib", "leaf"); }
  const struct {
    const char *saved, *sent;
  } cases[] = {{"", ""},   {"R90", "R270"},   {"R180", "R180"},   {"R270", "R90"},
               {"M", "M"}, {"R90M", "R270M"}, {"R180M", "R180M"}, {"R270M", "R90M"}};
  beginLayout("top");
  Lines expected;
  for (const auto &c : cases) {
    const std::string name = "I" + std::to_string(expected.size());
    place(QString::fromStdString(name), c.saved);
    expected.push_back(std::string("addCellRef \"leaf\" (10 -20) \"") + c.sent + "\" \"" + name + "\"");
  }
  plugIn.saveClose();
  EXPECT_EQ(read("top", kReferences), expected);
}

TEST_F(CellrefTest, NonOrthogonalReferenceIsToldAndPlacedUnrotated) {
  { CellBuilder leaf("lib", "leaf"); }
  beginLayout("top");
  place("I1", "R45");
  plugIn.saveClose();
  EXPECT_THAT(reports(), ElementsAre("reportError \"non orthogonal cell reference is not supported in OpenAccess\" 2 "
                                     "\"I1 of lib/leaf/layout: R45\""));
  EXPECT_THAT(read("top", kReferences), ElementsAre("addCellRef \"leaf\" (10 -20) \"\" \"I1\""));
}

TEST_F(CellrefTest, EmptyNamesAreAutomaticAndNamesInUseAreRefused) {
  { CellBuilder leaf("lib", "leaf"); }
  beginLayout("top");
  place("");
  place("I1");
  place("I1");
  place("");
  plugIn.saveClose();
  EXPECT_THAT(reports(), ElementsAre(HasSubstr("saveCellref: I1 of lib/leaf/layout")));
  const Lines sent = read("top", kReferences);
  EXPECT_EQ(sent.size(), 3u);
  EXPECT_EQ(std::set<std::string>(sent.begin(), sent.end()).size(), 3u);
}

TEST_F(CellrefTest, ArrayKeepsColumnsAndRowsApart) {
  { CellBuilder leaf("lib", "leaf"); }
  beginLayout("top");
  plugIn.saveCellrefArray("lib", "leaf", "layout", QPoint(1, 2), "R180", "A", {}, {}, 10, -20, 3, 2);
  plugIn.saveCellrefArray("lib", "leaf", "layout", QPoint(1, 2), "", "", {}, {}, 10, 20, 1, 1);
  plugIn.saveCellrefArray("lib", "leaf", "layout", QPoint(1, 2), "", "none", {}, {}, 10, 20, 0, 2);
  plugIn.saveClose();
  EXPECT_THAT(reports(), ElementsAre(HasSubstr("none of lib/leaf/layout: 0 columns, 2 rows")));
  EXPECT_THAT(read("top", kReferences), ElementsAre("addCellRefArray \"leaf\" (1 2) 10 -20 3 2 \"R180\" \"A\"",
                                                    HasSubstr("addCellRefArray \"leaf\" (1 2) 10 20 1 1 \"\" \"")));
}

TEST_F(CellrefTest, ConnectionsMakeMissingNetsAndShareThem) {
  { CellBuilder leaf("lib", "leaf"); }
  beginLayout("top", true, {"in"});
  place("I1", "", {"A", "Y"}, {"in", "mid"});
  place("I2", "", {"A", "Y", "Z"}, {"mid", "out"});
  plugIn.saveClose();
  EXPECT_THAT(reports(), ElementsAre(HasSubstr("\"Z of I2 of lib/leaf/layout\"")));
  const OpenCell top("lib", "top");
  Lines connections;
  oaIter<oaInst> insts((*top)->getInsts());
  while (oaInst *inst = insts.getNext()) {
    oaIter<oaInstTerm> instTerms(inst->getInstTerms());
    while (oaInstTerm *instTerm = instTerms.getNext()) {
      oaString instName;
      oaString termName;
      oaString netName;
      inst->getName(oaConvert::ns, instName);
      instTerm->getTermName(oaConvert::ns, termName);
      instTerm->getNet()->getName(oaConvert::ns, netName);
      connections.push_back(std::string(instName) + "." + std::string(termName) + "=" + std::string(netName));
    }
  }
  EXPECT_THAT(connections, testing::UnorderedElementsAre("I1.A=in", "I1.Y=mid", "I2.A=mid", "I2.Y=out"));
  EXPECT_EQ((*top)->getNets().getCount(), 3u);
}

TEST_F(CellrefTest, ParametersOfAnOrdinaryCellAreLeftOutAndTold) {
  { CellBuilder leaf("lib", "leaf"); }
  beginLayout("top");
  plugIn.saveCellref("lib", "leaf", "layout", QPoint(0, 0), "", "I1", {"w"}, {"2"}, {}, {});
  plugIn.saveCellref("lib", "none", "layout", QPoint(0, 0), "", "I2", {"w"}, {"2"}, {}, {});
  plugIn.saveClose();
  EXPECT_THAT(reports(), ElementsAre(HasSubstr("\"lib/leaf/layout: the cell is not parametric\""),
                                     HasSubstr("\"lib/none/layout: ")));
  const OpenCell top("lib", "top");
  EXPECT_EQ((*top)->getInsts().getCount(), 2u);
}

TEST_F(CellrefTest, ViaIsNotWrittenAsAnInstance) {
  beginLayout("top");
  plugIn.saveCellref("lib", "M1_M2", "layout", QPoint(0, 0), "", "M1_M2", {"oaType", "oaViaDefName"},
                     {"oaStdVia", "M1_M2"}, {}, {});
  plugIn.saveClose();
  EXPECT_THAT(reports(), ElementsAre(HasSubstr("M1_M2")));
  EXPECT_TRUE((*OpenCell("lib", "top"))->getInsts().isEmpty());
}

TEST_F(CellrefTest, GetInstAnswersWithTheMasterAndKeepsTheDesign) {
  {
    CellBuilder top("lib", "top");
    top.rect(1, 1, 0, 0, 10, 10);
    top.inst("I1", "leaf");
    top.inst("A[3]", "odd", 0, 0, oacR0, "other", "abstract");
  }
  recorder.clear();
  EXPECT_EQ(plugIn.getInst("lib", "top", "layout", "I1"), "lib/leaf/layout");
  EXPECT_EQ(plugIn.getInst("lib", "top", "layout", "A[3]"), "other/odd/abstract");
  EXPECT_EQ(plugIn.getInst("lib", "top", "layout", "I2"), "");
  EXPECT_EQ(plugIn.currentDesign->getRefCount(), 1u);
  plugIn.saveBox(QRect(QPoint(0, 7), QPoint(3, 0)), 2, 2);
  plugIn.saveClose();
  EXPECT_THAT(reports(), ElementsAre());
  EXPECT_THAT(OpenCell("lib", "top").shapes(), ElementsAre("Rect 1/1 (0 0 10 10)", "Rect 2/2 (0 0 3 7)"));
}

TEST_F(CellrefTest, GetInstOfAMissingDesignIsToldAndCreatesNothing) {
  recorder.clear();
  EXPECT_EQ(plugIn.getInst("lib", "none", "layout", "I1"), "");
  EXPECT_THAT(reports(), ElementsAre(HasSubstr("getInst: I1 in lib/none/layout")));
  EXPECT_FALSE(QFile::exists(QString::fromStdString(pathOf("none"))));
}

} // namespace
