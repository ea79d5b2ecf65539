// Files with changed bytes, of the wrong length, and of other formats.

#include "oachecktest.h"

#include <random>

using namespace oachecktest;

namespace {

class Bytes : public FullDesign {
protected:
  Outcome checked(const std::string &bytes) const {
    writeBytes(file("full"), bytes);
    return checkedFile(file("full"));
  }
};

// Header and directory have checksums, so has every segment, and what lies between columns is zero: nothing changes
// unseen.
TEST_F(Bytes, EveryFlippedBitIsFound) {
  std::mt19937 random(20261121);
  std::size_t flips = 0;
  for (std::size_t at = 0; at < good().size(); at += 1 + random() % 15) {
    std::string bytes = good();
    bytes[at] = static_cast<char>(bytes[at] ^ (1 << random() % 8));
    const Outcome outcome = checked(bytes);
    // The first bytes tell what the file is; one flip does not make it one of another kit.
    EXPECT_NE(outcome.damages, 0U) << "byte " << at << ": " << outcome.text();
    ++flips;
  }
  EXPECT_GT(flips, good().size() / 16);
}

TEST_F(Bytes, ADamagedSegmentIsNamedAndTheRestStillChecked) {
  // Right checksums but one, and a wrong row elsewhere.
  writeDamaged([](kit::DesignDatabase &d) { d.pins.term.set(0, 55); });
  std::string bytes = bytesOf(file("full"));
  const std::size_t at = bytes.find("evaluator");
  ASSERT_NE(at, std::string::npos);
  bytes[at] = 'E';
  const Outcome outcome = checked(bytes);
  EXPECT_NE(outcome.text().find("table stringBytes, column bytes: the checksum of rows 0 to "), std::string::npos)
      << outcome.text();
  EXPECT_NE(outcome.text().find("table pins, row 0, column term: refers to row 55"), std::string::npos)
      << outcome.text();
}

// One wrong byte of the texts makes every name unreadable, but it is one damage. Other faults are still found.
TEST_F(Bytes, ADamagedTextIsOneDamage) {
  const kit::ColumnFile stored(file("full").string(), kit::MappedFile(file("full").string()));
  const struct {
    std::uint16_t table, column;
    std::uint32_t elementBytes;
    const char *damaged;
  } cases[] = {{kit::kStringBytesTable, 1, 1, "table stringBytes, column bytes: the checksum"},
               {kit::kStringTable, 1, 8, "table strings, column spans: the checksum"}};
  for (const auto &c : cases) {
    SCOPED_TRACE(c.damaged);
    const kit::ColumnView view = stored.column(c.table, c.column, c.elementBytes);
    const std::string elements(static_cast<const char *>(view.elements), std::size_t(view.rows) * c.elementBytes);
    const std::size_t begin = good().find(elements);
    ASSERT_NE(begin, std::string::npos);
    for (std::size_t at = begin; at < begin + elements.size(); ++at) {
      std::string bytes = good();
      bytes[at] = static_cast<char>(bytes[at] ^ 4);
      const Outcome outcome = checked(bytes);
      ASSERT_EQ(outcome.damages, 1U) << outcome.text();
      ASSERT_EQ(outcome.warnings, 1U) << outcome.text();
      ASSERT_NE(outcome.text().find(c.damaged), std::string::npos) << outcome.text();
      ASSERT_NE(outcome.text().find(" names and other texts are damaged as told"), std::string::npos);
    }
  }
}

TEST_F(Bytes, WrongLengthsAreDamage) {
  for (const std::size_t length : {std::size_t(1), std::size_t(7), std::size_t(8), std::size_t(63), std::size_t(64),
                                   good().size() / 2, good().size() - 1}) {
    const Outcome outcome = checked(good().substr(0, length));
    EXPECT_EQ(outcome.damages, 1U) << length << ": " << outcome.text();
  }
  EXPECT_EQ(checked(good() + "x").damages, 1U);
  EXPECT_EQ(checked("").text(), "warning: " + file("full").string() + ": is empty: made, and never saved\n");
  EXPECT_EQ(checked(std::string(4096, '\0')).damages, 1U);
}

TEST_F(Bytes, OtherFormatsAreNamed) {
  const Outcome licensed = checked(std::string("\x67\x45\x23\x01", 4) + std::string(200, 'x'));
  EXPECT_EQ(licensed.damages, 0U);
  EXPECT_EQ(licensed.foreign, 1U);
  EXPECT_NE(licensed.text().find("licensed OpenAccess kit"), std::string::npos) << licensed.text();
  const Outcome text = checked("this is no design, however long it is: " + std::string(100, '.') + "\n");
  EXPECT_EQ(text.damages, 1U);
  EXPECT_NE(text.text().find("is not a database file of this kit"), std::string::npos);
  EXPECT_EQ(text.totals.databases, 0U);
}

} // namespace
