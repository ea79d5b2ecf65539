#include "gdsrecord.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

using T = GdsRecordType;
using D = GdsDataType;

constexpr GdsRecordRule kRules[] = {
    {T::Header, D::Int16, 2, "HEADER"},
    {T::BgnLib, D::Int16, 0, "BGNLIB"},
    {T::LibName, D::Text, 0, "LIBNAME"},
    {T::Units, D::Real8, 16, "UNITS"},
    {T::EndLib, D::None, 0, "ENDLIB"},
    {T::BgnStr, D::Int16, 0, "BGNSTR"},
    {T::StrName, D::Text, 0, "STRNAME"},
    {T::EndStr, D::None, 0, "ENDSTR"},
    {T::Boundary, D::None, 0, "BOUNDARY"},
    {T::Path, D::None, 0, "PATH"},
    {T::Sref, D::None, 0, "SREF"},
    {T::Aref, D::None, 0, "AREF"},
    {T::Text, D::None, 0, "TEXT"},
    {T::Layer, D::Int16, 2, "LAYER"},
    {T::Datatype, D::Int16, 2, "DATATYPE"},
    {T::Width, D::Int32, 4, "WIDTH"},
    {T::Xy, D::Int32, 0, "XY"},
    {T::EndEl, D::None, 0, "ENDEL"},
    {T::Sname, D::Text, 0, "SNAME"},
    {T::ColRow, D::Int16, 4, "COLROW"},
    {T::Node, D::None, 0, "NODE"},
    {T::TextType, D::Int16, 2, "TEXTTYPE"},
    {T::Presentation, D::Bits, 2, "PRESENTATION"},
    {T::String, D::Text, 0, "STRING"},
    {T::Strans, D::Bits, 2, "STRANS"},
    {T::Mag, D::Real8, 8, "MAG"},
    {T::Angle, D::Real8, 8, "ANGLE"},
    {T::RefLibs, D::Text, 0, "REFLIBS"},
    {T::Fonts, D::Text, 0, "FONTS"},
    {T::PathType, D::Int16, 2, "PATHTYPE"},
    {T::Generations, D::Int16, 2, "GENERATIONS"},
    {T::AttrTable, D::Text, 0, "ATTRTABLE"},
    {T::ElFlags, D::Bits, 2, "ELFLAGS"},
    {T::NodeType, D::Int16, 2, "NODETYPE"},
    {T::PropAttr, D::Int16, 2, "PROPATTR"},
    {T::PropValue, D::Text, 0, "PROPVALUE"},
    {T::Box, D::None, 0, "BOX"},
    {T::BoxType, D::Int16, 2, "BOXTYPE"},
    {T::Plex, D::Int32, 4, "PLEX"},
    {T::BgnExtn, D::Int32, 4, "BGNEXTN"},
    {T::EndExtn, D::Int32, 4, "ENDEXTN"},
    {T::StrClass, D::Bits, 2, "STRCLASS"},
    {T::Format, D::Int16, 2, "FORMAT"},
    {T::Mask, D::Text, 0, "MASK"},
    {T::EndMasks, D::None, 0, "ENDMASKS"},
    {T::LibDirSize, D::Int16, 0, "LIBDIRSIZE"},
    {T::SrfName, D::Text, 0, "SRFNAME"},
    {T::LibSecur, D::Int16, 0, "LIBSECUR"},
};

// A real's record may be met for each of many million elements, so rules are looked up by index.
std::array<const GdsRecordRule *, 256> rulesByType() {
  std::array<const GdsRecordRule *, 256> table{};
  for (const GdsRecordRule &rule : kRules)
    table[static_cast<std::size_t>(rule.type)] = &rule;
  return table;
}

constexpr int kFractionBits = 56;
constexpr int kExponentExcess = 64;

} // namespace

const GdsRecordRule *findGdsRule(int type) {
  static const std::array<const GdsRecordRule *, 256> table = rulesByType();
  return type >= 0 && type < 256 ? table[static_cast<std::size_t>(type)] : nullptr;
}

QString gdsRecordName(int type) {
  if (const GdsRecordRule *rule = findGdsRule(type))
    return QLatin1String(rule->name);
  return QStringLiteral("record type 0x%1").arg(type, 2, 16, QLatin1Char('0'));
}

double gdsRealFromBits(std::uint64_t bits) {
  const auto fraction = static_cast<double>(bits & ((std::uint64_t{1} << kFractionBits) - 1));
  const int exponent = static_cast<int>((bits >> kFractionBits) & 0x7f) - kExponentExcess;
  const double magnitude = std::ldexp(fraction, 4 * exponent - kFractionBits);
  return (bits >> 63) != 0 ? -magnitude : magnitude;
}

std::uint64_t gdsRealToBits(double value) {
  if (value == 0 || std::isnan(value))
    return 0;
  int binaryExponent = 0;
  const double mantissa = std::frexp(std::fabs(std::clamp(value, -7e75, 7e75)), &binaryExponent);
  // The fraction lies in [1/16, 1), so the exponent of 2 is rounded up to a multiple of 4.
  int exponent = (binaryExponent + 3) >> 2;
  auto fraction =
      static_cast<std::uint64_t>(std::llround(std::ldexp(mantissa, binaryExponent - 4 * exponent + kFractionBits)));
  if ((fraction >> kFractionBits) != 0) {
    fraction >>= 4;
    ++exponent;
  }
  if (exponent < -kExponentExcess)
    return 0;
  const std::uint64_t sign = std::signbit(value) ? std::uint64_t{1} << 63 : 0;
  return sign | static_cast<std::uint64_t>(exponent + kExponentExcess) << kFractionBits | fraction;
}
