// Instances of parametric cells: their headers, masters, boxes, and how they are stored.

#include "pcelltest.h"

using namespace pcelltest;

namespace {

class ParametricInsts : public Pcells {
protected:
  ParametricInsts() {
    makeBox();
    top_ = open("top", 'w');
    block_ = oaBlock::create(top_);
  }
  oaInstHeader *superHeader() { return oaInstHeader::find(block_, scalar(libName()), scalar("box"), scalar("layout")); }
  void saveAndRead() {
    top_->save();
    top_->close();
    top_ = open("top", 'r');
    block_ = top_->getTopBlock();
  }
  oaScalarInst *inst(const char *name) { return oaScalarInst::find(block_, scalar(name)); }

  oaDesign *top_;
  oaBlock *block_;
};

TEST_F(ParametricInsts, EachSetOfParametersHasItsHeader) {
  oaScalarInst *a = place(block_, "a", one("w", 1));
  oaScalarInst *b = place(block_, "b", one("w", 2));
  oaScalarInst *c = place(block_, "c", one("w", 1));
  oaScalarInst *d = place(block_, "d");
  oaInstHeader *super = superHeader();
  ASSERT_NE(super, nullptr);
  EXPECT_TRUE(super->isSuperHeader());
  EXPECT_EQ(super->getInsts().getCount(), 0u);
  EXPECT_EQ(super->getSubHeaders().getCount(), 3u);
  EXPECT_TRUE(a->getHeader()->isSubHeader());
  EXPECT_EQ(a->getHeader()->getSuperHeader(), super);
  EXPECT_EQ(a->getHeader(), c->getHeader());
  EXPECT_NE(a->getHeader(), b->getHeader());
  EXPECT_EQ(paramsOf(a), "w=1");
  EXPECT_EQ(paramsOf(d), "");
  oaParam param;
  EXPECT_TRUE(b->findParam("w", param));
  EXPECT_FALSE(b->findParam("l", param));
  oaParamArray all;
  b->getHeader()->getAllParams(all);
  EXPECT_EQ(textOf(all), "w=2 l=20 title=t");
  EXPECT_EQ(a->getMaster(), c->getMaster());
  EXPECT_EQ(drawn(a->getMaster()), "0 0 1 20");
  EXPECT_EQ(drawn(d->getMaster()), "0 0 10 20");
  EXPECT_EQ(super->getMaster(), a->getMaster()->getSuperMaster());
  EXPECT_EQ(a->getMaster()->getUsedIn().getCount(), 1u);
  EXPECT_EQ(boxOf(b), "0 0 2 20");
  EXPECT_EQ(boxes_.calls.size(), 4u) << "bound once, evaluated for three sets";

  a->destroy();
  c->destroy();
  EXPECT_EQ(super->getSubHeaders().getCount(), 2u);
  b->destroy();
  d->destroy();
  EXPECT_FALSE(super->isValid());
}

TEST_F(ParametricInsts, HeadersSortThemselvesWhenTheMasterIsSeenToBeParametric) {
  oaScalarInst *early = place(block_, "early"); // nothing is opened for it
  EXPECT_FALSE(early->getHeader()->isSubHeader());
  EXPECT_EQ(drawn(early->getMaster()), "0 0 10 20");
  EXPECT_TRUE(early->getHeader()->isSubHeader());
  EXPECT_EQ(superHeader()->getSubHeaders().getCount(), 1u);
  EXPECT_EQ(boxOf(early), "0 0 10 20");
  EXPECT_EQ(boxOf(block_), "0 0 10 20");

  // An ordinary master becomes parametric under its instances.
  makeLeaf("later", oaBox(0, 0, 7, 7));
  oaScalarInst *later = place(block_, "later", oaParamArray(), "later");
  EXPECT_EQ(drawn(later->getMaster()), "0 0 7 7");
  oaDesign *master = open("later", 'a');
  master->defineSuperMaster(oaPcellLink::getPcellDef("boxes"), defaults());
  EXPECT_EQ(drawn(later->getMaster()), "0 0 10 20");
  EXPECT_TRUE(later->getHeader()->isSubHeader());
}

TEST_F(ParametricInsts, ParametersAreStoredWithTheHeader) {
  place(block_, "a", one("w", 1));
  oaVectorInst::create(block_, scalar(libName()), scalar("box"), scalar("layout"), scalar("v"), 0, 3, oaTransform(),
                       nullptr)
      ->setParams(one("w", 4));
  const oaParamArray three = one("w", 3);
  oaArrayInst::create(block_, scalar(libName()), scalar("box"), scalar("layout"), scalar("m"), oaTransform(), 100, 100,
                      2, 2, &three);
  place(block_, "gone", one("title", oaString("gone")))->destroy();
  EXPECT_EQ(boxOf(block_), "0 0 103 120");
  saveAndRead();
  boxes_.calls.clear();
  EXPECT_EQ(superHeader()->getSubHeaders().getCount(), 3u);
  EXPECT_EQ(paramsOf(inst("a")), "w=1");
  EXPECT_EQ(paramsOf(oaInst::find(block_, oaVectorName(scalar("v"), 0, 3))), "w=4");
  EXPECT_EQ(paramsOf(oaInst::find(block_, oaVectorBitName(scalar("v"), 2))), "w=4");
  EXPECT_EQ(boxOf(inst("a")), "0 0 1 20") << "from the header, nothing is evaluated";
  EXPECT_TRUE(boxes_.calls.empty());
  EXPECT_EQ(drawn(oaArrayInst::find(block_, scalar("m"))->getMaster()), "0 0 3 20");

  link_->destroy();
  link_ = nullptr;
  oaDesign *master = inst("a")->getMaster();
  ASSERT_NE(master, nullptr) << "bound without an evaluator";
  EXPECT_EQ(master->getTopBlock(), nullptr);
  EXPECT_EQ(boxOf(inst("a")), "0 0 1 20");
}

TEST_F(ParametricInsts, ParametersAndPropertiesChangePlacesWithTheMaster) {
  makeLeaf("leaf", oaBox(0, 0, 5, 5));
  oaScalarInst *inst = place(block_, "a", one("w", 1));
  inst->setParams(one("l", 2));
  EXPECT_EQ(paramsOf(inst), "l=2");
  EXPECT_EQ(drawn(inst->getMaster()), "0 0 10 2");
  inst->setMaster(scalar(libName()), scalar("leaf"), scalar("layout"));
  EXPECT_EQ(paramsOf(inst), "");
  EXPECT_EQ(drawn(inst->getMaster()), "0 0 5 5");
  EXPECT_EQ(static_cast<oaIntProp *>(oaProp::find(inst, "l"))->getValue(), 2);
  EXPECT_EQ(superHeader(), nullptr);
  open("box", 'r');
  inst->setMaster(scalar(libName()), scalar("box"), scalar("layout"));
  EXPECT_EQ(paramsOf(inst), "l=2");
  EXPECT_EQ(oaProp::find(inst, "l"), nullptr);
}

TEST_F(ParametricInsts, AMasterGivenByItselfIsBoundWithItsParameters) {
  oaDesign *sub = variant(one("w", 6));
  oaScalarInst *inst = oaScalarInst::create(block_, sub, scalar("a"), oaTransform());
  EXPECT_EQ(paramsOf(inst), "w=6");
  EXPECT_EQ(inst->getMaster(), sub);
  oaDesign *super = sub->getSuperMaster();
  sub->close();
  EXPECT_TRUE(super->isValid()) << "held by the instance";
  // There and back, while nothing else holds the parametric master.
  makeLeaf("leaf", oaBox(0, 0, 5, 5));
  inst->setMaster(scalar(libName()), scalar("leaf"), scalar("layout"));
  EXPECT_FALSE(super->isValid());
  inst->setMaster(scalar(libName()), scalar("box"), scalar("layout"));
  EXPECT_EQ(paramsOf(inst), "w=6");
}

TEST_F(ParametricInsts, HeadersFoldWhenTheMasterIsOrdinaryAgain) {
  oaScalarInst *a = place(block_, "a", one("w", 1));
  oaScalarInst *b = place(block_, "b", one("w", 2));
  a->getMaster();
  oaDesign *master = open("box", 'a');
  oaRect::create(oaBlock::create(master), 1, 2, oaBox(0, 0, 8, 8));
  master->undefineSuperMaster();
  EXPECT_EQ(a->getMaster(), master);
  EXPECT_EQ(b->getMaster(), master);
  EXPECT_EQ(b->getHeader(), a->getHeader());
  EXPECT_FALSE(a->getHeader()->isSubHeader());
  EXPECT_EQ(a->getHeader()->getInsts().getCount(), 2u);
  EXPECT_EQ(boxOf(block_), "0 0 8 8");
  EXPECT_EQ(static_cast<oaIntProp *>(oaProp::find(b, "w"))->getValue(), 2);
}

TEST_F(ParametricInsts, CopiesKeepTheirParameters) {
  oaScalarInst *inst = place(block_, "a", one("w", 1));
  const auto *copy = static_cast<oaInst *>(inst->copy(oaTransform(oaPoint(100, 0))));
  EXPECT_EQ(copy->getHeader(), inst->getHeader());
  oaDesign *other = open("other", 'w');
  const auto *there = static_cast<oaInst *>(inst->copy(oaTransform(), oaBlock::create(other)));
  EXPECT_EQ(paramsOf(there), "w=1");
  EXPECT_EQ(there->getMaster(), inst->getMaster());
}

TEST_F(ParametricInsts, WhatDoesNotFitIsRefused) {
  makeLeaf("leaf", oaBox(0, 0, 5, 5));
  EXPECT_EQ(idRaisedBy([&] { place(block_, "a", one("h", 1)); }), oacNotExistInDefaultParam);
  EXPECT_EQ(idRaisedBy([&] { place(block_, "a", one("w", 1.0)); }), oacInvalidDataTypeForParam);
  EXPECT_EQ(idRaisedBy([&] { place(block_, "a", one("w", 1), "leaf"); }), oacParamsSuppliedForNonPCellInstMaster);
  EXPECT_EQ(idRaisedBy([&] { place(block_, "a", one("w", 1), "nothing"); }), oacPcellMasterNotBound);
  EXPECT_EQ(block_->getInsts().getCount(), 0u);
  EXPECT_EQ(block_->getInstHeaders().getCount(), 0u);
}

} // namespace
