#include "layermap.h"

#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QStringList>

#include "hosterror.h"

namespace {

// Splits one comma-separated line; fields may stand in double quotes, with "" for a quote inside.
QStringList splitQuoted(const QString &line, bool *isClosed) {
  QStringList fields(QString{});
  bool isQuoted = false;
  for (int i = 0; i < line.size(); ++i) {
    const QChar character = line[i];
    if (isQuoted && character == QLatin1Char('"') && i + 1 < line.size() && line[i + 1] == QLatin1Char('"'))
      fields.last() += line[i++];
    else if (character == QLatin1Char('"'))
      isQuoted = !isQuoted;
    else if (character == QLatin1Char(',') && !isQuoted)
      fields += QString();
    else
      fields.last() += character;
  }
  *isClosed = !isQuoted;
  return fields;
}

} // namespace

// Reads the lines of one table into a map.
class LayerMapParser {
public:
  LayerMapParser(const QString &fileName, LayerMap *map) : fileName_(fileName), map_(map) {}

  void parse(const QByteArray &text) {
    for (const QByteArray &bytes : text.split('\n')) {
      ++lineNumber_;
      const QString line = QString::fromUtf8(bytes).trimmed();
      if (!line.isEmpty() && !line.startsWith(QLatin1Char('#')))
        parseLine(line);
    }
  }

private:
  enum class Form { Unknown, CommaSeparated, RouterMap, Own };

  void parseLine(const QString &line) {
    if (form_ == Form::Unknown && !detectForm(line))
      return;
    if (form_ == Form::CommaSeparated)
      parseCommaSeparated(line);
    else if (form_ == Form::RouterMap)
      parseRouterMap(line);
    else
      parseOwn(line);
  }

  // Finds the form by the first line; false when that line is a heading.
  bool detectForm(const QString &line) {
    static const QRegularExpression kPairField(QStringLiteral(",\\s*\"?(\\d+:\\d+|[^,]*layer:datatype)\"?\\s*(,|$)"),
                                               QRegularExpression::CaseInsensitiveOption);
    const QStringList words = line.simplified().split(QLatin1Char(' '));
    bool startsWithNumber = false;
    words.first().toInt(&startsWithNumber);
    if (kPairField.match(line).hasMatch()) {
      form_ = Form::CommaSeparated;
      return !line.contains(QLatin1String("layer:datatype"), Qt::CaseInsensitive);
    }
    if (startsWithNumber)
      form_ = Form::Own;
    else if (words.size() == 4)
      form_ = Form::RouterMap;
    else
      fail(QStringLiteral(
               "\"%1\" is no layer table: expected \"layer datatype name\", \"name kinds layer datatype\" or a "
               "comma-separated heading with layer:datatype")
               .arg(line.left(60)));
    return true;
  }

  void parseCommaSeparated(const QString &line) {
    bool isClosed = false;
    const QStringList fields = splitQuoted(line, &isClosed);
    if (!isClosed)
      fail(QStringLiteral("a quoted field is not closed"));
    if (fields.size() < 3)
      fail(QStringLiteral("expected name,purpose,layer:datatype,description, found %1 field(s)").arg(fields.size()));
    const QString pair = fields[2].trimmed();
    if (pair.isEmpty() || pair.contains(QLatin1String("layer:datatype"), Qt::CaseInsensitive))
      return; // a heading inside the table, or a layer that is never streamed
    const QStringList numbers = pair.split(QLatin1Char(':'));
    if (numbers.size() != 2)
      fail(QStringLiteral("\"%1\" is no layer:datatype").arg(pair));
    const QString name = fields[0].trimmed();
    if (name.isEmpty())
      fail(QStringLiteral("layer %1 has no name").arg(pair));
    const QStringList purposes = fields[1].split(QLatin1Char(','));
    const QString purpose = purposes.first().trimmed();
    add(numbers[0], numbers[1], name, purpose, purpose.isEmpty() || purpose == QLatin1String("drawing"));
  }

  void parseRouterMap(const QString &line) {
    const QStringList words = line.section(QLatin1Char('#'), 0, 0).simplified().split(QLatin1Char(' '));
    if (words.size() != 4)
      fail(QStringLiteral("expected \"name kinds layer datatype\", found %1 word(s)").arg(words.size()));
    if (words[0] == QLatin1String("NAME")) {
      add(words[2], words[3], words[1].section(QLatin1Char('/'), 0, 0), QStringLiteral("label"), false);
      return;
    }
    const QStringList kinds = words[1].split(QLatin1Char(','));
    const bool isDrawing = kinds.contains(QLatin1String("NET")) || kinds.contains(QLatin1String("VIA")) ||
                           kinds.contains(QLatin1String("ALL"));
    add(words[2], words[3], words[0], kinds.first().toLower(), isDrawing);
  }

