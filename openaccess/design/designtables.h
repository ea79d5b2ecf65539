#ifndef OAKIT_DESIGNTABLES_H
#define OAKIT_DESIGNTABLES_H

// The tables of a design. A row of a table with a column `kind` is an object of that oaType; the tables without one
// hold what the objects of another table need beyond their common attributes (a polygon's points, a text's string).

#include "database.h"
#include "oa/oaBox.h"

namespace OpenAccess_4 {
namespace kit {

// Part of the file format: never changed, never used again. Ids from 50 on are for vias and parametric cells.
enum DesignTableId : std::uint16_t {
  kDesignAttributesTable = 15,
  kBlockTable = 16,
  kLPPTable = 17,
  kLayerHeaderTable = 18,
  kShapeTable = 19,
  kPointTable = 20,
  kOutlineTable = 21,
  kPathTable = 22,
  kPathSegTable = 23,
  kArcTable = 24,
  kDonutTable = 25,
  kDotTable = 26,
  kTextTable = 27,
  kTextDisplayTable = 28,
  kNetTable = 30,
  kTermTable = 31,
  kPinTable = 32,
  kInstHeaderTable = 33,
  kInstTable = 34,
  kArrayTable = 35,
  kInstTermTable = 36,
  kNetBitsTable = 37,
  kNetMemberTable = 38,
  kBusNetDefTable = 39,
  kTermBitsTable = 40,
  kTermMemberTable = 41,
  kBusTermDefTable = 42,
  kInstBitsTable = 43,
  kInstMemberTable = 44,
  kVectorInstDefTable = 45,
  kInstTermMemberTable = 46,
  kViaHeaderTable = 50,
  kViaTable = 51,
  kViaParamTable = 52,
  // 53 was never written.
  kViaMissingCutTable = 54,
  kSuperMasterTable = 55,
};

class DesignAttributesTable : public Table { // one row
public:
  explicit DesignAttributesTable(Database &database);
  Column<std::uint8_t> kind{*this, 1, "kind"};
  Column<Row> viewType{*this, 2, "viewType", kNoRow};
  Column<std::uint8_t> cellType{*this, 3, "cellType"};
  Column<Row> superMaster{*this, 4, "superMaster", kNoRow}; // of a design that is one
};

// One row for a design that is a super master.
class SuperMasterTable : public Table {
public:
  explicit SuperMasterTable(Database &database);
  Column<Row> evaluator{*this, 1, "evaluator", kNoRow}; // name
  Column<Row> data{*this, 2, "data", kNoRow};           // what the evaluator stored
  Column<Row> params{*this, 3, "params", kNoRow};       // with default values; see storedparams.h
};

class BlockTable : public Table { // at most one living row
public:
  explicit BlockTable(Database &database);
  Column<std::uint8_t> kind{*this, 1, "kind"};
  // Union of the shapes' boxes when the design was saved, text displays left out. Inverted when there are none.
  Column<oaBox> shapeBox{*this, 2, "shapeBox"};
  Column<std::uint8_t> visibleToModule{*this, 3, "visibleToModule", 1};
};

} // namespace kit
} // namespace OpenAccess_4

#endif
