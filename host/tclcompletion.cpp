#include "tclcompletion.h"

#include <algorithm>
#include <cstring>

#include <tcl.h>

namespace {

// The characters that stand for others in a pattern stand for themselves here.
QByteArray patternFor(const QByteArray &word) {
  QByteArray pattern;
  for (const char character : word) {
    if (std::strchr("*?[]\\", character) != nullptr)
      pattern += '\\';
    pattern += character;
  }
  return pattern + '*';
}

// Appends the elements of the list that a command of three words gives.
void appendNames(Tcl_Interp *interp, const char *command, const char *subcommand, const QByteArray &argument,
                 const QByteArray &tail, QList<QByteArray> &names) {
  Tcl_Obj *words[] = {Tcl_NewStringObj(command, -1), Tcl_NewStringObj(subcommand, -1),
                      Tcl_NewStringObj(argument.constData(), argument.size())};
  for (Tcl_Obj *word : words)
    Tcl_IncrRefCount(word);
  int count = 0;
  Tcl_Obj **elements = nullptr;
  if (Tcl_EvalObjv(interp, 3, words, TCL_EVAL_GLOBAL) == TCL_OK &&
      Tcl_ListObjGetElements(interp, Tcl_GetObjResult(interp), &count, &elements) == TCL_OK) {
    for (int i = 0; i < count; ++i)
      names.append(QByteArray(Tcl_GetString(elements[i])) + tail);
  }
  for (Tcl_Obj *word : words)
    Tcl_DecrRefCount(word);
}

// `namespace children` wants the parent apart.
void appendNameSpaces(Tcl_Interp *interp, const QByteArray &word, QList<QByteArray> &names) {
  const int separator = word.lastIndexOf("::");
  const QByteArray parent = separator < 0 ? QByteArray() : word.left(separator);
  QList<QByteArray> children;
  appendNames(interp, "namespace", "children", parent.isEmpty() ? QByteArray("::") : parent, "::", children);
  for (const QByteArray &child : children) {
    if (child.startsWith(word.startsWith("::") ? word : "::" + word))
      names.append(child);
  }
}

} // namespace

int tclWordStart(const QByteArray &line) {
  int start = line.size();
  while (start > 0 && std::strchr(" \t\n;\"[]{}()$", line[start - 1]) == nullptr)
    --start;
  return start;
}

QList<QByteArray> tclCompletions(Tcl_Interp *interp, const QByteArray &line) {
  const int start = tclWordStart(line);
  const QByteArray word = line.mid(start);
  const QByteArray before = line.left(start);
  const bool isVariable = before.endsWith('$') || before.endsWith("${");
  QList<QByteArray> names;
  Tcl_SavedResult saved;
  Tcl_SaveResult(interp, &saved);
  appendNames(interp, "info", isVariable ? "vars" : "commands", patternFor(word), QByteArray(), names);
  appendNameSpaces(interp, word, names);
  Tcl_RestoreResult(interp, &saved);
  // Tcl answers with full names.
  for (QByteArray &name : names) {
    if (name.startsWith("::") && !word.startsWith("::"))
      name.remove(0, 2);
  }
  std::sort(names.begin(), names.end());
  names.erase(std::unique(names.begin(), names.end()), names.end());
  return names;
}
