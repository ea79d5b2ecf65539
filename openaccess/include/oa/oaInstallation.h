// Where the kit is installed: the directory named by the environment variable OA_HOME, otherwise the one above the
// directory of liboaBase.so. An addition of this kit: clients that must also build against others look for the header
// first.
#ifndef OAINSTALLATION_H
#define OAINSTALLATION_H

#include "oa/oaTypes.h"

namespace OpenAccess_4 {

/// Absolute paths that live as long as the process, found at the first call. NULL for what does not exist.
class oaInstallation {
public:
  static const oaChar *getInstallDir();
  static const oaChar *getBinDir();
  static const oaChar *getLibDir();
  static const oaChar *getDataDir();
  /// Of the plug-ins that come with the kit.
  static const oaChar *getPlugInDir();
  /// Further directories of plug-ins, separated by colons, from the environment variable OA_PLUGIN_PATH; NULL when
  /// there are none.
  static const oaChar *getPlugInPath();
};

} // namespace OpenAccess_4

#endif
