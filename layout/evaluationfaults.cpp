#include "evaluationfaults.h"

#include "designidentity.h"
#include "oaconvert.h"

using namespace oa;

namespace {

// Among other observers the order does not matter.
const oaUInt4 kPriority = 1;

} // namespace

EvaluationFaults::EvaluationFaults() : oaPcellObserver(kPriority) {}

QString EvaluationFaults::textOf(const oaDesign *design) const {
  const auto found = faultByDesign_.find(design);
  return found == faultByDesign_.end() || found->second.identity != identityOf(design) ? QString() : found->second.text;
}

QString EvaluationFaults::ofEvaluation(const oaDesign *design) const {
  return design->isSubMaster() ? textOf(design) : QString();
}

QString EvaluationFaults::ofCell(const oaDesign *design) const {
  const QString text = ofEvaluation(design);
  return text.isEmpty() && design->isSubMaster() ? textOf(design->getSuperMaster()) : text;
}

// The first fault is the cause of those that follow. Some come without a design, and none of those is a cell's.
void EvaluationFaults::onError(oaDesign *design, const oaString &msg, oaPcellErrorTypeEnum) {
  if (!design) {
    return;
  }
  Fault &fault = faultByDesign_[design];
  std::string identity = identityOf(design);
  if (fault.text.isEmpty() || fault.identity != identity) {
    fault.identity = std::move(identity);
    fault.text = oaConvert::toString(msg);
  }
}

void EvaluationFaults::onPreEval(oaDesign *design, oaPcellDef *) { faultByDesign_.erase(design); }
