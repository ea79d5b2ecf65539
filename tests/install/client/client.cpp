// A program of somebody who only has the installed kit: makes a library with one design, saves it, opens it again and
// prints what it finds. Takes the directory of the new library; its last name is the library's name.
#include <oa/oaDesignDB.h>

#include <iostream>
#include <string>

using namespace oa;

namespace {

const oaNativeNS kNames;

void writeInverter(const oaScalarName &lib, const oaScalarName &cell, const oaScalarName &view) {
  oaDesign *design = oaDesign::open(lib, cell, view, oaViewType::get(oacMaskLayout), 'w');
  oaBlock *block = oaBlock::create(design);
  oaRect::create(block, 1, 0, oaBox(0, 0, 1200, 3000));
  oaPointArray corners;
  for (const oaPoint &corner : {oaPoint(0, 0), oaPoint(500, 0), oaPoint(500, 200), oaPoint(0, 400)})
    corners.append(corner);
  oaPolygon::create(block, 2, 0, corners);
  oaText::create(block, 3, 0, "inverter", oaPoint(600, 1500), oacCenterCenterTextAlign, oacR90, oacFixedFont, 250);
  design->save();
  design->close();
}

void printInverter(const oaScalarName &lib, const oaScalarName &cell, const oaScalarName &view) {
  oaDesign *design = oaDesign::open(lib, cell, view, 'r');
  oaIter<oaShape> shapes(design->getTopBlock()->getShapes());
  while (oaShape *shape = shapes.getNext()) {
    oaBox box;
    shape->getBBox(box);
    std::cout << shape->getType().getName() << " on " << shape->getLayerNum();
    if (shape->getType() == oacTextType) {
      oaString text;
      static_cast<oaText *>(shape)->getText(text);
      std::cout << " \"" << text << "\"\n";
    } else {
      std::cout << " (" << box.left() << ", " << box.bottom() << ") (" << box.right() << ", " << box.top() << ")\n";
    }
  }
  design->close();
}

} // namespace

int main(int argc, char **argv) {
  if (argc != 2) {
    std::cerr << "usage: client LIBRARY_DIRECTORY\n";
    return 2;
  }
  try {
    oaDesignInit(oacAPIMajorRevNumber, oacAPIMinorRevNumber, oacDataModelRevNumber);
    const std::string path = argv[1];
    const oaScalarName lib(kNames, path.substr(path.rfind('/') + 1).c_str());
    const oaScalarName cell(kNames, "inverter"), view(kNames, "layout");
    oaLib::create(lib, path.c_str());
    writeInverter(lib, cell, view);
    printInverter(lib, cell, view);
  } catch (oaException &exception) {
    std::cerr << exception.getMsg() << "\n";
    return 1;
  }
  return 0;
}
