#include "diskname.h"

#include "dmtest.h"

using namespace dmtest;

namespace {

class NamesOnDisk : public DMTest {};

TEST_F(NamesOnDisk, StayInsideTheirLibrary) {
  const struct {
    const char *native, *directory;
  } cases[] = {
      {"nand2", "nand2"},         {"foo bar", "foo#20bar"}, {"a-b", "a#2db"},
      {"nand2.x1", "nand2#2ex1"}, {"..", "#2e#2e"},         {".", "#2e"},
      {"A@_9", "A@_9"},           {"\xc3\xa9", "#c3#a9"},   {"$x\\y", "#24x#5cy"},
  };
  oaLib *lib = createLib("L");
  lib->getAccess(oacWriteLibAccess);
  for (const auto &c : cases) {
    SCOPED_TRACE(c.native);
    EXPECT_EQ(nameOf(oaCell::get(lib, named(c.native))), c.native);
    EXPECT_TRUE(std::filesystem::is_directory(path("L/") + c.directory));
    EXPECT_TRUE(kit::isDiskName(c.directory));
    EXPECT_EQ(kit::nativeText(c.directory), c.native);
  }
  lib->close();
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(path("L")), {}), std::ptrdiff_t(std::size(cases)) + 1);
}

TEST_F(NamesOnDisk, RefusedNamesLeaveNothingBehind) {
  oaLib *lib = createLib("L");
  lib->getAccess(oacWriteLibAccess);
  oaScalarName hierarchical;
  hierarchical.init(oaNativeNS(), "up/down");
  EXPECT_EQ(raisedBy([&] { oaCell::get(lib, hierarchical); }), oacHierNameInvalid);
  EXPECT_EQ(raisedBy([&] { oaCell::get(lib, oaScalarName()); }), oacInvalidNameLength);
  EXPECT_EQ(raisedBy([&] { oaCell::get(lib, named(std::string(256, 'x'))); }), oacInvalidNameLength);
  EXPECT_EQ(raisedBy([&] { oaCell::get(lib, named(std::string(100, '-'))); }), oacInvalidNameLength)
      << "100 characters, 300 bytes on disk";
  EXPECT_EQ(raisedBy([&] { oaLib::create(hierarchical, path("other").c_str()); }), oacInvalidLibName);
  EXPECT_TRUE(lib->getCells().isEmpty());
  lib->close();
}

} // namespace
