#ifndef ERRORGUARD_H
#define ERRORGUARD_H

// The one guard of the interface operations. A body may end early with an oaException or with a thrown character (the
// plug-in's own abort signal); the guard tells of it and the operation goes on to return its default result. Exceptions
// of every other type pass to the host.
//
//   QStringList names;
//   guard::printing("getCells", [&] { ... names.append(...); ... });
//   return names;

#include <cstdio>

#include <QString>

#include <oa/oaDesignDB.h>

#include "qttoolkit.h"

namespace guard {

// Runs `body`; hands an oaException to `onException(const oa::oaException &)` and a thrown character to
// `onCharacter(char)`. Returns whether the body ran to its end.
template <typename Body, typename OnException, typename OnCharacter>
bool run(Body body, OnException onException, OnCharacter onCharacter) {
  try {
    body();
    return true;
  } catch (const oa::oaException &exception) {
    onException(exception);
  } catch (char character) {
    onCharacter(character);
  }
  return false;
}

// The convention of the interface operations: "ERROR (label): message \n" on standard output. `gap` stands between the
// colon and the message of an exception; one operation has two blanks there.
template <typename Body> bool printing(const char *label, Body body, const char *gap = " ") {
  return run(
      body,
      [=](const oa::oaException &exception) {
        std::printf("ERROR (%s):%s%s \n", label, gap, static_cast<const oa::oaChar *>(exception.getMsg()));
      },
      [=](char character) { std::printf("ERROR (%s): %c \n", label, character); });
}

// For operations whose result alone tells of the failure.
template <typename Body> bool silently(Body body) {
  return run(
      body, [](const oa::oaException &) {}, [](char) {});
}

// For the two operations whose result stands for every failure, whatever its type.
template <typename Body> bool swallowing(Body body) {
  try {
    body();
    return true;
  } catch (...) {
    return false;
  }
}

// For operations that tell the user: calls `report(const QString &cause)` with the exception's message or the
// character. A body that gives up with a translated text of its own throws it as a QString, which is reported in the
// same way.
template <typename Body, typename Report> bool reporting(Body body, Report report) {
  try {
    return run(
        body, [&](const oa::oaException &exception) { report(toolkit::fromEightBit(exception.getMsg())); },
        [&](char character) { report(QString(QChar::fromLatin1(character))); });
  } catch (const QString &text) {
    report(text);
  }
  return false;
}

} // namespace guard

#endif
