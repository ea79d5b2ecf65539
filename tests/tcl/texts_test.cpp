// Texts of databases are bytes, each a character of Latin-1 in Tcl; paths are in the encoding of the system.

#include "tcltest.h"

#include "oa/oaDesignDB.h"

namespace {

using namespace tcltest;
using testing::HasSubstr;

constexpr char kEAcute[] = "\303\251"; // in UTF-8; the byte of Latin-1 is \351
constexpr char kEuro[] = "\342\202\254";

class Texts : public TclTest {
protected:
  Texts() {
    eval("set before [encoding system]; encoding system utf-8; set e \\u00e9; set euro \\u20ac");
    eval("library; design c$e");
  }
  ~Texts() override { eval("encoding system $before"); }

  oa::oaDesign *design() {
    const oa::oaNativeNS ns;
    return oa::oaDesign::find(oa::oaScalarName(ns, eval("set lib").c_str()), oa::oaScalarName(ns, "c\351"),
                              oa::oaScalarName(ns, "layout"));
  }
};

TEST_F(Texts, AreTheBytesThatThePlugInReads) {
  ASSERT_NE(design(), nullptr);
  eval("oa::StringPropCreate $d p$e v$e");
  const oa::oaProp *prop = oa::oaProp::find(design(), "p\351");
  ASSERT_NE(prop, nullptr);
  oa::oaString value;
  prop->getValue(value);
  EXPECT_EQ(std::string(value), "v\351");
  eval("oa::save $d");
  EXPECT_TRUE(std::filesystem::exists(folder() / "lib" / "c#e9" / "layout"));
  // Whatever somebody has stored comes through and is found again.
  oa::oaStringProp::create(design(), kEAcute, kEuro);
  EXPECT_EQ(eval("oa::getValue [oa::PropFind $d [encoding convertto utf-8 $e]]"), "\303\242\302\202\302\254");
  EXPECT_EQ(eval("encoding convertfrom utf-8 [oa::getValue [lindex [members [oa::getProps $d]] end]]"), kEuro);
}

TEST_F(Texts, ComeBackAsTheyWent) {
  const struct {
    const char *name, *script;
  } cases[] = {
      {"name", "oa::getName [oa::NetCreate $b $e]"},
      {"bus", "string index [oa::getName [oa::NetCreate $b ${e}2\\[0:3\\]]] 0"},
      {"object of a name", "oa::get [oa::ScalarName [oa::NativeNS] $e] [oa::NativeNS]"},
      {"cell", "string index [oa::getCellName $d] 1"},
      {"text", "oa::getText [oa::TextCreate $b 1 1 $e {0 0} lowerLeft R0 stick 1]"},
      {"layer", "oa::getName [oa::PhysicalLayerCreate $tech $e 9]"},
      {"enumeration property", "lindex [oa::getEnums [oa::EnumPropCreate $d k $e [list a $e]]] 1"},
      {"parameter", "lindex [oa::get [oa::ParamArray [list [list n string $e]]] 0] 2"},
      {"name of a parameter", "oa::getName [oa::Param $e 1]"},
      {"text of a parameter", "oa::getStringVal [oa::Param n $e]"},
      {"array of texts", "oa::get [oa::StringArray [list a $e]] 1"},
      {"attribute of a library", "oa::getName [oa::DMAttr $e x]"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(eval(c.script), kEAcute);
  }
}

// A program may evaluate a text of Latin-1 as it is. Tcl keeps such a byte, and takes it for the character.
TEST_F(Texts, BytesOfAScriptThatIsNoUtf8AreLatin1) {
  EXPECT_EQ(eval("oa::DesignExists $lib c\351 layout"), eval("oa::DesignExists $lib c$e layout"));
  EXPECT_EQ(eval("expr {[oa::DesignFind $lib c\351 layout] eq $d}"), "1");
}

TEST_F(Texts, OtherCharactersAreRefused) {
  for (const char *script :
       {"oa::StringPropCreate $d p $euro", "oa::NetCreate $b $euro", "oa::NetFind $b $euro",
        "oa::BusNetCreate $b $euro", "oa::PropFind $d a\\u0000", "oa::EnumPropCreate $d k a [list a $euro]"}) {
    SCOPED_TRACE(script);
    EXPECT_THAT(failure(script), HasSubstr("has characters that a library cannot hold; only Latin-1 is possible"));
    EXPECT_EQ(errorCode(), "OA VALUE");
  }
  EXPECT_THAT(failure("oa::ParamArray [list [list n string $euro]]"), HasSubstr("beyond Latin-1"));
  EXPECT_EQ(eval("oa::getCount [oa::getProps $d]"), "0");
}

TEST_F(Texts, PathsAreThoseOfTheSystem) {
  const struct { const char *encoding, *directory; } cases[] = {{"utf-8", "\303\251-utf"}, {"iso8859-1", "\351-latin"}};
  for (const auto &c : cases) {
    SCOPED_TRACE(c.encoding);
    eval(std::string("encoding system ") + c.encoding);
    eval("set path $folder/$e-" + std::string(c.directory).substr(std::string(c.directory).find('-') + 1));
    eval("set l [oa::LibCreate x$e $path]; oa::getAccess $l write");
    EXPECT_TRUE(std::filesystem::is_directory(folder() / c.directory));
    EXPECT_EQ(eval("expr {[oa::getFullPath $l] eq $path && [oa::LibExists $path]}"), "1");
    EXPECT_EQ(eval("file tail [oa::getPath [oa::DMFileCreate $l f$e]]"), "f\303\251");
    EXPECT_EQ(eval("oa::getName [oa::DMFileFind $l f$e]"), "f\303\251");
    EXPECT_EQ(eval("file exists $path/f$e"), "1");
    eval("oa::releaseAccess $l; oa::close $l");
  }
  EXPECT_THAT(failure("oa::LibOpen y $folder/a\\u0000b"), HasSubstr("there is a NUL in it"));
}

TEST_F(Texts, MessagesAreReadable) {
  EXPECT_THAT(failure("oa::DesignOpen $lib b$e layout r"), HasSubstr("/b\303\251/layout"));
  EXPECT_THAT(failure("oa::LibOpen y $folder/none$e"), HasSubstr("/none\303\251"));
  EXPECT_THAT(failure("oa::getBBox $euro"), HasSubstr(kEuro));
}

class LastError : public oa::oaPcellObserver {
public:
  LastError() : oaPcellObserver(5) {}
  void onError(oa::oaDesign *, const oa::oaString &message, oa::oaPcellErrorTypeEnum) override {
    last = std::string(message);
  }
  std::string last;
};

// They are stored as Tcl has them, whatever characters they have.
TEST_F(Texts, ScriptsOfCellsAreUtf8) {
  LastError error;
  eval("oa::setPcellErrorLogging 0; set script \"d {# $euro\\noa::NetCreate \\[oa::BlockCreate \\$d\\] n$e}\"");
  eval("set def [oa::PcellLinkGetPcellDef tclPcell]; oa::addData $def GenCellProc $script; oa::addData $def note$euro "
       "x");
  EXPECT_EQ(eval("expr {[oa::getDataValue $def GenCellProc] eq $script && [oa::getDataValue $def note$euro] eq {x}}"),
            "1");
  eval("oa::defineSuperMaster $d $def {{w int 1}}; set sub [oa::DesignOpen $lib c$e layout [oa::ParamArray {{w int "
       "2}}]]");
  EXPECT_EQ(eval("names [oa::getNets [oa::getTopBlock $sub]]"), "n\303\251");
  EXPECT_EQ(error.last, "");
  eval("oa::setDataValue [oa::getPcellDef $d] GenCellProc \"d {error $e$euro}\"");
  eval("oa::DesignOpen $lib c$e layout [oa::ParamArray {{w int 3}}]");
  EXPECT_THAT(error.last, HasSubstr(": \351? (line 1)")); // as the plug-in reads it
}

} // namespace
