#include "netlistspice.h"

#include "netlistformat.h"
#include "schematicconnectivity.h"
#include "spicenames.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>

namespace {

constexpr int kLineLength = 80;

const QString kPrefix = QStringLiteral("spiceprefix");
const QString kModel = QStringLiteral("model");

// Breaks a line between words; a word that is too long stands alone. Words end at blanks outside quotes.
QByteArray wrapped(const QStringList &words) {
  QByteArray lines;
  int column = 0;
  for (const QString &word : words) {
    const QByteArray bytes = word.toUtf8();
    if (column > 0 && column + 1 + word.size() > kLineLength) {
      lines += "\n+";
      column = 1;
    }
    if (column > 0) {
      lines += ' ';
      ++column;
    }
    lines += bytes;
    column += word.size();
  }
  return lines + '\n';
}

// Blanks in quotes or braces belong to a word.
QStringList wordsOf(const QString &line) {
  QStringList words;
  QString word;
  QChar closing;
  for (const QChar character : line) {
    if (!closing.isNull()) {
      closing = character == closing ? QChar() : closing;
    } else if (character == QLatin1Char('\'') || character == QLatin1Char('"')) {
      closing = character;
    } else if (character == QLatin1Char('{')) {
      closing = QLatin1Char('}');
    } else if (character == QLatin1Char(' ')) {
      if (!word.isEmpty())
        words.append(word);
      word.clear();
      continue;
    }
    word += character;
  }
  if (!word.isEmpty())
    words.append(word);
  return words;
}

// A value that would fall apart gets quotes.
QString quotedValue(const QString &value) {
  QString text = netlistformat::withPlainExpressions(value).simplified();
  static const QRegularExpression whole(QStringLiteral("^('[^']*'|\"[^\"]*\"|\\{[^}]*\\})$"));
  static const QRegularExpression breaks(QStringLiteral("[\\s=,;()]"));
  if (text.isEmpty())
    return QStringLiteral("\"\"");
  if (whole.match(text).hasMatch() || !breaks.match(text).hasMatch())
    return text;
  return text.contains(QLatin1Char('\'')) ? QLatin1Char('{') + text + QLatin1Char('}')
                                          : QLatin1Char('\'') + text + QLatin1Char('\'');
}

QString assignment(const QString &name, const QString &value) {
  return SpiceNames::legal(name) + QLatin1Char('=') + quotedValue(value);
}

class SpiceWriter {
public:
  SpiceWriter(const Netlist &netlist, ImportReport &report) : netlist_(netlist), report_(report) {}
  QByteArray write();

private:
  void writeCell(int index);
  void nameNodes(const NetlistCell &cell);
  void writeCall(const NetlistCell &cell, const NetlistDevice &device);
  void writeDevice(const NetlistCell &cell, const NetlistDevice &device);
  void writeFormatted(const NetlistCell &cell, const NetlistDevice &device, const QString &format);
  QString elementName(const NetlistCell &cell, const QString &name, const QString &prefix);
  QString nodeName(int node) const { return nodes_[static_cast<std::size_t>(node)]; }
  QString extraNode(const QString &net) const;
  QStringList portNodes(const NetlistCell &cell, const NetlistDevice &device, const NetlistCell &master);
  netlistformat::Lookup lookupOf(const NetlistCell &cell, const NetlistDevice &device);
  QString named(SpiceNames &names, const QString &name, const QString &where);

