#include "oa/oaBuildInfo.h"

#include <cstring>
#include <sys/utsname.h>

#include "buildnumber.h"
#include "startup.h"

// Set by the build; not a reproducible one when it is the compiler's date.
#ifndef OPENACCESS_BUILD_NAME
#define OPENACCESS_BUILD_NAME "embedded"
#endif
#ifndef OPENACCESS_BUILD_TIME
#define OPENACCESS_BUILD_TIME __DATE__ " " __TIME__
#endif

namespace OpenAccess_4 {

namespace {

constexpr oaUInt4 kPackages = 4;

oaBuildInfo **packages() {
  static oaBuildInfo **const all = [] {
    auto *const records = new oaBuildInfo *[kPackages];
    oaUInt4 i = 0;
    for (const oaChar *name : {"oaBase", "oaDM", "oaTech", "oaDesign"})
      records[i++] = new oaBuildInfo(name, OPENACCESS_BUILD_NAME, OPENACCESS_BUILD_TIME, OPENACCESS_BUILD_NUMBER);
    return records;
  }();
  return all;
}

} // namespace

oaBuildInfo::oaBuildInfo(const oaString &packageNameIn, const oaString &buildNameIn, const oaString &buildTimeIn,
                         oaUInt4 buildNumberIn, oaUInt4 majorReleaseNum, oaUInt4 minorReleaseNum)
    : packageName_(packageNameIn), buildName_(buildNameIn), buildTime_(buildTimeIn), buildNumber_(buildNumberIn),
      majorReleaseNum_(majorReleaseNum), minorReleaseNum_(minorReleaseNum) {}

oaBuildInfo *oaBuildInfo::find(const oaString &packageName) {
  for (oaUInt4 i = 0; i < kPackages; ++i) {
    if (packages()[i]->packageName_ == packageName)
      return packages()[i];
  }
  return nullptr;
}

void oaBuildInfo::getPackages(oaBuildInfoArray &packagesIn) { packagesIn.set(packages(), kPackages); }

oaBuildInfo **oaBuildInfo::getPackages() { return packages(); }

oaUInt4 oaBuildInfo::getNumPackages() { return kPackages; }

const oaString oaBuildInfo::getPlatformName() {
  utsname system;
  if (uname(&system) != 0)
    return "unknown";
  return oaString(system.sysname) + "_" + system.machine;
}

const oaString &oaBuildInfo::getAppBuildName() { return kit::appBuildName(); }

void oaBuildInfoArray::sort() {
  oaArray<oaBuildInfo *>::sort([](oaBuildInfo *const *a, oaBuildInfo *const *b) {
    return std::strcmp((*a)->getPackageName(), (*b)->getPackageName());
  });
}

} // namespace OpenAccess_4
