// Commands for the definition objects of parametric cells. Their data are scripts and the like, so they stay in UTF-8.

#include "call.h"
#include "classes.h"
#include "forms.h"
#include "oa/oaPcell.h"
#include "scripterror.h"
#include "table.h"

namespace OpenAccess_4 {
namespace tcl {

const ClassInfo kPcellDefClass = {"PcellDef", nullptr, ClassKind::utility};

namespace {

// A definition object in Tcl. The script owns it until a design is defined with it; then it is the design's, and so is
// one that was asked of a design.
class PcellDefinition {
public:
  explicit PcellDefinition(oaPcellDef *own) : own_(own) {}
  explicit PcellDefinition(const oaDesign *owner) { setOwner(owner); }

  // Raises ScriptError when the design is gone, or is parametric no more.
  oaPcellDef &get() const {
    if (own_ != nullptr) {
      return *own_;
    }
    const bool isThere = kit::tableOf(owner_) == table_ && kit::rowOf(owner_) == row_;
    oaPcellDef *def = isThere ? owner_->getPcellDef() : nullptr;
    if (def == nullptr) {
      throw ScriptError{"the design that this definition object belongs to was closed, or has none any more",
                        "OA " + std::to_string(oacDeletedDatabase)};
    }
    return *def;
  }

  void define(oaDesign *design, const oaParamArray &params) {
    design->defineSuperMaster(&get(), params);
    if (own_ != nullptr) {
      static_cast<void>(own_.release());
      setOwner(design);
    }
  }

private:
  void setOwner(const oaDesign *owner) {
    owner_ = owner;
    table_ = kit::tableOf(owner);
    row_ = kit::rowOf(owner);
  }

  std::unique_ptr<oaPcellDef> own_;
  const oaDesign *owner_ = nullptr;
  const void *table_ = nullptr; // a handle's memory is used again one day
  oaUInt4 row_ = 0;
};

void giveDefinition(Call &call, PcellDefinition definition) {
  call.add(newObject(new ValueOf<PcellDefinition>(kPcellDefClass, 1, std::move(definition))));
}

oaPcellDef &definition(Call &call) { return call.changed<PcellDefinition>(0).get(); }

void getDataValue(Call &call) {
  oaString value;
  if (!definition(call).getDataValue(call.utf8(1), value)) {
    throw ScriptError{std::string("the definition object has no data \"") + Tcl_GetString(call.argument(1)) + "\"",
                      "OA VALUE"};
  }
  call.add(Tcl_NewStringObj(value, static_cast<int>(value.getLength())));
}

void getPcellDef(Call &call) {
  const oaDesign *design = call.object<oaDesign>(0);
  if (design->getPcellDef() == nullptr) {
    call.give(static_cast<const oaObject *>(nullptr));
  } else {
    giveDefinition(call, PcellDefinition(design));
  }
}

constexpr Parameter kDefinition = {ParameterKind::changed, "def", &kPcellDefClass};
constexpr Parameter kDesign = {ParameterKind::object, "design", &classOf<oaDesign>()};
constexpr Parameter kEvaluator[] = {{ParameterKind::string, "evaluatorName"}};
constexpr Parameter kNamed[] = {kDefinition, {ParameterKind::string, "name"}};
constexpr Parameter kNamedValue[] = {kDefinition, {ParameterKind::string, "name"}, {ParameterKind::string, "value"}};
constexpr Parameter kOfDesign[] = {kDesign};
constexpr Parameter kDefined[] = {kDesign, kDefinition, {ParameterKind::value, "params", &classOf<oaParamArray>()}};

const Form kForms[] = {
    {"PcellLinkGetPcellDef", kEvaluator, 1, 1, Effect::outside,
     [](Call &call) { giveDefinition(call, PcellDefinition(oaPcellLink::getPcellDef(call.string(0)))); }},
    {"addData", kNamedValue, 3, 3, Effect::outside,
     [](Call &call) { call.give(definition(call).addData(call.utf8(1), call.utf8(2))); }},
    {"setDataValue", kNamedValue, 3, 3, Effect::outside,
     [](Call &call) { call.give(definition(call).setDataValue(call.utf8(1), call.utf8(2))); }},
    {"removeData", kNamed, 2, 2, Effect::outside,
     [](Call &call) { call.give(definition(call).removeData(call.utf8(1))); }},
    {"getDataValue", kNamed, 2, 2, Effect::reads, getDataValue},
    {"getPcellDef", kOfDesign, 1, 1, Effect::reads, getPcellDef},
    {"defineSuperMaster", kDefined, 3, 3, Effect::outside,
     [](Call &call) {
       call.changed<PcellDefinition>(1).define(call.object<oaDesign>(0), call.value<oaParamArray>(2));
     }},
};

} // namespace

const FormTable kPcellForms = {kForms, sizeof kForms / sizeof kForms[0]};

} // namespace tcl
} // namespace OpenAccess_4
