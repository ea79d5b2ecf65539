// Connections of several bits: widths, the bits that they share, and what stays when nets, instances or connections go.

#include "netstest.h"

#include <functional>
#include <vector>

using namespace connectivitytest;

namespace {

class InstTerms : public Nets {
protected:
  InstTerms() : inst_(place(block_, "leaf", "I", oaTransform())) {}

  oaNet *bus(const char *name) { return oaNet::create(block_, native(name)); }
  oaNet *findNet(const char *name) const { return oaNet::find(block_, native(name)); }
  oaVectorInst *vector(const char *base, oaUInt4 start, oaUInt4 stop) {
    return oaVectorInst::create(block_, scalar(libName()), scalar("leaf"), scalar("layout"), scalar(base), start, stop,
                                oaTransform());
  }
  oaInstTerm *connect(oaNet *net, const char *term) { return oaInstTerm::create(net, inst_, native(term)); }
  oaInstTerm *find(const char *term) const { return oaInstTerm::find(inst_, native(term)); }
  // After reopen() everything is found anew.
  void refind() { inst_ = oaInst::find(block_, scalar("I")); }

  oaInst *inst_;
};

std::string nameOf(const oaNet *net) {
  oaString name("-");
  if (net != nullptr) {
    net->getName(oaNativeNS(), name);
  }
  return std::string(name);
}

// "inst.term=net", an asterisk before implicit ones.
std::string describe(const oaInstTerm *instTerm) {
  oaString inst, term;
  instTerm->getInst()->getName(oaNativeNS(), inst);
  instTerm->getTermName(oaNativeNS(), term);
  return (instTerm->isImplicit() ? "*" : "") + std::string(inst) + "." + std::string(term) + "=" +
         nameOf(instTerm->getNet());
}

std::string bitsOf(const oaInstTerm *instTerm) {
  std::string bits;
  for (oaUInt4 i = 0; i < instTerm->getNumBits(); ++i) {
    bits += (i == 0 ? "" : " ") + describe(instTerm->getBit(i));
  }
  return bits;
}

template <typename Collection> std::string all(const Collection &collection) {
  std::string text;
  oaIter<oaInstTerm> instTerms(collection);
  while (const oaInstTerm *instTerm = instTerms.getNext()) {
    text += (text.empty() ? "" : " ") + describe(instTerm);
  }
  return text;
}

} // namespace

TEST_F(InstTerms, BitsOfTheInstanceComeBeforeBitsOfTheTerminal) {
  oaVectorInst *row = vector("V", 1, 0);
  bus("N[0:3]");
  oaInstTerm::create(bus("N[3],N[0]"), row, native("A"));
  oaInstTerm::create(findNet("N[0:3]"), row, native("B[7:6]"));
  oaInstTerm::create(nullptr, row, native("C,2*D"));
  connect(bus("M[0:2]"), "A,B[1:0]");
  connect(findNet("M[0:2]"), "E[0:4:2]");
  const auto check = [&] {
    oaInst *vectorInst = oaVectorInst::find(block_, scalar("V"), 1, 0);
    const auto of = [&](const char *term) { return oaInstTerm::find(vectorInst, native(term)); };
    EXPECT_EQ(bitsOf(of("A")), "*V[1].A=N[3] *V[0].A=N[0]");
    EXPECT_EQ(bitsOf(of("B[7:6]")), "*V[1].B[7]=N[0] *V[1].B[6]=N[1] *V[0].B[7]=N[2] *V[0].B[6]=N[3]");
    EXPECT_EQ(bitsOf(of("C,2*D")), "*V[1].C=- *V[1].D=- *V[1].D=- *V[0].C=- *V[0].D=- *V[0].D=-");
    EXPECT_EQ(bitsOf(find("A,B[1:0]")), "*I.A=M[0] *I.B[1]=M[1] *I.B[0]=M[2]");
    EXPECT_EQ(bitsOf(find("E[0:4:2]")), "*I.E[0]=M[0] *I.E[2]=M[1] *I.E[4]=M[2]");
    oaInst *first = vectorInst == nullptr ? nullptr : static_cast<oaVectorInst *>(vectorInst)->getBit(0);
    EXPECT_EQ(oaInstTerm::find(first, native("B[6]")), of("B[7:6]")->getBit(1));
    EXPECT_EQ(all(first->getInstTerms()), "");
    EXPECT_EQ(first->getInstTerms(oacInstTermIterAllNotHidden).getCount(), 5u);
    EXPECT_EQ(idRaisedBy([&] { of("A")->getBit(2); }), oaUInt4(oacInvalidBusNetBitIndex));
    EXPECT_EQ(of("A")->getBit(0)->getBit(0), of("A")->getBit(0));
    EXPECT_EQ(block_->getInstTerms().getCount(), 5u);
    EXPECT_EQ(all(vectorInst->getInstTerms()), "V[1:0].A=N[3],N[0] V[1:0].B[7:6]=N[0:3] V[1:0].C,2*D=-");
    EXPECT_EQ(all(inst_->getInstTerms(oacInstTermIterSingleBit)),
              "*I.A=M[0] *I.B[1]=M[1] *I.B[0]=M[2] *I.E[0]=M[0] *I.E[2]=M[1] *I.E[4]=M[2]");
    EXPECT_EQ(all(findNet("N[3]")->getInstTerms(oacInstTermIterAllNotHidden)), "*V[1].A=N[3] *V[0].B[6]=N[3]");
  };
  check();
  reopen();
  refind();
  check();
}

