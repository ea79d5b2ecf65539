// The component list of a large library: computed, and from the cache that the first computation leaves in the library.

#include <cstdio>

#include "benchmain.h"
#include "benchplugin.h"
#include "benchreport.h"
#include "oaplugincore.h"

namespace {

struct Options : BenchOptions {
  int cells = 10000;
  // Set in the processes that measure the first call: whether the cache is to be used.
  bool usesCache = false;
};

const double kMsPerNs = 1e-6;

QString cellName(int cell) { return QStringLiteral("cell%1").arg(cell, 6, 10, QLatin1Char('0')); }

// One in ten cells has no symbol, only a schematic, and one in ten has both.
bool hasSymbol(int cell) { return cell % 10 != 0; }
bool hasSchematic(int cell) { return cell % 10 < 2; }

QStringList expectedComponents(int cells) {
  QStringList components;
  for (int cell = 0; cell < cells; ++cell) {
    if (hasSymbol(cell)) {
      components.append(cellName(cell));
    }
  }
  return components;
}

void writeLibrary(oaPlugInCore &plugIn, int cells) {
  for (int cell = 0; cell < cells; ++cell) {
    if (hasSymbol(cell)) {
      plugIn.saveSymbol(BenchPlugin::lib(), cellName(cell), QStringLiteral("symbol"));
      plugIn.saveRect(0, 0, 40, 40, QStringLiteral("deviceColor"));
      plugIn.saveClose();
    }
    if (hasSchematic(cell)) {
      plugIn.saveSchematic(BenchPlugin::lib(), cellName(cell), QStringLiteral("schematic"));
      plugIn.saveClose();
    }
  }
}

// Returns the time of the call in milliseconds. The list has the library's order, which is anybody's.
double timeOfCall(BenchPlugin &plugIn, bool usesCache, const QStringList &expected) {
  const Stopwatch watch;
  QStringList components = plugIn->getComponents(BenchPlugin::lib(), QString(), usesCache);
  const double ms = watch.nanoseconds() * kMsPerNs;
  components.sort();
  if (components != expected) {
    failCheck("components",
              std::to_string(components.size()) + " beginning with " + components.value(0, "none").toStdString(),
              std::to_string(expected.size()) + " beginning with " + expected.value(0, "none").toStdString());
  }
  return ms;
}

// In a process of its own: prints the time of its start-up and of its first call.
int measureFirstCall(const Options &options) {
  const Stopwatch watch;
  BenchPlugin plugIn(QString::fromStdString(options.plugIn), QString(), QString::fromStdString(options.measuredFolder));
  const double startMs = watch.nanoseconds() * kMsPerNs;
  const double callMs = timeOfCall(plugIn, options.usesCache, expectedComponents(options.cells));
  std::printf("%f %f\n", startMs, callMs);
  return 0;
}

// Of first calls in fresh processes, and of further calls in this one.
void measure(const Options &options, BenchPlugin &plugIn, bool usesCache) {
  const QStringList expected = expectedComponents(options.cells);
  QStringList arguments = {"--measured-folder", plugIn.folder(), "--plugin",
                           plugIn.file(),       "--cells",       QString::number(options.cells)};
  if (usesCache) {
    arguments.append("--use-cache");
  }
  Samples start;
  Samples first;
  Samples further;
  for (int run = 0; run < options.runs; ++run) {
    const QList<double> figures = figuresOfOwnProcess(arguments, 2);
    start.add(figures.at(0));
    first.add(figures.at(1));
    further.add(timeOfCall(plugIn, usesCache, expected));
  }
  std::printf("%s\n", usesCache ? "from the cache" : "computed, and the cache written");
  std::printf("  first call of a process  %s\n", first.text("ms").c_str());
  std::printf("  its start-up             %s\n", start.text("ms").c_str());
  std::printf("  further calls            %s\n\n", further.text("ms").c_str());
  std::fflush(stdout);
}

int run(const Options &options) {
  BenchPlugin plugIn(QString::fromStdString(options.plugIn), QString::fromStdString(options.folder));
  printBanner("component lists", plugIn.file().toStdString());
  const Stopwatch watch;
  writeLibrary(*plugIn, options.cells);
  std::printf("library of %d cells, written in %.1f s\n\n", options.cells, watch.nanoseconds() * 1e-9);
  measure(options, plugIn, false);
  measure(options, plugIn, true);
  return 0;
}

int parseAndRun(int argc, char **argv) {
  Options options;
  CLI::App app("Measures getComponents() for a large library, computed and from the cache.");
  app.add_option("--cells", options.cells, "cells of the library; one in ten has no symbol")
      ->check(CLI::Range(2, 1000000))
      ->capture_default_str();
  addBenchOptions(app, options, "timed runs");
  app.add_flag("--use-cache", options.usesCache)->group("");
  CLI11_PARSE(app, argc, argv);
  return options.measuredFolder.empty() ? run(options) : measureFirstCall(options);
}

} // namespace

int main(int argc, char **argv) { return benchMain(argc, argv, parseAndRun); }
