#include "supermaster.h"

#include "collection.h"
#include "designaccess.h"
#include "instaccess.h"
#include "oa/oaDesign.h"
#include "oa/oaException.h"
#include "oa/oaProps.h"
#include "pcellevents.h"
#include "references.h"
#include "storedparams.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace OpenAccess_4 {

namespace kit {

namespace {

// Evaluations within evaluations: a cell that places itself with ever other parameters must come to an end.
constexpr int kMaxNestedEvaluations = 64;
int nestedEvaluations = 0;

Row superMasterRow(const DesignDatabase &design) {
  return checkedRow(design.superMasters, design.attributes.superMaster[0], "a super master");
}

SuperMasterState &stateOf(DesignDatabase &super) {
  if (super.superState == nullptr) {
    super.superState = std::make_unique<SuperMasterState>();
  }
  return *super.superState;
}

std::string evaluatorName(const DesignDatabase &super) {
  return super.strings().text(super.superMasters.evaluator[superMasterRow(super)]);
}

std::string nameOf(const oaParam &param) {
  oaString name;
  param.getName(name);
  return std::string(name);
}

bool isOpen(const DesignDatabase *design) {
  const auto &all = DesignDatabase::registry().all();
  return std::any_of(all.begin(), all.end(), [&](const auto &open) { return open.get() == design; });
}

// A design stays open while something of others runs that may close it.
class KeepOpen {
public:
  explicit KeepOpen(DesignDatabase &design) : design_(&design) { design.addReference(); }
  ~KeepOpen() {
    if (isOpen(design_)) {
      DesignDatabase::release(*design_);
    }
  }
  KeepOpen(const KeepOpen &) = delete;
  KeepOpen &operator=(const KeepOpen &) = delete;
  bool isStillOpen() const { return isOpen(design_); }

private:
  DesignDatabase *design_;
};

void unbind(DesignDatabase &super, std::unique_ptr<oaPcellDef> def) {
  if (def != nullptr) {
    callEvaluator(super.design(), oacPcellUnbindError, super.label() + ": the evaluator's onUnbind failed",
                  [&] { def->getIPcell()->onUnbind(super.design(), def.get()); });
  }
}

void bind(DesignDatabase &super, oaPcellDef *def) {
  callEvaluator(super.design(), oacPcellBindError, super.label() + ": the evaluator's onBind failed",
                [&] { def->getIPcell()->onBind(super.design(), def); });
}

// Whether the sub master is drawn; its contents are what the evaluator left when it failed.
bool callOnEval(DesignDatabase &sub, oaPcellDef *def) {
  PcellObservers &observers = PcellObservers::instance();
  oaDesign *design = sub.design();
  if (nestedEvaluations >= kMaxNestedEvaluations) {
    observers.tellError(design,
                        sub.label() + ": " + std::to_string(kMaxNestedEvaluations) +
                            " evaluations are under way already, each for the sake of the next",
                        oacPcellEvalError);
    return false;
  }
  ++nestedEvaluations;
  observers.tell([&](oaPcellObserver &observer) { observer.onPreEval(design, def); });
  const bool isDrawn = callEvaluator(design, oacPcellEvalError, sub.label() + ": cannot be evaluated",
                                     [&] { def->getIPcell()->onEval(design, def); });
  --nestedEvaluations;
  if (isDrawn && isOpen(&sub)) {
    observers.tell([&](oaPcellObserver &observer) { observer.onPostEval(design, def); });
  }
  return isDrawn;
}

// Fills an empty sub master. Nothing raises: what fails is told to the observers and leaves the design empty.
void evaluate(DesignDatabase &sub) {
  DesignDatabase &super = *sub.subState->super;
  const KeepOpen superIsKept(super);
  const KeepOpen subIsKept(sub);
  oaPcellDef *def = findPcellDef(super, sub.design());
  if (def != nullptr && !callOnEval(sub, def) && subIsKept.isStillOpen()) {
    sub.revert(); // half of a drawing would look like a whole one
  }
  if (subIsKept.isStillOpen()) {
    sub.setModified(false);
  }
}

std::vector<DesignDatabase *> subMastersOf(const DesignDatabase &super) {
  std::vector<DesignDatabase *> subs;
  if (super.superState != nullptr) {
    for (const auto &entry : super.superState->subMasters) {
      subs.push_back(entry.second);
    }
  }
  std::sort(subs.begin(), subs.end(),
            [](const DesignDatabase *a, const DesignDatabase *b) { return a->serialNumber() < b->serialNumber(); });
  return subs;
}

// The super master is still there, the sub master is not. Gives the reference back that the sub master held, unless it
// is the last: whoever calls goes on using the super master.
void purgeSubMaster(DesignDatabase &super, DesignDatabase &sub) {
  super.superState->subMasters.erase(sub.subState->key);
  sub.subState->super = nullptr;
  DesignDatabase::purge(sub);
  if (super.refCount() > 1) {
    super.releaseReference();
  }
}

DesignDatabase &addSubMaster(DesignDatabase &super, const oaParamArray &given, const std::string &key) {
  DatabasePlace place = super.place();
  place.directory.clear(); // it is nowhere, and not to be found as the super master
  const std::string shown = paramText(given);
  place.label += shown.empty() ? " (default parameters)" : " (" + shown + ")";
  auto sub = std::make_unique<DesignDatabase>(std::move(place), super.cellName(), super.viewName());
  sub->subState = std::make_unique<SubMasterState>();
  sub->subState->super = &super;
  sub->subState->given = given;
  sub->subState->key = key;
  sub->openScratch();
  super.addReference();
  stateOf(super).subMasters[key] = sub.get();
  return DesignDatabase::registry().add(std::move(sub));
}

// Headers that were bound to an ordinary design sort their instances by parameters when they are bound again.
void unbindPlainHeaders(DesignDatabase &master) {
  for (const auto &user : DesignDatabase::registry().all()) {
    for (auto entry = user->boundMasters.begin(); entry != user->boundMasters.end();) {
      const bool isPlain = entry->second == &master && user->instHeaders.isSuper[entry->first] == 0;
      entry = isPlain ? user->boundMasters.erase(entry) : std::next(entry);
      if (isPlain) {
        master.releaseReference();
      }
    }
  }
}

// After a change of the super master: sub masters with parameters that it does not have any more go, the others are
// drawn anew.
void evaluateSubMasters(DesignDatabase &super) {
  const KeepOpen superIsKept(super);
  std::vector<std::string> keys;
  for (const DesignDatabase *sub : subMastersOf(super)) {
    keys.push_back(sub->subState->key);
  }
  for (const std::string &key : keys) {
    if (!superIsKept.isStillOpen()) {
      return;
    }
    const auto found = super.superState->subMasters.find(key);
    if (found == super.superState->subMasters.end()) { // another's evaluation closed it
      continue;
    }
    DesignDatabase *sub = found->second;
    try {
      oaParamArray given = fittingParams(super, sub->subState->given);
      sub->subState->given = given;
    } catch (const oaException &) {
      purgeSubMaster(super, *sub);
      continue;
    }
    sub->revert();
    evaluate(*sub);
  }
  DesignDatabase::boxMayChange();
}

void createProp(oaObject *owner, const oaParam &param) {
  oaString name;
  param.getName(name);
  if (name.isEmpty() || oaProp::find(owner, name) != nullptr) {
    return;
  }
  switch (param.getType()) {
  case oacIntParamType:
    oaIntProp::create(owner, name, param.getIntVal());
    break;
  case oacFloatParamType:
    oaFloatProp::create(owner, name, param.getFloatVal());
    break;
  case oacDoubleParamType:
    oaDoubleProp::create(owner, name, param.getDoubleVal());
    break;
  case oacBooleanParamType:
    oaBooleanProp::create(owner, name, param.getBooleanVal());
    break;
  case oacTimeParamType:
    oaTimeProp::create(owner, name, param.getTimeVal());
    break;
  case oacStringParamType:
    oaStringProp::create(owner, name, oaString(param.getStringVal()));
    break;
  case oacAppParamType: {
    oaString type;
    param.getAppType(type);
    std::vector<oaByte> bytes(param.getNumBytes() + 1);
    param.getAppVal(bytes.data());
    oaAppProp::create(owner, name, type, param.getNumBytes(), bytes.data());
    break;
  }
  }
}

} // namespace

void paramsBecomeProps(oaObject *owner, const oaParamArray &params) {
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    createProp(owner, params[i]);
  }
}

