#include "dmtest.h"

using namespace dmtest;

namespace {

class Libraries : public DMTest {};

std::vector<std::string> filesUnder(const std::string &directory) {
  std::vector<std::string> files;
  for (const auto &entry : std::filesystem::recursive_directory_iterator(directory)) {
    files.push_back(std::filesystem::relative(entry.path(), directory).string() + (entry.is_directory() ? "/" : ""));
  }
  std::sort(files.begin(), files.end());
  return files;
}

TEST_F(Libraries, CreatedLibraryIsOpenAndFoundAgain) {
  oaLib *lib = oaLib::create(named("my-lib"), "../my-lib");
  EXPECT_THAT(readFile(path("my-lib/.oalib")),
              testing::AllOf(testing::HasSubstr("<Library DMSystem=\"oaDMFileSys\">"),
                             testing::HasSubstr("libReadOnly=\"No\""), testing::HasSubstr("origFileSystem=\"Unix\"")));
  oaString text;
  lib->getPath(text);
  EXPECT_EQ(text, "../my-lib");
  lib->getFullPath(text);
  EXPECT_EQ(std::string(text), path("my-lib"));
  lib->getDMSystemName(text);
  EXPECT_EQ(text, "oaDMFileSys");
  EXPECT_EQ(nameOf(lib), "my-lib");
  EXPECT_TRUE(lib->isWritable());
  EXPECT_EQ(oaLib::find(named("my-lib")), lib);
  EXPECT_EQ(raisedBy([&] { oaLib::open(named("my-lib"), path("my-lib").c_str()); }), oacCannotOpenOpenedLib);
  EXPECT_EQ(raisedBy([&] { oaLib::create(named("my-lib"), path("other").c_str()); }), oacLibNameExists);
  lib->close();
  EXPECT_FALSE(lib->isValid());
  EXPECT_EQ(raisedBy([&] { lib->getPath(text); }), oacDeletedDatabase);
  EXPECT_EQ(oaLib::find(named("my-lib")), nullptr);
  EXPECT_TRUE(oaLib::exists(path("my-lib").c_str()));
  lib = oaLib::open(named("other"), path("my-lib").c_str(), "", oacReadOnlyLibMode);
  EXPECT_FALSE(lib->isWritable());
  lib->close();
}

TEST_F(Libraries, RefusedDirectories) {
  std::filesystem::create_directory(path("empty"));
  writeFile(path("full/file"), "");
  writeFile(path("file"), "");
  const struct {
    const char *name, *directory, *system;
    oaUInt4 id;
  } cases[] = {
      {"no parent", "no/lib", "oaDMSystem", oacOSError},
      {"not empty", "full", "oaDMSystem", oacLibCouldNotCreate},
      {"a file", "file", "oaDMSystem", oacLibCouldNotCreate},
      {"unknown system", "new", "oaDMTurbo", oacFailedToGetDMInterface},
      {"empty directory", "empty", "oaDMFileSys", kNothingRaised},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(raisedBy([&] { oaLib::create(named("L"), path(c.directory).c_str(), oacSharedLibMode, c.system); }),
              c.id);
  }
  EXPECT_FALSE(std::filesystem::exists(path("new")));
  oaLib::find(named("L"))->close();
  EXPECT_EQ(raisedBy([&] { oaLib::open(named("L"), path("full").c_str()); }), oacLibCouldNotOpen);
  EXPECT_EQ(raisedBy([&] { oaLib::open(named("L"), path("none").c_str()); }), oacLibCouldNotOpen);
  EXPECT_FALSE(oaLib::exists(path("full").c_str()));
}

TEST_F(Libraries, LibraryFileIsReadLeniently) {
  const struct {
    const char *name, *text;
    oaUInt4 id;
    bool isWritable;
  } cases[] = {
      {"empty", "", kNothingRaised, true},
      {"no inner element", "<Library DMSystem='oaDMFileSys'/>", kNothingRaised, true},
      {"comments and unknown parts",
       "<?xml version=\"1.0\"?><!-- <Library> --><Library version=\"3\" DMSystem=\"oaDMFileSys\"><other a='b'/>\n"
       "<oaDMFileSys libReadOnly = \"Yes\"/></Library>",
       kNothingRaised, false},
      {"not XML", "DEFINE a b\n", oacLibDataFileSyntaxError, false},
      {"other root", "<Cell/>", oacLibDataFileSyntaxError, false},
      {"cut off", "<Library DMSystem=\"oaDMFileSys\"><oaDMFileSys libReadOnly=\"N", oacLibDataFileSyntaxError, false},
      {"unknown system", "<Library DMSystem=\"oaDMTurbo\"/>", oacFailedToGetDMInterface, false},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    writeFile(path("L/.oalib"), c.text);
    std::string message;
    EXPECT_EQ(raisedBy([&] { oaLib::open(named("L"), path("L").c_str()); }, &message), c.id) << message;
    if (oaLib *lib = oaLib::find(named("L"))) {
      EXPECT_EQ(lib->isWritable(), c.isWritable);
      lib->close();
    }
  }
  writeFile(path("L/.oalib"), std::string(1000000, '<'));
  EXPECT_EQ(raisedBy([&] { oaLib::open(named("L"), path("L").c_str()); }), oacCannotOpenLibDataFile);
}

TEST_F(Libraries, AttributesSurvive) {
  oaLib *lib = createLib("L");
  oaDMAttrArray attributes;
  attributes.append(oaDMAttr("VCSystem", "a \"b\" <c> & d"));
  EXPECT_EQ(raisedBy([&] { lib->setAttributes(attributes); }), oacLibAccessDenied);
  ASSERT_TRUE(lib->getAccess(oacWriteLibAccess));
  lib->setAttributes(attributes);
  OtherProcess reader([&] {
    oaLib *same = oaLib::open(named("same"), path("L").c_str());
    EXPECT_FALSE(same->getAccess(oacReadLibAccess)) << "the file was replaced, the access stays";
  });
  EXPECT_TRUE(reader.isReady());
  lib->close();
  lib = oaLib::open(named("L"), path("L").c_str());
  lib->getAttributes(attributes);
  EXPECT_NE(attributes.find(oaDMAttr("VCSystem", "a \"b\" <c> & d")), oacNullIndex);
  lib->close();
}

TEST_F(Libraries, CellViewsOnDisk) {
  oaLib *lib = createLib("L");
  lib->getAccess(oacWriteLibAccess);
  oaViewType *own = oaViewType::create("notes");
  oaCellView *cellView = oaCellView::get(lib, named("a-b"), named("layout"), oaViewType::get(oacMaskLayout));
  oaCellView::get(lib, named("a-b"), named("sch"), oaViewType::get(oacSchematic));
  oaCellView::get(lib, named("c"), named("notes"), own);
  oaCell::get(lib, named("empty"));
  EXPECT_THAT(filesUnder(path("L")),
              testing::ElementsAre(".oalib", "a#2db/", "a#2db/layout/", "a#2db/layout/layout.oa",
                                   "a#2db/layout/master.tag", "a#2db/sch/", "a#2db/sch/master.tag", "a#2db/sch/sch.oa",
                                   "c/", "c/notes/", "c/notes/master.tag", "c/notes/notes.file", "empty/"));
  EXPECT_EQ(readFile(path("L/a#2db/layout/master.tag")), "-- Master.tag File, Rev:1.0\nlayout.oa\n");
  EXPECT_EQ(raisedBy([&] { oaCellView::get(lib, named("a-b"), named("sch"), oaViewType::get(oacMaskLayout)); }),
            oacMismatchViewType);

  EXPECT_EQ(nameOf(cellView->getCell()), "a-b");
  EXPECT_EQ(cellView->getView()->getViewType(), oaViewType::get(oacMaskLayout));
  oaString file;
  cellView->getPrimary()->getPath(file);
  EXPECT_EQ(std::string(file), path("L/a#2db/layout/layout.oa"));
  EXPECT_TRUE(cellView->getPrimary()->isPrimary());
  EXPECT_EQ(cellView->getDMFiles().getCount(), 2u);

  cellView->destroy();
  EXPECT_FALSE(cellView->isValid());
  EXPECT_EQ(oaCellView::find(lib, named("a-b"), named("layout")), nullptr);
  oaCell::find(lib, named("a-b"))->destroy();
  EXPECT_THAT(namesIn<oaCell>(lib->getCells()), testing::UnorderedElementsAre("c", "empty"));
  EXPECT_FALSE(std::filesystem::exists(path("L/a#2db")));
  lib->close();
}

TEST_F(Libraries, PrimaryFileDecides) {
  const struct {
    const char *name;
    std::vector<std::pair<std::string, std::string>> files;
    const char *viewType; // NULL: no cell view
  } cases[] = {
      {"tagged", {{"master.tag", "-- x\nsch.oa\n"}, {"sch.oa", ""}, {"layout.oa", ""}}, "schematic"},
      {"no tag, one file", {{"symbol.oa", ""}, {"symbol.oa.cdslck", ""}, {"data.dm", ""}}, "schematicSymbol"},
      {"tag of a missing file", {{"master.tag", "-- x\nsch.oa\n"}, {"layout.oa", ""}}, "maskLayout"},
      {"tag that leads out", {{"master.tag", "../../.oalib\n"}, {"layout.oa", ""}, {"other", ""}}, nullptr},
      {"several files", {{"layout.oa", ""}, {"sch.oa", ""}}, nullptr},
      {"text among others", {{"verilog.v", ""}, {"other.txt", ""}}, "verilogText"},
      {"type of its own", {{"master.tag", "sim.file"}, {"sim.file", ""}}, "sim"},
      {"type with a dot", {{"run.log", ""}}, "run.log"},
      {"nothing", {}, nullptr},
      {"binary tag", {{"master.tag", std::string("\0\1\2\n\xff", 5)}, {"layout.oa", ""}}, "maskLayout"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    oaLib *lib = createLib("L");
    std::filesystem::create_directories(path("L/cell/view"));
    for (const auto &file : c.files) {
      writeFile(path("L/cell/view/" + file.first), file.second);
    }
    lib->getAccess(oacReadLibAccess);
    oaCellView *cellView = oaCellView::find(lib, named("cell"), named("view"));
    ASSERT_EQ(cellView != nullptr, c.viewType != nullptr);
    EXPECT_EQ(oaCell::find(lib, named("cell"))->getCellViews().getCount(), c.viewType != nullptr ? 1u : 0u);
    if (cellView != nullptr) {
      oaString type;
      cellView->getView()->getViewType()->getName(type);
      EXPECT_EQ(type, c.viewType);
    }
    lib->close();
    std::filesystem::remove_all(path("L"));
  }
}

TEST_F(Libraries, DirectoriesThatAreNoCellsStayOut) {
  oaLib *lib = createLib("L");
  for (const char *name : {"good", "a#2db", ".git", "x.bak", "a b", "a#2", "a#61", "a#2D", "a#00"}) {
    std::filesystem::create_directory(path("L/") + name);
  }
  writeFile(path("L/file"), "");
  lib->getAccess(oacReadLibAccess);
  EXPECT_THAT(namesIn<oaCell>(lib->getCells()), testing::UnorderedElementsAre("good", "a-b"));
  lib->close();
}

TEST_F(Libraries, ViewsAreNamesWithATypes) {
  oaLib *lib = createLib("L");
  lib->getAccess(oacWriteLibAccess);
  oaCellView::get(lib, named("a"), named("v"), oaViewType::get(oacMaskLayout));
  oaCellView::get(lib, named("b"), named("v"), oaViewType::get(oacSchematic));
  oaCellView::get(lib, named("c"), named("v"), oaViewType::get(oacMaskLayout));
  EXPECT_EQ(lib->getViews().getCount(), 2u);
  EXPECT_EQ(lib->getViewsByName(named("v")).getCount(), 2u);
  EXPECT_TRUE(lib->getViewsByName(named("w")).isEmpty());
  oaView *layout = oaView::find(lib, named("v"), oaViewType::get(oacMaskLayout));
  EXPECT_EQ(layout->getCellViews().getCount(), 2u);
  EXPECT_NE(oaCellView::find(oaCell::find(lib, named("a")), layout), nullptr);
  EXPECT_EQ(oaCellView::find(oaCell::find(lib, named("b")), layout), nullptr);
  EXPECT_EQ(oaViewType::find("layout"), nullptr);
  lib->close();
}

TEST_F(Libraries, FilesOfAContainer) {
  oaLib *lib = createLib("L");
  lib->getAccess(oacWriteLibAccess);
  oaCell *cell = oaCell::get(lib, named("c"));
  writeFile(path("source"), "12345");
  oaDMFile *file = oaDMFile::create(cell, "notes.txt", path("source").c_str());
  EXPECT_EQ(file->getOnDiskSize(), 5u);
  EXPECT_EQ(file->getParent(), cell);
  EXPECT_EQ(raisedBy([&] { oaDMFile::create(cell, "notes.txt"); }), oacDMFileExists);
  EXPECT_NE(raisedBy([&] { oaDMFile::create(cell, "../evil"); }), kNothingRaised);
  EXPECT_TRUE(file->getLock());
  EXPECT_FALSE(file->getLock());
  file->releaseLock();
  file->destroy();
  EXPECT_FALSE(std::filesystem::exists(path("L/c/notes.txt")));
  EXPECT_EQ(oaDMFile::find(cell, "notes.txt"), nullptr);
  lib->close();
}

TEST_F(Libraries, TensOfThousandsOfCellsAreListedOncePerPeriod) {
  constexpr oaUInt4 kCells = 20000;
  oaLib *lib = createLib("L");
  for (oaUInt4 i = 0; i < kCells; ++i) {
    std::filesystem::create_directory(path("L/c" + std::to_string(i)));
  }
  lib->getAccess(oacReadLibAccess);
  EXPECT_EQ(lib->getCells().getCount(), kCells);
  oaIter<oaCell> cells(lib->getCells());
  oaCell *first = cells.getNext();
  EXPECT_EQ(oaCell::find(lib, named(nameOf(first))), first);
  lib->releaseAccess();
  EXPECT_FALSE(first->isValid());
  EXPECT_EQ(cells.getNext(), nullptr) << "the walk ends with the access";
  lib->close();
  EXPECT_EQ(cells.getNext(), nullptr);
}

} // namespace
