// What evaluators need again and again: parameters checked and brought onto the grid, arrays of contacts, terminals
// with pins.
//
// An evaluator first reads and checks all of its parameters, then draws. What cannot be drawn is refused with an
// EvaluationError, whose text the kit tells to the observers; the sub master stays without a block then.
#ifndef EVALUATION_H
#define EVALUATION_H

#include <oa/oaDesignDB.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace pcells {

/// Database units. Wide enough that sums of lengths do not overflow; Drawing refuses what is no coordinate.
using Length = oa::oaInt8;

constexpr double kSmallestLength = 0.01;  // user units
constexpr double kGreatestLength = 10000; // user units
constexpr Length kGreatestShapeCount = 1000000;

/// Why the parameters cannot be drawn.
class EvaluationError : public oa::IException {
public:
  explicit EvaluationError(std::string message) : message_(std::move(message)) {}
  oa::oaUInt4 getMsgId() const override { return oacNullIndex; }
  const oa::oaChar *getMsg() const override { return message_.c_str(); }

private:
  std::string message_;
};

struct Box {
  Length left, bottom, right, top;

  Length width() const { return right - left; }
  Length height() const { return top - bottom; }
  Box enlargedBy(Length distance) const {
    return {left - distance, bottom - distance, right + distance, top + distance};
  }
};

/// Square contacts of one layer: the side, the distance from edge to edge, and how far what they connect reaches beyond
/// them.
struct ContactRule {
  oa::oaLayerNum layer;
  Length size, spacing, enclosure;
  Length grid;

  /// The side of the smallest square that encloses a contact.
  Length room() const { return size + 2 * enclosure; }
};

/// As many contacts as fit into a box with their enclosure, in its middle.
struct ContactArray {
  ContactArray(const ContactRule &rule, const Box &area);

  Length columns, rows;
  Length left, bottom; // of the first contact

  Length count() const { return columns * rows; }
};

/// The parameters of a sub master. What is missing, of the wrong type or out of bounds raises an EvaluationError that
/// names the parameter, its value and what was expected.
class Parameters {
public:
  explicit Parameters(const oa::oaDesign *subMaster);

  /// A parameter of type double, float or int in user units, rounded to the manufacturing grid. When the minimum is
  /// above 0, so is the result.
  Length length(const char *name, double minimum = kSmallestLength, double maximum = kGreatestLength) const;
  /// The same, and half of the result is on the grid too.
  Length evenLength(const char *name, double minimum = kSmallestLength, double maximum = kGreatestLength) const;
  int count(const char *name, int minimum, int maximum) const;
  /// A boolean, or an int: oaParam has no constructor for booleans.
  bool flag(const char *name) const;
  /// One of `choices`.
  std::string choice(const char *name, std::initializer_list<const char *> choices) const;
  oa::oaLayerNum layer(const char *name) const;
  /// From the parameters "contactLayer", "contactSize", "contactSpacing" and "contactEnclosure" for the kind "contact".
  ContactRule contactRule(const std::string &kind) const;

  /// For bounds that follow from other parameters.
  void requireAtLeast(const char *name, Length value, Length minimum) const;
  void requireAtMost(const char *name, Length value, Length maximum) const;
  /// Refuses more contacts of the kind than kGreatestShapeCount.
  static void limitContacts(const std::string &kind, Length count);

  Length grid() const { return grid_; }

private:
  oa::oaParam find(const char *name) const;
  Length onGrid(const char *name, double minimum, double maximum, Length grid) const;
  std::string inUserUnits(Length value) const;

  const oa::oaDesign *subMaster_;
  double dbuPerUserUnit_;
  Length grid_;
};

/// The block of a sub master. Shapes lie on the purpose "drawing", those of pins on the purpose "pin" where the
/// technology has one.
class Drawing {
public:
  explicit Drawing(oa::oaDesign *subMaster);

  oa::oaRect *rect(oa::oaLayerNum layer, const Box &box);
  oa::oaPath *path(oa::oaLayerNum layer, Length width, const std::vector<oa::oaPoint> &points);
  /// As many as fit.
  void contacts(const ContactRule &rule, const Box &area);
  /// The net of that name; a new one comes with a terminal.
  oa::oaScalarNet *net(const char *name);
  /// One more pin of the net's terminal.
  void pin(const char *netName, oa::oaLayerNum layer, const Box &box);

private:
  oa::oaBlock *block_;
  oa::oaPurposeNum pinPurpose_ = oa::oavPurposeNumberDrawing;
};

/// Raises an EvaluationError for what is beyond the coordinates of a layout.
oa::oaPoint toPoint(Length x, Length y);

/// `length` / 2, rounded down to the grid.
Length halfOnGrid(Length length, Length grid);

} // namespace pcells

#endif
