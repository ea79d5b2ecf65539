#include "testdatabase.h"

#include "filelayer.h"

#include <cerrno>
#include <cstdio>
#include <gmock/gmock.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace storetest;

namespace {

// Fails the call with a given number, as a full or broken disk would. A failed write has written a part.
class FailingFiles : public kit::FileLayer {
public:
  explicit FailingFiles(int failingCall) : failingCall_(failingCall) { previous_ = replace(this); }
  ~FailingFiles() override { replace(previous_); }

  int open(const char *path, int flags, int mode) override {
    return fails(EACCES) ? -1 : FileLayer::open(path, flags, mode);
  }
  long write(int file, const void *bytes, std::size_t count) override {
    if (fails(ENOSPC)) {
      (void)FileLayer::write(file, bytes, count / 2);
      errno = ENOSPC;
      return -1;
    }
    return FileLayer::write(file, bytes, count);
  }
  long writeAt(int file, const void *bytes, std::size_t count, long long offsetBytes) override {
    return fails(EIO) ? -1 : FileLayer::writeAt(file, bytes, count, offsetBytes);
  }
  int sync(int file) override { return fails(EIO) ? -1 : FileLayer::sync(file); }
  int close(int file) override {
    const int closed = FileLayer::close(file);
    return fails(EIO) ? -1 : closed;
  }
  int rename(const char *from, const char *to) override { return fails(EACCES) ? -1 : FileLayer::rename(from, to); }
  bool hasFailed() const { return calls_ >= failingCall_; }

private:
  bool fails(int error) {
    if (++calls_ != failingCall_) {
      return false;
    }
    errno = error;
    return true;
  }
  int failingCall_;
  int calls_ = 0;
  FileLayer *previous_;
};

// Writes at most seven bytes at a time.
class ShortWrites : public kit::FileLayer {
public:
  ShortWrites() { previous_ = replace(this); }
  ~ShortWrites() override { replace(previous_); }
  long write(int file, const void *bytes, std::size_t count) override {
    return FileLayer::write(file, bytes, std::min<std::size_t>(count, 7));
  }
  long writeAt(int file, const void *bytes, std::size_t count, long long offsetBytes) override {
    return FileLayer::writeAt(file, bytes, std::min<std::size_t>(count, 7), offsetBytes);
  }

private:
  FileLayer *previous_;
};

} // namespace

TEST(Durability, AnyFailingCallOfASaveKeepsTheOldOrTheNewFileWhole) {
  const TemporaryDirectory directory;
  const std::string path = directory.file("db.oa");
  TestDatabase old;
  old.add("old", {{1, 2}}, kNoRow);
  TestDatabase fresh;
  fresh.add("fresh", {{3, 4}, {5, 6}}, kNoRow);
  bool savedAtLast = false;
  for (int call = 1; !savedAtLast && call < 500; ++call) {
    SCOPED_TRACE("failing call " + std::to_string(call));
    old.writeTo(path);
    {
      FailingFiles files(call);
      try {
        fresh.writeTo(path);
        savedAtLast = !files.hasFailed();
      } catch (const oaException &exception) {
        EXPECT_THAT(std::string(exception.getMsg()), testing::HasSubstr(path));
      }
    }
    EXPECT_THAT(dumpOfFile(path), testing::AnyOf(old.dump(), fresh.dump()));
    EXPECT_EQ(directory.entries(), 1u);
  }
  EXPECT_TRUE(savedAtLast);
}

TEST(Durability, ShortWritesAreContinued) {
  const TemporaryDirectory directory;
  const std::string path = directory.file("db.oa");
  TestDatabase database;
  database.add("whole", {{1, 2}, {3, 4}}, kNoRow);
  {
    ShortWrites files;
    database.writeTo(path);
  }
  EXPECT_EQ(dumpOfFile(path), database.dump());
}

TEST(Durability, AKilledWriterLeavesOneWholeFileAndItsRubbishIsRemoved) {
  const TemporaryDirectory directory;
  const std::string path = directory.file("db.oa");
  TestDatabase old;
  old.add("old", {{1, 2}}, kNoRow);
  old.writeTo(path);
  TestDatabase fresh;
  for (int i = 0; i < 20000; ++i) {
    fresh.add("fresh", {{i, i}, {i, i + 1}, {i + 1, i}}, kNoRow);
  }
  const std::string freshDump = fresh.dump();
  for (int round = 0; round < 20; ++round) {
    const pid_t writer = ::fork();
    ASSERT_GE(writer, 0);
    if (writer == 0) {
      ::prctl(PR_SET_PDEATHSIG, SIGKILL); // not to go on for ever when the test is killed
      while (true) {
        fresh.writeTo(path);
        old.writeTo(path);
      }
    }
    ::usleep(1000 + 700u * unsigned(round));
    ::kill(writer, SIGKILL);
    ::waitpid(writer, nullptr, 0);
    EXPECT_THAT(dumpOfFile(path), testing::AnyOf(old.dump(), freshDump)) << "round " << round;
  }
  old.writeTo(path);
  EXPECT_EQ(directory.entries(), 1u);
}

// A save may have to wait for access to the library when its new file is complete.
TEST(Durability, AFileThatIsAboutToBePutInPlaceIsNotTakenForRubbish) {
  const TemporaryDirectory directory;
  const std::string path = directory.file("lib.defs");
  kit::AtomicFile first(path);
  first.write("first", 5);
  first.commit([&] { kit::replaceFile(path, "second"); });
  EXPECT_EQ(readFile(path), "first");
  EXPECT_EQ(directory.entries(), 1u);
}

TEST(Durability, WritersOfOneFileAtTheSameTimeAllSucceed) {
  // Without waiting for the disk they meet more often.
  class NoSync : public kit::FileLayer {
    int sync(int) override { return 0; }
  };
  const TemporaryDirectory directory;
  const std::string path = directory.file("lib.defs");
  std::vector<pid_t> writers(3);
  for (pid_t &writer : writers) {
    writer = ::fork();
    if (writer == 0) {
      NoSync files;
      kit::FileLayer::replace(&files);
      try {
        for (int round = 0; round < 1000; ++round) {
          kit::replaceFile(path, std::string(100, 'x'));
        }
      } catch (const oaException &exception) {
        std::fprintf(stderr, "%s\n", static_cast<const char *>(exception.getMsg()));
        ::_exit(1);
      }
      ::_exit(0);
    }
  }
  for (const pid_t writer : writers) {
    int status = 0;
    EXPECT_EQ(::waitpid(writer, &status, 0), writer);
    EXPECT_EQ(status, 0);
  }
  EXPECT_EQ(readFile(path), std::string(100, 'x'));
  EXPECT_EQ(directory.entries(), 1u);
}

TEST(Durability, AReaderKeepsTheVersionItOpened) {
  const TemporaryDirectory directory;
  const std::string path = directory.file("db.oa");
  TestDatabase database;
  database.add("one", {{1, 1}}, kNoRow);
  database.writeTo(path);
  TestDatabase reader;
  reader.load(path);
  database.add("two", {{2, 2}}, kNoRow);
  database.writeTo(path);
  EXPECT_EQ(reader.dump(), "one kind 18: 1,1\n");
  EXPECT_EQ(dumpOfFile(path), database.dump());
}
