#include "xschemparser.h"

#include "xschemproperties.h"

#include <QFile>
#include <QFileInfo>

#include <cctype>
#include <cmath>
#include <cstring>

namespace {

constexpr qint64 kLargestFileBytes = qint64(512) << 20;
constexpr int kDeepestEmbedding = 16;
constexpr int kLongestNumber = 64;

// How a line of each kind goes on after its letter.
struct ObjectForm {
  char tag;
  bool startsWithText;
  int numbers;
};
constexpr ObjectForm kForms[] = {{'L', false, 5}, {'B', false, 5}, {'P', false, 2}, {'A', false, 6},
                                 {'T', true, 6},  {'N', false, 4}, {'C', true, 4}};
constexpr char kBlockTags[] = "vGKVSEF";

// Why an object could not be read.
struct Fault {
  QString what;
  QString found;
};
struct EndOfFile {
  int line; // where the text began that does not end
};

class Parser {
public:
  Parser(const QByteArray &bytes, const QString &name, ImportReport &report)
      : bytes_(bytes), name_(name), report_(report) {}

  std::unique_ptr<XschemFile> parse() {
    auto file = std::make_unique<XschemFile>();
    file->name = name_;
    try {
      readObjects(*file, 0);
    } catch (const EndOfFile &end) {
      report_.problem(QStringLiteral("the file ends within a text in braces"), file->place(end.line));
    }
    checkVersion(*file);
    return file;
  }

  // Whether the first object is one of this format; other programs' schematics have the same file names.
  bool startsWell() {
    skipBlanks();
    if (isAtEnd())
      return false;
    const char tag = get();
    const bool isKnown = std::strchr(kBlockTags, tag) != nullptr || formOf(tag) != nullptr;
    skipBlanks();
    const bool isText = !isAtEnd() && peek() == '{';
    const bool isNumber = !isAtEnd() && (std::isdigit(static_cast<unsigned char>(peek())) || peek() == '-');
    const ObjectForm *form = formOf(tag);
    return isKnown && (form != nullptr && !form->startsWithText ? isNumber : isText);
  }

private:
  static const ObjectForm *formOf(char tag) {
    for (const ObjectForm &form : kForms) {
      if (form.tag == tag)
        return &form;
    }
    return nullptr;
  }

  bool isAtEnd() const { return position_ >= bytes_.size(); }
  char peek() const { return bytes_[position_]; }
  char get() {
    const char character = bytes_[position_++];
    line_ += character == '\n' ? 1 : 0;
    return character;
  }
  void skipBlanks() {
    while (!isAtEnd() && std::isspace(static_cast<unsigned char>(peek())))
      get();
  }

  // Until the end of the file, or the bracket that closes an embedded symbol.
  void readObjects(XschemFile &file, int depth) {
    for (skipBlanks(); !isAtEnd(); skipBlanks()) {
      const int line = line_;
      const char tag = get();
      if (tag == ']' && depth > 0)
        return;
      try {
        readObject(file, tag, line, depth);
      } catch (const Fault &fault) {
        const QString found = fault.found.isEmpty() ? QString() : QStringLiteral(", found \"%1\"").arg(fault.found);
        report_.problem(fault.what, file.place(line) + found);
        skipObject();
      }
    }
    if (depth > 0)
      report_.problem(QStringLiteral("the file ends within an embedded symbol"), file.place(line_));
  }

  void readObject(XschemFile &file, char tag, int line, int depth) {
    if (tag == '[') {
      readEmbedded(file, line, depth);
    } else if (std::strchr(kBlockTags, tag) != nullptr) {
      const QByteArray text = readText();
      // Blocks are written once; of a second one nothing may get lost.
      if (!text.trimmed().isEmpty()) {
        if (!file.blocks.contains(tag))
          file.blockLines.insert(tag, line);
        file.blocks[tag] += (file.blocks.contains(tag) ? "\n" : "") + text;
      }
    } else if (const ObjectForm *form = formOf(tag)) {
      XschemObject object;
      object.tag = tag;
      object.line = line;
      if (form->startsWithText)
        object.text = readText();
      readNumbers(object.numbers, form->numbers);
      if (tag == 'P')
        readPoints(object.numbers);
      skipBlanksOfLine();
      if (!isAtEnd() && peek() == '{')
        object.attributes = readText();
      file.objects.push_back(std::move(object));
    } else {
      throw Fault{QStringLiteral("unknown kind of object"), QString(QLatin1Char(tag))};
    }
  }

  void readEmbedded(XschemFile &file, int line, int depth) {
    if (depth >= kDeepestEmbedding)
      throw Fault{QStringLiteral("symbols are embedded in each other too deeply"), QString()};
    auto embedded = std::make_shared<XschemFile>();
    embedded->name = file.name;
    readObjects(*embedded, depth + 1);
    if (file.objects.empty() || file.objects.back().tag != 'C')
      report_.problem(QStringLiteral("an embedded symbol follows no placement"), file.place(line));
    else
      file.objects.back().embedded = std::move(embedded);
  }

