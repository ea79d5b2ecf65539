#include "gdsparser.h"

#include <cmath>

namespace {

using T = GdsRecordType;

// The records that an element of some kind must have.
enum Field : unsigned {
  kLayer = 1,
  kDatatype = 2, // or texttype, boxtype, nodetype
  kXy = 4,
  kName = 8,
  kString = 16,
  kColRow = 32,
};

struct ElementRule {
  GdsRecordType kind;
  GdsRecordType datatypeRecord; // which record carries `datatype`
  unsigned required;
  int minPoints;
  int maxPoints; // 0: any number
};

constexpr ElementRule kElementRules[] = {
    {T::Boundary, T::Datatype, kLayer | kDatatype | kXy, 1, 0},
    {T::Path, T::Datatype, kLayer | kDatatype | kXy, 1, 0},
    {T::Box, T::BoxType, kLayer | kDatatype | kXy, 1, 0},
    {T::Text, T::TextType, kLayer | kDatatype | kXy | kString, 1, 1},
    {T::Node, T::NodeType, kLayer | kDatatype | kXy, 1, 0},
    {T::Sref, T::EndEl, kName | kXy, 1, 1},
    {T::Aref, T::EndEl, kName | kXy | kColRow, 3, 3},
};

const ElementRule *findElementRule(GdsRecordType kind) {
  for (const ElementRule &rule : kElementRules) {
    if (rule.kind == kind)
      return &rule;
  }
  return nullptr;
}

// Collects the records of one element.
class ElementParser {
public:
  ElementParser(GdsRecordReader &reader, GdsElement &element) : reader_(reader), element_(element) {}

  void parse(const GdsRecord &first, const ElementRule &rule) {
    rule_ = &rule;
    std::vector<QPoint> points = std::move(element_.points);
    points.clear();
    element_ = GdsElement();
    element_.points = std::move(points);
    element_.kind = first.type;
    element_.offset = first.offset;
    found_ = 0;
    for (GdsRecord record = reader_.next(); record.type != T::EndEl; record = reader_.next())
      take(record);
    check();
  }

private:
  void take(const GdsRecord &record) {
    if (record.type == rule_->datatypeRecord) {
      element_.datatype = record.unsigned16At(0);
      found_ |= kDatatype;
      return;
    }
    switch (record.type) {
    case T::Layer:
      element_.layer = record.unsigned16At(0);
      found_ |= kLayer;
      break;
    case T::Xy:
      takePoints(record);
      break;
    case T::Sname:
      element_.text = record.text();
      found_ |= kName;
      break;
    case T::String:
      element_.text = record.text();
      found_ |= kString;
      break;
    case T::ColRow:
      element_.columns = record.int16At(0);
      element_.rows = record.int16At(1);
      found_ |= kColRow;
      break;
    default:
      takeDetail(record);
      break;
    }
  }

  void takeDetail(const GdsRecord &record) {
    constexpr int kMirrorBit = 0x8000;
    switch (record.type) {
    case T::Width:
      element_.width = record.int32At(0);
      break;
    case T::PathType:
      element_.pathType = record.int16At(0);
      break;
    case T::BgnExtn:
      element_.beginExtension = record.int32At(0);
      break;
    case T::EndExtn:
      element_.endExtension = record.int32At(0);
      break;
    case T::Presentation:
      element_.presentation = record.unsigned16At(0);
      break;
    case T::Strans:
      element_.mirrored = (record.unsigned16At(0) & kMirrorBit) != 0;
      break;
    case T::Mag:
      element_.magnification = record.realAt(0);
      break;
    case T::Angle:
      element_.angleDegrees = record.realAt(0);
      break;
    case T::PropAttr:
      ++element_.propertyCount;
      break;
    case T::PropValue:
    case T::ElFlags:
    case T::Plex:
      break;
    default:
      throw reader_.error(record.offset, QStringLiteral("%1 inside %2, which starts at byte %3 and has no ENDEL yet")
                                             .arg(gdsRecordName(static_cast<int>(record.type)),
                                                  gdsRecordName(static_cast<int>(element_.kind)))
                                             .arg(element_.offset));
    }
  }

  void takePoints(const GdsRecord &record) {
    if (record.dataBytes % 8 != 0) {
      throw reader_.error(record.offset,
                          QStringLiteral("XY holds %1 bytes; expected a multiple of 8").arg(record.dataBytes));
    }
    // Several XY records continue each other: that is how files hold more points than fit in one record.
    for (int i = 0; i < record.dataBytes / 4; i += 2)
      element_.points.emplace_back(record.int32At(i), record.int32At(i + 1));
    found_ |= kXy;
  }

  void check() const {
    const struct {
      Field field;
      const char *name;
    } fields[] = {{kLayer, "LAYER"}, {kDatatype, "type number"}, {kXy, "XY"},
                  {kName, "SNAME"},  {kString, "STRING"},        {kColRow, "COLROW"}};
    for (const auto &field : fields) {
      if ((rule_->required & field.field & ~found_) != 0)
        throw fault(QStringLiteral("has no %1").arg(QLatin1String(field.name)));
    }
    const auto count = static_cast<qint64>(element_.points.size());
    if (count < rule_->minPoints || (rule_->maxPoints > 0 && count > rule_->maxPoints))
      throw fault(QStringLiteral("has %1 points; expected %2").arg(count).arg(rule_->minPoints));
    if (element_.columns < 1 || element_.rows < 1)
      throw fault(QStringLiteral("has %1 columns and %2 rows").arg(element_.columns).arg(element_.rows));
    if (!std::isfinite(element_.angleDegrees) || !std::isfinite(element_.magnification))
      throw fault(QStringLiteral("has no finite angle and magnification"));
  }

