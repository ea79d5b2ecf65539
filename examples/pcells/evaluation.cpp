#include "evaluation.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>

using namespace oa;

namespace pcells {

namespace {

std::string textOf(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.10g", value);
  return text;
}

[[noreturn]] void refuse(const std::string &name, const std::string &value, const std::string &expected) {
  throw EvaluationError(name + " is " + value + ", expected " + expected);
}

[[noreturn]] void refuseType(const char *name, const oaParam &param, const char *expected) {
  throw EvaluationError("parameter " + std::string(name) + " is of type " +
                        std::string(static_cast<const oaChar *>(param.getType().getName())) + ", expected " + expected +
                        "Param");
}

} // namespace

oaPoint toPoint(Length x, Length y) {
  const Length farther = std::max(std::abs(x), std::abs(y));
  if (farther > INT_MAX) {
    throw EvaluationError("the figures reach " + std::to_string(farther) +
                          " database units from the origin, expected at most " + std::to_string(INT_MAX));
  }
  return oaPoint(oaCoord(x), oaCoord(y));
}

Length halfOnGrid(Length length, Length grid) { return length / (2 * grid) * grid; }

ContactArray::ContactArray(const ContactRule &rule, const Box &area) {
  const Length pitch = rule.size + rule.spacing;
  columns = std::max<Length>(0, (area.width() - 2 * rule.enclosure + rule.spacing) / pitch);
  rows = std::max<Length>(0, (area.height() - 2 * rule.enclosure + rule.spacing) / pitch);
  left = area.left + halfOnGrid(area.width() - columns * pitch + rule.spacing, rule.grid);
  bottom = area.bottom + halfOnGrid(area.height() - rows * pitch + rule.spacing, rule.grid);
}

Parameters::Parameters(const oaDesign *subMaster) : subMaster_(subMaster) {
  oaTech *const tech = subMaster->getTech();
  oaViewType *const viewType = subMaster->getViewType();
  dbuPerUserUnit_ = tech ? tech->getDBUPerUU(viewType) : oaTech::getDefaultDBUPerUU(viewType);
  grid_ = tech ? std::max<Length>(1, tech->getDefaultManufacturingGrid()) : 1; // 0: the technology has none
}

oaParam Parameters::find(const char *name) const {
  oaParam param;
  if (!subMaster_->findParam(name, param)) {
    throw EvaluationError("parameter " + std::string(name) + " is missing");
  }
  return param;
}

Length Parameters::onGrid(const char *name, double minimum, double maximum, Length grid) const {
  const oaParam param = find(name);
  double given = 0;
  switch (param.getType()) {
  case oacDoubleParamType:
    given = param.getDoubleVal();
    break;
  case oacFloatParamType:
    given = param.getFloatVal();
    break;
  case oacIntParamType:
    given = param.getIntVal();
    break;
  default:
    refuseType(name, param, "double");
  }
  // Something that is there has to be there after rounding too.
  const double gridStep = double(grid) / dbuPerUserUnit_;
  const double least = minimum > 0 ? std::max(minimum, gridStep) : minimum;
  if (!(given >= least)) { // nor is it a number
    refuse(name, textOf(given), "at least " + textOf(least));
  }
  if (given > maximum) {
    refuse(name, textOf(given), "at most " + textOf(maximum));
  }
  return std::llround(given / gridStep) * grid;
}

Length Parameters::length(const char *name, double minimum, double maximum) const {
  return onGrid(name, minimum, maximum, grid_);
}

Length Parameters::evenLength(const char *name, double minimum, double maximum) const {
  return onGrid(name, minimum, maximum, 2 * grid_);
}

int Parameters::count(const char *name, int minimum, int maximum) const {
  const oaParam param = find(name);
  if (param.getType() != oacIntParamType) {
    refuseType(name, param, "int");
  }
  const int given = param.getIntVal();
  if (given < minimum) {
    refuse(name, std::to_string(given), "at least " + std::to_string(minimum));
  }
  if (given > maximum) {
    refuse(name, std::to_string(given), "at most " + std::to_string(maximum));
  }
  return given;
}

bool Parameters::flag(const char *name) const {
  const oaParam param = find(name);
  if (param.getType() == oacIntParamType) {
    return param.getIntVal() != 0;
  }
  if (param.getType() != oacBooleanParamType) {
    refuseType(name, param, "boolean");
  }
  return param.getBooleanVal();
}

std::string Parameters::choice(const char *name, std::initializer_list<const char *> choices) const {
  const oaParam param = find(name);
  if (param.getType() != oacStringParamType) {
    refuseType(name, param, "string");
  }
  std::string given = param.getStringVal();
  std::string expected;
  for (const char *const choice : choices) {
    if (given == choice) {
      return given;
    }
    expected += (expected.empty() ? "" : " or ") + std::string(choice);
  }
  refuse(name, '"' + given + '"', expected);
}

oaLayerNum Parameters::layer(const char *name) const { return oaLayerNum(count(name, 0, INT_MAX)); }

ContactRule Parameters::contactRule(const std::string &kind) const {
  return {layer((kind + "Layer").c_str()), length((kind + "Size").c_str()), length((kind + "Spacing").c_str()),
          length((kind + "Enclosure").c_str(), 0), grid_};
}

std::string Parameters::inUserUnits(Length value) const { return textOf(double(value) / dbuPerUserUnit_); }

void Parameters::requireAtLeast(const char *name, Length value, Length minimum) const {
  if (value < minimum) {
    refuse(name, inUserUnits(value), "at least " + inUserUnits(minimum));
  }
}

void Parameters::requireAtMost(const char *name, Length value, Length maximum) const {
  if (value > maximum) {
    refuse(name, inUserUnits(value), "at most " + inUserUnits(maximum));
  }
}

void Parameters::limitContacts(const std::string &kind, Length count) {
  if (count > kGreatestShapeCount) {
    throw EvaluationError(kind + "Size and " + kind + "Spacing give " + std::to_string(count) +
                          " contacts, expected at most " + std::to_string(kGreatestShapeCount));
  }
}

Drawing::Drawing(oaDesign *subMaster) : block_(oaBlock::create(subMaster)) {
  const oaTech *const tech = subMaster->getTech();
  if (const oaPurpose *const purpose = tech ? oaPurpose::find(tech, "pin") : nullptr) {
    pinPurpose_ = purpose->getNumber();
  }
}

oaRect *Drawing::rect(oaLayerNum layer, const Box &box) {
  return oaRect::create(block_, layer, oavPurposeNumberDrawing,
                        oaBox(toPoint(box.left, box.bottom), toPoint(box.right, box.top)));
}

oaPath *Drawing::path(oaLayerNum layer, Length width, const std::vector<oaPoint> &points) {
  return oaPath::create(block_, layer, oavPurposeNumberDrawing, oaDist(width),
                        oaPointArray(points.data(), oaUInt4(points.size())));
}

void Drawing::contacts(const ContactRule &rule, const Box &area) {
  const ContactArray array(rule, area);
  const Length pitch = rule.size + rule.spacing;
  for (Length row = 0; row < array.rows; ++row) {
    for (Length column = 0; column < array.columns; ++column) {
      const Length left = array.left + column * pitch, bottom = array.bottom + row * pitch;
      rect(rule.layer, {left, bottom, left + rule.size, bottom + rule.size});
    }
  }
}

oaScalarNet *Drawing::net(const char *name) {
  const oaScalarName scalarName(oaNativeNS(), name);
  if (oaScalarNet *const known = oaScalarNet::find(block_, scalarName)) {
    return known;
  }
  oaScalarNet *const created = oaScalarNet::create(block_, scalarName);
  oaScalarTerm::create(created, scalarName);
  return created;
}

void Drawing::pin(const char *netName, oaLayerNum layer, const Box &box) {
  oaRect *const figure = rect(layer, box);
  figure->setPurposeNum(pinPurpose_);
  net(netName);
  figure->addToPin(oaPin::create(oaScalarTerm::find(block_, oaScalarName(oaNativeNS(), netName))));
}

} // namespace pcells
