#ifndef GDSRECORD_H
#define GDSRECORD_H

#include "hosterror.h"

#include <QByteArray>

#include <cstdint>

// A GDSII stream file is a sequence of records, all numbers big-endian:
//
//   bytes 0-1  length of the record with this head, even, at least 4
//   byte  2    record type
//   byte  3    data type
//   bytes 4-   data: 16-bit or 32-bit integers, 8-byte reals, bit fields, or text padded with a zero byte

constexpr int kGdsHeadBytes = 4;
// The longest even length that fits in the head.
constexpr int kGdsMaxRecordBytes = 65534;
// The most points that one XY record holds. Longer ones are continued in further XY records of the element.
constexpr int kGdsMaxPoints = (kGdsMaxRecordBytes - kGdsHeadBytes) / 8;

enum class GdsDataType : std::uint8_t { None = 0, Bits = 1, Int16 = 2, Int32 = 3, Real4 = 4, Real8 = 5, Text = 6 };

enum class GdsRecordType : std::uint8_t {
  Header = 0x00,
  BgnLib = 0x01,
  LibName = 0x02,
  Units = 0x03,
  EndLib = 0x04,
  BgnStr = 0x05,
  StrName = 0x06,
  EndStr = 0x07,
  Boundary = 0x08,
  Path = 0x09,
  Sref = 0x0a,
  Aref = 0x0b,
  Text = 0x0c,
  Layer = 0x0d,
  Datatype = 0x0e,
  Width = 0x0f,
  Xy = 0x10,
  EndEl = 0x11,
  Sname = 0x12,
  ColRow = 0x13,
  Node = 0x15,
  TextType = 0x16,
  Presentation = 0x17,
  String = 0x19,
  Strans = 0x1a,
  Mag = 0x1b,
  Angle = 0x1c,
  RefLibs = 0x1f,
  Fonts = 0x20,
  PathType = 0x21,
  Generations = 0x22,
  AttrTable = 0x23,
  ElFlags = 0x26,
  NodeType = 0x2a,
  PropAttr = 0x2b,
  PropValue = 0x2c,
  Box = 0x2d,
  BoxType = 0x2e,
  Plex = 0x2f,
  BgnExtn = 0x30,
  EndExtn = 0x31,
  StrClass = 0x34,
  Format = 0x36,
  Mask = 0x37,
  EndMasks = 0x38,
  LibDirSize = 0x39,
  SrfName = 0x3a,
  LibSecur = 0x3b,
};

// What the format says of a record type.
struct GdsRecordRule {
  GdsRecordType type;
  GdsDataType dataType;
  int minDataBytes;
  const char *name;
};

// The rule of a type, or null for a number that is no type in use.
const GdsRecordRule *findGdsRule(int type);
// "BOUNDARY", or "record type 0x7f".
QString gdsRecordName(int type);

// Eight-byte reals: sign, exponent of 16 with an excess of 64, 56-bit fraction.
double gdsRealFromBits(std::uint64_t bits);
// The nearest such real. Values whose magnitude is out of range become the nearest one in range, or zero.
std::uint64_t gdsRealToBits(double value);

// A fault in a GDSII file.
class GdsError : public HostError {
public:
  GdsError(const QString &fileName, qint64 offsetBytes, const QString &fault)
      : HostError(QStringLiteral("%1: byte %2: %3").arg(fileName).arg(offsetBytes).arg(fault)) {}
};

#endif
