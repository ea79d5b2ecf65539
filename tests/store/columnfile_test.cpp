#include "testdatabase.h"

#include "columnfile.h"
#include "oa/oaBaseMsgIds.h"

#include <cstring>

#include <gmock/gmock.h>

#define XXH_INLINE_ALL
#include <xxhash.h>

using namespace storetest;

namespace {

// Three outlines, one of them destroyed and one replaced, so that saving has rows, texts and points to leave out.
void fill(TestDatabase &database) {
  const Row first = database.add("first", {{0, 0}, {10, 0}, {10, 5}}, kNoRow);
  const Row second = database.add("second", {{1, 1}, {2, 2}}, first);
  database.add("third", {{-2147483647 - 1, 2147483647}}, first);
  database.add("", {}, kNoRow);
  database.setPoints(first, {{7, 7}});
  database.destroyRow(database.outlines, second);
}

const char *const kFilled = "first kind 18: 7,7\n"
                            "third kind 18: -2147483648,2147483647 follows first\n"
                            " kind 18:\n";

oaUInt4 idRaisedByLoading(const std::string &path) {
  try {
    dumpOfFile(path);
  } catch (const oaException &exception) {
    EXPECT_THAT(std::string(exception.getMsg()), testing::HasSubstr(path));
    return exception.getMsgId();
  }
  return oacNullIndex;
}

} // namespace

TEST(ColumnFile, SavedRowsAreRenumberedAndNothingDestroyedIsKept) {
  const TemporaryDirectory directory;
  const std::string path = directory.file("db.oa");
  TestDatabase database;
  fill(database);
  database.writeTo(path);
  EXPECT_EQ(database.dump(), kFilled) << "saving must not change the rows in memory";

  TestDatabase loaded;
  loaded.load(path);
  EXPECT_EQ(loaded.dump(), kFilled);
  EXPECT_EQ(loaded.outlines.rowCount(), 3u);
  EXPECT_EQ(loaded.shapes.rowCount(), 3u);
  EXPECT_EQ(loaded.points.rowCount(), 2u);
  EXPECT_EQ(readFile(path).find("second"), std::string::npos);
  EXPECT_EQ(directory.entries(), 1u) << "no temporary file stays";
}

TEST(ColumnFile, BorrowedColumnsBecomeOwnedAtTheFirstChange) {
  const TemporaryDirectory directory;
  const std::string path = directory.file("db.oa");
  TestDatabase database;
  fill(database);
  database.writeTo(path);

  TestDatabase loaded;
  loaded.load(path);
  EXPECT_TRUE(loaded.outlines.name.isBorrowed());
  loaded.outlines.name.set(0, loaded.strings().add("renamed"));
  EXPECT_FALSE(loaded.outlines.name.isBorrowed());
  EXPECT_TRUE(loaded.outlines.kind.isBorrowed());
  EXPECT_EQ(loaded.dump().substr(0, 7), "renamed");
  EXPECT_EQ(dumpOfFile(path), kFilled) << "the file must not change before it is saved";
  loaded.writeTo(path);
  EXPECT_EQ(dumpOfFile(path).substr(0, 7), "renamed");
}

TEST(ColumnFile, ColumnsOverSeveralSegmentsComeBack) {
  const TemporaryDirectory directory;
  const std::string path = directory.file("db.oa");
  const Row rows = 2 * kit::kSegmentRows + 17;
  TestDatabase database;
  for (Row row = 0; row < rows; ++row) {
    database.add(row % 1000 == 0 ? std::to_string(row) : "", {{int(row), -int(row)}}, row == 0 ? kNoRow : row - 1);
  }
  // Renumbers everything behind it.
  database.destroyRow(database.outlines, 5);
  database.writeTo(path);

  TestDatabase loaded;
  loaded.load(path);
  EXPECT_EQ(loaded.outlines.rowCount(), rows - 1);
  for (const Row row : {Row(0), Row(4), Row(5), kit::kSegmentRows - 1, kit::kSegmentRows, rows - 2}) {
    const int original = int(row < 5 ? row : row + 1);
    EXPECT_EQ(loaded.pointsOf(row), std::vector<oaPoint>({{original, -original}})) << "row " << row;
  }
  EXPECT_EQ(loaded.outlines.follows[5], kNoRow) << "what it followed was destroyed";
  EXPECT_EQ(loaded.outlines.follows[kit::kSegmentRows], kit::kSegmentRows - 1);
}

