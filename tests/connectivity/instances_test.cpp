#include "temporarylibrary.h"

#include <algorithm>
#include <functional>
#include <vector>

using namespace connectivitytest;

namespace {

class Instances : public TemporaryLibrary {
protected:
  Instances() {
    makeLeaf("leaf", oaBox(0, 0, 4, 2));
    design_ = open("top", 'w');
    block_ = oaBlock::create(design_);
  }
  ~Instances() override {
    if (design_->isValid()) {
      design_->purge();
    }
  }

  oaArrayInst *array(const oaTransform &placement, oaOffset dX, oaOffset dY, oaUInt4 rows, oaUInt4 cols) {
    return oaArrayInst::create(block_, scalar(libName()), scalar("leaf"), scalar("layout"), placement, dX, dY, rows,
                               cols);
  }
  oaDesign *leaf() { return oaDesign::find(scalar(libName()), scalar("leaf"), scalar("layout")); }
  void reopen(char mode) {
    design_->save();
    design_->close();
    design_ = open("top", mode);
    block_ = design_->getTopBlock();
  }

  oaDesign *design_;
  oaBlock *block_;
};

// Lower left corners of the boxes of all elements, sorted.
std::vector<std::pair<int, int>> elementsOf(const oaArrayInst *inst) {
  std::vector<std::pair<int, int>> corners;
  for (oaUInt4 row = 0; row < inst->getNumRows(); ++row) {
    for (oaUInt4 col = 0; col < inst->getNumCols(); ++col) {
      oaBox box;
      inst->getBBox(row, col, box);
      corners.emplace_back(box.left(), box.bottom());
    }
  }
  std::sort(corners.begin(), corners.end());
  return corners;
}

} // namespace

TEST_F(Instances, ElementsOfAnArrayStepAlongTheAxesOfTheBlock) {
  oaArrayInst *inst = array(oaTransform(100, 200, oacR90), 10, -20, 2, 3);
  inst->getMaster();
  oaTransform element;
  inst->getTransform(1, 2, element);
  EXPECT_EQ(element, oaTransform(120, 180, oacR90));
  oaBox box;
  // The leaf turned by 90 degrees covers (-2, 0) to (0, 4).
  inst->getBBox(0, 0, box);
  EXPECT_EQ(box, oaBox(98, 200, 100, 204));
  static_cast<oaFig *>(inst)->getBBox(box);
  EXPECT_EQ(box, oaBox(98, 180, 120, 204));
  EXPECT_EQ(idRaisedBy([&] { inst->getTransform(2, 0, element); }), oaUInt4(oacInvalidBitIndexIntoInst));
}

TEST_F(Instances, MovingAnArrayMovesEachElement) {
  for (const oaOrientEnum orient : {oacR0, oacR90, oacR180, oacR270, oacMY, oacMYR90, oacMX, oacMXR90}) {
    SCOPED_TRACE(std::string(oaOrient(orient).getName()));
    oaArrayInst *inst = array(oaTransform(5, 6, oacMX), 10, 30, 2, 3);
    inst->getMaster();
    const oaTransform move(100, -50, orient);
    std::vector<std::pair<int, int>> expected;
    for (oaUInt4 row = 0; row < 2; ++row) {
      for (oaUInt4 col = 0; col < 3; ++col) {
        oaBox box;
        inst->getBBox(row, col, box);
        box.transform(move);
        expected.emplace_back(box.left(), box.bottom());
      }
    }
    std::sort(expected.begin(), expected.end());
    inst->move(move);
    EXPECT_EQ(elementsOf(inst), expected);
    inst->destroy();
  }
}

