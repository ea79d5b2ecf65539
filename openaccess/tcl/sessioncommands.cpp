// Commands that have no counterpart in C++, and those that do more than it.

#include "call.h"
#include "classes.h"
#include "command.h"
#include "forms.h"
#include "oa/oaLibDefListObserver.h"
#include "scripterror.h"
#include "session.h"

namespace OpenAccess_4 {
namespace tcl {

const ClassInfo kUInt4Class = {"UInt4", nullptr, ClassKind::utility};

namespace {

// Gathers what goes wrong while libraries are opened.
class WarningCollector : public oaObserver<oaLibDefList> {
public:
  WarningCollector() : oaObserver<oaLibDefList>(1) {}
  oaBoolean onLoadWarnings(oaLibDefList *, const oaString &message, oaLibDefListWarningTypeEnum) override {
    warnings_ += (warnings_.empty() ? "" : "\n") + std::string(message);
    return true;
  }
  const std::string &warnings() const { return warnings_; }

private:
  std::string warnings_;
};

void openLibs(Call &call) {
  const WarningCollector collector;
  if (call.given(0)) {
    oaLibDefList::openLibs(call.path(0));
  } else {
    oaLibDefList::openLibs();
  }
  if (Session::current().libDefListErrorLogging && !collector.warnings().empty()) {
    throw ScriptError{collector.warnings(), "OA LIBDEFS"};
  }
}

void help(Call &call) {
  if (!call.given(0)) {
    call.giveList();
    for (const Command &command : allCommands()) {
      call.give(("oa::" + command.name()).c_str());
    }
    return;
  }
  std::string name(call.utf8(0));
  const std::size_t qualifier = name.rfind("::");
  name = qualifier == std::string::npos ? name : name.substr(qualifier + 2);
  const Command *command = findCommand(name);
  if (command == nullptr) {
    throw valueError("oa::help: there is no command \"" + name + "\"");
  }
  call.give(command->help().c_str());
}

// The generated commands hold no arrays of pointers.
void getPackages(Call &call) {
  call.giveList();
  for (oaUInt4 i = 0; i < oaBuildInfo::getNumPackages(); ++i) {
    call.giveCopy(oaBuildInfo::getPackages()[i]);
  }
}

void getNameSpace(Call &call) {
  Tcl_Obj *pushed = Session::current().nameSpaceObject();
  if (pushed != nullptr) {
    call.add(newReference(readValue(pushed).value));
  } else {
    call.giveNew(oaNativeNS());
  }
}

constexpr Parameter kPath[] = {{ParameterKind::string, "path"}};
constexpr Parameter kCommandName[] = {{ParameterKind::string, "command"}};
constexpr Parameter kNameSpace[] = {{ParameterKind::nameSpace, "ns", &classOf<oaNameSpace>()}};
constexpr Parameter kFlag[] = {{ParameterKind::boolean, "flag"}};
constexpr Parameter kNumber[] = {{ParameterKind::integer, "n", nullptr, 0, UINT_MAX}};

const Form kForms[] = {
    {"LibDefListOpenLibs", kPath, 1, 0, Effect::outside, openLibs},
    {"help", kCommandName, 1, 0, Effect::none, help},
    {"BuildInfoGetPackages", nullptr, 0, 0, Effect::none, getPackages},
    {"getNameSpace", nullptr, 0, 0, Effect::none, getNameSpace},
    {"pushNameSpace", kNameSpace, 1, 1, Effect::none,
     [](Call &call) { Session::current().pushNameSpace(readValue(call.argument(0)).value); }},
    {"popNameSpace", nullptr, 0, 0, Effect::none, [](Call &) { Session::current().popNameSpace(); }},
    {"setLibDefListErrorLogging", kFlag, 1, 1, Effect::outside,
     [](Call &call) { Session::current().libDefListErrorLogging = call.boolean(0); }},
    {"setPcellErrorLogging", kFlag, 1, 1, Effect::outside,
     [](Call &call) { Session::current().setPcellErrorLogging(call.boolean(0)); }},
    {"UInt4", kNumber, 1, 1, Effect::none,
     [](Call &call) { call.add(newObject(new ValueOf<oaUInt4>(kUInt4Class, 1, call.integer<oaUInt4>(0)))); }},
};

} // namespace

const FormTable kSessionForms = {kForms, sizeof kForms / sizeof kForms[0]};

} // namespace tcl
} // namespace OpenAccess_4