TEST(ColumnFile, EveryFlippedByteIsNoticedOrHarmless) {
  const TemporaryDirectory directory;
  const std::string path = directory.file("db.oa");
  TestDatabase database;
  fill(database);
  database.writeTo(path);
  const std::string good = readFile(path);
  std::size_t refused = 0;
  for (std::size_t at = 0; at < good.size(); ++at) {
    std::string bad = good;
    bad[at] = static_cast<char>(bad[at] ^ 0x20);
    writeFile(path, bad);
    try {
      EXPECT_EQ(dumpOfFile(path), kFilled) << "byte " << at;
    } catch (const oaException &exception) {
      EXPECT_THAT(std::string(exception.getMsg()), testing::HasSubstr(path));
      ++refused;
    }
  }
  EXPECT_GT(refused, good.size() / 2);
}

TEST(ColumnFile, EveryTruncatedOrGrownFileIsRefused) {
  const TemporaryDirectory directory;
  const std::string path = directory.file("db.oa");
  TestDatabase database;
  fill(database);
  database.writeTo(path);
  const std::string good = readFile(path);
  for (std::size_t size = 0; size < good.size(); ++size) {
    writeFile(path, good.substr(0, size));
    EXPECT_NE(idRaisedByLoading(path), oacNullIndex) << size << " bytes";
  }
  writeFile(path, good + "x");
  EXPECT_EQ(idRaisedByLoading(path), oaUInt4(oacCorruptedDatabase));
}

