#include "evaluatortest.h"

#include "samplecells.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <stdexcept>

namespace evaluatortest {

namespace {

const oaNativeNS kNames;

oaScalarName nameOf(const std::string &text) { return oaScalarName(kNames, text.c_str()); }

std::string textOf(const oaBox &box) {
  return std::to_string(box.left()) + ' ' + std::to_string(box.bottom()) + ' ' + std::to_string(box.right()) + ' ' +
         std::to_string(box.top());
}

std::string layerOf(const oaDesign *design, const oaShape *shape) {
  const oaTech *const tech = design->getTech();
  const oaLayer *const layer = tech ? oaLayer::find(tech, shape->getLayerNum()) : nullptr;
  if (!layer) {
    return std::to_string(shape->getLayerNum());
  }
  oaString name;
  layer->getName(name);
  return std::string(name);
}

oaPointArray pointsOf(const oaShape *shape) {
  oaPointArray points;
  if (shape->getType() == oacPathType) {
    static_cast<const oaPath *>(shape)->getPoints(points);
    return points;
  }
  oaBox box;
  shape->getBBox(box);
  return oaPointArray(box);
}

std::string textOf(const oaShape *shape) {
  if (shape->getType() == oacRectType) {
    oaBox box;
    shape->getBBox(box);
    return textOf(box);
  }
  if (shape->getType() != oacPathType) {
    return std::string(shape->getType().getName());
  }
  const oaPointArray points = pointsOf(shape);
  std::string text = std::to_string(static_cast<const oaPath *>(shape)->getWidth()) + " wide:";
  for (oaUInt4 i = 0; i < points.getNumElements(); ++i) {
    text += (i == 0 ? " " : ", ") + std::to_string(points[i].x()) + ' ' + std::to_string(points[i].y());
  }
  return text;
}

template <typename Action> void forEachShape(const oaDesign *design, Action action) {
  oaIter<oaShape> shapes(design->getTopBlock()->getShapes());
  while (const oaShape *const shape = shapes.getNext()) {
    action(shape);
  }
}

struct Point {
  double x, y;
};
using Outline = std::array<Point, 4>;

Outline outlineOf(const oaPoint &begin, const oaPoint &end, double width) {
  const double dx = end.x() - begin.x(), dy = end.y() - begin.y();
  const double scale = width / 2 / std::hypot(dx, dy), nx = -dy * scale, ny = dx * scale;
  return {{{begin.x() + nx, begin.y() + ny},
           {end.x() + nx, end.y() + ny},
           {end.x() - nx, end.y() - ny},
           {begin.x() - nx, begin.y() - ny}}};
}

double distanceToEdge(const Point &point, const Point &begin, const Point &end) {
  const double dx = end.x - begin.x, dy = end.y - begin.y;
  const double along = ((point.x - begin.x) * dx + (point.y - begin.y) * dy) / (dx * dx + dy * dy);
  const double t = std::clamp(along, 0.0, 1.0);
  return std::hypot(begin.x + t * dx - point.x, begin.y + t * dy - point.y);
}

// From the corners of one to the edges of the other: the least distance of outlines that do not cross.
double cornerDistance(const Outline &corners, const Outline &edges) {
  double least = std::numeric_limits<double>::infinity();
  for (const Point &corner : corners) {
    for (std::size_t i = 0; i < edges.size(); ++i) {
      least = std::min(least, distanceToEdge(corner, edges[i], edges[(i + 1) % edges.size()]));
    }
  }
  return least;
}

} // namespace

oaParamArray defaultsOf(const std::string &evaluator) {
  for (const samples::Cell &cell : samples::cells()) {
    if (evaluator == cell.evaluator) {
      return cell.defaults;
    }
  }
  throw std::logic_error("no sample cell has the evaluator " + evaluator);
}

std::map<std::string, std::multiset<std::string>> shapesByLayer(const oaDesign *design) {
  std::map<std::string, std::multiset<std::string>> layers;
  forEachShape(design, [&](const oaShape *shape) {
    if (!shape->hasPin()) {
      layers[layerOf(design, shape)].insert(textOf(shape));
    }
  });
  return layers;
}

std::multiset<std::string> pinsOf(const oaDesign *design) {
  std::multiset<std::string> pins;
  forEachShape(design, [&](const oaShape *shape) {
    if (shape->hasPin()) {
      oaString name;
      shape->getPin()->getTerm()->getName(kNames, name);
      pins.insert(std::string(name) + ' ' + layerOf(design, shape) + ' ' + textOf(shape));
    }
  });
  return pins;
}

std::vector<int> coordinatesOf(const oaDesign *design) {
  std::vector<int> coordinates;
  forEachShape(design, [&](const oaShape *shape) {
    const oaPointArray points = pointsOf(shape);
    for (oaUInt4 i = 0; i < points.getNumElements(); ++i) {
      coordinates.push_back(points[i].x());
      coordinates.push_back(points[i].y());
    }
    if (shape->getType() == oacPathType) {
      coordinates.push_back(int(static_cast<const oaPath *>(shape)->getWidth() / 2));
    }
  });
  return coordinates;
}

double leastGapOfPath(const oaDesign *design) {
  std::vector<Outline> segments;
  forEachShape(design, [&](const oaShape *shape) {
    if (shape->getType() == oacPathType) {
      const oaPointArray points = pointsOf(shape);
      for (oaUInt4 i = 0; i + 1 < points.getNumElements(); ++i) {
        segments.push_back(outlineOf(points[i], points[i + 1], static_cast<const oaPath *>(shape)->getWidth()));
      }
    }
  });
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < segments.size(); ++i) {
    for (std::size_t j = i + 3; j < segments.size(); ++j) {
      least = std::min({least, cornerDistance(segments[i], segments[j]), cornerDistance(segments[j], segments[i])});
    }
  }
  return least;
}

