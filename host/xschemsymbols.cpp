#include "xschemsymbols.h"

#include "xschembuiltins.h"
#include "xschemdrawing.h"
#include "xschemnames.h"
#include "xschemreport.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace {

constexpr int kPinLayer = 5;
// More folders above a file, and more parts of a reference, are not tried.
constexpr int kDeepestFolder = 64;
constexpr int kMostLastParts = 8;

QString portType(const QString &direction) {
  if (direction == QLatin1String("in"))
    return QStringLiteral("input");
  if (direction == QLatin1String("out"))
    return QStringLiteral("output");
  return QStringLiteral("input output");
}

bool isPin(const XschemObject &object, const XschemProperties &properties) {
  return object.tag == 'B' && object.numbers[0] == kPinLayer && properties.contains(QStringLiteral("name"));
}

const QString kPinNumber = QStringLiteral("sim_pinnumber");

void addPin(const XschemObject &object, const XschemProperties &properties, const XschemFile &file,
            const XschemDrawing &drawing, XschemNames &names, ImportReport &report, SymbolModel &model) {
  const QString place = file.place(object.line);
  const QString direction = properties.value(QStringLiteral("dir"));
  if (direction != QLatin1String("in") && direction != QLatin1String("out") && direction != QLatin1String("inout"))
    report.notice(QStringLiteral("a pin whose dir is not in, out or inout is taken for inout"), place);
  const auto centre = drawing.point((object.numbers[1] + object.numbers[3]) / 2,
                                    (object.numbers[2] + object.numbers[4]) / 2, object.line);
  const auto name = names.netName(properties.value(QStringLiteral("name")), place);
  static const QStringList meant = {QStringLiteral("name"), QStringLiteral("dir"), kPinNumber};
  tellLeftOutAttributes(properties, meant, QStringLiteral("a pin"), place, report);
  if (centre && name)
    model.ports.push_back({*name, *centre, portType(direction), QString(), false, object.line});
}

// Where every pin has a number for simulation, netlists have the pins in the order of those; else in that of the file.
void sortPins(const XschemFile &file, SymbolModel &model, ImportReport &report) {
  QHash<int, int> numbers; // by line
  QString firstNumbered;
  bool isComplete = true;
  for (const XschemObject &object : file.objects) {
    const XschemProperties properties(xschemText(object.attributes));
    if (!isPin(object, properties))
      continue;
    bool isNumber = false;
    numbers.insert(object.line, properties.value(kPinNumber).toInt(&isNumber));
    isComplete = isComplete && isNumber;
    if (firstNumbered.isEmpty() && properties.contains(kPinNumber))
      firstNumbered = file.place(object.line);
  }
  if (isComplete)
    std::stable_sort(model.ports.begin(), model.ports.end(), [&](const SchematicPort &one, const SchematicPort &other) {
      return numbers.value(one.sourceLine) < numbers.value(other.sourceLine);
    });
  else if (!firstNumbered.isEmpty())
    report.notice(QStringLiteral("not every pin of a symbol has a number in sim_pinnumber, the pins keep their order"),
                  firstNumbered);
}

bool isSamePort(const SchematicPort &one, const SchematicPort &other) {
  return one.name == other.name && one.position == other.position && one.type == other.type;
}

bool isSameShape(const SchematicShape &one, const SchematicShape &other) {
  return one.kind == other.kind && one.points == other.points && one.colour == other.colour && one.text == other.text &&
         one.rotation == other.rotation;
}

// Remarks and versions do not count.
bool isSameSymbol(const SymbolModel &one, const SymbolModel &other) {
  const auto withoutHeader = [](std::vector<QPair<QString, QString>> data) {
    if (!data.empty() && data.front().first == QLatin1String("xschem.header"))
      data.erase(data.begin());
    return data;
  };
  return std::equal(one.ports.begin(), one.ports.end(), other.ports.begin(), other.ports.end(), isSamePort) &&
         std::equal(one.shapes.begin(), one.shapes.end(), other.shapes.begin(), other.shapes.end(), isSameShape) &&
         withoutHeader(one.data) == withoutHeader(other.data);
}

} // namespace

