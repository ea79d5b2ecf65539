// Terminals of several bits.

#include "netstest.h"

#include <functional>

using namespace connectivitytest;

namespace {

class BusTerms : public Nets {
protected:
  oaNet *make(const char *name) { return oaNet::create(block_, native(name)); }
  oaTerm *term(oaNet *net, const char *name, oaTermType type = oacInputOutputTermType) {
    return oaTerm::create(net, native(name), type);
  }
  oaTerm *find(const char *name) const { return oaTerm::find(block_, native(name)); }
  std::string allTerms() const { return namesOf<oaTerm>(block_->getTerms(oacTermIterAll)); }
  // "bit@net" for each bit.
  static std::string connections(const oaTerm *term) {
    std::string text;
    for (oaUInt4 i = 0; i < term->getNumBits(); ++i) {
      oaString bit, net;
      term->getBit(i)->getName(oaNativeNS(), bit);
      term->getBit(i)->getNet()->getName(oaNativeNS(), net);
      text += (i == 0 ? "" : " ") + std::string(bit) + "@" + std::string(net);
    }
    return text;
  }
};

} // namespace

TEST_F(BusTerms, BitsLieOnTheBitsOfTheNet) {
  oaTerm *bus = term(make("N[3:0]"), "T[0:3]", oacInputTermType);
  EXPECT_EQ(bus->getType(), oaType(oacBusTermType));
  EXPECT_EQ(connections(bus), "T[0]@N[3] T[1]@N[2] T[2]@N[1] T[3]@N[0]");
  EXPECT_EQ(oaTermTypeEnum(bus->getBit(0)->getTermType()), oacInputTermType);
  EXPECT_TRUE(bus->getBit(0)->isImplicit());
  oaTerm *bundle = term(make("A,2*B,C[0:1]"), "P,2*Q,R[5:4]");
  EXPECT_EQ(connections(bundle), "P@A Q@B Q@B R[5]@C[0] R[4]@C[1]");
  EXPECT_EQ(find("R[5:4]")->getNet(), oaNet::find(block_, native("C[0:1]"))) << "the member in the same place";
  EXPECT_EQ(namesOf<oaTerm>(block_->getTerms()), "T[0:3] P,2*Q,R[5:4]");
  EXPECT_EQ(namesOf<oaTerm>(block_->getTerms(oacTermIterBundle)), "P,2*Q,R[5:4]");
  EXPECT_EQ(namesOf<oaTerm>(block_->getTerms(oacTermIterSingleBit | oacTermIterNotImplicit)), "");
  reopen();
  EXPECT_EQ(connections(find("T[0:3]")), "T[0]@N[3] T[1]@N[2] T[2]@N[1] T[3]@N[0]");
  EXPECT_EQ(connections(find("P,2*Q,R[5:4]")), "P@A Q@B Q@B R[5]@C[0] R[4]@C[1]");
  EXPECT_EQ(oaBusTermDef::find(block_, scalar("T"))->getMaxIndex(), 3u);
}

TEST_F(BusTerms, ABitNeedsNoBus) {
  oaBusNetBit *net = oaBusNetBit::create(block_, scalar("D"), 3);
  oaBusTermBit *bit = oaBusTermBit::create(net, scalar("D"), 3);
  EXPECT_FALSE(bit->isImplicit());
  EXPECT_EQ(bit->getNet(), net);
  EXPECT_EQ(bit->getBitIndex(), 3u);
  EXPECT_EQ(bit->getDef()->getNumBits(), 1u);
  bit->setTermType(oacOutputTermType);
  EXPECT_EQ(term(net, "S")->getType(), oaType(oacScalarTermType)) << "a scalar terminal on a bit of a bus";
}

TEST_F(BusTerms, RefusalsHaveTheirIdsAndChangeNothing) {
  oaNet *wide = make("N[0:3]");
  oaNet *other = make("M[0:3]");
  oaNet *bit = make("X");
  term(wide, "T[0:3]");
  term(bit, "S");
  oaTerm *implicit = find("T[1]");
  const std::string before = allTerms();
  const struct {
    const char *name;
    std::function<void()> action;
    oaUInt4 id;
  } cases[] = {
      {"width", [&] { term(wide, "U[0:1]"); }, oacNetTermWidthMismatch},
      {"implicit net", [&] { term(wide->getBit(0), "U"); }, oacCannotCreateTermWithImplicitNet},
      {"twice", [&] { term(wide, "T[0:3]"); }, oacTermExists},
      {"shared bits on other nets", [&] { term(other, "T[3:0]"); }, oacTermMemberExists},
      {"one bit on another net", [&] { term(bit, "T[1]"); }, oacTermMemberExists},
      {"repeated on two nets", [&] { term(make("Y,Z"), "2*U"); }, oacTermNetMismatchInRepeatedMembers},
      {"scalar named like a base", [&] { term(bit, "T"); }, oacScalarTermNameMatchesBusBaseName},
      {"base named like a scalar", [&] { term(bit, "S[0]"); }, oacBusTermBaseNameMatchesScalarName},
      {"destroy of a bit", [&] { implicit->destroy(); }, oacCannotDestroyImplicitTerm},
      {"pin on a bit", [&] { oaPin::create(implicit); }, oacTermCannotBeImplicit},
      {"type of a bit", [&] { implicit->setTermType(oacInputTermType); }, 1147},
      {"move to a narrower net", [&] { find("T[0:3]")->moveToNet(bit); }, oacNetTermWidthMismatch},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(idRaisedBy(c.action), c.id);
    EXPECT_EQ(allTerms(), before);
  }
}

TEST_F(BusTerms, PromotionAndFallingBack) {
  oaNet *net = make("N[0:1]");
  make("N[0]");
  oaTerm *bus = term(net, "T[0:1]");
  oaTerm *bit = find("T[0]");
  EXPECT_EQ(term(net->getBit(0), "T[0]"), bit);
  oaPin::create(bit);
  EXPECT_FALSE(bit->isImplicit());
  bit->destroy();
  ASSERT_TRUE(bit->isValid());
  EXPECT_TRUE(bit->isImplicit());
  EXPECT_TRUE(block_->getPins().isEmpty());
  bus->destroy();
  EXPECT_EQ(allTerms(), "");
}

TEST_F(BusTerms, MovingATerminalTakesItsBitsAlong) {
  oaTerm *bus = term(make("N[0:1]"), "T[0:1]");
  oaNet *to = make("A,B");
  bus->moveToNet(to);
  EXPECT_EQ(connections(bus), "T[0]@A T[1]@B");
  EXPECT_TRUE(oaNet::find(block_, native("N[0]"))->getTerms(0).isEmpty());
  oaNet::find(block_, native("N[0:1]"))->destroy();
  EXPECT_EQ(connections(bus), "T[0]@A T[1]@B");
}

TEST_F(BusTerms, GoWithTheirNet) {
  oaNet *wide = make("A,B");
  oaNet *a = make("A");
  oaTerm *bus = term(wide, "T[0:1]");
  term(a, "S");
  a->destroy();
  EXPECT_EQ(allTerms(), "T[0:1] T[0] T[1]") << "the bit lives on as a member of the bundle, and what it needs with it";
  wide->destroy();
  EXPECT_FALSE(bus->isValid());
  EXPECT_EQ(allTerms(), "");
}
