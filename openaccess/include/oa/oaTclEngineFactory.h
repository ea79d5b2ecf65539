#ifndef OATCLENGINEFACTORY_H
#define OATCLENGINEFACTORY_H

#include "oa/oaTypes.h"

struct Tcl_Interp;

namespace oaTcl {

/// Ties a script interpreter to the database. The engine of an interpreter lives as long as somebody holds it or the
/// interpreter exists, whichever is longer; it never deletes the interpreter.
class oaTclEngine {
public:
  virtual OpenAccess_4::oaUInt4 addRef() = 0;
  /// The number of holders that are left, the interpreter not counted.
  virtual OpenAccess_4::oaUInt4 release() = 0;
  /// NULL after the interpreter was deleted.
  virtual Tcl_Interp *getInterp() const = 0;

protected:
  virtual ~oaTclEngine();
};

class oaTclEngineFactory {
public:
  /// The engine of the interpreter, held once more for the caller, who releases it. The same engine for every call with
  /// the same interpreter; the call may come before Oa_Init, and more than once. Raises oaTclException for NULL.
  static oaTclEngine *create(Tcl_Interp *interp);
};

} // namespace oaTcl

#endif
