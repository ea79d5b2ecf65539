#ifndef SAVEGUARD_H
#define SAVEGUARD_H

#include <QString>

#include "errorguard.h"
#include "oapluginmain.h"

// The guard of the writing operations. What OpenAccess refuses is printed by the convention of all operations and is
// told to the host as well, because the object is missing from the design and only the host can tell its user. The save
// goes on.
//
// `describe()` names the object concerned; it is called on a failure only. Returns whether the body ran to its end.
template <typename Body, typename Describe>
bool saving(oaPlugInMain &host, const char *label, Body body, Describe describe) {
  const auto tell = [&](const QString &cause) {
    emit host.reportError(cause, 1, QLatin1String(label) + QLatin1String(": ") + describe());
  };
  return guard::printing(label, [&] {
    try {
      body();
    } catch (const oa::oaException &exception) {
      tell(oaConvert::toString(exception.getMsg()));
      throw;
    } catch (char character) {
      tell(QString(QLatin1Char(character)));
      throw;
    }
  });
}

#endif