TEST_F(Instances, HeadersComeWithTheFirstInstanceAndGoWithTheLast) {
  oaInst *first = place(block_, "leaf", "I1", oaTransform());
  oaInst *second = place(block_, "leaf", "I2", oaTransform(10, 0));
  place(block_, "other", "I3", oaTransform());
  EXPECT_EQ(block_->getInstHeaders().getCount(), 2u);
  oaInstHeader *header = first->getHeader();
  EXPECT_EQ(header, second->getHeader());
  EXPECT_EQ(namesOf<oaInst>(header->getInsts()), "I1 I2");
  second->setMaster(scalar(libName()), scalar("other"), scalar("layout"));
  EXPECT_EQ(namesOf<oaInst>(header->getInsts()), "I1");
  first->destroy();
  EXPECT_FALSE(header->isValid());
  EXPECT_EQ(oaInstHeader::find(block_, scalar(libName()), scalar("leaf"), scalar("layout")), nullptr);
  reopen('a');
  EXPECT_EQ(block_->getInstHeaders().getCount(), 1u);
  EXPECT_EQ(namesOf<oaInst>(block_->getInsts()), "I2 I3");
}

// A walk notes headers and layers with the handles it makes; what changes afterwards must not be answered from the
// note.
TEST_F(Instances, WhatAWalkHasSeenMayStillChange) {
  place(block_, "leaf", "I1", oaTransform());
  oaRect::create(block_, 1, 2, oaBox(0, 0, 1, 1));
  reopen('a');
  oaIter<oaInst> insts(block_->getInsts());
  oaInst *inst = insts.getNext();
  oaInstHeader *before = inst->getHeader();
  inst->setMaster(scalar(libName()), scalar("other"), scalar("layout"));
  EXPECT_FALSE(before->isValid());
  oaString cell;
  inst->getHeader()->getCellName(oaNativeNS(), cell);
  EXPECT_EQ(cell, "other");
  oaIter<oaShape> shapes(block_->getShapes());
  oaShape *shape = shapes.getNext();
  EXPECT_EQ(shape->getLayerNum(), 1u);
  shape->setLPP(7, 8);
  EXPECT_EQ(shape->getLayerNum(), 7u);
  EXPECT_EQ(shape->getPurposeNum(), 8u);
}

TEST_F(Instances, BoundMastersAreHeldAndGivenBack) {
  oaInst *inst = place(block_, "leaf", "I1", oaTransform());
  EXPECT_EQ(leaf(), nullptr) << "placing by names opens nothing";
  EXPECT_EQ(place(block_, "missing", "I2", oaTransform())->getMaster(), nullptr);
  oaDesign *master = inst->getMaster();
  ASSERT_NE(master, nullptr);
  EXPECT_EQ(master->getRefCount(), 1u);
  open("leaf", 'r');
  EXPECT_EQ(master->getRefCount(), 2u);
  master->close();
  EXPECT_TRUE(master->isValid()) << "the block that places it keeps it";
  master->purge();
  EXPECT_FALSE(inst->isBound());
  ASSERT_NE(inst->getMaster(), nullptr) << "it is opened again";
  design_->close();
  EXPECT_EQ(leaf(), nullptr);
}

TEST_F(Instances, ADesignCannotContainItself) {
  EXPECT_EQ(idRaisedBy([&] { oaScalarInst::create(block_, design_, oaTransform()); }),
            oaUInt4(oacCannotCreateRecursiveDesign));
  oaDesign *middle = open("middle", 'w');
  oaBlock *middleBlock = oaBlock::create(middle);
  oaInst *down = oaScalarInst::create(block_, middle, oaTransform());
  ASSERT_EQ(down->getMaster(), middle);
  EXPECT_EQ(idRaisedBy([&] { oaScalarInst::create(middleBlock, design_, oaTransform()); }),
            oaUInt4(oacCannotCreateRecursiveDesign));
  // By names nothing is opened, so it can be made; but it never binds.
  EXPECT_EQ(place(middleBlock, "top", "up", oaTransform())->getMaster(), nullptr);
  middle->close();
  design_->close();
  EXPECT_EQ(oaDesign::find(scalar(libName()), scalar("middle"), scalar("layout")), nullptr);
}

