#include "gdsbytes.h"
#include "hostprocess.h"

#include <oa/oaDesignDB.h>

#include <gmock/gmock.h>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <thread>

#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace oa;
using testing::HasSubstr;

oaScalarName named(const char *text) { return oaScalarName(oaNativeNS(), text); }

// A library "lib" with the cells INV and BUF, each with a layout, and a host that runs beside it.
class LibraryCommands : public testing::Test {
protected:
  LibraryCommands() {
    const QByteArray gds = GdsBytes()
                               .head()
                               .structure("INV")
                               .boundary(68, {0, 0, 0, 50, 100, 50, 100, 0, 0, 0})
                               .endStructure()
                               .structure("BUF")
                               .endStructure()
                               .endLibrary()
                               .bytes;
    host.write("lib.gds", gds);
    const HostResult result = host.run("import-gds lib.gds --lib lib --path lib_dir");
    EXPECT_EQ(result.exitCode, 0) << result.errors;
  }
  // Runs `body` on the library with the API, in a process of its own.
  void onDisk(const std::function<void(oaLib *)> &body) const {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
      try {
        oaDesignInit(5, 506);
        body(oaLib::open(named("lib"), host.path("lib_dir").toLatin1().constData()));
      } catch (const oaException &exception) {
        ADD_FAILURE() << exception.getMsg();
      }
      std::fflush(nullptr);
      _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }
  std::string output(const char *arguments) {
    const HostResult result = host.run(arguments);
    EXPECT_EQ(result.exitCode, 0) << arguments;
    EXPECT_EQ(result.errors, "") << arguments;
    return result.output.toStdString();
  }
  HostProcess host;
};

TEST_F(LibraryCommands, LayersOfTheTechnology) {
  onDisk([](oaLib *lib) {
    oaTech *tech = oaTech::exists(lib) ? oaTech::open(lib, 'w') : oaTech::create(lib);
    oaPhysicalLayer::create(tech, "metal 2", 69);
    oaPhysicalLayer::create(tech, "poly", 4);
    oaPhysicalLayer::create(tech, "far", 65536);
    tech->save();
  });
  EXPECT_EQ(output("layers lib"), "69 metal 2\n4 poly\n");
  EXPECT_EQ(output("layers lib --count 69"), "4 poly\n");
  EXPECT_EQ(output("layers lib --count 65537"), "69 metal 2\n4 poly\n65536 far\n");
  EXPECT_EQ(output("layers lib --count 0"), "");
  const QJsonArray layers = QJsonDocument::fromJson(output("layers lib --format json").c_str()).array();
  ASSERT_EQ(layers.size(), 2);
  EXPECT_EQ(layers[0].toObject()["number"].toInt(), 69);
  EXPECT_EQ(layers[0].toObject()["name"].toString().toStdString(), "metal 2");
}

TEST_F(LibraryCommands, RemovedCellsAndViewsLeaveTheDisk) {
  EXPECT_EQ(output("rm lib INV layout"), "removed lib/INV/layout\n");
  EXPECT_FALSE(QDir(host.path("lib_dir/INV/layout")).exists());
  EXPECT_EQ(output("cells lib"), "BUF\nINV\n");
  EXPECT_EQ(output("rm lib BUF"), "removed lib/BUF/layout\nremoved lib/BUF\n");
  EXPECT_EQ(output("rm lib INV"), "removed lib/INV\n");
  EXPECT_EQ(output("cells lib"), "");
}

TEST_F(LibraryCommands, AnEmptyViewIsNoView) {
  const HostResult result = host.run(QStringList{"rm", "lib", "INV", ""});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, HasSubstr("the name of the view to be removed is empty"));
  EXPECT_EQ(output("views lib INV"), "layout\n");
}

TEST_F(LibraryCommands, DataTravelsWithTheCell) {
  EXPECT_EQ(output("data lib INV"), "");
  EXPECT_EQ(output("data lib INV --set first"), "");
  EXPECT_EQ(host.run({"data", "lib", "INV", "--set", "a \"b\"\nc"}).exitCode, 0);
  EXPECT_EQ(output("data lib INV --cdf description"), "");
  EXPECT_EQ(output("data lib INV"), "TarnwickdaleData \"a \\\"b\\\"\\nc\"\ncdfData \"description\"\n");
  onDisk([](oaLib *) {
    oaCellDMData *data = oaCellDMData::open(named("lib"), named("INV"), 'r');
    EXPECT_EQ(data->getProps().getCount(), 2u);
    data->close();
  });
  EXPECT_EQ(output("data lib INV --remove"), "");
  EXPECT_EQ(output("data lib INV"), "cdfData \"description\"\n");
  EXPECT_EQ(host.run({"data", "lib", "INV", "--set", ""}).exitCode, 0);
  EXPECT_EQ(output("data lib INV"), "cdfData \"description\"\nTarnwickdaleData \"\"\n");
  EXPECT_EQ(output("data lib BUF"), "");
  // Nothing of it can be drawn.
  EXPECT_EQ(output("rm lib INV layout"), "removed lib/INV/layout\n");
  EXPECT_EQ(output("data lib INV"), "cdfData \"description\"\nTarnwickdaleData \"\"\n");
}

