#ifndef TESTEVALUATOR_H
#define TESTEVALUATOR_H

#include <functional>
#include <memory>
#include <string>

#include <oa/oaDesignDB.h>

// An evaluator of parametric cells that a test writes as a function. It is linked as long as it lives.
class TestEvaluator : public oa::IPcell {
public:
  typedef std::function<void(oa::oaDesign *design, const oa::oaParamArray &params)> Draw;

  TestEvaluator(const char *name, Draw draw) : name_(name), draw_(std::move(draw)) { link(); }
  ~TestEvaluator() override { unlink(); }

  // What was defined in the meantime finds no evaluator when it is opened.
  void unlink() {
    if (link_) {
      link_->destroy();
      link_ = nullptr;
    }
  }
  void link() { link_ = oa::oaPcellLink::create(this); }

  int evaluationCount() const { return evaluationCount_; }

  // Makes the design a super master of this evaluator.
  void define(oa::oaDesign *design, const oa::oaParamArray &defaults) const {
    design->defineSuperMaster(oa::oaPcellLink::getPcellDef(name_.c_str()), defaults);
  }

  void getName(oa::oaString &name) override { name = name_.c_str(); }
  void onEval(oa::oaDesign *design, oa::oaPcellDef *) override {
    ++evaluationCount_;
    oa::oaParamArray params;
    design->getParams(params);
    draw_(design, params);
  }

private:
  std::string name_;
  Draw draw_;
  oa::oaPcellLink *link_ = nullptr;
  int evaluationCount_ = 0;
};

inline oa::oaParam booleanParam(const char *name, bool value) {
  oa::oaParam param;
  param.setName(name);
  param.setBooleanVal(value);
  return param;
}

inline oa::oaInt4 intValueOf(const oa::oaParamArray &params, const char *name) {
  oa::oaParam param;
  return params.find(name, param) ? param.getIntVal() : 0;
}

inline oa::oaParamArray paramsOf(std::initializer_list<oa::oaParam> list) {
  oa::oaParamArray params;
  for (const oa::oaParam &param : list) {
    params.append(param);
  }
  return params;
}

#endif
