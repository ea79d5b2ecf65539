#ifndef OAKIT_SUPERMASTER_H
#define OAKIT_SUPERMASTER_H

// Parametric cells: super masters, and the sub masters that evaluators draw for them. What is stored of a super master
// is one row of SuperMasterTable; sub masters live in memory only, found by the set of parameters that they were given.

#include "oa/oaParam.h"
#include "oa/oaPcell.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace OpenAccess_4 {

class oaObject;
class oaScalarName;

namespace kit {

class DesignDatabase;

struct SuperMasterState {
  std::shared_ptr<oaPcellDef> def;                    // NULL until it is sought, and while the evaluator is missing
  std::map<std::string, DesignDatabase *> subMasters; // by paramKey()
  std::map<std::uint32_t, DesignDatabase *> subMastersInOrder; // by serial number
  bool isReading = false;                                      // the evaluator is taking what it stored
  bool isGoing = false;                                        // no sub master is made any more
};

struct SubMasterState {
  DesignDatabase *super = nullptr; // holds one reference of its count
  oaParamArray given;              // in the super master's order
  std::string key;
  bool isRefused = false;       // not evaluated: there were too many already
  std::uint64_t refusedFor = 0; // Evaluation::outermost() of then
};

bool isSuperMaster(const DesignDatabase &design);
// Parameters with default values, in their order.
void getDefaultParams(const DesignDatabase &super, oaParamArray &params);
// `given` in the order of the defaults, each once: the last one counts. Raises oacNotExistInDefaultParam,
// oacInvalidDataTypeForParam.
oaParamArray fittingParams(const DesignDatabase &super, const oaParamArray &given);
// The same for the cell view of that name, which is opened for it. Raises oacPcellMasterNotBound when it cannot be,
// `notParametricId` when it is no super master; the messages begin with `who` has the parameters.
oaParamArray fittingParams(const oaScalarName &lib, const oaScalarName &cell, const oaScalarName &view,
                           const oaParamArray &given, const std::string &who, oaUInt4 notParametricId);
// The sub master for the parameters, which need not be in order; its count goes up. Raises as fittingParams().
oaDesign *openSubMaster(DesignDatabase &super, const oaParamArray &given);
// The definition object, sought when there is none: the evaluator is looked for and given what was stored. NULL when
// that fails, after telling the observers about `asker`, the design that needs it.
std::shared_ptr<oaPcellDef> findPcellDef(DesignDatabase &super, oaDesign *asker);
// Brings what the evaluator stores up to date.
void storePcellData(DesignDatabase &super);
// Each parameter becomes a property of the same name, unless there is one.
void paramsBecomeProps(oaObject *owner, const oaParamArray &params);
// Properties that have name and type of a parameter of the super master become parameters again.
oaParamArray paramsFromProps(oaObject *owner, const DesignDatabase &super);
// The design is purged, or its contents go: no sub master stays open, and the definition object goes.
void superMasterIsGoing(DesignDatabase &design);
// The design is purged: its super master forgets it.
void subMasterIsGoing(DesignDatabase &design);
// An evaluator goes: the super masters that use it keep what it would store.
void evaluatorIsGoing(const IPcell *evaluator);

} // namespace kit
} // namespace OpenAccess_4

#endif
