#include "layouttest.h"

#include <sstream>
#include <stdexcept>

using namespace oa;

CellBuilder::CellBuilder(const std::string &lib, const std::string &cell, const std::string &view)
    : lib_(lib), design_(oaDesign::open(scalar(lib), scalar(cell), scalar(view), oaViewType::get(oacMaskLayout), 'w')),
      block_(oaBlock::create(design_)) {}

CellBuilder::~CellBuilder() {
  design_->save();
  design_->close();
}

oaRect *CellBuilder::rect(int layer, int purpose, int left, int bottom, int right, int top) {
  return oaRect::create(block_, oaLayerNum(layer), oaPurposeNum(purpose), oaBox(left, bottom, right, top));
}

oaScalarInst *CellBuilder::inst(const std::string &name, const std::string &cell, int x, int y, oaOrient orient,
                                const std::string &lib, const std::string &view) {
  return oaScalarInst::create(block_, scalar(lib.empty() ? lib_ : lib), scalar(cell), scalar(view), scalar(name),
                              oaTransform(x, y, orient));
}

oaText *CellBuilder::text(int layer, int purpose, const std::string &text, int x, int y) {
  return oaText::create(block_, oaLayerNum(layer), oaPurposeNum(purpose), text.c_str(), oaPoint(x, y),
                        oacLowerLeftTextAlign, oacR0, oacStickFont, 20);
}

oaPin *CellBuilder::pin(const std::string &name) {
  oaNet *net = oaScalarNet::create(block_, scalar(name));
  return oaPin::create(oaTerm::create(net, oaName(scalar(name))));
}

OpenCell::OpenCell(const std::string &lib, const std::string &cell)
    : design_(oaDesign::open(scalar(lib), scalar(cell), scalar("layout"), 'r')) {}

namespace {

std::string textOf(const oaPointArray &points) {
  std::ostringstream text;
  for (oaUInt4 i = 0; i < points.getNumElements(); ++i) {
    text << (i == 0 ? "(" : " (") << points[i].x() << ' ' << points[i].y() << ')';
  }
  return text.str();
}

std::string contentsOf(oaShape *shape) {
  std::ostringstream text;
  oaPointArray points;
  switch (oaTypeEnum(shape->getType())) {
  case oacRectType: {
    oaBox box;
    shape->getBBox(box);
    text << '(' << box.left() << ' ' << box.bottom() << ' ' << box.right() << ' ' << box.top() << ')';
    break;
  }
  case oacPolygonType:
    static_cast<oaPolygon *>(shape)->getPoints(points);
    text << textOf(points);
    break;
  case oacLineType:
    static_cast<oaLine *>(shape)->getPoints(points);
    text << textOf(points);
    break;
  case oacPathType: {
    auto *path = static_cast<oaPath *>(shape);
    path->getPoints(points);
    text << "style " << int(oaPathStyleEnum(path->getStyle())) << " width " << path->getWidth() << ' '
         << textOf(points);
    break;
  }
  case oacTextType: {
    auto *label = static_cast<oaText *>(shape);
    oaString string;
    label->getText(string);
    oaPoint origin;
    label->getOrigin(origin);
    text << '"' << static_cast<const oaChar *>(string) << "\" (" << origin.x() << ' ' << origin.y() << ") align "
         << int(oaTextAlignEnum(label->getAlignment())) << " orient " << int(oaOrientEnum(label->getOrient()))
         << " font " << int(oaFontEnum(label->getFont())) << " height " << label->getHeight();
    break;
  }
  default:
    throw std::logic_error("no text for this kind of shape");
  }
  return text.str();
}

} // namespace

Lines OpenCell::shapes() const {
  Lines lines;
  oaIter<oaShape> shapes(design_->getTopBlock()->getShapes());
  while (oaShape *shape = shapes.getNext()) {
    std::ostringstream line;
    line << static_cast<const oaChar *>(shape->getType().getName()) << ' ' << shape->getLayerNum() << '/'
         << int(shape->getPurposeNum()) << ' ' << contentsOf(shape);
    lines.push_back(line.str());
  }
  return lines;
}

std::string LayoutTest::pathOf(const std::string &cell, const std::string &view) const {
  return folder().filePath(QString::fromStdString("lib/" + cell + "/" + view)).toStdString();
}

Lines LayoutTest::read(const std::string &cell, const std::string &view) {
  recorder.clear();
  plugIn.openLayout("lib", QString::fromStdString(cell), QString::fromStdString(view), QString());
  return recorder.lines();
}

Lines LayoutTest::read(const std::string &cell, const Lines &signalNames) {
  read(cell);
  return recorder.lines(signalNames);
}

void LayoutTest::beginLayout(const QString &cell, bool replaceConnectivity, const QStringList &nets,
                             const QStringList &terms) {
  recorder.clear();
  plugIn.saveLayout("lib", cell, "layout", replaceConnectivity, nets, terms);
}
