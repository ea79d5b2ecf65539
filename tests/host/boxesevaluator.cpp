// The evaluator "boxes", loaded by the kit: m boxes of 100 database units side by side, or none and an error for a
// negative m.

#include <oa/oaDesignDB.h>

#include <cstring>
#include <stdexcept>

using namespace oa;

namespace {

class Boxes : public IPcell {
public:
  void getName(oaString &name) override { name = "boxes"; }
  void onEval(oaDesign *design, oaPcellDef *) override {
    oaParam count;
    if (!design->findParam("m", count) || count.getIntVal() < 0) {
      throw std::runtime_error("m is negative");
    }
    oaBlock *block = oaBlock::create(design);
    for (int i = 0; i < count.getIntVal(); ++i) {
      oaRect::create(block, 4, 0, oaBox(200 * i, 0, 200 * i + 100, 100));
    }
  }
};

} // namespace

extern "C" IPcell *oaCreatePcell(const char *name) {
  static Boxes *const evaluator = new Boxes; // lives as long as the process
  return std::strcmp(name, "boxes") == 0 ? evaluator : nullptr;
}
