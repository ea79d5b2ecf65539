#ifndef PCELLTEST_H
#define PCELLTEST_H

#include "temporarylibrary.h"

#include <functional>
#include <gmock/gmock.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace pcelltest {

using namespace oa;
using connectivitytest::idRaisedBy;
using connectivitytest::TemporaryLibrary;
using Lines = std::vector<std::string>;

// Draws one rectangle of w by l, and notes what it is asked for. A test may put another drawing in.
class BoxEvaluator : public IPcell {
public:
  using Draw = std::function<void(oaDesign *, const oaParamArray &)>;

  void getName(oaString &name) override { name = "boxes"; }
  void onBind(oaDesign *, oaPcellDef *) override { calls.emplace_back("bind"); }
  void onUnbind(oaDesign *, oaPcellDef *) override { calls.emplace_back("unbind"); }
  void onEval(oaDesign *design, oaPcellDef *) override {
    calls.emplace_back("eval");
    oaParamArray params;
    design->getParams(params);
    draw(design, params);
  }

  static void drawBox(oaDesign *design, const oaParamArray &params) {
    oaParam width, length;
    params.find("w", width);
    params.find("l", length);
    oaRect::create(oaBlock::create(design), 1, 2, oaBox(0, 0, width.getIntVal(), length.getIntVal()));
  }

  Draw draw = drawBox;
  Lines calls;
};

class Errors : public oaPcellObserver {
public:
  Errors() : oaPcellObserver(1) {}
  void onError(oaDesign *design, const oaString &msg, oaPcellErrorTypeEnum type) override {
    texts.emplace_back(msg);
    kinds.push_back(int(type));
    isAboutSubMaster = design != nullptr && design->isSubMaster();
  }
  void onPreEval(oaDesign *, oaPcellDef *) override { ++before; }
  void onPostEval(oaDesign *, oaPcellDef *) override { ++after; }
  Lines texts;
  std::vector<int> kinds;
  bool isAboutSubMaster = false;
  int before = 0, after = 0;
};

// An evaluator "boxes" and, by makeBox(), its super master "box" with w = 10, l = 20 and title = "t".
class Pcells : public TemporaryLibrary {
protected:
  Pcells() : link_(oaPcellLink::create(&boxes_)) {}
  ~Pcells() override {
    std::vector<oaDesign *> open;
    oaIter<oaDesign> designs(oaDesign::getOpenDesigns());
    while (oaDesign *design = designs.getNext()) {
      open.push_back(design);
    }
    for (oaDesign *design : open) {
      if (design->isValid()) {
        design->purge();
      }
    }
    if (link_ != nullptr) {
      link_->destroy();
    }
  }

  static oaParamArray defaults() {
    oaParamArray params;
    params.append(oaParam("w", 10));
    params.append(oaParam("l", 20));
    params.append(oaParam("title", oaString("t")));
    return params;
  }
  template <typename Value> static oaParamArray one(const char *name, Value value) {
    oaParamArray params;
    params.append(oaParam(name, value));
    return params;
  }
  void makeBox(const char *cell = "box") {
    oaDesign *design = open(cell, 'w');
    design->defineSuperMaster(oaPcellLink::getPcellDef("boxes"), defaults());
    design->save();
    design->close();
    boxes_.calls.clear();
  }
  oaDesign *variant(const oaParamArray &params, const char *cell = "box") {
    return oaDesign::open(scalar(libName()), scalar(cell), scalar("layout"), params);
  }
  oaScalarInst *place(oaBlock *block, const char *name, const oaParamArray &params = oaParamArray(),
                      const char *cell = "box") {
    return oaScalarInst::create(block, scalar(libName()), scalar(cell), scalar("layout"), scalar(name), oaTransform(),
                                &params);
  }

  BoxEvaluator boxes_;
  oaPcellLink *link_;
};

inline std::string textOf(const oaParamArray &params) {
  std::string text;
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    oaString name;
    params[i].getName(name);
    text += (i == 0 ? "" : " ") + std::string(name) + "=";
    text += params[i].getType() == oacStringParamType ? std::string(params[i].getStringVal())
                                                      : std::to_string(params[i].getIntVal());
  }
  return text;
}
template <typename Object> std::string paramsOf(const Object *object) {
  oaParamArray params;
  object->getParams(params);
  return textOf(params);
}
template <typename Object> std::string boxOf(const Object *object) {
  oaBox box;
  object->getBBox(box);
  return box.isInverted() ? "none"
                          : std::to_string(box.left()) + " " + std::to_string(box.bottom()) + " " +
                                std::to_string(box.right()) + " " + std::to_string(box.top());
}
inline std::string drawn(const oaDesign *design) {
  const oaBlock *block = design->getTopBlock();
  return block == nullptr ? "no block" : boxOf(block);
}

} // namespace pcelltest

#endif
