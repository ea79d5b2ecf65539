#ifndef OATCL_SESSION_H
#define OATCL_SESSION_H

// What the binding keeps for one interpreter.

#include "oa/oaTcl.h"
#include "values.h"

#include <memory>
#include <string>
#include <vector>

namespace OpenAccess_4 {
namespace tcl {

class PcellErrorLog;

class Session : public oaTcl::oaTclEngine {
public:
  // The interpreter's session, made at first need; it goes with the interpreter, or with the last holder after that.
  static Session &of(Tcl_Interp *interp);
  // The session whose command is running.
  static Session &current();

  oaUInt4 addRef() override;
  oaUInt4 release() override;
  Tcl_Interp *getInterp() const override { return interp_; }

  // The name space in which names are read and written: the native one until a script pushes another.
  const oaNameSpace &nameSpace() const;
  void pushNameSpace(Value *nameSpace);
  void popNameSpace();
  // The pushed object, or NULL.
  Tcl_Obj *nameSpaceObject() const { return nameSpaces_.empty() ? nullptr : nameSpaces_.back(); }

  bool libDefListErrorLogging = true;

  // Tells of parametric cells that fail while a command of the session runs; until setPcellErrorLogging(false).
  void setPcellErrorLogging(bool isOn);

  // The session of a script that draws one design: it changes no other, and sees no utility objects of other sessions.
  void confineTo(const oaDesign *design);
  // NULL unless it is confined.
  const oaDesign *confinedTo() const { return confinedTo_; }

  // Makes the session the current one while a command runs.
  class Running {
  public:
    explicit Running(Session &session);
    ~Running();
    Running(const Running &) = delete;
    Running &operator=(const Running &) = delete;

  private:
    static void enter(Session *session);
    Session *outer_;
    Session *outerFree_;
  };

private:
  explicit Session(Tcl_Interp *interp);
  ~Session() override;
  static void interpreterGone(ClientData session, Tcl_Interp *interp);

  Tcl_Interp *interp_;
  oaUInt4 holders_ = 0;
  std::vector<Tcl_Obj *> nameSpaces_;
  std::unique_ptr<PcellErrorLog> pcellErrorLog_;
  const oaDesign *confinedTo_ = nullptr;
  oaUInt8 hiddenObjects_ = 0;
};

} // namespace tcl
} // namespace OpenAccess_4

#endif
