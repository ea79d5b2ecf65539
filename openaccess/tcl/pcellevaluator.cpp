// The evaluator of parametric cells that are scripts.

#include "oa/oaTclPcell.h"

#include "confinedinterp.h"
#include "numbertext.h"
#include "oa/oaDesign.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace OpenAccess_4 {
namespace tcl {

namespace {

constexpr char kEngine[] = "oaTclEngine";
constexpr double kUsualSeconds = 10;
constexpr double kMostSecondsOfCell = 60;
constexpr double kMostSeconds = 3600;
constexpr char kTimeLimitVariable[] = "OA_PCELL_TIME_LIMIT";

std::string dataOf(oaPcellDef &def, const char *name) {
  oaString value;
  return def.getDataValue(name, value) ? std::string(value, value.getLength()) : std::string();
}

// Raises PcellScriptError for what is no number of seconds; `most` for more than that.
double readSeconds(const std::string &text, const std::string &what, double most) {
  const char *end = nullptr;
  const double seconds = kit::numberIn(text.c_str(), &end);
  if (end == text.c_str() || *end != '\0' || !std::isfinite(seconds) || seconds <= 0) {
    throw PcellScriptError(what + ": expected a number of seconds above 0, but got \"" + text + "\"");
  }
  return std::min(seconds, most);
}

// Whoever runs the program decides before whoever made the cell.
double timeLimitSeconds(oaPcellDef &def) {
  if (const char *text = std::getenv(kTimeLimitVariable)) {
    if (std::strcmp(text, "0") == 0) {
      throw PcellScriptError(std::string("scripts are switched off by ") + kTimeLimitVariable + "=0");
    }
    return readSeconds(text, kTimeLimitVariable, kMostSeconds);
  }
  const std::string text = dataOf(def, "TimeLimit");
  return text.empty() ? kUsualSeconds : readSeconds(text, "TimeLimit", kMostSecondsOfCell);
}

class ScriptedPcell : public IPcell {
public:
  explicit ScriptedPcell(const char *name) : name_(name) {}
  void getName(oaString &name) override { name = name_; }

  void onEval(oaDesign *design, oaPcellDef *def) override {
    const std::string engine = dataOf(*def, "ScriptEngineName");
    if (!engine.empty() && engine != kEngine) {
      throw PcellScriptError("its script is for the engine \"" + engine + "\", but there is only \"" + kEngine + "\"");
    }
    const std::string script = dataOf(*def, "GenCellProc");
    if (script.empty()) {
      throw PcellScriptError("it has no script: its data have no \"GenCellProc\"");
    }
    const double seconds = timeLimitSeconds(*def);
    ConfinedInterp(design).run(script, seconds);
  }

private:
  const char *name_;
};

} // namespace

} // namespace tcl
} // namespace OpenAccess_4

namespace oaTcl {

OpenAccess_4::IPcell *oaTclPcell::get(const char *name) {
  // Never destroyed: designs that are open at the end of the process still refer to them.
  using OpenAccess_4::tcl::ScriptedPcell;
  static ScriptedPcell *const evaluators[] = {new ScriptedPcell("tclPcell"), new ScriptedPcell("oaPcellScript")};
  for (ScriptedPcell *evaluator : evaluators) {
    OpenAccess_4::oaString own;
    evaluator->getName(own);
    if (name != nullptr && own == name) {
      return evaluator;
    }
  }
  return nullptr;
}

} // namespace oaTcl