oaParamArray paramsFromProps(oaObject *owner, const DesignDatabase &super) {
  oaParamArray defaults;
  getDefaultParams(super, defaults);
  oaParamArray params;
  for (oaUInt4 i = 0; i < defaults.getNumElements(); ++i) {
    oaParam param = defaults[i];
    oaString name;
    param.getName(name);
    oaProp *prop = oaProp::find(owner, name);
    if (prop == nullptr) {
      continue;
    }
    const oaTypeEnum kind = prop->getType();
    if (kind == oacIntPropType && param.getType() == oacIntParamType) {
      param.setIntVal(static_cast<oaIntProp *>(prop)->getValue());
    } else if (kind == oacFloatPropType && param.getType() == oacFloatParamType) {
      param.setFloatVal(static_cast<oaFloatProp *>(prop)->getValue());
    } else if (kind == oacDoublePropType && param.getType() == oacDoubleParamType) {
      param.setDoubleVal(static_cast<oaDoubleProp *>(prop)->getValue());
    } else if (kind == oacBooleanPropType && param.getType() == oacBooleanParamType) {
      param.setBooleanVal(static_cast<oaBooleanProp *>(prop)->getValue());
    } else if (kind == oacTimePropType && param.getType() == oacTimeParamType) {
      param.setTimeVal(static_cast<oaTimeProp *>(prop)->getValue());
    } else if (kind == oacStringPropType && param.getType() == oacStringParamType) {
      oaString value;
      static_cast<oaStringProp *>(prop)->getValue(value);
      param.setStringVal(value);
    } else {
      continue;
    }
    params.append(param);
    prop->destroy();
  }
  return params;
}

