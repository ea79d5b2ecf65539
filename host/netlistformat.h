#ifndef NETLISTFORMAT_H
#define NETLISTFORMAT_H

#include "netlistmodel.h"

#include <functional>
#include <optional>

// Texts in which @name stands for a value: the parameters of imported devices, and the netlist line that a symbol
// prescribes ("xschem.format").
namespace netlistformat {

// The value of a name; nothing when it has none.
using Lookup = std::function<std::optional<QString>(const QString &name)>;

// Puts values in the place of names, those in values too. A name without a value stays as it is.
QString resolved(const QString &text, const Lookup &lookup);

// The expression of expr('...') in quotes, for the simulator to compute.
QString withPlainExpressions(const QString &text);

// What a format is filled in with.
struct Line {
  Lookup value;
  // The nodes of all terminals, and those of a pin by its name in host syntax; nothing for an unknown pin.
  QString pinList;
  QStringList pinNames; // in host syntax, in the order in which @#0, @#1, ... count them
  std::function<std::optional<QString>(const QString &pin)> pin;
};

// Why it cannot be filled in: it is to be computed by Tcl, or asks for what is not known here. Empty when it can.
QString faultOf(const QString &format);

// The netlist lines, one each, without continuation. @name, @symname and properties by @property; @pinlist, @@pin,
// @#pin and @#number are nodes, @#pin:name is the name of a pin; a backslash only ends a name. A property without a
// value is left out, an unknown pin too.
QStringList filledIn(const QString &format, const Line &line);

} // namespace netlistformat

#endif
