// The one place that depends on which kit is used: the installation's directories have no documented accessors, so the
// report of a licensed kit goes without them.

#include "kitdirectories.h"

#ifdef OAPLUGIN_LICENSED_KIT

QString kitDirectoryLines() { return QString(); }

#else

#include <oa/oaDesignDB.h>

#include "qttoolkit.h"

QString kitDirectoryLines() {
  const struct {
    const char *label;
    const char *directory;
  } entries[] = {
      {"Install Dir:\t", oa::oaInstallation::getInstallDir()}, {"Binary Dir:\t", oa::oaInstallation::getBinDir()},
      {"Library Dir:\t", oa::oaInstallation::getLibDir()},     {"Data Dir:  \t", oa::oaInstallation::getDataDir()},
      {"PlugIn Dir:\t", oa::oaInstallation::getPlugInDir()},   {"PlugInPath:\t", oa::oaInstallation::getPlugInPath()},
  };
  QString lines;
  for (const auto &entry : entries) {
    if (entry.directory) {
      lines += QLatin1String(entry.label) + toolkit::fromEightBit(entry.directory) + QLatin1String("\r\n");
    }
  }
  return lines;
}

#endif