bool isSuperMaster(const DesignDatabase &design) {
  return design.attributes.rowCount() != 0 && design.attributes.superMaster[0] != kNoRow;
}

void getDefaultParams(const DesignDatabase &super, oaParamArray &params) {
  loadParams(super, super.superMasters.params[superMasterRow(super)], params);
}

oaParamArray fittingParams(const DesignDatabase &super, const oaParamArray &given) {
  oaParamArray defaults;
  if (given.getNumElements() != 0) {
    getDefaultParams(super, defaults);
  }
  std::map<std::string, oaUInt4> lastOfName;
  for (oaUInt4 i = 0; i < given.getNumElements(); ++i) {
    lastOfName[nameOf(given[i])] = i;
  }
  oaParamArray fitting;
  for (oaUInt4 i = 0; i < defaults.getNumElements(); ++i) {
    const auto at = lastOfName.find(nameOf(defaults[i]));
    if (at == lastOfName.end()) {
      continue;
    }
    const oaParam &param = given[at->second];
    if (param.getType() != defaults[i].getType()) {
      raiseDesign(oacInvalidDataTypeForParam, super.label() + ": parameter " + at->first + " is of type " +
                                                  std::string(defaults[i].getType().getName()) + ", one of type " +
                                                  std::string(param.getType().getName()) + " was given");
    }
    fitting.append(param);
    lastOfName.erase(at);
  }
  if (!lastOfName.empty()) {
    raiseDesign(oacNotExistInDefaultParam, super.label() + ": has no parameter " + lastOfName.begin()->first);
  }
  return fitting;
}

