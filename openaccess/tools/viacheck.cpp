#include "designcheck.h"

#include "oa/oaOrient.h"
#include "paramcheck.h"

namespace OpenAccess_4 {
namespace kit {
namespace check {

namespace {

class ViaCheck {
public:
  ViaCheck(const TableCheck &check, const DesignDatabase &design, const FamilyCheck &nets)
      : check_(check), design_(design), vias_(design.vias), headers_(design.viaHeaders), nets_(nets),
        users_(std::min(headers_.rowCount(), headers_.kind.size())),
        claimedParams_(
            std::min(design.viaParams.rowCount(), std::max(headers_.kind.size(), design.viaParams.params.size()))),
        customParams_(check, design) {}

  void run(const FindViaDefinition &findDefinition) {
    check_.checkKinds(vias_, {oacStdViaType, oacCustomViaType});
    check_.checkKinds(headers_, {oacStdViaHeaderType, oacCustomViaHeaderType});
    TableCheck::forEachRow(vias_, [&](Row via) {
      checkHeaderOf(via);
      checkOwner(via);
      check_.checkEnum(vias_, via, vias_.orient, oaOrientEnum());
    });
    TableCheck::forEachRow(headers_, [&](Row header) { checkSuper(header); });
    std::vector<std::pair<std::pair<std::uint8_t, Row>, Row>> definitions;
    TableCheck::forEachRow(headers_, [&](Row header) {
      checkUsers(header);
      if (check_.checkName(headers_, header, headers_.name) && headers_.super[header] == kNoRow) {
        definitions.push_back({{headers_.kind[header], check_.texts().number(headers_.name[header])}, header});
        lookFor(header, findDefinition);
      }
    });
    check_.checkUnique(headers_, "name", definitions, "definition");
  }

private:
  bool isStandard(Row header) const { return headers_.kind[header] == oacStdViaHeaderType; }

  void lookFor(Row header, const FindViaDefinition &findDefinition) const {
    const std::string name(check_.texts().view(headers_.name[header]));
    if (findDefinition && findDefinition(name) == MasterState::missing) {
      check_.report().warning(headers_, header, "name", [&] {
        return Fault{"via definition " + quoted(name) + " is not in the library's technology", {}};
      });
    }
  }

  void checkHeaderOf(Row via) {
    const Row header = vias_.header[via];
    if (header == kNoRow) {
      check_.report().damage(vias_, via, "header", "is none", "the header of its definition");
    } else if (header < users_.size()) {
      ++users_[header];
      const bool isSub = headers_.super[header] != kNoRow;
      const bool placesVias = isStandard(header) ? isSub : headers_.isCustomSuper[header] == 0;
      if (headers_.isAlive(header) && (isStandard(header) != (vias_.kind[via] == oacStdViaType) || !placesVias)) {
        check_.report().damage(vias_, via, "header", [&] {
          return Fault{"is row " + std::to_string(header) + ", which places no vias of this kind",
                       "a header of the via's kind that is no super header"};
        });
      }
    }
  }

  void checkOwner(Row via) const {
    const Row net = vias_.net[via];
    if (net == kNoRow) {
      return;
    }
    if (vias_.pin[via] != kNoRow) {
      check_.report().damage(vias_, via, "net", "is on a net and in a pin", "one of them");
    }
    const bool isImplicit = design_.nets.isAlive(net) && (design_.nets.flags[net] & kNetImplicit) != 0;
    if (isImplicit || nets_.width(net) > 1) {
      check_.report().damage(vias_, via, "net", [&] {
        return Fault{"is net " + std::to_string(net) +
                         (isImplicit ? ", which is implicit" : ", which has several bits"),
                     "an explicit net of one bit"};
      });
    }
  }

  void checkSuper(Row header) {
    const Row super = headers_.super[header], params = headers_.params[header];
    if (super != kNoRow && super < users_.size()) {
      ++users_[super];
      const bool isSuper = isStandard(super) || headers_.isCustomSuper[super] != 0;
      if (headers_.isAlive(super) &&
          (isStandard(header) != isStandard(super) || !isSuper || headers_.super[super] != kNoRow)) {
        check_.report().damage(headers_, header, "super", [&] {
          return Fault{"is row " + std::to_string(super), "a super header of the same kind"};
        });
      }
    }
    check_.checkBelow(headers_, header, headers_.isCustomSuper, isStandard(header) || super != kNoRow ? 1 : 2);
    customParams_.run(headers_, header, headers_.customParams);
    if ((params == kNoRow) != (super == kNoRow || !isStandard(header))) {
      check_.report().damage(headers_, header, "params", params == kNoRow ? "is none" : "is there",
                             params == kNoRow ? "the parameters of a sub header" : "none but for standard sub headers");
    } else if (params < claimedParams_.rows()) {
      checkParams(header, params);
    }
  }

  void checkParams(Row header, Row params) {
    const ViaParamTable &table = design_.viaParams;
    if (!claimedParams_.claim(params)) {
      check_.report().damage(headers_, header, "params", "belongs to another header too", "a row of its own");
      return;
    }
    const ViaParamValues values = table.params[params];
    if (values.cutRows == 0 || values.cutColumns == 0) {
      check_.report().damage(table, params, "params", "has no cuts", "one row and one column at least");
    }
    for (Row i = 0; check_.isSoundSpan(table.params, params) && i < values.missingCount; ++i) {
      const MissingCutTable::Cut cut = design_.viaMissingCuts.cuts[values.missingBegin + i];
      if (cut.row >= values.cutRows || cut.column >= values.cutColumns) {
        check_.report().damage(design_.viaMissingCuts, values.missingBegin + i, "cuts", [&] {
          return Fault{"is row " + std::to_string(cut.row) + ", column " + std::to_string(cut.column),
                       std::to_string(values.cutRows) + " rows and " + std::to_string(values.cutColumns) + " columns"};
        });
      }
    }
  }

  void checkUsers(Row header) const {
    if (headers_.users[header] != users_[header] || users_[header] == 0) {
      check_.report().damage(headers_, header, "users", [&] {
        return Fault{"counts " + std::to_string(headers_.users[header]) + " users, there are " +
                         std::to_string(users_[header]),
                     "the same, and one at least"};
      });
    }
  }

  const TableCheck &check_;
  const DesignDatabase &design_;
  const ViaTable &vias_;
  const ViaHeaderTable &headers_;
  const FamilyCheck &nets_;
  std::vector<std::uint32_t> users_; // vias of a header, sub headers of a super header
  ClaimedRows claimedParams_;
  ParamCheck customParams_;
};

} // namespace

void checkVias(const TableCheck &check, DesignDatabase &design, const FamilyCheck &nets,
               const FindViaDefinition &findViaDefinition) {
  ViaCheck(check, design, nets).run(findViaDefinition);
}

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
