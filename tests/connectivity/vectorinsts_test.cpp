// Vector instances and their bits: what they make, what carries over, and what cannot be done to an implicit bit.

#include "netstest.h"

#include <functional>
#include <vector>

using namespace connectivitytest;

namespace {

class VectorInstances : public Nets {
protected:
  VectorInstances() { makeLeaf("leaf", oaBox(0, 0, 4, 2)); }

  oaVectorInst *vector(const char *base, oaUInt4 start, oaUInt4 stop, const oaTransform &placement = oaTransform()) {
    return oaVectorInst::create(block_, scalar(libName()), scalar("leaf"), scalar("layout"), scalar(base), start, stop,
                                placement);
  }
  oaVectorInstBit *bit(const char *base, oaUInt4 index) {
    return oaVectorInstBit::create(block_, scalar(libName()), scalar("leaf"), scalar("layout"), scalar(base), index,
                                   oaTransform());
  }
  oaVectorInstDef *def(const char *base) const { return oaVectorInstDef::find(block_, scalar(base)); }
  oaInst *find(const char *name) const { return oaInst::find(block_, oaSimpleName(oaNativeNS(), name)); }
  std::string insts(oaUInt4 flags) const { return namesOf<oaInst>(block_->getInsts(flags)); }
};

} // namespace

TEST_F(VectorInstances, BitsComeInWrittenOrderWithTheirVector) {
  place(block_, "leaf", "S", oaTransform());
  oaVectorInst *down = vector("I1", 3, 1, oaTransform(10, 20, oacR90));
  vector("I1", 7, 7);
  bit("I1", 5);
  const auto check = [&] {
    EXPECT_EQ(insts(oacInstIterNotImplicit), "S I1[3:1] I1[7:7] I1[5]");
    EXPECT_EQ(insts(oacInstIterAll), "S I1[3:1] I1[3] I1[2] I1[1] I1[7:7] I1[7] I1[5]");
    EXPECT_EQ(insts(oacInstIterSingleBit), "S I1[3] I1[2] I1[1] I1[7] I1[5]");
    EXPECT_EQ(insts(oacInstIterSingleBit | oacInstIterNotImplicit), "S I1[5]");
    EXPECT_EQ(block_->getInsts().getCount(), 4u);
    oaInstHeader *header = find("S")->getHeader();
    EXPECT_EQ(namesOf<oaInst>(header->getInsts()), "S I1[3:1] I1[7:7] I1[5]");
    EXPECT_EQ(namesOf<oaInst>(header->getInsts(oacInstIterSingleBit)), "S I1[3] I1[2] I1[1] I1[7] I1[5]");
    oaVectorInst *inst = oaVectorInst::find(block_, scalar("I1"), 3, 1);
    ASSERT_NE(inst, nullptr);
    EXPECT_EQ(find("I1[3:1]"), inst);
    EXPECT_EQ(oaVectorInst::find(block_, scalar("I1"), 1, 3), nullptr);
    EXPECT_EQ(inst->getNumBits(), 3u);
    EXPECT_EQ(inst->getStart(), 3u);
    EXPECT_EQ(inst->getStop(), 1u);
    EXPECT_FALSE(inst->isImplicit());
    EXPECT_EQ(inst->getBit(1), oaVectorInstBit::find(block_, scalar("I1"), 2));
    EXPECT_EQ(idRaisedBy([&] { inst->getBit(3); }), oaUInt4(oacInvalidBitIndexIntoInst));
    oaVectorInstBit *two = inst->getBit(1);
    EXPECT_TRUE(two->isImplicit());
    EXPECT_EQ(two->getBitIndex(), 2u);
    EXPECT_EQ(two->getNumBits(), 1u);
    EXPECT_EQ(two->getHeader(), header);
    oaTransform placement;
    two->getTransform(placement);
    EXPECT_EQ(placement, oaTransform(10, 20, oacR90));
    oaSimpleName name;
    two->getName(name);
    EXPECT_TRUE(name == oaVectorBitName(scalar("I1"), 2));
    oaVectorName range;
    inst->getName(range);
    EXPECT_TRUE(range == oaVectorName(scalar("I1"), 3, 1));
    EXPECT_EQ(find("I1[4]"), nullptr);
    EXPECT_EQ(find("I1"), nullptr);
    ASSERT_NE(def("I1"), nullptr);
    EXPECT_EQ(def("S"), nullptr);
    EXPECT_EQ(inst->getDef(), def("I1"));
    EXPECT_EQ(two->getDef(), def("I1"));
    EXPECT_EQ(def("I1")->getMinIndex(), 1u);
    EXPECT_EQ(def("I1")->getMaxIndex(), 7u);
    EXPECT_EQ(def("I1")->getNumBits(), 5u);
    EXPECT_EQ(namesOf<oaVectorInst>(def("I1")->getVectorInsts()), "I1[3:1] I1[7:7]");
    EXPECT_EQ(namesOf<oaVectorInstBit>(def("I1")->getVectorInstBits()), "I1[3] I1[2] I1[1] I1[7] I1[5]");
    EXPECT_EQ(block_->getVectorInstDefs().getCount(), 1u);
  };
  EXPECT_EQ(oaTypeEnum(down->getType()), oacVectorInstType);
  EXPECT_EQ(oaTypeEnum(down->getBit(0)->getType()), oacVectorInstBitType);
  check();
  reopen();
  check();
}