oaParamArray fittingParams(const oaScalarName &lib, const oaScalarName &cell, const oaScalarName &view,
                           const oaParamArray &given, const std::string &who, oaUInt4 notParametricId) {
  oaDesign *master = nullptr;
  try {
    master = oaDesign::open(lib, cell, view, 'r');
  } catch (const oaException &exception) {
    raiseDesign(oacPcellMasterNotBound,
                who + " has parameters, but its master cannot be opened: " + std::string(exception.getMsg()));
  }
  DesignDatabase &super = designOf(master);
  if (!isSuperMaster(super)) {
    master->close();
    raiseDesign(notParametricId, who + " has parameters, but its master is not parametric");
  }
  try {
    const oaParamArray fitting = fittingParams(super, given);
    master->close();
    return fitting;
  } catch (...) {
    master->close();
    throw;
  }
}

oaDesign *openSubMaster(DesignDatabase &super, const oaParamArray &given) {
  const oaParamArray fitting = fittingParams(super, given);
  const std::string key = paramKey(fitting);
  std::map<std::string, DesignDatabase *> &known = stateOf(super).subMasters;
  const auto found = known.find(key);
  if (found != known.end()) {
    found->second->addReference();
    return found->second->design();
  }
  const std::string label = super.label();
  DesignDatabase &sub = addSubMaster(super, fitting, key);
  evaluate(sub);
  if (!isOpen(&sub)) {
    raiseDesign(oacInvalidSubMaster, label + ": its evaluator closed the design that it was to draw");
  }
  return sub.design();
}

oaPcellDef *findPcellDef(DesignDatabase &super, oaDesign *asker) {
  SuperMasterState &state = stateOf(super);
  if (state.def != nullptr) {
    return state.def.get();
  }
  const std::string name = evaluatorName(super);
  std::unique_ptr<oaPcellDef> def;
  const bool isFound =
      callEvaluator(asker, oacPcellPlugInError, super.label() + ": evaluator \"" + name + "\" cannot be used", [&] {
        def.reset(oaPcellLink::getPcellDef(oaString(name.data(), static_cast<oaUInt4>(name.size()))));
      });
  if (!isFound) {
    return nullptr;
  }
  const std::string data = super.strings().text(super.superMasters.data[superMasterRow(super)]);
  const bool isRead = callEvaluator(
      asker, oacPcellReadError, super.label() + ": what evaluator \"" + name + "\" stored cannot be read", [&] {
        def->getIPcell()->onRead(super.design(), reinterpret_cast<const oaByte *>(data.data()),
                                 static_cast<oaUInt4>(data.size()), def.get());
      });
  if (!isRead) {
    return nullptr;
  }
  state.def = std::move(def);
  bind(super, state.def.get());
  return state.def.get();
}

void storePcellData(DesignDatabase &super) {
  if (super.superState == nullptr || super.superState->def == nullptr) {
    return;
  }
  oaPcellDef *def = super.superState->def.get();
  std::string data;
  const bool isSized = callEvaluator(super.design(), oacPcellCalcDiskSizeError,
                                     super.label() + ": the evaluator cannot say how much it stores",
                                     [&] { data.resize(def->getIPcell()->calcDiskSize(def)); });
  const bool isWritten =
      isSized && callEvaluator(super.design(), oacPcellWriteError, super.label() + ": the evaluator cannot store", [&] {
        def->getIPcell()->onWrite(super.design(), reinterpret_cast<oaByte *>(&data[0]),
                                  static_cast<oaUInt4>(data.size()), def);
      });
  const Row row = superMasterRow(super);
  if (isWritten && super.strings().text(super.superMasters.data[row]) != data) {
    super.superMasters.data.set(row, super.strings().add(data));
    super.noteAbandonedRows();
  }
}

