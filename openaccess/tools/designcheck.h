#ifndef OAKIT_DESIGNCHECK_H
#define OAKIT_DESIGNCHECK_H

// The checks of a design, part by part.

#include "designdatabase.h"
#include "familycheck.h"
#include "tablecheck.h"

#include <functional>
#include <string>

namespace OpenAccess_4 {
namespace kit {
namespace check {

// Whether a master is there: names are native texts.
enum class MasterState { present, missing, elsewhere };
using FindMaster = std::function<MasterState(const std::string &lib, const std::string &cell, const std::string &view)>;

// The same for a via definition.
using FindViaDefinition = std::function<MasterState(const std::string &name)>;

// Everything. The functions may be empty.
void checkDesign(const TableCheck &check, DesignDatabase &design, const FindMaster &findMaster,
                 const FindViaDefinition &findViaDefinition);

// Sets of equivalents, signal types and what else nets have of their own.
void checkNets(const TableCheck &check, DesignDatabase &design);
// Terminals on their nets, and pins.
void checkTerms(const TableCheck &check, DesignDatabase &design, const FamilyCheck &terms, const FamilyCheck &nets);
// Placements, arrays, and the headers that name masters.
void checkInsts(const TableCheck &check, DesignDatabase &design, const FamilyCheck &insts,
                const FindMaster &findMaster);
// Instance terminals.
void checkConnections(const TableCheck &check, DesignDatabase &design, const FamilyCheck &insts,
                      const FamilyCheck &nets);
// Vias and their headers.
void checkVias(const TableCheck &check, DesignDatabase &design, const FamilyCheck &nets,
               const FindViaDefinition &findViaDefinition);

} // namespace check
} // namespace kit
} // namespace OpenAccess_4

#endif
