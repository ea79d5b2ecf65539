#ifndef EVALUATEDTEXT_H
#define EVALUATEDTEXT_H

#include "schematicmodel.h"

#include <QStringList>

#include <optional>

// Texts of a symbol that say something else for each placement. An expression is "@" and a word, at the text's begin or
// after anything but a letter or digit:
//   @name      the instance's name
//   @symname   the cell
//   @KEY       the placement's property KEY, else the symbol's property of that name
//   @#...      something of a terminal, and
//   @spice_... a result: only a simulator knows them

// True for a text that says something else wherever it is placed: it has an "@" with a letter, "_", "#" or "@" behind
// it, or is a script, tcleval(...).
bool isEvaluatedText(const QString &text);

// The name with the range of an iterated instance: I1, I1<0:3>.
QString instanceName(const SchematicPlacement &placement);

// The words of all its expressions, without the @.
QStringList expressionsIn(const QString &text);

// `text` with the values of its expressions, empty where there is none. Nothing when there is nothing to be shown for
// this placement: none of its expressions has a value, or one of them waits for a simulator.
std::optional<QString> evaluatedText(const QString &text, const SchematicPlacement &placement,
                                     const SymbolModel &symbol);

#endif
