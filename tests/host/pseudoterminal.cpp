#include "pseudoterminal.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace {
constexpr int kTimeoutMs = 60000;
}

PseudoTerminal::PseudoTerminal(const std::vector<std::string> &words, const std::string &home) {
  std::vector<char *> arguments;
  arguments.reserve(words.size() + 1);
  for (const std::string &word : words) {
    arguments.push_back(const_cast<char *>(word.c_str()));
  }
  arguments.push_back(nullptr);
  const winsize size{24, 200, 0, 0};
  child_ = ::forkpty(&descriptor_, nullptr, nullptr, &size);
  if (child_ == 0) {
    ::setenv("HOME", home.c_str(), 1);
    ::setenv("TERM", "vt100", 1);
    if (::chdir(home.c_str()) == 0) {
      ::execv(arguments[0], arguments.data());
    }
    ::_exit(127);
  }
  if (child_ < 0) {
    throw std::runtime_error("no pseudo-terminal can be had");
  }
}

PseudoTerminal::~PseudoTerminal() {
  ::close(descriptor_);
  if (child_ > 0) {
    ::kill(child_, SIGKILL);
    ::waitpid(child_, nullptr, 0);
  }
}

void PseudoTerminal::type(const std::string &keys) {
  if (::write(descriptor_, keys.data(), keys.size()) != static_cast<ssize_t>(keys.size())) {
    throw std::runtime_error("cannot type " + keys);
  }
}

bool PseudoTerminal::readMore() {
  pollfd waiting{descriptor_, POLLIN, 0};
  if (::poll(&waiting, 1, kTimeoutMs) <= 0) {
    throw std::runtime_error("nothing more came after: " + screen_);
  }
  char bytes[4096];
  const ssize_t count = ::read(descriptor_, bytes, sizeof bytes);
  if (count > 0) {
    screen_.append(bytes, static_cast<std::size_t>(count));
  }
  return count > 0;
}

std::string PseudoTerminal::waitFor(const std::string &text) {
  const auto isThere = [&] {
    return screen_.size() >= text.size() && screen_.compare(screen_.size() - text.size(), text.size(), text) == 0;
  };
  while (!isThere()) {
    if (!readMore()) {
      throw std::runtime_error("the program has ended after: " + screen_);
    }
  }
  std::string seen;
  seen.swap(screen_);
  return seen;
}

int PseudoTerminal::exitCode() {
  while (readMore()) {
  }
  return reap();
}

void PseudoTerminal::waitForKeys() {
  constexpr int kPauseMs = 2;
  for (int waitedMs = 0; waitedMs < kTimeoutMs; waitedMs += kPauseMs) {
    termios settings;
    if (::tcgetattr(descriptor_, &settings) == 0 && (settings.c_lflag & ICANON) == 0) {
      return;
    }
    ::poll(nullptr, 0, kPauseMs); // nothing tells of the change
  }
  throw std::runtime_error("the program does not edit lines after: " + screen_);
}

// The program has closed its last file.
int PseudoTerminal::reap() {
  int status = 0;
  ::waitpid(child_, &status, 0);
  child_ = -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
