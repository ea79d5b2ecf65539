#include "xschemnames.h"
#include "xschemparser.h"
#include "xschemproperties.h"

#include <gmock/gmock.h>
#include <QTemporaryDir>

#include <sys/stat.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;

// The objects of a file, one a line: tag, line number, numbers, text, attributes.
std::string parsed(const QByteArray &bytes, ImportReport &report) {
  const auto file = parseXschem(bytes, QStringLiteral("f.sch"), report);
  if (file == nullptr)
    return "no file";
  QString text;
  for (const XschemObject &object : file->objects) {
    text += QStringLiteral("%1%2").arg(QLatin1Char(object.tag)).arg(object.line);
    for (const double number : object.numbers)
      text += QLatin1Char(' ') + QString::number(number);
    for (const QByteArray &part : {object.text, object.attributes})
      text += part.isEmpty() ? QString() : QStringLiteral(" {%1}").arg(xschemText(part));
    text += object.embedded ? QStringLiteral(" [%1]\n").arg(object.embedded->objects.size()) : QStringLiteral("\n");
  }
  return text.toStdString();
}

std::string told(const ImportReport &report) { return report.lines().join(QLatin1Char('\n')).toStdString(); }

const QByteArray kHeader = "v {xschem version=3.1.0 file_version=1.2}\n";