TEST_F(InstTerms, WidthsMustFit) {
  oaVectorInst *row = vector("V", 0, 3);
  oaNet *one = net("n");
  oaNet *four = bus("B[0:3]");
  oaNet *eight = bus("C[0:7]");
  const struct {
    oaInst *inst;
    oaNet *net;
    const char *term;
    bool fits;
  } cases[] = {
      {inst_, one, "A", true},           {inst_, one, "D[3]", true},    {inst_, one, "E[3:3]", true},
      {inst_, four, "F", false},         {inst_, one, "G[0:1]", false}, {inst_, four, "H[3:0]", true},
      {inst_, four, "2*J,K[0:1]", true}, {row, one, "A", false},        {row, four, "A", true},
      {row, four, "C[0:1]", false},      {row, eight, "C[0:1]", true},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.term);
    if (!c.fits) {
      const oaUInt4 before = block_->getInstTerms(oacInstTermIterAllNotHidden).getCount();
      EXPECT_EQ(idRaisedBy([&] { oaInstTerm::create(c.net, c.inst, native(c.term)); }),
                oaUInt4(oacNetInstTermWidthMismatchForInstTerm));
      EXPECT_EQ(block_->getInstTerms(oacInstTermIterAllNotHidden).getCount(), before);
    } else if (std::string(c.term) == "2*J,K[0:1]") {
      EXPECT_EQ(idRaisedBy([&] { oaInstTerm::create(c.net, c.inst, native(c.term)); }),
                oaUInt4(oacInstTermNetMismatchInRepeatedMembers));
    } else {
      oaInstTerm *made = oaInstTerm::create(c.net, c.inst, native(c.term));
      EXPECT_EQ(made->getNumBits(), c.net->getNumBits());
      made->removeFromNet();
      EXPECT_EQ(made->getNumBits(), c.net->getNumBits()) << "without a net, the terminal's and instance's";
      EXPECT_EQ(idRaisedBy([&] { made->addToNet(c.net == one ? four : one); }),
                oaUInt4(oacNetInstTermWidthMismatchForInstTerm));
      made->addToNet(c.net);
      EXPECT_EQ(made->getNet(), c.net);
    }
  }
  EXPECT_EQ(idRaisedBy([&] { connect(nullptr, "Z[0:4000000000]"); }), oaUInt4(oacInvalidTermName));
  EXPECT_EQ(idRaisedBy([&] { connect(nullptr, ""); }), oaUInt4(oacInvalidTermName));
}

TEST_F(InstTerms, NamesOfEveryKindAreKeptApart) {
  const std::vector<oaName> names = {
      oaName(scalar("A[3]")),   native("A[3]"), native("A[3:3]"), oaName(oaBundleName(oaNativeNS(), "A[3:3]")),
      oaName(scalar("D<0:3>")), native("A,B"),  native("2*A"),    oaName(scalar("A,B")),
  };
  for (const oaName &name : names) {
    oaInstTerm::create(nullptr, inst_, name);
  }
  reopen();
  refind();
  EXPECT_EQ(inst_->getInstTerms().getCount(), names.size());
  for (const oaName &name : names) {
    oaString text;
    name.get(text);
    SCOPED_TRACE(std::string(text) + " of kind " + std::to_string(name.getType()));
    oaInstTerm *found = oaInstTerm::find(inst_, name);
    ASSERT_NE(found, nullptr);
    oaName stored;
    found->getTermName(stored);
    EXPECT_TRUE(stored == name);
    oaString storedText;
    found->getTermName(oaNativeNS(), storedText);
    EXPECT_EQ(storedText, text);
    EXPECT_EQ(idRaisedBy([&] { oaInstTerm::create(nullptr, inst_, name); }), oaUInt4(oacInstTermAlreadyExists));
  }
}

