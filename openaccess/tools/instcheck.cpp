#include "designcheck.h"

#include "oa/oaInst.h"
#include "oa/oaOrient.h"
#include "paramcheck.h"

#include <tuple>

namespace OpenAccess_4 {
namespace kit {
namespace check {

namespace {

class InstCheck {
public:
  InstCheck(const TableCheck &check, const DesignDatabase &design, const FamilyCheck &family)
      : check_(check), design_(design), insts_(design.insts), headers_(design.instHeaders), family_(family),
        instsOfHeader_(std::min(headers_.rowCount(), headers_.kind.size())),
        claimedArrays_(std::min(design.arrays.rowCount(), std::max(insts_.kind.size(), design.arrays.arrays.size()))),
        params_(check, design) {}

  void run(const FindMaster &findMaster) {
    TableCheck::forEachRow(insts_, [&](Row inst) { checkInst(inst); });
    TableCheck::forEachRow(insts_, [&](Row inst) {
      if (insts_.kind[inst] == oacVectorInstType) {
        checkVectorBits(inst);
      }
    });
    checkHeaders(findMaster);
  }

private:
  void checkInst(Row inst) {
    const Row header = insts_.header[inst];
    if (header == kNoRow) {
      check_.report().damage(insts_, inst, "header", "is none", "the header of its master");
    } else if (header < instsOfHeader_.size()) {
      ++instsOfHeader_[header];
      if (headers_.isAlive(header) && headers_.isSuper[header] != 0) {
        check_.report().damage(insts_, inst, "header", "is a super header", "a sub header of it");
      }
    }
    check_.checkEnum(insts_, inst, insts_.orient, oaOrientEnum());
    check_.checkEnum(insts_, inst, insts_.placementStatus, oaPlacementStatusEnum());
    check_.checkBelow(insts_, inst, insts_.excludedFromModule, 2);
    check_.checkBelow(insts_, inst, insts_.flags, 2 * kInstImplicit);
    checkArray(inst);
  }

  void checkArray(Row inst) {
    const Row array = insts_.array[inst];
    if ((array == kNoRow) == (insts_.kind[inst] == oacArrayInstType)) {
      check_.report().damage(insts_, inst, "array", array == kNoRow ? "is none" : "is there",
                             array == kNoRow ? "rows and columns of an array instance" : "none but for arrays");
      return;
    }
    if (array == kNoRow || array >= design_.arrays.rowCount()) {
      return;
    }
    if (!claimedArrays_.claim(array)) {
      check_.report().damage(insts_, inst, "array", "belongs to another instance too", "a row of its own");
    }
    const ArrayTable::Array matrix = design_.arrays.arrays[array];
    if (matrix.rows == 0 || matrix.columns == 0) {
      check_.report().damage(design_.arrays, array, "arrays", [&] {
        return Fault{"has " + std::to_string(matrix.rows) + " rows and " + std::to_string(matrix.columns) + " columns",
                     "one of each at least"};
      });
    }
  }

  // The bits of a vector instance have its place and its master.
  void checkVectorBits(Row inst) {
    if (!family_.listBits(inst, bits_)) {
      return;
    }
    for (const Row bit : bits_) {
      const bool isSame = insts_.header[bit] == insts_.header[inst] && insts_.origin[bit] == insts_.origin[inst] &&
                          insts_.orient[bit] == insts_.orient[inst];
      if (!isSame) {
        check_.report().damage(insts_, bit, "header", [&] {
          return Fault{"or place differs from those of its vector instance, row " + std::to_string(inst), "the same"};
        });
      }
    }
  }

  // A sub header counts as an instance of its super header.
  void checkSuper(Row header) {
    check_.checkBelow(headers_, header, headers_.isSuper, 2);
    const Row super = headers_.super[header];
    if (super == kNoRow) {
      return;
    }
    params_.run(headers_, header, headers_.params);
    if (super >= instsOfHeader_.size()) {
      return;
    }
    ++instsOfHeader_[super];
    const bool isFit = headers_.isAlive(super) && headers_.isSuper[super] != 0 && headers_.super[super] == kNoRow &&
                       headers_.isSuper[header] == 0 && haveSameMaster(header, super);
    if (!isFit) {
      check_.report().damage(headers_, header, "super", [&] {
        return Fault{"is row " + std::to_string(super), "a super header of the same master"};
      });
    }
  }

  bool haveSameMaster(Row a, Row b) const {
    const Texts &texts = check_.texts();
    return texts.number(headers_.lib[a]) == texts.number(headers_.lib[b]) &&
           texts.number(headers_.cell[a]) == texts.number(headers_.cell[b]) &&
           texts.number(headers_.view[a]) == texts.number(headers_.view[b]);
  }

  void checkHeaders(const FindMaster &findMaster) {
    check_.checkKinds(headers_, {oacInstHeaderType});
    TableCheck::forEachRow(headers_, [&](Row header) { checkSuper(header); });
    std::vector<std::pair<std::tuple<Row, Row, Row>, Row>> masters;
    std::vector<std::pair<std::pair<Row, Row>, Row>> variants;
    TableCheck::forEachRow(headers_, [&](Row header) {
      const std::uint32_t insts = headers_.insts[header];
      if (insts != instsOfHeader_[header] || instsOfHeader_[header] == 0) {
        check_.report().damage(headers_, header, "insts", [&] {
          return Fault{"counts " + std::to_string(insts) + " instances, there are " +
                           std::to_string(instsOfHeader_[header]),
                       "the same, and one at least"};
        });
      }
      bool isNamed = true;
      for (const Column<Row> *name : {&headers_.lib, &headers_.cell, &headers_.view}) {
        isNamed = check_.checkName(headers_, header, *name) && isNamed;
      }
      if (headers_.super[header] != kNoRow) {
        variants.push_back({{headers_.super[header], check_.texts().number(headers_.params[header])}, header});
      } else if (isNamed) {
        const Texts &texts = check_.texts();
        masters.push_back({{texts.number(headers_.lib[header]), texts.number(headers_.cell[header]),
                            texts.number(headers_.view[header])},
                           header});
        lookFor(header, findMaster);
      }
    });
    check_.checkUnique(headers_, "cell", masters, "master");
    check_.checkUnique(headers_, "params", variants, "master and the parameters");
  }

  void lookFor(Row header, const FindMaster &findMaster) const {
    // Longer names cannot be those of directories, however they are written there.
    constexpr std::size_t kMostBytes = 4096;
    std::string names[3];
    const Row rows[] = {headers_.lib[header], headers_.cell[header], headers_.view[header]};
    for (int i = 0; i < 3; ++i) {
      names[i] = std::string(check_.texts().view(rows[i]).substr(0, kMostBytes));
    }
    if (findMaster && findMaster(names[0], names[1], names[2]) == MasterState::missing) {
      check_.report().warning(headers_, header, "cell", [&] {
        return Fault{"master " + quoted(names[0] + "/" + names[1] + "/" + names[2]) + " is not in the library", {}};
      });
    }
  }

  const TableCheck &check_;
  const DesignDatabase &design_;
  const InstTable &insts_;
  const InstHeaderTable &headers_;
  const FamilyCheck &family_;
  std::vector<std::uint32_t> instsOfHeader_;
  ClaimedRows claimedArrays_;
  std::vector<Row> bits_;
  ParamCheck params_;
};

} // namespace

void checkInsts(const TableCheck &check, DesignDatabase &design, const FamilyCheck &insts,
                const FindMaster &findMaster) {
  InstCheck(check, design, insts).run(findMaster);
}

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
