#ifndef EVALUATORTEST_H
#define EVALUATORTEST_H

#include <oa/oaDesignDB.h>

#include <filesystem>
#include <gtest/gtest.h>
#include <initializer_list>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace evaluatortest {

using namespace oa;

inline oaParamArray array(std::initializer_list<oaParam> params) {
  return oaParamArray(params.begin(), oaUInt4(params.size()));
}

inline oaParam boolean(const char *name, bool value) {
  oaParam param;
  param.setName(name);
  param.setBooleanVal(value);
  return param;
}

oaParamArray defaultsOf(const std::string &evaluator);

/// Layer names, or numbers without a technology, and the shapes on them that are not in pins: boxes of rectangles,
/// "2000 wide: x y, x y" of paths.
std::map<std::string, std::multiset<std::string>> shapesByLayer(const oaDesign *design);

/// "A metal1 0 0 10 10" for each figure of a pin.
std::multiset<std::string> pinsOf(const oaDesign *design);

/// Of all corners and points.
std::vector<int> coordinatesOf(const oaDesign *design);

/// Between any two segments of the only path that have at least two others between them, in database units. Segments
/// end where the centre line bends; mitres reach no farther towards others than they do.
double leastGapOfPath(const oaDesign *design);

/// A library of its own for each test, gone afterwards. Each evaluation has a super master of the evaluator's name.
class EvaluatorTest : public testing::Test, private oaPcellObserver {
protected:
  EvaluatorTest();
  ~EvaluatorTest() override;

  /// Layers as makepcells names them, and a purpose "pin".
  void makeTechnology(oaUInt4 dbuPerUserUnit = 1000, oaDist manufacturingGrid = 0);
  void defineSuperMaster(const std::string &evaluator, const oaParamArray &defaults);
  oaDesign *openSubMaster(const std::string &evaluator, const oaParamArray &params);
  /// With the defaults of the sample cells.
  oaDesign *evaluate(const std::string &evaluator, const oaParamArray &params);

  const std::vector<std::string> &errors() const { return errors_; }
  std::vector<std::string> takeErrors() { return std::exchange(errors_, {}); }
  const std::filesystem::path &folder() const { return folder_; }
  oaLib *lib() const { return lib_; }

private:
  void onError(oaDesign *design, const oaString &message, oaPcellErrorTypeEnum type) override;

  std::filesystem::path folder_;
  oaLib *lib_;
  oaTech *tech_ = nullptr;
  std::vector<std::string> errors_;
};

} // namespace evaluatortest

#endif
