#ifndef OAKIT_INSTACCESS_H
#define OAKIT_INSTACCESS_H

// What the sources of the instance classes share.

#include "connectivityaccess.h"
#include "multibit.h"
#include "oa/oaInst.h"

#include <string>
#include <vector>

namespace OpenAccess_4 {
namespace kit {

// Everything but the name that the create functions of all kinds of instances have in common.
struct NewInst {
  std::string lib, cell, view; // native names of the master
  oaParamArray params;         // see withParams()
  bool bindsMaster = false;    // made by the master itself, not by its names
  oaTransform placement;
  oaBlockDomainVisibility visibility = oacInheritFromTopBlock;
  oaPlacementStatus status = oacNonePlacementStatus;
};
NewInst newInst(const oaScalarName &lib, const oaScalarName &cell, const oaScalarName &view, const oaTransform &xform,
                oaBlockDomainVisibility visibility, oaPlacementStatus status);
// By the master itself: of a sub master, with its parameters. Raises oacCannotCreateRecursiveDesign.
NewInst newInst(DesignDatabase &design, const oaDesign *master, const oaTransform &xform,
                oaBlockDomainVisibility visibility, oaPlacementStatus status);

// The same with parameters, which the super master, opened for that, has to know. Raises oacPcellMasterNotBound,
// oacParamsSuppliedForNonPCellInstMaster, oacNotExistInDefaultParam, oacInvalidDataTypeForParam.
NewInst withParams(DesignDatabase &design, const NewInst &inst, const oaParamArray *params);
// The text of a name for a new scalar or array instance; raises when it cannot be one or is in use.
std::string checkedInstName(DesignDatabase &design, const oaScalarName &name);
// A new scalar or array instance. An empty name stands for an automatic one.
Row addInst(DesignDatabase &design, oaTypeEnum kind, const NewInst &inst, std::string name, const oaParamArray *params);
// Sets what new rows have in common; their kinds and names are set already.
void placeInsts(DesignDatabase &design, const NewInst &inst, const std::vector<Row> &rows);

void rename(const oaInst *inst, const oaScalarName &name);
// NULL when there is none of that kind.
oaInst *findInst(DesignDatabase &design, const oaSimpleName &name, oaTypeEnum kind);
oaName instNameOf(const oaInst *inst);

inline bool isImplicitInst(const DesignDatabase &design, Row inst) {
  return (design.insts.flags[inst] & kInstImplicit) != 0;
}
// Raises `id` for an implicit bit, which cannot be `changed` ("moved", ...) without its vector instance.
void requireExplicitInst(DesignDatabase &design, Row inst, oaUInt4 id, const char *changed);

// The instance itself and, of a vector instance, its bits, which have the same place and master.
template <typename Visit> void visitWithBits(DesignDatabase &design, Row inst, Visit visit) {
  visit(inst);
  if (design.insts.bits[inst] == kNoRow) {
    return;
  }
  const MultiBit names = instNames(design);
  const std::uint32_t bits = names.memberCount(inst);
  for (std::uint32_t bit = 0; bit < bits; ++bit) {
    visit(names.member(inst, bit).object);
  }
}

// Whether oacInstIter... flags let an instance pass.
bool passesInstFilter(const DesignDatabase &design, Row inst, oaUInt4 flags);

} // namespace kit
} // namespace OpenAccess_4

#endif
