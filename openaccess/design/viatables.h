#ifndef OAKIT_VIATABLES_H
#define OAKIT_VIATABLES_H

// Vias. A via is its place and a header; what the vias of one definition and parameter set share is stored once, in the
// header. Definitions belong to the technology and are known here by name.

#include "connectivitytables.h"
#include "oa/oaTypes.h"
#include "viaparamtable.h"

namespace OpenAccess_4 {
namespace kit {

// Of standard vias there is one super header for each definition, which places nothing, and a sub header for each
// parameter set; of custom vias one header for each definition, or, when vias of it were given parameters, super and
// sub headers in the same way.
class ViaHeaderTable : public Table {
public:
  explicit ViaHeaderTable(Database &database);
  Column<std::uint8_t> kind{*this, 1, "kind"};
  Column<Row> name{*this, 2, "name", kNoRow};   // of the definition
  Column<Row> super{*this, 3, "super", kNoRow}; // of a sub header
  Column<Row> params{*this, 4, "params",
                     kNoRow}; // of a standard sub header: what its vias do not take from the definition
  // Vias of the header; sub headers of a super header.
  Column<std::uint32_t> users{*this, 5, "users"};
  // Box of the master's block when it was last bound; used while it is not. Inverted when unknown.
  Column<oaBox> masterBox{*this, 6, "masterBox"};
  // Custom vias: the master when the definition was last found, native texts.
  Column<Row> lib{*this, 7, "lib", kNoRow};
  Column<Row> cell{*this, 8, "cell", kNoRow};
  Column<Row> view{*this, 9, "view", kNoRow};
  Column<std::uint8_t> isCustomSuper{*this, 10, "isCustomSuper"};
  Column<Row> customParams{*this, 11, "customParams", kNoRow}; // of a sub header; see storedparams.h
};

class ViaTable : public RefTable {
public:
  explicit ViaTable(Database &database);
  Column<std::uint8_t> kind{*this, 1, "kind"};
  Column<Row> header{*this, 2, "header", kNoRow};
  Column<Row> net{*this, 3, "net", kNoRow};
  Column<Row> pin{*this, 6, "pin", kNoRow};
  Column<oaPurposeNum> purpose{*this, 7, "purpose", oavPurposeNumberDrawing};
};

class ViaParamTable : public Table {
public:
  explicit ViaParamTable(Database &database);
  Column<ViaParamValues> params{*this, 1, "params"};
};

} // namespace kit
} // namespace OpenAccess_4

#endif