TEST_F(InstTerms, WhatIsSharedMustAgree) {
  bus("N[0:3]");
  connect(findNet("N[0:3]"), "A[0:3]");
  oaInstTerm *same = connect(bus("N[1],N[2]"), "A[1:2]");
  EXPECT_EQ(same->getBit(0), find("A[0:3]")->getBit(1));
  EXPECT_EQ(idRaisedBy([&] { connect(bus("N[2],N[1]"), "2*Q"); }), oaUInt4(oacInstTermNetMismatchInRepeatedMembers));
  EXPECT_EQ(idRaisedBy([&] { connect(findNet("N[2],N[1]"), "A[1],B"); }), oaUInt4(oacInstTermBitAlreadyExists));
  EXPECT_EQ(find("B"), nullptr);
  oaInstTerm *repeated = connect(bus("2*N[1]"), "2*A[1]");
  EXPECT_EQ(repeated->getBit(0), repeated->getBit(1));
  // No net contradicts nobody.
  EXPECT_EQ(bitsOf(connect(nullptr, "A[3],C")), "*I.A[3]=N[3] *I.C=-");
  EXPECT_EQ(bitsOf(connect(bus("X,Y"), "C,D")), "*I.C=X *I.D=Y");
  // Equivalent nets agree.
  oaBitNet *other = net("other");
  oaBitNet *one = oaBusNetBit::create(block_, scalar("N"), 1);
  EXPECT_EQ(idRaisedBy([&] { connect(other, "A[1]"); }), oaUInt4(oacInstTermBitAlreadyExists));
  one->makeEquivalent(other);
  oaInstTerm *bit = connect(other, "A[1]");
  EXPECT_EQ(bit, same->getBit(0));
  EXPECT_EQ(bit->getNet(), other);
  EXPECT_EQ(bit->getNet(true), one);
  bit->destroy();
  EXPECT_EQ(describe(bit), "*I.A[1]=N[1]");
}

TEST_F(InstTerms, ASingleConnectionOfAnImplicitBitIsTheSameObject) {
  bus("N[0:1]");
  oaBitNet *zero = oaBusNetBit::create(block_, scalar("N"), 0);
  oaInstTerm *wide = connect(findNet("N[0:1]"), "A[0:1]");
  oaInstTerm *bit = wide->getBit(0);
  EXPECT_EQ(idRaisedBy([&] { bit->destroy(); }), oaUInt4(oacCannotDestroyImplicitInstTerm));
  EXPECT_EQ(idRaisedBy([&] { bit->removeFromNet(); }), oaUInt4(oacCannotModifyImplicitInstTerm));
  EXPECT_EQ(idRaisedBy([&] { bit->addToNet(zero); }), oaUInt4(oacCannotModifyImplicitInstTerm));
  EXPECT_EQ(idRaisedBy([&] { connect(findNet("N[1]"), "A[0]"); }), oaUInt4(oacInstTermNetImplicit));
  EXPECT_EQ(connect(zero, "A[0]"), bit);
  EXPECT_FALSE(bit->isImplicit());
  EXPECT_EQ(idRaisedBy([&] { connect(zero, "A[0]"); }), oaUInt4(oacInstTermAlreadyExists));
  EXPECT_EQ(all(inst_->getInstTerms()), "I.A[0:1]=N[0:1] I.A[0]=N[0]");
  EXPECT_EQ(idRaisedBy([&] { bit->removeFromNet(); }), oaUInt4(oacInstTermBitAlreadyExists));
  EXPECT_EQ(idRaisedBy([&] { bit->addToNet(net("m")); }), oaUInt4(oacInstTermBitAlreadyExists));
  EXPECT_EQ(idRaisedBy([&] { wide->addToNet(bus("M[0:1]")); }), oaUInt4(oacInstTermBitAlreadyExists));
  EXPECT_EQ(bitsOf(wide), "I.A[0]=N[0] *I.A[1]=N[1]") << "what was refused has changed nothing";
  EXPECT_EQ(nameOf(wide->getNet()), "N[0:1]");
  bit->destroy();
  EXPECT_TRUE(bit->isValid());
  EXPECT_EQ(bitsOf(wide), "*I.A[0]=N[0] *I.A[1]=N[1]");
  connect(zero, "A[0]");
  wide->destroy();
  EXPECT_EQ(all(inst_->getInstTerms(oacInstTermIterAllNotHidden)), "I.A[0]=N[0]");
  bit->removeFromNet();
  // The other way round: the single connection first.
  wide = connect(findNet("N[0:1]"), "A[0:1]");
  EXPECT_EQ(wide->getBit(0), bit);
  EXPECT_EQ(bitsOf(wide), "I.A[0]=N[0] *I.A[1]=N[1]");
  reopen();
  refind();
  EXPECT_EQ(bitsOf(find("A[0:1]")), "I.A[0]=N[0] *I.A[1]=N[1]");
  find("A[0]")->destroy();
  find("A[0:1]")->destroy();
  EXPECT_EQ(all(block_->getInstTerms(oacInstTermIterAllNotHidden)), "");
}

