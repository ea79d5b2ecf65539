#include "command.h"

#include "call.h"
#include "classes.h"
#include "forms.h"
#include "oa/oaLangException.h"
#include "plainforms.h"
#include "scripterror.h"
#include "session.h"
#include "texts.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>

namespace OpenAccess_4 {
namespace tcl {

namespace {

// In a message.
constexpr std::size_t kShownForms = 12;
constexpr std::size_t kShownKinds = 8;

std::string describe(const Parameter &parameter) {
  switch (parameter.kind) {
  case ParameterKind::object:
    return parameter.cls->name;
  case ParameterKind::optionalObject:
    return std::string(parameter.cls->name) + " or \"\"";
  case ParameterKind::nothing:
    return "\"\"";
  case ParameterKind::string:
    return "text";
  case ParameterKind::character:
    return "letter";
  case ParameterKind::integer:
    return parameter.min < 0 ? "integer" : "unsigned integer";
  case ParameterKind::number:
    return "number";
  case ParameterKind::boolean:
    return "boolean";
  case ParameterKind::enumeration:
  case ParameterKind::enumObject:
    return parameter.cls->name;
  case ParameterKind::coordinate:
    return "coordinate";
  case ParameterKind::distance:
    return "distance";
  case ParameterKind::value:
  case ParameterKind::held:
  case ParameterKind::name:
    return parameter.cls->name;
  case ParameterKind::optionalValue:
    return std::string(parameter.cls->name) + " or \"\"";
  case ParameterKind::changed:
    return std::string(parameter.cls->name) + " object";
  case ParameterKind::nameSpace:
    return "name space object";
  case ParameterKind::attribute:
    return "attribute of the object";
  case ParameterKind::collection:
    return "collection";
  case ParameterKind::any:
    return "value";
  }
  return "";
}

enum class Detail {
  names,     // "oa::getBoundary donut ?numSides?"
  anyObject, // "oa::getBoundary object ?numSides?": for lists of the forms of many classes
  withTypes, // "oa::getBoundary donut:Donut {?numSides:unsigned integer?}"
};

std::string usage(const Form &form, Detail detail) {
  std::string text = std::string("oa::") + form.command;
  for (int i = 0; i < form.count; ++i) {
    const Parameter &parameter = form.parameters[i];
    std::string shown = i == 0 && detail == Detail::anyObject ? "object" : parameter.name;
    if (detail == Detail::withTypes) {
      shown.append(":").append(describe(parameter));
    }
    if (i >= form.required) {
      shown.insert(0, 1, '?').push_back('?');
    }
    const bool isList = shown.find(' ') != std::string::npos;
    text.append(isList ? " {" : " ").append(shown).append(isList ? "}" : "");
  }
  return text;
}

// The texts without repetition, in order.
std::vector<std::string> usages(const std::vector<const Form *> &forms, Detail detail) {
  std::vector<std::string> lines;
  std::set<std::string> seen;
  for (const Form *form : forms) {
    const std::string line = usage(*form, detail);
    if (seen.insert(line).second) {
      lines.push_back(line);
    }
  }
  return lines;
}

std::string joined(const std::vector<std::string> &lines, const char *separator) {
  std::string text;
  for (std::size_t i = 0; i < lines.size() && i < kShownForms; ++i) {
    text += (i == 0 ? "\"" : separator + std::string("\"")) + lines[i] + "\"";
  }
  return lines.size() > kShownForms ? text + separator + "and more, see oa::help" : text;
}

std::string namesOf(const ClassInfo &enumeration) {
  std::string names;
  for (oaUInt4 number = 0; enumeration.names().contains(number) && number < 20; ++number) {
    names += (number == 0 ? "" : ", ") + std::string(enumeration.names().nameOf(number));
  }
  return names;
}

std::string expected(const Parameter &parameter) {
  std::string text = describe(parameter);
  if (parameter.kind == ParameterKind::enumeration) {
    text += " (" + namesOf(*parameter.cls) + ")";
  }
  if (parameter.kind == ParameterKind::integer) {
    text += " from " + std::to_string(parameter.min) + " to " + std::to_string(parameter.max);
  }
  return text;
}

int fail(Tcl_Interp *interp, const std::string &message, const std::string &code) {
  Tcl_SetObjResult(interp, Tcl_NewStringObj(readableMessage(message).c_str(), -1));
  Tcl_SetObjErrorCode(interp, Tcl_NewStringObj(code.c_str(), -1));
  return TCL_ERROR;
}

// An argument in a message: whole unless it is very long.
std::string shown(Tcl_Obj *argument) {
  constexpr std::size_t kLongest = 200;
  std::string text = Tcl_GetString(argument);
  if (text.size() > kLongest) {
    std::size_t end = kLongest;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xc0) == 0x80) { // inside of a character
      --end;
    }
    text.replace(end, std::string::npos, "...");
  }
  return text;
}

[[noreturn]] void refuseDead(const std::string &command, Tcl_Obj *argument) {
  throw ScriptError{"oa::" + command + ": the object \"" + shown(argument) +
                        "\" was destroyed, or its database has been closed",
                    "OA " + std::to_string(oacDeletedDatabase)};
}

// Scripts that are confined to a design change that one, and look at what it refers to.
void checkConfined(const oaDesign *own, const Form &form, int count, Tcl_Obj *const *arguments) {
  if (own == nullptr || form.effect == Effect::none || form.effect == Effect::reads) {
    return;
  }
  oaObject *target = nullptr;
  const int last = form.effect == Effect::copies ? count : std::min(count, 1);
  for (int i = 0; i < last; ++i) {
    oaObject *object = readHandle(arguments[i]).object;
    target = object != nullptr ? object : target;
  }
  if (form.effect == Effect::outside || target == nullptr || designOfObject(target) != own) {
    throw ScriptError{std::string("oa::") + form.command +
                          ": the script of a parametric cell may change only the design that it draws",
                      "OA CONFINED"};
  }
}

} // namespace

