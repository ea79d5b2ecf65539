#ifndef GDSRECORDREADER_H
#define GDSRECORDREADER_H

#include "gdsrecord.h"

#include <QByteArray>
#include <QString>

// One record, borrowed from the bytes it was read from.
struct GdsRecord {
  qint64 offset = 0;
  GdsRecordType type = GdsRecordType::EndLib;
  const unsigned char *data = nullptr;
  int dataBytes = 0;

  // The n-th number; the reader has checked that the first ones that the type demands exist.
  int int16At(int index) const;
  // GDSII numbers layers from 0; files that use the upper half of the range mean positive numbers.
  int unsigned16At(int index) const;
  int int32At(int index) const;
  double realAt(int index) const;
  // Without the padding.
  QByteArray text() const;
};

// Takes records from bytes in memory. Throws GdsError, with the byte's offset, for anything that is no record of the
// format: the caller can rely on data type and minimum length of each record.
class GdsRecordReader {
public:
  GdsRecordReader(const unsigned char *bytes, qint64 size, QString fileName);

  qint64 size() const { return size_; }
  qint64 position() const { return position_; }
  const QString &fileName() const { return fileName_; }
  void seek(qint64 offset) { position_ = offset; }
  // The next record. The end of the bytes is an error: ENDLIB has to come first.
  GdsRecord next();
  GdsError error(qint64 offset, const QString &fault) const { return GdsError(fileName_, offset, fault); }

private:
  const unsigned char *bytes_;
  qint64 size_;
  qint64 position_ = 0;
  QString fileName_;
};

#endif
