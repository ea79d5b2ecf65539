#include "session.h"

#include "oa/oaPcell.h"
#include "scripterror.h"
#include "texts.h"

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
Session *freeSession = nullptr; // the innermost of those that run and are not confined
} // namespace

// Writes to the channel stderr of Tcl: what an evaluator does wrong ends no command.
class PcellErrorLog : public oaPcellObserver {
public:
  explicit PcellErrorLog(const Session &session) : oaPcellObserver(1), session_(session) {}
  void onError(oaDesign *, const oaString &message, oaPcellErrorTypeEnum) override {
    Tcl_Channel channel = freeSession == &session_ ? Tcl_GetStdChannel(TCL_STDERR) : nullptr;
    if (channel != nullptr) {
      Tcl_WriteChars(channel, ("oa: " + readableMessage(std::string(message)) + "\n").c_str(), -1);
      Tcl_Flush(channel);
    }
  }

private:
  const Session &session_;
};

Session::Session(Tcl_Interp *interp) : interp_(interp) { setPcellErrorLogging(true); }
Session::~Session() = default;

void Session::setPcellErrorLogging(bool isOn) {
  if (isOn && pcellErrorLog_ == nullptr) {
    pcellErrorLog_ = std::make_unique<PcellErrorLog>(*this);
  } else if (!isOn) {
    pcellErrorLog_.reset();
  }
}

void Session::confineTo(const oaDesign *design) {
  confinedTo_ = design;
  setPcellErrorLogging(false);
  hiddenObjects_ = lastObjectSerial();
}

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
  gone->pcellErrorLog_.reset();
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

Session::Running::Running(Session &session) : outer_(currentSession), outerFree_(freeSession) {
  enter(&session);
  if (session.confinedTo_ == nullptr) {
    freeSession = &session;
  }
}

Session::Running::~Running() {
  enter(outer_);
  freeSession = outerFree_;
}

void Session::Running::enter(Session *session) {
  currentSession = session;
  hideObjectsUpTo(session == nullptr ? 0 : session->hiddenObjects_);
}

} // namespace tcl
} // namespace OpenAccess_4
