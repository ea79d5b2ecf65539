// Instances and connections of several bits in files whose contents are not what they should be: a named exception
// where the wrong row is used, and no crash or endless walk, whatever is done with the rest.

#include "columnfile.h"
#include "designaccess.h"
#include "netstest.h"

#include <fstream>
#include <functional>

using namespace connectivitytest;

namespace {

using kit::DesignDatabase;

class DamagedInstances : public Nets {
protected:
  // Rows of the tables: instances S 0, V[0:1] 1, V[0] 2, V[1] 3; connections of S by A[0:1] 0 (bits 1 and 2) and B 3,
  // of V by A 4 (bits 5 and 6).
  void fill() {
    design_->purge();
    design_ = open("cell", 'w');
    block_ = oaBlock::create(design_);
    oaInst *inst = place(block_, "leaf", "S", oaTransform());
    oaInst *row = oaVectorInst::create(block_, scalar(libName()), scalar("leaf"), scalar("layout"), scalar("V"), 0, 1,
                                       oaTransform());
    oaNet *two = oaNet::create(block_, native("N[0:1]"));
    oaInstTerm::create(two, inst, native("A[0:1]"));
    oaInstTerm::create(net("n"), inst, native("B"));
    oaInstTerm::create(two, row, native("A"));
  }

  void reread() {
    design_->save();
    design_->close();
    design_ = open("cell", 'a');
    block_ = design_->getTopBlock();
  }

  // What the first exception says.
  std::string readAll() {
    try {
      readInsts();
      readInstTerms();
    } catch (const oaException &exception) {
      return std::string(exception.getMsg());
    }
    return std::string();
  }

  void destroyAll() {
    for (int round = 0; round < 2; ++round) {
      oaIter<oaInstTerm> instTerms(block_->getInstTerms(0));
      while (oaInstTerm *instTerm = instTerms.getNext()) {
        (void)idRaisedBy([&] { instTerm->destroy(); });
      }
      oaIter<oaInst> insts(block_->getInsts(0));
      while (oaInst *inst = insts.getNext()) {
        (void)idRaisedBy([&] { inst->destroy(); });
      }
    }
  }

private:
  void readInsts() {
    oaIter<oaInst> insts(block_->getInsts(0));
    while (oaInst *inst = insts.getNext()) {
      oaSimpleName name;
      inst->getName(name);
      EXPECT_NE(oaInst::find(block_, name), nullptr);
      inst->getInstTerms().getCount();
      if (inst->getType() == oacVectorInstType) {
        auto *row = static_cast<oaVectorInst *>(inst);
        oaVectorName range;
        row->getName(range);
        row->getDef()->getBitOrder();
        for (oaUInt4 i = 0; i < row->getNumBits(); ++i) {
          row->getBit(i)->getBitIndex();
        }
      }
    }
  }
  void readInstTerms() {
    oaIter<oaInstTerm> instTerms(block_->getInstTerms(0));
    while (oaInstTerm *instTerm = instTerms.getNext()) {
      oaName name;
      instTerm->getTermName(name);
      instTerm->getInst();
      instTerm->getNet();
      for (oaUInt4 i = 0; i < instTerm->getNumBits(); ++i) {
        instTerm->getBit(i);
      }
    }
  }
};

} // namespace

