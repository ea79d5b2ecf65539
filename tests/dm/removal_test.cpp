#include "dmtest.h"

#include <set>

using namespace dmtest;

namespace {

// A library L with the cells c (views v and w) and d (view v), and management data of c.
class Removal : public DMTest {
protected:
  Removal() : lib(createLib("L")) {
    lib->getAccess(oacWriteLibAccess);
    for (const char *view : {"v", "w"}) {
      oaCellView::get(lib, named("c"), named(view), oaViewType::get(oacSchematic));
    }
    oaCellView::get(lib, named("d"), named("v"), oaViewType::get(oacSchematic));
    lib->releaseAccess();
    oaCellDMData *data = oaCellDMData::open(named("L"), named("c"), 'a');
    oaStringProp::create(data, "kept", "yes");
    data->save();
    data->close();
  }
  ~Removal() override {
    if (oaLib *open = oaLib::find(named("L"))) {
      open->close();
    }
  }
  // Everything under the library's directory, from the directory itself.
  std::set<std::string> onDisk() const {
    std::set<std::string> found;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(path("L"))) {
      found.insert(std::filesystem::relative(entry.path(), path("L")).string());
    }
    return found;
  }
  oaLib *lib;
};

TEST_F(Removal, TakesEverythingOffTheDiskAndOutOfTheStructure) {
  writeFile(path("L/c/w/notes.txt"), "left by another tool");
  lib->getAccess(oacWriteLibAccess);
  oaCell *cell = oaCell::find(lib, named("c"));
  oaCellView *first = oaCellView::find(lib, named("c"), named("v"));
  oaCellView *second = oaCellView::find(lib, named("c"), named("w"));
  const oaDMFile *file = second->getPrimary();
  EXPECT_EQ(namesIn<oaCell>(lib->getCells()).size(), 2u);
  first->destroy();
  EXPECT_FALSE(first->isValid());
  EXPECT_EQ(cell->getCellViews().getCount(), 1u);
  EXPECT_EQ(oaCellView::find(lib, named("c"), named("v")), nullptr);
  cell->destroy();
  EXPECT_FALSE(second->isValid());
  EXPECT_FALSE(file->isValid());
  EXPECT_EQ(namesIn<oaCell>(lib->getCells()), std::vector<std::string>{"d"});
  EXPECT_EQ(raisedBy([&] { cell->destroy(); }), oacDeletedDatabase);
  lib->releaseAccess();
  EXPECT_EQ(onDisk(), (std::set<std::string>{".oalib", "d", "d/v", "d/v/master.tag", "d/v/sch.oa"}));
}

TEST_F(Removal, WalkThatDestroysWhatItMeetsMeetsEverything) {
  lib->getAccess(oacWriteLibAccess);
  oaIter<oaCell> cells(lib->getCells());
  oaUInt4 met = 0;
  while (oaCell *cell = cells.getNext()) {
    cell->destroy();
    ++met;
  }
  EXPECT_EQ(met, 2u);
  lib->releaseAccess();
  EXPECT_EQ(onDisk(), std::set<std::string>{".oalib"});
}

TEST_F(Removal, NeedsWriteAccess) {
  const std::set<std::string> before = onDisk();
  lib->getAccess(oacReadLibAccess);
  oaCell *cell = oaCell::find(lib, named("c"));
  oaCellView *cellView = oaCellView::find(lib, named("c"), named("v"));
  EXPECT_EQ(raisedBy([&] { cell->destroy(); }), oacLibAccessDenied);
  EXPECT_EQ(raisedBy([&] { cellView->destroy(); }), oacLibAccessDenied);
  EXPECT_TRUE(cellView->isValid());
  lib->releaseAccess();
  EXPECT_EQ(onDisk(), before);
}

TEST_F(Removal, OpenDataCannotBringTheCellBack) {
  oaCellDMData *data = oaCellDMData::open(named("L"), named("c"), 'a');
  oaIntProp::create(data, "new", 1);
  lib->getAccess(oacWriteLibAccess);
  oaCell::find(lib, named("c"))->destroy();
  lib->releaseAccess();
  EXPECT_NE(oaProp::find(data, "kept"), nullptr) << "stays usable in memory";
  EXPECT_EQ(raisedBy([&] { data->save(); }), oacDMDataDoesNotExist);
  // Nor does it get into a new cell of that name.
  lib->getAccess(oacWriteLibAccess);
  oaCell::get(lib, named("c"));
  lib->releaseAccess();
  EXPECT_EQ(raisedBy([&] { data->save(); }), oacDMDataDoesNotExist);
  data->close();
  EXPECT_FALSE(oaCellDMData::exists(named("L"), named("c")));
  EXPECT_FALSE(std::filesystem::exists(path("L/c/data.dm")));
}

TEST_F(Removal, CellInUseByAnotherProcessIsRemovedAllTheSame) {
  OtherProcess reader([&] {
    const oaCellDMData *data = oaCellDMData::open(named("L"), named("c"), 'r');
    EXPECT_NE(oaProp::find(data, "kept"), nullptr);
  });
  ASSERT_TRUE(reader.isReady());
  ASSERT_TRUE(lib->getAccess(oacWriteLibAccess)) << "reading holds no access";
  oaCell::find(lib, named("c"))->destroy();
  lib->releaseAccess();
  EXPECT_FALSE(std::filesystem::exists(path("L/c")));
}

// Without the right to write, as on a medium that is read-only. That does not keep the superuser out, who therefore
// becomes somebody else.
TEST_F(Removal, ReadOnlyMediumCanBeReadAndStaysAsItIs) {
  namespace fs = std::filesystem;
  constexpr uid_t kNobody = 65534;
  const std::set<std::string> before = onDisk();
  lib->close();
  const auto setRights = [&](fs::perms rights) {
    fs::permissions(path("L"), rights);
    for (const auto &entry : fs::recursive_directory_iterator(path("L"))) {
      fs::permissions(entry.path(), rights);
    }
  };
  const fs::perms reading = static_cast<fs::perms>(0555);
  fs::permissions(fs::path(path("L")).parent_path(), reading | fs::perms::owner_write);
  setRights(reading);
  OtherProcess user([&] {
    if (::geteuid() == 0) {
      ASSERT_EQ(::setuid(kNobody), 0);
    }
    oaLib *opened = oaLib::open(named("L"), path("L").c_str());
    EXPECT_TRUE(opened->isReadable());
    EXPECT_FALSE(opened->isWritable());
    EXPECT_EQ(raisedBy([&] { opened->getAccess(oacWriteLibAccess, 1); }), oacNoWriteAccessOnReadOnlyLib);
    ASSERT_TRUE(opened->getAccess(oacReadLibAccess));
    EXPECT_EQ(namesIn<oaCell>(opened->getCells()).size(), 2u);
    opened->releaseAccess();
    oaCellDMData *data = oaCellDMData::open(named("L"), named("c"), 'r');
    EXPECT_NE(oaProp::find(data, "kept"), nullptr);
    EXPECT_EQ(raisedBy([&] { data->reopen('a'); }), oacDMDataCannotGetWriteAccess);
    EXPECT_EQ(raisedBy([&] { oaLibDMData::open(named("L"), 'w'); }), oacDMDataCannotGetWriteAccess);
  });
  EXPECT_TRUE(user.isReady());
  user.finish();
  setRights(fs::perms::owner_all);
  EXPECT_EQ(onDisk(), before);
}

} // namespace