TEST_F(InstTerms, BitsGoWithTheLastConnectionThatNeedsThem) {
  const std::vector<const char *> terms = {"A[0:2]", "A[2:3]", "A[3],B"};
  for (const std::vector<int> &order : std::vector<std::vector<int>>{{0, 1, 2}, {2, 1, 0}, {1, 0, 2}, {1, 2, 0}}) {
    for (const char *term : terms) {
      connect(nullptr, term);
    }
    const oaUInt4 left[] = {3u, 2u, 2u};
    EXPECT_EQ(inst_->getInstTerms(oacInstTermIterSingleBit).getCount(), 5u);
    std::vector<bool> isThere(3, true);
    for (const int going : order) {
      find(terms[going])->destroy();
      isThere[going] = false;
      oaUInt4 expected = 0;
      for (int i = 0; i < 3; ++i) {
        expected += isThere[i] ? left[i] : 0;
      }
      // Neighbours share a bit.
      expected -= (isThere[0] && isThere[1]) + (isThere[1] && isThere[2]);
      EXPECT_EQ(inst_->getInstTerms(oacInstTermIterSingleBit).getCount(), expected);
    }
    EXPECT_TRUE(block_->getInstTerms(oacInstTermIterAllNotHidden).isEmpty());
  }
}

TEST_F(InstTerms, BitsFollowToAnotherNet) {
  oaInstTerm *wide = connect(bus("N[0:1]"), "A[0:1]");
  oaInstTerm *bit = wide->getBit(1);
  wide->addToNet(bus("M[5:4]"));
  EXPECT_EQ(bitsOf(wide), "*I.A[0]=M[5] *I.A[1]=M[4]");
  EXPECT_EQ(wide->getBit(1), bit);
  EXPECT_TRUE(findNet("N[0]")->getInstTerms(oacInstTermIterAllNotHidden).isEmpty());
  wide->removeFromNet();
  EXPECT_EQ(bitsOf(wide), "*I.A[0]=- *I.A[1]=-");
  // Another connection has a bit, which stays where that one is.
  oaInstTerm *second = connect(bus("M[4],Z"), "A[1],B");
  EXPECT_EQ(bitsOf(wide), "*I.A[0]=- *I.A[1]=M[4]");
  EXPECT_EQ(idRaisedBy([&] { wide->addToNet(findNet("N[0:1]")); }), oaUInt4(oacInstTermBitAlreadyExists));
  EXPECT_EQ(bitsOf(wide), "*I.A[0]=- *I.A[1]=M[4]");
  wide->addToNet(findNet("M[5:4]"));
  second->destroy();
  EXPECT_EQ(bitsOf(wide), "*I.A[0]=M[5] *I.A[1]=M[4]");
  wide->addToNet(nullptr);
  EXPECT_EQ(bitsOf(wide), "*I.A[0]=- *I.A[1]=-");
}

