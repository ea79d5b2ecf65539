// oacheck: verifies the checksums and cross-references of libraries and database files, and says what is damaged.

#include "cellviewfiles.h"
#include "checkoutput.h"
#include "librarycheck.h"

#include <CLI/CLI.hpp>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

using namespace OpenAccess_4::kit;

constexpr int kDamage = 1;
constexpr int kUsageError = 2;

struct Options {
  std::vector<std::string> paths;
  std::string name;
  std::uint64_t limit = 100;
  bool isQuiet = false;
  bool isJson = false;
};

// Shows on a terminal what is looked at, now and then.
class ProgressLine {
public:
  explicit ProgressLine(bool isShown) : isShown_(isShown && ::isatty(STDERR_FILENO) == 1) {}
  ~ProgressLine() { clear(); }
  void show(const std::string &file, const check::Totals &totals) {
    constexpr auto kPause = std::chrono::milliseconds(100);
    const auto now = std::chrono::steady_clock::now();
    if (isShown_ && now - last_ >= kPause) {
      last_ = now;
      const std::string end = file.size() > 60 ? "..." + file.substr(file.size() - 57) : file;
      std::fprintf(stderr, "\r\033[K%llu databases, now %s", static_cast<unsigned long long>(totals.databases),
                   check::quoted(end).c_str());
      isWritten_ = true;
    }
  }
  void clear() {
    if (isWritten_) {
      std::fputs("\r\033[K", stderr);
      isWritten_ = false;
    }
  }

private:
  bool isShown_;
  bool isWritten_ = false;
  std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
};

// Files are mapped. The kit never changes one in place; who cuts one short while it is read ends up here.
void fileWasCut(int) {
  static const char message[] = "oacheck: a file was cut short, or its disk failed, while it was read\n";
  [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, message, sizeof message - 1);
  ::_exit(kDamage);
}

int checkAll(const Options &options) {
  ProgressLine progress(!options.isQuiet);
  std::vector<check::Finding> listed; // for JSON
  check::Findings findings(
      [&](const check::Finding &finding) {
        progress.clear();
        if (options.isJson) {
          listed.push_back(finding);
        } else if (!options.isQuiet || finding.severity == check::Severity::damage) {
          std::cout << textOf(finding) << '\n';
        }
      },
      options.limit);
  check::Totals totals;
  check::CheckOptions checkOptions;
  checkOptions.libraryName = options.name;
  checkOptions.progress = [&](const std::string &file, const check::Totals &sofar) { progress.show(file, sofar); };
  for (const std::string &path : options.paths) {
    if (isDirectory(path)) {
      check::checkLibrary(path, checkOptions, findings, totals);
    } else {
      check::checkFile(path, checkOptions, findings, totals);
    }
  }
  progress.clear();
  if (options.isJson) {
    check::writeJson(std::cout, options.paths, listed, findings, totals);
  } else if (!options.isQuiet) {
    std::cout << summaryOf(findings, totals) << '\n';
  }
  std::cout.flush();
  return findings.isDamaged() ? kDamage : 0;
}

int run(int argc, char **argv) {
  CLI::App app(
      "Verifies every checksum and cross-reference of libraries and database files. Changes nothing. Ends with "
      "0 when nothing is damaged, 1 when anything is, 2 when the command cannot be understood.",
      "oacheck");
  Options options;
  app.add_option("PATH", options.paths, "Directories of libraries, or database files")
      ->required()
      ->check(CLI::ExistingPath);
  app.add_option("--name", options.name, "What the library is called in its designs; default: like its directory");
  app.add_option("--limit", options.limit, "Findings to list of each file")->capture_default_str();
  app.add_flag("-q,--quiet", options.isQuiet, "Print damage only");
  app.add_flag("--json", options.isJson, "Print one JSON object");
  app.set_version_flag("--version", "oacheck " OACHECK_VERSION, "Print the version and exit");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError &error) {
    return app.exit(error) == 0 ? 0 : kUsageError;
  }
  std::signal(SIGBUS, fileWasCut);
  return checkAll(options);
}

} // namespace

int main(int argc, char **argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception &exception) {
    std::fprintf(stderr, "oacheck: %s\n", exception.what());
    return kDamage;
  }
}
