#ifndef TESTDATABASE_H
#define TESTDATABASE_H

#include "database.h"
#include "oa/oaException.h"
#include "oa/oaPoint.h"
#include "properties.h"

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

// A database of outlines: each row has a text, a list of points and, perhaps, another outline that it follows.
namespace storetest {

using namespace OpenAccess_4;
using kit::kNoRow;
using kit::Row;

enum TableId : std::uint16_t { kOutlineTable = 20, kShapeTable = 21, kPointTable = 22 };

struct Span {
  std::uint32_t begin;
  std::uint32_t count;
};

class Points : public kit::Table {
public:
  explicit Points(kit::Database &database) : Table(database, kPointTable, "points", kit::TableLife::pool) {}
  kit::Column<oaPoint> points{*this, 1, "points"};
};

// What an outline refers to, so that payload tables are covered.
class Shapes : public kit::Table {
public:
  explicit Shapes(kit::Database &database) : Table(database, kShapeTable, "shapes", kit::TableLife::referenced) {
    span.spansPool(kPointTable, offsetof(Span, begin), offsetof(Span, count));
  }
  kit::Column<Span> span{*this, 1, "span"};
};

class Outlines : public kit::Table {
public:
  explicit Outlines(kit::Database &database) : Table(database, kOutlineTable, "outlines", kit::TableLife::kinds) {
    setKindColumn(kind);
    name.refersTo(kit::kStringTable);
    shape.refersTo(kShapeTable);
    follows.refersTo(kOutlineTable);
  }
  kit::Column<std::uint8_t> kind{*this, 1, "kind"};
  kit::Column<Row> name{*this, 2, "name", kNoRow};
  kit::Column<Row> shape{*this, 3, "shape", kNoRow};
  kit::Column<Row> follows{*this, 4, "follows", kNoRow};
};

class TestDatabase : public kit::Database {
public:
  TestDatabase() : Database(kit::DatabaseKind::design, oacDesignType) {}
  std::string label() const override { return "test/database"; }

  Row add(const std::string &name, const std::vector<oaPoint> &corners, Row follows) {
    const Row row = outlines.addRow();
    outlines.kind.set(row, oacPolygonType);
    outlines.name.set(row, strings().add(name));
    outlines.follows.set(row, follows);
    setPoints(row, corners);
    return row;
  }
  void setPoints(Row row, const std::vector<oaPoint> &corners) {
    const Row count = static_cast<Row>(corners.size());
    const Row begin = points.addRows(count);
    points.points.append(corners.data(), count);
    const Row shape = shapes.addRow();
    shapes.span.set(shape, {begin, count});
    outlines.shape.set(row, shape);
    noteAbandonedRows();
    touch();
  }
  std::vector<oaPoint> pointsOf(Row row) {
    const Span span = shapes.span[shapes.checkRow(outlines.shape[row], "an outline")];
    points.checkSpan(span.begin, span.count, "an outline");
    const oaPoint *first = points.points.span(span.begin, span.count);
    return std::vector<oaPoint>(first, first + span.count);
  }
  // Everything in it, as text; raises for what is damaged.
  std::string dump() {
    std::ostringstream out;
    for (Row row = outlines.nextAlive(kNoRow); row != kNoRow; row = outlines.nextAlive(row)) {
      out << strings().text(outlines.name[row]) << " kind " << int(outlines.kind[row]) << ":";
      for (const oaPoint &point : pointsOf(row)) {
        out << " " << point.x() << "," << point.y();
      }
      const Row follows = outlines.follows[row];
      if (follows != kNoRow) {
        out << " follows " << strings().text(outlines.name[outlines.checkRow(follows, "an outline")]);
      }
      out << "\n";
    }
    return out.str();
  }

  Outlines outlines{*this};
  Shapes shapes{*this};
  Points points{*this};
};

// A directory that goes with the test.
class TemporaryDirectory {
public:
  TemporaryDirectory() {
    std::string pattern = (std::filesystem::temp_directory_path() / "store-XXXXXX").string();
    path_ = ::mkdtemp(pattern.data());
  }
  ~TemporaryDirectory() { std::filesystem::remove_all(path_); }
  std::string file(const std::string &name) const { return (path_ / name).string(); }
  std::size_t entries() const {
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator(path_), std::filesystem::directory_iterator()));
  }

private:
  std::filesystem::path path_;
};

inline std::string readFile(const std::string &path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void writeFile(const std::string &path, const std::string &bytes) {
  std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

inline std::string dumpOfFile(const std::string &path) {
  TestDatabase database;
  database.load(path);
  return database.dump();
}

} // namespace storetest

#endif
