#ifndef OAKIT_TECHCHECK_H
#define OAKIT_TECHCHECK_H

#include "tablecheck.h"
#include "techdatabase.h"

namespace OpenAccess_4 {
namespace kit {
namespace check {

// Layers, purposes, via definitions and units of a technology.
void checkTech(const TableCheck &check, TechDatabase &tech);

} // namespace check
} // namespace kit
} // namespace OpenAccess_4

#endif
