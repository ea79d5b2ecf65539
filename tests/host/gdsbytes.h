#ifndef GDSBYTES_H
#define GDSBYTES_H

#include "gdsrecord.h"

#include <QByteArray>

#include <initializer_list>

// Builds GDSII streams record by record, broken ones too: nothing is checked, and nothing is shared with the writer
// under test but the names of the records.
class GdsBytes {
public:
  using Type = GdsRecordType;

  QByteArray bytes;

  GdsBytes &raw(const QByteArray &added) {
    bytes += added;
    return *this;
  }
  GdsBytes &record(Type type, int dataType, const QByteArray &data) {
    append(data.size() + 4, 2);
    bytes += static_cast<char>(type);
    bytes += static_cast<char>(dataType);
    bytes += data;
    return *this;
  }
  GdsBytes &empty(Type type) { return record(type, 0, QByteArray()); }
  GdsBytes &bits(Type type, int value) { return record(type, 1, number(value, 2)); }
  GdsBytes &int16(Type type, std::initializer_list<int> values) { return record(type, 2, numbers(values, 2)); }
  GdsBytes &int32(Type type, std::initializer_list<int> values) { return record(type, 3, numbers(values, 4)); }
  GdsBytes &real(Type type, double value) { return record(type, 5, realBytes(value)); }
  GdsBytes &text(Type type, QByteArray value) {
    if (value.size() % 2 != 0) {
      value += '\0';
    }
    return record(type, 6, value);
  }

  // Whole parts of a file. The numbers after `xy` are x, y, x, y, ...
  GdsBytes &head(double metresPerDbu = 1e-9, double userUnitsPerDbu = 0.001) {
    int16(Type::Header, {600}).int16(Type::BgnLib, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}).text(Type::LibName, "LIB");
    return record(Type::Units, 5, realBytes(userUnitsPerDbu) + realBytes(metresPerDbu));
  }
  GdsBytes &structure(const QByteArray &name) {
    return int16(Type::BgnStr, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}).text(Type::StrName, name);
  }
  GdsBytes &endStructure() { return empty(Type::EndStr); }
  GdsBytes &endLibrary() { return empty(Type::EndLib); }
  GdsBytes &xy(std::initializer_list<int> values) { return int32(Type::Xy, values); }
  GdsBytes &endElement() { return empty(Type::EndEl); }
  GdsBytes &layer(int layer, int datatype = 0) { return int16(Type::Layer, {layer}).int16(Type::Datatype, {datatype}); }
  GdsBytes &boundary(int layerNumber, std::initializer_list<int> points) {
    return empty(Type::Boundary).layer(layerNumber).xy(points).endElement();
  }
  GdsBytes &path(int pathType, int width, std::initializer_list<int> points) {
    return empty(Type::Path)
        .layer(1)
        .int16(Type::PathType, {pathType})
        .int32(Type::Width, {width})
        .xy(points)
        .endElement();
  }
  GdsBytes &extendedPath(int width, int begin, int end, std::initializer_list<int> points) {
    empty(Type::Path).layer(1).int16(Type::PathType, {4}).int32(Type::Width, {width});
    return int32(Type::BgnExtn, {begin}).int32(Type::EndExtn, {end}).xy(points).endElement();
  }
  GdsBytes &label(const QByteArray &string, int presentation, bool mirrored, double magnification, double angle) {
    empty(Type::Text).int16(Type::Layer, {1}).int16(Type::TextType, {0}).bits(Type::Presentation, presentation);
    return transform(mirrored, magnification, angle).xy({5, 6}).text(Type::String, string).endElement();
  }
  GdsBytes &transform(bool mirrored, double magnification, double angle) {
    return bits(Type::Strans, mirrored ? 0x8000 : 0).real(Type::Mag, magnification).real(Type::Angle, angle);
  }
  GdsBytes &sref(const QByteArray &name, std::initializer_list<int> origin, bool mirrored = false, double angle = 0,
                 double magnification = 1) {
    return empty(Type::Sref).text(Type::Sname, name).transform(mirrored, magnification, angle).xy(origin).endElement();
  }
  GdsBytes &aref(const QByteArray &name, int columns, int rows, std::initializer_list<int> points, double angle = 0,
                 double magnification = 1) {
    empty(Type::Aref).text(Type::Sname, name).transform(false, magnification, angle);
    return int16(Type::ColRow, {columns, rows}).xy(points).endElement();
  }

private:
  void append(int value, int byteCount) { bytes += number(value, byteCount); }
  static QByteArray number(int value, int byteCount) {
    QByteArray result;
    for (int shift = 8 * (byteCount - 1); shift >= 0; shift -= 8) {
      result += static_cast<char>(static_cast<unsigned>(value) >> shift);
    }
    return result;
  }
  static QByteArray numbers(std::initializer_list<int> values, int byteCount) {
    QByteArray result;
    for (const int value : values) {
      result += number(value, byteCount);
    }
    return result;
  }
  // By repeated multiplication, unlike the code under test.
  static QByteArray realBytes(double value) {
    QByteArray result(8, '\0');
    if (value == 0) {
      return result;
    }
    int exponent = 64;
    double fraction = value < 0 ? -value : value;
    while (fraction >= 1) {
      fraction /= 16;
      ++exponent;
    }
    while (fraction < 1.0 / 16) {
      fraction *= 16;
      --exponent;
    }
    result[0] = static_cast<char>(exponent | (value < 0 ? 0x80 : 0));
    for (int i = 1; i < 8; ++i) {
      fraction *= 256;
      const int digit = static_cast<int>(fraction);
      result[i] = static_cast<char>(digit);
      fraction -= digit;
    }
    return result;
  }
};

#endif
