#include "techcheck.h"

#include "oa/oaViewType.h"

#include <unordered_map>

namespace OpenAccess_4 {
namespace kit {
namespace check {

namespace {

// Layers may then be those of other technologies.
bool refersToOthers(const TechDatabase &tech) {
  const Table *references = tech.table(kTechReferenceTable);
  return references != nullptr && references->nextAlive(kNoRow) != kNoRow;
}

class TechCheck {
public:
  TechCheck(const TableCheck &check, TechDatabase &tech)
      : check_(check), tech_(tech), layers_(tech.layers), hasReferences_(refersToOthers(tech)) {}

  void run() {
    check_.guarded([&] { checkAttributes(); });
    check_.guarded([&] { checkUnits(); });
    check_.guarded([&] { checkLayers(); });
    check_.guarded([&] { checkDerivation(); });
    check_.guarded([&] { checkPurposes(); });
    check_.guarded([&] { checkViaDefs(); });
    check_.guarded([&] { checkReferences(); });
  }

private:
  template <typename Numbers> void checkNamed(const Table &table, const Column<Row> &names, const Numbers *numbers) {
    std::vector<std::pair<Row, Row>> byName;
    std::vector<std::pair<std::uint32_t, Row>> byNumber;
    TableCheck::forEachRow(table, [&](Row row) {
      if (check_.checkName(table, row, names)) {
        byName.emplace_back(check_.texts().number(names[row]), row);
      }
      if (numbers != nullptr) {
        byNumber.emplace_back((*numbers)[row], row);
      }
    });
    check_.checkUnique(table, names.name(), byName, "name");
    if (numbers != nullptr) {
      check_.checkUnique(table, numbers->name(), byNumber, "number");
    }
  }

  void checkAttributes() {
    const TechAttributesTable &attributes = tech_.attributes;
    check_.checkKinds(attributes, {oacTechType});
    if (attributes.rowCount() > 1) {
      check_.report().damage(attributes.name(), "", {"has " + std::to_string(attributes.rowCount()) + " rows", "1"});
    }
    TableCheck::forEachRow(attributes, [&](Row row) { check_.checkBelow(attributes, row, attributes.isGridSet, 2); });
  }

  void checkUnits() {
    const UnitsTable &units = tech_.units;
    check_.checkKinds(units, {oacTechType});
    std::vector<std::pair<std::uint32_t, Row>> types;
    TableCheck::forEachRow(units, [&](Row row) {
      types.emplace_back(units.viewType[row], row);
      check_.checkValue(units, row, "viewType", units.viewType[row], oaEnumNamesOf(oaReservedViewTypeEnum()));
      check_.checkEnum(units, row, units.userUnits, oaUserUnitsTypeEnum());
      check_.checkBelow(units, row, units.isUserUnitsSet, 2);
    });
    check_.checkUnique(units, "viewType", types, "view type");
  }

  void checkLayers() {
    check_.checkKinds(layers_, {oacPhysicalLayerType, oacDerivedLayerType});
    checkNamed(layers_, layers_.name, &layers_.number);
    TableCheck::forEachRow(layers_, [&](Row row) {
      layerByNumber_.emplace(layers_.number[row], row);
      check_.checkEnum(layers_, row, layers_.material, oaMaterialEnum());
      check_.checkEnum(layers_, row, layers_.routingDirection, oaPrefRoutingDirEnum());
      check_.checkEnum(layers_, row, layers_.operation, oaLayerOpEnum());
      check_.checkBelow(layers_, row, layers_.isGridSet, 2);
    });
  }

  // kNoRow, with a finding, when there is none.
  Row layerOf(const Table &table, Row row, const char *column, oaLayerNum number) const {
    const auto found = layerByNumber_.find(number);
    if (found != layerByNumber_.end()) {
      return found->second;
    }
    if (!hasReferences_) { // otherwise it may be one of another technology
      check_.report().damage(table, row, column, [&] {
        return Fault{"is layer " + std::to_string(number), "a layer that exists"};
      });
    }
    return kNoRow;
  }