EvaluatorTest::EvaluatorTest() : oaPcellObserver(1) {
  oaDesignInit();
  std::string pattern = (std::filesystem::temp_directory_path() / "pcells-XXXXXX").string();
  folder_ = ::mkdtemp(pattern.data());
  lib_ = oaLib::create(nameOf(folder_.filename()), (folder_ / "lib").c_str());
}

EvaluatorTest::~EvaluatorTest() {
  for (oaIter<oaDesign> designs(oaDesign::getOpenDesigns()); oaDesign *const design = designs.getNext();) {
    ADD_FAILURE() << "a design was left open";
    design->purge();
  }
  if (tech_) {
    tech_->purge();
  }
  lib_->close();
  std::filesystem::remove_all(folder_);
}

void EvaluatorTest::makeTechnology(oaUInt4 dbuPerUserUnit, oaDist manufacturingGrid) {
  tech_ = oaTech::create(lib_);
  tech_->setDBUPerUU(oaViewType::get(oacMaskLayout), dbuPerUserUnit);
  if (manufacturingGrid) {
    tech_->setDefaultManufacturingGrid(manufacturingGrid);
  }
  oaPurpose::create(tech_, "pin", 1);
  const char *const layers[] = {"nwell", "active", "poly", "contact", "metal1", "via1", "metal2"};
  oaLayerNum number = samples::kNwell;
  for (const char *const layer : layers) {
    oaPhysicalLayer::create(tech_, layer, number++);
  }
}

void EvaluatorTest::defineSuperMaster(const std::string &evaluator, const oaParamArray &defaults) {
  oaDesign *const design = oaDesign::open(nameOf(folder_.filename()), nameOf(evaluator), nameOf("layout"),
                                          oaViewType::get(oacMaskLayout), 'w');
  design->defineSuperMaster(oaPcellLink::getPcellDef(evaluator.c_str()), defaults);
  design->save();
  design->close();
}

oaDesign *EvaluatorTest::openSubMaster(const std::string &evaluator, const oaParamArray &params) {
  return oaDesign::open(nameOf(folder_.filename()), nameOf(evaluator), nameOf("layout"), params);
}

oaDesign *EvaluatorTest::evaluate(const std::string &evaluator, const oaParamArray &params) {
  defineSuperMaster(evaluator, defaultsOf(evaluator));
  return openSubMaster(evaluator, params);
}

void EvaluatorTest::onError(oaDesign *, const oaString &message, oaPcellErrorTypeEnum) {
  errors_.emplace_back(message);
}

} // namespace evaluatortest