// How connections are found in a design that was just loaded depends on their order and on what is asked and changed.
TEST_F(InstTerms, WalksOfALoadedDesignSeeWhatChangesMeanwhile) {
  oaVectorInst *row = vector("V", 1, 0);
  oaInst *last = place(block_, "leaf", "L", oaTransform());
  connect(net("a"), "A");
  connect(bus("N[0:1]"), "W[0:1]"); // whose bits stand among the connections
  connect(net("d"), "D");
  oaInstTerm::create(findNet("N[0:1]"), row, native("A"));
  oaInstTerm::create(net("l"), last, native("A"));
  const auto reload = [&](char mode) {
    design_->save();
    design_->close();
    design_ = open("cell", mode);
    block_ = design_->getTopBlock();
    refind();
  };
  const auto walk = [&](const char *inst) { return all(oaInst::find(block_, scalar(inst))->getInstTerms()); };
  reload('a');
  EXPECT_EQ(walk("L"), "L.A=l");
  EXPECT_EQ(walk("I"), "I.A=a I.W[0:1]=N[0:1] I.D=d");
  EXPECT_EQ(all(findNet("N[0:1]")->getInstTerms()), "I.W[0:1]=N[0:1] V[1:0].A=N[0:1]");
  EXPECT_EQ(all(inst_->getInstTerms(oacInstTermIterAllNotHidden)),
            "I.A=a I.W[0:1]=N[0:1] *I.W[0]=N[0] *I.W[1]=N[1] I.D=d");
  // An explicit connection of a bit, another one gone and one more: all in the middle of a walk.
  reload('a');
  oaIter<oaInstTerm> instTerms(inst_->getInstTerms());
  EXPECT_EQ(describe(instTerms.getNext()), "I.A=a");
  connect(oaBusNetBit::create(block_, scalar("N"), 0), "W[0]");
  find("W[0:1]")->destroy();
  oaNet *wide = findNet("N[0:1]");
  find("A")->addToNet(net("a2"));
  connect(wide, "E[0:1]");
  std::string rest;
  while (const oaInstTerm *instTerm = instTerms.getNext()) {
    rest += describe(instTerm) + ' ';
  }
  EXPECT_EQ(rest.substr(0, rest.find("I.D=d") + 6), "I.W[0]=N[0] I.D=d ");
  EXPECT_EQ(walk("I"), "I.A=a2 I.W[0]=N[0] I.D=d I.E[0:1]=N[0:1]");
  EXPECT_EQ(all(wide->getInstTerms()), "V[1:0].A=N[0:1] I.E[0:1]=N[0:1]");
  // A connection of the first instance behind those of others.
  reload('r');
  EXPECT_EQ(walk("I"), "I.A=a2 I.W[0]=N[0] I.D=d I.E[0:1]=N[0:1]");
  EXPECT_EQ(walk("L"), "L.A=l");
}

TEST_F(InstTerms, ConnectionsStayWithoutTheirNet) {
  oaNet *n = bus("N[0:1]");
  oaNet *mixed = bus("N[1],Y");
  connect(n, "A[0:1]");
  connect(mixed, "A[1],B");
  connect(oaBusNetBit::create(block_, scalar("N"), 0), "A[0]");
  oaNet *lone = net("lone");
  connect(lone, "C[3:3]");
  n->destroy();
  // N[1] is still a bit of the bundle, and N[0] is a net of its own, on which the single connection is.
  EXPECT_EQ(nameOf(find("A[0:1]")->getNet()), "-");
  EXPECT_EQ(bitsOf(find("A[0:1]")), "I.A[0]=N[0] *I.A[1]=N[1]");
  mixed->destroy();
  EXPECT_EQ(bitsOf(find("A[0:1]")), "I.A[0]=N[0] *I.A[1]=-");
  findNet("N[0]")->destroy();
  lone->destroy();
  EXPECT_EQ(bitsOf(find("A[0:1]")), "I.A[0]=- *I.A[1]=-");
  EXPECT_EQ(bitsOf(find("C[3:3]")), "*I.C[3]=-");
  EXPECT_EQ(find("C[3:3]")->getNet(), nullptr);
  reopen();
  refind();
  EXPECT_EQ(all(inst_->getInstTerms()), "I.A[0:1]=- I.A[0]=- I.A[1],B=- I.C[3:3]=-");
  find("A[0:1]")->addToNet(bus("M[0:1]"));
  EXPECT_EQ(bitsOf(find("A[0:1]")), "I.A[0]=M[0] *I.A[1]=M[1]");
}

TEST_F(InstTerms, ConnectionsGoWithTheirInstance) {
  oaVectorInst *row = vector("V", 0, 1);
  connect(net("n"), "B");
  connect(bus("N[0:1]"), "A,B2");
  connect(findNet("N[0:1]"), "A[0:1]");
  oaInstTerm::create(findNet("N[0:1]"), row, native("A"));
  oaInstTerm::create(nullptr, row, native("B[0:3]"));
  EXPECT_EQ(block_->getInstTerms(oacInstTermIterAllNotHidden).getCount(), 19u);
  row->destroy();
  EXPECT_EQ(block_->getInstTerms(oacInstTermIterAllNotHidden).getCount(), 7u);
  reopen();
  refind();
  inst_->destroy();
  EXPECT_TRUE(block_->getInstTerms(oacInstTermIterAllNotHidden).isEmpty());
  EXPECT_TRUE(findNet("N[0:1]")->getInstTerms(oacInstTermIterAllNotHidden).isEmpty());
}

