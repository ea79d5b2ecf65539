#include "gdsrecordreader.h"

#include <QtEndian>

#include <utility>

int GdsRecord::int16At(int index) const { return qFromBigEndian<qint16>(data + qptrdiff{2} * index); }

int GdsRecord::unsigned16At(int index) const { return qFromBigEndian<quint16>(data + qptrdiff{2} * index); }

int GdsRecord::int32At(int index) const { return qFromBigEndian<qint32>(data + qptrdiff{4} * index); }

double GdsRecord::realAt(int index) const {
  return gdsRealFromBits(qFromBigEndian<quint64>(data + qptrdiff{8} * index));
}

QByteArray GdsRecord::text() const {
  return QByteArray(reinterpret_cast<const char *>(data),
                    qstrnlen(reinterpret_cast<const char *>(data), static_cast<uint>(dataBytes)));
}

GdsRecordReader::GdsRecordReader(const unsigned char *bytes, qint64 size, QString fileName)
    : bytes_(bytes), size_(size), fileName_(std::move(fileName)) {}

GdsRecord GdsRecordReader::next() {
  const qint64 offset = position_;
  if (size_ - offset < kGdsHeadBytes) {
    throw error(offset, QStringLiteral("the file ends here, before ENDLIB; it is cut short or no GDSII file"));
  }
  const unsigned char *head = bytes_ + offset;
  const int length = qFromBigEndian<quint16>(head);
  const int type = head[2];
  if (length < kGdsHeadBytes || length % 2 != 0) {
    throw error(offset, QStringLiteral("%1 claims a length of %2 bytes; expected an even length of at least 4")
                            .arg(gdsRecordName(type))
                            .arg(length));
  }
  if (length > size_ - offset) {
    throw error(offset, QStringLiteral("%1 of %2 bytes, but the file ends after %3 more")
                            .arg(gdsRecordName(type))
                            .arg(length)
                            .arg(size_ - offset));
  }
  const GdsRecordRule *rule = findGdsRule(type);
  if (rule == nullptr)
    throw error(offset, QStringLiteral("%1 is not known").arg(gdsRecordName(type)));
  if (head[3] != static_cast<int>(rule->dataType)) {
    throw error(offset, QStringLiteral("%1 has data type %2; expected %3")
                            .arg(QLatin1String(rule->name))
                            .arg(head[3])
                            .arg(static_cast<int>(rule->dataType)));
  }
  const int dataBytes = length - kGdsHeadBytes;
  if (dataBytes < rule->minDataBytes) {
    throw error(offset, QStringLiteral("%1 holds %2 bytes; expected at least %3")
                            .arg(QLatin1String(rule->name))
                            .arg(dataBytes)
                            .arg(rule->minDataBytes));
  }
  position_ = offset + length;
  return {offset, rule->type, head + kGdsHeadBytes, dataBytes};
}
