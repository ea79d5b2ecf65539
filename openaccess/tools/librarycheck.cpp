#include "librarycheck.h"

#include "cellviewfiles.h"
#include "databasefile.h"
#include "diskname.h"
#include "filecheck.h"
#include "filelayer.h"
#include "filelock.h"
#include "librarytext.h"
#include "oa/oaDesignDB.h"
#include "oa/oaNameSpaces.h"
#include "oa/oaScalarName.h"
#include "viadefinitions.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <thread>
#include <unordered_map>

namespace OpenAccess_4 {
namespace kit {
namespace check {

namespace {

bool endsWith(const std::string &text, const std::string &end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

std::string lastName(const std::string &path) { return path.substr(path.rfind('/') + 1); }

// Designs with their reserved names; whatever else ends so was meant to be a database, too.
bool isDesignName(const std::string &file) { return endsWith(file, ".oa"); }

// Whether masters of a library are on disk. Each is looked for once.
class Masters {
public:
  Masters(std::string directory, std::string libraryName, Totals &totals)
      : directory_(std::move(directory)), libraryName_(std::move(libraryName)), totals_(totals) {}

  MasterState find(const std::string &lib, const std::string &cell, const std::string &view) {
    if (lib != libraryName_) {
      ++totals_.mastersElsewhere;
      return MasterState::elsewhere;
    }
    const auto [entry, isNew] = known_.try_emplace(cell + '/' + view);
    if (isNew) {
      entry->second = isThere(cell, view);
    }
    return entry->second ? MasterState::present : MasterState::missing;
  }

private:
  bool isThere(const std::string &cell, const std::string &view) const {
    try {
      const oaNativeNS ns;
      const std::string place =
          directory_ + "/" + diskName(oaScalarName(ns, cell.c_str())) + "/" + diskName(oaScalarName(ns, view.c_str()));
      return isDirectory(place) && !findPrimaryFile(place).empty();
    } catch (const oaException &) {
      return false; // no directory can have such a name
    }
  }

  std::string directory_, libraryName_;
  Totals &totals_;
  std::unordered_map<std::string, bool> known_;
};

class LibraryCheck {
public:
  LibraryCheck(std::string directory, const CheckOptions &options, Findings &findings, Totals &totals)
      : directory_(std::move(directory)), options_(options), findings_(findings), totals_(totals),
        masters_(directory_, nameOf(directory_, options), totals), viaDefinitions_(directory_) {}

  void run() {
    checkLibraryFile();
    checkSideFile(directory_ + "/" + kTechFile, FileRole::technology, oacTechType);
    checkSideFile(directory_ + "/" + kManagementDataFile, FileRole::managementData, oacLibDMDataType);
    for (const std::string &cell : directoriesIn(directory_)) {
      checkCell(directory_ + "/" + cell);
    }
  }

  void checkOne(const std::string &path) { checkDatabase(path, FileRole::any, oacUnknownType); }

  static std::string nameOf(const std::string &directory, const CheckOptions &options) {
    if (!options.libraryName.empty()) {
      return options.libraryName;
    }
    const std::string name = lastName(directory);
    return isDiskName(name) ? nativeText(name) : name;
  }

private:
  std::vector<std::string> directoriesIn(const std::string &directory) {
    try {
      return namedDirectories(directory);
    } catch (const oaException &exception) {
      if (isDirectory(directory)) { // nobody has removed it meanwhile
        FileReport report(findings_, directory);
        report.damage({"cannot be read: " + std::string(exception.getMsg()), {}});
      }
      return {};
    }
  }

  void checkLibraryFile() {
    const std::string path = directory_ + "/" + kLibraryFile;
    FileReport report(findings_, path);
    if (!isRegularFile(path)) {
      report.damage({"is missing", "the file that makes a directory a library"});
      return;
    }
    checkLibraryText(path, report);
  }

  // Technology and management data may be there or not.
  void checkSideFile(const std::string &path, FileRole role, oaTypeEnum owner) {
    if (isRegularFile(path)) {
      checkDatabase(path, role, owner);
    }
  }

  void checkDatabase(const std::string &path, FileRole role, oaTypeEnum owner) {
    if (options_.progress) {
      options_.progress(path, totals_);
    }
    FileReport report(findings_, path);
    FileQuestion question{role, owner, {}, {}};
    question.findMaster = [this](const std::string &lib, const std::string &cell, const std::string &view) {
      return masters_.find(lib, cell, view);
    };
    question.findViaDefinition = [this](const std::string &name) { return viaDefinitions_.find(name); };
    const std::size_t bytes = checkDatabaseFile(path, question, report);
    totals_.databases += bytes != 0 ? 1 : 0;
    totals_.bytes += bytes;
  }

  void checkCell(const std::string &cell) {
    ++totals_.cells;
    checkSideFile(cell + "/" + kManagementDataFile, FileRole::managementData, oacCellDMDataType);
    for (const std::string &view : directoriesIn(cell)) {
      std::string directory = cell;
      directory.append("/").append(view);
      checkView(directory);
    }
  }

  // Somebody may be making, renaming or removing the view just now. Those who use the kit have write access to the
  // library meanwhile, on a busy disk for seconds; with others, what is wrong for longer than a moment is wrong.
  void checkView(const std::string &view) {
    constexpr int kAttempts = 4;
    constexpr auto kMoment = std::chrono::milliseconds(25);
    std::string primary;
    Fault fault;
    bool isThere = lookAt(view, primary, fault);
    for (int attempt = 1; attempt < kAttempts && isThere && primary.empty(); ++attempt) {
      std::this_thread::sleep_for(kMoment);
      isThere = lookAt(view, primary, fault);
    }
    if (isThere && primary.empty()) {
      const std::unique_ptr<FileLock> whileNobodyWrites = lockLibrary();
      isThere = lookAt(view, primary, fault);
    }
    if (!isThere) {
      return;
    }
    if (primary.empty()) {
      FileReport report(findings_, view);
      report.damage(std::move(fault));
      return;
    }
    ++totals_.views;
    checkSideFile(view + "/" + kManagementDataFile, FileRole::managementData, oacCellViewDMDataType);
    checkPrimary(view + "/" + primary);
  }

  // False when there is no view, or none any more. Otherwise gives its primary file, or none and a fault.
  static bool lookAt(const std::string &view, std::string &primary, Fault &fault) {
    primary.clear();
    if (!isDirectory(view) || isEmptyDirectory(view)) {
      return false;
    }
    primary = primaryOf(view, fault);
    return true;
  }

  // Read access to the library. NULL when it cannot be had, which is waited for once only.
  std::unique_ptr<FileLock> lockLibrary() {
    constexpr unsigned kLongestWaitMs = 10000;
    try {
      const std::string path = directory_ + "/" + kLibraryFile;
      auto lock = FileLock::acquire(path, FileLock::Kind::shared, isLibraryHeld_ ? 0 : kLongestWaitMs);
      isLibraryHeld_ = lock == nullptr;
      return lock;
    } catch (const oaException &) {
      return nullptr; // told by checkLibraryFile(), or a file system without locks
    }
  }

  // The primary file that is there; empty, and a fault, when none is, or not the one that master.tag names.
  static std::string primaryOf(const std::string &view, Fault &fault) {
    const std::string tag = view + "/" + kMasterTagFile;
    std::string tagged;
    try {
      if (isRegularFile(tag) && !taggedFile(tag, tagged, fault)) {
        return {};
      }
      if (!tagged.empty() && !isRegularFile(view + "/" + tagged)) {
        fault = {std::string(kMasterTagFile) + " names " + quoted(tagged) + ", which is not there",
                 "a file of the view"};
        return {};
      }
      std::string primary = findPrimaryFile(view);
      if (primary.empty()) {
        fault = {"has files, but none can be told to be the primary one", std::string("a file ") + kMasterTagFile};
      }
      return primary;
    } catch (const oaException &exception) {
      fault = {std::string(exception.getMsg()), {}};
      return {};
    }
  }

  // The first line that is no comment, whatever it says.
  static bool taggedFile(const std::string &tag, std::string &file, Fault &fault) {
    constexpr std::size_t kLimitBytes = 0x10000;
    const std::string text = readSmallFile(tag, kLimitBytes);
    for (std::size_t begin = 0; begin < text.size() && file.empty();) {
      const std::size_t end = std::min(text.find('\n', begin), text.size());
      file = text.substr(begin, end - begin);
      file.erase(file.find_last_not_of("\r \t") + 1);
      if (file.compare(0, 2, "--") == 0) {
        file.clear();
      }
      begin = end + 1;
    }
    const bool isSafe = !file.empty() && file[0] != '.' && file.size() <= kMaxDiskNameBytes &&
                        file.find('/') == std::string::npos && file.find('\0') == std::string::npos;
    if (!isSafe) {
      fault = {std::string(kMasterTagFile) + " names " + (file.empty() ? "no file" : quoted(file)),
               "the name of a file in the same directory"};
    }
    return isSafe;
  }

  void checkPrimary(const std::string &path) {
    if (!isRegularFile(path)) {
      return; // removed since
    }
    if (fileSizeBytes(path) == 0 || isDesignName(path) || DatabaseFile::beginsLikeDatabase(path)) {
      checkDatabase(path, FileRole::design, oacDesignType);
    } else {
      ++totals_.otherFiles;
    }
  }

  std::string directory_;
  const CheckOptions &options_;
  Findings &findings_;
  Totals &totals_;
  Masters masters_;
  ViaDefinitions viaDefinitions_;
  bool isLibraryHeld_ = false; // by somebody who keeps it
};

// The library that a file lies in: where `.oalib` is, at most three directories up. Empty when there is none.
std::string libraryOf(const std::string &path) {
  std::string directory = absolutePath(path);
  for (int level = 0; level < 3; ++level) {
    const std::size_t slash = directory.rfind('/');
    if (slash == std::string::npos || slash == 0) {
      return {};
    }
    directory.erase(slash);
    if (isRegularFile(directory + "/" + kLibraryFile)) {
      return directory;
    }
  }
  return {};
}

} // namespace

void checkLibrary(const std::string &directory, const CheckOptions &options, Findings &findings, Totals &totals) {
  oaDesignInit();
  LibraryCheck(absolutePath(directory), options, findings, totals).run();
}

void checkFile(const std::string &path, const CheckOptions &options, Findings &findings, Totals &totals) {
  oaDesignInit();
  const std::string library = libraryOf(path);
  if (library.empty()) {
    // Every master is elsewhere then.
    CheckOptions unknown = options;
    unknown.libraryName = std::string(1, '\0');
    LibraryCheck({}, unknown, findings, totals).checkOne(path);
  } else {
    LibraryCheck(library, options, findings, totals).checkOne(path);
  }
}

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
