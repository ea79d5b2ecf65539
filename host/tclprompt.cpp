#include "tclprompt.h"

#ifdef OAHOST_HAS_LIBEDIT
#include "tclcompletion.h"

#include <editline/readline.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>
#else
#include <iostream>
#include <string>
#endif

#include <QFile>

#ifdef OAHOST_HAS_LIBEDIT

namespace {

constexpr int kKeptCommands = 1000;

// The library's call-backs carry no pointer of ours.
Tcl_Interp *completedInterp = nullptr;
QList<QByteArray> completions;

char *nextCompletion(const char *, int state) {
  return state < completions.size() ? strdup(completions[state].constData()) : nullptr;
}

char **complete(const char *word, int start, int) {
  completions = tclCompletions(completedInterp, QByteArray(rl_line_buffer, start) + word);
  if (completions.isEmpty())
    return nullptr; // then file names
  // A name space goes on.
  rl_completion_append_character = completions.first().endsWith("::") ? '\0' : ' ';
  return rl_completion_matches(word, nextCompletion);
}

} // namespace

TclPrompt::TclPrompt(Tcl_Interp *interp, const QString &historyFile, int output)
    : historyFile_(QFile::encodeName(historyFile)) {
  completedInterp = interp;
  rl_readline_name = const_cast<char *>("oahost");
  static char breakCharacters[] = " \t\n;\"[]{}()$";
  rl_completer_word_break_characters = breakCharacters;
  rl_attempted_completion_function = complete;
  // Stays open: the prompt is there to the end of the process.
  if (std::FILE *screen = fdopen(dup(output), "w"))
    rl_outstream = screen;
  rl_initialize();
  using_history();
  stifle_history(kKeptCommands);
  if (!historyFile_.isEmpty())
    read_history(historyFile_.constData()); // there is none before the first session
}

void TclPrompt::save() {
  if (!historyFile_.isEmpty())
    write_history(historyFile_.constData());
}

bool TclPrompt::readLine(const char *prompt, QByteArray &line) {
  char *typed = readline(prompt);
  if (typed == nullptr)
    return false;
  line = typed;
  std::free(typed);
  return true;
}

void TclPrompt::remember(QByteArray command) {
  command = command.trimmed().replace('\n', ' ');
  if (!command.isEmpty())
    add_history(command.constData());
}

#else

TclPrompt::TclPrompt(Tcl_Interp *, const QString &historyFile, int) : historyFile_(QFile::encodeName(historyFile)) {}

void TclPrompt::save() {}

bool TclPrompt::readLine(const char *prompt, QByteArray &line) {
  std::cerr << prompt << std::flush;
  std::string typed;
  if (!std::getline(std::cin, typed))
    return false;
  line = QByteArray::fromStdString(typed);
  return true;
}

void TclPrompt::remember(QByteArray) {}

#endif
