// Saves that are killed, and saves that others read during. Everything goes through the plug-in, as the editor does it:
// saveLayout(), saveBox() again and again, saveClose(). Each version of the design is told by its number of boxes and
// by their common height, so that a mixture of two versions cannot pass for one.

#include "oaplugincore.h"

#include <CLI/CLI.hpp>
#include <QObject>
#include <QPluginLoader>
#include <QTemporaryDir>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <random>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

struct Options {
  int rounds = 200;
  int boxes = 1000000;
  unsigned seed = 20261121;
  std::string plugIn = DEFAULT_PLUGIN;
};

double secondsSince(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

// The plug-in in this process. Each process loads its own after the fork, so that none inherits an open database.
class PlugIn {
public:
  PlugIn(const std::string &file, const QString &home) : loader_(QString::fromStdString(file)) {
    qputenv("HOME", home.toLocal8Bit());
    core_ = qobject_cast<oaPlugInCore *>(loader_.instance());
    if (core_ == nullptr) {
      throw std::runtime_error("cannot load " + file + ": " + loader_.errorString().toStdString());
    }
    core_->init(false);
    core_->setLayerMax(1000, 1000);
    core_->checkLib("soak", home + "/soak", true);
  }
  oaPlugInCore *operator->() const { return core_; }
  QObject *object() { return loader_.instance(); }

  // Fills the design, not yet saved, with a version.
  void write(int boxes, int height) {
    core_->saveLayout("soak", "cell", "layout", true, QStringList(), QStringList());
    for (int i = 0; i < boxes; ++i) {
      core_->saveBox(QRect(QPoint(i, height), QPoint(i + 10, 0)), 1, 0);
    }
  }

private:
  QPluginLoader loader_;
  oaPlugInCore *core_ = nullptr;
};

// Counts what one reading of the design sends.
class VersionProbe : public QObject {
  Q_OBJECT
public:
  explicit VersionProbe(QObject *plugIn) {
    connect(plugIn, SIGNAL(addBox(int, int, int, int, int, int)), SLOT(countBox(int, int, int, int, int, int)));
    connect(plugIn, SIGNAL(endCell()), SLOT(endCell()));
    connect(plugIn, SIGNAL(reportError(QString, int, QString)), SLOT(error(QString, int, QString)));
  }
  // "<boxes> of <height>", or what is wrong.
  std::string version() const {
    if (!error_.empty()) {
      return "error: " + error_;
    }
    if (!isComplete_ || boxesByHeight_.size() > 1) {
      return "a mixture";
    }
    return boxesByHeight_.empty() ? "empty"
                                  : std::to_string(boxesByHeight_.begin()->second) + " of " +
                                        std::to_string(boxesByHeight_.begin()->first);
  }

public slots:
  void countBox(int left, int, int, int height, int, int) {
    // Boxes come in the order of their creation, each one unit further.
    if (left != next_++) {
      error_ = "box " + std::to_string(next_ - 1) + " is missing or out of order";
    }
    ++boxesByHeight_[height];
  }
  void endCell() { isComplete_ = true; }
  void error(const QString &text, int, const QString &detail) { error_ = (text + " " + detail).toStdString(); }

private:
  std::map<int, int> boxesByHeight_;
  int next_ = 0;
  bool isComplete_ = false;
  std::string error_;
};

std::string readVersion(const Options &options, const QString &home) {
  PlugIn plugIn(options.plugIn, home);
  VersionProbe probe(plugIn.object());
  plugIn->openLayout("soak", "cell", "layout", QString());
  return probe.version();
}

// Ends this process, a child, whatever becomes of the work: what its parent owns must not be cleaned up here.
template <typename Work> [[noreturn]] void endAfter(Work work) {
  try {
    work();
    ::_exit(0);
  } catch (const std::exception &exception) {
    std::fprintf(stderr, "soak_saves: %s\n", exception.what());
  }
  ::_exit(3);
}

// Ends the program where there is no further process: whoever kills process -1 kills all that there are.
pid_t forked() {
  const pid_t child = ::fork();
  if (child < 0) {
    throw std::runtime_error("no further process can be had");
  }
  return child;
}

// Runs `work` in a process of its own; its text comes back through a pipe.
template <typename Work> std::string inOwnProcess(Work work) {
  int ends[2];
  if (::pipe(ends) != 0) {
    throw std::runtime_error("no pipe");
  }
  const pid_t child = forked();
  if (child == 0) {
    endAfter([&] {
      const std::string text = work();
      if (::write(ends[1], text.data(), text.size()) != static_cast<long>(text.size())) {
        throw std::runtime_error("nobody takes what was read");
      }
    });
  }
  ::close(ends[1]);
  std::string text;
  char buffer[256];
  for (long got = 0; (got = ::read(ends[0], buffer, sizeof buffer)) > 0;) {
    text.append(buffer, static_cast<std::size_t>(got));
  }
  ::close(ends[0]);
  int status = 0;
  ::waitpid(child, &status, 0);
  return status == 0 ? text : "the reading process died with status " + std::to_string(status);
}

std::string versionText(int boxes, int height) { return std::to_string(boxes) + " of " + std::to_string(height); }

// Starts a process that fills a version, says so on the pipe, and saves it. Returns its number and the reading end.
std::pair<pid_t, int> startWriter(const Options &options, const QString &home, int boxes, int height) {
  int ends[2];
  if (::pipe(ends) != 0) {
    throw std::runtime_error("no pipe");
  }
  const pid_t writer = forked();
  if (writer == 0) {
    endAfter([&] {
      PlugIn plugIn(options.plugIn, home);
      plugIn.write(boxes, height);
      if (::write(ends[1], "s", 1) != 1) {
        throw std::runtime_error("nobody waits for the save");
      }
      plugIn->saveClose();
    });
  }
  ::close(ends[1]);
  char started = 0;
  if (::read(ends[0], &started, 1) != 1) {
    throw std::runtime_error("the writing process did not reach saveClose()");
  }
  return {writer, ends[0]};
}

// Makes the library, so that the processes that follow do not race for that.
void makeLibrary(const Options &options, const QString &home) {
  inOwnProcess([&] {
    PlugIn plugIn(options.plugIn, home);
    return std::string("made");
  });
}

int runKilled(const Options &options) {
  QTemporaryDir home;
  makeLibrary(options, home.path());
  std::mt19937 random(options.seed);
  std::string current = versionText(options.boxes, 1);
  // One undisturbed save first; how long it takes sets the range of the moments.
  const auto first = startWriter(options, home.path(), options.boxes, 1);
  const Clock::time_point begin = Clock::now();
  ::waitpid(first.first, nullptr, 0);
  ::close(first.second);
  const double saveSeconds = secondsSince(begin);
  int kept = 0;
  int replaced = 0;
  int finishedFirst = 0;
  for (int round = 1; round <= options.rounds; ++round) {
    const int boxes = options.boxes + round;
    const int height = 1 + round;
    const auto writer = startWriter(options, home.path(), boxes, height);
    const double moment = std::uniform_real_distribution<double>(0, saveSeconds * 2)(random);
    ::usleep(static_cast<useconds_t>(moment * 1e6));
    ::kill(writer.first, SIGKILL);
    int status = 0;
    ::waitpid(writer.first, &status, 0);
    ::close(writer.second);
    finishedFirst += WIFEXITED(status) ? 1 : 0;
    const std::string found = inOwnProcess([&] { return readVersion(options, home.path()); });
    const std::string fresh = versionText(boxes, height);
    if (found != current && found != fresh) {
      std::printf("round %d, killed after %.1f ms: found %s, expected %s or %s\n", round, moment * 1e3, found.c_str(),
                  current.c_str(), fresh.c_str());
      return 1;
    }
    (found == fresh ? replaced : kept) += 1;
    current = found;
  }
  std::printf(
      "%d killed saves of %d boxes (seed %u, a save takes %.0f ms): %d left the old version, %d the new one (%d of "
      "these had finished), none anything else\n",
      options.rounds, options.boxes, options.seed, saveSeconds * 1e3, kept, replaced, finishedFirst);
  return 0;
}

int runRead(const Options &options) {
  QTemporaryDir home;
  makeLibrary(options, home.path());
  const pid_t writer = forked();
  if (writer == 0) {
    endAfter([&] {
      PlugIn plugIn(options.plugIn, home.path());
      for (int round = 0; round < options.rounds; ++round) {
        plugIn.write(options.boxes + round, 1 + round);
        plugIn->saveClose();
      }
    });
  }
  int reads = 0;
  std::map<std::string, int> versions;
  int status = 0;
  while (::waitpid(writer, &status, WNOHANG) == 0) {
    const std::string found = inOwnProcess([&] { return readVersion(options, home.path()); });
    bool isKnown = versions.empty() && (found.rfind("error", 0) == 0 || found == "a mixture"); // nothing was saved yet
    for (int round = 0; !isKnown && round < options.rounds; ++round) {
      isKnown = found == versionText(options.boxes + round, 1 + round);
      versions[found] += isKnown ? 1 : 0;
    }
    if (!isKnown) {
      std::printf("read %d: found %s\n", reads, found.c_str());
      ::kill(writer, SIGKILL);
      ::waitpid(writer, nullptr, 0);
      return 1;
    }
    ++reads;
  }
  if (status != 0) {
    std::printf("the writing process ended with status %d\n", status);
    return 1;
  }
  const std::string last = inOwnProcess([&] { return readVersion(options, home.path()); });
  if (last != versionText(options.boxes + options.rounds - 1, options.rounds)) {
    std::printf("after the last save: found %s\n", last.c_str());
    return 1;
  }
  std::printf("%d reads during %d saves of %d boxes met %zu versions, each of them whole\n", reads, options.rounds,
              options.boxes, versions.size());
  return 0;
}

} // namespace

int parseAndRun(int argc, char **argv) {
  Options options;
  CLI::App app("Saves that are killed, and saves that others read during; exit 1 when a version is not whole");
  app.require_subcommand(1);
  CLI::App *killed =
      app.add_subcommand("killed", "kills a process at a random moment of saveClose(), then reads the design");
  CLI::App *read =
      app.add_subcommand("read", "reads a design, each time in a new process, while another process saves it");
  for (CLI::App *command : {killed, read}) {
    command->add_option("--rounds", options.rounds, "saves")->capture_default_str();
    command->add_option("--boxes", options.boxes, "rectangles in the design")->capture_default_str();
    command->add_option("--seed", options.seed, "of the random moments")->capture_default_str();
    command->add_option("--plugin", options.plugIn, "the plug-in's file")->capture_default_str();
  }
  CLI11_PARSE(app, argc, argv);
  return killed->parsed() ? runKilled(options) : runRead(options);
}

int main(int argc, char **argv) {
  try {
    return parseAndRun(argc, argv);
  } catch (const std::exception &exception) {
    std::fprintf(stderr, "soak_saves: %s\n", exception.what());
    return 1;
  }
}

#include "saves.moc"