  void skipBlanksOfLine() {
    while (!isAtEnd() && (peek() == ' ' || peek() == '\t' || peek() == '\r'))
      get();
  }

  // To the end of the line on which the object ends: texts in braces may go over several lines.
  void skipObject() {
    while (!isAtEnd() && peek() != '\n') {
      if (peek() == '{')
        readText();
      else
        get();
    }
  }

  void readNumbers(std::vector<double> &numbers, int count) {
    for (int i = 0; i < count; ++i) {
      skipBlanksOfLine();
      const int start = position_;
      while (!isAtEnd() && peek() != '{' && !std::isspace(static_cast<unsigned char>(peek())))
        get();
      const QByteArray word = bytes_.mid(start, qMin(position_ - start, kLongestNumber));
      bool isNumber = false;
      const double value = word.toDouble(&isNumber);
      if (!isNumber || !std::isfinite(value))
        throw Fault{word.isEmpty() ? QStringLiteral("an object has too few numbers")
                                   : QStringLiteral("a number cannot be read"),
                    xschemText(word)};
      numbers.push_back(value);
    }
  }

  void readPoints(std::vector<double> &numbers) {
    const double points = numbers.back();
    // Each coordinate takes two bytes at least.
    if (points < 1 || points != std::floor(points) || points * 4 > bytes_.size() - position_)
      throw Fault{QStringLiteral("a polygon's number of points is wrong"), QString::number(points)};
    readNumbers(numbers, static_cast<int>(points) * 2);
  }

  // A text in braces. A backslash takes the meaning from the character after it; braces inside are kept and have to be
  // balanced. Texts of a file in which they are not end at the first closing brace, as in xschem itself.
  QByteArray readText() {
    skipBlanks();
    const int line = line_;
    if (isAtEnd() || peek() != '{')
      throw Fault{QStringLiteral("an opening brace is missing"), isAtEnd() ? QString() : QString(QLatin1Char(peek()))};
    const int start = position_;
    QByteArray text;
    if (areBracesBalanced_ && readBraces(text, true))
      return text;
    if (areBracesBalanced_) {
      areBracesBalanced_ = false;
      report_.problem(QStringLiteral("braces are not balanced"), QStringLiteral("%1:%2").arg(name_).arg(line));
      position_ = start;
      line_ = line;
      text.clear();
    }
    if (!readBraces(text, false))
      throw EndOfFile{line};
    return text;
  }

  bool readBraces(QByteArray &text, bool isNested) {
    int depth = 0;
    while (!isAtEnd()) {
      char character = get();
      if (character == '\\' && !isAtEnd()) {
        character = get();
      } else if (character == '{' && (isNested || depth == 0)) {
        if (depth++ == 0)
          continue;
      } else if (character == '}' && --depth == 0) {
        return true;
      }
      if (character != '\r')
        text.append(character);
    }
    return false;
  }

  void checkVersion(const XschemFile &file) {
    const XschemProperties header(xschemText(file.blocks.value('v').left(1000)));
    bool isNumber = false;
    const double version = header.value(QStringLiteral("file_version")).toDouble(&isNumber);
    if (isNumber && version > 1.25)
      report_.notice(QStringLiteral("the file version is newer than 1.2 and read as that"),
                     QStringLiteral("%1:1, version %2").arg(name_).arg(version));
  }

  const QByteArray &bytes_;
  const QString name_;
  ImportReport &report_;
  int position_ = 0;
  int line_ = 1;
  bool areBracesBalanced_ = true;
};

} // namespace

std::unique_ptr<XschemFile> parseXschem(const QByteArray &bytes, const QString &name, ImportReport &report) {
  const char *fault = bytes.trimmed().isEmpty()                   ? "the file is empty"
                      : bytes.contains('\0')                      ? "the file holds binary data"
                      : !Parser(bytes, name, report).startsWell() ? "the file is no schematic or symbol of xschem"
                                                                  : nullptr;
  if (fault != nullptr) {
    report.problem(QLatin1String(fault) + QStringLiteral("; it is left out"), name + QStringLiteral(":1"));
    return nullptr;
  }
  return Parser(bytes, name, report).parse();
}

std::unique_ptr<XschemFile> readXschemFile(const QString &name, ImportReport &report) {
  const QFileInfo info(name);
  QFile file(name);
  // Opening a pipe would wait for its writer.
  if (!info.isFile()) {
    report.problem(QStringLiteral("is no ordinary file; it is left out"), name);
  } else if (info.size() > kLargestFileBytes) {
    report.problem(QStringLiteral("the file is larger than 512 MB; it is left out"), name);
  } else if (!file.open(QIODevice::ReadOnly)) {
    report.problem(QStringLiteral("the file cannot be read (%1); it is left out").arg(file.errorString()), name);
  } else {
    return parseXschem(file.readAll(), name, report);
  }
  return nullptr;
}
