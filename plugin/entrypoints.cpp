// What a plug-in loader asks a shared library for, under unmangled names. Qt 4 reads the verification data from the
// section .qtplugin without loading the library and calls qt_plugin_instance(). Qt 5 reads its own section, which the
// meta-object compiler writes together with qt_plugin_instance(); there the Qt 4 data are exported beside it.

#include "oapluginmain.h"

#include <QPointer>

namespace {

__attribute__((section(".qtplugin"), used)) const char kVerificationData[] = "pattern=QT_PLUGIN_VERIFICATION_DATA\n"
                                                                             "version=4.8.7\n"
                                                                             "debug=false\n"
                                                                             "buildkey=x86_64 linux g++-4 full-config";

} // namespace

extern "C" Q_DECL_EXPORT const char *qt_plugin_query_verification_data() { return kVerificationData; }

#ifndef TOOLKIT_HAS_PLUGIN_METADATA
// The one plug-in object. When the host has deleted it, the next call makes a new one.
extern "C" Q_DECL_EXPORT QObject *qt_plugin_instance() {
  static QPointer<QObject> instance;
  if (!instance) {
    instance = new oaPlugInMain;
  }
  return instance;
}
#endif