  // A layer derived from itself would make whoever works it out go round for ever.
  void checkDerivation() {
    enum State : std::uint8_t { kNew, kOpen, kDone };
    std::vector<std::uint8_t> states(std::min(layers_.rowCount(), layers_.kind.size()));
    std::vector<std::pair<Row, int>> path; // a layer and the number of those below it that are done
    TableCheck::forEachRow(layers_, [&](Row start) {
      path.assign(1, {start, 0});
      while (!path.empty()) {
        auto &[layer, next] = path.back();
        if (states[layer] == kDone || layers_.kind[layer] != oacDerivedLayerType || next == 2) {
          states[layer] = kDone;
          path.pop_back();
          continue;
        }
        states[layer] = kOpen;
        const bool isFirst = next++ == 0;
        const char *column = isFirst ? "layer1" : "layer2";
        const Row from = layerOf(layers_, layer, column, isFirst ? layers_.layer1[layer] : layers_.layer2[layer]);
        if (from != kNoRow && states[from] == kOpen) {
          check_.report().damage(layers_, layer, column, "makes the layer derive from itself");
        } else if (from != kNoRow) {
          path.emplace_back(from, 0);
        }
      }
    });
  }

  void checkPurposes() {
    check_.checkKinds(tech_.purposes, {oacPurposeType});
    checkNamed(tech_.purposes, tech_.purposes.name, &tech_.purposes.number);
  }

  void checkViaDefs() {
    const ViaDefTable &defs = tech_.viaDefs;
    check_.checkKinds(defs, {oacStdViaDefType, oacCustomViaDefType});
    checkNamed(defs, defs.name, static_cast<const Column<oaLayerNum> *>(nullptr));
    ClaimedRows standard(usable(tech_.stdViaDefs, tech_.stdViaDefs.params.size()));
    ClaimedRows custom(usable(tech_.customViaDefs, tech_.customViaDefs.lib.size()));
    TableCheck::forEachRow(defs, [&](Row row) {
      layerOf(defs, row, "layer1", defs.layer1[row]);
      layerOf(defs, row, "layer2", defs.layer2[row]);
      const bool isStandard = defs.kind[row] == oacStdViaDefType;
      const Row payload = defs.payload[row];
      if (payload == kNoRow) {
        check_.report().damage(defs, row, "payload", "is none", "the parameters of the definition");
      } else if (payload < (isStandard ? standard : custom).rows()) {
        if (!(isStandard ? standard : custom).claim(payload)) {
          check_.report().damage(defs, row, "payload", "belongs to another definition too", "a row of its own");
        }
        isStandard ? checkStandard(payload) : checkCustom(payload);
      }
    });
  }

  void checkReferences() {
    check_.checkKinds(tech_.references, {oacTechType});
    checkNamed(tech_.references, tech_.references.lib, static_cast<const Column<oaLayerNum> *>(nullptr));
  }

  Row usable(const Table &table, Row stored) const {
    return std::min(table.rowCount(), std::max(stored, tech_.viaDefs.kind.size()));
  }

  void checkStandard(Row payload) {
    const StdViaDefTable &table = tech_.stdViaDefs;
    const ViaParamValues params = table.params[payload];
    if (params.cutColumns == 0 || params.cutRows == 0) {
      check_.report().damage(table, payload, "params", "has no cuts", "one row and one column at least");
    }
    check_.checkBelow(table, payload, table.implants, 4);
    if ((table.implants[payload] & 1) != 0) {
      layerOf(table, payload, "implant1", table.implant1[payload]);
    }
    if ((table.implants[payload] & 2) != 0) {
      layerOf(table, payload, "implant2", table.implant2[payload]);
    }
    if (!check_.isSoundSpan(table.params, payload)) {
      return;
    }
    for (Row i = 0; i < params.missingCount; ++i) {
      const MissingCutTable::Cut cut = tech_.missingCuts.cuts[params.missingBegin + i];
      if (cut.row >= params.cutRows || cut.column >= params.cutColumns) {
        check_.report().damage(tech_.missingCuts, params.missingBegin + i, "cuts", [&] {
          return Fault{"is row " + std::to_string(cut.row) + ", column " + std::to_string(cut.column),
                       std::to_string(params.cutRows) + " rows and " + std::to_string(params.cutColumns) + " columns"};
        });
      }
    }
  }

  void checkCustom(Row payload) {
    const CustomViaDefTable &table = tech_.customViaDefs;
    for (const Column<Row> *name : {&table.lib, &table.cell, &table.view}) {
      check_.checkName(table, payload, *name);
    }
  }

  const TableCheck &check_;
  TechDatabase &tech_;
  const LayerTable &layers_;
  bool hasReferences_;
  std::unordered_map<oaLayerNum, Row> layerByNumber_;
};

} // namespace

void checkTech(const TableCheck &check, TechDatabase &tech) { TechCheck(check, tech).run(); }

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
