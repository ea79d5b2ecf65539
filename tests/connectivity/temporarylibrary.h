#ifndef TEMPORARYLIBRARY_H
#define TEMPORARYLIBRARY_H

#include <oa/oaDesignDB.h>

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace connectivitytest {

using namespace oa;

// A library of its own for each test, gone afterwards.
class TemporaryLibrary : public testing::Test {
protected:
  TemporaryLibrary() {
    oaDesignInit();
    std::string pattern = (std::filesystem::temp_directory_path() / "connectivity-XXXXXX").string();
    directory_ = ::mkdtemp(pattern.data());
    name_ = directory_.filename().string();
    lib_ = oaLib::create(scalar(name_), (directory_ / "lib").c_str());
  }
  ~TemporaryLibrary() override {
    lib_->close();
    std::filesystem::remove_all(directory_);
  }

  static oaScalarName scalar(const std::string &text) { return oaScalarName(oaNativeNS(), text.c_str()); }
  oaDesign *open(const std::string &cell, char mode) {
    if (mode == 'r') {
      return oaDesign::open(scalar(name_), scalar(cell), scalar("layout"), 'r');
    }
    return oaDesign::open(scalar(name_), scalar(cell), scalar("layout"), oaViewType::get(oacMaskLayout), mode);
  }
  // A saved and closed cell with one rectangle and one terminal.
  void makeLeaf(const std::string &cell, const oaBox &box, const std::string &term = "A") {
    oaDesign *design = open(cell, 'w');
    oaBlock *block = oaBlock::create(design);
    oaRect::create(block, 1, 2, box);
    oaScalarTerm::create(oaScalarNet::create(block, scalar(term)), scalar(term));
    design->save();
    design->close();
  }
  oaScalarInst *place(oaBlock *block, const std::string &cell, const std::string &name, const oaTransform &placement) {
    return oaScalarInst::create(block, scalar(name_), scalar(cell), scalar("layout"), scalar(name), placement);
  }
  const std::string &libName() const { return name_; }

private:
  std::filesystem::path directory_;
  std::string name_;
  oaLib *lib_ = nullptr;
};

template <typename Action> oaUInt4 idRaisedBy(Action action) {
  try {
    action();
  } catch (const oaException &exception) {
    return exception.getMsgId();
  }
  return oacNullIndex;
}

// Names of the members of a collection, separated by blanks.
template <typename Object, typename Collection> std::string namesOf(const Collection &collection) {
  std::string names;
  oaIter<Object> objects(collection);
  while (Object *object = objects.getNext()) {
    oaString name;
    object->getName(oaNativeNS(), name);
    names += (names.empty() ? "" : " ") + std::string(name);
  }
  return names;
}

} // namespace connectivitytest

#endif