// The library's directory is lib_dir; a library of that name is another one.
TEST_F(LibraryCommands, LayersOfALibraryWhoseDirectoryHasAnotherName) {
  onDisk([](oaLib *lib) {
    oaTech *tech = oaTech::create(lib);
    oaPhysicalLayer::create(tech, "ours", 7);
    tech->save();
  });
  EXPECT_EQ(output("register other"), "created other at " + host.path("other").toStdString() + "\n");
  host.write("lib.defs", host.read("lib.defs") + "DEFINE lib_dir " + host.path("other").toLatin1() + "\n");
  EXPECT_EQ(output("layers lib"), "7 ours\n");
}

// Another process, which runs a script and then stays until it is released or this process has ended.
class Holder {
public:
  Holder(const HostProcess &host, const char *script) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", host.path(""));
    process_.setProcessEnvironment(environment);
    process_.setWorkingDirectory(host.path(""));
    process_.start(OAHOST_FILE, {"tcl", "-c", QString(script) + "\nputs held; flush stdout; read stdin"});
    constexpr int kTimeoutMs = 30000;
    EXPECT_TRUE(process_.waitForReadyRead(kTimeoutMs)) << process_.readAllStandardError().toStdString();
  }
  ~Holder() { release(); }
  void release() {
    process_.kill();
    process_.waitForFinished();
  }
  pid_t process() const { return static_cast<pid_t>(process_.processId()); }
  std::string id() const { return "process " + std::to_string(process()); }

private:
  QProcess process_;
};

TEST_F(LibraryCommands, WhoHoldsTheLibraryIsNamed) {
  const Holder holder(host, "oa::getAccess [oa::LibFind lib] write");
  for (const char *arguments : {"cells lib", "views lib INV", "view-type lib INV layout", "components lib"}) {
    SCOPED_TRACE(arguments);
    const HostResult result = host.run(("--wait 0.1 " + std::string(arguments)).c_str());
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.output, QByteArray());
    EXPECT_THAT(result.errors, HasSubstr("library lib is being written by " + holder.id()));
  }
}

// What cannot be looked up must not be taken for free.
TEST_F(LibraryCommands, NothingIsWrittenOverInALibraryThatAnotherProcessHolds) {
  ASSERT_EQ(host.run("import-gds lib.gds --lib other --path other_dir").exitCode, 0);
  host.write("INV.sch", "v {xschem version=3.0.0 file_version=1.2}\nL 4 0 0 10 10 {}\n");
  const QByteArray before = host.read("lib_dir/INV/layout/layout.oa");
  const Holder holder(host, "oa::getAccess [oa::LibFind lib] write");
  for (const char *arguments :
       {"import-gds lib.gds --lib lib", "import-gds lib.gds --lib lib --path lib_dir", "copy other INV layout --to lib",
        "copy other INV layout --to lib --path lib_dir", "import-xschem INV.sch --lib lib"}) {
    SCOPED_TRACE(arguments);
    const HostResult result = host.run(("--wait 0.1 " + std::string(arguments)).c_str());
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.errors, HasSubstr("library lib is being written by " + holder.id()));
  }
  EXPECT_EQ(host.read("lib_dir/INV/layout/layout.oa"), before);
}

TEST_F(LibraryCommands, CommandsWaitForTheLibrary) {
  for (const char *arguments :
       {"cells lib", "dump lib INV layout", "rm lib INV layout", "data lib INV --set x", "rm lib INV"}) {
    SCOPED_TRACE(arguments);
    const Holder holder(host, "oa::getAccess [oa::LibFind lib] write");
    const pid_t holding = holder.process();
    ASSERT_GT(holding, 0) << "0 would be this test and whoever runs it";
    std::thread release([holding] {
      std::this_thread::sleep_for(std::chrono::milliseconds(700));
      kill(holding, SIGKILL);
    });
    const HostResult result = host.run(arguments);
    release.join();
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.errors, "");
  }
}

