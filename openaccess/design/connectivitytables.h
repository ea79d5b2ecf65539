#ifndef OAKIT_CONNECTIVITYTABLES_H
#define OAKIT_CONNECTIVITYTABLES_H

// Nets, terminals, pins, instances, instance terminals. Vias are in viatables.h.

#include "designtables.h"

namespace OpenAccess_4 {
namespace kit {

// Ranges and members of the nets, terminals or instances (the objects) of one design that have several bits or are a
// bit of a range. One row for each such object; a scalar has none.
class BitsTable : public Table {
public:
  struct Range {
    std::uint32_t start; // a single bit: its index
    std::uint32_t stop;
    std::uint32_t step;
  };
  struct Span {
    std::uint32_t begin;
    std::uint32_t count;
  };
  BitsTable(Database &database, std::uint16_t id, const char *name, std::uint16_t defTableId,
            std::uint16_t memberTableId);
  Column<Row> def{*this, 1, "def", kNoRow}; // has the base name; none for bundles
  Column<Range> range{*this, 2, "range"};   // not for bundles
  // Of a range: its bits in written order, each once. Of a bundle: its members.
  Column<Span> members{*this, 3, "members"};
};

// Pool of members of the objects of one table.
class MemberTable : public Table {
public:
  struct Member {
    Row object;
    std::uint32_t repeat;
  };
  MemberTable(Database &database, std::uint16_t id, const char *name, std::uint16_t objectTableId);
  Column<Member> members{*this, 1, "members"};
};

// Definitions: base names.
class BitsDefTable : public Table {
public:
  BitsDefTable(Database &database, std::uint16_t id, const char *name);
  Column<std::uint8_t> kind{*this, 1, "kind"};
  Column<Row> name{*this, 2, "name", kNoRow};
  Column<std::uint8_t> bitOrder{*this, 3, "bitOrder"};
  Column<std::uint8_t> isExplicit{*this, 4, "isExplicit"};
};

class NetTable : public Table {
public:
  explicit NetTable(Database &database);
  Column<std::uint8_t> kind{*this, 1, "kind"};
  Column<Row> name{*this, 2, "name", kNoRow}; // native text of a scalar name; no other kind of net has one of its own
  Column<std::uint8_t> signalType{*this, 3, "signalType"};
  Column<std::uint8_t> flags{*this, 4, "flags"}; // NetFlag
  Column<std::int32_t> priority{*this, 5, "priority"};
  Column<Row> bits{*this, 6, "bits", kNoRow};
  // Nets of one set of equivalents name the same net here.
  Column<Row> equivalents{*this, 7, "equivalents", kNoRow};
};
enum NetFlag : std::uint8_t {
  kNetGlobal = 1,
  kNetImplicit = 2,
  kNetExcludedFromModule = 4,
  kNetPreferred = 8 // of a set of equivalents
};

class TermTable : public Table {
public:
  explicit TermTable(Database &database);
  Column<std::uint8_t> kind{*this, 1, "kind"};
  Column<Row> name{*this, 2, "name", kNoRow};
  Column<Row> net{*this, 3, "net", kNoRow};
  Column<std::uint8_t> termType{*this, 4, "termType"};
  Column<std::uint8_t> flags{*this, 5, "flags"}; // TermFlag
  Column<std::uint32_t> position{*this, 6, "position", 0xffffffffu};
  Column<Row> bits{*this, 7, "bits", kNoRow};
};
enum TermFlag : std::uint8_t { kTermNotInterface = 1, kTermImplicit = 2, kTermExcludedFromModule = 4, kTermHidden = 8 };

class PinTable : public Table {
public:
  explicit PinTable(Database &database);
  Column<std::uint8_t> kind{*this, 1, "kind"};
  Column<Row> name{*this, 2, "name", kNoRow};
  Column<Row> term{*this, 3, "term", kNoRow};
  Column<std::uint8_t> accessDir{*this, 4, "accessDir"};
  Column<std::uint8_t> placementStatus{*this, 5, "placementStatus"};
  Column<std::uint8_t> pinType{*this, 6, "pinType"};
};

class InstHeaderTable : public Table {
public:
  explicit InstHeaderTable(Database &database);
  Column<std::uint8_t> kind{*this, 1, "kind"};
  Column<Row> lib{*this, 2, "lib", kNoRow};
  Column<Row> cell{*this, 3, "cell", kNoRow};
  Column<Row> view{*this, 4, "view", kNoRow};
  Column<std::uint32_t> insts{*this, 5, "insts"};
  // Box of the master's block when it was last bound; used while it is not. Inverted when unknown.
  Column<oaBox> masterBox{*this, 6, "masterBox"};
  // Instances of a parametric master lie under sub headers, one for each set of parameters given; the super header of
  // those places nothing and counts them as its instances.
  Column<Row> super{*this, 7, "super", kNoRow}; // of a sub header
  Column<std::uint8_t> isSuper{*this, 8, "isSuper"};
  Column<Row> params{*this, 9, "params", kNoRow}; // of a sub header; see storedparams.h
};

// What instances and vias have in common: a place.
class RefTable : public Table {
public:
  RefTable(Database &database, std::uint16_t id, const char *name) : Table(database, id, name, TableLife::kinds) {}
  Column<oaPoint> origin{*this, 4, "origin"};
  Column<std::uint8_t> orient{*this, 5, "orient"};
};

class InstTable : public RefTable {
public:
  explicit InstTable(Database &database);
  Column<std::uint8_t> kind{*this, 1, "kind"};
  Column<Row> header{*this, 2, "header", kNoRow};
  Column<Row> name{*this, 3, "name", kNoRow};
  Column<std::uint8_t> placementStatus{*this, 6, "placementStatus"};
  Column<Row> array{*this, 7, "array", kNoRow}; // row of the array table, for array instances
  Column<Row> pin{*this, 8, "pin", kNoRow};
  Column<std::uint32_t> priority{*this, 9, "priority"};
  Column<std::uint8_t> excludedFromModule{*this, 10, "excludedFromModule"};
  Column<Row> bits{*this, 11, "bits", kNoRow};    // of vector instances and instance bits
  Column<std::uint8_t> flags{*this, 12, "flags"}; // InstFlag
};
enum InstFlag : std::uint8_t { kInstImplicit = 1 };

class ArrayTable : public Table {
public:
  struct Array {
    std::int32_t dxDbu; // column pitch
    std::int32_t dyDbu; // row pitch
    std::uint32_t rows;
    std::uint32_t columns;
  };
  explicit ArrayTable(Database &database);
  Column<Array> arrays{*this, 1, "arrays"};
};

class InstTermTable : public Table {
public:
  explicit InstTermTable(Database &database);
  Column<std::uint8_t> kind{*this, 1, "kind"};
  Column<Row> inst{*this, 2, "inst", kNoRow};
  Column<Row> net{*this, 3, "net", kNoRow};
  // Native text of a scalar name; the key (nametext.h) of a name of another kind.
  Column<Row> termName{*this, 4, "termName", kNoRow};
  Column<std::uint32_t> termPosition{*this, 5, "termPosition", 0xffffffffu}; // instead of a name
  Column<std::uint8_t> termNameKind{*this, 6, "termNameKind", 1};            // oaNameTypeEnum
  Column<std::uint8_t> flags{*this, 7, "flags"};                             // InstTermFlag
  // One implicit connection for each bit of a connection of several bits, in order.
  Column<BitsTable::Span> members{*this, 8, "members"};
};
enum InstTermFlag : std::uint8_t { kInstTermImplicit = 1 };

} // namespace kit
} // namespace OpenAccess_4

#endif