void superMasterIsGoing(DesignDatabase &design) {
  if (design.superState == nullptr) {
    return;
  }
  // Sub masters may hold each other and the super master: each that goes may take others along.
  design.addReference();
  while (!design.superState->subMasters.empty()) {
    purgeSubMaster(design, *design.superState->subMasters.begin()->second);
  }
  design.releaseReference();
  const std::unique_ptr<SuperMasterState> state = std::move(design.superState);
  unbind(design, std::move(state->def));
}

void subMasterIsGoing(DesignDatabase &design) {
  if (design.subState != nullptr && design.subState->super != nullptr) {
    DesignDatabase &super = *design.subState->super;
    design.subState->super = nullptr;
    super.superState->subMasters.erase(design.subState->key);
    DesignDatabase::release(super);
  }
}

void evaluatorIsGoing(const IPcell *evaluator) {
  for (const auto &design : DesignDatabase::registry().all()) {
    if (design->superState != nullptr && design->superState->def != nullptr &&
        design->superState->def->getIPcell() == evaluator) {
      storePcellData(*design);
      unbind(*design, std::move(design->superState->def));
    }
  }
}

} // namespace kit

using namespace kit;

namespace {

[[noreturn]] void raiseNot(const DesignDatabase &design, oaUInt4 id, const char *expected) {
  raiseDesign(id, design.label() + ": is not " + expected);
}

DesignDatabase &superMasterOf(const oaDesign *design) {
  DesignDatabase &super = designOf(design);
  if (!isSuperMaster(super)) {
    raiseNot(super, oacInvalidSuperMaster, "a super master");
  }
  return super;
}

// The super master whose parameters and definition the design has.
DesignDatabase &parametersOf(DesignDatabase &design) {
  if (design.subState != nullptr && design.subState->super != nullptr) {
    return *design.subState->super;
  }
  if (!isSuperMaster(design)) {
    raiseNot(design, oacInvalidPcellMaster, "parametric");
  }
  return design;
}

void requireChangeable(const DesignDatabase &design, const char *change) {
  if (design.isScratch()) {
    raiseDesign(oacInvalidSuperMaster, design.label() + ": lives in memory only and cannot be " + change);
  }
  if (!design.isWritable()) {
    raiseDesign(oacCannotModifyReadModeDesign, design.label() + ": is open for reading and cannot be " + change);
  }
}

bool isOfAnother(const DesignDatabase &design, const oaPcellDef *def) {
  const auto &all = DesignDatabase::registry().all();
  return std::any_of(all.begin(), all.end(), [&](const auto &open) {
    return open.get() != &design && open->superState != nullptr && open->superState->def.get() == def;
  });
}

void checkDefinition(const DesignDatabase &design, const oaPcellDef *def) {
  if (def == nullptr || def->getIPcell() == nullptr || isOfAnother(design, def)) {
    raiseDesign(oacPcellInvalidPcellDef, design.label() + ": needs a definition object of its own, with an evaluator" +
                                             (def == nullptr                ? ", NULL was given"
                                              : def->getIPcell() == nullptr ? ", one without was given"
                                                                            : ", another design's was given"));
  }
}

void checkNames(const DesignDatabase &design, const oaParamArray &params) {
  std::map<std::string, oaUInt4> seen;
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    const std::string name = nameOf(params[i]);
    if (name.empty() || !seen.emplace(name, i).second) {
      raiseDesign(oacInvalidDataTypeForParam,
                  design.label() + ": " +
                      (name.empty() ? "a parameter has no name" : "two parameters are called " + name));
    }
  }
}

class SubMastersKind : public CollectionKind {
public:
  oaObject *next(const CollectionQuestion &question, Row &position, Row &) const override {
    for (DesignDatabase *sub : subMastersOf(designOf(*question.table))) {
      if (position == kNoRow || sub->serialNumber() > position) {
        position = sub->serialNumber();
        return sub->design();
      }
    }
    return nullptr;
  }
};

} // namespace