QString xschemCellName(const QString &fileName) {
  QString name = fileName.mid(fileName.lastIndexOf(QLatin1Char('/')) + 1);
  if (name.endsWith(QLatin1String(".sym")) || name.endsWith(QLatin1String(".sch")))
    name.chop(4);
  return name;
}

QString xschemDeviceName(const QString &cell) {
  const QString name = latin1Name(cell);
  return name.contains(QLatin1Char('@')) ? QStringLiteral("symbol@") + name : name;
}

std::vector<QPair<QString, QString>> xschemDesignProperties(const XschemFile &file, XschemProperties *defaults,
                                                            ImportReport &report) {
  std::vector<QPair<QString, QString>> data;
  const auto add = [&](const char *name, char tag) {
    const QString text = xschemText(file.blocks.value(tag)).trimmed();
    if (text.isEmpty())
      return;
    tellLostCharacters(text, file.place(file.blockLines.value(tag)), report);
    data.push_back({QLatin1String("xschem.") + QLatin1String(name), text});
  };
  add("header", 'v');
  // Files without K are older and hold a symbol's attributes in G, which became the place of VHDL code later.
  const bool isOld = !file.blocks.contains('K');
  const char attributesTag = isOld ? 'G' : 'K';
  const XschemProperties attributes(xschemText(file.blocks.value(attributesTag)));
  const QString place = file.place(file.blockLines.value(attributesTag));
  const QString templateKey = QStringLiteral("template");
  for (const auto &[key, value] : attributes.all()) {
    tellLostCharacters(value, place, report);
    if (key != templateKey)
      data.push_back({QStringLiteral("xschem.") + latin1Name(key, place, report), value});
  }
  const XschemProperties split(attributes.value(templateKey));
  for (const auto &property : split.all()) {
    if (property.first != QLatin1String("name"))
      data.push_back({latin1Name(property.first, place, report), property.second});
  }
  if (!isOld || attributes.all().empty())
    add("vhdl", 'G');
  add("verilog", 'V');
  add("spice", 'S');
  add("tedax", 'E');
  add("spectre", 'F');
  if (defaults != nullptr)
    *defaults = split;
  return data;
}

XschemSymbols::XschemSymbols(const QStringList &searchDirectories, double scale, ImportReport &report)
    : searchDirectories_(searchDirectories), scale_(scale), report_(report) {}

std::unique_ptr<XschemSymbol> XschemSymbols::makeSymbol(const XschemFile &file, const QString &cell,
                                                        const QString &source) {
  auto symbol = std::make_unique<XschemSymbol>();
  symbol->cell = cell;
  symbol->source = source;
  symbol->model.data = xschemDesignProperties(file, &symbol->defaults, report_);
  symbol->model.source = {file.name, scale_};
  const XschemProperties attributes(xschemText(file.blocks.value(file.blocks.contains('K') ? 'K' : 'G')));
  symbol->role = xschemRoleOfType(attributes.value(QStringLiteral("type")));
  symbol->isGlobal = attributes.isTrue(QStringLiteral("global"));
  if (symbol->role == XschemRole::Label && symbol->isGlobal && cell.startsWith(QLatin1String("gnd")))
    symbol->role = XschemRole::Ground;
  const XschemDrawing drawing(file, scale_, report_);
  XschemNames names(report_);
  for (const XschemObject &object : file.objects) {
    const XschemProperties properties(xschemText(object.attributes));
    if (isPin(object, properties)) {
      addPin(object, properties, file, drawing, names, report_, symbol->model);
    } else if (object.tag == 'C') {
      report_.problem(QStringLiteral("a placement inside a symbol is left out"), file.place(object.line));
    } else if (object.tag == 'N') {
      // Wires of a symbol are drawing.
      XschemObject line = object;
      line.tag = 'L';
      line.numbers.insert(line.numbers.begin(), 1);
      drawing.addShape(line, symbol->model);
    } else {
      drawing.addShape(object, symbol->model);
    }
  }
  sortPins(file, symbol->model, report_);
  return symbol;
}

