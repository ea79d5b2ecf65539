#include "techtest.h"

using namespace techtest;

namespace {

class Attachments : public TechTest {};

TEST_F(Attachments, AreFollowed) {
  EXPECT_FALSE(oaTech::hasAttachment(lib));
  EXPECT_EQ(raisedBy([&] { oaTech::detach(lib); }), oacDetachNoAttachment);
  oaScalarName name;
  EXPECT_EQ(raisedBy([&] { oaTech::getAttachment(lib, name); }), oacGetAttachmentNoAttachment);

  oaTech::attach(lib, named("M"));
  oaTech::getAttachment(lib, name);
  EXPECT_EQ(name, named("M"));
  EXPECT_FALSE(oaTech::exists(lib)) << "M has no technology yet";
  oaTech *tech = oaTech::create(other);
  EXPECT_EQ(oaTech::open(lib, 'r'), tech);
  EXPECT_EQ(oaTech::find(lib), tech);
  EXPECT_TRUE(oaTech::exists(lib));
  EXPECT_FALSE(oaTech::exists(lib, false));
  EXPECT_EQ(raisedBy([&] { oaTech::create(lib); }), oacTechAttachedTechLibDetected);
  EXPECT_EQ(raisedBy([&] { oaTech::attach(other, named("L")); }), oacAttachLibraryHasLocalTech);
  EXPECT_EQ(raisedBy([&] { oaTech::destroy(lib); }), oacDestroyWithAttachProperty);

  // It stays on disk.
  lib->close();
  lib = oaLib::open(named("L"), path("L").c_str());
  EXPECT_EQ(oaTech::find(lib), tech);
  oaTech::detach(lib);
  EXPECT_EQ(oaTech::find(lib), nullptr);
  tech->purge();
}

TEST_F(Attachments, ThatLeadNowhereRaise) {
  oaTech::attach(lib, named("unknown"));
  std::string message;
  EXPECT_EQ(raisedBy([&] { oaTech::open(lib, 'r'); }, &message), oacCannotFindInheritedTechLib);
  EXPECT_THAT(message, testing::HasSubstr("unknown"));
  oaTech::attach(lib, named("M"));
  oaTech::attach(other, named("L"));
  EXPECT_EQ(raisedBy([&] { oaTech::open(lib, 'r'); }), oacCannotFindInheritedTechLib);
  EXPECT_FALSE(oaTech::exists(lib));
  EXPECT_EQ(oaTech::find(lib), nullptr);
}

} // namespace
