#include "gdswriter.h"

#include <QtEndian>

#include <algorithm>
#include <utility>
#include <vector>

namespace {
using T = GdsRecordType;
constexpr int kFlushBytes = 1 << 18;
constexpr int kDateNumbers = 12; // two times: last change and last access
} // namespace

GdsWriter::GdsWriter(QIODevice &device, QString fileName) : device_(device), fileName_(std::move(fileName)) {
  buffer_.reserve(kFlushBytes + kGdsMaxRecordBytes);
}

void GdsWriter::beginLibrary(const QByteArray &name, double userUnitsPerDbu, double metresPerDbu) {
  constexpr int kStreamVersion = 600;
  writeInt16(T::Header, kStreamVersion);
  writeDates(T::BgnLib);
  writeString(T::LibName, name);
  beginRecord(T::Units, 16);
  appendReal(userUnitsPerDbu);
  appendReal(metresPerDbu);
}

void GdsWriter::endLibrary() {
  writeEmpty(T::EndLib);
  flush();
}

void GdsWriter::beginStructure(const QByteArray &name) {
  writeDates(T::BgnStr);
  writeString(T::StrName, name);
}

void GdsWriter::endStructure() {
  writeEmpty(T::EndStr);
  flushIfLarge();
}

void GdsWriter::writeBoundary(const QPoint *points, std::size_t count, int layer, int datatype) {
  writeEmpty(T::Boundary);
  writeInt16(T::Layer, layer);
  writeInt16(T::Datatype, datatype);
  std::vector<QPoint> closed(points, points + count);
  closed.push_back(points[0]);
  writePoints(closed.data(), closed.size());
  writeEmpty(T::EndEl);
  flushIfLarge();
}

void GdsWriter::writePath(const QPoint *points, std::size_t count, int width, const PathEnds &ends, int layer,
                          int datatype) {
  writeEmpty(T::Path);
  writeInt16(T::Layer, layer);
  writeInt16(T::Datatype, datatype);
  writeInt16(T::PathType, ends.pathType);
  writeInt32(T::Width, width);
  if (ends.pathType == 4) {
    writeInt32(T::BgnExtn, ends.beginExtension);
    writeInt32(T::EndExtn, ends.endExtension);
  }
  writePoints(points, count);
  writeEmpty(T::EndEl);
  flushIfLarge();
}

void GdsWriter::writeText(const QByteArray &text, const QPoint &origin, int presentation, Orientation orientation,
                          double magnification, int layer, int texttype) {
  writeEmpty(T::Text);
  writeInt16(T::Layer, layer);
  writeInt16(T::TextType, texttype);
  writeInt16(T::Presentation, presentation);
  writeOrientation(orientation, magnification);
  writePoints(&origin, 1);
  writeString(T::String, text);
  writeEmpty(T::EndEl);
  flushIfLarge();
}

void GdsWriter::writeSref(const QByteArray &structure, const QPoint &origin, Orientation orientation) {
  writeEmpty(T::Sref);
  writeString(T::Sname, structure);
  writeOrientation(orientation, 1);
  writePoints(&origin, 1);
  writeEmpty(T::EndEl);
  flushIfLarge();
}

void GdsWriter::writeAref(const QByteArray &structure, const QPoint &origin, const QPoint &columnEnd,
                          const QPoint &rowEnd, int columns, int rows, Orientation orientation) {
  writeEmpty(T::Aref);
  writeString(T::Sname, structure);
  writeOrientation(orientation, 1);
  beginRecord(T::ColRow, 4);
  appendInt16(columns);
  appendInt16(rows);
  const QPoint points[] = {origin, columnEnd, rowEnd};
  writePoints(points, 3);
  writeEmpty(T::EndEl);
  flushIfLarge();
}

void GdsWriter::beginRecord(GdsRecordType type, int dataBytes) {
  appendInt16(dataBytes + kGdsHeadBytes);
  buffer_.append(static_cast<char>(type));
  buffer_.append(static_cast<char>(findGdsRule(static_cast<int>(type))->dataType));
}

void GdsWriter::appendInt16(int value) {
  char bytes[2];
  qToBigEndian(static_cast<quint16>(value), bytes);
  buffer_.append(bytes, sizeof bytes);
}

void GdsWriter::appendInt32(int value) {
  char bytes[4];
  qToBigEndian(value, bytes);
  buffer_.append(bytes, sizeof bytes);
}

void GdsWriter::appendReal(double value) {
  char bytes[8];
  qToBigEndian(static_cast<quint64>(gdsRealToBits(value)), bytes);
  buffer_.append(bytes, sizeof bytes);
}

void GdsWriter::writeInt16(GdsRecordType type, int value) {
  beginRecord(type, 2);
  appendInt16(value);
}

void GdsWriter::writeInt32(GdsRecordType type, int value) {
  beginRecord(type, 4);
  appendInt32(value);
}

void GdsWriter::writeString(GdsRecordType type, const QByteArray &text) {
  constexpr int kMaxTextBytes = kGdsMaxRecordBytes - kGdsHeadBytes;
  if (text.size() > kMaxTextBytes) {
    throw HostError(QStringLiteral("%1: a text of %2 bytes does not fit in GDSII's %3, which takes %4: %5...")
                        .arg(fileName_)
                        .arg(text.size())
                        .arg(gdsRecordName(static_cast<int>(type)))
                        .arg(kMaxTextBytes)
                        .arg(QString::fromLatin1(text.left(40))));
  }
  const bool isOdd = text.size() % 2 != 0;
  beginRecord(type, text.size() + (isOdd ? 1 : 0));
  buffer_.append(text);
  if (isOdd)
    buffer_.append('\0');
}

void GdsWriter::writeDates(GdsRecordType type) {
  beginRecord(type, kDateNumbers * 2);
  for (int i = 0; i < kDateNumbers; ++i)
    appendInt16(0);
}

void GdsWriter::writePoints(const QPoint *points, std::size_t count) {
  while (count > 0) {
    const std::size_t part = std::min<std::size_t>(count, kGdsMaxPoints);
    beginRecord(T::Xy, static_cast<int>(part * 8));
    for (std::size_t i = 0; i < part; ++i) {
      appendInt32(points[i].x());
      appendInt32(points[i].y());
    }
    points += part;
    count -= part;
  }
}

void GdsWriter::writeOrientation(Orientation orientation, double magnification) {
  constexpr int kMirrorBit = 0x8000;
  if (orientation == Orientation() && magnification == 1)
    return;
  writeInt16(T::Strans, orientation.isMirrored() ? kMirrorBit : 0);
  if (magnification != 1) {
    beginRecord(T::Mag, 8);
    appendReal(magnification);
  }
  if (orientation.quarterTurns() != 0) {
    beginRecord(T::Angle, 8);
    appendReal(90.0 * orientation.quarterTurns());
  }
}

void GdsWriter::flushIfLarge() {
  if (buffer_.size() >= kFlushBytes)
    flush();
}

void GdsWriter::flush() {
  if (device_.write(buffer_) != buffer_.size())
    throw HostError(QStringLiteral("%1: %2").arg(fileName_, device_.errorString()));
  // resize, unlike clear, keeps the memory.
  buffer_.resize(0);
}
