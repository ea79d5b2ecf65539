#include "xschemimporter.h"

#include "hosterror.h"
#include "xschemschematic.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

const QString kSchematicSuffix = QStringLiteral(".sch");
const QString kSymbolSuffix = QStringLiteral(".sym");
constexpr int kDeepestDirectory = 100;

bool haveSameBytes(const QString &one, const QString &other) {
  QFile oneFile(one), otherFile(other);
  return oneFile.open(QIODevice::ReadOnly) && otherFile.open(QIODevice::ReadOnly) &&
         oneFile.size() == otherFile.size() && oneFile.readAll() == otherFile.readAll();
}

} // namespace

XschemImporter::XschemImporter(const XschemImportOptions &options, ImportReport &report)
    : options_(options), report_(report), symbols_(options.symbolDirectories, options.scale, report) {}

void XschemImporter::run(const std::function<void(qint64, qint64)> &onProgress) {
  for (const QString &input : options_.inputs)
    addInput(input);
  if (symbolFiles_.isEmpty() && schematicFiles_.isEmpty())
    throw HostError(
        QStringLiteral("%1: no .sch or .sym file is there").arg(options_.inputs.join(QStringLiteral(", "))));
  qint64 total = 0, done = 0;
  for (const QString &fileName : symbolFiles_ + schematicFiles_)
    total += QFileInfo(fileName).size();
  const auto advance = [&](const QString &fileName) {
    done += QFileInfo(fileName).size();
    onProgress(done, total);
  };
  for (const QString &fileName : qAsConst(symbolFiles_)) {
    symbols_.addFile(fileName);
    advance(fileName);
  }
  // The list grows when schematics of placed symbols are wanted.
  for (int i = 0; i < schematicFiles_.size(); ++i) {
    const QString fileName = schematicFiles_[i];
    readSchematic(fileName);
    advance(fileName);
    if (options_.isRecursive)
      addSchematicsOfSymbols();
  }
}

void XschemImporter::addInput(const QString &input) {
  const QFileInfo info(input);
  if (!info.exists())
    throw HostError(QStringLiteral("%1: there is no such file or directory").arg(input));
  if (info.isDir())
    addDirectory(input, 0);
  else if (input.endsWith(kSchematicSuffix) || input.endsWith(kSymbolSuffix))
    addFile(input);
  else
    throw HostError(QStringLiteral("%1: expected a .sch or .sym file, or a directory").arg(input));
}

// Links are followed, but no directory is visited twice.
void XschemImporter::addDirectory(const QString &directory, int depth) {
  const QString canonical = QFileInfo(directory).canonicalFilePath();
  if (seenDirectories_.contains(canonical))
    return;
  if (depth > kDeepestDirectory) {
    report_.problem(QStringLiteral("directories are nested too deeply"), directory);
    return;
  }
  seenDirectories_.insert(canonical);
  const QDir dir(directory);
  if (!dir.isReadable())
    report_.problem(QStringLiteral("the directory cannot be read"), directory);
  for (const QFileInfo &entry : dir.entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot, QDir::Name)) {
    const QString name = entry.fileName();
    if (entry.isDir())
      addDirectory(entry.filePath(), depth + 1);
    else if (name.endsWith(kSchematicSuffix) || name.endsWith(kSymbolSuffix))
      addFile(entry.filePath());
  }
}

void XschemImporter::addFile(const QString &fileName) {
  const QString canonical = QFileInfo(fileName).canonicalFilePath();
  // Links that lead nowhere have no canonical name, and are told when they are opened.
  const QString key = canonical.isEmpty() ? fileName : canonical;
  if (seenFiles_.contains(key))
    return;
  seenFiles_.insert(key);
  (fileName.endsWith(kSymbolSuffix) ? symbolFiles_ : schematicFiles_).append(fileName);
}

void XschemImporter::readSchematic(const QString &fileName) {
  const QString cell = xschemCellName(fileName);
  const auto first = schematicSources_.constFind(cell);
  if (first != schematicSources_.constEnd()) {
    if (!haveSameBytes(*first, fileName))
      report_.problem(QStringLiteral("cell %1 has a schematic from %2 already; the one of %3 is left out")
                          .arg(cell, *first, fileName),
                      fileName + QStringLiteral(":1"));
    return;
  }
  const std::unique_ptr<XschemFile> file = readXschemFile(fileName, report_);
  if (file == nullptr)
    return;
  schematicSources_.insert(cell, fileName);
  SchematicModel model = XschemSchematic(*file, options_.library, options_.scale, symbols_, report_).build();
  schematics_.push_back({cell, fileName, std::move(model)});
}

void XschemImporter::addSchematicsOfSymbols() {
  for (const XschemSymbol *symbol : symbols_.symbols()) {
    QString fileName = symbol->source;
    if (!symbol->isPlaced || !fileName.endsWith(kSymbolSuffix))
      continue;
    fileName.replace(fileName.size() - kSymbolSuffix.size(), kSymbolSuffix.size(), kSchematicSuffix);
    if (QFileInfo(fileName).isFile())
      addFile(fileName);
  }
}

QHash<QString, const SymbolModel *> XschemImporter::symbolTable() const {
  QHash<QString, const SymbolModel *> table;
  for (const XschemSymbol *symbol : symbols_.symbols())
    table.insert(symbolKey(options_.library, xschemDeviceName(symbol->cell)), &symbol->model);
  return table;
}
