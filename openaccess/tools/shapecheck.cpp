#include "shapecheck.h"

#include "oa/oaTechTypes.h"

#include <cstdlib>

namespace OpenAccess_4 {
namespace kit {
namespace check {

namespace {

std::string textOf(const oaBox &box) {
  return "(" + std::to_string(box.left()) + " " + std::to_string(box.bottom()) + ") (" + std::to_string(box.right()) +
         " " + std::to_string(box.top()) + ")";
}

bool isNear(oaCoord a, oaCoord b, oaCoord slack) { return std::abs(std::int64_t(a) - b) <= slack; }

bool isAsExpected(const oaBox &box, const ExpectedBox &expected) {
  const oaBox &other = expected.box;
  return isNear(box.left(), other.left(), expected.slackDbu) &&
         isNear(box.bottom(), other.bottom(), expected.slackDbu) &&
         isNear(box.right(), other.right(), expected.slackDbu) && isNear(box.top(), other.top(), expected.slackDbu);
}

class ShapeCheck {
public:
  ShapeCheck(const TableCheck &check, DesignDatabase &design)
      : check_(check), design_(design), shapes_(design.shapes), payloads_(check, design),
        shapesOfLpp_(std::min(design.lpps.rowCount(), design.lpps.kind.size())) {}

  void run() {
    // Stored rows only: further rows have no kind.
    const Row rows = std::min(shapes_.rowCount(), shapes_.kind.size());
    for (Row row = 0; row < rows; ++row) {
      const std::uint8_t kind = shapes_.kind[row];
      if (kind != 0) {
        checkShape(row, kind);
      }
    }
    checkLpps();
    checkLayerHeaders();
    checkBlockBox();
  }

private:
  void checkShape(Row row, std::uint8_t kind) {
    if (!ShapeTable::isShapeKind(kind)) {
      check_.report().damage(shapes_, row, "kind", [&] {
        return Fault{"is " + std::to_string(kind), "the type of a shape"};
      });
      return;
    }
    const Row lpp = shapes_.lpp[row];
    if (lpp < shapesOfLpp_.size()) {
      ++shapesOfLpp_[lpp];
    } else if (lpp == kNoRow) {
      check_.report().damage(shapes_, row, "lpp", "is none", "a layer-purpose header");
    }
    const oaBox box = shapes_.box[row];
    if (!ShapeTable::isDisplayKind(kind)) {
      all_.merge(box);
    }
    if (kind == oacRectType || kind == oacEllipseType) {
      if (box.left() >= box.right() || box.bottom() >= box.top()) {
        check_.report().damage(shapes_, row, "box", [&] { return Fault{"is inverted or flat: " + textOf(box), {}}; });
      }
    } else {
      checkPayload(row, kind, box);
    }
    checkOwner(row);
  }

  void checkPayload(Row row, std::uint8_t kind, const oaBox &box) {
    const Table &table = *design_.table(ShapeTable::payloadTable(kind));
    const Row payload = shapes_.payload[row];
    if (payload >= table.rowCount()) {
      if (payload == kNoRow) {
        check_.report().damage(shapes_, row, "payload", [&] {
          return Fault{"is none", std::string("a row of table ") + table.name()};
        });
      }
      return; // others are told with the references
    }
    if (!claim(table, payload)) {
      check_.report().damage(shapes_, row, "payload", [&] {
        return Fault{"row " + std::to_string(payload) + " of table " + table.name() + " belongs to another shape too",
                     "a row of its own"};
      });
      return;
    }
    const std::optional<ExpectedBox> expected = payloads_.check(kind, payload);
    if (expected && !isAsExpected(box, *expected)) {
      check_.report().damage(shapes_, row, "box", [&] { return Fault{"is " + textOf(box), textOf(expected->box)}; });
    }
  }

  // The number of rows that a payload table claims costs nothing; more than there are shapes are of no use.
  bool claim(const Table &table, Row payload) {
    const auto found = claimed_.find(&table);
    if (found != claimed_.end()) {
      return payload >= found->second.rows() || found->second.claim(payload);
    }
    Row stored = shapes_.kind.size();
    for (const ColumnBase *column : table.columns()) {
      stored = std::max(stored, column->size());
    }
    if (table.rowCount() > stored) {
      check_.report().damage(
          table.name(), "", {"has " + std::to_string(table.rowCount()) + " rows", "at most " + std::to_string(stored)});
    }
    ClaimedRows &claimed = claimed_.emplace(&table, ClaimedRows(std::min(table.rowCount(), stored))).first->second;
    return payload >= claimed.rows() || claimed.claim(payload);
  }

