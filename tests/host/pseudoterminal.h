#ifndef PSEUDOTERMINAL_H
#define PSEUDOTERMINAL_H

#include <string>
#include <vector>

#include <sys/types.h>

// A program on a terminal of its own: what a user would see and type. Every wait ends after a minute with an exception
// that shows what was on the screen by then.
class PseudoTerminal {
public:
  // `home` becomes the program's HOME and its working directory.
  PseudoTerminal(const std::vector<std::string> &words, const std::string &home);
  ~PseudoTerminal();
  PseudoTerminal(const PseudoTerminal &) = delete;
  PseudoTerminal &operator=(const PseudoTerminal &) = delete;

  void type(const std::string &keys);
  // Waits until the screen ends with the text and gives what has come since the last wait.
  std::string waitFor(const std::string &text);
  // Waits until the program has ended; -1: by a signal.
  int exitCode();
  // Waits until the program is given every key at once, as one that edits lines asks of the terminal a moment after its
  // prompt; what is typed earlier does not count as a key to edit with.
  void waitForKeys();

private:
  int reap();
  bool readMore(); // false when the program has closed the terminal

  int descriptor_ = -1;
  pid_t child_ = -1;
  std::string screen_;
};

#endif