// Right checksums, but more rows than the file pays for: a few bytes must not cost gigabytes.
TEST(ColumnFile, RowsThatTheFileDoesNotHoldAreRefused) {
  const TemporaryDirectory directory;
  const std::string path = directory.file("db.oa");
  struct Claim {
    std::uint16_t table;
    Row rows, kinds;
  };
  const struct {
    const char *name;
    std::vector<Claim> claims;
    const char *message;
  } cases[] = {
      {"billions", {{kOutlineTable, 4000000000u, 1}}, "claims 4000000000 rows, but the file has only"},
      {"all rows that there can be", {{kShapeTable, kNoRow - 1, 0}}, "claims 4294967294 rows"},
      {"too many together", {{kOutlineTable, 400, 400}, {kShapeTable, 2000, 0}}, "table t claims 2000 rows"},
      {"unknown table", {{999, 1u << 31, 0}}, "claims 2147483648 rows"},
      {"rows without a kind", {{kOutlineTable, 100, 50}}, "claims 100 rows, but its column kind holds 50"},
      {"elements that are not there", {{kPointTable, 100, 0}}, "claims 100 rows, but its column points holds 0"},
      {"texts that are not there", {{kit::kStringTable, 100, 0}}, "claims 100 rows, but its column spans holds 0"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    kit::ColumnFileWriter writer(path);
    for (const Claim &claim : c.claims) {
      const std::string kinds(claim.kinds, char(oacPolygonType));
      writer.beginTable(claim.table, "t", claim.rows);
      if (claim.kinds != 0) {
        writer.beginColumn(1, "kind", 1);
        writer.addElements(kinds.data(), claim.kinds);
        writer.endColumn();
      }
    }
    writer.finish(static_cast<std::uint8_t>(kit::DatabaseKind::design));
    try {
      dumpOfFile(path);
      ADD_FAILURE() << "it was read";
    } catch (const oaException &exception) {
      EXPECT_EQ(exception.getMsgId(), oaUInt4(oacCorruptedDatabase));
      EXPECT_THAT(std::string(exception.getMsg()), testing::HasSubstr(c.message));
    }
  }
}

TEST(ColumnFile, ADirectoryOfVeryManyTablesIsRefused) {
  const TemporaryDirectory directory;
  const std::string path = directory.file("db.oa");
  kit::ColumnFileWriter writer(path);
  for (int i = 0; i < 100001; ++i) {
    writer.beginTable(kOutlineTable, "", 0);
  }
  writer.finish(static_cast<std::uint8_t>(kit::DatabaseKind::design));
  EXPECT_EQ(idRaisedByLoading(path), oaUInt4(oacCorruptedDatabase));
}

// A file whose columns all name the same bytes: the bytes of the second are cut out, and the directory says otherwise.
TEST(ColumnFile, ColumnsThatShareBytesAreRefused) {
  const TemporaryDirectory directory;
  const std::string path = directory.file("db.oa");
  constexpr Row kRows = 1000;
  constexpr std::size_t kCut = 4032; // 63 times 64, less than what the column takes
  const std::vector<std::uint32_t> elements(kRows, 7);
  kit::ColumnFileWriter writer(path);
  writer.beginTable(999, "t", kRows);
  for (std::uint16_t column = 1; column <= 2; ++column) {
    writer.beginColumn(column, "c", 4);
    writer.addElements(elements.data(), kRows);
    writer.endColumn();
  }
  writer.finish(static_cast<std::uint8_t>(kit::DatabaseKind::design));
  std::string bytes = readFile(path);
  kit::ColumnFileHeader header;
  std::memcpy(&header, bytes.data(), sizeof header);
  const std::uint64_t second = sizeof header + 4032, first = sizeof header;
  const std::string stored(reinterpret_cast<const char *>(&second), sizeof second);
  const std::size_t at = bytes.find(stored, header.directoryOffset);
  ASSERT_NE(at, std::string::npos);
  bytes.replace(at, sizeof first, reinterpret_cast<const char *>(&first), sizeof first);
  bytes.erase(sizeof header, kCut);
  header.directoryOffset -= kCut;
  header.fileBytes -= kCut;
  header.directoryChecksum = XXH3_64bits(bytes.data() + header.directoryOffset, header.directoryBytes);
  header.headerChecksum = XXH3_64bits(&header, offsetof(kit::ColumnFileHeader, headerChecksum));
  std::memcpy(&bytes[0], &header, sizeof header);
  writeFile(path, bytes);
  try {
    dumpOfFile(path);
    ADD_FAILURE() << "it was read";
  } catch (const oaException &exception) {
    EXPECT_THAT(std::string(exception.getMsg()), testing::HasSubstr("lies where others lie"));
  }
}

TEST(ColumnFile, ForeignFilesAreToldApart) {
  const TemporaryDirectory directory;
  const std::string path = directory.file("db.oa");
  const struct {
    const char *name;
    std::string bytes;
    oaUInt4 id;
  } cases[] = {
      {"empty", "", oacInvalidFileSize},
      {"text", "-- Master.tag File, Rev:1.0\nlayout.oa\n", oacInvalidDatabaseFile},
      {"written by the licensed kit", std::string("\x67\x45\x23\x01", 4) + std::string(100, '\0'), oacCannotUpgrade},
      {"long garbage", std::string(5000, '\xa5'), oacInvalidDatabaseFile},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    writeFile(path, c.bytes);
    EXPECT_EQ(idRaisedByLoading(path), c.id);
  }
  EXPECT_EQ(idRaisedByLoading(directory.file("missing")), oaUInt4(oacFileOpenFailed));
  std::filesystem::create_directory(directory.file("folder"));
  EXPECT_EQ(idRaisedByLoading(directory.file("folder")), oaUInt4(oacFileOpenFailed));
}

TEST(ColumnFile, HandlesOfAClosedDatabaseReadAsDead) {
  oaObject *object = nullptr;
  {
    TestDatabase database;
    object = database.outlines.handle(database.add("a", {}, kNoRow));
    EXPECT_TRUE(object->isValid());
    EXPECT_EQ(object->getType(), oacPolygonType);
    EXPECT_EQ(database.outlines.handle(0), object) << "one handle for one row";
  }
  EXPECT_FALSE(object->isValid());
  EXPECT_THROW(object->getType(), oaException);
  EXPECT_THROW(object->getProps(), oaException);
}