  void parseOwn(const QString &line) {
    const QStringList words = line.simplified().split(QLatin1Char(' '));
    if (words.size() < 3)
      fail(QStringLiteral("expected \"layer datatype name [#rrggbb] [pattern]\", found %1 word(s)").arg(words.size()));
    LayerMap::Entry &entry = add(words[0], words[1], words[2], QString(), true);
    if (entry.rank >= 0)
      fail(QStringLiteral("layer %1/%2 stands in the table already").arg(words[0], words[1]));
    entry.rank = nextRank_++;
    for (const QString &word : words.mid(3)) {
      if (word.startsWith(QLatin1Char('#'))) {
        static const QRegularExpression kColour(QStringLiteral("^#[0-9a-fA-F]{6}$"));
        if (!kColour.match(word).hasMatch())
          fail(QStringLiteral("\"%1\" is no colour, expected #rrggbb").arg(word));
        entry.style.colour = QColor(word);
        entry.style.isFixed = true;
      } else if (!patternFromName(word, &entry.style.pattern)) {
        fail(QStringLiteral("\"%1\" is no fill pattern, expected one of: %2").arg(word, patternNames()));
      }
    }
  }

  LayerMap::Entry &add(const QString &layerText, const QString &datatypeText, const QString &name,
                       const QString &purpose, bool isDrawing) {
    const int layer = number(layerText, "layer");
    const int datatype = number(datatypeText, "datatype");
    LayerMap::Entry &entry = map_->entries_[qMakePair(layer, datatype)];
    if (entry.style.colour.isValid() && (entry.isDrawing || !isDrawing))
      return entry;
    entry.style = conventionalStyle(name, isDrawing ? QString() : purpose, layer, datatype);
    entry.style.name = isDrawing ? name : name + QLatin1Char(' ') + purpose;
    entry.isDrawing = isDrawing;
    entry.layerName = name;
    entry.purpose = purpose;
    entry.line = lineNumber_;
    return entry;
  }

  int number(const QString &text, const char *what) const {
    bool isNumber = false;
    const int value = text.trimmed().toInt(&isNumber);
    if (!isNumber || value < 0)
      fail(QStringLiteral("\"%1\" is no %2 number").arg(text.trimmed(), QLatin1String(what)));
    return value;
  }

  [[noreturn]] void fail(const QString &fault) const {
    throw HostError(QStringLiteral("layer map %1 line %2: %3").arg(fileName_, QString::number(lineNumber_), fault));
  }

  QString fileName_;
  LayerMap *map_;
  Form form_ = Form::Unknown;
  int lineNumber_ = 0;
  int nextRank_ = 0;
};

LayerMap LayerMap::fromFile(const QString &fileName) {
  // No table of layers comes near this size; a wrong file is not read into memory whole.
  const qint64 kLargestTableBytes = 16 << 20;
  QFile file(fileName);
  if (!file.open(QIODevice::ReadOnly))
    throw HostError(QStringLiteral("layer map %1: %2").arg(fileName, file.errorString()));
  const QByteArray text = file.read(kLargestTableBytes + 1);
  if (file.error() != QFileDevice::NoError)
    throw HostError(QStringLiteral("layer map %1: %2").arg(fileName, file.errorString()));
  if (text.size() > kLargestTableBytes)
    throw HostError(QStringLiteral("layer map %1: more than 16 MB, this is no layer table").arg(fileName));
  return fromText(text, fileName);
}

LayerMap LayerMap::fromText(const QByteArray &text, const QString &fileName) {
  LayerMap map;
  LayerMapParser(fileName, &map).parse(text);
  return map;
}

LayerStyle LayerMap::style(int layer, int datatype) const {
  const auto entry = entries_.find(qMakePair(layer, datatype));
  return entry != entries_.end() ? entry->style : generatedStyle(layer, datatype);
}

int LayerMap::paintingRank(int layer, int datatype) const {
  const auto entry = entries_.find(qMakePair(layer, datatype));
  if (entry == entries_.end())
    return -1;
  return entry->rank >= 0 ? entry->rank : entry->style.stackRank;
}

QList<LayerMap::MappedPair> LayerMap::pairs() const {
  QMap<int, MappedPair> byLine; // a line has one pair
  for (auto entry = entries_.begin(); entry != entries_.end(); ++entry)
    byLine.insert(entry->line, {entry.key().first, entry.key().second, entry->layerName, entry->purpose});
  return byLine.values();
}