oaBoolean oaDesign::isSuperMaster() const { return kit::isSuperMaster(designOf(this)); }
oaBoolean oaDesign::isSubMaster() const { return designOf(this).subState != nullptr; }

void oaDesign::getParams(oaParamArray &params) const {
  DesignDatabase &design = designOf(this);
  getDefaultParams(parametersOf(design), params);
  if (design.subState == nullptr) {
    return;
  }
  const oaParamArray &given = design.subState->given;
  oaUInt4 next = 0; // those that are given are in the same order
  for (oaUInt4 i = 0; i < params.getNumElements() && next < given.getNumElements(); ++i) {
    if (nameOf(params[i]) == nameOf(given[next])) {
      params[i] = given[next++];
    }
  }
}

void oaDesign::getParams(oaParamArray &params, oaBoolean includeDefaults) const {
  if (includeDefaults) {
    getParams(params);
    return;
  }
  DesignDatabase &design = designOf(this);
  (void)parametersOf(design);
  params = design.subState == nullptr ? oaParamArray() : design.subState->given;
}

oaBoolean oaDesign::findParam(const oaString &name, oaParam &param) const {
  oaParamArray params;
  getParams(params);
  return params.find(name, param);
}

oaDesign *oaDesign::getSuperMaster() const {
  const DesignDatabase &design = designOf(this);
  if (design.subState == nullptr || design.subState->super == nullptr) {
    raiseNot(design, oacInvalidSubMaster, "a sub master");
  }
  return design.subState->super->design();
}

void oaDesign::getPcellEvaluatorName(oaString &name) const {
  const DesignDatabase &super = superMasterOf(this);
  super.strings().get(super.superMasters.evaluator[superMasterRow(super)], name);
}

oaPcellDef *oaDesign::getPcellDef() const {
  DesignDatabase &design = designOf(this);
  if (design.subState == nullptr && !kit::isSuperMaster(design)) {
    return nullptr;
  }
  return findPcellDef(parametersOf(design), design.design());
}

void oaDesign::defineSuperMaster(oaPcellDef *def, const oaParamArray &pa) {
  DesignDatabase &design = designOf(this);
  requireChangeable(design, "made a super master");
  checkDefinition(design, def);
  checkNames(design, pa);
  oaString evaluator;
  def->getIPcell()->getName(evaluator);
  const Row row = design.superMasters.addRow();
  design.superMasters.evaluator.set(row, design.strings().intern(std::string_view(evaluator, evaluator.getLength())));
  design.superMasters.params.set(row, design.strings().add(storedParams(pa)));
  design.noteAbandonedRows();
  design.attributes.superMaster.set(0, row);
  design.touch();
  SuperMasterState &state = stateOf(design);
  if (state.def.get() != def) {
    unbind(design, std::move(state.def));
    state.def.reset(def);
    bind(design, def);
  }
  unbindPlainHeaders(design);
  evaluateSubMasters(design);
}

void oaDesign::evalSuperMaster() {
  DesignDatabase &super = superMasterOf(this);
  requireChangeable(super, "evaluated");
  evaluateSubMasters(super);
}

void oaDesign::undefineSuperMaster() {
  DesignDatabase &super = superMasterOf(this);
  requireChangeable(super, "made an ordinary design");
  oaParamArray params;
  getDefaultParams(super, params);
  superMasterIsGoing(super);
  super.attributes.superMaster.set(0, kNoRow);
  super.noteAbandonedRows();
  super.touch();
  paramsBecomeProps(this, params);
}

oaCollection<oaDesign, oaDesign> oaDesign::getSubMasters() const {
  static const SubMastersKind kind;
  superMasterOf(this);
  return CollectionAccess::make<oaCollection<oaDesign, oaDesign>>(kind, &liveTable(this), 0);
}

} // namespace OpenAccess_4
