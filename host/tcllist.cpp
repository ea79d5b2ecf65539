#include "tcllist.h"

#include "hosterror.h"
#include "oaplugincore.h"
#include "pluginsession.h"
#include "tclinterpreter.h"

#include <tcl.h>

#include <vector>

namespace {

QString listOf(const QStringList &elements) {
  std::vector<QByteArray> bytes;
  bytes.reserve(static_cast<std::size_t>(elements.size()));
  for (const QString &element : elements)
    bytes.push_back(element.toUtf8());
  std::vector<const char *> words;
  words.reserve(bytes.size());
  for (const QByteArray &word : bytes)
    words.push_back(word.constData());
  char *merged = Tcl_Merge(static_cast<int>(words.size()), words.data());
  QString list = textForTcl(merged);
  Tcl_Free(merged);
  return list;
}

QStringList split(const char *list) {
  const char **words = nullptr;
  int count = 0;
  if (Tcl_SplitList(nullptr, list, &count, &words) != TCL_OK)
    throw HostError(QStringLiteral("a script of oahost gives no list: %1").arg(QString::fromUtf8(list)));
  QStringList elements;
  elements.reserve(count);
  for (int i = 0; i < count; ++i)
    elements.append(QString::fromUtf8(words[i]));
  Tcl_Free(reinterpret_cast<char *>(words));
  return elements;
}

} // namespace

QStringList runTclScript(PluginSession &session, const char *script, const QStringList &arguments,
                         const QString &what) {
  TclInterpreter interpreter(TclInterpreter::kNoOutput);
  session.core().tclInit(interpreter.get());
  // Compiled as the body of a procedure.
  const QString text = QStringLiteral("proc script {arguments} {%1}\nscript [list %2]")
                           .arg(QString::fromLatin1(script), listOf(arguments));
  if (session.core().tclExec(interpreter.get(), text) != TCL_OK)
    throw HostError(QStringLiteral("%1: %2").arg(what, QString::fromUtf8(interpreter.result())));
  return split(interpreter.result().constData());
}

QStringList elementsOf(const QString &list) { return split(list.toUtf8().constData()); }
