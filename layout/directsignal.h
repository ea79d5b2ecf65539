#ifndef DIRECTSIGNAL_H
#define DIRECTSIGNAL_H

#include <cassert>

#include <QMetaObject>

#include "oapluginmain.h"

// Emits one signal of the plug-in object with its arguments where they lie. The signal's own function takes texts and
// polygons by value, so each would be counted up and down once more for every shape or instance, which costs as much as
// the rest of an emission; from there on it does the same as this.
//
// The arguments must stay until the emission returns, also when a slot calls back into the plug-in.
template <typename... Arguments> class DirectSignal {
public:
  // `signature` in the normalised form, with exactly these argument types:
  // "addCellRef(QString,QPoint,QString,QString)".
  DirectSignal(oaPlugInMain &sender, const char *signature)
      : sender_(sender), index_(oaPlugInMain::staticMetaObject.indexOfSignal(signature) -
                                oaPlugInMain::staticMetaObject.methodOffset()) {
    assert(index_ >= 0);
  }

  void operator()(const Arguments &...arguments) const {
    // The first place is for a result, which signals do not have. Receivers get the arguments as constants or as
    // copies.
    void *places[] = {nullptr, const_cast<void *>(static_cast<const void *>(&arguments))...};
    QMetaObject::activate(&sender_, &oaPlugInMain::staticMetaObject, index_, places);
  }

private:
  oaPlugInMain &sender_;
  const int index_;
};

#endif
