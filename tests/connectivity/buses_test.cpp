// Nets of several bits: what they make, share, and leave behind.

#include "netstest.h"

#include <functional>

using namespace connectivitytest;

namespace {

constexpr oaUInt4 kAllNets = oacNetIterAll;

class Buses : public Nets {
protected:
  oaNet *make(const char *name) { return oaNet::create(block_, native(name)); }
  oaNet *find(const char *name) const { return oaNet::find(block_, native(name)); }
  oaBundleNet *bundle(const char *name) { return oaBundleNet::create(block_, oaBundleName(oaNativeNS(), name)); }
  std::string explicitNets() const { return namesOf<oaNet>(block_->getNets()); }
  std::string allNets() const { return namesOf<oaNet>(block_->getNets(kAllNets)); }
  static std::string bits(const oaNet *net) {
    std::string names;
    for (oaUInt4 i = 0; i < net->getNumBits(); ++i) {
      oaString name;
      net->getBit(i)->getName(oaNativeNS(), name);
      names += (i == 0 ? "" : " ") + std::string(name);
    }
    return names;
  }
};

} // namespace

TEST_F(Buses, BitsComeInWrittenOrder) {
  const struct {
    const char *name;
    oaTypeEnum type;
    const char *bits;
  } cases[] = {
      {"A", oacScalarNetType, "A"},
      {"B[3]", oacBusNetBitType, "B[3]"},
      {"C[0:3]", oacBusNetType, "C[0] C[1] C[2] C[3]"},
      {"C[3:0]", oacBusNetType, "C[3] C[2] C[1] C[0]"},
      {"C[3:3]", oacBusNetType, "C[3]"},
      {"D[0:6:2]", oacBusNetType, "D[0] D[2] D[4] D[6]"},
      {"D[7:0:3]", oacBusNetType, "D[7] D[4] D[1]"},
      {"E,2*F,G[1:0]", oacBundleNetType, "E F F G[1] G[0]"},
      {"2*H[0:1],A,H[0]", oacBundleNetType, "H[0] H[1] H[0] H[1] A H[0]"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    oaNet *net = make(c.name);
    EXPECT_EQ(oaTypeEnum(net->getType()), c.type);
    oaString name;
    net->getName(oaNativeNS(), name);
    EXPECT_STREQ(name, c.name);
    EXPECT_EQ(bits(net), c.bits);
    EXPECT_EQ(find(c.name), net);
    EXPECT_EQ(idRaisedBy([&] { net->getBit(net->getNumBits()); }), oaUInt4(oacInvalidBusNetBitIndex));
    oaName whole;
    net->getName(whole);
    EXPECT_TRUE(whole == native(c.name));
  }
  EXPECT_EQ(namesOf<oaBitNet>(find("2*H[0:1],A,H[0]")->getSingleBitMembers()), "H[0] H[1] A");
}

TEST_F(Buses, ABundleOfOneMemberIsANetBesideIt) {
  oaNet *bus = make("D[0:3]");
  oaBundleNet *alone = bundle("D[0:3]");
  EXPECT_NE(alone, bus);
  EXPECT_EQ(oaBundleNet::find(block_, oaBundleName(oaNativeNS(), "D[0:3]")), alone);
  EXPECT_EQ(oaBusNet::find(block_, scalar("D"), 0, 3, 1), bus);
  EXPECT_EQ(alone->getNumMembers(), 1u);
  EXPECT_EQ(alone->getMember(0), bus);
  EXPECT_EQ(alone->getBit(2), bus->getBit(2));
  oaString name;
  alone->getName(oaNativeNS(), name);
  EXPECT_EQ(name, "D[0:3]");
  EXPECT_EQ(idRaisedBy([&] { alone->getMember(1); }), oaUInt4(oacInvalidBundleNetMemberIndex));
  oaBundleNet *scalarBundle = bundle("A");
  EXPECT_TRUE(oaScalarNet::find(block_, scalar("A"))->isImplicit());
  EXPECT_EQ(scalarBundle->getNumBits(), 1u);
}

TEST_F(Buses, CreatingAnImplicitNetPromotesIt) {
  oaBundleNet *whole = bundle("A,D[1:0]");
  EXPECT_EQ(explicitNets(), "A,D[1:0]");
  EXPECT_EQ(allNets(), "A D[1:0] D[1] D[0] A,D[1:0]");
  oaNet *scalarMember = find("A");
  oaNet *bit = find("D[1]");
  EXPECT_TRUE(scalarMember->isImplicit());
  EXPECT_EQ(net("A"), scalarMember) << "the same object";
  EXPECT_EQ(make("D[1]"), bit);
  EXPECT_FALSE(scalarMember->isImplicit() || bit->isImplicit());
  EXPECT_EQ(idRaisedBy([&] { net("A"); }), oaUInt4(oacNetExists));
  EXPECT_EQ(namesOf<oaNet>(block_->getNets(oacNetIterSingleBit | oacNetIterNotImplicit)), "A D[1]");
  EXPECT_EQ(namesOf<oaNet>(block_->getNets(oacNetIterBundle)), "A,D[1:0]");

  bit->destroy();
  ASSERT_TRUE(bit->isValid()) << "the bundle still needs it";
  EXPECT_TRUE(bit->isImplicit());
  whole->destroy();
  EXPECT_EQ(allNets(), "A") << "what nobody made and nobody needs is gone, down to the definition";
  EXPECT_EQ(oaBusNetDef::find(block_, scalar("D")), nullptr);
}

TEST_F(Buses, ImplicitNetsCannotBeChanged) {
  make("D[0:1]");
  oaNet *bit = find("D[0]");
  oaRect *rect = oaRect::create(block_, 1, 1, oaBox(0, 0, 1, 1));
  oaInst *inst = place(block_, "leaf", "I1", oaTransform());
  const struct {
    const char *name;
    std::function<void()> action;
    oaUInt4 id;
  } cases[] = {
      {"destroy", [&] { bit->destroy(); }, oacCannotDestroyImplicitNet},
      {"figure", [&] { rect->addToNet(bit); }, oacCannotAddFigToImplicitNet},
      {"terminal", [&] { oaTerm::create(bit, native("T")); }, oacCannotCreateTermWithImplicitNet},
      {"instance terminal", [&] { oaInstTerm::create(bit, inst, native("Z")); }, oacInstTermNetImplicit},
      {"global", [&] { bit->setGlobal(true); }, 1612},
      {"signal type", [&] { bit->setSigType(oacPowerSigType); }, 1613},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(idRaisedBy(c.action), c.id);
  }
  EXPECT_FALSE(rect->hasNet());
  EXPECT_FALSE(bit->isGlobal());
  find("D[0:1]")->setGlobal(true);
  EXPECT_TRUE(bit->isGlobal()) << "a bit of a global bus";
}

TEST_F(Buses, NamesThatClashAreRefusedAndMakeNothing) {
  net("S");
  make("B[0:1]");
  const std::string before = allNets();
  const struct {
    const char *name;
    oaUInt4 id;
  } cases[] = {
      {"S[0]", oacBusNetBaseNameMatchesScalarName},
      {"S[0:3]", oacBusNetBaseNameMatchesScalarName},
      {"B", oacScalarNetNameMatchesBusBaseName},
      {"X,S[1]", oacBusNetBaseNameMatchesScalarName},
      {"X,B", oacScalarNetNameMatchesBusBaseName},
      {"Y,Y[0]", oacBusNetBaseNameMatchesScalarName},
      {"B[0:1]", oacNetExists},
      {"N__3[0:1]", oacBusNetNameMatchesAutoName},
      {"X,a/b", oacHierPathDoesNotExist},
      {"B[0:4000000000]", oacInvalidNetName},
      {"3000000*X", oacInvalidNetName},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(idRaisedBy([&] { make(c.name); }), c.id);
    EXPECT_FALSE(oaNet::isValidName(block_, native(c.name)));
  }
  EXPECT_EQ(allNets(), before);
  EXPECT_TRUE(oaNet::isValidName(block_, native("B[1:0],S")));
  // A scalar that merely looks like a bit is neither that bit nor in its way.
  oaScalarNet *looksLikeBit = net("B[7]");
  EXPECT_EQ(make("B[7]")->getType(), oaType(oacBusNetBitType));
  EXPECT_EQ(oaScalarNet::find(block_, scalar("B[7]")), looksLikeBit);
}

TEST_F(Buses, DefinitionsKnowTheirBusesAndBits) {
  make("D[5]");
  make("D[2:3]");
  oaBusNetDef *def = oaBusNetDef::find(block_, scalar("D"));
  ASSERT_NE(def, nullptr);
  EXPECT_TRUE(def->isImplicit());
  EXPECT_EQ(def->getMinIndex(), 2u);
  EXPECT_EQ(def->getMaxIndex(), 5u);
  EXPECT_EQ(def->getNumBits(), 3u);
  EXPECT_EQ(namesOf<oaBusNet>(def->getBusNets()), "D[2:3]");
  EXPECT_EQ(namesOf<oaBusNetBit>(def->getBusNetBits()), "D[5] D[2] D[3]");
  EXPECT_EQ(static_cast<oaBusNetBit *>(find("D[5]"))->getDef(), def);
  EXPECT_EQ(static_cast<oaBusNetBit *>(find("D[5]"))->getBitIndex(), 5u);
  EXPECT_EQ(idRaisedBy([&] { def->destroy(); }), oaUInt4(oacCannotDestroyBusNetDefWithNets));
  EXPECT_EQ(oaBusNetDef::create(block_, scalar("D"), oacDescendingBitOrder), def) << "explicit from now on";
  find("D[5]")->destroy();
  find("D[2:3]")->destroy();
  ASSERT_TRUE(def->isValid());
  EXPECT_EQ(def->getNumBits(), 0u);
  EXPECT_EQ(oaBitOrderEnum(def->getBitOrder()), oacDescendingBitOrder);
  def->destroy();
  EXPECT_TRUE(block_->getBusNetDefs().isEmpty());
  EXPECT_NE(net("D"), nullptr) << "the name is free again";
}

TEST_F(Buses, SharedBitsOutliveOneOfTheirBuses) {
  make("A[0:3]");
  make("A[3:2]");
  oaNet *shared = find("A[2]");
  EXPECT_EQ(find("A[0:3]")->getBit(2), shared);
  EXPECT_EQ(find("A[3:2]")->getBit(1), shared);
  find("A[0:3]")->destroy();
  EXPECT_EQ(allNets(), "A[2] A[3] A[3:2]");
  find("A[3:2]")->destroy();
  EXPECT_EQ(allNets(), "");
}

TEST_F(Buses, EverythingComesBackAfterSaving) {
  net("gone");
  make("A[0:1]");
  bundle("B,2*A[1],C[3:1:2]");
  net("B");
  oaNet *bus = make("C[1:3:2]");
  bus->setGlobal(true);
  oaLine::create(block_, 228, oavPurposeNumberDrawing, oaPointArray(oaBox(0, 0, 10, 10)))->addToNet(bus);
  find("gone")->destroy(); // rows move up when this is saved
  const std::string before = allNets();
  const std::string bundleBits = bits(find("B,2*A[1],C[3:1:2]"));
  reopen();
  EXPECT_EQ(allNets(), before);
  EXPECT_EQ(explicitNets(), "A[0:1] B B,2*A[1],C[3:1:2] C[1:3:2]");
  EXPECT_EQ(bits(find("B,2*A[1],C[3:1:2]")), bundleBits);
  oaIter<oaShape> shapes(block_->getShapes());
  const oaShape *line = shapes.getNext();
  EXPECT_EQ(line->getNet(), find("C[1:3:2]"));
  EXPECT_EQ(line->getNet()->getNumBits(), 2u);
  EXPECT_TRUE(find("C[3]")->isGlobal());
  EXPECT_TRUE(block_->hasMultiBitNet() && block_->hasGlobalNet());
  block_->destroy();
  EXPECT_EQ(design_->getTopBlock(), nullptr);
}

TEST_F(Buses, ManyBitsAreMadeAndDestroyedInReasonableTime) {
  oaNet *wide = make("W[0:99999]");
  EXPECT_EQ(bundle("2*W[99999:0],X")->getNumBits(), 200001u);
  EXPECT_EQ(wide->getSingleBitMembers().getCount(), 100000u);
  oaIter<oaNet> nets(block_->getNets());
  while (oaNet *each = nets.getNext()) {
    each->destroy();
  }
  EXPECT_EQ(allNets(), "");
}

TEST_F(Buses, EquivalentNetsHaveOnePreferred) {
  oaBitNet *a = net("A");
  oaBitNet *b = net("B");
  oaBitNet *c = net("C");
  oaScalarTerm::create(c, scalar("T"));
  EXPECT_TRUE(a->isPreferredEquivalent());
  EXPECT_EQ(idRaisedBy([&] { a->breakEquivalence(); }), 1112u);
  a->makeEquivalent(b);
  c->makeEquivalent(b);
  EXPECT_EQ(namesOf<oaBitNet>(b->getEquivalentNets()), "A B C");
  EXPECT_EQ(b->getPreferredEquivalent(), c) << "that of the net which was asked to join";
  EXPECT_EQ(a->getTerms().getCount(), 0u);
  EXPECT_EQ(namesOf<oaTerm>(a->getTerms(oacTermIterNotImplicit | oacTermIterEquivNets)), "T");
  b->setPreferredEquivalent();
  EXPECT_EQ(namesOf<oaNet>(block_->getNets(oacNetIterAll | oacNetIterPreferred)), "B");
  oaTerm *term = oaTerm::find(block_, native("T"));
  EXPECT_EQ(term->getNet(), c);
  EXPECT_EQ(term->getNet(true), b);
  reopen();
  a = oaScalarNet::find(block_, scalar("A"));
  b = oaScalarNet::find(block_, scalar("B"));
  EXPECT_EQ(a->getPreferredEquivalent(), b);
  b->destroy();
  EXPECT_EQ(namesOf<oaBitNet>(a->getEquivalentNets()), "A C");
  a->breakEquivalence();
  EXPECT_TRUE(oaScalarNet::find(block_, scalar("C"))->isPreferredEquivalent());
  EXPECT_TRUE(a->getEquivalentNets().isEmpty());
}
