#include "netstest.h"

#include <functional>

using namespace connectivitytest;

TEST_F(Nets, RefusalsHaveTheirIds) {
  oaScalarNet *a = net("A");
  oaScalarTerm *term = oaScalarTerm::create(a, scalar("A"));
  oaPin::create(term, "P");
  net("B");
  const struct {
    const char *name;
    std::function<void()> action;
    oaUInt4 id;
  } cases[] = {
      {"net without a name", [&] { oaNet::create(block_, oaName()); }, oacInvalidNetName},
      {"net of a hierarchy", [&] { oaNet::create(block_, native("x/y")); }, oacHierPathDoesNotExist},
      {"net twice", [&] { net("A"); }, oacNetExists},
      {"renamed to a net that exists", [&] { a->setName(scalar("B")); }, oacNetExists},
      {"term without a name", [&] { oaTerm::create(a, oaName()); }, oacInvalidTermName},
      {"term of a hierarchy", [&] { oaTerm::create(a, native("x/y")); }, oacInvalidHierTermName},
      {"term twice", [&] { oaScalarTerm::create(a, scalar("A")); }, oacTermExists},
      {"bus term on one bit", [&] { oaTerm::create(a, native("D[0:3]")); }, oacNetTermWidthMismatch},
      {"pin name twice on a term", [&] { oaPin::create(term, "P"); }, oacPinExists},
      {"second bit of a scalar net", [&] { a->getBit(1); }, oacInvalidBusNetBitIndex},
      {"two kinds of nets", [&] { block_->getNets(oacNetIterAll | oacNetIterSingleBit); }, oacInvalidBlockNetIterFlags},
      {"no kind of terms", [&] { block_->getTerms(oacTermIterNotImplicit); }, oacInvalidBlockTermIterFlags},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(idRaisedBy(c.action), c.id);
  }
  EXPECT_EQ(namesOf<oaNet>(block_->getNets()), "A B");
  EXPECT_EQ(namesOf<oaTerm>(block_->getTerms()), "A");
  EXPECT_EQ(block_->getPins().getCount(), 1u);
}

TEST_F(Nets, EverythingComesBackAfterSavingWithoutWhatWasDestroyed) {
  net("gone")->destroy();
  oaScalarNet *supply = oaScalarNet::create(block_, scalar("VDD"), oacPowerSigType, true);
  oaScalarNet *odd = net("A<3> x");
  oaScalarTerm *term = oaScalarTerm::create(supply, scalar("VDD"), oacInputTermType);
  oaPin *pin = oaPin::create(term, "left", oacLeft | oacTop);
  oaPin::create(term);
  oaRect::create(block_, 1, 1, oaBox(0, 0, 1, 1));
  oaRect::create(block_, 1, 1, oaBox(0, 0, 2, 2))->addToPin(pin);
  oaRect::create(block_, 1, 1, oaBox(0, 0, 3, 3))->addToNet(odd);
  reopen();

  EXPECT_EQ(namesOf<oaNet>(block_->getNets()), "VDD A<3> x");
  EXPECT_EQ(namesOf<oaNet>(block_->getNets(oacNetIterAll | oacNetIterGlobal)), "VDD");
  oaNet *found = oaNet::find(block_, oaName(scalar("VDD")));
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->getSigType(), oacPowerSigType);
  EXPECT_EQ(found->getTerms().getCount(), 1u);
  EXPECT_EQ(found->getPins().getCount(), 2u);
  EXPECT_EQ(found->getShapes(oacShapeIterNetOnly).getCount(), 0u) << "a pin's figure is not on the net";
  EXPECT_EQ(found->getShapes(oacShapeIterNetPins).getCount(), 1u);
  oaTerm *reread = oaTerm::find(block_, oaName(scalar("VDD")));
  EXPECT_EQ(reread->getTermType(), oacInputTermType);
  oaPin *left = oaPin::find(reread, "left");
  ASSERT_NE(left, nullptr);
  EXPECT_EQ(left->getAccessDir(), oaUInt4(oacLeft | oacTop));
  oaIter<oaPinFig> figs(left->getFigs());
  oaBox box;
  figs.getNext()->getBBox(box);
  EXPECT_EQ(box, oaBox(0, 0, 2, 2));
  EXPECT_EQ(oaNet::find(block_, oaName(scalar("A<3> x")))->getShapes().getCount(), 1u);
}

