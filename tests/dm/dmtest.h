// What the tests of libraries and technologies share: a folder, the id of what was raised, names, a second process.
#ifndef TESTS_DM_DMTEST_H
#define TESTS_DM_DMTEST_H

#include <oa/oaDMDB.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace dmtest {

using namespace oa;

constexpr oaUInt4 kNothingRaised = 0xfffffffe;

// The message id of the exception, or kNothingRaised.
template <class Call> oaUInt4 raisedBy(Call call, std::string *message = nullptr) {
  try {
    call();
  } catch (const oaException &exception) {
    if (message != nullptr) {
      *message = std::string(exception.getMsg());
    }
    return exception.getMsgId();
  }
  return kNothingRaised;
}

inline oaScalarName named(const std::string &text) { return oaScalarName(oaNativeNS(), text.c_str()); }

template <class Object> std::string nameOf(const Object *object) {
  oaString name;
  object->getName(oaNativeNS(), name);
  return std::string(name);
}

// Names of the members, in their order.
template <class Object, class Collection> std::vector<std::string> namesIn(const Collection &collection) {
  std::vector<std::string> names;
  oaIter<Object> objects(collection);
  while (const Object *object = objects.getNext()) {
    names.push_back(nameOf(object));
  }
  return names;
}

inline void writeFile(const std::filesystem::path &file, const std::string &bytes) {
  std::filesystem::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << bytes;
}

inline std::string readFile(const std::filesystem::path &file) {
  std::ostringstream bytes;
  bytes << std::ifstream(file, std::ios::binary).rdbuf();
  return bytes.str();
}

// A folder of its own for each test, which is also the working folder and HOME.
class DMTest : public testing::Test {
protected:
  DMTest() {
    std::string pattern = (std::filesystem::temp_directory_path() / "dmtest-XXXXXX").string();
    folder_ = std::filesystem::canonical(::mkdtemp(pattern.data()));
    std::filesystem::create_directory(folder_ / "home");
    std::filesystem::create_directory(folder_ / "work");
    ::setenv("HOME", (folder_ / "home").c_str(), 1);
    std::filesystem::current_path(folder_ / "work");
    oaDMInit();
  }
  ~DMTest() override {
    std::filesystem::current_path("/");
    std::filesystem::remove_all(folder_);
  }

  std::string path(const std::string &name) const { return (folder_ / name).string(); }
  oaLib *createLib(const std::string &name) { return oaLib::create(named(name), path(name).c_str()); }

private:
  std::filesystem::path folder_;
};

// A second process that runs `body`, reports that it is ready, and then lives until it is told to end or is killed.
class OtherProcess {
public:
  explicit OtherProcess(const std::function<void()> &body) {
    int ready[2];
    int end[2];
    if (::pipe(ready) != 0 || ::pipe(end) != 0) {
      std::abort();
    }
    std::fflush(nullptr);
    process_ = ::fork();
    if (process_ < 0) {
      std::abort();
    }
    if (process_ == 0) {
      ::close(end[1]);
      try {
        body();
      } catch (...) {
        ::_exit(2);
      }
      char byte = testing::Test::HasFailure() ? 'f' : 'r';
      (void)!::write(ready[1], &byte, 1);
      (void)!::read(end[0], &byte, 1);
      ::_exit(0);
    }
    ::close(ready[1]);
    ::close(end[0]);
    end_ = end[1];
    char byte = 0;
    isReady_ = ::read(ready[0], &byte, 1) == 1 && byte == 'r';
    ::close(ready[0]);
  }
  ~OtherProcess() { finish(); }
  // Whether the body went through without an exception or a failed expectation.
  bool isReady() const { return isReady_; }
  void kill() {
    if (process_ > 0) { // 0, after the end, would be this process and whoever runs it
      ::kill(process_, SIGKILL);
    }
    finish();
  }
  void finish() {
    if (process_ != 0) {
      ::close(end_);
      ::waitpid(process_, nullptr, 0);
      process_ = 0;
    }
  }

private:
  pid_t process_ = 0;
  int end_ = -1;
  bool isReady_ = false;
};

} // namespace dmtest

#endif
