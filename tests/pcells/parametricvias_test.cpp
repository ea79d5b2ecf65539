// Custom vias whose master is parametric.

#include "pcelltest.h"

using namespace pcelltest;

namespace {

class ParametricVias : public Pcells {
protected:
  ParametricVias() {
    makeBox();
    tech_ = oaTech::create(scalar(libName()));
    m1_ = oaPhysicalLayer::create(tech_, "m1", 31, oacMetalMaterial);
    m2_ = oaPhysicalLayer::create(tech_, "m2", 32, oacMetalMaterial);
    def_ = oaCustomViaDef::create(tech_, "boxVia", scalar(libName()), scalar("box"), scalar("layout"), m1_, m2_);
    top_ = open("top", 'w');
    block_ = oaBlock::create(top_);
  }
  ~ParametricVias() override { tech_->purge(); }

  oaCustomVia *via(const oaParamArray &params) { return oaCustomVia::create(block_, def_, oaTransform(), &params); }

  oaTech *tech_;
  oaPhysicalLayer *m1_, *m2_;
  oaCustomViaDef *def_;
  oaDesign *top_;
  oaBlock *block_;
};

TEST_F(ParametricVias, EachSetOfParametersHasItsHeader) {
  oaCustomVia *plain = via(oaParamArray());
  EXPECT_FALSE(plain->getHeader()->isSubHeader());
  EXPECT_EQ(drawn(plain->getMaster()), "0 0 10 20") << "the default parameters";
  oaCustomVia *a = via(one("w", 1)), *b = via(one("w", 1));
  EXPECT_EQ(a->getHeader(), b->getHeader());
  EXPECT_TRUE(a->getHeader()->isSubHeader());
  EXPECT_TRUE(plain->getHeader()->isSubHeader()) << "sorted when the first parameters came";
  oaRefHeader *super = a->getHeader()->getSuperHeader();
  EXPECT_EQ(super, plain->getHeader()->getSuperHeader());
  EXPECT_EQ(paramsOf(a), "w=1");
  EXPECT_EQ(boxOf(a), "0 0 1 20");
  EXPECT_EQ(boxOf(plain), "0 0 10 20");
  oaParamArray all;
  a->getHeader()->getAllParams(all);
  EXPECT_EQ(textOf(all), "w=1 l=20 title=t");
  b->setParams(one("l", 3));
  EXPECT_EQ(boxOf(b), "0 0 10 3");

  top_->save();
  top_->close();
  link_->destroy();
  link_ = nullptr;
  top_ = open("top", 'r');
  oaIter<oaVia> vias(top_->getTopBlock()->getVias());
  std::string read;
  while (oaVia *each = vias.getNext()) {
    read += paramsOf(static_cast<oaCustomVia *>(each)) + ": " + boxOf(each) + "; ";
  }
  EXPECT_EQ(read, ": 0 0 10 20; w=1: 0 0 1 20; l=3: 0 0 10 3; ") << "boxes as stored, without the evaluator";
}

TEST_F(ParametricVias, WhatDoesNotFitIsRefused) {
  makeLeaf("leaf", oaBox(0, 0, 5, 5));
  EXPECT_EQ(idRaisedBy([&] { via(one("h", 1)); }), oacNotExistInDefaultParam);
  def_->setMaster(scalar(libName()), scalar("leaf"), scalar("layout"));
  EXPECT_EQ(idRaisedBy([&] { via(one("w", 1)); }), oacParamsSuppliedForNonPCellViaMaster);
  def_->setMaster(scalar(libName()), scalar("nothing"), scalar("layout"));
  EXPECT_EQ(idRaisedBy([&] { via(one("w", 1)); }), oacPcellMasterNotBound);
  EXPECT_EQ(block_->getVias().getCount(), 0u);
}

} // namespace
