// The set of commands as a whole.

#include "tcltest.h"

#include <cstdlib>
#include <sstream>

namespace {

using namespace tcltest;

class Commands : public TclTest {};

// What existing scripts call. A header that is read wrongly, or a class that is forgotten, leaves a gap here.
const char kDocumented[] = R"(
  LibDefListOpenLibs LibDefListGetTopList LibDefListGetLibDefLists LibDefListGet LibDefCreate LibDefFind getMembers getLibPath
  LibCreate LibOpen LibFind LibExists LibGetOpenLibs getAccess releaseAccess getAccessLevel getCells getViews getCellViews
  getFullPath getPath isWritable CellFind CellGet ViewFind ViewGet CellViewFind CellViewGet getPrimary ViewTypeGet ViewTypeFind
  LibDMDataOpen CellDMDataOpen DMDataOpen LibDMDataExists CellDMDataExists
  TechCreate TechOpen TechFind TechExists TechAttach TechDetach TechHasAttachment getDBUPerUU setDBUPerUU getUserUnits
  setUserUnits dbuToUU uuToDBU PhysicalLayerCreate LayerFind PhysicalLayerFind getLayers getPurposes getViaDefs PurposeCreate
  PurposeFind PurposeGet getNumber getMaterial getMaskNumber StdViaDefCreate CustomViaDefCreate ViaDefFind ViaParam setCutLayer
  setCutWidth setCutRows setLayer1Enc
  DesignOpen DesignFind DesignExists DesignDestroy DesignGetOpenDesigns save saveAs close purge revert reopen getMode getRefCount
  isModified getLibName getCellName getViewName getTopBlock getTech getViewType getDatabase BlockCreate getShapes getNets
  getTerms getInsts getInstTerms getPins getVias getLPPHeaders getInstHeaders
  RectCreate EllipseCreate PolygonCreate LineCreate PathCreate PathSegCreate SegStyle DonutCreate DotCreate ArcCreate TextCreate
  EvalTextCreate getLayerNum getPurposeNum setLPP getBBox setBBox getPoints setPoints getWidth getStyle getBoundary
  convertToPolygon getText getExpression getOrigin getOrient getAlignment getFont getHeight move copy destroy
  NetCreate ScalarNetCreate BundleNetCreate BusNetCreate BusNetBitCreate NetFind ScalarNetFind BundleNetFind BusNetBitFind
  BusNetFind setGlobal isGlobal isImplicit getSigType setSigType getNumBits getBit makeEquivalent getEquivalentNets
  getPreferredEquivalent TermCreate ScalarTermCreate BundleTermCreate BusTermCreate BusTermBitCreate TermFind getTermType
  setTermType getNet PinCreate PinFind getFigs addToNet removeFromNet addToPin removeFromPin hasNet hasPin getPin
  ScalarInstCreate VectorInstCreate ArrayInstCreate InstFind VectorInstDefFind InstHeaderFind getMaster isBound getTransform
  setTransform setMaster getStart getStop getNumRows getNumCols getDX getDY InstTermCreate InstTermFind getTermName getTerm
  getInst getViaDef getViaDefName getViaParams setViaParams StdViaCreate
  CustomViaCreate setOrigin setOrient
  StringPropCreate IntPropCreate DoublePropCreate FloatPropCreate BooleanPropCreate TimePropCreate AppPropCreate EnumPropCreate
  HierPropCreate PropFind getProps getValue setValue getType Param setIntVal setDoubleVal setStringVal setBooleanVal
  getDoubleVal ParamArray append find getParams findParam isSuperMaster isSubMaster getSuperMaster getPcellEvaluatorName
  Point Box Vector Transform concat invert orient offset merge contains NativeNS UnixNS CdbaNS VerilogNS SpiceNS LefNS DefNS
  ScalarName VectorName VectorBitName BundleName Name get getName getNext getCount isEmpty includes reset getArea transform
  PointArray ByteArray getSize getNumElements getElement Orient LibMode UInt4 help pushNameSpace popNameSpace getNameSpace
  setLibDefListErrorLogging setPcellErrorLogging PcellLinkGetPcellDef addData defineSuperMaster getSubMasters DesignInit TechInit DMInit BaseInit
)";

TEST_F(Commands, ExistAsDocumented) {
  std::istringstream names(kDocumented);
  std::string name;
  while (names >> name) {
    EXPECT_EQ(eval("info commands ::oa::" + name), "::oa::" + name);
  }
}

// A function of a bound class has a command, or a line in bindings.txt that tells why not.
TEST_F(Commands, CoverTheHeaders) {
  EXPECT_EQ(readFile(UNBOUND_FILE), "") << "these functions take or give what scripts cannot hold: bind or omit them";
}

// A new class cannot be forgotten: the build stops until it is bound or set apart, be its header listed or not.
TEST_F(Commands, EveryClassOfAHeaderIsBoundOrSetApart) {
  namespace fs = std::filesystem;
  fs::copy(HEADER_FOLDER, folder() / "oa");
  const auto generate = [this] {
    const std::string binding = BINDING_FOLDER;
    const std::string errors = folder() / "errors.txt";
    const int status = std::system((PYTHON " -B " + binding + "/generate.py " + binding + "/bindings.txt " +
                                    (folder() / "oa").string() + " " + (folder() / "out").string() + " 2> " + errors)
                                       .c_str());
    return std::to_string(status) + " " + readFile(errors);
  };
  EXPECT_EQ(generate(), "0 ");
  writeFile(folder() / "oa" / "oaThing.h", "namespace OpenAccess_4 {\nclass oaThing {\npublic:\n  int x();\n};\n}\n");
  EXPECT_THAT(generate(), testing::EndsWith("bindings.txt: neither binds nor sets apart oaThing (oaThing.h)\n"));
  fs::remove(folder() / "oa" / "oaThing.h");
  fs::remove(folder() / "oa" / "oaInstallation.h");
  EXPECT_THAT(generate(), testing::EndsWith("sets apart what is bound or no header declares: oaInstallation\n"));
}

TEST_F(Commands, TellOfTheKit) {
  EXPECT_EQ(eval("lmap package [oa::BuildInfoGetPackages] {oa::getPackageName $package}"),
            "oaBase oaDM oaTech oaDesign");
  EXPECT_EQ(
      eval("set base [oa::BuildInfoFind oaBase]; list [oa::getMajorReleaseNum $base] [oa::getMinorReleaseNum $base]"),
      "22 50");
  EXPECT_EQ(eval("oa::BuildInfoFind oaNothing"), "");
}

TEST_F(Commands, SurviveWrongArguments) {
  const Ended ended = runShell(folder(), {EVERY_COMMAND_SCRIPT});
  EXPECT_EQ(ended.exitCode, 0) << ended.errors;
  const std::string count = eval("llength [info commands ::oa::*]");
  EXPECT_GT(std::stoi(count), 700);
  EXPECT_EQ(ended.output, "refusing nothing: \ncommands: " + count + "\nalive: {0.0 0.0} {1.0 1.0}\n");
}

} // namespace
