#ifndef GDSPARSER_H
#define GDSPARSER_H

#include "gdsrecordreader.h"

#include <QByteArray>
#include <QPoint>
#include <QString>

#include <vector>

// One element of a structure, in the file's units. Only the fields of its kind are meaningful.
struct GdsElement {
  GdsRecordType kind = GdsRecordType::Boundary; // Boundary, Path, Box, Text, Sref, Aref or Node
  qint64 offset = 0;                            // of its first record, for messages
  int layer = 0;
  int datatype = 0; // or texttype, boxtype, nodetype
  std::vector<QPoint> points;
  int width = 0; // negative: absolute, which no magnification changes
  int pathType = 0;
  int beginExtension = 0; // of path type 4
  int endExtension = 0;
  int presentation = 0;
  bool mirrored = false; // about the x axis, before the rotation
  double magnification = 1;
  double angleDegrees = 0; // counter-clockwise
  QByteArray text;         // the string of a text, the structure's name of a reference
  int columns = 1;
  int rows = 1;
  int propertyCount = 0;
};

// Where an element stands. The text is made only when somebody wants to read it.
struct GdsPlace {
  const QByteArray &structure;
  qint64 offset;
  // "structure inv, byte 120"
  QString toString() const;
};

// Receives what a parser finds. All functions may throw, which ends the parsing.
class GdsHandler {
public:
  virtual ~GdsHandler() = default;
  // `offset` is where parseStructure() can start again.
  virtual void beginStructure(const QByteArray &name, qint64 offset) = 0;
  // The element is valid during the call. It has all fields that its kind demands, and a fitting number of points.
  virtual void element(const GdsElement &element) = 0;
  virtual void endStructure() = 0;
};

// Gives the records of a GDSII file their structure. Throws GdsError for a file that breaks the format's grammar. The
// bytes are borrowed for the lifetime of the parser.
class GdsParser {
public:
  // Reads the library's head.
  GdsParser(const unsigned char *bytes, qint64 size, const QString &fileName);

  const QString &fileName() const { return fileName_; }
  QString libraryName() const { return libraryName_; }
  qint64 size() const { return size_; }
  double userUnitsPerDbu() const { return userUnitsPerDbu_; }
  double metresPerDbu() const { return metresPerDbu_; }

  // All structures in order.
  void parseLibrary(GdsHandler &handler) const;
  // The structure whose beginStructure() reported this offset.
  void parseStructure(qint64 offset, GdsHandler &handler) const;

private:
  void parseHead(GdsRecordReader &reader);
  void parseUnits(const GdsRecord &record);
  GdsRecordReader readerAt(qint64 offset) const;

  const unsigned char *bytes_;
  qint64 size_;
  QString fileName_;
  QString libraryName_;
  double userUnitsPerDbu_ = 0;
  double metresPerDbu_ = 0;
  qint64 firstStructure_ = 0;
};

#endif