TEST_F(VectorInstances, EveryBitBelongsToOneInstance) {
  vector("V", 2, 4);
  bit("B", 1);
  place(block_, "leaf", "S", oaTransform());
  oaVectorInstDef::create(block_, scalar("D"), oacDescendingBitOrder);
  const std::string before = insts(oacInstIterAll);
  const struct {
    const char *base;
    oaUInt4 start, stop; // oacNullIndex: a bit
    oaUInt4 id;
  } cases[] = {
      {"V", 2, 4, oacInstNameExists},
      {"V", 4, 2, oacInstNameOverlapsOtherInst},
      {"V", 4, 4, oacInstNameOverlapsOtherInst},
      {"V", 0, 2, oacInstNameOverlapsOtherInst},
      {"V", 3, oacNullIndex, oacInstNameOverlapsOtherInst},
      {"B", 1, oacNullIndex, oacInstNameExists},
      {"B", 0, 7, oacInstNameOverlapsOtherInst},
      {"S", 0, 1, oacInstNameOverlapsOtherInst},
      {"S", 0, oacNullIndex, oacInstNameOverlapsOtherInst},
      {"I__7", 0, 1, oacVectorInstNameMatchesAutoName},
      {"I__7", 0, oacNullIndex, oacVectorInstBitNameMatchesAutoName},
      {"a/b", 0, 1, oacInvalidHierInstName},
      {"", 0, 1, oacInvalidNameLength},
      {"W", 0, 0x80000000u, oacInvalidNameLength},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(std::string(c.base) + ":" + std::to_string(c.start) + ":" + std::to_string(c.stop));
    const bool isBit = c.stop == oacNullIndex;
    EXPECT_EQ(idRaisedBy([&] { isBit ? (void)bit(c.base, c.start) : (void)vector(c.base, c.start, c.stop); }), c.id);
    EXPECT_FALSE(isBit ? oaVectorInstBit::isValidName(block_, scalar(c.base), c.start)
                       : oaVectorInst::isValidName(block_, scalar(c.base), c.start, c.stop));
  }
  for (const char *base : {"V", "B", "D"}) {
    EXPECT_EQ(idRaisedBy([&] { place(block_, "leaf", base, oaTransform()); }), oaUInt4(oacInstNameOverlapsOtherInst));
    EXPECT_FALSE(oaScalarInst::isValidName(block_, scalar(base)));
  }
  EXPECT_EQ(insts(oacInstIterAll), before) << "a refused name leaves nothing behind";
  EXPECT_EQ(block_->getInstHeaders().getCount(), 1u);
  // A scalar may look like a bit and is none.
  place(block_, "leaf", "V[3]", oaTransform());
  EXPECT_TRUE(find("V[3]")->isImplicit());
  EXPECT_EQ(oaTypeEnum(oaInst::find(block_, scalar("V[3]"))->getType()), oacScalarInstType);
  vector("V", 0, 1);
  vector("V", 6, 5);
  EXPECT_EQ(def("V")->getVectorInsts().getCount(), 3u);
}

TEST_F(VectorInstances, BitsFollowTheirVector) {
  oaVectorInst *inst = vector("I1", 0, 1);
  const auto expect = [&](const oaTransform &placement) {
    for (oaUInt4 i = 0; i < 2; ++i) {
      oaTransform own;
      inst->getBit(i)->getTransform(own);
      EXPECT_EQ(own, placement);
    }
  };
  inst->getMaster();
  inst->setOrigin(oaPoint(5, 6));
  inst->setOrient(oacMY);
  expect(oaTransform(5, 6, oacMY));
  inst->move(oaTransform(100, 0, oacR90));
  oaTransform moved;
  inst->getTransform(moved);
  expect(moved);
  oaBox box, bitBox;
  static_cast<oaFig *>(inst)->getBBox(box);
  static_cast<oaFig *>(inst->getBit(1))->getBBox(bitBox);
  EXPECT_EQ(box, bitBox);
  block_->getBBox(bitBox);
  EXPECT_EQ(box, bitBox);
  inst->setPlacementStatus(oacFixedPlacementStatus);
  inst->setPriority(3);
  EXPECT_EQ(oaPlacementStatusEnum(inst->getBit(1)->getPlacementStatus()), oacFixedPlacementStatus);
  EXPECT_EQ(inst->getBit(1)->getPriority(), 3u);
  oaInstHeader *before = inst->getHeader();
  inst->setMaster(scalar(libName()), scalar("other"), scalar("layout"));
  EXPECT_FALSE(before->isValid());
  EXPECT_EQ(inst->getBit(0)->getHeader(), inst->getHeader());
  EXPECT_EQ(inst->getHeader()->getInsts(oacInstIterAll).getCount(), 3u);
  EXPECT_EQ(inst->getBit(0)->getMaster(), nullptr);
}

