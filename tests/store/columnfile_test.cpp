#include "testdatabase.h"

#include "oa/oaBaseMsgIds.h"

#include <gmock/gmock.h>

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
