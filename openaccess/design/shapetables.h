#ifndef OAKIT_SHAPETABLES_H
#define OAKIT_SHAPETABLES_H

// Shapes of all classes share one table, so that a walk meets them in creation order and a shape can change its class
// in place. Every shape has its bounding box in `box`; for rectangles and ellipses that is all there is. Other kinds
// have a row in a payload table. A row of a payload table belongs to one shape.

#include "designtables.h"

namespace OpenAccess_4 {
namespace kit {

struct PoolSpan {
  std::uint32_t begin;
  std::uint32_t count;
};

// Rows to make room for when `row` is the last one so far.
Row roomFor(Row row);

// A column of a table with very many rows, which are nearly always added in order and read in order.
template <typename T> class LongColumn : public Column<T> {
public:
  using Column<T>::Column;

  // As Column's, but a segment that is verified already costs no call.
  T operator[](Row row) const {
    if (__builtin_expect(row >= this->size_, 0)) {
      return Column<T>::operator[](row);
    }
    if (this->isUnverified(row)) {
      this->verifySegmentOf(row);
    }
    return reinterpret_cast<const T *>(this->data_)[row];
  }
  // All elements as they lie in memory; those that ready() gives may be read.
  const T *raw() const { return reinterpret_cast<const T *>(this->data_); }
  // Sets the row, which is usually the next one.
  void push(Row row, const T &value) {
    if (__builtin_expect(row == this->size_ && row < this->capacity_ && this->image_ == nullptr, 1)) {
      reinterpret_cast<T *>(this->data_)[row] = value;
      this->size_ = row + 1;
    } else {
      makeRoom(row);
      *reinterpret_cast<T *>(this->writable(row)) = value;
    }
  }

private:
  void makeRoom(Row row) {
    if (row >= this->capacity_ || this->image_ != nullptr) {
      this->reserve(roomFor(row));
    }
  }
};

class LPPTable : public Table {
public:
  explicit LPPTable(Database &database);
  Column<std::uint8_t> kind{*this, 1, "kind"};
  Column<oaLayerNum> layer{*this, 2, "layer"};
  Column<oaPurposeNum> purpose{*this, 3, "purpose"};
  // Shapes on the pair. A header whose count falls to 0 is destroyed, and made again with the next shape.
  Column<std::uint32_t> shapes{*this, 4, "shapes"};
};

class LayerHeaderTable : public Table {
public:
  explicit LayerHeaderTable(Database &database);
  Column<std::uint8_t> kind{*this, 1, "kind"};
  Column<oaLayerNum> layer{*this, 2, "layer"};
};

class ShapeTable : public Table {
public:
  explicit ShapeTable(Database &database);
  LongColumn<std::uint8_t> kind{*this, 1, "kind"};
  LongColumn<Row> lpp{*this, 2, "lpp"};
  LongColumn<oaBox> box{*this, 3, "box"};
  // Row of the table that the kind calls for (outlines, paths, ...); none for rectangles and ellipses.
  LongColumn<Row> payload{*this, 4, "payload", kNoRow};
  // A shape is on a net or in a pin, never both.
  Column<Row> net{*this, 5, "net", kNoRow};
  Column<Row> pin{*this, 6, "pin", kNoRow};

  // The table that `payload` refers to for a shape kind, or 0.
  static std::uint16_t payloadTable(std::uint8_t kind);
  // Whether a number read from a file is the type of a shape or text display.
  static bool isShapeKind(std::uint8_t kind) { return kind >= oacArcType && kind <= oacInstAttrDisplayType; }
  static bool isDisplayKind(std::uint8_t kind) { return kind >= oacPropDisplayType && kind <= oacInstAttrDisplayType; }

  // addRow() without a call.
  Row appendRow() {
    const Row row = rowCount();
    if (__builtin_expect(row >= kNoRow - 1, 0)) {
      return addRow();
    }
    setRowCount(row + 1);
    return row;
  }
};

class PointTable : public Table { // pool
public:
  explicit PointTable(Database &database);
  Column<oaPoint> points{*this, 1, "points"};
};

class OutlineTable : public Table { // polygons, lines
public:
  explicit OutlineTable(Database &database);
  LongColumn<PoolSpan> points{*this, 1, "points"};
};

class PathTable : public Table {
public:
  struct Path {
    PoolSpan points;
    std::uint32_t widthDbu;
    std::uint32_t beginExtDbu;
    std::uint32_t endExtDbu;
    std::uint32_t style; // oaPathStyleEnum
  };
  explicit PathTable(Database &database);
  LongColumn<Path> paths{*this, 1, "paths"};
};

class PathSegTable : public Table {
public:
  struct End {
    std::uint32_t style; // oaEndStyleEnum
    std::uint32_t extDbu;
    std::uint32_t leftDiagExtDbu;
    std::uint32_t rightDiagExtDbu;
    std::uint32_t rightHalfWidthDbu;
  };
  struct Segment {
    oaPoint begin;
    oaPoint end;
    std::uint32_t widthDbu;
    End beginStyle;
    End endStyle;
  };
  explicit PathSegTable(Database &database);
  Column<Segment> segments{*this, 1, "segments"};
};

class ArcTable : public Table {
public:
  struct Arc {
    oaBox ellipse;
    double startRadians;
    double stopRadians;
  };
  explicit ArcTable(Database &database);
  Column<Arc> arcs{*this, 1, "arcs"};
};

class DonutTable : public Table {
public:
  struct Donut {
    oaPoint centre;
    std::uint32_t radiusDbu;
    std::uint32_t holeRadiusDbu;
  };
  explicit DonutTable(Database &database);
  Column<Donut> donuts{*this, 1, "donuts"};
};

class DotTable : public Table {
public:
  struct Dot {
    oaPoint location;
    std::uint32_t widthDbu;
    std::uint32_t heightDbu;
  };
  explicit DotTable(Database &database);
  LongColumn<Dot> dots{*this, 1, "dots"};
};

// What texts and text displays have in common.
struct TextStyle {
  oaPoint origin;
  std::uint32_t heightDbu;
  std::uint8_t alignment; // oaTextAlignEnum
  std::uint8_t orient;    // oaOrientEnum
  std::uint8_t font;      // oaFontEnum
  std::uint8_t flags;     // TextFlag
};
enum TextFlag : std::uint8_t { kTextOverbar = 1, kTextVisible = 2, kTextDrafting = 4 };

class TextTable : public Table { // texts and evaluated texts
public:
  explicit TextTable(Database &database);
  LongColumn<TextStyle> style{*this, 1, "style"};
  LongColumn<Row> text{*this, 2, "text", kNoRow};
  Column<Row> evaluator{*this, 3, "evaluator", kNoRow}; // name of an evaluated text's link
};

class TextDisplayTable : public Table {
public:
  explicit TextDisplayTable(Database &database);
  Column<TextStyle> style{*this, 1, "style"};
  Column<std::uint8_t> format{*this, 2, "format"}; // oaTextDisplayFormatEnum
  // The object shown: a property, or the object whose attribute is shown; for the instance kinds the instance.
  Column<std::uint16_t> objectTable{*this, 3, "objectTable"};
  Column<Row> objectRow{*this, 4, "objectRow", kNoRow};
  Column<std::uint32_t> attribute{*this, 5, "attribute"};
  // Name of the master's property, or the master's text, as it was when last bound.
  Column<Row> masterText{*this, 6, "masterText", kNoRow};
};

} // namespace kit
} // namespace OpenAccess_4

#endif
