#include "dmtest.h"

using namespace dmtest;

namespace {

class ManagementData : public DMTest {
protected:
  ManagementData() : lib(createLib("L")) {
    lib->getAccess(oacWriteLibAccess);
    oaCellView::get(lib, named("c"), named("v"), oaViewType::get(oacSchematic));
    lib->releaseAccess();
  }
  ~ManagementData() override { lib->close(); }
  static std::string textOf(const oaObject *object, const char *name) {
    const oaProp *prop = oaProp::find(object, name);
    oaString text;
    if (prop != nullptr) {
      prop->getValue(text);
    }
    return prop == nullptr ? "none" : std::string(text);
  }
  oaLib *lib;
};

TEST_F(ManagementData, PropertiesComeBackByteForByte) {
  const oaByte bytes[] = {'a', 0, 0xff, '\n', 'b'};
  oaCellDMData *data = oaCellDMData::open(named("L"), named("c"), 'a');
  EXPECT_EQ(data->getMode(), 'a');
  oaAppProp::create(data, "layoutData", "Tarnwickdale", sizeof bytes, bytes);
  oaAppProp::create(data, "empty", "Tarnwickdale", 0, NULL);
  oaStringProp::create(data, "text", "value");
  EXPECT_TRUE(data->isModified());
  data->save();
  EXPECT_FALSE(data->isModified());
  data->close();
  EXPECT_FALSE(data->isValid());

  data = oaCellDMData::open(named("L"), named("c"), 'r');
  EXPECT_EQ(data->getType(), oacCellDMDataType);
  const auto *prop = static_cast<const oaAppProp *>(oaProp::find(data, "layoutData"));
  oaByteArray value;
  prop->getValue(value);
  ASSERT_EQ(value.getNumElements(), sizeof bytes);
  EXPECT_TRUE(std::equal(bytes, bytes + sizeof bytes, value.getElements()));
  oaString appType;
  prop->getAppType(appType);
  EXPECT_EQ(appType, "Tarnwickdale");
  EXPECT_EQ(static_cast<const oaAppProp *>(oaProp::find(data, "empty"))->getSize(), 0u);
  EXPECT_EQ(raisedBy([&] { data->save(); }), oacSaveReadOnlyDMData);
  oaScalarName name;
  data->getCellName(name);
  EXPECT_EQ(name, named("c"));
  data->close();
}

TEST_F(ManagementData, OneObjectForAllOpenersUntilTheLastCloses) {
  EXPECT_EQ(raisedBy([&] { oaLibDMData::open(named("L"), 'r'); }), oacDMDataDoesNotExist);
  oaLibDMData *data = oaLibDMData::open(named("L"), 'a');
  EXPECT_TRUE(oaLibDMData::exists(named("L")));
  EXPECT_EQ(oaLibDMData::open(named("L"), 'r'), data);
  EXPECT_EQ(data->getMode(), 'a') << "never weaker";
  EXPECT_EQ(data->getRefCount(), 2u);
  oaIntProp::create(data, "n", 7);
  EXPECT_EQ(oaDMData::getOpenDMDataObjs().getCount(), 1u);
  EXPECT_EQ(raisedBy([&] { oaLibDMData::destroy(named("L")); }), oacDestroyDMDataOpen);
  data->close();
  EXPECT_EQ(textOf(oaLibDMData::find(named("L")), "n"), "7") << "the open object keeps unsaved properties";
  data->close();
  EXPECT_EQ(oaLibDMData::find(named("L")), nullptr);
  EXPECT_FALSE(oaLibDMData::exists(named("L"))) << "nothing was saved";
  EXPECT_EQ(raisedBy([&] { oaLibDMData::destroy(named("L")); }), oacDestroyDMDataDoesNotExist);
}

TEST_F(ManagementData, TruncatingTouchesTheDiskOnlyAtSave) {
  oaLibDMData *data = oaLibDMData::open(named("L"), 'w');
  oaStringProp::create(data, "old", "1");
  data->save();
  EXPECT_EQ(data->getMode(), 'a');
  const oaProp *old = oaProp::find(data, "old");
  EXPECT_EQ(oaLibDMData::open(named("L"), 'w'), data);
  EXPECT_FALSE(old->isValid());
  EXPECT_TRUE(data->getProps().isEmpty());
  EXPECT_EQ(raisedBy([&] { data->reopen('r'); }), oacCannotDowngradeDatabase);
  data->close();
  data->close();
  data = oaLibDMData::open(named("L"), 'r');
  EXPECT_EQ(textOf(data, "old"), "1");
  oaStringProp::create(data, "new", "2");
  data->revert();
  EXPECT_EQ(textOf(data, "new"), "none");
  EXPECT_EQ(textOf(data, "old"), "1");
  data->reopen('a');
  data->reopen('r');
  data->close();
  oaLibDMData::destroy(named("L"));
  EXPECT_FALSE(std::filesystem::exists(path("L/data.dm")));
}

TEST_F(ManagementData, UnknownOwners) {
  EXPECT_EQ(raisedBy([&] { oaLibDMData::open(named("X"), 'a'); }), oacLibNotFound);
  EXPECT_EQ(raisedBy([&] { oaCellDMData::open(named("L"), named("x"), 'a'); }), oacCellNotFound);
  EXPECT_EQ(raisedBy([&] { oaCellViewDMData::open(named("L"), named("c"), named("x"), 'a'); }), oacViewNotFound);
  EXPECT_EQ(raisedBy([&] {
              oaCellViewDMData::open(named("L"), named("c"), named("v"), oaViewType::get(oacMaskLayout), 'a');
            }),
            oacMismatchViewType);
  EXPECT_EQ(raisedBy([&] { oaLibDMData::open(named("L"), 'q'); }), oacOpenUndefinedModeDMData);
  EXPECT_FALSE(oaCellDMData::exists(named("L"), named("x")));
  EXPECT_EQ(oaCellDMData::find(named("X"), named("x")), nullptr);
}

TEST_F(ManagementData, ByContainer) {
  lib->getAccess(oacReadLibAccess);
  const oaCellView *cellView = oaCellView::find(lib, named("c"), named("v"));
  oaDMData *data = oaDMData::open(cellView, 'a');
  EXPECT_EQ(data->getType(), oacCellViewDMDataType);
  EXPECT_EQ(data, oaCellViewDMData::find(named("L"), named("c"), named("v")));
  EXPECT_EQ(static_cast<oaCellViewDMData *>(data)->getViewType(), oaViewType::get(oacSchematic));
  EXPECT_EQ(oaDMData::find(lib), nullptr);
  data->purge();
  EXPECT_FALSE(oaDMData::exists(cellView));
  lib->releaseAccess();
}

TEST_F(ManagementData, OneEditorAtATime) {
  std::string message;
  {
    OtherProcess editor([&] { oaLibDMData::open(named("L"), 'a'); });
    ASSERT_TRUE(editor.isReady());
    EXPECT_THAT(readFile(path("L/data.dm.cdslck")), testing::HasSubstr("\nprocess "));
    EXPECT_EQ(raisedBy([&] { oaLibDMData::open(named("L"), 'a'); }, &message), oacCannotLockDMData);
    EXPECT_THAT(message, testing::HasSubstr("process "));
    editor.kill();
  }
  EXPECT_TRUE(std::filesystem::exists(path("L/data.dm.cdslck"))) << "what a killed editor leaves behind";
  oaLibDMData *data = oaLibDMData::open(named("L"), 'a');
  oaIntProp::create(data, "n", 1);
  data->save();
  data->close();
  EXPECT_FALSE(std::filesystem::exists(path("L/data.dm.cdslck")));
}

// A lock file that this user may read and not write, as those of other users are.
TEST_F(ManagementData, LockFilesOfOtherUsersCountAsTheirLocksDo) {
  namespace fs = std::filesystem;
  constexpr uid_t kNobody = 65534;
  const std::string lockFile = path("L/data.dm.cdslck");
  const auto openAsAnother = [&](oaUInt4 expected, const char *message) {
    OtherProcess user([&] {
      if (::geteuid() == 0) { // whom no rights keep out
        ASSERT_EQ(::setuid(kNobody), 0);
      }
      std::string told;
      EXPECT_EQ(raisedBy([] { oaLibDMData::open(named("L"), 'a'); }, &told), expected);
      EXPECT_THAT(told, testing::HasSubstr(message));
    });
    EXPECT_TRUE(user.isReady());
  };
  const fs::perms reading = static_cast<fs::perms>(0444);
  fs::permissions(fs::path(path("L")).parent_path(), reading | static_cast<fs::perms>(0311));
  fs::permissions(path("L"), fs::perms::all);
  {
    OtherProcess editor([&] {
      oaLibDMData::open(named("L"), 'a');
      fs::permissions(lockFile, reading);
    });
    ASSERT_TRUE(editor.isReady());
    openAsAnother(oacCannotLockDMData, "process ");
    editor.kill();
  }
  const std::string left = readFile(lockFile);
  ASSERT_NE(left, "");
  openAsAnother(kNothingRaised, "");
  EXPECT_NE(readFile(lockFile), left) << "it says who edits now";
}

TEST_F(ManagementData, FileReplacedBetweenReadingAndEditing) {
  const auto save = [](int value) {
    oaLibDMData *data = oaLibDMData::open(named("L"), 'w');
    oaIntProp::create(data, "n", value);
    data->save();
    data->close();
  };
  save(1);
  oaLibDMData *data = oaLibDMData::open(named("L"), 'r');
  OtherProcess editor([&] {
    data->purge();
    save(2);
  });
  ASSERT_TRUE(editor.isReady());
  editor.finish();
  EXPECT_EQ(textOf(data, "n"), "1") << "a reader keeps what it opened";
  EXPECT_EQ(raisedBy([&] { oaLibDMData::open(named("L"), 'a'); }), oacCannotUpgradeOverwrittenDatabase);
  EXPECT_EQ(data->getRefCount(), 1u);
  EXPECT_FALSE(std::filesystem::exists(path("L/data.dm.cdslck")));
  data->revert();
  EXPECT_EQ(textOf(data, "n"), "2");
  data->reopen('a');
  data->close();
}

TEST_F(ManagementData, SaveAfterTheLibraryOrDirectoryWentRaises) {
  oaCellDMData *data = oaCellDMData::open(named("L"), named("c"), 'a');
  oaIntProp::create(data, "n", 1);
  lib->close();
  EXPECT_EQ(raisedBy([&] { data->save(); }), oacLibNotFound);
  lib = oaLib::open(named("L"), path("L").c_str());
  data->save();
  std::filesystem::remove_all(path("L/c"));
  EXPECT_EQ(raisedBy([&] { data->save(); }), oacDMDataDoesNotExist);
  EXPECT_FALSE(std::filesystem::exists(path("L/c")));
  data->close();
}

// Foreign and damaged files: a named exception, and not one byte of them changes.
TEST_F(ManagementData, ForeignFilesAreNeverWrittenOver) {
  const struct {
    const char *name;
    std::string bytes;
  } cases[] = {
      {"licensed kit", std::string("\x67\x45\x23\x01", 4) + "rest of the file"},
      {"text", "some text that is no database\n"},
      {"short", "x"},
  };
  for (const auto &c : cases) {
    for (const char mode : {'r', 'a', 'w'}) {
      SCOPED_TRACE(std::string(c.name) + " in mode " + mode);
      writeFile(path("L/data.dm"), c.bytes);
      std::string message;
      EXPECT_NE(raisedBy([&] { oaLibDMData::open(named("L"), mode); }, &message), kNothingRaised);
      EXPECT_THAT(message, testing::HasSubstr(path("L/data.dm")));
      EXPECT_EQ(readFile(path("L/data.dm")), c.bytes);
      EXPECT_EQ(oaLibDMData::find(named("L")), nullptr);
      EXPECT_FALSE(std::filesystem::exists(path("L/data.dm.cdslck")));
    }
  }
}

} // namespace
