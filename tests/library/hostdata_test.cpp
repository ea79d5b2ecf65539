#include "oapluginmain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ownprocess.h"

using namespace oa;

namespace {

oaScalarName scalar(const char *name) { return oaScalarName(oaConvert::ns, name); }

// A library "chip" with the cell "inv", made by a process of its own and defined in lib.defs.
class HostData : public testing::Test {
protected:
  HostData() {
    EXPECT_TRUE(inOwnProcess(folder, [&] {
      oaPlugInMain plugIn;
      ASSERT_TRUE(plugIn.checkLib("chip", QString::fromStdString(chip().string()), true));
      oaDesign *design =
          oaDesign::open(scalar("chip"), scalar("inv"), scalar("layout"), oaViewType::get(oacMaskLayout), 'w');
      oaBlock::create(design, true);
      design->save();
      design->close();
    }));
  }
  std::filesystem::path chip() const { return folder.path() / "chip"; }
  // Runs `body` with a plug-in that has been started, in a process of its own; what it printed.
  std::string printedIn(const std::function<void(oaPlugInMain &)> &body, bool debug = false) const {
    EXPECT_TRUE(inOwnProcess(folder, [&] {
      oaPlugInMain plugIn;
      plugIn.init(false);
      oaConvert::debug = debug;
      writeFile(folder.path() / "printed", printedBy([&] { body(plugIn); }));
    }));
    return readFile(folder.path() / "printed");
  }
  // The properties of the cell's management data as another process finds them: name, application type, bytes.
  std::string onDisk() const {
    return printedIn([](oaPlugInMain &) {
      if (!oaCellDMData::exists(scalar("chip"), scalar("inv"))) {
        std::printf("no data");
        return;
      }
      oaCellDMData *data = oaCellDMData::open(scalar("chip"), scalar("inv"), 'r');
      oaIter<oaProp> properties(data->getProps());
      while (const oaProp *property = properties.getNext()) {
        oaString name, type;
        oaByteArray bytes;
        property->getName(name);
        ASSERT_EQ(property->getType(), oacAppPropType);
        static_cast<const oaAppProp *>(property)->getAppType(type);
        static_cast<const oaAppProp *>(property)->getValue(bytes);
        std::printf("%s(%s)=", static_cast<const char *>(name), static_cast<const char *>(type));
        for (oaUInt4 i = 0; i < bytes.getNumElements(); ++i) {
          std::printf(bytes[i] > ' ' && bytes[i] < 0x7f ? "%c" : "\\%02x", unsigned(bytes[i]));
        }
        std::printf(";");
      }
      data->close();
    });
  }
  ScratchFolder folder;
};

TEST_F(HostData, LastTextStaysAndTheOtherPropertyIsLeftAlone) {
  EXPECT_EQ(onDisk(), "no data");
  EXPECT_EQ(printedIn([](oaPlugInMain &plugIn) {
              plugIn.writeLayoutData("chip", "inv", "first");
              plugIn.writeCdfData("chip", "inv", "cdf");
              plugIn.writeLayoutData("chip", "inv", QString::fromUtf8("s\303\251cond\n\342\202\254"));
              EXPECT_EQ(oaLib::find(scalar("chip"))->getAccessLevel(), oacNoLibAccessLevel);
            }),
            "");
  EXPECT_EQ(onDisk(), "cdfData(ILList)=cdf;TarnwickdaleData(Tarnwickdale)=s\\e9cond\\0a?;");
  EXPECT_EQ(printedIn([](oaPlugInMain &plugIn) {
              plugIn.writeCdfData("chip", "inv", "");
              plugIn.removeLayoutData("chip", "inv");
            }),
            "");
  EXPECT_EQ(onDisk(), "cdfData(ILList)=;");
}

TEST_F(HostData, RemovingFromACellWithoutDataChangesNothing) {
  EXPECT_EQ(printedIn([](oaPlugInMain &plugIn) { plugIn.removeLayoutData("chip", "inv"); }), "");
  EXPECT_EQ(onDisk(), "no data");
  EXPECT_FALSE(std::filesystem::exists(chip() / "inv" / "data.dm"));
}

TEST_F(HostData, DiagnosticLinesNameEachProperty) {
  EXPECT_EQ(printedIn(
                [](oaPlugInMain &plugIn) {
                  plugIn.writeCdfData("chip", "inv", "a b");
                  plugIn.writeLayoutData("chip", "inv", "xyz");
                },
                true),
            "write 3 (chip/inv) a b\n"
            "cell DM prop (cdfData): a b\n"
            "cell DM proname (AppProp)\n"
            "write 3 (chip/inv) xyz\n");
  EXPECT_EQ(printedIn([](oaPlugInMain &plugIn) { plugIn.removeLayoutData("chip", "inv"); }, true),
            "cell DM prop (cdfData): a b\n"
            "cell DM proname (AppProp)\n"
            "cell DM prop (TarnwickdaleData): xyz\n"
            "cell DM proname (AppProp)\n");
}

TEST_F(HostData, FailuresArePrintedUnderTheOperationsName) {
  const struct {
    const char *label;
    std::function<void(oaPlugInMain &, const char *lib, const char *cell)> call;
    bool needsCell;
  } operations[] = {
      {"removeLayoutData",
       [](oaPlugInMain &plugIn, const char *lib, const char *cell) { plugIn.removeLayoutData(lib, cell); }, false},
      {"writeLayoutData",
       [](oaPlugInMain &plugIn, const char *lib, const char *cell) { plugIn.writeLayoutData(lib, cell, "d"); }, true},
      {"writeCdfData",
       [](oaPlugInMain &plugIn, const char *lib, const char *cell) { plugIn.writeCdfData(lib, cell, "d"); }, true},
  };
  for (const auto &operation : operations) {
    SCOPED_TRACE(operation.label);
    const std::string label = std::string("ERROR (") + operation.label + "): ";
    EXPECT_EQ(printedIn([&](oaPlugInMain &plugIn) { operation.call(plugIn, "none", "inv"); }), label + "e \n");
    const std::string printed = printedIn([&](oaPlugInMain &plugIn) { operation.call(plugIn, "chip", "none"); });
    if (operation.needsCell) {
      EXPECT_THAT(printed, testing::StartsWith(label));
      EXPECT_THAT(printed, testing::HasSubstr("chip/none"));
    } else {
      EXPECT_EQ(printed, "");
    }
  }
}

TEST_F(HostData, ReadOnlyMediumKeepsWhatItHas) {
  printedIn([](oaPlugInMain &plugIn) { plugIn.writeLayoutData("chip", "inv", "kept"); });
  writeFile(folder.home() / "lib.defs", "DEFINE chip " + chip().string() + "\nASSIGN chip libMode readOnly\n");
  EXPECT_THAT(printedIn([](oaPlugInMain &plugIn) { plugIn.writeLayoutData("chip", "inv", "lost"); }),
              testing::MatchesRegex("ERROR \\(writeLayoutData\\): .*read-only \n"));
  EXPECT_THAT(printedIn([](oaPlugInMain &plugIn) { plugIn.removeLayoutData("chip", "inv"); }),
              testing::MatchesRegex("ERROR \\(removeLayoutData\\): .*read-only \n"));
  EXPECT_EQ(onDisk(), "TarnwickdaleData(Tarnwickdale)=kept;");
}

// The data of a cell that another process is editing is refused, and the refused text is not stored later either.
TEST_F(HostData, DataThatAnotherProcessEditsIsRefused) {
  int ready[2], done[2];
  ASSERT_EQ(pipe(ready), 0);
  ASSERT_EQ(pipe(done), 0);
  const pid_t editor = fork();
  ASSERT_GE(editor, 0);
  if (editor == 0) {
    close(done[1]);
    setenv("HOME", folder.home().c_str(), 1);
    std::filesystem::current_path(folder.work());
    oaConvert::init();
    oaCellDMData::open(scalar("chip"), scalar("inv"), 'a');
    char byte = 'r';
    const bool isTold = write(ready[1], &byte, 1) == 1;
    _exit(isTold && read(done[0], &byte, 1) == 0 ? 0 : 1);
  }
  close(ready[1]);
  char byte = 0;
  ASSERT_EQ(read(ready[0], &byte, 1), 1);
  EXPECT_THAT(printedIn([&](oaPlugInMain &plugIn) {
                close(done[1]);
                plugIn.writeLayoutData("chip", "inv", "late");
              }),
              testing::HasSubstr("is being edited"));
  close(done[1]);
  waitpid(editor, nullptr, 0);
  EXPECT_EQ(onDisk(), "no data");
}

} // namespace
