#ifndef OATCL_FORMS_H
#define OATCL_FORMS_H

// All tables of forms. kFormTables and kConstants are generated.

#include "parameter.h"

#include <cstddef>

namespace OpenAccess_4 {
namespace tcl {

extern const FormTable *const kFormTables[];
extern const std::size_t kFormTableCount;

struct Constant {
  const char *name;
  std::int64_t value;
};
extern const Constant kConstants[];
extern const std::size_t kConstantCount;

// Written by hand.
extern const FormTable kCollectionForms;
extern const FormTable kArrayForms;
extern const FormTable kSessionForms;
extern const FormTable kPcellForms;

} // namespace tcl
} // namespace OpenAccess_4

#endif
