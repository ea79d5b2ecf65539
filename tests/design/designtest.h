#ifndef DESIGNTEST_H
#define DESIGNTEST_H

// Libraries of their own for the tests of designs, and canonical texts of geometry.

#include <oa/oaDesignDB.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <initializer_list>
#include <sstream>
#include <string>
#include <utility>

namespace designtest {

using namespace oa;
namespace fs = std::filesystem;

constexpr oaUInt4 kNothingRaised = 0xfffffffe;

template <typename Call> oaUInt4 idRaisedBy(Call call) {
  try {
    call();
  } catch (const oaException &exception) {
    return exception.getMsgId();
  }
  return kNothingRaised;
}

template <typename Call> std::string messageOf(Call call) {
  try {
    call();
  } catch (const oaException &exception) {
    return std::string(exception.getMsg());
  }
  return "nothing raised";
}

inline oaScalarName scalar(const std::string &text) { return oaScalarName(oaNativeNS(), text.c_str()); }

using Places = std::initializer_list<std::pair<oaCoord, oaCoord>>;
inline oaPointArray pointsOf(Places places) {
  oaPointArray points;
  for (const auto &place : places) {
    points.append(oaPoint(place.first, place.second));
  }
  return points;
}

// "(0 0) (10 5)"
inline std::string textOf(const oaPoint &point) {
  return "(" + std::to_string(point.x()) + " " + std::to_string(point.y()) + ")";
}
inline std::string textOf(const oaPointArray &points) {
  std::string text;
  for (oaUInt4 i = 0; i < points.getNumElements(); ++i) {
    text += (i == 0 ? "" : " ") + textOf(points[i]);
  }
  return text;
}
inline std::string textOf(Places places) { return textOf(pointsOf(places)); }
// "(0 0) (10 5)", or "none" for an inverted box.
inline std::string textOf(const oaBox &box) {
  return box.isInverted() ? "none" : textOf(box.lowerLeft()) + " " + textOf(box.upperRight());
}
inline std::string boxOf(const oaFig *figure) {
  oaBox box;
  figure->getBBox(box);
  return textOf(box);
}
inline std::string boxOf(const oaBlock *block) {
  oaBox box;
  block->getBBox(box);
  return textOf(box);
}

// Type names of the shapes of a collection.
template <typename Collection> std::string typesOf(const Collection &shapes) {
  std::string text;
  oaIter<oaShape> each(shapes);
  while (oaShape *shape = each.getNext()) {
    text += (text.empty() ? "" : " ") + std::string(shape->getType().getName());
  }
  return text;
}

class DesignTest : public testing::Test {
protected:
  DesignTest() {
    oaDesignInit();
    std::string pattern = (fs::temp_directory_path() / "design-XXXXXX").string();
    folder_ = ::mkdtemp(pattern.data());
    // Names of open libraries and designs are shared by the whole process, so every test has its own.
    libName_ = folder_.filename().string();
    lib_ = oaLib::create(scalar(libName_), (folder_ / "lib").c_str());
  }
  ~DesignTest() override {
    oaIter<oaDesign> designs(oaDesign::getOpenDesigns());
    while (oaDesign *design = designs.getNext()) {
      design->purge();
    }
    if (lib_->isValid()) {
      lib_->close();
    }
    fs::remove_all(folder_);
  }

  const std::string &libName() const { return libName_; }
  oaLib *lib() const { return lib_; }
  fs::path viewFolder(const std::string &cell) const { return folder_ / "lib" / cell / "layout"; }
  fs::path file(const std::string &cell) const { return viewFolder(cell) / "layout.oa"; }

  oaDesign *open(const std::string &cell, char mode) const {
    return oaDesign::open(scalar(libName_), scalar(cell), scalar("layout"), oaViewType::get(oacMaskLayout), mode);
  }
  oaDesign *openExisting(const std::string &cell, char mode) const {
    return oaDesign::open(scalar(libName_), scalar(cell), scalar("layout"), mode);
  }
  oaDesign *find(const std::string &cell) const {
    return oaDesign::find(scalar(libName_), scalar(cell), scalar("layout"));
  }
  bool exists(const std::string &cell) const {
    return oaDesign::exists(scalar(libName_), scalar(cell), scalar("layout"));
  }
  // A new design with a block.
  oaBlock *newBlock(const std::string &cell = "top") const { return oaBlock::create(open(cell, 'w')); }
  // Saves, closes and opens again for reading.
  oaBlock *reopened(oaBlock *block) const {
    oaDesign *design = block->getDesign();
    oaString cell;
    design->getCellName(oaNativeNS(), cell);
    design->save();
    design->close();
    return openExisting(std::string(cell), 'r')->getTopBlock();
  }
  // A saved and closed cell that holds one rectangle on layer 1, purpose 2.
  void makeCell(const std::string &cell, const oaBox &box = oaBox(0, 0, 10, 10)) const {
    oaBlock *block = newBlock(cell);
    oaRect::create(block, 1, 2, box);
    block->getDesign()->save();
    block->getDesign()->close();
  }
  static std::string bytesOf(const fs::path &path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
  }
  static void writeBytes(const fs::path &path, const std::string &bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }

private:
  fs::path folder_;
  std::string libName_;
  oaLib *lib_ = nullptr;
};

} // namespace designtest

#endif
