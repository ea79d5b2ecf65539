// Files whose checksums are right and whose contents are not: each kind of damage is found and named.

#include "oachecktest.h"

#include "properties.h"

#include <functional>
#include <limits>

using namespace oachecktest;

namespace {

using kit::DesignDatabase;
using kit::kNoRow;
using kit::Row;

struct Case {
  const char *name;
  std::function<void(DesignDatabase &)> damage;
  const char *place; // "table nets, row 0, column bits"
  const char *what;
};

// The first row of a kind.
template <typename TableType> Row first(const TableType &table, int kind) {
  for (Row row = table.nextAlive(kNoRow); row != kNoRow; row = table.nextAlive(row)) {
    if (table.kind[row] == kind) {
      return row;
    }
  }
  throw std::logic_error("the design lacks an object of kind " + std::to_string(kind));
}

// Changes one element of a column.
template <typename T, typename Change> void alter(kit::Column<T> &column, Row row, Change change) {
  T element = column[row];
  change(element);
  column.set(row, element);
}

class Damage : public FullDesign {
protected:
  void expectFound(const std::vector<Case> &cases) const {
    for (const Case &c : cases) {
      SCOPED_TRACE(c.name);
      writeDamaged(c.damage);
      const Outcome outcome = checkedFile(file("full"));
      bool isFound = false;
      for (const check::Finding &finding : outcome.findings) {
        const std::string text = textOf(finding);
        isFound = isFound || (finding.severity == check::Severity::damage &&
                              text.find(std::string(": ") + c.place) != std::string::npos &&
                              text.find(c.what) != std::string::npos);
      }
      EXPECT_TRUE(isFound) << outcome.text();
    }
  }
};

TEST_F(Damage, TheUndamagedDesignIsClean) {
  writeDamaged([](DesignDatabase &) {});
  const Outcome outcome = checkedFile(file("full"));
  EXPECT_EQ(outcome.text(), "");
  EXPECT_EQ(outcome.totals.databases, 1U);
}

TEST_F(Damage, OfTheDatabaseAndItsTexts) {
  expectFound({
      {"kind of the database", [](DesignDatabase &d) { d.databaseTable().kind.set(0, oacTechType); },
       "table database, row 0, column kind", "expected 4"},
      {"two databases",
       [](DesignDatabase &d) { d.databaseTable().kind.set(d.databaseTable().addRow(), oacDesignType); },
       "table database", "has 2 rows"},
      {"text beyond the pool",
       [](DesignDatabase &d) { alter(d.strings().spans, 0, [](auto &s) { s.begin = 1u << 30; }); },
       "table strings, row 0, column spans", "elements below"},
      {"text longer than the pool",
       [](DesignDatabase &d) { alter(d.strings().spans, 0, [](auto &s) { s.count = 0xffffffffu; }); },
       "table strings, row 0, column spans", "elements below"},
      {"texts that share bytes", [](DesignDatabase &d) { d.strings().spans.set(1, d.strings().spans[0]); },
       "table strings, row 1, column spans", "overlap"},
      {"no attributes", [](DesignDatabase &d) { d.attributes.clear(); }, "table designAttributes", "has 0 rows"},
      {"cell type", [](DesignDatabase &d) { d.attributes.cellType.set(0, 99); },
       "table designAttributes, row 0, column cellType", "is 99"},
      {"two blocks", [](DesignDatabase &d) { d.blocks.kind.set(d.blocks.addRow(), oacBlockType); }, "table blocks",
       "has 2 rows"},
      {"no block", [](DesignDatabase &d) { d.blocks.clear(); }, "table nets", "no block"},
  });
}

TEST_F(Damage, OfNumbersOfRows) {
  // More than the file could hold, and more than it does.
  for (const kit::Row rows : {4000000000u, 1000u}) {
    for (const char *table : {"nets", "points", "strings", "properties"}) {
      writeClaiming(rows, table);
      const Outcome outcome = checkedFile(file("full"));
      EXPECT_NE(outcome.text().find(std::string("table ") + table), std::string::npos) << outcome.text();
      EXPECT_NE(outcome.text().find(std::to_string(rows)), std::string::npos) << outcome.text();
    }
  }
}

TEST_F(Damage, OfProperties) {
  const auto find = [](DesignDatabase &d, int kind) { return first(d.properties(), kind); };
  expectFound({
      {"kind", [](DesignDatabase &d) { d.properties().kind.set(0, 5); }, "table properties, row 0, column kind",
       "is 5"},
      {"owner's table", [](DesignDatabase &d) { d.properties().ownerTable.set(0, kit::kPointTable); },
       "table properties, row 0, column ownerTable", "a table of objects"},
      {"owner's row", [](DesignDatabase &d) { d.properties().ownerRow.set(0, 12345); },
       "table properties, row 0, column ownerRow", "12345"},
      {"property of itself",
       [](DesignDatabase &d) {
         d.properties().ownerTable.set(3, kit::kPropertyTable);
         d.properties().ownerRow.set(3, 3);
       },
       "table properties, row 3, column ownerRow", "itself"},
      {"no name", [](DesignDatabase &d) { d.properties().name.set(2, kNoRow); }, "table properties, row 2, column name",
       "is empty"},
      {"name that is no text", [](DesignDatabase &d) { d.properties().name.set(2, 99999); },
       "table properties, row 2, column name", "table strings"},
      {"name twice", [](DesignDatabase &d) { d.properties().name.set(3, d.properties().name[2]); },
       "table properties, row 3, column name", "of row 2"},
      {"text", [](DesignDatabase &d) { d.properties().text.set(2, 99999); }, "table properties, row 2, column text",
       "99999"},
      {"truth value", [=](DesignDatabase &d) { d.properties().value.set(find(d, oacBooleanPropType), 2); },
       "table properties", "a truth value"},
      {"out of range", [=](DesignDatabase &d) { d.properties().value.set(find(d, oacIntRangePropType), 7); },
       "table properties", "outside its range"},
      {"none of the enumeration",
       [=](DesignDatabase &d) { d.properties().text.set(find(d, oacEnumPropType), d.properties().name[0]); },
       "table properties", "of the enumeration"},
  });
}

TEST_F(Damage, OfShapes) {
  expectFound({
      {"kind", [](DesignDatabase &d) { d.shapes.kind.set(0, oacScalarNetType); }, "table shapes, row 0, column kind",
       "the type of a shape"},
      {"kind with another payload", [](DesignDatabase &d) { d.shapes.kind.set(0, oacPathType); },
       "table shapes, row 0, column payload", "table paths"},
      {"kind without a payload", [](DesignDatabase &d) { d.shapes.kind.set(1, oacRectType); },
       "table shapes, row 1, column payload", "no reference"},
      {"header", [](DesignDatabase &d) { d.shapes.lpp.set(0, 1000); }, "table shapes, row 0, column lpp", "1000"},
      {"no header", [](DesignDatabase &d) { d.shapes.lpp.set(0, kNoRow); }, "table shapes, row 0, column lpp",
       "is none"},
      {"payload", [](DesignDatabase &d) { d.shapes.payload.set(1, 1000000); }, "table shapes, row 1, column payload",
       "1000000"},
      {"payload of another shape", [](DesignDatabase &d) { d.shapes.payload.set(2, d.shapes.payload[1]); },
       "table shapes, row 2, column payload", "another shape"},
      {"net", [](DesignDatabase &d) { d.shapes.net.set(0, 77); }, "table shapes, row 0, column net", "77"},
      {"implicit net", [](DesignDatabase &d) { d.nets.flags.set(d.shapes.net[0], kit::kNetImplicit); },
       "table shapes, row 0, column net", "implicit"},
      {"net and pin", [](DesignDatabase &d) { d.shapes.pin.set(0, 0); }, "table shapes, row 0, column net",
       "and in a pin"},
      {"pin", [](DesignDatabase &d) { d.shapes.pin.set(3, 77); }, "table shapes, row 3, column pin", "77"},
      {"flat rectangle", [](DesignDatabase &d) { d.shapes.box.set(0, oaBox(0, 0, 10, 0)); },
       "table shapes, row 0, column box", "flat"},
      {"box of a polygon", [](DesignDatabase &d) { d.shapes.box.set(1, oaBox(0, 0, 10, 11)); },
       "table shapes, row 1, column box", "expected (0 0) (10 10)"},
      {"box of a path", [](DesignDatabase &d) { d.shapes.box.set(3, oaBox(0, 0, 10, 10)); },
       "table shapes, row 3, column box", "expected ("},
      {"box of a text", [](DesignDatabase &d) { d.shapes.box.set(10, oaBox(0, 0, 1, 1)); },
       "table shapes, row 10, column box", "expected ("},
      {"box of all", [](DesignDatabase &d) { d.blocks.shapeBox.set(0, oaBox(0, 0, 1, 1)); },
       "table blocks, row 0, column shapeBox", "the box of all shapes"},
      {"points beyond the pool",
       [](DesignDatabase &d) {
         d.outlines.points.set(0, {0xfffffff0u, 100});
       },
       "table outlines, row 0, column points", "elements below"},
      {"polygon of two points", [](DesignDatabase &d) { alter(d.outlines.points, 0, [](auto &s) { s.count = 2; }); },
       "table outlines, row 0, column points", "3 or more"},
      {"path of one point", [](DesignDatabase &d) { alter(d.paths.paths, 0, [](auto &p) { p.points.count = 1; }); },
       "table paths, row 0, column points", "2 or more"},
      {"path style", [](DesignDatabase &d) { alter(d.paths.paths, 0, [](auto &p) { p.style = 4; }); },
       "table paths, row 0, column paths", "is 4"},
      {"extensions", [](DesignDatabase &d) { alter(d.paths.paths, 1, [](auto &p) { p.endExtDbu = 4; }); },
       "table paths, row 1, column paths", "extensions"},
      {"end style", [](DesignDatabase &d) { alter(d.pathSegs.segments, 0, [](auto &s) { s.endStyle.style = 5; }); },
       "table pathSegs, row 0", "is 5"},
      {"direction", [](DesignDatabase &d) { alter(d.pathSegs.segments, 0, [](auto &s) { s.end = oaPoint(9, 8); }); },
       "table pathSegs, row 0", "at 45 degrees"},
      {"odd width", [](DesignDatabase &d) { alter(d.pathSegs.segments, 0, [](auto &s) { s.widthDbu = 3; }); },
       "table pathSegs, row 0", "odd width"},
      {"angle that is no number",
       [](DesignDatabase &d) {
         alter(d.arcs.arcs, 0, [](auto &a) { a.stopRadians = std::numeric_limits<double>::quiet_NaN(); });
       },
       "table arcs, row 0", "no number"},
      {"flat ellipse", [](DesignDatabase &d) { alter(d.arcs.arcs, 0, [](auto &a) { a.ellipse.right() = 0; }); },
       "table arcs, row 0", "flat"},
      {"hole", [](DesignDatabase &d) { alter(d.donuts.donuts, 0, [](auto &s) { s.holeRadiusDbu = 10; }); },
       "table donuts, row 0", "hole"},
      {"size of a dot", [](DesignDatabase &d) { alter(d.dots.dots, 0, [](auto &s) { s.widthDbu = 8; }); },
       "table shapes, row 9, column box", "expected ("},
      {"orientation of a text", [](DesignDatabase &d) { alter(d.texts.style, 0, [](auto &s) { s.orient = 8; }); },
       "table texts, row 0, column style", "is 8"},
      {"flags of a text", [](DesignDatabase &d) { alter(d.texts.style, 0, [](auto &s) { s.flags = 8; }); },
       "table texts, row 0, column style", "flags 8"},
      {"text", [](DesignDatabase &d) { d.texts.text.set(0, 5000); }, "table texts, row 0, column text", "5000"},
      {"evaluator", [](DesignDatabase &d) { d.texts.evaluator.set(1, 5000); }, "table texts, row 1, column evaluator",
       "5000"},
  });
}

TEST_F(Damage, OfHeadersAndDisplays) {
  expectFound({
      {"count", [](DesignDatabase &d) { d.lpps.shapes.set(0, 99); }, "table lpps, row 0, column shapes", "counts 99"},
      {"purpose", [](DesignDatabase &d) { d.lpps.purpose.set(0, oavPurposeNumberNo); },
       "table lpps, row 0, column purpose", "no shape can have"},
      {"pair twice",
       [](DesignDatabase &d) {
         d.lpps.layer.set(1, d.lpps.layer[0]);
         d.lpps.purpose.set(1, d.lpps.purpose[0]);
       },
       "table lpps, row 1, column layer", "of row 0"},
      {"layer without a header", [](DesignDatabase &d) { d.layerHeaders.layer.set(0, 99); },
       "table layerHeaders, column layer", "has no header"},
      {"header without a layer", [](DesignDatabase &d) { d.layerHeaders.layer.set(0, 99); },
       "table layerHeaders, row 0, column layer", "layer 99"},
      {"layer twice", [](DesignDatabase &d) { d.layerHeaders.layer.set(1, d.layerHeaders.layer[0]); },
       "table layerHeaders, row 1, column layer", "of row 0"},
      {"format", [](DesignDatabase &d) { d.textDisplays.format.set(0, 3); }, "table textDisplays, row 0, column format",
       "is 3"},
      {"object's table", [](DesignDatabase &d) { d.textDisplays.objectTable.set(0, kit::kNetTable); },
       "table textDisplays, row 0, column objectTable", "such a display"},
      {"object", [](DesignDatabase &d) { d.textDisplays.objectRow.set(0, 4000); },
       "table textDisplays, row 0, column objectRow", "4000"},
      {"no object", [](DesignDatabase &d) { d.textDisplays.objectRow.set(0, kNoRow); },
       "table textDisplays, row 0, column objectRow", "shows nothing"},
      {"attribute of a net", [](DesignDatabase &d) { d.textDisplays.attribute.set(1, 77); },
       "table textDisplays, row 1, column attribute", "is 77"},
      {"attribute of a master", [](DesignDatabase &d) { d.textDisplays.attribute.set(2, 77); },
       "table textDisplays, row 2, column attribute", "is 77"},
      {"master's text", [](DesignDatabase &d) { d.textDisplays.masterText.set(3, 7777); },
       "table textDisplays, row 3, column masterText", "7777"},
  });
}

TEST_F(Damage, OfNamesOfSeveralBits) {
  const auto bus = [](DesignDatabase &d) { return first(d.nets, oacBusNetType); };
  const auto bit = [](DesignDatabase &d) { return first(d.nets, oacBusNetBitType); };
  const auto bundle = [](DesignDatabase &d) { return first(d.nets, oacBundleNetType); };
  expectFound({
      {"kind", [](DesignDatabase &d) { d.nets.kind.set(0, oacPinType); }, "table nets, row 0, column kind",
       "the type of a net"},
      {"scalar without a name", [](DesignDatabase &d) { d.nets.name.set(0, kNoRow); }, "table nets, row 0, column name",
       "is empty"},
      {"scalar with bits", [](DesignDatabase &d) { d.nets.bits.set(0, 0); }, "table nets, row 0, column bits",
       "none for a scalar"},
      {"bit with a name", [=](DesignDatabase &d) { d.nets.name.set(bit(d), d.nets.name[0]); }, "table nets",
       "follows from the bits"},
      {"bus without bits", [=](DesignDatabase &d) { d.nets.bits.set(bus(d), kNoRow); }, "table nets",
       "a row of table netBits"},
      {"bits of another", [=](DesignDatabase &d) { d.nets.bits.set(bus(d), d.nets.bits[bit(d)]); }, "table nets",
       "belongs to another object"},
      {"bits beyond the table", [=](DesignDatabase &d) { d.nets.bits.set(bus(d), 7777); }, "table nets", "7777"},
      {"names that are equal",
       [](DesignDatabase &d) {
         const Row other = first(d.nets, oacScalarNetType) == 0 ? d.nets.rowCount() - 1 : 0;
         for (Row row = 1; row <= other; ++row) {
           if (d.nets.kind[row] == oacScalarNetType) {
             d.nets.name.set(row, d.strings().add("A"));
           }
         }
       },
       "table nets", "has the name of row 0"},
      {"scalar with a base name", [](DesignDatabase &d) { d.nets.name.set(0, d.busNetDefs.name[0]); },
       "table nets, row 0, column name", "base name of row 0"},
      {"hierarchical name", [](DesignDatabase &d) { d.nets.name.set(0, d.strings().add("a/b")); },
       "table nets, row 0, column name", "no slash"},
      {"bit twice",
       [=](DesignDatabase &d) { d.netBits.range.set(d.nets.bits[bit(d) + 1], d.netBits.range[d.nets.bits[bit(d)]]); },
       "table nets", "base name and index"},
      {"step", [=](DesignDatabase &d) { alter(d.netBits.range, d.nets.bits[bus(d)], [](auto &r) { r.step = 0; }); },
       "table netBits", "step of 0"},
      {"bits of a range",
       [=](DesignDatabase &d) { alter(d.netBits.range, d.nets.bits[bus(d)], [](auto &r) { r.stop = 9; }); },
       "table netBits", "the range has 10"},
      {"a bit that is a range",
       [=](DesignDatabase &d) { alter(d.netBits.range, d.nets.bits[bit(d)], [](auto &r) { r.stop = 9; }); },
       "table netBits", "for a bit"},
      {"base name", [=](DesignDatabase &d) { d.netBits.def.set(d.nets.bits[bus(d)], 77); }, "table netBits", "77"},
      {"no base name", [=](DesignDatabase &d) { d.netBits.def.set(d.nets.bits[bus(d)], kNoRow); }, "table netBits",
       "that has the base name"},
      {"base name of a bundle", [=](DesignDatabase &d) { d.netBits.def.set(d.nets.bits[bundle(d)], 0); },
       "table netBits", "none for a bundle"},
      {"member that is none",
       [](DesignDatabase &d) { alter(d.netMembers.members, 0, [](auto &m) { m.object = 777; }); },
       "table netMembers, row 0, column members", "777"},
      {"member of the wrong kind",
       [](DesignDatabase &d) { alter(d.netMembers.members, 0, [](auto &m) { m.object = 0; }); },
       "table netMembers, row 0, column members", "bit 0"},
      {"bits in another order",
       [](DesignDatabase &d) {
         const auto one = d.netMembers.members[0];
         d.netMembers.members.set(0, d.netMembers.members[1]);
         d.netMembers.members.set(1, one);
       },
       "table netMembers, row 0, column members", "bit 0"},
      {"bundle of itself",
       [=](DesignDatabase &d) {
         alter(d.netMembers.members, d.netBits.members[d.nets.bits[bundle(d)]].begin,
               [&](auto &m) { m.object = bundle(d); });
       },
       "table netMembers", "what is no bundle"},
      {"member that never occurs",
       [=](DesignDatabase &d) {
         alter(d.netMembers.members, d.netBits.members[d.nets.bits[bundle(d)]].begin, [](auto &m) { m.repeat = 0; });
       },
       "table netMembers", "0 times"},
      {"too many bits",
       [=](DesignDatabase &d) {
         alter(d.netMembers.members, d.netBits.members[d.nets.bits[bundle(d)]].begin,
               [](auto &m) { m.repeat = 0xffffffffu; });
       },
       "table nets", "at most 1048576"},
      {"members of another",
       [=](DesignDatabase &d) {
         d.netBits.members.set(d.nets.bits[bundle(d)], d.netBits.members[d.nets.bits[bus(d)]]);
       },
       "table netBits", "overlap"},
      {"implicit for nobody", [](DesignDatabase &d) { d.nets.flags.set(first(d.nets, oacBundleNetType), 2); },
       "table nets", "nothing needs"},
      {"definition for nobody", [](DesignDatabase &d) { d.busNetDefs.isExplicit.set(1, 0); }, "table busNetDefs, row 1",
       "no object has"},
      {"definitions that are equal", [](DesignDatabase &d) { d.busNetDefs.name.set(1, d.busNetDefs.name[0]); },
       "table busNetDefs, row 1, column name", "of row 0"},
      {"bit order", [](DesignDatabase &d) { d.busTermDefs.bitOrder.set(0, 3); },
       "table busTermDefs, row 0, column bitOrder", "is 3"},
      {"kind of a definition", [](DesignDatabase &d) { d.vectorInstDefs.kind.set(0, oacBusNetDefType); },
       "table vectorInstDefs, row 0, column kind", "expected"},
  });
}

TEST_F(Damage, OfNetsTerminalsAndPins) {
  expectFound({
      {"signal type", [](DesignDatabase &d) { d.nets.signalType.set(0, 10); }, "table nets, row 0, column signalType",
       "is 10"},
      {"flags", [](DesignDatabase &d) { d.nets.flags.set(0, 16); }, "table nets, row 0, column flags", "is 16"},
      {"equivalents of nothing", [](DesignDatabase &d) { d.nets.equivalents.set(0, 999); },
       "table nets, row 0, column equivalents", "999"},
      {"equivalents of a stranger",
       [](DesignDatabase &d) { d.nets.equivalents.set(0, first(d.nets, oacBusNetBitType)); },
       "table nets, row 0, column equivalents", "names itself"},
      {"two preferred",
       [](DesignDatabase &d) {
         for (Row row = 0; row < d.nets.rowCount(); ++row) {
           if (d.nets.equivalents[row] != kNoRow) {
             d.nets.flags.set(row, kit::kNetPreferred);
           }
         }
       },
       "table nets", "with 3 preferred"},
      {"terminal without a net", [](DesignDatabase &d) { d.terms.net.set(0, kNoRow); },
       "table terms, row 0, column net", "is none"},
      {"terminal on an implicit net", [](DesignDatabase &d) { d.terms.net.set(0, first(d.nets, oacBusNetBitType)); },
       "table terms, row 0, column net", "implicit"},
      {"widths", [](DesignDatabase &d) { d.terms.net.set(0, first(d.nets, oacBusNetType)); },
       "table terms, row 0, column net", "equal widths"},
      {"bit on another net", [](DesignDatabase &d) { d.terms.net.set(first(d.terms, oacBusTermBitType), 0); },
       "table terms", "the bit of the net"},
      {"terminal type", [](DesignDatabase &d) { d.terms.termType.set(0, 7); }, "table terms, row 0, column termType",
       "is 7"},
      {"position twice", [](DesignDatabase &d) { d.terms.position.set(1, 0); }, "table terms, row 1, column position",
       "of row 0"},
      {"pin without a terminal", [](DesignDatabase &d) { d.pins.term.set(0, kNoRow); },
       "table pins, row 0, column term", "is none"},
      {"pin of nothing", [](DesignDatabase &d) { d.pins.term.set(0, 55); }, "table pins, row 0, column term", "55"},
      {"pin type", [](DesignDatabase &d) { d.pins.pinType.set(0, 3); }, "table pins, row 0, column pinType", "is 3"},
      {"placement of a pin", [](DesignDatabase &d) { d.pins.placementStatus.set(0, 5); },
       "table pins, row 0, column placementStatus", "is 5"},
  });
}

TEST_F(Damage, OfInstances) {
  const auto array = [](DesignDatabase &d) { return first(d.insts, oacArrayInstType); };
  expectFound({
      {"kind", [](DesignDatabase &d) { d.insts.kind.set(0, oacPinType); }, "table insts, row 0, column kind",
       "the type of a instance"},
      {"no header", [](DesignDatabase &d) { d.insts.header.set(0, kNoRow); }, "table insts, row 0, column header",
       "is none"},
      {"header", [](DesignDatabase &d) { d.insts.header.set(0, 66); }, "table insts, row 0, column header", "66"},
      {"count", [](DesignDatabase &d) { d.instHeaders.insts.set(0, 66); }, "table instHeaders, row 0, column insts",
       "counts 66"},
      {"no cell", [](DesignDatabase &d) { d.instHeaders.cell.set(0, kNoRow); }, "table instHeaders, row 0, column cell",
       "is empty"},
      {"master twice",
       [](DesignDatabase &d) {
         for (auto *column : {&d.instHeaders.lib, &d.instHeaders.cell, &d.instHeaders.view}) {
           column->set(1, (*column)[0]);
         }
       },
       "table instHeaders, row 1, column cell", "of row 0"},
      {"orientation", [](DesignDatabase &d) { d.insts.orient.set(0, 8); }, "table insts, row 0, column orient", "is 8"},
      {"placement", [](DesignDatabase &d) { d.insts.placementStatus.set(0, 5); },
       "table insts, row 0, column placementStatus", "is 5"},
      {"visibility", [](DesignDatabase &d) { d.insts.excludedFromModule.set(0, 2); },
       "table insts, row 0, column excludedFromModule", "is 2"},
      {"name twice", [](DesignDatabase &d) { d.insts.name.set(1, d.insts.name[0]); }, "table insts, row 1, column name",
       "of row 0"},
      {"pin", [](DesignDatabase &d) { d.insts.pin.set(0, 66); }, "table insts, row 0, column pin", "66"},
      {"array of a scalar", [=](DesignDatabase &d) { d.insts.array.set(0, d.insts.array[array(d)]); },
       "table insts, row 0, column array", "none but for arrays"},
      {"array without rows", [=](DesignDatabase &d) { d.insts.array.set(array(d), kNoRow); }, "table insts",
       "rows and columns"},
      {"array of 0 rows", [](DesignDatabase &d) { alter(d.arrays.arrays, 0, [](auto &a) { a.rows = 0; }); },
       "table arrays, row 0", "one of each"},
      {"bit at another place",
       [](DesignDatabase &d) { d.insts.origin.set(first(d.insts, oacVectorInstBitType), oaPoint(1, 1)); },
       "table insts", "vector instance"},
  });
}

TEST_F(Damage, OfConnections) {
  const auto withMembers = [](DesignDatabase &d) {
    Row row = 0;
    while (d.instTerms.members[row].count == 0) {
      ++row;
    }
    return row;
  };
  const auto byPosition = [](DesignDatabase &d) {
    Row row = 0;
    while (d.instTerms.termPosition[row] == 0xffffffffu) {
      ++row;
    }
    return row;
  };
  const auto implicit = [](DesignDatabase &d) {
    Row row = 0;
    while (d.instTerms.flags[row] == 0 || d.instTerms.net[row] == kNoRow) {
      ++row;
    }
    return row;
  };
  expectFound({
      {"kind", [](DesignDatabase &d) { d.instTerms.kind.set(0, oacPinType); }, "table instTerms, row 0, column kind",
       "expected"},
      {"no instance", [](DesignDatabase &d) { d.instTerms.inst.set(0, kNoRow); }, "table instTerms, row 0, column inst",
       "is none"},
      {"instance", [](DesignDatabase &d) { d.instTerms.inst.set(0, 99); }, "table instTerms, row 0, column inst", "99"},
      {"net", [](DesignDatabase &d) { d.instTerms.net.set(0, 999); }, "table instTerms, row 0, column net", "999"},
      {"no name", [](DesignDatabase &d) { d.instTerms.termName.set(0, kNoRow); },
       "table instTerms, row 0, column termName", "is empty"},
      {"kind of name", [](DesignDatabase &d) { d.instTerms.termNameKind.set(0, 5); },
       "table instTerms, row 0, column termNameKind", "is 5"},
      {"another kind of name", [](DesignDatabase &d) { d.instTerms.termNameKind.set(0, oacVectorNameType); },
       "table instTerms, row 0, column termName", "a name of the kind"},
      {"name and position", [](DesignDatabase &d) { d.instTerms.termPosition.set(0, 3); },
       "table instTerms, row 0, column termPosition", "beside a name"},
      {"both ways on one instance", [](DesignDatabase &d) { d.instTerms.termPosition.set(0, 3); }, "table instTerms",
       "as others of the instance"},
      {"position twice",
       [=](DesignDatabase &d) {
         d.instTerms.termPosition.set(byPosition(d) + 1, d.instTerms.termPosition[byPosition(d)]);
       },
       "table instTerms", "instance and terminal"},
      {"width of the net", [=](DesignDatabase &d) { d.instTerms.net.set(withMembers(d), 0); }, "table instTerms",
       "the bits of the name"},
      {"bits of a scalar", [=](DesignDatabase &d) { d.instTerms.members.set(0, d.instTerms.members[withMembers(d)]); },
       "table instTerms", "overlap"},
      {"fewer bits than the name",
       [=](DesignDatabase &d) { alter(d.instTerms.members, withMembers(d), [](auto &s) { --s.count; }); },
       "table instTerms", "column members: are 3"},
      {"bits in another order",
       [](DesignDatabase &d) {
         const auto one = d.instTermMembers.members[0];
         d.instTermMembers.members.set(0, d.instTermMembers.members[1]);
         d.instTermMembers.members.set(1, one);
       },
       "table instTermMembers, row 0, column members", "the connection of bit 0"},
      {"a bit that is none",
       [](DesignDatabase &d) { alter(d.instTermMembers.members, 0, [](auto &m) { m.object = 888; }); },
       "table instTermMembers, row 0, column members", "888"},
      {"bit on another net", [=](DesignDatabase &d) { d.instTerms.net.set(implicit(d), 0); }, "table instTerms",
       "the bit of the net"},
      {"implicit for nobody", [](DesignDatabase &d) { d.instTerms.flags.set(0, 1); },
       "table instTerms, row 0, column flags", "no bit of another"},
      {"flags", [](DesignDatabase &d) { d.instTerms.flags.set(0, 2); }, "table instTerms, row 0, column flags", "is 2"},
  });
}

TEST_F(Damage, ManyFaultsAreToldBriefly) {
  writeDamaged([](DesignDatabase &d) {
    for (Row row = 0; row < d.shapes.rowCount(); ++row) {
      d.shapes.lpp.set(row, 5000 + row);
    }
  });
  const Outcome outcome =
      outcomeOf([&](check::Findings &findings,
                    check::Totals &totals) { check::checkFile(file("full").string(), {}, findings, totals); },
                5);
  EXPECT_GT(outcome.damages, 60U);
  ASSERT_EQ(outcome.findings.size(), 6U);
  EXPECT_NE(textOf(outcome.findings[5]).find("more findings are not listed"), std::string::npos);
}

} // namespace