TEST(XschemParser, ReadsEveryKindOfObject) {
  const struct {
    const char *name;
    QByteArray text;
    const char *expected;
  } cases[] = {
      {"line", "L 4 -20 0 7.5 1e1 {}\n", "L2 4 -20 0 7.5 10\n"},
      {"pin", "B 5 0 1 2 3 {name=A\ndir=in}\n", "B2 5 0 1 2 3 {name=A\ndir=in}\n"},
      {"polygon", "P 4 3 0 0 5 0 5 5 {fill=true}\n", "P2 4 3 0 0 5 0 5 5 {fill=true}\n"},
      {"arc", "A 4 25 0 5 180 360 {}\n", "A2 4 25 0 5 180 360\n"},
      {"text over two lines", "T {a\nb} 0 0 0 1 0.2 0.2 {layer=7}\nN 0 0 1 1 {}\n",
       "T2 0 0 0 1 0.2 0.2 {a\nb} {layer=7}\nN4 0 0 1 1\n"},
      {"escaped braces", "T {\\{a\\\\\\}} 0 0 0 0 1 1 {}\n", "T2 0 0 0 0 1 1 {{a\\}}\n"},
      {"nested braces", "T {a {b} c} 0 0 0 0 1 1 {}\n", "T2 0 0 0 0 1 1 {a {b} c}\n"},
      {"no attributes", "N 0 0 1 1\nN 1 1 2 2\n", "N2 0 0 1 1\nN3 1 1 2 2\n"},
      {"line ends of another system", "N 0 0 1 1 {lab=A\r\n}\r\nN 1 1 2 2 {}\r\n",
       "N2 0 0 1 1 {lab=A\n}\nN4 1 1 2 2\n"},
      {"text in UTF-8 and in Latin-1", "T {\xc2\xb5} 0 0 0 0 1 1 {}\nT {\xb5} 0 0 0 0 1 1 {}\n",
       "T2 0 0 0 0 1 1 {\xc2\xb5}\nT3 0 0 0 0 1 1 {\xc2\xb5}\n"},
      {"embedded symbol", "C {s.sym} 0 0 1 0 {embed=true}\n[\nG {}\nL 4 0 0 1 1 {}\nL 4 0 0 1 1 {}\n]\nN 0 0 1 1 {}\n",
       "C2 0 0 1 0 {s.sym} {embed=true} [2]\nN8 0 0 1 1\n"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    ImportReport report;
    EXPECT_EQ(parsed(kHeader + c.text, report), c.expected);
    EXPECT_EQ(told(report), "");
  }
}

TEST(XschemParser, TellsWhatIsWrongAndReadsTheRest) {
  const struct {
    const char *name;
    QByteArray text;
    const char *message;
  } cases[] = {
      {"number", "L 4 0 zero 1 1 {a\nb}\n", "a number cannot be read (f.sch:2, found \"zero\")"},
      {"infinite", "L 4 0 inf 1 1 {}\n", "a number cannot be read (f.sch:2, found \"inf\")"},
      {"missing number", "N 0 0 1 {}\n", "an object has too few numbers (f.sch:2)"},
      {"unknown object", "Q 1 2 {a\nb}\n", "unknown kind of object (f.sch:2, found \"Q\")"},
      {"too many points", "P 4 1000000000 0 0 1 1 {}\n",
       "a polygon's number of points is wrong (f.sch:2, found \"1e+09\")"},
      {"half a point", "P 4 1.5 0 0 1 1 {}\n", "a polygon's number of points is wrong (f.sch:2, found \"1.5\")"},
      {"brace left open", "T {a { b} 0 0 0 0 1 1\n", "braces are not balanced (f.sch:2)"},
      {"embedded in nothing", "[\nL 4 0 0 1 1 {}\n]\n", "an embedded symbol follows no placement (f.sch:2)"},
      {"bracket that closes nothing", "]\n", "unknown kind of object (f.sch:2, found \"]\")"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    ImportReport report;
    EXPECT_THAT(parsed(kHeader + c.text + "N 0 0 1 1 {lab=last}\n", report), HasSubstr(" 0 0 1 1 {lab=last}\n"));
    EXPECT_EQ(told(report), c.message);
    EXPECT_EQ(report.problemCount(), 1);
  }
}

TEST(XschemParser, RefusesWhatIsNoSuchFile) {
  const struct {
    const char *name;
    QByteArray bytes;
    const char *message;
  } cases[] = {
      {"nothing", "", "the file is empty"},
      {"blanks", " \n ", "the file is empty"},
      {"zero bytes", kHeader + QByteArray("N 0 0 1 1 {}\0", 13), "binary data"},
      {"another program's schematic", "v 20130925 2\nC 40000 40000 0 0 0 title.sym\n",
       "no schematic or symbol of xschem"},
      {"prose", "Very much text", "no schematic or symbol of xschem"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    ImportReport report;
    EXPECT_EQ(parsed(c.bytes, report), "no file");
    EXPECT_THAT(told(report), HasSubstr(c.message));
  }
}

// However a file is cut off, or a character of it lost, the parser comes to an end.
TEST(XschemParser, SurvivesCutFiles) {
  const QByteArray whole = kHeader +
                           "K {type=a\ntemplate=\"x=\\\\\"1\\\\\"\"}\nT {\\{@name} 0 0 0 0 1 1 {a=\"b\"}\n"
                           "C {s.sym} 0 0 0 0 {embed=true}\n[\nP 4 2 0 0 1 1 {}\n[\n]\n]\nN 0 0 1 1 {lab=A}\n";
  ImportReport wholeReport;
  parsed(whole, wholeReport);
  EXPECT_EQ(told(wholeReport), "an embedded symbol follows no placement (f.sch:8)");
  for (int i = 1; i < whole.size(); ++i) {
    ImportReport report;
    parsed(whole.left(i), report);
    parsed(QByteArray(whole).remove(i, 1), report);
    parsed(QByteArray(whole).insert(i, "{"), report);
    parsed(QByteArray(whole).insert(i, "}"), report);
  }
  ImportReport report;
  EXPECT_THAT(parsed(kHeader + "N 0 0 1 1 {}\nT {never ends\nN 0 0 1 1 ", report), HasSubstr("N2 0 0 1 1\n"));
  EXPECT_EQ(told(report), "braces are not balanced (f.sch:3)\nthe file ends within a text in braces (f.sch:3)");
}

TEST(XschemParser, HostileSizesTakeLinearTime) {
  ImportReport report;
  EXPECT_THAT(parsed(kHeader + QByteArray(1 << 20, '['), report), IsEmpty());
  parsed(kHeader + QByteArray(1 << 20, '{'), report);
  QByteArray openBraces = kHeader;
  for (int i = 0; i < 100000; ++i)
    openBraces += "T {a { b} 0 0 0 0 1 1 {}\n";
  parsed(openBraces, report);
  EXPECT_THAT(parsed(kHeader + "N " + QByteArray(10 << 20, '1') + " 0 0 0 {}\nN 0 0 1 1 {}", report),
              HasSubstr("N3 0 0 1 1\n"));
  EXPECT_THAT(parsed(kHeader + "T {" + QByteArray(10 << 20, 'x') + "} 0 0 0 0 1 1 {}\nN 0 0 1 1 {}", report),
              HasSubstr("N3 0 0 1 1\n"));
}

TEST(XschemParser, RefusesFilesThatCannotBeRead) {
  const QTemporaryDir folder;
  ASSERT_EQ(mkfifo(folder.filePath("pipe.sch").toLocal8Bit().constData(), 0600), 0);
  for (const char *name : {"pipe.sch", "missing.sch", "."}) {
    ImportReport report;
    EXPECT_EQ(readXschemFile(folder.filePath(name), report), nullptr);
    EXPECT_EQ(report.problemCount(), 1) << name;
  }
}

TEST(XschemProperties, SplitsAttributes) {
  const struct {
    const char *name, *text, *expected;
  } cases[] = {
      {"plain", "name=x1 w=1\nl=0.15", "name=x1|w=1|l=0.15"},
      {"quoted", "format=\"@name @pinlist\" a=b", "format=@name @pinlist|a=b"},
      {"empty", "a=\"\" b= \"c\" d=", "a=|b=c|d="},
      {"blanks around the sign", "a = b c =d", "a=b|c=d"},
      {"quotation marks within", "a=\"say \\\"hi\\\"\" b=x\\\"y", "a=say \"hi\"|b=x\"y"},
      {"escaped blank", "a=b\\ c", "a=b c"},
      {"equal sign within", "f=\"a=b\" g=a=b", "f=a=b|g=a=b"},
      {"the first counts", "name=A dir=in name=p1", "name=A|dir=in"},
      {"words that are no attributes", "{ nothing here } a=b", "a=b"},
      {"quotation left open", "a=\"b c", "a=b c"},
      {"lone backslash", "a=b\\", "a=b\\"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    QStringList found;
    const XschemProperties properties(QString::fromUtf8(c.text));
    for (const auto &property : properties.all())
      found.append(property.first + QLatin1Char('=') + property.second);
    EXPECT_EQ(found.join(QLatin1Char('|')).toStdString(), c.expected);
  }
}

TEST(XschemNames, BecomeHostNames) {
  const struct {
    const char *name, *expected;
  } cases[] = {
      {"A", "A"},
      {" A ", "A"},
      {"A[3]", "A<3>"},
      {"A[3:0]", "A<3:0>"},
      {"A[0:127]", "A<0:127>"},
      {"A[7:0:2]", "A<7:1:2>"},
      {"A[2:2]", "A<2>"},
      {"A[3,1:0]", "A<3>,A<1:0>"},
      {"A[3..1]", "A3,A2,A1"},
      {"C3, C2,,C1", "C3,C2,C1"},
      {"2*A", "2*A"},
      {"A*2", "2*A"},
      {"2*3*A[1:0]", "6*A<1:0>"},
      {"2*(A,B)", "A,B,A,B"},
      {"B,2*A[1:0]", "B,2*A<1:0>"},
      {"A[3:0]_n", "A_n<3:0>"},
      {"A[1][3:0]", "A[1]<3:0>"},
      {"vccd1.extra69", "vccd1.extra69"},
      {"a b", "a b"},
      {"\xc3\xa4", "\xc3\xa4"},
      {"a/b", "a_b"},
      {"#net1", "_net1"},
      {"A<3>", "A_3_"},
      // Cannot be expressed.
      {"", "nothing"},
      {",", "nothing"},
      {"[3:0]", "nothing"},
      {"A[N:0]", "nothing"},
      {"A[-1:0]", "nothing"},
      {"A[3:0:0]", "nothing"},
      {"A[1:0][3:0]", "nothing"},
      {"A[0:99999999]", "nothing"},
      {"A[0:2147483647]", "nothing"},
      {"9999999*9999999*A", "nothing"},
      {"(A,B)*2", "nothing"},
  };
  for (const auto &c : cases) {
    ImportReport report;
    const auto name = XschemNames(report).netName(QString::fromUtf8(c.name), QStringLiteral("f.sch:1"));
    EXPECT_EQ(name.value_or(QStringLiteral("nothing")).toStdString(), c.expected) << c.name;
    EXPECT_EQ(report.problemCount(), name ? 0 : 1) << c.name;
  }
}

TEST(XschemNames, DifferentNamesStayDifferent) {
  ImportReport report;
  XschemNames names(report);
  EXPECT_EQ(names.netName("a_b", "1"), QString("a_b"));
  EXPECT_EQ(names.netName("a/b", "2"), QString("a_b_"));
  EXPECT_EQ(names.netName("a/b", "3"), QString("a_b_"));
  EXPECT_EQ(told(report), "2 times: / < > : * in a name and # before it become _ (first: 2, name \"a/b\")");
}

TEST(XschemNames, PlacementsGetNameAndRange) {
  ImportReport report;
  XschemNames names(report);
  const auto named = [&names](const char *name) {
    SchematicPlacement placement;
    names.nameInstance(placement, QString::fromUtf8(name), QStringLiteral("f.sch:1"));
    const QString range = QStringLiteral(" %1..%2").arg(placement.start).arg(placement.stop);
    return (placement.name + (placement.isVector ? range : QString())).toStdString();
  };
  EXPECT_EQ(named("x1"), "x1");
  EXPECT_EQ(named("x1[3:0]"), "x1 3..0");
  EXPECT_EQ(named("x1[7:4]"), "x1 7..4");
  EXPECT_EQ(named("x2[5]"), "x2 5..5");
  EXPECT_EQ(told(report), "");
  EXPECT_EQ(named("x1"), "x1_2");
  EXPECT_EQ(named("x1"), "x1_3");
  EXPECT_EQ(named("x1[4:3]"), "x1_4 4..3");
  EXPECT_EQ(named("xa,xb"), "xa 0..1");
  EXPECT_EQ(named("xc[6:0:2]"), "xc 0..3");
  EXPECT_EQ(report.problemCount(), 0);
  EXPECT_EQ(named("xd[N:0]"), "xd[N_0]");
  EXPECT_EQ(report.problemCount(), 1);
}

} // namespace
