// Whole libraries: their files and directories, and what others do to them meanwhile.

#include "oachecktest.h"

#include <csignal>
#include <cstdio>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace oachecktest;

namespace {

class LibraryFiles : public OacheckTest {
protected:
  LibraryFiles() { fulldesign::make(libName()); }
  void expectDamage(const char *what, const Outcome &outcome) const {
    EXPECT_EQ(outcome.damages, 1U) << outcome.text();
    EXPECT_NE(outcome.text().find(what), std::string::npos) << outcome.text();
  }
  void saveSides() const {
    oaTech *tech = oaTech::create(lib());
    oaPhysicalLayer *metal = oaPhysicalLayer::create(tech, "metal", 1, oacMetalMaterial);
    oaPhysicalLayer *poly = oaPhysicalLayer::create(tech, "poly", 2, oacPolyMaterial);
    oaDerivedLayer::create(metal, poly, oaLayerOp(oacAndLayerOp), "gate", 3);
    tech->save();
    tech->close();
    oaLibDMData *data = oaLibDMData::open(scalar(libName()), 'a');
    fulldesign::addProperties(data);
    data->save();
    data->close();
    oaCellDMData *cellData = oaCellDMData::open(scalar(libName()), scalar("full"), 'a');
    oaIntProp::create(cellData, "n", 1);
    cellData->save();
    cellData->close();
  }
  // Says so when the first view is there that is not removed at once.
  [[noreturn]] void writeForEver(int ready) const {
    for (int round = 0;; ++round) {
      const std::string cell = "busy" + std::to_string(round % 3);
      oaDesign *design = open(cell, 'w');
      oaBlock *block = oaBlock::create(design);
      for (oaCoord i = 0; i <= round % 50; ++i) {
        oaRect::create(block, 1, 1, oaBox(i, 0, i + 10, 10));
      }
      design->save();
      design->close();
      if (round % 7 == 0) {
        fs::remove_all(viewFolder(cell));
      }
      if (round == 1 && ::write(ready, "r", 1) != 1) {
        throw std::runtime_error("cannot say that it is ready");
      }
    }
  }
};

TEST_F(LibraryFiles, ASoundLibraryIsClean) {
  saveSides();
  const Outcome outcome = checkedLibrary();
  EXPECT_EQ(outcome.text(), "");
  EXPECT_EQ(outcome.totals.cells, 2U);
  EXPECT_EQ(outcome.totals.views, 2U);
  EXPECT_EQ(outcome.totals.databases, 5U);
  EXPECT_EQ(outcome.totals.mastersElsewhere, 1U);
}

TEST_F(LibraryFiles, DamageOfFilesIsNamed) {
  const fs::path tag = viewFolder("full") / "master.tag";
  const std::string goodTag = bytesOf(tag);
  const struct {
    const char *tag, *what;
  } tags[] = {{"-- comment\nsch.oa\n", "master.tag names \"sch.oa\", which is not there"},
              {"../full/layout.oa\n", "the name of a file in the same directory"},
              {"-- nothing\n", "master.tag names no file"},
              {"\x1b[2J\n", "\"\\x1b[2J\""},
              {"caf\xe9 na\xc3\xafve\n", "\"caf\\xe9 na\xc3\xafve\""}};
  for (const auto &c : tags) {
    writeBytes(tag, c.tag);
    expectDamage(c.what, checkedLibrary());
  }
  writeBytes(tag, goodTag);

  const std::string goodLibrary = bytesOf(libFolder() / ".oalib");
  writeBytes(libFolder() / ".oalib", "<Nonsense");
  expectDamage(".oalib", checkedLibrary());
  const struct {
    const char *text, *what;
  } marks[] = {
      {"<Library DMSystem=\"oaDMOther\">\n<oaDMOther libReadOnly=\"No\"/>\n</Library>\n", "DMSystem is \"oaDMOther\""},
      {"<Library DMSystem=\"oaDMFileSys\">\n<oaDMFileSys libReadOnly=\"No\"/>\n", "\"Library\" is not closed"},
      {"<Library DMSystem=\"oaDMFileSys\">\n<oaDMFileSys libReadOnly=\"N>o\"/>\n</Library>\n",
       "libReadOnly is \"N>o\""},
      {"<Library DMSystem=\"oaDMFileSys\">\n<More/><oaDMFileSys libReadOnly=\"No\"/>\n</Library>\n",
       "an element \"More\""},
      {"<Library DMSystem=\"oaDMFileSys\">\n<oaDMFileSys libReadOnly=\"No\"/></More>\n</Library>\n",
       "an end of an element \"More\""},
  };
  for (const auto &c : marks) {
    SCOPED_TRACE(c.text);
    writeBytes(libFolder() / ".oalib", c.text);
    expectDamage(c.what, checkedLibrary());
  }
  fs::remove(libFolder() / ".oalib");
  expectDamage(".oalib: is missing", checkedLibrary());
  writeBytes(libFolder() / ".oalib", goodLibrary);

  // A database in the place of another kind.
  fs::copy_file(file("full"), libFolder() / "tech.db");
  expectDamage("tech.db: is a design (kind 1); expected a technology", checkedLibrary());
  fs::remove(libFolder() / "tech.db");
  saveSides();
  fs::copy_file(libFolder() / "data.dm", viewFolder("full") / "data.dm");
  expectDamage("table database, row 0, column kind", checkedLibrary());
  fs::remove(viewFolder("full") / "data.dm");

  writeBytes(file("full"), "no design, though its name says so, and long enough to be one with its header of 64 bytes");
  expectDamage("layout.oa: is not a database file of this kit", checkedLibrary());
}

TEST_F(LibraryFiles, WhatIsNoDamage) {
  // A view that was made and never saved, a view of another program, other directories, somebody's lock.
  writeBytes(file("full"), "");
  fs::create_directories(libFolder() / "text" / "verilog");
  writeBytes(libFolder() / "text" / "verilog" / "verilog.v", "module m; endmodule\n");
  fs::create_directories(libFolder() / ".git" / "objects");
  fs::create_directories(libFolder() / "text" / "empty");
  writeBytes(viewFolder("leaf") / "layout.oa.cdslck", "somebody\n");
  const Outcome outcome = checkedLibrary();
  EXPECT_EQ(outcome.damages, 0U) << outcome.text();
  EXPECT_EQ(outcome.warnings, 1U) << outcome.text();
  EXPECT_NE(outcome.text().find("is empty"), std::string::npos);
  EXPECT_EQ(outcome.totals.otherFiles, 1U);
}

TEST_F(LibraryFiles, AnEmptyMarkAndAttributesOfOthersAreNoDamage) {
  writeBytes(libFolder() / ".oalib", "");
  EXPECT_EQ(checkedLibrary().text(), "");
  writeBytes(libFolder() / ".oalib", "<?xml version=\"1.0\"?><!-- </More> --><Library DMSystem='oaDMFileSys'>"
                                     "<oaDMFileSys libReadOnly='yes' ours='1'></oaDMFileSys></Library>");
  const Outcome outcome = checkedLibrary();
  EXPECT_EQ(outcome.damages, 0U) << outcome.text();
  EXPECT_EQ(outcome.warnings, 1U) << outcome.text();
  EXPECT_NE(outcome.text().find("attribute \"ours\""), std::string::npos) << outcome.text();
}

TEST_F(LibraryFiles, LibraryOfAServerIsForeign) {
  writeBytes(libFolder() / ".oalib", "<Library DMSystem=\"oaDMTurbo\">\n<oaDMTurbo host=\"x\"/>\n</Library>\n");
  const Outcome outcome = checkedLibrary();
  EXPECT_EQ(outcome.damages, 0U) << outcome.text();
  EXPECT_NE(outcome.text().find("oaDMTurbo, a server"), std::string::npos) << outcome.text();
}

TEST_F(LibraryFiles, MissingMastersAreWarnings) {
  fs::remove_all(viewFolder("leaf"));
  const Outcome outcome = checkedLibrary();
  EXPECT_EQ(outcome.damages, 0U) << outcome.text();
  EXPECT_EQ(outcome.warnings, 1U) << outcome.text();
  EXPECT_NE(outcome.text().find("leaf/layout\" is not in the library"), std::string::npos) << outcome.text();
  // Under another name the library knows nothing of its masters.
  EXPECT_EQ(oachecktest::checkedLibrary(libFolder(), "other").warnings, 0U);
  // A single file looks for them in the library around it, which is called like its directory here.
  EXPECT_EQ(checkedFile(file("full")).totals.mastersElsewhere, 2U);
}

// A process that saves, makes and removes designs all the time is no reason for alarm.
TEST_F(LibraryFiles, WritingMeanwhileIsNoDamage) {
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t writer = ::fork();
  ASSERT_GE(writer, 0);
  if (writer == 0) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL); // not to go on for long when the test is killed
    try {
      writeForEver(ready[1]);
    } catch (const oaException &exception) {
      std::fprintf(stderr, "the writer raised %s\n", static_cast<const char *>(exception.getMsg()));
    } catch (const std::exception &exception) {
      std::fprintf(stderr, "the writer raised %s\n", exception.what());
    }
    ::_exit(1);
  }
  ::close(ready[1]);
  char byte = 0;
  EXPECT_EQ(::read(ready[0], &byte, 1), 1) << "the writer has saved something";
  ::close(ready[0]);
  std::uint64_t views = 0;
  for (int round = 0; round < 150; ++round) {
    const Outcome outcome = checkedLibrary();
    EXPECT_EQ(outcome.damages, 0U) << outcome.text();
    views += outcome.totals.views;
  }
  ::kill(writer, SIGKILL);
  int status = 0;
  ::waitpid(writer, &status, 0);
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "the writer ended by itself with " << status;
  EXPECT_GT(views, 300U);
}

} // namespace
