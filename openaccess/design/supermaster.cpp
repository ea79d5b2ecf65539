#include "supermaster.h"

#include "collection.h"
#include "designaccess.h"
#include "designlife.h"
#include "evaluationlimits.h"
#include "instaccess.h"
#include "oa/oaDesign.h"
#include "oa/oaException.h"
#include "oa/oaProps.h"
#include "pcellevents.h"
#include "references.h"
#include "storedparams.h"
#include "viaaccess.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace OpenAccess_4 {

namespace kit {

namespace {

// An evaluator that says that it stores more is wrong.
constexpr oaUInt4 kMostDataBytes = 256U << 20;

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

using Definition = std::shared_ptr<oaPcellDef>;

void unbindDefinition(DesignDatabase &super, const Definition &def) {
  if (def != nullptr) {
    oaDesign *design = super.design();
    callEvaluator(design, oacPcellUnbindError, super.label() + ": the evaluator's onUnbind failed",
                  [&] { def->getIPcell()->onUnbind(design, def.get()); });
  }
}

void bindDefinition(DesignDatabase &super, const Definition &def) {
  oaDesign *design = super.design();
  callEvaluator(design, oacPcellBindError, super.label() + ": the evaluator's onBind failed",
                [&] { def->getIPcell()->onBind(design, def.get()); });
}

// Whether the sub master is drawn; its contents are what the evaluator left when it failed. The caller has it pinned.
bool callOnEval(DesignDatabase &sub, oaDesign *design, const Definition &def) {
  PcellObservers &observers = PcellObservers::instance();
  const std::string label = sub.label();
  const DesignDatabase *super = sub.subState->super;
  const std::string whyNot = Evaluation::whyNoMore(super);
  if (!whyNot.empty()) {
    sub.subState->isRefused = true;
    sub.subState->refusedFor = Evaluation::outermost();
    observers.tellError(design, label + ": " + whyNot, oacPcellEvalError);
    return false;
  }
  const Evaluation underWay(super);
  observers.tell([&](oaPcellObserver &observer) { observer.onPreEval(design, def.get()); });
  if (sub.isGone()) {
    return false;
  }
  const bool isDrawn = callEvaluator(design, oacPcellEvalError, label + ": cannot be evaluated",
                                     [&] { def->getIPcell()->onEval(design, def.get()); });
  if (isDrawn && !sub.isGone()) {
    observers.tell([&](oaPcellObserver &observer) { observer.onPostEval(design, def.get()); });
  }
  return isDrawn;
}

// Fills an empty sub master, which the caller has pinned. Nothing raises: what fails is told to the observers and
// leaves the design empty.
void evaluate(DesignDatabase &sub) {
  const KeptDesign superIsKept(*sub.subState->super);
  const KeptDesign subIsKept(sub);
  oaDesign *design = sub.design();
  sub.subState->isRefused = false;
  const Definition def = findPcellDef(*sub.subState->super, design);
  if (sub.isGone()) {
    return;
  }
  if (def != nullptr && !callOnEval(sub, design, def) && !sub.isGone()) {
    sub.revert(); // half of a drawing would look like a whole one
  }
  if (!sub.isGone()) {
    sub.setModified(false);
  }
}

void forgetSubMaster(DesignDatabase &super, const DesignDatabase &sub) {
  super.superState->subMasters.erase(sub.subState->key);
  super.superState->subMastersInOrder.erase(sub.serialNumber());
}

// The super master is still there, the sub master is not. Gives the reference back that the sub master held, unless it
// is the last: whoever calls goes on using the super master.
void purgeSubMaster(DesignDatabase &super, DesignDatabase &sub) {
  forgetSubMaster(super, sub);
  sub.subState->super = nullptr;
  DesignDatabase::purge(sub);
  if (super.refCount() > 1) {
    super.releaseReference();
  }
}

// Too many others were needed for the sake of something that is over now.
bool isRefusalOver(const SubMasterState &state) {
  const std::uint64_t outermost = Evaluation::outermost();
  return state.isRefused && (outermost == 0 || outermost != state.refusedFor);
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
  stateOf(super).subMastersInOrder[sub->serialNumber()] = sub.get();
  return DesignDatabase::registry().add(std::move(sub));
}

// Headers that were bound to an ordinary design sort their instances by parameters when they are bound again, and vias
// get the default variant.
void unbindPlainHeaders(DesignDatabase &master) {
  for (const auto &user : DesignDatabase::registry().all()) {
    for (auto entry = user->boundMasters.begin(); entry != user->boundMasters.end();) {
      const bool isPlain = entry->second == &master && user->instHeaders.isSuper[entry->first] == 0;
      entry = isPlain ? user->boundMasters.erase(entry) : std::next(entry);
      if (isPlain) {
        master.releaseReference();
      }
    }
    for (auto entry = user->boundVias.begin(); entry != user->boundVias.end();) {
      const bool isPlain = entry->second.master == &master && !isSuperHeader(*user, entry->first);
      entry = isPlain ? user->boundVias.erase(entry) : std::next(entry);
      if (isPlain) {
        master.releaseReference();
      }
    }
  }
}

// After a change of the super master, which the caller has pinned: sub masters with parameters that it does not have
// any more go, the others are drawn anew.
void evaluateSubMasters(DesignDatabase &super) {
  const KeptDesign superIsKept(super);
  std::vector<std::string> keys;
  for (const auto &[serial, sub] : stateOf(super).subMastersInOrder) {
    keys.push_back(sub->subState->key);
  }
  for (const std::string &key : keys) {
    if (super.isGone() || super.superState == nullptr) {
      return;
    }
    const auto found = super.superState->subMasters.find(key);
    if (found == super.superState->subMasters.end()) { // another's evaluation closed it
      continue;
    }
    DesignDatabase &sub = *found->second;
    const PinnedDesign pinned(sub);
    try {
      sub.subState->given = fittingParams(super, sub.subState->given);
    } catch (const oaException &) {
      purgeSubMaster(super, sub);
      continue;
    }
    sub.revert();
    evaluate(sub);
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
    oaParamArray fitting = fittingParams(super, given);
    master->close();
    return fitting;
  } catch (...) {
    master->close();
    throw;
  }
}

oaDesign *openSubMaster(DesignDatabase &super, const oaParamArray &given) {
  const std::string label = super.label();
  const oaParamArray fitting = fittingParams(super, given);
  const std::string key = paramKey(fitting);
  if (stateOf(super).isGoing) {
    raiseDesign(oacInvalidSuperMaster, label + ": is about to go, and makes no sub master any more");
  }
  const std::map<std::string, DesignDatabase *> &known = stateOf(super).subMasters;
  const auto found = known.find(key);
  const bool isKnown = found != known.end();
  if (isKnown) {
    found->second->addReference();
    if (!isRefusalOver(*found->second->subState)) {
      return found->second->design();
    }
  }
  DesignDatabase &sub = isKnown ? *found->second : addSubMaster(super, fitting, key);
  const PinnedDesign pinned(sub);
  evaluate(sub);
  if (sub.isGone()) {
    raiseDesign(oacInvalidSubMaster, label + ": the design that its evaluator was to draw was closed meanwhile");
  }
  return sub.design();
}

Definition findPcellDef(DesignDatabase &super, oaDesign *asker) {
  if (stateOf(super).def != nullptr || stateOf(super).isReading || stateOf(super).isGoing) {
    return stateOf(super).def;
  }
  const PinnedDesign pinned(super);
  const std::string label = super.label();
  const std::string name = evaluatorName(super);
  const std::string data = super.strings().text(super.superMasters.data[superMasterRow(super)]);
  oaDesign *design = super.design();
  Definition def;
  stateOf(super).isReading = true;
  const bool isFound =
      callEvaluator(asker, oacPcellPlugInError, label + ": evaluator \"" + name + "\" cannot be used", [&] {
        def.reset(oaPcellLink::getPcellDef(oaString(name.data(), static_cast<oaUInt4>(name.size()))));
      });
  const auto read = [&] {
    def->getIPcell()->onRead(design, reinterpret_cast<const oaByte *>(data.data()), static_cast<oaUInt4>(data.size()),
                             def.get());
  };
  const bool isRead = isFound && callEvaluator(asker, oacPcellReadError,
                                               label + ": what evaluator \"" + name + "\" stored cannot be read", read);
  if (super.isGone() || super.superState == nullptr) {
    return nullptr;
  }
  super.superState->isReading = false;
  if (!isRead || super.superState->def != nullptr) { // or somebody defined it anew meanwhile
    return super.superState->def;
  }
  super.superState->def = def;
  bindDefinition(super, def);
  return super.isGone() ? nullptr : def;
}

void storePcellData(DesignDatabase &super) {
  if (super.superState == nullptr || super.superState->def == nullptr) {
    return;
  }
  const PinnedDesign pinned(super);
  const Definition def = super.superState->def;
  const std::string label = super.label();
  oaDesign *design = super.design();
  std::string data;
  const bool isSized =
      callEvaluator(design, oacPcellCalcDiskSizeError, label + ": the evaluator cannot say how much it stores", [&] {
        const oaUInt4 size = def->getIPcell()->calcDiskSize(def.get());
        if (size > kMostDataBytes) {
          raiseBase(oacNotYetSupported, std::to_string(size) + " bytes, at most " + std::to_string(kMostDataBytes) +
                                            " can be stored with a cell");
        }
        data.resize(size);
      });
  const bool isWritten =
      isSized && callEvaluator(design, oacPcellWriteError, label + ": the evaluator cannot store", [&] {
        def->getIPcell()->onWrite(design, reinterpret_cast<oaByte *>(&data[0]), static_cast<oaUInt4>(data.size()),
                                  def.get());
      });
  if (!isWritten || super.isGone() || !isSuperMaster(super)) {
    return;
  }
  const Row row = superMasterRow(super);
  if (super.strings().text(super.superMasters.data[row]) != data) {
    super.superMasters.data.set(row, super.strings().add(data));
    super.noteAbandonedRows();
  }
}

void superMasterIsGoing(DesignDatabase &design) {
  if (design.superState == nullptr || design.superState->isGoing) {
    return;
  }
  const PinnedDesign pinned(design);
  design.superState->isGoing = true;
  // Sub masters may hold each other and the super master: each that goes may take others along.
  design.addReference();
  while (!design.superState->subMasters.empty()) {
    purgeSubMaster(design, *design.superState->subMasters.begin()->second);
  }
  design.releaseReference();
  const Definition def = std::move(design.superState->def);
  unbindDefinition(design, def);
  design.superState.reset();
}

void subMasterIsGoing(DesignDatabase &design) {
  if (design.subState != nullptr && design.subState->super != nullptr) {
    DesignDatabase &super = *design.subState->super;
    forgetSubMaster(super, design);
    design.subState->super = nullptr;
    DesignDatabase::release(super);
  }
}

void evaluatorIsGoing(const IPcell *evaluator) {
  const auto isUsedBy = [evaluator](const DesignDatabase &design) {
    return design.superState != nullptr && design.superState->def != nullptr &&
           design.superState->def->getIPcell() == evaluator;
  };
  std::vector<PinnedDesign> users; // the list of open designs may change meanwhile
  for (const auto &design : DesignDatabase::registry().all()) {
    if (isUsedBy(*design)) {
      users.emplace_back(*design);
    }
  }
  for (const PinnedDesign &user : users) {
    DesignDatabase &super = user.design();
    if (!super.isGone() && isUsedBy(super)) {
      storePcellData(super);
    }
    if (!super.isGone() && isUsedBy(super)) {
      const Definition def = std::move(super.superState->def);
      unbindDefinition(super, def);
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
    const DesignDatabase &super = designOf(*question.table);
    if (super.superState == nullptr) {
      return nullptr;
    }
    const auto &subs = super.superState->subMastersInOrder;
    const auto next = position == kNoRow ? subs.begin() : subs.upper_bound(position);
    if (next == subs.end()) {
      return nullptr;
    }
    position = next->first;
    return next->second->design();
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
  return findPcellDef(parametersOf(design), design.design()).get();
}

void oaDesign::defineSuperMaster(oaPcellDef *def, const oaParamArray &pa) {
  DesignDatabase &design = designOf(this);
  const PinnedDesign pinned(design);
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
  if (stateOf(design).def.get() != def) {
    const Definition old = std::move(stateOf(design).def);
    const Definition own(def);
    stateOf(design).def = own;
    unbindDefinition(design, old);
    if (!design.isGone()) {
      bindDefinition(design, own);
    }
  }
  if (!design.isGone()) {
    unbindPlainHeaders(design);
    evaluateSubMasters(design);
  }
}

void oaDesign::evalSuperMaster() {
  DesignDatabase &super = superMasterOf(this);
  const PinnedDesign pinned(super);
  requireChangeable(super, "evaluated");
  evaluateSubMasters(super);
}

void oaDesign::undefineSuperMaster() {
  DesignDatabase &super = superMasterOf(this);
  const PinnedDesign pinned(super);
  requireChangeable(super, "made an ordinary design");
  oaParamArray params;
  getDefaultParams(super, params);
  superMasterIsGoing(super);
  if (super.isGone()) {
    return;
  }
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
