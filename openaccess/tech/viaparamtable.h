#ifndef OAKIT_VIAPARAMTABLE_H
#define OAKIT_VIAPARAMTABLE_H

#include "oa/oaViaParam.h"
#include "table.h"

namespace OpenAccess_4 {
namespace kit {

// Via parameters as they are stored. Lengths in database units.
struct ViaParamValues {
  std::int32_t vectors[16]; // x and y of each vector, in the order of oaViaParamTypeEnum
  std::uint32_t cutWidthDbu;
  std::uint32_t cutHeightDbu;
  std::uint32_t cutLayer;
  std::uint32_t cutColumns;
  std::uint32_t cutRows;
  std::uint32_t defaultFlags; // bit n: the value of type n is default
  // Cuts that are left out, in the table of missing cuts.
  std::uint32_t missingBegin;
  std::uint32_t missingCount;
};

class MissingCutTable : public Table { // pool
public:
  struct Cut {
    std::uint32_t row;
    std::uint32_t column;
  };
  MissingCutTable(Database &database, std::uint16_t id);
  Column<Cut> cuts{*this, 1, "cuts"};
};

// Between the API's value class and its stored form. The missing cuts are appended to `missing`.
ViaParamValues storedViaParam(const oaViaParam &param, MissingCutTable &missing);
// Raises oacCorruptedDatabase for values that no via can have.
oaViaParam loadedViaParam(const ViaParamValues &values, const MissingCutTable &missing);

} // namespace kit
} // namespace OpenAccess_4

#endif