const Form *Command::choose(int count, Tcl_Obj *const *arguments) const {
  const Form *best = nullptr;
  int bestMisfit = Call::kNoFit;
  for (const Form *form : forms_) {
    if (count < form->required || count > form->count) {
      continue;
    }
    int misfit = 0;
    for (int i = 0; i < count && misfit < bestMisfit; ++i) {
      misfit += Call::misfit(form->parameters[i], arguments[i], arguments[0]);
    }
    if (misfit < bestMisfit) {
      best = form;
      bestMisfit = misfit;
    }
  }
  return best;
}

std::vector<const Form *> Command::formsOfFirst(int count, Tcl_Obj *const *arguments) const {
  std::vector<const Form *> fitting;
  for (const Form *form : forms_) {
    if (count > 0 && form->count > 0 && Call::misfit(form->parameters[0], arguments[0], arguments[0]) < Call::kNoFit) {
      fitting.push_back(form);
    }
  }
  return fitting;
}

void Command::refuse(int count, Tcl_Obj *const *arguments) const {
  for (int i = 0; i < count; ++i) {
    if (readHandle(arguments[i]).state == HandleState::dead) {
      refuseDead(name_, arguments[i]);
    }
    if (readValue(arguments[i]).isLost) {
      throw ScriptError{"oa::" + name_ + ": the object \"" + shown(arguments[i]) +
                            "\" does not exist any more: objects die with the last Tcl value that refers to them",
                        "OA VALUE"};
    }
  }
  std::vector<const Form *> candidates = formsOfFirst(count, arguments);
  const bool firstFits = !candidates.empty();
  if (!firstFits) {
    candidates = forms_;
  }
  const auto counted = [count](const Form *form) { return count >= form->required && count <= form->count; };
  if (std::none_of(candidates.begin(), candidates.end(), counted)) {
    const Detail detail = firstFits || candidates.size() < 4 ? Detail::names : Detail::anyObject;
    throw ScriptError{"wrong # args: should be " + joined(usages(candidates, detail), " or "), "TCL WRONGARGS"};
  }
  candidates.erase(std::remove_if(candidates.begin(), candidates.end(), std::not_fn(counted)), candidates.end());
  // The form that went furthest tells most.
  int furthest = -1;
  std::set<std::string> wanted;
  std::string fault;
  const char *parameterName = "";
  for (const Form *form : candidates) {
    int place = 0;
    while (place < count && Call::misfit(form->parameters[place], arguments[place], arguments[0]) < Call::kNoFit) {
      ++place;
    }
    if (place > furthest) {
      furthest = place;
      wanted.clear();
      fault.clear();
      parameterName = form->parameters[place].name;
    }
    if (place == furthest) {
      const Parameter &parameter = form->parameters[place];
      wanted.insert(expected(parameter));
      fault = fault.empty() && parameter.cls != nullptr ? faultInParams(*parameter.cls, arguments[place]) : fault;
    }
  }
  std::string list;
  for (const std::string &what : wanted) {
    list += (list.empty() ? "" : " or ") + what;
  }
  if (wanted.size() > kShownKinds) {
    parameterName = "object";
    list = "an object with this function";
  }
  throw ScriptError{"oa::" + name_ + ": " + parameterName + ": expected " + list + " but got \"" +
                        shown(arguments[furthest]) + "\"" + (fault.empty() ? "" : ": " + fault),
                    "OA VALUE"};
}

