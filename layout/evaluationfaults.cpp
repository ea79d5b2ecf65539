#include "evaluationfaults.h"

#include "oaconvert.h"

using namespace oa;

namespace {

// Among other observers the order does not matter.
const oaUInt4 kPriority = 1;

} // namespace

EvaluationFaults::EvaluationFaults() : oaPcellObserver(kPriority) {}

QString EvaluationFaults::textOf(const oaDesign *design) const {
  const auto found = textByDesign_.find(design);
  return found == textByDesign_.end() ? QString() : found->second;
}

QString EvaluationFaults::ofEvaluation(const oaDesign *design) const {
  return design->isSubMaster() ? textOf(design) : QString();
}

QString EvaluationFaults::ofCell(const oaDesign *design) const {
  const QString text = ofEvaluation(design);
  return text.isEmpty() && design->isSubMaster() ? textOf(design->getSuperMaster()) : text;
}

// The first fault is the cause of those that follow.
void EvaluationFaults::onError(oaDesign *design, const oaString &msg, oaPcellErrorTypeEnum) {
  textByDesign_.emplace(design, oaConvert::toString(msg));
}

void EvaluationFaults::onPreEval(oaDesign *design, oaPcellDef *) { textByDesign_.erase(design); }
