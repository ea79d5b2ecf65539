#include "cellviewfiles.h"

#include "diskname.h"
#include "filelayer.h"
#include "filelock.h"
#include "oa/oaException.h"
#include "raise.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace OpenAccess_4 {
namespace kit {

namespace {

constexpr std::size_t kMasterTagLimitBytes = 0x10000;

struct CloseDirectory {
  void operator()(DIR *directory) const { ::closedir(directory); }
};

bool endsWith(const std::string &text, const char *end) {
  const std::size_t length = std::strlen(end);
  return text.size() >= length && text.compare(text.size() - length, length, end) == 0;
}

// What the entry is, following links, since libraries are sometimes put together from links.
unsigned typeOf(int directory, const dirent &entry) {
  if (entry.d_type == DT_DIR || entry.d_type == DT_REG) {
    return entry.d_type;
  }
  struct stat status;
  if (::fstatat(directory, entry.d_name, &status, 0) != 0) {
    return DT_UNKNOWN;
  }
  return S_ISDIR(status.st_mode) ? DT_DIR : S_ISREG(status.st_mode) ? DT_REG : DT_UNKNOWN;
}

// Names of the entries of a type for which `accepts` is true, sorted.
template <typename Accepts>
std::vector<std::string> listDirectory(const std::string &path, unsigned type, Accepts accepts) {
  const std::unique_ptr<DIR, CloseDirectory> directory(::opendir(path.c_str()));
  if (!directory) {
    raiseBase(oacFileGetInfoFailed, "directory " + path + ": cannot be read: " + std::strerror(errno));
  }
  std::vector<std::string> names;
  while (const dirent *entry = ::readdir(directory.get())) {
    const std::string name = entry->d_name;
    if (accepts(name) && typeOf(::dirfd(directory.get()), *entry) == type) {
      names.push_back(name);
    }
  }
  std::sort(names.begin(), names.end());
  return names;
}

// The file that master.tag names: its first line that is no comment. Empty when there is none, or when it leads
// elsewhere.
std::string fileOfMasterTag(const std::string &directory) {
  const std::string path = directory + "/" + kMasterTagFile;
  if (!isRegularFile(path) || fileSizeBytes(path) > kMasterTagLimitBytes) {
    return {};
  }
  std::string text;
  try {
    text = readSmallFile(path, kMasterTagLimitBytes);
  } catch (const oaException &) {
    if (isRegularFile(path)) { // nobody has removed it meanwhile
      throw;
    }
  }
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    std::string line = text.substr(begin, end - begin);
    begin = end + 1;
    while (!line.empty() && (line.back() == '\r' || line.back() == ' ' || line.back() == '\t')) {
      line.pop_back();
    }
    if (line.empty() || line.compare(0, 2, "--") == 0) {
      continue;
    }
    const bool isSafe = line[0] != '.' && line.size() <= kMaxDiskNameBytes && line.find('/') == std::string::npos &&
                        line.find('\0') == std::string::npos;
    return isSafe ? line : std::string();
  }
  return {};
}

} // namespace

bool isDirectory(const std::string &path) {
  struct stat status;
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool isEmptyDirectory(const std::string &path) {
  std::error_code error;
  return std::filesystem::is_empty(path, error) && !error && isDirectory(path);
}

bool isRegularFile(const std::string &path) {
  struct stat status;
  return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

unsigned long long fileSizeBytes(const std::string &path) {
  struct stat status;
  return ::stat(path.c_str(), &status) == 0 ? static_cast<unsigned long long>(status.st_size) : 0;
}

std::string absolutePath(const std::string &path) {
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(path, error);
  std::filesystem::path result = absolute;
  if (std::find(absolute.begin(), absolute.end(), std::filesystem::path("..")) != absolute.end()) {
    result = std::filesystem::weakly_canonical(absolute, error);
    if (error) {
      result = absolute;
    }
  }
  std::string text = result.lexically_normal().string();
  while (text.size() > 1 && text.back() == '/') {
    text.pop_back();
  }
  return text;
}

bool isSamePlace(const std::string &a, const std::string &b) {
  struct stat first;
  struct stat second;
  return ::stat(a.c_str(), &first) == 0 && ::stat(b.c_str(), &second) == 0 && first.st_dev == second.st_dev &&
         first.st_ino == second.st_ino;
}

std::vector<std::string> namedDirectories(const std::string &directory) {
  return listDirectory(directory, DT_DIR, isDiskName);
}

std::vector<std::string> visibleFiles(const std::string &directory) {
  return listDirectory(directory, DT_REG,
                       [](const std::string &name) { return name[0] != '.' && !endsWith(name, kEditLockSuffix); });
}

std::string findPrimaryFile(const std::string &directory) {
  std::string tagged = fileOfMasterTag(directory);
  if (!tagged.empty() && isRegularFile(directory + "/" + tagged)) {
    return tagged;
  }
  std::vector<std::string> files;
  try {
    files = visibleFiles(directory);
  } catch (const oaException &) {
    if (isDirectory(directory)) { // nobody has removed it meanwhile
      throw;
    }
  }
  const auto isSide = [](const std::string &name) {
    return name == kMasterTagFile || name == kManagementDataFile || endsWith(name, ".oa-") || endsWith(name, ".oa+");
  };
  files.erase(std::remove_if(files.begin(), files.end(), isSide), files.end());
  if (files.size() == 1) {
    return files.front();
  }
  for (const char *text : {"verilog.v", "vhdl.vhd"}) {
    if (std::find(files.begin(), files.end(), text) != files.end()) {
      return text;
    }
  }
  return {};
}

bool createDirectory(const std::string &path) {
  if (::mkdir(path.c_str(), 0777) == 0) {
    return true;
  }
  const int error = errno;
  if (error == EEXIST && isDirectory(path)) {
    return false;
  }
  raiseBase(oacDirCreateFailed, "directory " + path + ": cannot be made: " + std::strerror(error));
}

std::vector<std::string> createCellViewFiles(const std::string &libraryPath, const std::string &cellDiskName,
                                             const std::string &viewDiskName, const std::string &primaryFile) {
  const std::string cell = libraryPath + "/" + cellDiskName;
  const std::string view = cell + "/" + viewDiskName;
  const std::string tag = view + "/" + kMasterTagFile;
  const std::string primary = view + "/" + primaryFile;
  std::vector<std::string> made;
  try {
    for (const std::string &directory : {cell, view}) {
      if (createDirectory(directory)) {
        made.push_back(directory);
      }
    }
    if (!isRegularFile(tag)) {
      made.push_back(tag);
    }
    replaceFile(tag, "-- Master.tag File, Rev:1.0\n" + primaryFile + "\n");
    if (!isRegularFile(primary)) {
      made.push_back(primary);
      replaceFile(primary, "");
    }
  } catch (...) {
    for (auto path = made.rbegin(); path != made.rend(); ++path) {
      ::remove(path->c_str());
    }
    throw;
  }
  return made;
}

void removeDirectory(const std::string &path) {
  std::error_code error;
  std::filesystem::remove_all(path, error);
  if (error) {
    raiseOS(error.value(), "directory " + path + ": cannot be removed");
  }
}

} // namespace kit
} // namespace OpenAccess_4
