// The program makepcells, run as a user runs it.

#include "evaluatortest.h"

#include "samplecells.h"

#include <cstdlib>
#include <fstream>
#include <gmock/gmock.h>
#include <sstream>
#include <sys/wait.h>

namespace {

using namespace evaluatortest;
using testing::HasSubstr;
using testing::IsEmpty;

class MakePcells : public EvaluatorTest {
protected:
  // The words hold nothing that the shell would change.
  int run(const std::string &arguments) {
    const std::string output = folder() / "output.txt";
    const int status =
        std::system(("cd " + folder().string() + " && " MAKEPCELLS " " + arguments + " >" + output + " 2>&1").c_str());
    std::ostringstream text;
    text << std::ifstream(output).rdbuf();
    output_ = text.str();
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  const std::string &output() const { return output_; }

private:
  std::string output_;
};

// Every variant is drawn, and none on top of another.
TEST_F(MakePcells, TestChipShowsAllVariants) {
  ASSERT_EQ(run("--lib sample --path sample"), 0) << output();
  EXPECT_EQ(output(), "library sample is in sample\n");
  const oaNativeNS names;
  const oaScalarName libName(names, "sample");
  oaLib *const sample = oaLib::open(libName, (folder() / "sample").c_str());
  oaDesign *const chip = oaDesign::open(libName, oaScalarName(names, "testchip"), oaScalarName(names, "layout"), 'r');
  std::vector<oaBox> boxes;
  std::set<oaDesign *> masters;
  oaIter<oaInst> insts(chip->getTopBlock()->getInsts());
  while (oaInst *const inst = insts.getNext()) {
    oaString name;
    inst->getName(names, name);
    SCOPED_TRACE(std::string(name));
    oaDesign *const master = inst->getMaster();
    ASSERT_TRUE(master && master->getTopBlock());
    masters.insert(master);
    oaBox box;
    inst->getBBox(box);
    for (const oaBox &other : boxes) {
      EXPECT_FALSE(box.overlaps(other));
    }
    boxes.push_back(box);
  }
  EXPECT_EQ(masters.size(), 12U);
  EXPECT_THAT(errors(), IsEmpty());
  chip->close();
  EXPECT_FALSE(oaTech::find(libName)) << "it is open for the designs alone";
  sample->close();
}

TEST_F(MakePcells, SaysWhatIsWrong) {
  const struct {
    const char *arguments;
    int exitCode;
    const char *message;
  } cases[] = {
      {"--help", 0, "--path DIR REQUIRED"},
      {"--lib sample", 2, "--path is required"},
      {"--lib sample --path lib", 1, "makepcells: lib is there already"},
      {"--lib sample --path no/where", 1, "no/where"},
      {"--lib a/b --path new", 1, "makepcells: "},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.arguments);
    EXPECT_EQ(run(c.arguments), c.exitCode);
    EXPECT_THAT(output(), HasSubstr(c.message));
  }
}

} // namespace
