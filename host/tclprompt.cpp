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

#include <tcl.h>

namespace {
constexpr char kPrompt[] = "% ";
constexpr char kContinuation[] = "> ";
} // namespace

bool TclPrompt::readCommand(QByteArray &command) {
  command.clear();
  QByteArray line;
  do {
    const Input input = readLine(command.isEmpty() ? kPrompt : kContinuation, line);
    if (input == Input::end)
      return false;
    if (TclInterrupt::takeDropped())
      command.clear();
    if (input == Input::line)
      command += line + '\n';
  } while (command.isEmpty() || Tcl_CommandComplete(command.constData()) == 0);
  remember(command);
  return true;
}

#ifdef OAHOST_HAS_LIBEDIT

namespace {

constexpr int kKeptCommands = 1000;

// The library's call-backs carry no pointer of ours.
Tcl_Interp *completedInterp = nullptr;
QList<QByteArray> completions;
sigjmp_buf droppedLine;

char *nextCompletion(const char *, int state) {
  return state < completions.size() ? strdup(completions[state].constData()) : nullptr;
}

char **complete(const char *word, int start, int) {
  TclInterrupt::endReading(); // not to be left in the middle
  const QByteArray before(rl_line_buffer, start);
  completions = tclCompletions(completedInterp, before + word);
  // A name space goes on.
  const bool isNameSpace = !completions.isEmpty() && completions.first().endsWith("::");
  rl_completion_append_character = isNameSpace ? '\0' : before.endsWith("${") ? '}' : ' ';
  // NULL: then file names.
  char **matches = completions.isEmpty() ? nullptr : rl_completion_matches(word, nextCompletion);
  TclInterrupt::beginReading(&droppedLine, "");
  return matches;
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

TclPrompt::Input TclPrompt::readLine(const char *prompt, QByteArray &line) {
  if (sigsetjmp(droppedLine, 1) != 0) {
    std::fputc('\n', rl_outstream);
    std::fflush(rl_outstream);
    return Input::dropped;
  }
  TclInterrupt::beginReading(&droppedLine, "");
  char *typed = readline(prompt);
  TclInterrupt::endReading();
  if (typed == nullptr)
    return Input::end;
  line = typed;
  std::free(typed);
  return Input::line;
}

void TclPrompt::remember(QByteArray command) {
  command = command.trimmed().replace('\n', ' ');
  if (command.isEmpty())
    return;
  add_history(command.constData());
  if (!historyFile_.isEmpty())
    write_history(historyFile_.constData());
}

#else

TclPrompt::TclPrompt(Tcl_Interp *, const QString &historyFile, int) : historyFile_(QFile::encodeName(historyFile)) {}

TclPrompt::Input TclPrompt::readLine(const char *prompt, QByteArray &line) {
  std::cerr << prompt << std::flush;
  TclInterrupt::beginReading(nullptr, "\n% ");
  std::string typed;
  const bool isRead = static_cast<bool>(std::getline(std::cin, typed));
  TclInterrupt::endReading();
  line = QByteArray::fromStdString(typed);
  return isRead ? Input::line : Input::end;
}

void TclPrompt::remember(QByteArray) {}

#endif