TEST_F(VectorInstances, AnImplicitBitCannotBeChanged) {
  oaVectorInst *inst = vector("I1", 0, 1, oaTransform(1, 2));
  oaVectorInstBit *implicit = inst->getBit(1);
  oaParamArray params;
  const struct {
    oaUInt4 id;
    std::function<void()> action;
  } cases[] = {
      {oacCannotDestroyImplicitInst, [&] { implicit->destroy(); }},
      {oacCannotSetMasterImplicitInst,
       [&] { implicit->setMaster(scalar(libName()), scalar("other"), scalar("layout")); }},
      {oacCannotSetParamsImplicitInst, [&] { implicit->setParams(params); }},
      {oacCannotSetPlacementStatusImplicitInst, [&] { implicit->setPlacementStatus(oacPlacedPlacementStatus); }},
      {oacCannotSetPriorityImplicitInst, [&] { implicit->setPriority(1); }},
      {oacCannotMoveImplicitInst, [&] { implicit->setOrigin(oaPoint(0, 0)); }},
      {oacCannotMoveImplicitInst, [&] { implicit->setOrient(oacR90); }},
      {oacCannotMoveImplicitInst, [&] { implicit->move(oaTransform(1, 1)); }},
      {oacCannotCopyImplicitInst, [&] { implicit->copy(oaTransform(1, 1)); }},
      // Copies get automatic names, which have no bits.
      {oacVectorInstNameMatchesAutoName, [&] { inst->copy(oaTransform(1, 1)); }},
      {oacVectorInstBitNameMatchesAutoName, [&] { bit("B", 0)->copy(oaTransform(1, 1)); }},
      {oacInstTermInstImplicit, [&] { oaInstTerm::create(nullptr, implicit, native("A")); }},
  };
  for (const auto &c : cases) {
    EXPECT_EQ(idRaisedBy(c.action), c.id);
  }
  EXPECT_EQ(insts(oacInstIterAll), "I1[0:1] I1[0] I1[1] B[0]");
  EXPECT_EQ(block_->getInstHeaders().getCount(), 1u);
  oaTransform placement;
  implicit->getTransform(placement);
  EXPECT_EQ(placement, oaTransform(1, 2));
}

TEST_F(VectorInstances, AVectorTakesItsBitsWithIt) {
  oaVectorInst *inst = vector("I1", 0, 2);
  oaVectorInstBit *implicit = inst->getBit(1);
  oaVectorInstBit *own = bit("I1", 9);
  oaInstHeader *header = inst->getHeader();
  inst->destroy();
  EXPECT_FALSE(implicit->isValid());
  EXPECT_EQ(insts(oacInstIterAll), "I1[9]");
  EXPECT_TRUE(header->isValid());
  ASSERT_NE(def("I1"), nullptr);
  EXPECT_EQ(def("I1")->getMinIndex(), 9u);
  own->destroy();
  EXPECT_EQ(def("I1"), nullptr);
  EXPECT_FALSE(header->isValid());
  place(block_, "leaf", "I1", oaTransform())->destroy();
  vector("I1", 0, 2);
  reopen();
  EXPECT_EQ(insts(oacInstIterAll), "I1[0:2] I1[0] I1[1] I1[2]");
  find("I1[0:2]")->destroy();
  EXPECT_EQ(insts(oacInstIterAll), "");
  EXPECT_TRUE(block_->getInstHeaders().isEmpty());
}

TEST_F(VectorInstances, AnExplicitDefinitionStays) {
  oaVectorInst *inst = vector("I1", 0, 1);
  EXPECT_TRUE(def("I1")->isImplicit());
  oaVectorInstDef *made = oaVectorInstDef::create(block_, scalar("I1"), oacAscendingBitOrder);
  EXPECT_EQ(made, def("I1"));
  EXPECT_FALSE(made->isImplicit());
  EXPECT_EQ(idRaisedBy([&] { made->destroy(); }), oaUInt4(oacCannotDestroyVectorInstDefWithInsts));
  inst->destroy();
  reopen();
  ASSERT_NE(def("I1"), nullptr);
  EXPECT_EQ(oaBitOrderEnum(def("I1")->getBitOrder()), oacAscendingBitOrder);
  EXPECT_EQ(def("I1")->getNumBits(), 0u);
  def("I1")->destroy();
  EXPECT_EQ(def("I1"), nullptr);
}

TEST_F(VectorInstances, AMasterMustNotContainItsBlock) {
  EXPECT_EQ(idRaisedBy([&] { oaVectorInst::create(block_, design_, scalar("I1"), 0, 1, oaTransform()); }),
            oaUInt4(oacCannotCreateRecursiveDesign));
  oaDesign *leaf = open("leaf", 'r');
  EXPECT_EQ(oaVectorInst::create(block_, leaf, scalar("I1"), 0, 1, oaTransform())->getBit(0)->getMaster(), leaf);
  EXPECT_EQ(oaVectorInstBit::create(block_, leaf, scalar("I1"), 2, oaTransform())->getMaster(), leaf);
  leaf->close();
}
