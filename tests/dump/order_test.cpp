// What makes two dumps equal, and what must not.

#include "contents.h"

using namespace oa;

namespace {

using testing::HasSubstr;

class DumpOrder : public DumpTest {};

TEST_F(DumpOrder, CreationDoesNotShow) {
  {
    const NewView view("first", "layout", oacMaskLayout);
    const Contents contents(*view);
  }
  const std::string first = dump("first");
  {
    const NewView view("first", "layout", oacMaskLayout);
    // Rows of objects that are gone stay behind in the tables.
    oaRect::create(*view, 2, 3, oaBox(0, 0, 10, 5))->destroy();
    oaScalarNet::create(*view, scalar("z"))->destroy();
    const Contents contents(*view, Contents::Order::backwards);
  }
  EXPECT_EQ(dump("first"), first);
  EXPECT_THAT(first, HasSubstr("  rect 2/3 box=(0 0)(10 5) net=\"a\"\n    prop int \"count\" 3\n"));
}

TEST_F(DumpOrder, PropertiesKeepTheirs) {
  const auto dumpWith = [this](const char *one, const char *two) {
    {
      const NewView view("props", "layout", oacMaskLayout);
      oaIntProp::create(view.design(), one, 1);
      oaIntProp::create(view.design(), two, 1);
    }
    return dump("props");
  };
  EXPECT_NE(dumpWith("a", "b"), dumpWith("b", "a"));
}

TEST_F(DumpOrder, IsTheSameForTheOpenDesignAndTheSavedOne) {
  std::string open;
  {
    const NewView view("memory", "layout", oacMaskLayout);
    const Contents contents(*view);
    open = dump("memory");
    EXPECT_EQ(view.design()->getRefCount(), 1U);
  }
  EXPECT_EQ(dump("memory"), open);
}

// Masters in the design's own library are written without its name.
TEST_F(DumpOrder, CopiesInTwoLibrariesDifferInTheHeaderOnly) {
  createLib("copies");
  for (const char *lib : {"lib", "copies"}) {
    const NewView view("top", "layout", oacMaskLayout, lib);
    oaScalarInst::create(*view, scalar(lib), scalar("inv"), scalar("layout"), scalar("I1"), oaTransform());
    oaScalarInst::create(*view, scalar("far"), scalar("inv"), scalar("layout"), scalar("I2"), oaTransform());
  }
  std::string copy = dump("top", "layout", "copies");
  const std::string header = "library \"copies\"\n";
  ASSERT_THAT(copy, HasSubstr(header));
  copy.replace(copy.find(header), header.size(), "library \"lib\"\n");
  EXPECT_EQ(copy, dump("top"));
}

TEST_F(DumpOrder, NamesThatReadAlikeStayApart) {
  const auto dumpWith = [this](const oaName &name) {
    {
      const NewView view("names", "layout", oacMaskLayout);
      oaRect::create(*view, 1, 1, oaBox(0, 0, 1, 1))->addToNet(oaNet::create(*view, name));
    }
    return dump("names");
  };
  EXPECT_NE(dumpWith(scalar("A[3]")), dumpWith(oaVectorBitName(scalar("A"), 3)));
  EXPECT_NE(dumpWith(oaVectorBitName(scalar("A"), 3)), dumpWith(oaVectorName(scalar("A"), 3, 3)));
  EXPECT_NE(dumpWith(oaBundleName(scalar("A"), 2)), dumpWith(scalar("2*A")));
}

// One display shows a property of the first rectangle twice, or one of each: the same lines, belonging elsewhere.
TEST_F(DumpOrder, DisplaysBelongToWhatTheyShow) {
  const auto dumpWith = [this](bool onBoth) {
    {
      const NewView view("shown", "layout", oacMaskLayout);
      oaProp *props[2];
      for (oaProp *&prop : props) {
        prop = oaIntProp::create(oaRect::create(*view, 1, 1, oaBox(0, 0, 1, 1)), "w", 1);
      }
      for (int i = 0; i < 2; ++i) {
        oaPropDisplay::create(props[onBoth ? i : 0], 1, 1, oaPoint(), oacLowerLeftTextAlign, oacR0, oacStickFont, 1);
      }
    }
    return dump("shown");
  };
  EXPECT_NE(dumpWith(true), dumpWith(false));
}

TEST_F(DumpOrder, DisplayOfItsOwnPropertyIsShownOnce) {
  {
    const NewView view("own", "layout", oacMaskLayout);
    oaProp *prop = oaIntProp::create(oaRect::create(*view, 1, 1, oaBox(0, 0, 1, 1)), "w", 1);
    oaPropDisplay *display =
        oaPropDisplay::create(prop, 1, 1, oaPoint(), oacLowerLeftTextAlign, oacR0, oacStickFont, 1);
    prop->moveTo(display);
  }
  EXPECT_THAT(dump("own"),
              HasSubstr("displays\n  propDisplay 1/1 format=name origin=(0 0) align=lowerLeft orient=R0 "
                        "font=stick height=1 overbar=no visible=yes drafting=yes\n    prop int \"w\" 1\n"));
}

TEST_F(DumpOrder, UnknownViewIsAnErrorLineAndNoText) {
  {
    const NewView view("deep", "layout", oacMaskLayout);
    oaObject *owner = view.design();
    for (int level = 0; level < 300; ++level) {
      owner = oaHierProp::create(owner, "p");
    }
  }
  const struct {
    const char *name, *cell, *line;
  } cases[] = {
      {"no such view", "nothing", "ERROR (getViewDump): "},
      {"nested too deep", "deep", "ERROR (getViewDump): n \n"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    testing::internal::CaptureStdout();
    EXPECT_EQ(dump(c.cell), "");
    std::fflush(stdout);
    EXPECT_THAT(testing::internal::GetCapturedStdout(), testing::StartsWith(c.line));
  }
}

} // namespace
