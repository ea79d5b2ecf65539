// Files that want to make a check go on for ever, or use all memory. They are made with the file writer itself, so
// their checksums are right.

#include "oachecktest.h"

#include "multibit.h"

using namespace oachecktest;

namespace {

constexpr std::uint8_t kDesignKind = 1;

class Hostile : public FullDesign {
protected:
  // What takes no end of time is ended by the limit that every test has.
  Outcome checkedInTime() const { return checkedFile(file("full")); }
};

TEST_F(Hostile, SpansThatAllCoverAPool) {
  constexpr kit::Row kRows = 200000;
  writeDamaged([](kit::DesignDatabase &d) {
    d.points.addRows(kRows);
    const std::vector<oaPoint> points(kRows, oaPoint(1, 2));
    d.points.points.append(points.data(), kRows);
    const kit::Row all = d.points.rowCount();
    d.outlines.points.set(0, {all - 1, 1});
    for (kit::Row i = 0; i < kRows; ++i) {
      d.outlines.points.set(d.outlines.addRow(), {0, i % 2 == 0 ? all - 1 : all / 2});
    }
  });
  EXPECT_GT(checkedInTime().damages, kRows / 2);
}

TEST_F(Hostile, BundlesOfBillionsOfBits) {
  // Each bundle has the most bits that one may have, by repeats alone.
  constexpr kit::Row kBundles = 2000;
  writeDamaged([](kit::DesignDatabase &d) {
    for (kit::Row i = 0; i < kBundles; ++i) {
      const kit::Row nets = d.nets.addRow(), bits = d.netBits.addRow(), member = d.netMembers.addRows(2);
      d.nets.kind.set(nets, oacBundleNetType);
      d.nets.bits.set(nets, bits);
      d.netBits.members.set(bits, {member, 2});
      d.netMembers.members.set(member, {0, kit::kMostBits - 1 - i});
      d.netMembers.members.set(member + 1, {0, 1 + i});
      const kit::Row term = d.terms.addRow(), termBits = d.termBits.addRow(), termMember = d.termMembers.addRows(2);
      d.terms.kind.set(term, oacBundleTermType);
      d.terms.net.set(term, nets);
      d.terms.bits.set(term, termBits);
      d.termBits.members.set(termBits, {termMember, 2});
      d.termMembers.members.set(termMember, {0, kit::kMostBits - 1 - i});
      d.termMembers.members.set(termMember + 1, {0, 1 + i});
    }
  });
  EXPECT_EQ(checkedInTime().text(), "");
}

TEST_F(Hostile, AMillionRowsShareALongText) {
  constexpr kit::Row kRows = 300000;
  writeDamaged([](kit::DesignDatabase &d) {
    const kit::Row text = d.strings().add(std::string(4000000, 'x'));
    for (kit::Row i = 0; i < kRows; ++i) {
      const kit::Row payload = d.texts.addRow(), shape = d.shapes.addRow();
      d.texts.text.set(payload, text);
      d.texts.style.set(payload, {oaPoint(0, 0), 1, 0, 0, 0, 0});
      d.shapes.kind.set(shape, oacTextType);
      d.shapes.payload.set(shape, payload);
      d.shapes.box.set(shape, oaBox(0, 0, 1, 1));
      const kit::Row net = d.nets.addRow();
      d.nets.kind.set(net, oacScalarNetType);
      d.nets.name.set(net, text);
    }
  });
  const Outcome outcome = checkedInTime();
  EXPECT_GT(outcome.damages, kRows - 1) << "the nets have one name";
  EXPECT_LT(outcome.text().size(), 100000U);
}

TEST_F(Hostile, TablesThatClaimBillionsOfRows) {
  writeClaiming(4294967294u, "");
  EXPECT_EQ(checkedInTime().damages, 1U);
}

TEST_F(Hostile, ColumnsOnTopOfEachOther) {
  // The writer lays columns one after the other; the directory is changed to let one cover the other.
  kit::ColumnFileWriter writer(file("full").string());
  const std::vector<std::uint64_t> elements(10, 7);
  writer.beginTable(kit::kPropertyTable, "properties", 10);
  for (const std::uint16_t column : {5, 6}) {
    writer.beginColumn(column, "column", 8);
    writer.addElements(elements.data(), 10);
    writer.endColumn();
  }
  writer.beginTable(kit::kPropertyTable, "again", 1);
  writer.beginColumn(5, "value", 8);
  writer.addElements(elements.data(), 1);
  writer.endColumn();
  writer.finish(kDesignKind);
  const Outcome outcome = checkedInTime();
  EXPECT_NE(outcome.text().find("table again: table 3 is there more than once"), std::string::npos) << outcome.text();
  EXPECT_NE(outcome.text().find("table again, column value: column 5 is there more than once"), std::string::npos);
}

TEST_F(Hostile, UnknownTablesAreOnlyAWarning) {
  writeDamaged([](kit::DesignDatabase &d) {
    class Unknown : public kit::Table {
    public:
      explicit Unknown(kit::Database &database) : Table(database, 200, "unknown\n", kit::TableLife::pool) {}
      kit::Column<std::uint64_t> numbers{*this, 1, "numbers"};
    };
    static std::vector<std::unique_ptr<Unknown>> kept; // until the end of the process: the database knows it
    kept.emplace_back(new Unknown(d));
    kept.back()->numbers.set(kept.back()->addRow(), 5);
  });
  const Outcome outcome = checkedInTime();
  EXPECT_EQ(outcome.damages, 0U);
  EXPECT_EQ(outcome.warnings, 1U) << outcome.text();
  EXPECT_NE(outcome.text().find("table 200 (unknown\\x0a) is unknown"), std::string::npos) << outcome.text();
}

TEST_F(Hostile, ElementsOfAnotherSize) {
  kit::ColumnFileWriter writer(file("full").string());
  const std::uint64_t element = 4;
  writer.beginTable(kit::kDatabaseTable, "database", 1);
  writer.beginColumn(1, "kind", 8);
  writer.addElements(&element, 1);
  writer.endColumn();
  writer.finish(kDesignKind);
  const Outcome outcome = checkedInTime();
  EXPECT_NE(outcome.text().find("table database, column kind: has elements of 8 bytes; expected 1"), std::string::npos)
      << outcome.text();
}

} // namespace