TEST_F(DamagedInstances, WrongRowsAreFoundWhenTheyAreUsed) {
  const struct {
    const char *name;
    std::function<void(DesignDatabase &)> damage;
    const char *found; // in the message
  } cases[] = {
      {"nothing", [](DesignDatabase &) {}, ""},
      {"vector without bits", [](DesignDatabase &d) { d.insts.bits.set(1, kit::kNoRow); }, "table insts, row 1"},
      {"scalar with bits", [](DesignDatabase &d) { d.insts.bits.set(0, 0); }, "table insts, row 0"},
      {"bits out of range", [](DesignDatabase &d) { d.insts.bits.set(1, 99); }, "table instBits"},
      {"definition out of range", [](DesignDatabase &d) { d.instBits.def.set(0, 99); }, "table vectorInstDefs"},
      {"bit order", [](DesignDatabase &d) { d.vectorInstDefs.bitOrder.set(0, 3); }, "table vectorInstDefs"},
      {"bit is a scalar",
       [](DesignDatabase &d) {
         d.instMembers.members.set(0, {0, 1});
       },
       "table insts, row 1"},
      {"bit is the vector",
       [](DesignDatabase &d) {
         d.instMembers.members.set(0, {1, 1});
       },
       "table insts, row 1"},
      {"bit repeated without end",
       [](DesignDatabase &d) {
         d.instMembers.members.set(0, {2, 0xffffffffu});
       },
       "table insts, row 1"},
      {"kind of the terminal's name", [](DesignDatabase &d) { d.instTerms.termNameKind.set(3, 5); },
       "table instTerms, row 3"},
      {"name of another kind", [](DesignDatabase &d) { d.instTerms.termNameKind.set(3, oacVectorNameType); },
       "table instTerms, row 3"},
      {"instance out of range", [](DesignDatabase &d) { d.instTerms.inst.set(3, 99); }, "table insts"},
      {"net out of range", [](DesignDatabase &d) { d.instTerms.net.set(3, 99); }, "table nets"},
      {"bit out of range",
       [](DesignDatabase &d) {
         d.instTermMembers.members.set(0, {99, 1});
       },
       "table instTerms"},
      {"connection is its own bit",
       [](DesignDatabase &d) {
         d.instTermMembers.members.set(0, {0, 1});
       },
       "table instTerms, row 0"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    fill();
    c.damage(kit::designOf(design_));
    reread();
    const std::string message = readAll();
    EXPECT_EQ(message.empty(), *c.found == '\0');
    EXPECT_NE(message.find(c.found), std::string::npos) << message;
    destroyAll();
  }
}

// What is found of one instance does not depend on the part of the file where another one's connections are.
TEST_F(DamagedInstances, WhatIsInSoundPartsOfTheFileIsFound) {
  const oaUInt4 rows = kit::kSegmentRows + 100;
  oaNet *single = net("n");
  for (oaUInt4 i = 0; i < rows; ++i) {
    oaInstTerm::create(single, place(block_, "leaf", "I" + std::to_string(i), oaTransform()), native("A"));
  }
  oaInstTerm::create(oaNet::create(block_, native("N[0:1]")), place(block_, "leaf", "W", oaTransform()),
                     native("A[0:1]")); // its bits have flags
  design_->save();
  design_->close();
  oaString folder;
  oaLib::find(scalar(libName()))->getFullPath(folder);
  const std::string file = std::string(folder) + "/cell/layout/layout.oa";
  std::streamoff place = 0;
  {
    kit::MappedFile mapping(file);
    const unsigned char *begin = mapping.bytes();
    const kit::ColumnFile columns(file, std::move(mapping));
    constexpr std::uint16_t kFlagsColumn = 7;
    const kit::ColumnView flags = columns.column(kit::kInstTermTable, kFlagsColumn, 1);
    ASSERT_GT(flags.rows, kit::kSegmentRows);
    place = static_cast<const unsigned char *>(flags.elements) - begin + kit::kSegmentRows;
  }
  std::fstream(file, std::ios::in | std::ios::out | std::ios::binary).seekp(place).put('\x40');
  design_ = open("cell", 'r');
  block_ = design_->getTopBlock();
  const auto found = [&](const char *inst) {
    oaIter<oaInstTerm> instTerms(oaInst::find(block_, scalar(inst))->getInstTerms());
    int count = 0;
    while (instTerms.getNext()) {
      ++count;
    }
    return count;
  };
  EXPECT_EQ(found("I0"), 1);
  EXPECT_EQ(found("I1000"), 1);
  EXPECT_EQ(idRaisedBy([&] { found("W"); }), oaUInt4(oacChecksumMismatch));
}
