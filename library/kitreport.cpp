// The report of the kit, its directories and the library definition file. Lines end in CR LF.

#include "oapluginmain.h"

#include <cstdio>

#include "errorguard.h"
#include "kitdirectories.h"
#include "qttoolkit.h"

using namespace oa;

namespace {

// Two lines for one package: name and release, then build name and build time.
QString packageLines(const oaBuildInfo &package) {
  const QString release = QString::number(package.getMajorReleaseNum()) + QLatin1Char('.') +
                          QString::number(package.getMinorReleaseNum()) + QLatin1Char('.') +
                          QString::number(package.getBuildNumber());
  return oaConvert::toString(package.getPackageName()) + QLatin1Char(' ') + release + QLatin1String(" \r\n\t(") +
         oaConvert::toString(package.getBuildName()) + QLatin1String(", ") +
         oaConvert::toString(package.getBuildTime()) + QLatin1String(")\r\n");
}

} // namespace

QString oaPlugInMain::info() {
  QString report;
  const bool isComplete = guard::printing("info", [&] {
    oaConvert::init();
    report = QLatin1String("OpenAccess Version:\r\n");
    if (oaConvert::debug) {
      std::printf("read oa info...");
    }
    oaBuildInfo **packages = oaBuildInfo::getPackages();
    for (oaUInt4 i = 0; i < oaBuildInfo::getNumPackages(); ++i) {
      report += packageLines(*packages[i]);
      if (oaConvert::debug) {
        std::printf("%s", static_cast<const oaChar *>(packages[i]->getBuildName()));
      }
    }
    report += QLatin1String("\r\n");
    report += kitDirectoryLines();
    if (const oaLibDefList *list = oaLibDefList::getTopList()) {
      oaString path;
      list->getFullPath(path);
      report += QLatin1String("lib.defs file:\t") + toString(path) + QLatin1String("\r\n");
    } else {
      report += QLatin1String("lib.defs file not found\r\n");
    }
  });
  return isComplete ? report : QString();
}
