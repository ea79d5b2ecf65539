// Libraries, cells, views, library definitions and management data.

#include "tcltest.h"

namespace {

using namespace tcltest;
using testing::HasSubstr;

struct Case {
  const char *name, *script, *expected;
};

class Libraries : public TclTest {
protected:
  template <std::size_t N> void check(const Case (&cases)[N]) {
    for (const Case &c : cases) {
      SCOPED_TRACE(c.name);
      EXPECT_EQ(eval(c.script), c.expected);
    }
  }
};

TEST_F(Libraries, CellsAndViews) {
  eval("library; foreach cell {one two} {design $cell; oa::save $d; oa::close $d}; set l [oa::LibFind $lib]");
  const Case cases[] = {
      {"type", "oa::getType $l", "Lib"},
      {"path", "expr {[oa::getFullPath $l] eq \"$folder/lib\"}", "1"},
      {"mode", "oa::getMode $l", "shared"},
      {"access", "list [oa::getAccessLevel $l] [oa::getAccess $l read 10] [oa::getAccessLevel $l]",
       "{no access} 1 {read access}"},
      {"cells", "lsort [names [oa::getCells $l]]", "one two"},
      {"views", "names [oa::getViews $l]", "layout"},
      {"cell views", "oa::getCount [oa::getCellViews $l]", "2"},
      {"find", "oa::getName [oa::CellFind $l one]", "one"},
      {"not there", "oa::CellFind $l three", ""},
      {"cell view", "set cv [oa::CellViewFind $l one layout]; oa::getName [oa::getCell $cv]", "one"},
      {"by objects",
       "expr {[oa::CellViewFind [oa::CellFind $l one] [oa::ViewFind $l layout [oa::ViewTypeGet maskLayout]]] eq $cv}",
       "1"},
      {"file", "oa::getName [oa::getPrimary $cv]", "layout.oa"},
      {"released", "oa::releaseAccess $l; oa::getAccessLevel $l", "no access"},
      {"exists", "list [oa::LibExists $folder/lib] [oa::LibExists $folder/none]", "1 0"},
      {"open ones", "expr {$l in [members [oa::LibGetOpenLibs]]}", "1"},
      {"attributes",
       "oa::getAccess $l write; oa::setAttributes $l {{owner me} {kind test}}; expr {{kind test} in [oa::getAttributes "
       "$l]}",
       "1"},
  };
  check(cases);
}

TEST_F(Libraries, ManagementData) {
  eval("library; design cell; oa::save $d");
  const Case cases[] = {
      {"none", "oa::CellDMDataExists $lib cell", "0"},
      {"write",
       "set dm [oa::CellDMDataOpen $lib cell w]; oa::StringPropCreate $dm note text; oa::save $dm; oa::close $dm\n"
       "oa::CellDMDataExists $lib cell",
       "1"},
      {"read", "set dm [oa::CellDMDataOpen $lib cell r]; oa::getValue [oa::PropFind $dm note]", "text"},
      {"names", "oa::getCellName $dm; ", "cell"},
      {"library's", "oa::close $dm; oa::getType [set dm [oa::LibDMDataOpen $lib w]]", "LibDMData"},
      {"by container", "oa::purge $dm; set l [oa::LibFind $lib]; oa::DMDataExists $l", "0"},
  };
  check(cases);
}

TEST_F(Libraries, Definitions) {
  writeFile(folder() / "good.defs", "DEFINE definedlib " + (folder() / "deflib").string() + "\n");
  writeFile(folder() / "bad.defs", "DEFINE missinglib " + (folder() / "nowhere").string() + "\n");
  eval("oa::close [oa::LibCreate definedlib $folder/deflib]");
  const Case cases[] = {
      {"opens libraries", "oa::LibDefListOpenLibs $folder/good.defs; oa::getName [oa::LibFind definedlib]",
       "definedlib"},
      {"top list", "set top [oa::LibDefListGetTopList]; oa::getPath $top; oa::getCount [oa::getMembers $top]", "1"},
      {"member", "set def [oa::LibDefFind $top definedlib]; expr {[oa::getLibPath $def] eq \"$folder/deflib\"}", "1"},
      {"made and saved",
       "set list [oa::LibDefListGet $folder/new.defs w]\n"
       "oa::LibDefCreate $list other $folder/deflib; oa::save $list; oa::getType [oa::LibDefFind $list other]",
       "LibDef"},
      {"nothing of that name", "oa::LibDefFind $list none", ""},
  };
  check(cases);
  EXPECT_THAT(readFile(folder() / "new.defs"), HasSubstr("other"));
  EXPECT_THAT(failure("oa::LibDefListOpenLibs $folder/bad.defs"), HasSubstr("nowhere"));
  EXPECT_EQ(errorCode(), "OA LIBDEFS");
  EXPECT_EQ(eval("oa::setLibDefListErrorLogging false; oa::LibDefListOpenLibs $folder/bad.defs"), "");
  EXPECT_EQ(eval("oa::setLibDefListErrorLogging 1"), "");
  EXPECT_THAT(failure("oa::LibDefListOpenLibs $folder/none.defs"), HasSubstr("none.defs"));
  EXPECT_EQ(errorCode(), "OA 3069");
}

} // namespace
