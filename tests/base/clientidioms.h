// A client program in the two dialects that clients are written in: OA is "oa::" in one and nothing in the other. Each
// function uses what real clients use; that it compiles is half of the test.
#include <iostream>
#include <map>
#include <sstream>
#include <string>

// Static objects of a client, in an order that no library can rely on.
static const OA oaNativeNS kNames;
static const OA oaScalarName kTop(kNames, "top");
static const OA oaString kLabel = OA oaString("net ") + "A";
static const OA oaPoint kOrigin(1, 2);
static const OA oaOrient kTurned("R90");
static const OA oaVectorBitName kBit(OA oaCdbaNS(), "D<3>");
static OA oaByte kByte = 7;

#if oacAPIMajorRevNumber < 5
#error "the revision numbers are for the preprocessor too"
#endif

static OA oaString shown(const OA oaString &text) { return "<" + text + "," + OA oaString("b") + ">"; }

static unsigned flagsOf(unsigned flags = oacNetIterAll | oacNetIterNotImplicit) { return flags; }

static const char *turn(OA oaOrient orient) {
  switch (orient) {
  case OA oacR0:
    return "none";
  case OA oacR90:
    return "quarter";
  default:
    return "other";
  }
}

TEST(CLIENT, StaticObjectsAreReady) {
  OA oaString text;
  kTop.get(kNames, text);
  EXPECT_EQ(text, "top");
  EXPECT_EQ(kLabel, "net A");
  EXPECT_EQ(kOrigin.y() + kByte, 9);
  EXPECT_EQ(kTurned, OA oacR90);
  kBit.get(text);
  EXPECT_EQ(text, "D[3]");
}

TEST(CLIENT, StringsMixWithTheStandardOnes) {
  OA oaString text("abc");
  std::string standard(text);
  standard = text;
  EXPECT_EQ(standard, static_cast<std::string>(text));
  EXPECT_EQ(std::string("abc"), (const char *)text);
  EXPECT_EQ(strcmp(text, "abc"), 0);
  std::ostringstream out;
  out << text << ' ' << shown(text) << ' ' << OA oaException("failed").getMsg();
  EXPECT_EQ(out.str(), "abc <abc,b> failed");
  text += standard.c_str();
  text += '/';
  text = text + "x";
  EXPECT_TRUE(text == "abcabc/x" && "abcabc/x" == text && text != "x" && text == OA oaString("abcabc/x"));
  EXPECT_TRUE(text < "b" && "b" > text && text <= text && text >= "a");
  EXPECT_EQ(text[3], 'a');
  EXPECT_TRUE(OA oaType(OA oacRectType).getName() == "Rect");
  std::map<OA oaString, int> count;
  ++count["one"];
  ++count[text];
  EXPECT_EQ(count.size(), 2U);
}

TEST(CLIENT, EnumerationsConvertBothWays) {
  EXPECT_STREQ(turn(OA oacR90), "quarter");
  EXPECT_STREQ(turn(OA oaOrient("MX")), "other");
  OA oaOrient orient;
  EXPECT_TRUE(orient == OA oacR0 && OA oacR0 == orient && orient != OA oacR90 && orient == OA oaOrient());
  std::ostringstream out;
  out << OA oaOrient(OA oacMX) << ' ' << orient.getName();
  EXPECT_EQ(out.str(), "6 R0");
  OA oaTransform move = OA oaTransform(kOrigin), mirror = OA oaTransform(OA oacMX), both(3, 4, OA oacR90);
  EXPECT_TRUE(move.orient() == OA oacR0 && mirror.offset() == OA oaPoint() && both.xOffset() == 3);
}

TEST(CLIENT, ScalarsAndFlags) {
  const OA oaDist width = OA oaDist(1000);
  const OA oaOffset offset = (OA oaOffset)-2.5;
  EXPECT_EQ(width + offset, 998U);
  EXPECT_EQ(flagsOf(), 0x21U);
  EXPECT_EQ(oacTop | oacRight, 9);
  EXPECT_EQ(oacNullIndex, 0xffffffffU);
  EXPECT_EQ(OA oacNullIndex, oacNullIndex);
  oaBaseInit(oacAPIMajorRevNumber, oacAPIMinorRevNumber);
  OA oaBoolean flag = true;
  flag = flag && !OA oaBox().isInverted();
  EXPECT_FALSE(flag);
}

TEST(CLIENT, PointsAndArrays) {
  OA oaPointArray points(4);
  for (int i = 0; i < 3; ++i)
    points.append(OA oaPoint(i * 10, i == 1 ? 7 : 0));
  points[0].x() += 5;
  int sum = 0;
  for (const OA oaPoint *p = points.getElements(); p != points.getElements() + points.getNumElements(); ++p)
    sum += p->x() + p->y();
  EXPECT_EQ(sum, 42);
  OA oaPointArray filled;
  filled.setSize(2);
  filled[0] = OA oaPoint(1, 1);
  filled[1].set(2, 2);
  filled.setNumElements(2);
  OA oaBox box;
  filled.getBBox(box);
  EXPECT_EQ(box.getWidth(), 1U);
  OA oaParamArray params;
  params.append(OA oaParam(OA oaString("w"), 5));
  params.append(OA oaParam("l", OA oaString("2u")));
  OA oaParam param = params[1];
  EXPECT_EQ(param.getType(), OA oacStringParamType);
}

// Clients do catch by value.
#pragma GCC diagnostic ignored "-Wcatch-value"

TEST(CLIENT, ErrorsAreCaughtInTheUsualOrder) {
  std::string caught;
  try {
    OA oaScalarName(OA oaUnixNS(), "a/b");
  } catch (OA oaCompatibilityError &) {
    caught = "compatibility";
  } catch (OA oaDMError &) {
    caught = "library";
  } catch (OA oaError &error) {
    caught = "error ";
    caught += (const char *)error.getMsg();
  } catch (OA oaException) {
    caught = "other";
  }
  EXPECT_NE(caught.find("a/b"), std::string::npos) << caught;
}
