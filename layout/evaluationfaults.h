#ifndef EVALUATIONFAULTS_H
#define EVALUATIONFAULTS_H

#include <string>
#include <unordered_map>

#include <QString>

#include <oa/oaDesignDB.h>

// What goes wrong in the evaluators of parametric cells while the object lives. OpenAccess raises nothing then: it
// tells its observers and gives a design that is empty or half drawn.
class EvaluationFaults : public oa::oaPcellObserver {
public:
  EvaluationFaults();

  // What went wrong in the evaluation of this design; empty for a sound one and for designs of other kinds.
  QString ofEvaluation(const oa::oaDesign *design) const;
  // The same or, when there is nothing, what is wrong with the definition in its super master.
  QString ofCell(const oa::oaDesign *design) const;

  void onError(oa::oaDesign *design, const oa::oaString &msg, oa::oaPcellErrorTypeEnum type) override;
  void onPreEval(oa::oaDesign *design, oa::oaPcellDef *pcellDef) override;

private:
  struct Fault {
    // A design may be purged meanwhile, and another have its address.
    std::string identity;
    QString text;
  };

  QString textOf(const oa::oaDesign *design) const;

  // Each evaluation begins anew.
  std::unordered_map<const oa::oaDesign *, Fault> faultByDesign_;
};

#endif