void XschemSymbols::addFile(const QString &fileName) { readFile(fileName, true); }

XschemSymbol *XschemSymbols::readFile(const QString &fileName, bool isNamed) {
  const QString canonical = QFileInfo(fileName).canonicalFilePath();
  const auto known = symbolOfFile_.constFind(canonical);
  if (known != symbolOfFile_.constEnd())
    return *known;
  XschemSymbol *symbol = nullptr;
  if (const std::unique_ptr<XschemFile> file = readXschemFile(fileName, report_)) {
    std::unique_ptr<XschemSymbol> made = makeSymbol(*file, xschemCellName(fileName), fileName);
    made->isNamed = isNamed;
    symbol = keep(std::move(made), file->place(1));
  }
  symbolOfFile_.insert(canonical, symbol);
  return symbol;
}

// One cell has one symbol: the first.
XschemSymbol *XschemSymbols::keep(std::unique_ptr<XschemSymbol> symbol, const QString &place) {
  // Ports and labels that are only placed do not become cells.
  const bool isCell = symbol->role == XschemRole::Device || symbol->isNamed;
  XschemSymbol *first = isCell ? symbolOfCell_.value(symbol->cell) : nullptr;
  if (first != nullptr) {
    if (!isSameSymbol(first->model, symbol->model))
      report_.problem(QStringLiteral("cell %1 has a symbol from %2 already; the one of %3 is left out")
                          .arg(first->cell, first->source, symbol->source),
                      place);
    first->isNamed = first->isNamed || symbol->isNamed;
    return first;
  }
  symbols_.push_back(std::move(symbol));
  XschemSymbol *kept = symbols_.back().get();
  if (isCell)
    symbolOfCell_.insert(kept->cell, kept);
  return kept;
}

const XschemSymbol *XschemSymbols::placed(XschemSymbol *symbol) {
  symbol->isPlaced = symbol->isPlaced || symbol->role == XschemRole::Device;
  return symbol;
}

const XschemSymbol *XschemSymbols::resolve(const QString &reference, const XschemFile &file, int line) {
  if (const XschemSymbol *symbol = embedded_.value(file.name + QLatin1Char('\n') + reference))
    return symbol;
  const QString directory = QFileInfo(file.name).absolutePath();
  const QString key = directory + QLatin1Char('\n') + reference;
  const auto known = symbolOfName_.constFind(key);
  const QString place = file.place(line);
  if (known != symbolOfName_.constEnd()) {
    // What is not found is told for each place.
    if ((*known)->role == XschemRole::Unknown)
      report_.problem((*known)->source, place);
    return *known;
  }
  const XschemSymbol *symbol = nullptr;
  if (reference.contains(QLatin1Char('(')) || reference.contains(QLatin1Char('$'))) {
    symbol = unknown(reference, QStringLiteral("its name is a program, which is not run"), place);
  } else if (reference.endsWith(QLatin1String(".sch"))) {
    symbol = unknown(reference, QStringLiteral("a schematic is placed without a symbol"), place);
  } else {
    QString fileName = search(reference, directory, false);
    if (fileName.isEmpty())
      symbol = builtIn(reference);
    if (symbol == nullptr && fileName.isEmpty())
      fileName = search(reference, directory, true);
    if (symbol == nullptr && fileName.isEmpty())
      symbol = unknown(reference, QStringLiteral("there is no such file; --symbols tells where to search"), place);
    XschemSymbol *read = symbol == nullptr ? readFile(fileName, false) : nullptr;
    if (read != nullptr)
      symbol = placed(read);
    else if (symbol == nullptr)
      symbol = unknown(reference, QStringLiteral("%1 cannot be read").arg(fileName), place);
  }
  symbolOfName_.insert(key, symbol);
  return symbol;
}

