#include "gdsparser.h"

#include "gdsbytes.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace {

using Type = GdsRecordType;

// Counts what arrives, and keeps the last element.
class Listener : public GdsHandler {
public:
  int structures = 0;
  int elements = 0;
  qint64 lastStructure = 0;
  GdsElement last;

  void beginStructure(const QByteArray &, qint64 offset) override {
    ++structures;
    lastStructure = offset;
  }
  void element(const GdsElement &element) override {
    ++elements;
    last = element;
  }
  void endStructure() override {}
};

Listener parse(const QByteArray &bytes) {
  const GdsParser parser(reinterpret_cast<const unsigned char *>(bytes.constData()), bytes.size(), "t.gds");
  Listener listener;
  parser.parseLibrary(listener);
  return listener;
}

// The message of the fault, or an empty text.
std::string faultOf(const QByteArray &bytes) {
  try {
    parse(bytes);
  } catch (const GdsError &error) {
    return error.what();
  }
  return std::string();
}

// A library with one structure A that holds what `body` adds.
template <typename Body> QByteArray inStructure(Body body) {
  GdsBytes gds;
  gds.head().structure("A");
  body(gds);
  return gds.endStructure().endLibrary().bytes;
}

TEST(GdsReader, FaultyFilesAreRefusedWithTheirPlace) {
  GdsBytes head;
  head.head();
  const QByteArray noUnits = GdsBytes().int16(Type::Header, {600}).text(Type::LibName, "L").endLibrary().bytes;
  const auto element = [](auto addRecords) {
    return inStructure([&](GdsBytes &gds) {
      gds.empty(Type::Boundary);
      addRecords(gds);
      gds.endElement();
    });
  };
  const struct {
    const char *name;
    QByteArray bytes;
    const char *fault;
  } cases[] = {
      {"empty file", "", "t.gds: byte 0: the file is empty"},
      {"text file", "hello world", "no GDSII file: it starts with 68 65 6c 6c"},
      {"three bytes", QByteArray("\0\6\0", 3), "no GDSII file: it starts with 00 06 00"},
      {"cut in the head", head.bytes.left(20), "BGNLIB of 28 bytes, but the file ends after 14 more"},
      {"cut between records", head.bytes, "the file ends here, before ENDLIB"},
      {"no units", noUnits, "the library has no UNITS"},
      {"zero units", GdsBytes().head(0).endLibrary().bytes, "both must be above 0"},
      {"record of length 0", GdsBytes(head).raw(QByteArray(8, '\0')).bytes, "HEADER claims a length of 0 bytes"},
      {"record of length 2", GdsBytes(head).raw(QByteArray("\0\2\4\0", 4)).bytes, "ENDLIB claims a length of 2 bytes"},
      {"odd length", GdsBytes(head).raw(QByteArray("\0\5\4\0\0", 5)).bytes, "ENDLIB claims a length of 5 bytes"},
      {"unknown record", GdsBytes(head).raw(QByteArray("\0\4\x7f\0", 4)).bytes, "record type 0x7f is not known"},
      {"element outside a structure", GdsBytes(head).boundary(1, {0, 0}).endLibrary().bytes,
       "BOUNDARY before the first structure"},
      {"structure without name", GdsBytes(head).int16(Type::BgnStr, {0}).endStructure().bytes,
       "ENDSTR after BGNSTR; expected STRNAME"},
      {"nested structure", inStructure([](GdsBytes &gds) { gds.structure("B"); }), "BGNSTR in structure A"},
      {"element without end", inStructure([](GdsBytes &gds) { gds.empty(Type::Boundary).layer(1); }),
       "ENDSTR inside BOUNDARY, which starts at byte"},
      {"wrong data type", element([](GdsBytes &gds) { gds.int32(Type::Layer, {1}); }),
       "LAYER has data type 3; expected 2"},
      {"short record", element([](GdsBytes &gds) { gds.empty(Type::Layer); }), "LAYER has data type 0"},
      {"layer without number", element([](GdsBytes &gds) { gds.int16(Type::Layer, {}); }), "LAYER holds 0 bytes"},
      {"half a point", element([](GdsBytes &gds) {
         gds.layer(1).xy({1, 2, 3});
       }),
       "XY holds 12 bytes"},
      {"no layer", element([](GdsBytes &gds) {
         gds.int16(Type::Datatype, {1}).xy({0, 0});
       }),
       "BOUNDARY has no LAYER"},
      {"no datatype", element([](GdsBytes &gds) {
         gds.int16(Type::Layer, {1}).xy({0, 0});
       }),
       "has no type number"},
      {"no points", element([](GdsBytes &gds) { gds.layer(1); }), "BOUNDARY has no XY"},
      {"empty point list", element([](GdsBytes &gds) { gds.layer(1).xy({}); }), "BOUNDARY has 0 points"},
      {"reference without name", inStructure([](GdsBytes &gds) {
         gds.empty(Type::Sref).xy({0, 0}).endElement();
       }),
       "SREF has no SNAME"},
      {"array with two points", inStructure([](GdsBytes &gds) {
         gds.aref("B", 1, 1, {0, 0, 1, 1});
       }),
       "AREF has 2 points; expected 3"},
      {"array without columns", inStructure([](GdsBytes &gds) {
         gds.aref("B", 0, 4, {0, 0, 1, 0, 0, 1});
       }),
       "AREF has 0 columns and 4 rows"},
      {"array with negative rows", inStructure([](GdsBytes &gds) {
         gds.aref("B", 3, -4, {0, 0, 1, 0, 0, 1});
       }),
       "AREF has 3 columns and -4 rows"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_THAT(faultOf(c.bytes), testing::HasSubstr(c.fault));
  }
}

// A cut or a changed byte anywhere must end in a fault or in another valid reading, never in a crash.
TEST(GdsReader, NoCutAndNoChangedByteCrashes) {
  const QByteArray whole = inStructure([](GdsBytes &gds) {
    gds.boundary(1, {0, 0, 0, 10, 10, 10, 0, 0}).extendedPath(10, 2, 3, {0, 0, 50, 0});
    gds.label("t", 5, true, 0.5, 90).sref("B", {1, 2}).aref("B", 2, 2, {0, 0, 20, 0, 0, 20});
  });
  ASSERT_EQ(parse(whole).elements, 5);
  for (int length = 0; length < whole.size(); ++length) {
    EXPECT_NE(faultOf(whole.left(length)), "") << "cut at " << length;
  }
  for (int i = 0; i < whole.size(); ++i) {
    for (const char value : {'\x00', '\x01', '\x7f', '\xff'}) {
      QByteArray changed = whole;
      changed[i] = value;
      faultOf(changed);
    }
  }
}

TEST(GdsReader, PaddingBehindTheLibraryIsIgnored) {
  EXPECT_EQ(parse(GdsBytes().head().endLibrary().raw(QByteArray(2048, '\0')).bytes).structures, 0);
}

TEST(GdsReader, ElementFieldsDoNotLeakIntoTheNextElement) {
  const Listener listener = parse(inStructure([](GdsBytes &gds) {
    gds.extendedPath(10, 2, 3, {0, 0, 50, 0}).label("t", 5, true, 0.5, 90).aref("B", 7, 8, {0, 0, 70, 0, 0, 80});
    gds.boundary(4, {1, 2, 3, 4, 5, 6});
  }));
  const GdsElement &last = listener.last;
  EXPECT_EQ(last.layer, 4);
  EXPECT_EQ(last.width + last.pathType + last.beginExtension + last.endExtension + last.presentation, 0);
  EXPECT_EQ(last.columns * last.rows, 1);
  EXPECT_FALSE(last.mirrored);
  EXPECT_EQ(last.magnification, 1);
  EXPECT_EQ(last.points.size(), 3U);
}

TEST(GdsReader, LayersReachTo65535AndPointListsContinue) {
  const Listener listener = parse(inStructure([](GdsBytes &gds) {
    gds.empty(Type::Boundary).layer(65535, 32768).xy({0, 0, 1, 1}).xy({2, 0}).endElement();
  }));
  EXPECT_EQ(listener.last.layer, 65535);
  EXPECT_EQ(listener.last.datatype, 32768);
  EXPECT_EQ(listener.last.points.size(), 3U);
}

TEST(GdsReader, StructureIsReadAgainFromItsOffset) {
  const QByteArray bytes = GdsBytes()
                               .head()
                               .structure("A")
                               .boundary(1, {0, 0})
                               .endStructure()
                               .structure("B")
                               .boundary(2, {0, 0})
                               .boundary(3, {0, 0})
                               .endStructure()
                               .endLibrary()
                               .bytes;
  const GdsParser parser(reinterpret_cast<const unsigned char *>(bytes.constData()), bytes.size(), "t.gds");
  Listener all;
  parser.parseLibrary(all);
  EXPECT_EQ(all.structures, 2);
  Listener again;
  parser.parseStructure(all.lastStructure, again);
  EXPECT_EQ(again.elements, 2);
  EXPECT_EQ(again.last.layer, 3);
}

TEST(GdsReal, KnownBitsAndRoundTrips) {
  const struct {
    double value;
    std::uint64_t bits;
  } known[] = {
      {0, 0},
      {1, 0x4110000000000000},
      {-1, 0xc110000000000000},
      {0.5, 0x4080000000000000},
      {90, 0x425a000000000000},
      {1e-9, 0x3944b82fa09b5a54},
      {0.001, 0x3e4189374bc6a7f0},
  };
  for (const auto &c : known) {
    EXPECT_EQ(gdsRealToBits(c.value), c.bits) << c.value;
    EXPECT_DOUBLE_EQ(gdsRealFromBits(c.bits), c.value);
  }
  for (const double value : {1e-30, 3.14159, -1e-12, 123456789.25, 1e60, 15.999999999999999, 0.0625}) {
    EXPECT_DOUBLE_EQ(gdsRealFromBits(gdsRealToBits(value)), value);
  }
  EXPECT_GT(gdsRealFromBits(gdsRealToBits(std::numeric_limits<double>::infinity())), 1e75);
  EXPECT_EQ(gdsRealToBits(std::numeric_limits<double>::quiet_NaN()), 0U);
  EXPECT_EQ(gdsRealToBits(1e-300), 0U);
}

} // namespace