TEST_F(Nets, DestroyingANetTakesItsTermsAndPinsButNotFiguresAndConnections) {
  oaScalarNet *a = net("A");
  oaPin *pin = oaPin::create(oaScalarTerm::create(a, scalar("A")));
  oaRect *inPin = oaRect::create(block_, 1, 1, oaBox(0, 0, 1, 1));
  inPin->addToPin(pin);
  oaRect *onNet = oaRect::create(block_, 1, 1, oaBox(0, 0, 2, 2));
  onNet->addToNet(a);
  oaInstTerm *instTerm = oaInstTerm::create(a, place(block_, "leaf", "I1", oaTransform()), native("Z"));
  a->destroy();

  EXPECT_EQ(block_->getTerms().getCount() + block_->getPins().getCount() + block_->getNets().getCount(), 0u);
  EXPECT_FALSE(a->isValid());
  EXPECT_FALSE(pin->isValid());
  EXPECT_EQ(block_->getShapes().getCount(), 2u);
  EXPECT_FALSE(inPin->hasPin());
  EXPECT_FALSE(onNet->hasNet());
  EXPECT_EQ(instTerm->getNet(), nullptr);
  EXPECT_NE(net("A"), nullptr) << "the name is free again";
}

TEST_F(Nets, DestroyingDuringWalksMeetsEachOnce) {
  for (int i = 0; i < 100; ++i) {
    oaPin::create(oaScalarTerm::create(net("n" + std::to_string(i)), scalar("t" + std::to_string(i))));
  }
  int terms = 0;
  oaIter<oaTerm> termIter(block_->getTerms());
  while (oaTerm *term = termIter.getNext()) {
    term->destroy();
    ++terms;
  }
  int nets = 0;
  oaIter<oaNet> netIter(block_->getNets());
  while (oaNet *found = netIter.getNext()) {
    found->destroy();
    ++nets;
  }
  EXPECT_EQ(terms, 100);
  EXPECT_EQ(nets, 100);
  EXPECT_TRUE(block_->getPins().isEmpty());
}

TEST_F(Nets, MergingMovesEverything) {
  oaScalarNet *to = net("to");
  oaScalarNet *from = net("from");
  oaTerm *term = oaScalarTerm::create(from, scalar("T"));
  oaRect::create(block_, 1, 1, oaBox(0, 0, 1, 1))->addToNet(from);
  oaInstTerm::create(from, place(block_, "leaf", "I1", oaTransform()), native("Z"));
  to->merge(from);
  EXPECT_FALSE(from->isValid());
  EXPECT_EQ(term->getNet(), to);
  EXPECT_EQ(to->getShapes().getCount(), 1u);
  EXPECT_EQ(to->getInstTerms().getCount(), 1u);
}

TEST_F(Nets, AutomaticNamesAvoidThoseInUse) {
  net("N__0");
  oaString name;
  oaScalarNet::create(block_)->getName(oaNativeNS(), name);
  EXPECT_EQ(name, "N__1");
  reopen();
  oaScalarNet::create(block_)->getName(oaNativeNS(), name);
  EXPECT_EQ(name, "N__2");
}

TEST_F(Nets, PositionsAreUnique) {
  oaTerm *a = oaScalarTerm::create(net("A"), scalar("A"));
  oaTerm *b = oaScalarTerm::create(net("B"), scalar("B"));
  EXPECT_EQ(oaTerm::getMaxPosition(block_), oaUInt4(oacNullIndex));
  a->setPosition(3);
  EXPECT_EQ(idRaisedBy([&] { b->setPosition(3); }), oaUInt4(oacTermPositionAlreadyTaken));
  EXPECT_EQ(oaTerm::find(block_, 3), a);
  a->unsetPosition();
  b->setPosition(3);
  EXPECT_EQ(oaTerm::getMaxPosition(block_), 3u);
}
