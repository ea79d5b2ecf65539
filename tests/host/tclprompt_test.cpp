// oahost tcl at a terminal. Results are told from what the terminal echoes by being no part of what was typed.

#include "hostprocess.h"
#include "pseudoterminal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;

const char kEndOfInput[] = "\x04"; // Ctrl-D
const char kInterrupt[] = "\x03";  // Ctrl-C
const char kUp[] = "\x10";         // Ctrl-P, the previous command

class TclPromptOfHost : public testing::Test {
protected:
  static std::string waitForPrompt(PseudoTerminal &terminal, const char *prompt = "% ") {
    std::string seen = terminal.waitFor(prompt);
#ifdef OAHOST_HAS_LIBEDIT
    terminal.waitForKeys();
#endif
    return seen;
  }
  HostProcess host;
  const std::vector<std::string> words{OAHOST_FILE, "tcl"};
  const std::string home = host.path("").toStdString();
};

TEST_F(TclPromptOfHost, EvaluatesWhatIsTyped) {
  PseudoTerminal terminal(words, home);
  waitForPrompt(terminal);
  terminal.type("expr {6 * 7}\r");
  EXPECT_THAT(waitForPrompt(terminal), HasSubstr("\n42\r\n"));
  terminal.type("puts [oa::getName [oa::ViewTypeGet 0]]; set none {}\r");
  EXPECT_THAT(waitForPrompt(terminal), HasSubstr("\nmaskLayout\r\n"));
  terminal.type("error [string reverse gnorw]\r");
  EXPECT_THAT(waitForPrompt(terminal), HasSubstr("\nwrong\r\n"));
  terminal.type("exit 3\r");
  EXPECT_EQ(terminal.exitCode(), 3);
}

TEST_F(TclPromptOfHost, ShowsALineThatHasNotEnded) {
  PseudoTerminal terminal(words, home);
  waitForPrompt(terminal);
  terminal.type("puts -nonewline [string reverse olleh]\r");
  EXPECT_THAT(waitForPrompt(terminal), HasSubstr("\nhello% "));
  terminal.type("exit 3\r");
  EXPECT_EQ(terminal.exitCode(), 3);
}

TEST_F(TclPromptOfHost, AsksForTheRestOfACommand) {
  PseudoTerminal terminal(words, home);
  waitForPrompt(terminal);
  terminal.type("string reverse {ab\r");
  waitForPrompt(terminal, "> ");
  terminal.type("cd}\r");
  EXPECT_THAT(waitForPrompt(terminal), HasSubstr("\ndc\r\nba\r\n"));
  terminal.type(kEndOfInput);
  EXPECT_EQ(terminal.exitCode(), 0);
}

TEST_F(TclPromptOfHost, DropsWhatIsTypedAtAnInterrupt) {
  PseudoTerminal terminal(words, home);
  waitForPrompt(terminal);
  terminal.type("error dropped ");
  terminal.type(kInterrupt);
  waitForPrompt(terminal);
  terminal.type("string reverse {ab\r");
  waitForPrompt(terminal, "> ");
  terminal.type(kInterrupt);
  waitForPrompt(terminal);
  terminal.type("expr {6 * 7}\r");
  EXPECT_THAT(waitForPrompt(terminal), HasSubstr("expr {6 * 7}\r\n42\r\n"));
  terminal.type("exit 3\r");
  EXPECT_EQ(terminal.exitCode(), 3);
}

TEST_F(TclPromptOfHost, EndsACommandAtAnInterrupt) {
  PseudoTerminal terminal(words, home);
  waitForPrompt(terminal);
  terminal.type("puts {is running}; while 1 {}\r");
  terminal.waitFor("\nis running\r\n");
  terminal.type(kInterrupt);
  EXPECT_THAT(waitForPrompt(terminal), HasSubstr("interrupted\r\n"));
  terminal.type("expr {6 * 7}\r");
  EXPECT_THAT(waitForPrompt(terminal), HasSubstr("\n42\r\n"));
  // A command that catches that is ended by a second one, and the process with it.
  terminal.type("while 1 {if [catch {puts begins; while 1 {}}] {puts {goes on}}}\r");
  terminal.waitFor("\nbegins\r\n");
  terminal.type(kInterrupt);
  terminal.waitFor("goes on\r\nbegins\r\n");
  terminal.type(kInterrupt);
  EXPECT_EQ(terminal.exitCode(), -1);
#ifdef OAHOST_HAS_LIBEDIT
  EXPECT_THAT(host.read(".oahost_history").toStdString(), HasSubstr("catch"));
#endif
}

#ifdef OAHOST_HAS_LIBEDIT
TEST_F(TclPromptOfHost, CompletesAtTab) {
  PseudoTerminal terminal(words, home);
  waitForPrompt(terminal);
  const struct {
    const char *name, *typed, *result;
  } cases[] = {
      {"command", "string length oa::BaseIni\t\r", "\n12\r\n"},
      {"name space, then command", "string length oa\tBaseIni\t\r", "\n12\r\n"},
      {"variable", "string length $tcl_platform(mach\x15string length $::oa::oacMaskLay\t\r", "\n1\r\n"},
      {"variable in braces", "string length ${::oa::oacMaskLay\t\r", "\n1\r\n"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    terminal.type(c.typed);
    EXPECT_THAT(waitForPrompt(terminal), HasSubstr(c.result));
  }
}

TEST_F(TclPromptOfHost, RemembersCommandsFromOneSessionToTheNext) {
  const char *command = "string repeat xy 3\r";
  {
    PseudoTerminal terminal(words, home);
    waitForPrompt(terminal);
    terminal.type(command);
    EXPECT_THAT(waitForPrompt(terminal), HasSubstr("\nxyxyxy\r\n"));
    terminal.type("expr 6*7\r");
    waitForPrompt(terminal);
    terminal.type(std::string(kUp) + kUp + "\r");
    EXPECT_THAT(waitForPrompt(terminal), HasSubstr("\nxyxyxy\r\n"));
    EXPECT_THAT(host.read(".oahost_history").toStdString(), HasSubstr("repeat")); // sessions may end badly
    terminal.type("exit 3\r");
    EXPECT_EQ(terminal.exitCode(), 3);
  }
  EXPECT_THAT(host.read(".oahost_history").toStdString(), HasSubstr("expr"));
  PseudoTerminal terminal(words, home);
  waitForPrompt(terminal);
  terminal.type(std::string(kUp) + kUp + "\r"); // before "exit 3"
  EXPECT_THAT(waitForPrompt(terminal), HasSubstr("\nxyxyxy\r\n"));
  terminal.type(kEndOfInput);
  EXPECT_EQ(terminal.exitCode(), 0);
}
#endif

} // namespace
