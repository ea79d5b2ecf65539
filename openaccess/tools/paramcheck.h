#ifndef OAKIT_PARAMCHECK_H
#define OAKIT_PARAMCHECK_H

#include "designdatabase.h"
#include "tablecheck.h"

#include <unordered_set>

namespace OpenAccess_4 {
namespace kit {
namespace check {

// Parameters of parametric cells, as lists of them are stored in a text.
class ParamCheck {
public:
  ParamCheck(const TableCheck &check, const DesignDatabase &design) : check_(check), design_(design) {}

  // The parameters in that row and column can be read. Each text is read once, however many rows share it.
  void run(const Table &table, Row row, const Column<Row> &column);

private:
  const TableCheck &check_;
  const DesignDatabase &design_;
  std::unordered_set<Row> known_;
};

// What is stored of a super master.
void checkSuperMaster(const TableCheck &check, DesignDatabase &design);

} // namespace check
} // namespace kit
} // namespace OpenAccess_4

#endif
