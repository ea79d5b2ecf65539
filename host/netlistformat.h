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
  std::function<std::optional<QString>(const QString &pin)> pin;
};

// Whether it can be filled in; those that are to be computed by Tcl cannot.
bool isUsable(const QString &format);

// The netlist lines, one each, without continuation. @name, @symname and properties by @property; @pinlist and @@pin
// are nodes; a backslash only ends a name. A property without a value is left out, an unknown pin too.
QStringList filledIn(const QString &format, const Line &line);

} // namespace netlistformat

#endif