  GdsError fault(const QString &what) const {
    return reader_.error(element_.offset, gdsRecordName(static_cast<int>(element_.kind)) + QLatin1Char(' ') + what);
  }

  GdsRecordReader &reader_;
  GdsElement &element_;
  const ElementRule *rule_ = nullptr;
  unsigned found_ = 0;
};

// The reader stands behind the BGNSTR record, and behind ENDSTR on return.
void parseStructureBody(GdsRecordReader &reader, qint64 offset, GdsHandler &handler) {
  const GdsRecord nameRecord = reader.next();
  if (nameRecord.type != T::StrName) {
    throw reader.error(
        nameRecord.offset,
        QStringLiteral("%1 after BGNSTR; expected STRNAME").arg(gdsRecordName(static_cast<int>(nameRecord.type))));
  }
  const QByteArray name = nameRecord.text();
  handler.beginStructure(name, offset);
  GdsElement element;
  ElementParser parser(reader, element);
  for (GdsRecord record = reader.next(); record.type != T::EndStr; record = reader.next()) {
    if (record.type == T::StrClass)
      continue;
    const ElementRule *rule = findElementRule(record.type);
    if (rule == nullptr) {
      throw reader.error(record.offset,
                         QStringLiteral("%1 in structure %2; expected an element or ENDSTR")
                             .arg(gdsRecordName(static_cast<int>(record.type)), QString::fromLatin1(name)));
    }
    parser.parse(record, *rule);
    handler.element(element);
  }
  handler.endStructure();
}

} // namespace

QString GdsPlace::toString() const {
  return QStringLiteral("structure %1, byte %2").arg(QString::fromLatin1(structure)).arg(offset);
}

GdsParser::GdsParser(const unsigned char *bytes, qint64 size, const QString &fileName)
    : bytes_(bytes), size_(size), fileName_(fileName) {
  GdsRecordReader reader = readerAt(0);
  if (size == 0)
    throw reader.error(0, QStringLiteral("the file is empty"));
  // Said in so many words, because this is what any file of another kind runs into.
  if (size < kGdsHeadBytes || bytes[0] != 0 || bytes[1] != 6 || bytes[2] != 0 || bytes[3] != 2) {
    const QByteArray start(reinterpret_cast<const char *>(bytes), static_cast<int>(qMin<qint64>(size, kGdsHeadBytes)));
    throw reader.error(0, QStringLiteral("no GDSII file: it starts with %1; expected a HEADER record, 00 06 00 02")
                              .arg(QLatin1String(start.toHex(' '))));
  }
  parseHead(reader);
}

void GdsParser::parseHead(GdsRecordReader &reader) {
  reader.next();
  bool hasUnits = false;
  for (;;) {
    const GdsRecord record = reader.next();
    switch (record.type) {
    case T::BgnStr:
    case T::EndLib:
      if (!hasUnits)
        throw reader.error(record.offset, QStringLiteral("the library has no UNITS"));
      firstStructure_ = record.offset;
      return;
    case T::LibName:
      libraryName_ = QString::fromLatin1(record.text());
      break;
    case T::Units:
      parseUnits(record);
      hasUnits = true;
      break;
    case T::BgnLib:
    case T::RefLibs:
    case T::Fonts:
    case T::AttrTable:
    case T::Generations:
    case T::Format:
    case T::Mask:
    case T::EndMasks:
    case T::LibDirSize:
    case T::SrfName:
    case T::LibSecur:
      break;
    default:
      throw reader.error(
          record.offset,
          QStringLiteral("%1 before the first structure").arg(gdsRecordName(static_cast<int>(record.type))));
    }
  }
}

void GdsParser::parseUnits(const GdsRecord &record) {
  userUnitsPerDbu_ = record.realAt(0);
  metresPerDbu_ = record.realAt(1);
  if (!(userUnitsPerDbu_ > 0) || !(metresPerDbu_ > 0)) {
    throw GdsError(fileName_, record.offset,
                   QStringLiteral("UNITS gives %1 user units and %2 metres a database unit; both must be above 0")
                       .arg(userUnitsPerDbu_)
                       .arg(metresPerDbu_));
  }
}

GdsRecordReader GdsParser::readerAt(qint64 offset) const {
  GdsRecordReader reader(bytes_, size_, fileName_);
  reader.seek(offset);
  return reader;
}

void GdsParser::parseLibrary(GdsHandler &handler) const {
  GdsRecordReader reader = readerAt(firstStructure_);
  for (GdsRecord record = reader.next(); record.type != T::EndLib; record = reader.next()) {
    if (record.type != T::BgnStr) {
      throw reader.error(record.offset, QStringLiteral("%1 between structures; expected BGNSTR or ENDLIB")
                                            .arg(gdsRecordName(static_cast<int>(record.type))));
    }
    parseStructureBody(reader, record.offset, handler);
  }
}

void GdsParser::parseStructure(qint64 offset, GdsHandler &handler) const {
  GdsRecordReader reader = readerAt(offset);
  reader.next();
  parseStructureBody(reader, offset, handler);
}