TEST_F(LibraryCommands, WhatIsBeingEditedStays) {
  Holder editor(host, "oa::DesignOpen lib INV layout a");
  for (const char *arguments : {"rm lib INV layout", "rm lib INV"}) {
    SCOPED_TRACE(arguments);
    const HostResult result = host.run(arguments);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.errors, HasSubstr("somebody edits INV/layout: login "));
    EXPECT_THAT(result.errors, HasSubstr(editor.id()));
    EXPECT_THAT(result.errors, HasSubstr("--force"));
  }
  EXPECT_EQ(output("rm lib BUF"), "removed lib/BUF/layout\nremoved lib/BUF\n");
  const HostResult forced = host.run("rm lib INV layout --force");
  EXPECT_EQ(forced.output, "removed lib/INV/layout\n") << forced.errors;
  EXPECT_THAT(forced.errors, HasSubstr("somebody edits INV/layout"));
}

TEST_F(LibraryCommands, CellStaysWhileItsDataAreEdited) {
  const Holder editor(host, "oa::CellDMDataOpen lib INV a");
  const HostResult result = host.run("rm lib INV");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, HasSubstr("somebody edits INV: login "));
  EXPECT_EQ(output("rm lib INV layout"), "removed lib/INV/layout\n");
}

// The lock file that a killed editor leaves behind is no editor.
TEST_F(LibraryCommands, LockFilesOfTheDeadDoNotCount) {
  host.write("lib_dir/INV/layout/layout.oa.cdslck", "login ann\nprocess 1\n");
  EXPECT_EQ(output("rm lib INV layout"), "removed lib/INV/layout\n");
}

TEST_F(LibraryCommands, PathsThatThePlugInCannotTakeAreRefused) {
  const std::string folder = host.path("").toStdString();
  for (const char *arguments : {"register b\303\274cher", "import-gds lib.gds --lib new --path b\303\274cher"}) {
    // Through the shell, which passes the bytes on whatever the locale is.
    std::string command = "cd " + folder;
    command += " && HOME=" + folder;
    command += std::string(" ") + OAHOST_FILE + " " + arguments + " > out.txt 2> err.txt";
    EXPECT_NE(std::system(command.c_str()), 0) << arguments;
    EXPECT_THAT(host.read("err.txt").toStdString(), HasSubstr("has to be ASCII here"));
  }
  EXPECT_EQ(QDir(host.path("")).entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList{"lib_dir"});
}

TEST_F(LibraryCommands, RegisteredLibraryIsKnownFromThenOn) {
  const std::string made = host.path("fresh").toStdString();
  EXPECT_EQ(output("register fresh"), "created fresh at " + made + "\n");
  EXPECT_EQ(output("register fresh/"), "registered fresh at " + made + "\n");
  EXPECT_EQ(output("libs"), "fresh\nlib\n");
  QDir().mkdir(host.path("sub"));
  const HostResult again = host.run("register sub/fresh");
  EXPECT_EQ(again.exitCode, 1);
  EXPECT_THAT(again.errors, HasSubstr("a library fresh is known already, at " + made));
  EXPECT_FALSE(QDir(host.path("sub/fresh")).exists());
}

TEST_F(LibraryCommands, MistakesAreTold) {
  const struct {
    const char *arguments;
    int exitCode;
    const char *errors;
  } cases[] = {
      {"rm lib NONE", 1, "library lib has no cell NONE"},
      {"rm lib INV none", 1, "cell INV of library lib has no view none"},
      {"rm none INV", 1, "library none is not known"},
      {"rm lib", 2, "CELL"},
      {"data lib NONE --set x", 1, "library lib has no cell NONE"},
      {"data lib INV --set x --remove", 2, "--remove"},
      {"layers none", 1, "library none is not known"},
      {"layers lib --count -1", 2, "--count"},
      {"register /nowhere/at/all", 1, "/nowhere/at/all"},
      {"register /", 1, "/"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.arguments);
    const HostResult result = host.run(c.arguments);
    EXPECT_EQ(result.exitCode, c.exitCode);
    EXPECT_EQ(result.output, QByteArray());
    EXPECT_THAT(result.errors, HasSubstr(c.errors));
  }
  EXPECT_EQ(output("cells lib"), "BUF\nINV\n");
}

TEST_F(LibraryCommands, LibraryWithoutTechnologyOrRightsIsTold) {
  EXPECT_EQ(output("register bare"), "created bare at " + host.path("bare").toStdString() + "\n");
  const HostResult layers = host.run("layers bare");
  EXPECT_EQ(layers.exitCode, 1);
  EXPECT_THAT(layers.errors, HasSubstr("technology of bare: there is none"));

  host.write("lib.defs", host.read("lib.defs") + "ASSIGN lib libMode readOnly\n");
  for (const char *arguments : {"rm lib INV", "rm lib INV layout", "data lib INV --set x"}) {
    SCOPED_TRACE(arguments);
    const HostResult result = host.run(arguments);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.output, QByteArray());
    EXPECT_THAT(result.errors, HasSubstr("read-only"));
  }
  EXPECT_EQ(output("views lib INV"), "layout\n");
}

} // namespace
