#include "kitversion.h"

#include <type_traits>

#include <dlfcn.h>

#include <oa/oaDesignDB.h>

using namespace oa;

namespace {

const char kKitVersion[] = "22.50.001";

// Kits differ in how a client may construct their exception, and some let it not at all; those get the abort character.
template <typename Exception> [[noreturn]] void raise(const oaString &message) {
  if constexpr (std::is_constructible_v<Exception, oaString>) {
    throw Exception(message);
  } else if constexpr (std::is_constructible_v<Exception, oaUInt4, oaString>) {
    throw Exception(oacNullIndex, message);
  } else {
    throw 'E';
  }
}

} // namespace

void requireKitVersion(const char *baseLibrary) {
  // Never unloaded: OpenAccess stays started until the process ends.
  void *library = dlopen(baseLibrary, RTLD_LAZY);
  if (!library) {
    throw 'E';
  }
  using InitAppBuild = void (*)(const char *);
  const auto initAppBuild = reinterpret_cast<InitAppBuild>(dlsym(library, "oaBaseInitAppBuild"));
  if (!initAppBuild) {
    oaString message;
    message.format(
        "The application is compiled with an OpenAccess kit of version %.100s, which is newer than the OpenAccess kit "
        "being used.",
        kKitVersion);
    raise<oaException>(message);
  }
  initAppBuild(kKitVersion);
}
