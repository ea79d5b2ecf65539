// What each library of the kit is and when it was built.
#ifndef OABUILDINFO_H
#define OABUILDINFO_H

#include "oa/oaArray.h"

namespace OpenAccess_4 {

class oaBuildInfoArray;

/// One record a library, in the order base, DM, technology, design; they live as long as the process.
class oaBuildInfo {
public:
  oaBuildInfo(const oaString &packageNameIn, const oaString &buildNameIn, const oaString &buildTimeIn,
              oaUInt4 buildNumberIn, oaUInt4 majorReleaseNum = OA_MAJOR_RELEASE_NUM,
              oaUInt4 minorReleaseNum = OA_MINOR_RELEASE_NUM);

  const oaString &getPackageName() const { return packageName_; }
  const oaString &getBuildName() const { return buildName_; }
  const oaString &getBuildTime() const { return buildTime_; }
  oaUInt4 getBuildNumber() const { return buildNumber_; }
  oaUInt4 getMajorReleaseNum() const { return majorReleaseNum_; }
  oaUInt4 getMinorReleaseNum() const { return minorReleaseNum_; }

  /// NULL for a package that is not part of the kit.
  static oaBuildInfo *find(const oaString &packageName);
  /// Replaces what the array held.
  static void getPackages(oaBuildInfoArray &packagesIn);
  /// getNumPackages() pointers.
  static oaBuildInfo **getPackages();
  static oaUInt4 getNumPackages();
  /// Operating system and processor.
  static const oaString getPlatformName();
  /// What the application passed to oaBaseInitAppBuild; empty when it did not.
  static const oaString &getAppBuildName();

private:
  oaString packageName_;
  oaString buildName_;
  oaString buildTime_;
  oaUInt4 buildNumber_;
  oaUInt4 majorReleaseNum_;
  oaUInt4 minorReleaseNum_;
};

class oaBuildInfoArray : public oaArray<oaBuildInfo *> {
public:
  using oaArray<oaBuildInfo *>::oaArray;

  /// By package name.
  void sort();
};

} // namespace OpenAccess_4

#endif