const XschemSymbol *XschemSymbols::unknown(const QString &reference, const QString &reason, const QString &place) {
  auto symbol = std::make_unique<XschemSymbol>();
  symbol->cell = xschemCellName(reference);
  symbol->source = QStringLiteral("symbol %1 is placed without terminals: %2").arg(reference, reason);
  symbol->role = XschemRole::Unknown;
  report_.problem(symbol->source, place);
  symbols_.push_back(std::move(symbol));
  return symbols_.back().get();
}

const XschemSymbol *XschemSymbols::builtIn(const QString &reference) {
  const QString folder = reference.section(QLatin1Char('/'), -2, -2);
  const XschemBuiltIn *known = xschemBuiltIn(xschemCellName(reference));
  if (known == nullptr || (!folder.isEmpty() && folder != QLatin1String("devices")))
    return nullptr;
  const QString key = QStringLiteral("\nbuilt-in ") + QLatin1String(known->cell);
  if (const XschemSymbol *symbol = symbolOfName_.value(key))
    return symbol;
  std::unique_ptr<XschemSymbol> symbol;
  const QString source = QStringLiteral("the import itself");
  if (known->symbol != nullptr) {
    const auto file = parseXschem(QByteArray(known->symbol), QLatin1String(known->cell), report_);
    symbol = makeSymbol(*file, QLatin1String(known->cell), source);
  } else {
    symbol = std::make_unique<XschemSymbol>();
    symbol->cell = QLatin1String(known->cell);
    symbol->source = source;
  }
  symbol->role = known->role;
  symbol->isGlobal = known->isGlobal;
  if (known->defaultLabel != nullptr)
    symbol->defaults = XschemProperties(QStringLiteral("lab=") + QLatin1String(known->defaultLabel));
  const XschemSymbol *kept = placed(keep(std::move(symbol), reference));
  symbolOfName_.insert(key, kept);
  return kept;
}

const XschemSymbol *XschemSymbols::addEmbedded(const QString &reference, const XschemFile &embedded, int line) {
  auto symbol = makeSymbol(embedded, xschemCellName(reference), embedded.place(line));
  const XschemSymbol *kept = placed(keep(std::move(symbol), embedded.place(line)));
  embedded_.insert(embedded.name + QLatin1Char('\n') + reference, kept);
  return kept;
}

QString XschemSymbols::search(const QString &reference, const QString &fromDirectory, bool lastParts) const {
  QString name = reference;
  if (!name.endsWith(QLatin1String(".sym")))
    name += QLatin1String(".sym");
  if (QDir::isAbsolutePath(name) && QFileInfo(name).isFile())
    return name;
  QStringList directories(fromDirectory);
  for (QString parent = QFileInfo(fromDirectory).path();
       parent != directories.last() && directories.size() < kDeepestFolder; parent = QFileInfo(parent).path())
    directories.append(parent);
  directories += searchDirectories_;
  const int parts = name.count(QLatin1Char('/')) + 1;
  const int first = lastParts ? qMax(1, parts - kMostLastParts) : 0;
  for (int i = first; i < (lastParts ? parts : 1); ++i) {
    const QString part = name.section(QLatin1Char('/'), i);
    for (const QString &directory : directories) {
      QString fileName = QDir(directory).filePath(part);
      if (!part.isEmpty() && QFileInfo(fileName).isFile())
        return fileName;
    }
  }
  return {};
}

std::vector<const XschemSymbol *> XschemSymbols::symbols() const {
  std::vector<const XschemSymbol *> result;
  for (const auto &symbol : symbols_) {
    if (symbol->isNamed || symbol->isPlaced)
      result.push_back(symbol.get());
  }
  return result;
}
