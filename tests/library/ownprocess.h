#ifndef OWNPROCESS_H
#define OWNPROCESS_H

#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

// A folder of this test alone, removed with it, with a home folder and a working folder in it.
class ScratchFolder {
public:
  ScratchFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tarnwickdale.XXXXXX").string();
    path_ = std::filesystem::canonical(mkdtemp(pattern.data())); // as the working folder will be told
    std::filesystem::create_directories(home());
    std::filesystem::create_directories(work());
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder &) = delete;
  ScratchFolder &operator=(const ScratchFolder &) = delete;

  std::filesystem::path path() const { return path_; }
  std::filesystem::path home() const { return path_ / "home"; }
  std::filesystem::path work() const { return path_ / "work"; }

private:
  std::filesystem::path path_;
};

inline void writeFile(const std::filesystem::path &file, const std::string &text) {
  std::ofstream(file, std::ios::binary) << text;
}

inline std::string readFile(const std::filesystem::path &file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

// What `body` printed on standard output.
inline std::string printedBy(const std::function<void()> &body) {
  testing::internal::CaptureStdout();
  body();
  return testing::internal::GetCapturedStdout();
}

// OpenAccess starts once per process, from HOME and the working folder, so each start has a process of its own. Runs
// `body` there with the folder's home and working folder; its failed expectations are printed and make this return
// false.
inline bool inOwnProcess(const ScratchFolder &folder, const std::function<void()> &body) {
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) {
    setenv("HOME", folder.home().c_str(), 1);
    unsetenv("DMSystem");
    std::filesystem::current_path(folder.work());
    try {
      body();
    } catch (...) {
      ADD_FAILURE() << "an exception left the body";
    }
    std::fflush(nullptr);
    _exit(testing::Test::HasFailure() ? 1 : 0);
  }
  int status = 0;
  return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

#endif
