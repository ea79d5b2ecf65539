#include "designtest.h"

#include <functional>
#include <sys/wait.h>
#include <unistd.h>

// Opening, saving and closing designs.
namespace designtest {

class DesignLife : public DesignTest {};

TEST_F(DesignLife, OpeningRefusesWithItsIds) {
  makeCell("inv");
  fs::create_directories(viewFolder("hollow"));
  const auto type = [](oaReservedViewTypeEnum reserved) { return oaViewType::get(reserved); };
  const oaScalarName lib = scalar(libName()), view = scalar("layout");
  oaParamArray one;
  one.append(oaParam("w", 1));
  const struct {
    const char *name;
    oaUInt4 id;
    std::function<void()> call;
  } cases[] = {
      {"library is not open", oacCannotFindLibrary, [&] { oaDesign::open(scalar("nolib"), scalar("inv"), view, 'r'); }},
      {"no such cell", oacCannotFindDesign, [&] { openExisting("nocell", 'r'); }},
      {"no such cell, for writing without a view type", oacCannotFindDesign, [&] { openExisting("nocell", 'w'); }},
      {"view without a primary file", oacDesignPrimaryFileDoesNotExist, [&] { openExisting("hollow", 'r'); }},
      {"unknown mode", oacOpenUndefinedModeDesign, [&] { openExisting("inv", 'x'); }},
      {"another view type", oacMismatchViewTypeForOpen,
       [&] { oaDesign::open(lib, scalar("inv"), view, type(oacSchematic), 'r'); }},
      {"a type that is none of designs", oacInvalidDesignViewType,
       [&] { oaDesign::open(lib, scalar("new"), view, type(oacVerilogText), 'w'); }},
      {"parameters for an ordinary design", oacInvalidSuperMaster,
       [&] { oaDesign::open(lib, scalar("inv"), view, one); }},
      {"destroying what is not there", oacDestroyCannotFindDesign,
       [&] { oaDesign::destroy(lib, scalar("nocell"), view); }},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(idRaisedBy(c.call), c.id);
  }
  EXPECT_FALSE(fs::exists(viewFolder("nocell")));
  EXPECT_FALSE(fs::exists(viewFolder("new")));
  EXPECT_TRUE(oaDesign::getOpenDesigns().isEmpty());
  EXPECT_FALSE(oaDesign::exists(scalar("nolib"), scalar("inv"), view));
  // The messages say which design.
  EXPECT_NE(messageOf([&] { openExisting("nocell", 'r'); }).find(libName() + "/nocell/layout"), std::string::npos);
}

TEST_F(DesignLife, AnOrdinaryDesignIsNotParametric) {
  makeCell("inv");
  oaDesign *design = oaDesign::open(scalar(libName()), scalar("inv"), scalar("layout"), oaParamArray());
  EXPECT_EQ(design->getMode(), 'r');
  EXPECT_FALSE(design->isSuperMaster() || design->isSubMaster() || design->isStdViaMaster());
  oaParamArray params;
  oaViaParam viaParams;
  oaString name;
  EXPECT_EQ(idRaisedBy([&] { design->getParams(params); }), oacInvalidPcellMaster);
  EXPECT_EQ(idRaisedBy([&] { design->getParams(viaParams); }), oacInvalidStdViaMaster);
  EXPECT_EQ(idRaisedBy([&] { design->getSuperMaster(); }), oacInvalidSubMaster);
  EXPECT_EQ(idRaisedBy([&] { design->getPcellEvaluatorName(name); }), oacInvalidSuperMaster);
}

TEST_F(DesignLife, ANewDesignAppearsAtOnceAndGoesUnlessItIsSaved) {
  oaDesign *design = open("inv", 'w');
  EXPECT_TRUE(fs::exists(viewFolder("inv") / "master.tag"));
  EXPECT_EQ(fs::file_size(file("inv")), 0U);
  EXPECT_TRUE(exists("inv"));
  EXPECT_EQ(design->getTopBlock(), nullptr);
  design->close();
  EXPECT_FALSE(exists("inv"));
  EXPECT_FALSE(fs::exists(viewFolder("inv").parent_path()));

  design = open("inv", 'a'); // creates, too
  design->save();
  EXPECT_EQ(design->getMode(), 'a');
  design->close();
  EXPECT_TRUE(exists("inv"));
  EXPECT_NE(fs::file_size(file("inv")), 0U);
}

TEST_F(DesignLife, AllOpenersShareOnePointerAndTheLastCloseEndsIt) {
  makeCell("inv");
  oaDesign *design = openExisting("inv", 'r');
  EXPECT_EQ(openExisting("inv", 'r'), design);
  EXPECT_EQ(open("inv", 'a'), design);
  EXPECT_EQ(design->getMode(), 'a');
  EXPECT_EQ(openExisting("inv", 'r'), design);
  EXPECT_EQ(design->getMode(), 'a') << "opening never weakens";
  EXPECT_EQ(design->getRefCount(), 4U);
  EXPECT_EQ(find("inv"), design);
  EXPECT_EQ(design->getRefCount(), 4U);
  oaBlock *block = design->getTopBlock();
  for (int i = 0; i < 3; ++i) {
    design->close();
    EXPECT_TRUE(block->isValid());
  }
  design->close();
  EXPECT_EQ(find("inv"), nullptr);
  EXPECT_FALSE(design->isValid());
  EXPECT_FALSE(block->isValid());
  for (const auto &call :
       {std::function<void()>([&] { design->close(); }), std::function<void()>([&] { design->getTopBlock(); }),
        std::function<void()>([&] { block->getShapes(); }),
        std::function<void()>([&] { oaRect::create(block, 1, 2, oaBox(0, 0, 1, 1)); })}) {
    EXPECT_EQ(idRaisedBy(call), oacDeletedDatabase);
  }
  EXPECT_EQ(idRaisedBy([] { oaBlock::create(nullptr); }), oacDeletedDatabase);
}

TEST_F(DesignLife, PurgeIgnoresTheCount) {
  makeCell("inv");
  oaDesign *design = openExisting("inv", 'r');
  openExisting("inv", 'r');
  design->purge();
  EXPECT_EQ(find("inv"), nullptr);
  EXPECT_FALSE(design->isValid());
}

TEST_F(DesignLife, TheListOfOpenDesignsMayBeClosedDuringTheWalk) {
  for (const char *cell : {"a", "b", "c"}) {
    makeCell(cell);
    openExisting(cell, 'r');
  }
  EXPECT_EQ(oaDesign::getOpenDesigns().getCount(), 3U);
  oaIter<oaDesign> designs(oaDesign::getOpenDesigns());
  std::string names;
  while (oaDesign *design = designs.getNext()) {
    oaString cell;
    design->getCellName(oaNativeNS(), cell);
    names += std::string(cell);
    design->close();
  }
  EXPECT_EQ(names, "abc");
  EXPECT_TRUE(oaDesign::getOpenDesigns().isEmpty());
}

TEST_F(DesignLife, WritingAnExistingDesignShowsItEmptyUntilItIsSaved) {
  makeCell("inv");
  const std::string before = bytesOf(file("inv"));
  oaDesign *design = openExisting("inv", 'w');
  EXPECT_EQ(design->getTopBlock(), nullptr);
  EXPECT_EQ(bytesOf(file("inv")), before);
  design->close();
  EXPECT_EQ(openExisting("inv", 'r')->getTopBlock()->getShapes().getCount(), 1U)
      << "closing without saving changes nothing";

  // For whoever had it open already, the old contents are gone, too.
  design = find("inv");
  oaBlock *old = design->getTopBlock();
  EXPECT_EQ(openExisting("inv", 'w'), design);
  EXPECT_FALSE(old->isValid());
  EXPECT_EQ(design->getTopBlock(), nullptr);
  oaBlock::create(design);
  design->save();
  EXPECT_EQ(design->getMode(), 'a');
  design->purge();
  EXPECT_TRUE(openExisting("inv", 'r')->getTopBlock()->getShapes().isEmpty());
}

TEST_F(DesignLife, ReopenAndRevertKillTheObjectsButNotTheDesign) {
  makeCell("inv");
  oaDesign *design = openExisting("inv", 'a');
  oaRect::create(design->getTopBlock(), 1, 2, oaBox(0, 0, 5, 5));
  oaBlock *block = design->getTopBlock();
  EXPECT_EQ(idRaisedBy([&] { design->reopen('r'); }), oacCannotDowngradeDatabase);
  EXPECT_EQ(idRaisedBy([&] { design->reopen('s'); }), oacCannotSetModeToScratch);
  design->revert();
  EXPECT_FALSE(block->isValid());
  EXPECT_FALSE(design->isModified());
  EXPECT_EQ(design->getTopBlock()->getShapes().getCount(), 1U);
  design->reopen('r');
  EXPECT_EQ(design->getMode(), 'r');
  design->reopen('w');
  EXPECT_EQ(design->getTopBlock(), nullptr);
  EXPECT_EQ(design->getRefCount(), 1U);
}

TEST_F(DesignLife, ReadOnlyDesignsChangeInMemoryOnly) {
  makeCell("inv");
  oaDesign *design = openExisting("inv", 'r');
  EXPECT_FALSE(design->isModified());
  oaRect::create(design->getTopBlock(), 7, 7, oaBox(0, 0, 5, 5));
  EXPECT_TRUE(design->isModified());
  EXPECT_EQ(openExisting("inv", 'r')->getTopBlock()->getShapes().getCount(), 2U) << "all openers share the change";
  EXPECT_EQ(idRaisedBy([&] { design->save(); }), oacSaveReadOnlyDesign);
  design->reopen('a');
  design->save();
  EXPECT_FALSE(design->isModified());
  design->purge();
  EXPECT_EQ(openExisting("inv", 'r')->getTopBlock()->getShapes().getCount(), 2U);
}

TEST_F(DesignLife, DestroyEmptiesTheFileAndNotWhatReadersSee) {
  makeCell("inv");
  oaDesign *design = openExisting("inv", 'r');
  const oaScalarName lib = scalar(libName()), cell = scalar("inv"), view = scalar("layout");
  EXPECT_EQ(idRaisedBy([&] { oaDesign::destroy(lib, cell, view); }), oacDestroyDesignOpen);
  design->close();
  oaDesign::destroy(lib, cell, view);
  EXPECT_EQ(fs::file_size(file("inv")), 0U);
  EXPECT_FALSE(exists("inv"));
  EXPECT_EQ(idRaisedBy([&] { openExisting("inv", 'r'); }), oacDesignPrimaryFileDoesNotExist);
}

TEST_F(DesignLife, ReadersKeepWhatTheyOpened) {
  // Another process empties and overwrites the design that this one has open but has not read yet.
  oaBlock *block = newBlock("inv");
  for (oaCoord i = 1; i < 1000; ++i) {
    oaRect::create(block, 1, 2, oaBox(0, 0, i, i));
  }
  block->getDesign()->save();
  block->getDesign()->close();
  oaDesign *design = openExisting("inv", 'r');
  const pid_t other = fork();
  ASSERT_GE(other, 0);
  if (other == 0) {
    design->close();
    const oaScalarName lib = scalar(libName()), cell = scalar("inv"), view = scalar("layout");
    oaDesign::destroy(lib, cell, view);
    oaBlock::create(open("inv", 'w'))->getDesign()->save();
    _exit(0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(other, &status, 0), other);
  ASSERT_EQ(status, 0);
  EXPECT_EQ(design->getTopBlock()->getShapes().getCount(), 999U);
  EXPECT_EQ(boxOf(design->getTopBlock()), "(0 0) (999 999)");
  EXPECT_EQ(idRaisedBy([&] { open("inv", 'a'); }), oacCannotUpgradeOverwrittenDatabase);
  EXPECT_EQ(design->getMode(), 'r');
}

TEST_F(DesignLife, OnlyOneProcessEdits) {
  makeCell("inv");
  // The child is made before the design is opened here, and waits until it is.
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  const pid_t other = fork();
  ASSERT_GE(other, 0);
  if (other == 0) {
    close(ready[1]);
    char byte;
    _exit(read(ready[0], &byte, 1) == 1 && idRaisedBy([&] { openExisting("inv", 'a'); }) == oacCannotLockDatabase &&
                  idRaisedBy([&] { openExisting("inv", 'r'); }) == kNothingRaised
              ? 0
              : 1);
  }
  oaDesign *design = openExisting("inv", 'a');
  ASSERT_EQ(write(ready[1], "x", 1), 1);
  int status = 0;
  ASSERT_EQ(waitpid(other, &status, 0), other);
  EXPECT_EQ(status, 0);
  close(ready[0]);
  close(ready[1]);
  EXPECT_TRUE(fs::exists(file("inv").string() + ".cdslck"));
  design->close();
  EXPECT_FALSE(fs::exists(file("inv").string() + ".cdslck"));
}

TEST_F(DesignLife, SavingNeedsTheLibraryAndTheCellView) {
  oaDesign *design = oaBlock::create(open("inv", 'w'))->getDesign();
  design->save();
  oaRect::create(design->getTopBlock(), 1, 2, oaBox(0, 0, 5, 5));
  std::error_code ignored;
  const fs::path away = viewFolder("inv").parent_path() / "away";
  fs::rename(viewFolder("inv"), away, ignored);
  EXPECT_EQ(idRaisedBy([&] { design->save(); }), oacDesignNoLongerExists);
  fs::rename(away, viewFolder("inv"), ignored);
  lib()->close();
  EXPECT_EQ(idRaisedBy([&] { design->save(); }), oacCannotFindLibrary);
  EXPECT_EQ(design->getLib(), nullptr);
  EXPECT_EQ(design->getTopBlock()->getShapes().getCount(), 1U);
}

TEST_F(DesignLife, SaveAsWritesElsewhereAndChangesNothingHere) {
  makeCell("inv");
  oaDesign *design = openExisting("inv", 'r');
  oaRect::create(design->getTopBlock(), 1, 2, oaBox(0, 0, 99, 99));
  const oaScalarName lib = scalar(libName()), view = scalar("layout");
  design->saveAs(lib, scalar("copy"), view);
  oaString cell;
  design->getCellName(oaNativeNS(), cell);
  EXPECT_EQ(cell, "inv");
  EXPECT_TRUE(design->isModified());
  EXPECT_EQ(boxOf(openExisting("copy", 'r')->getTopBlock()), "(0 0) (99 99)");
  find("copy")->close();
  EXPECT_EQ(bytesOf(file("inv")) == bytesOf(file("copy")), false);

  oaDesign *other = oaDesign::open(lib, scalar("other"), view, oaViewType::get(oacSchematic), 'w');
  other->save();
  other->close();
  EXPECT_EQ(idRaisedBy([&] { design->saveAs(lib, scalar("other"), view); }), oacMismatchViewTypeForSaveAs);
  EXPECT_EQ(idRaisedBy([&] { design->saveAs(scalar("nolib"), scalar("x"), view); }), oacCannotFindLibrary);
  open("edited", 'w');
  EXPECT_EQ(idRaisedBy([&] { design->saveAs(lib, scalar("edited"), view); }), oacCannotLockDatabase);
}

TEST_F(DesignLife, FilesOfTheLicensedKitAreNamedAndNeverWrittenOver) {
  makeCell("inv");
  const std::string foreign = std::string("\x67\x45\x23\x01", 4) + std::string(60, 'x');
  writeBytes(file("inv"), foreign);
  EXPECT_NE(idRaisedBy([&] { openExisting("inv", 'r'); }), kNothingRaised);
  EXPECT_NE(idRaisedBy([&] { openExisting("inv", 'a'); }), kNothingRaised);
  EXPECT_NE(messageOf([&] { openExisting("inv", 'r'); }).find("licensed"), std::string::npos);
  EXPECT_EQ(idRaisedBy([&] { openExisting("inv", 'w'); }), oacInvalidDatabaseFile);
  EXPECT_EQ(idRaisedBy([&] { oaDesign::destroy(scalar(libName()), scalar("inv"), scalar("layout")); }),
            oacInvalidDatabaseFile);
  EXPECT_EQ(bytesOf(file("inv")), foreign);
  EXPECT_EQ(find("inv"), nullptr);
}

TEST_F(DesignLife, NamesTypesAndAttributesComeBack) {
  const oaScalarName view = scalar("my view");
  oaDesign *design = oaDesign::open(scalar(libName()), scalar("a-b"), view, oaViewType::get(oacSchematicSymbol), 'w');
  oaBlock::create(design, false);
  design->setCellType(oacPadCellType);
  oaIntProp::create(design, "count", 3);
  design->save();
  const oaTime saved = design->getLastSavedTime();
  design->close();
  design = oaDesign::open(scalar(libName()), scalar("a-b"), view, 'r');
  oaString lib, cell, viewName, type;
  design->getLibName(oaNativeNS(), lib);
  design->getCellName(oaNativeNS(), cell);
  design->getViewName(oaNativeNS(), viewName);
  design->getViewType()->getName(type);
  EXPECT_EQ(std::string(lib) + "/" + std::string(cell) + "/" + std::string(viewName), libName() + "/a-b/my view");
  EXPECT_EQ(type, "schematicSymbol");
  EXPECT_EQ(design->getCellType(), oacPadCellType);
  EXPECT_EQ(design->getLastSavedTime(), saved);
  EXPECT_GE(saved, design->getCreateTime());
  EXPECT_FALSE(design->getTopBlock()->isVisibleToModule());
  EXPECT_TRUE(design->hasProp());
  EXPECT_EQ(design->getTopBlock()->getDBUPerUU(), 160U);
  EXPECT_EQ(design->getTopBlock()->getUserUnits(), oacInch);
}

TEST_F(DesignLife, ParentsHoldTheirMasters) {
  makeCell("inv");
  oaBlock *top = newBlock();
  oaScalarInst::create(top, scalar(libName()), scalar("inv"), scalar("layout"), oaTransform(100, 0));
  EXPECT_EQ(find("inv"), nullptr) << "placing by name opens nothing";
  top->getDesign()->openHier();
  oaDesign *inv = find("inv");
  ASSERT_NE(inv, nullptr);
  EXPECT_EQ(inv->getRefCount(), 1U);
  EXPECT_EQ(boxOf(top), "(100 0) (110 10)");
  EXPECT_EQ(inv->getUsedIn().getCount(), 1U);
  EXPECT_TRUE(top->getDesign()->hasReference(inv));
  EXPECT_FALSE(top->getDesign()->hasRecursion());
  // The box of the parent follows the master.
  oaRect *wide = oaRect::create(inv->getTopBlock(), 1, 2, oaBox(0, 0, 50, 5));
  EXPECT_EQ(boxOf(top), "(100 0) (150 10)");
  wide->destroy();
  EXPECT_EQ(boxOf(top), "(100 0) (110 10)");
  openExisting("inv", 'r')->close();
  EXPECT_TRUE(inv->isValid()) << "the parent still uses it";
  top->getDesign()->close();
  EXPECT_FALSE(inv->isValid());
}

} // namespace designtest
