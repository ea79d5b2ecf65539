#include "paramcheck.h"

#include "storedparams.h"

namespace OpenAccess_4 {
namespace kit {
namespace check {

void ParamCheck::run(const Table &table, Row row, const Column<Row> &column) {
  const Row text = column[row];
  if (!check_.texts().isReadable(text) || !known_.insert(check_.texts().number(text)).second) {
    return;
  }
  try {
    oaParamArray params;
    loadParams(design_, text, params);
  } catch (const oaException &exception) {
    check_.report().damage(table, row, column.name(), [&] {
      return Fault{"cannot be read: " + std::string(exception.getMsg()), "parameters of a parametric cell"};
    });
  }
}

void checkSuperMaster(const TableCheck &check, DesignDatabase &design) {
  const Row row = design.attributes.superMaster[0];
  if (row == kNoRow || row >= design.superMasters.rowCount()) { // out of range: told with the references
    return;
  }
  check.checkName(design.superMasters, row, design.superMasters.evaluator);
  ParamCheck(check, design).run(design.superMasters, row, design.superMasters.params);
}

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