int Command::run(Tcl_Interp *interp, int count, Tcl_Obj *const *arguments) const {
  try {
    const Session::Running running(Session::of(interp));
    const Form *form = choose(count, arguments);
    if (form == nullptr) {
      refuse(count, arguments);
    }
    checkConfined(Session::current().confinedTo(), *form, count, arguments);
    Call call(interp, *form, count, arguments);
    form->invoke(call);
    call.finish();
    return TCL_OK;
  } catch (const ScriptError &error) {
    return fail(interp, error.message, error.code);
  } catch (const oaException &exception) {
    return fail(interp, std::string(exception.getMsg()), "OA " + std::to_string(exception.getMsgId()));
  } catch (const IException &exception) {
    return fail(interp, exception.getMsg(), "OA " + std::to_string(exception.getMsgId()));
  } catch (const oaLang::oaLangException &exception) {
    return fail(interp, std::string(exception.getMsg()), "OA LANG");
  } catch (const std::exception &exception) {
    return fail(interp, "oa::" + name_ + ": " + exception.what(), "OA SYSTEM");
  }
}

bool Command::isForConfined() const {
  return std::any_of(forms_.begin(), forms_.end(), [](const Form *form) { return form->effect != Effect::outside; });
}

std::string Command::help() const {
  std::string text;
  for (const std::string &line : usages(forms_, Detail::withTypes)) {
    text += (text.empty() ? "" : "\n") + line;
  }
  return text;
}

const std::vector<Command> &allCommands() {
  static const std::vector<Command> &commands = *new std::vector<Command>([] {
    std::map<std::string, Command> byName;
    for (std::size_t table = 0; table < kFormTableCount; ++table) {
      for (std::size_t i = 0; i < kFormTables[table]->count; ++i) {
        const Form &form = kFormTables[table]->forms[i];
        byName.try_emplace(form.command, form.command).first->second.add(form);
      }
    }
    std::vector<Command> sorted;
    sorted.reserve(byName.size());
    for (auto &[name, command] : byName) {
      sorted.push_back(std::move(command));
    }
    return sorted;
  }());
  return commands;
}

const Command *findCommand(const std::string &name) {
  const std::vector<Command> &commands = allCommands();
  const auto found =
      std::lower_bound(commands.begin(), commands.end(), name,
                       [](const Command &command, const std::string &text) { return command.name() < text; });
  return found != commands.end() && found->name() == name ? &*found : nullptr;
}

} // namespace tcl
} // namespace OpenAccess_4