  const Netlist &netlist_;
  ImportReport &report_;
  QByteArray output_;
  QHash<QString, QString> globals_; // by the name in lower case
  std::vector<QString> cellNames_;
  // Of the cell in hand.
  SpiceNames nodeNames_, elementNames_;
  std::vector<QString> nodes_;
  QStringList ports_;
  QHash<QString, int> nodeOfNet_;
};

QByteArray SpiceWriter::write() {
  output_ = "* netlist of " + netlist_.cells.front().path().toUtf8() + "\n";
  SpiceNames names;
  QStringList globalWords(QStringLiteral(".global"));
  for (const NetlistCell &cell : netlist_.cells) {
    cellNames_.push_back(named(names, cell.cell, cell.path()));
    for (const int node : cell.globals) {
      const QString global = SpiceNames::legal(cell.nodes[node]);
      if (!globals_.contains(global.toLower())) {
        globals_.insert(global.toLower(), global);
        if (global != QLatin1String("0")) // which is global by itself
          globalWords.append(global);
      }
    }
  }
  if (globalWords.size() > 1)
    output_ += wrapped(globalWords);
  for (const int index : netlist_.mastersFirst)
    writeCell(index);
  return output_;
}

// The legal form of a name; one that differs by more than its brackets is told.
QString SpiceWriter::named(SpiceNames &names, const QString &name, const QString &where) {
  QString result = names.unique(name);
  QString expected = name;
  expected.replace(QLatin1Char('<'), QLatin1Char('[')).replace(QLatin1Char('>'), QLatin1Char(']'));
  if (result != expected)
    report_.notice(QStringLiteral("a name is written otherwise for SPICE"),
                   QStringLiteral("%1, %2 is %3").arg(where, name, result));
  return result;
}

void SpiceWriter::writeCell(int index) {
  const NetlistCell &cell = netlist_.cells[static_cast<std::size_t>(index)];
  nameNodes(cell);
  elementNames_ = SpiceNames();
  const QString name = cellNames_[static_cast<std::size_t>(index)];
  QStringList words = QStringList{QStringLiteral(".subckt"), name} + ports_;
  if (cell.symbol != nullptr) {
    const QStringList extra = cell.symbol->extraNames();
    for (const auto &[property, value] : cell.symbol->properties) {
      if (!property.contains(QLatin1Char('.')) && property != kPrefix && property != kModel &&
          !extra.contains(property))
        words.append(assignment(property, value));
    }
  }
  output_ += "\n* " + cell.path().toUtf8() + '\n' + wrapped(words);
  for (const NetlistDevice &device : cell.devices) {
    if (device.master >= 0)
      writeCall(cell, device);
    else
      writeDevice(cell, device);
  }
  output_ += wrapped({QStringLiteral(".ends"), name});
}

// Ports keep their names where they can; no other node may be called like a global one.
void SpiceWriter::nameNodes(const NetlistCell &cell) {
  nodeNames_ = SpiceNames();
  nodes_.assign(static_cast<std::size_t>(cell.nodes.size()), QString());
  ports_.clear();
  for (const QString &global : globals_)
    nodeNames_.reserve(global);
  nodeOfNet_.clear();
  for (const int node : cell.globals)
    nodes_[static_cast<std::size_t>(node)] = globals_.value(SpiceNames::legal(cell.nodes[node]).toLower());
  for (const NetlistPort &port : cell.ports) {
    ports_.append(named(nodeNames_, port.name, cell.path()));
    if (port.node >= 0)
      nodes_[static_cast<std::size_t>(port.node)] = ports_.last();
  }
  for (int node = 0; node < cell.nodes.size(); ++node) {
    nodeOfNet_.insert(cell.nodes[node], node);
    QString &name = nodes_[static_cast<std::size_t>(node)];
    if (name.isNull())
      name = named(nodeNames_, cell.nodes[node], cell.path());
  }
}

// A letter in front tells SPICE what the element is.
QString SpiceWriter::elementName(const NetlistCell &cell, const QString &name, const QString &prefix) {
  const bool hasPrefix = name.startsWith(prefix, Qt::CaseInsensitive);
  return named(elementNames_, hasPrefix ? name : prefix + name, cell.path());
}

netlistformat::Lookup SpiceWriter::lookupOf(const NetlistCell &cell, const NetlistDevice &device) {
  return [this, &cell, &device, all = device.allParameters()](const QString &name) -> std::optional<QString> {
    if (name == QLatin1String("name"))
      return SpiceNames::legal(device.name);
    if (name == QLatin1String("symname"))
      return SpiceNames::legal(device.cell);
    const QString *value = findParameter(all, name);
    // A parameter of the subcircuit that the device stands in, as its symbol has it.
    if (value == nullptr && cell.symbol != nullptr)
      value = findParameter(cell.symbol->properties, name);
    if (value != nullptr)
      return *value;
    report_.notice(QStringLiteral("a netlist line asks for a property that nothing sets"),
                   QStringLiteral("%1, device %2, property %3").arg(cell.path(), device.name, name));
    return std::nullopt;
  };
}

// The value of a property that names a net: the node, when the cell has such a net.
QString SpiceWriter::extraNode(const QString &net) const {
  QString name = net;
  name.replace(QLatin1Char('['), QLatin1Char('<')).replace(QLatin1Char(']'), QLatin1Char('>'));
  const auto node = nodeOfNet_.constFind(name);
  return node == nodeOfNet_.constEnd() ? net : nodeName(*node);
}

QStringList SpiceWriter::portNodes(const NetlistCell &cell, const NetlistDevice &device, const NetlistCell &master) {
  const NetlistParameters all = device.allParameters();
  QHash<QString, int> nodeOf;
  for (int i = 0; i < device.terminals.size(); ++i)
    nodeOf.insert(device.terminals[i], device.nodes[static_cast<std::size_t>(i)]);
  QStringList nodes;
  QSet<QString> used;
  for (const NetlistPort &port : master.ports) {
    used.insert(port.name);
    const QString *value = nullptr;
    if (nodeOf.contains(port.name)) {
      nodes.append(nodeName(nodeOf.value(port.name)));
    } else if ((value = findParameter(all, port.name)) != nullptr && !value->isEmpty()) {
      nodes.append(extraNode(*value));
    } else {
      report_.problem(QStringLiteral("a port of a subcircuit is not connected"),
                      QStringLiteral("%1, device %2, port %3").arg(cell.path(), device.name, port.name));
      nodes.append(nodeNames_.unique(device.name + QLatin1Char('/') + port.name));
    }
  }
  for (const QString &terminal : device.terminals) {
    if (!used.contains(terminal))
      report_.problem(QStringLiteral("a terminal is no port of the subcircuit"),
                      QStringLiteral("%1, device %2, terminal %3").arg(cell.path(), device.name, terminal));
  }
  return nodes;
}

void SpiceWriter::writeCall(const NetlistCell &cell, const NetlistDevice &device) {
  const NetlistCell &master = netlist_.cells[static_cast<std::size_t>(device.master)];
  QStringList words(elementName(cell, device.name, QStringLiteral("X")));
  words += portNodes(cell, device, master);
  words.append(cellNames_[static_cast<std::size_t>(device.master)]);
  const QStringList extra = master.symbol != nullptr ? master.symbol->extraNames() : QStringList();
  const netlistformat::Lookup lookup = lookupOf(cell, device);
  for (const auto &[name, value] : device.parameters) {
    if (!name.contains(QLatin1Char('.')) && name != kPrefix && name != kModel && !extra.contains(name))
      words.append(assignment(name, netlistformat::resolved(value, lookup)));
  }
  output_ += wrapped(words);
}

void SpiceWriter::writeDevice(const NetlistCell &cell, const NetlistDevice &device) {
  const QString *format =
      device.symbol != nullptr ? findParameter(device.symbol->properties, QStringLiteral("xschem.format")) : nullptr;
  if (format != nullptr && !format->trimmed().isEmpty()) {
    const QString fault = netlistformat::faultOf(*format);
    if (fault.isEmpty()) {
      writeFormatted(cell, device, *format);
      return;
    }
    report_.problem(QStringLiteral("the netlist line of symbol %1 cannot be followed (%2); the ordinary one is written")
                        .arg(symbolKey(device.library, device.device), fault),
                    QStringLiteral("%1, device %2").arg(cell.path(), device.name));
  }
  const NetlistParameters all = device.allParameters();
  const netlistformat::Lookup lookup = lookupOf(cell, device);
  const auto valueOf = [&](const QString &name, const QString &standard) {
    const QString *value = findParameter(all, name);
    return value != nullptr ? netlistformat::resolved(*value, lookup) : standard;
  };
  QStringList words(elementName(cell, device.name, valueOf(kPrefix, QStringLiteral("X"))));
  for (const int node : device.nodes)
    words.append(nodeName(node));
  const QString model = valueOf(kModel, device.cell).simplified();
  if (!model.isEmpty())
    words.append(model);
  for (const auto &[name, value] : all) {
    if (name != kPrefix && name != kModel)
      words.append(assignment(name, netlistformat::resolved(value, lookup)));
  }
  output_ += wrapped(words);
}

void SpiceWriter::writeFormatted(const NetlistCell &cell, const NetlistDevice &device, const QString &format) {
  netlistformat::Line line;
  const QStringList extra = device.symbol->extraNames();
  const NetlistParameters all = device.allParameters();
  line.value = [&, lookup = lookupOf(cell, device)](const QString &name) -> std::optional<QString> {
    const std::optional<QString> value = lookup(name);
    return value && extra.contains(name) ? extraNode(*value) : value;
  };
  QStringList nodes;
  for (const int node : device.nodes)
    nodes.append(nodeName(node));
  line.pinList = nodes.join(QLatin1Char(' '));
  line.pinNames = device.symbol->pins;
  line.pin = [&](const QString &pin) -> std::optional<QString> {
    QStringList found;
    for (const QString &bit : bitNamesOf(pin)) {
      const int node = device.nodeOf(bit);
      if (node < 0) {
        report_.problem(QStringLiteral("the netlist line of a symbol asks for a terminal that it does not have"),
                        QStringLiteral("%1, device %2, terminal %3").arg(cell.path(), device.name, bit));
        return std::nullopt;
      }
      found.append(nodeName(node));
    }
    return found.join(QLatin1Char(' '));
  };
  for (const QString &text : netlistformat::filledIn(format, line)) {
    QStringList words = wordsOf(text);
    words.first() = named(elementNames_, words.first(), cell.path());
    output_ += wrapped(words);
  }
}

} // namespace

QByteArray toSpice(const Netlist &netlist, ImportReport &report) { return SpiceWriter(netlist, report).write(); }