  void checkOwner(Row row) const {
    const Row net = shapes_.net[row];
    if (net == kNoRow) {
      return;
    }
    if (shapes_.pin[row] != kNoRow) {
      check_.report().damage(shapes_, row, "net", "is on a net and in a pin", "one of them");
    }
    if (design_.nets.isAlive(net) && (design_.nets.flags[net] & kNetImplicit) != 0) {
      check_.report().damage(shapes_, row, "net", [&] {
        return Fault{"is net " + std::to_string(net) + ", which is implicit", {}};
      });
    }
  }

  void checkLpps() {
    const LPPTable &lpps = design_.lpps;
    check_.checkKinds(lpps, {oacLPPHeaderType});
    std::vector<std::pair<std::pair<oaLayerNum, oaPurposeNum>, Row>> pairs;
    TableCheck::forEachRow(lpps, [&](Row row) {
      pairs.push_back({{lpps.layer[row], lpps.purpose[row]}, row});
      layersInUse_.push_back(lpps.layer[row]);
      if (lpps.purpose[row] == oavPurposeNumberAny || lpps.purpose[row] == oavPurposeNumberNo) {
        check_.report().damage(lpps, row, "purpose", "is one that no shape can have");
      }
      if (lpps.shapes[row] != shapesOfLpp_[row] || shapesOfLpp_[row] == 0) {
        check_.report().damage(lpps, row, "shapes", [&] {
          return Fault{"counts " + std::to_string(lpps.shapes[row]) + " shapes, there are " +
                           std::to_string(shapesOfLpp_[row]),
                       "the same, and one at least"};
        });
      }
    });
    check_.checkUnique(lpps, "layer", pairs, "layer and purpose");
  }

  void checkLayerHeaders() {
    const LayerHeaderTable &headers = design_.layerHeaders;
    check_.checkKinds(headers, {oacLayerHeaderType});
    std::vector<std::pair<oaLayerNum, Row>> layers;
    std::sort(layersInUse_.begin(), layersInUse_.end());
    layersInUse_.erase(std::unique(layersInUse_.begin(), layersInUse_.end()), layersInUse_.end());
    TableCheck::forEachRow(headers, [&](Row row) {
      layers.push_back({headers.layer[row], row});
      if (!std::binary_search(layersInUse_.begin(), layersInUse_.end(), headers.layer[row])) {
        check_.report().damage(headers, row, "layer", [&] {
          return Fault{"layer " + std::to_string(headers.layer[row]) + " has no layer-purpose header", {}};
        });
      }
    });
    check_.checkUnique(headers, "layer", layers, "layer");
    for (const oaLayerNum layer : layersInUse_) {
      const auto found = std::lower_bound(layers.begin(), layers.end(), std::make_pair(layer, Row(0)));
      if (found == layers.end() || found->first != layer) {
        check_.report().damage(headers.name(), "layer", {"layer " + std::to_string(layer) + " has no header", {}});
      }
    }
  }

  void checkBlockBox() const {
    const Row block = design_.blockRow();
    if (block == kNoRow) {
      return;
    }
    const oaBox stored = design_.blocks.shapeBox[block];
    if (stored != all_ && !(stored.isInverted() && all_.isInverted())) {
      check_.report().damage(design_.blocks, block, "shapeBox", [&] {
        return Fault{"is " + (stored.isInverted() ? "empty" : textOf(stored)),
                     (all_.isInverted() ? "an empty one" : textOf(all_)) + ", the box of all shapes"};
      });
    }
  }

  const TableCheck &check_;
  DesignDatabase &design_;
  const ShapeTable &shapes_;
  ShapePayloads payloads_;
  std::vector<std::uint32_t> shapesOfLpp_;
  std::vector<oaLayerNum> layersInUse_;
  std::unordered_map<const Table *, ClaimedRows> claimed_;
  oaBox all_;
};

} // namespace

void checkShapes(const TableCheck &check, DesignDatabase &design) { ShapeCheck(check, design).run(); }

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
