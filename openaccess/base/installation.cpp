#include "oa/oaInstallation.h"

#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <string>

#include "oa/oaBaseInit.h"

namespace OpenAccess_4 {

namespace {

namespace fs = std::filesystem;

struct Directories {
  std::string install, bin, lib, data, plugIn, plugInPath;
};

// The path, or an empty text when it is no directory.
std::string existing(const fs::path &path) {
  std::error_code error;
  return !path.empty() && fs::is_directory(path, error) ? path.string() : std::string();
}

fs::path ownLibraryDirectory() {
  Dl_info library;
  if (!dladdr(reinterpret_cast<void *>(&oaBaseInitAppBuild), &library) || !library.dli_fname)
    return fs::path();
  std::error_code error;
  const fs::path path = fs::weakly_canonical(library.dli_fname, error);
  return error ? fs::path() : path.parent_path();
}

const Directories &directories() {
  static const Directories &all = *[] {
    auto *const found = new Directories;
    const char *const home = std::getenv("OA_HOME");
    const fs::path own = ownLibraryDirectory();
    std::error_code error;
    const fs::path install = home && *home ? fs::absolute(home, error) : own.parent_path();
    found->install = existing(install);
    found->bin = existing(install / "bin");
    found->lib = existing(home && *home ? install / "lib" : own);
    found->data = existing(install / "data");
    found->plugIn = existing(install / "data" / "plugins");
    if (const char *const path = std::getenv("OA_PLUGIN_PATH"))
      found->plugInPath = path;
    return found;
  }();
  return all;
}

const oaChar *orNull(const std::string &text) { return text.empty() ? nullptr : text.c_str(); }

} // namespace

const oaChar *oaInstallation::getInstallDir() { return orNull(directories().install); }
const oaChar *oaInstallation::getBinDir() { return orNull(directories().bin); }
const oaChar *oaInstallation::getLibDir() { return orNull(directories().lib); }
const oaChar *oaInstallation::getDataDir() { return orNull(directories().data); }
const oaChar *oaInstallation::getPlugInDir() { return orNull(directories().plugIn); }
const oaChar *oaInstallation::getPlugInPath() { return orNull(directories().plugInPath); }

} // namespace OpenAccess_4
