#include "writablelibrary.h"

#include "oaconvert.h"

using namespace oa;

oaLib *makeWritable(oaLib *lib, const oaScalarName &name) {
  if (!lib) {
    throw 'e';
  }
  if (lib->isWritable()) {
    return lib;
  }
  lib->close();
  oaLib *reopened = oaConvert::getLib(name, "");
  if (!reopened) {
    throw 'e';
  }
  reopened->getAccess(oaLibAccess(oacWriteLibAccess), kWriteAccessTimeoutSeconds);
  return reopened;
}

void releaseAccessIfHeld(oaLib *lib) {
  if (lib->getAccessLevel() != oacNoLibAccessLevel) {
    lib->releaseAccess();
  }
}
