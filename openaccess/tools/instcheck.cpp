#include "designcheck.h"

#include "oa/oaInst.h"
#include "oa/oaOrient.h"

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
        claimedArrays_(std::min(design.arrays.rowCount(), std::max(insts_.kind.size(), design.arrays.arrays.size()))) {}

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

  void checkHeaders(const FindMaster &findMaster) const {
    check_.checkKinds(headers_, {oacInstHeaderType});
    std::vector<std::pair<std::tuple<Row, Row, Row>, Row>> masters;
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
      if (isNamed) {
        const Texts &texts = check_.texts();
        masters.push_back({{texts.number(headers_.lib[header]), texts.number(headers_.cell[header]),
                            texts.number(headers_.view[header])},
                           header});
        lookFor(header, findMaster);
      }
    });
    check_.checkUnique(headers_, "cell", masters, "master");
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
};

} // namespace

void checkInsts(const TableCheck &check, DesignDatabase &design, const FamilyCheck &insts,
                const FindMaster &findMaster) {
  InstCheck(check, design, insts).run(findMaster);
}

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
