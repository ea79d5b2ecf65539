#ifndef NETLISTMASTER_H
#define NETLISTMASTER_H

#include <string>
#include <unordered_map>
#include <vector>

#include <QString>
#include <QStringList>

#include "oaconvert.h"

// A master as the devices of a netlist see it: its terminals, bit by bit. The instances of one header share it, so
// that a name of a terminal is taken apart once, however many instances connect to it.
class NetlistMaster {
public:
  // What the name of a terminal on an instance stands for.
  struct Terminal {
    // Host syntax.
    QString name;
    // For each bit its place in terminals(). Empty when the master has no such terminal.
    std::vector<size_t> places;
    // For a terminal that the master does not have: the bits of the name.
    QStringList bitNames;
    bool isReported = false;

    bool isMissing() const { return places.empty(); }
    size_t width() const { return isMissing() ? size_t(bitNames.size()) : places.size(); }
  };

  // The master of `inst`, opened if it is there.
  explicit NetlistMaster(oa::oaInst *inst);

  // The host's name of the component.
  const QString &deviceName() const { return deviceName_; }
  // lib/cell/view
  const QString &path() const { return path_; }
  // Why nothing is known of the master's terminals; empty when they are known.
  const QString &fault() const { return fault_; }
  // Bits of the explicit terminals in their order, host syntax, each once.
  const QStringList &terminals() const { return terminals_; }

  // The terminal of a connection. `order` is the connection's place among those of its instance: instances of one
  // master mostly have theirs in the same order, so the guess saves the look-up. The reference stays valid.
  Terminal &terminalOf(oa::oaInstTerm *connection, size_t order);

private:
  void readTerminals(oa::oaInst *inst);
  void addTerminal(oa::oaTerm *term);
  Terminal resolve(oa::oaInstTerm *connection) const;

  QString deviceName_;
  QString path_;
  QString fault_;
  QStringList terminals_;
  // By text in host syntax: the bits, and the terminals as wholes.
  std::unordered_map<std::string, size_t> placeOfBit_;
  std::unordered_map<std::string, std::vector<size_t>> placesOfTerminal_;
  // By text as OpenAccess gives it.
  std::unordered_map<std::string, Terminal> terminalsByName_;
  typedef std::unordered_map<std::string, Terminal>::value_type NamedTerminal;
  std::vector<NamedTerminal *> guesses_;
  oa::oaString text_;
};

#endif
