#include "session.h"

#include "scripterror.h"

namespace oaLang {
oaLangException::~oaLangException() = default;
} // namespace oaLang

namespace oaTcl {

oaTclException::~oaTclException() = default;
oaTclEngine::~oaTclEngine() = default;

oaTclEngine *oaTclEngineFactory::create(Tcl_Interp *interp) {
  if (interp == nullptr) {
    throw oaTclException("cannot make an engine: the interpreter is NULL");
  }
  if (Tcl_InitStubs(interp, "8.6", 0) == nullptr) {
    throw oaTclException("cannot make an engine: the interpreter is not one of Tcl 8.6");
  }
  OpenAccess_4::tcl::Session &session = OpenAccess_4::tcl::Session::of(interp);
  session.addRef();
  return &session;
}

} // namespace oaTcl

namespace OpenAccess_4 {
namespace tcl {

namespace {
constexpr char kKey[] = "oaTclEngine";
Session *currentSession = nullptr;
} // namespace

Session &Session::of(Tcl_Interp *interp) {
  void *found = Tcl_GetAssocData(interp, kKey, nullptr);
  if (found == nullptr) {
    found = new Session(interp);
    Tcl_SetAssocData(interp, kKey, interpreterGone, found);
  }
  return *static_cast<Session *>(found);
}

Session &Session::current() { return *currentSession; }

oaUInt4 Session::addRef() { return ++holders_; }

oaUInt4 Session::release() {
  const oaUInt4 left = --holders_;
  if (left == 0 && interp_ == nullptr) {
    delete this;
  }
  return left;
}

void Session::interpreterGone(ClientData session, Tcl_Interp *) {
  Session *gone = static_cast<Session *>(session);
  while (!gone->nameSpaces_.empty()) {
    gone->popNameSpace();
  }
  gone->interp_ = nullptr;
  if (gone->holders_ == 0) {
    delete gone;
  }
}

const oaNameSpace &Session::nameSpace() const {
  static const oaNativeNS native;
  if (nameSpaces_.empty()) {
    return native;
  }
  return readValue(nameSpaces_.back()).value->as<oaNameSpace>();
}

void Session::pushNameSpace(Value *nameSpace) {
  // A reference of its own: nobody else can make Tcl take it for a list and so lose the object.
  Tcl_Obj *own = newReference(nameSpace);
  Tcl_IncrRefCount(own);
  nameSpaces_.push_back(own);
}

void Session::popNameSpace() {
  if (nameSpaces_.empty()) {
    throw ScriptError{"oa::popNameSpace: no name space was pushed", "OA NAMESPACE"};
  }
  Tcl_DecrRefCount(nameSpaces_.back());
  nameSpaces_.pop_back();
}

Session::Running::Running(Session &session) : outer_(currentSession) { currentSession = &session; }
Session::Running::~Running() { currentSession = outer_; }

} // namespace tcl
} // namespace OpenAccess_4