TEST_F(Instances, BoxesOfUnboundMastersAreRemembered) {
  place(block_, "leaf", "I1", oaTransform(100, 100, oacR180))->getMaster();
  reopen('r');
  EXPECT_EQ(leaf(), nullptr);
  oaBox box;
  block_->getBBox(box);
  EXPECT_EQ(box, oaBox(96, 98, 100, 100));
  EXPECT_EQ(leaf(), nullptr) << "asking for a box opens nothing";
}

TEST_F(Instances, NamesAreUniqueAndAutomaticOnesAvoidThem) {
  place(block_, "leaf", "I__0", oaTransform());
  oaInst *automatic = oaScalarInst::create(block_, scalar(libName()), scalar("leaf"), scalar("layout"), oaTransform());
  EXPECT_EQ(namesOf<oaInst>(block_->getInsts()), "I__0 I__1");
  EXPECT_EQ(idRaisedBy([&] { place(block_, "leaf", "I__1", oaTransform()); }), oaUInt4(oacInstNameExists));
  EXPECT_EQ(idRaisedBy([&] { place(block_, "leaf", "a/b", oaTransform()); }), oaUInt4(oacInvalidHierInstName));
  EXPECT_EQ(idRaisedBy([&] { array(oaTransform(), 1, 1, 0, 1); }), oaUInt4(oacInvalidArrayInstRows));
  EXPECT_EQ(idRaisedBy([&] { array(oaTransform(), 1, 1, 1, 0); }), oaUInt4(oacInvalidArrayInstCols));
  oaParamArray params;
  params.append(oaParam("w", 1.0));
  EXPECT_EQ(idRaisedBy([&] { automatic->setParams(params); }), oaUInt4(oacParamsSuppliedForNonPCellInstMaster));
  EXPECT_EQ(block_->getInsts().getCount(), 2u);
}

TEST_F(Instances, ConnectionsByNameWaitForTheTerminal) {
  oaScalarNet *net = oaScalarNet::create(block_, scalar("n"));
  oaInst *inst = place(block_, "later", "I1", oaTransform());
  const oaName name = oaName(scalar("Q"));
  oaInstTerm *instTerm = oaInstTerm::create(net, inst, name);
  EXPECT_FALSE(instTerm->isBound());
  EXPECT_EQ(instTerm->getTerm(), nullptr);
  EXPECT_EQ(oaInstTerm::find(inst, name), instTerm);
  EXPECT_EQ(idRaisedBy([&] { oaInstTerm::create(net, inst, name); }), oaUInt4(oacInstTermAlreadyExists));
  EXPECT_EQ(idRaisedBy([&] { oaInstTerm::create(net, inst, 1u); }), oaUInt4(oacInstTermMustBeByName));
  EXPECT_EQ(idRaisedBy([&] { oaInstTerm::find(inst, 1u); }), oaUInt4(oacInstTermInstUsesTermName));
  EXPECT_EQ(idRaisedBy([&] { oaInstTerm::create(net, inst, oaName(oaNativeNS(), "B[0:1]")); }),
            oaUInt4(oacNetInstTermWidthMismatchForInstTerm));
  makeLeaf("later", oaBox(0, 0, 1, 1), "Q");
  ASSERT_NE(instTerm->getTerm(), nullptr);
  EXPECT_TRUE(instTerm->isBound());
  reopen('a');
  oaInst *reread = oaInst::find(block_, scalar("I1"));
  oaIter<oaInstTerm> instTerms(reread->getInstTerms());
  oaString text;
  oaInstTerm *found = instTerms.getNext();
  found->getTermName(oaNativeNS(), text);
  EXPECT_EQ(text, "Q");
  found->getNet()->getName(oaNativeNS(), text);
  EXPECT_EQ(text, "n");
  reread->destroy();
  EXPECT_TRUE(block_->getInstTerms().isEmpty());
}