TEST_F(InstTerms, TerminalsOfTheMasterAreFound) {
  oaDesign *master = open("leaf", 'w');
  oaBlock *inside = oaBlock::create(master);
  oaNet *pins = oaNet::create(inside, native("Q[0:1]"));
  oaTerm *term = oaTerm::create(pins, native("Q[0:1]"));
  term->setPosition(4);
  oaTerm *foreign = oaScalarTerm::create(net("n"), scalar("Q"));
  EXPECT_EQ(idRaisedBy([&] { oaInstTerm::create(nullptr, inst_, foreign); }),
            oaUInt4(oacTermNotInInstMasterForInstTerm));
  EXPECT_EQ(idRaisedBy([&] { oaInstTerm::create(findNet("n"), inst_, term); }),
            oaUInt4(oacNetInstTermWidthMismatchForInstTerm));
  oaInstTerm *made = oaInstTerm::create(bus("N[0:1]"), inst_, term);
  EXPECT_EQ(made->getTerm(), term);
  EXPECT_EQ(made->getBit(1)->getTerm(), term->getBit(1));
  EXPECT_TRUE(made->getBit(1)->isBound());
  EXPECT_EQ(oaInstTerm::find(inst_, term), made);
  // By position.
  oaVectorInst *row = vector("V", 0, 1);
  oaInstTerm *unbound = oaInstTerm::create(nullptr, place(block_, "none", "U", oaTransform()), 4u);
  EXPECT_EQ(unbound->getNumBits(), 0u);
  EXPECT_EQ(idRaisedBy([&] { unbound->getBit(1); }), oaUInt4(oacInvalidBusNetBitIndex));
  ASSERT_EQ(row->getMaster(), master);
  EXPECT_EQ(idRaisedBy([&] { oaInstTerm::create(findNet("N[0:1]"), row, 4u); }),
            oaUInt4(oacNetInstTermWidthMismatchForInstTerm));
  EXPECT_EQ(idRaisedBy([&] { oaInstTerm::create(findNet("n"), row, 9u); }),
            oaUInt4(oacNetInstTermWidthMismatchForInstTerm))
      << "two instance bits cannot share one bit of a net";
  oaInstTerm *byPosition = oaInstTerm::create(nullptr, row, 4u);
  EXPECT_EQ(byPosition->getNumBits(), 4u);
  EXPECT_EQ(byPosition->getTerm(), term);
  EXPECT_EQ(oaInstTerm::find(row, term), byPosition);
  byPosition->addToNet(bus("M[0:3]"));
  EXPECT_EQ(byPosition->getNumBits(), 4u);
  EXPECT_EQ(idRaisedBy([&] { oaInstTerm::create(nullptr, row, 4u); }), oaUInt4(oacInstTermAlreadyExists));
  EXPECT_EQ(idRaisedBy([&] { oaInstTerm::create(nullptr, row, native("A")); }), oaUInt4(oacInstTermMustBeByPosition));
  EXPECT_EQ(row->getInstTerms(oacInstTermIterSingleBit).getCount(), 0u);
  master->close();
}

// Beyond some number of connections an instance is searched by an index, which must follow every change.
TEST_F(InstTerms, ManyConnectionsOfOneInstanceAreFound) {
  for (int i = 0; i < 40; ++i) {
    connect(nullptr, ("T" + std::to_string(i)).c_str());
  }
  connect(bus("N[0:99]"), "A[0:99]");
  find("T7")->destroy();
  EXPECT_EQ(find("T7"), nullptr);
  EXPECT_EQ(describe(find("A[57]")), "*I.A[57]=N[57]");
  EXPECT_EQ(idRaisedBy([&] { connect(nullptr, "T8"); }), oaUInt4(oacInstTermAlreadyExists));
  find("A[0:99]")->destroy();
  EXPECT_EQ(find("A[57]"), nullptr);
  connect(nullptr, "T7");
  reopen();
  refind();
  ASSERT_NE(find("T7"), nullptr);
  EXPECT_EQ(inst_->getInstTerms(oacInstTermIterAllNotHidden).getCount(), 40u);
}
