// Labels of pins.

#include "layouttest.h"

using namespace oa;
using testing::ElementsAre;

namespace {

class LabelsTest : public LayoutTest {};

TEST_F(LabelsTest, EveryFigureOfAPinCarriesTheTerminalsName) {
  {
    CellBuilder cell("lib", "cell");
    oaPin *pin = cell.pin("A");
    cell.rect(4, 2, 0, 0, 100, 50)->addToPin(pin);
    cell.rect(5, -1, -11, -11, 0, 0)->addToPin(pin);
    cell.text(6, 1, "A", 30, 40)->addToPin(oaPin::create(pin->getTerm()));
    cell.pin("without_figures");
  }
  EXPECT_THAT(read("cell", Lines{"addText"}),
              ElementsAre("addText \"A\" (30 40) 20 6 1 8 \"\"", "addText \"A\" (50 25) 0 4 2 0 \"\"",
                          "addText \"A\" (-5 -5) 0 5 0 0 \"\"", "addText \"A\" (30 40) 20 6 1 0 \"\""));
}

TEST_F(LabelsTest, LabelsComeAfterTheShapesAndBeforeTheReferences) {
  { CellBuilder leaf("lib", "leaf"); }
  {
    CellBuilder cell("lib", "cell");
    cell.inst("I1", "leaf");
    cell.rect(4, 2, 0, 0, 10, 10)->addToPin(cell.pin("A"));
    cell.rect(4, 2, 20, 0, 30, 10);
  }
  EXPECT_THAT(read("cell", Lines{"addBox", "addText", "addCellRef"}),
              ElementsAre("addBox 0 0 10 10 4 2", "addBox 20 0 10 10 4 2", "addText \"A\" (5 5) 0 4 2 0 \"\"",
                          "addCellRef \"leaf\" (0 0) \"\" \"I1\""));
}

TEST_F(LabelsTest, ProgressLinesNameWhatIsRead) {
  { CellBuilder leaf("lib", "leaf"); }
  {
    CellBuilder cell("lib", "cell");
    cell.rect(4, 2, 0, 0, 10, 10)->addToPin(cell.pin("A"));
    cell.inst("I1", "leaf");
  }
  oaConvert::debug = true;
  testing::internal::CaptureStdout();
  read("cell");
  const std::string printed = testing::internal::GetCapturedStdout();
  oaConvert::debug = false;
  EXPECT_THAT(printed,
              testing::HasSubstr("load cell cell\nbox 4 2,term:  \"A\",need cell lib leaf layout 0\nload cell leaf\n"));
  EXPECT_THAT(printed, testing::HasSubstr("net: \"A\","));
}

} // namespace
