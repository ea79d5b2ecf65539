// The look-ups of a library browser in a large library, and the removal of many of its cells.

#include <cstdio>

#include <QDirIterator>

#include "benchmain.h"
#include "benchplugin.h"
#include "benchreport.h"
#include "oaplugincore.h"

namespace {

struct Options : BenchOptions {
  int cells = 10000;
  int removed = 1000;
};

const double kMsPerNs = 1e-6;

QString cellName(int cell) { return QStringLiteral("cell%1").arg(cell, 6, 10, QLatin1Char('0')); }

void check(const char *what, const QString &found, const QString &expected) {
  if (found != expected) {
    failCheck(what, found.toStdString(), expected.toStdString());
  }
}

// What a process asks first: all cells, then the views of one and the type of one of those. In milliseconds.
struct LookUpTimes {
  double cells;
  double views;
  double viewType;
};

LookUpTimes timeLookUps(BenchPlugin &plugIn, int cells) {
  LookUpTimes times;
  const QString cell = cellName(cells / 2);
  const Stopwatch cellsWatch;
  const QStringList names = plugIn->getCellNames(BenchPlugin::lib());
  times.cells = cellsWatch.nanoseconds() * kMsPerNs;
  const Stopwatch viewsWatch;
  const QStringList views = plugIn->getViewNames(BenchPlugin::lib(), cell);
  times.views = viewsWatch.nanoseconds() * kMsPerNs;
  const Stopwatch typeWatch;
  const QString type = plugIn->getViewType(BenchPlugin::lib(), cell, QStringLiteral("layout"));
  times.viewType = typeWatch.nanoseconds() * kMsPerNs;
  check("cells", QString::number(names.size()), QString::number(cells));
  check("views", views.join(' '), QStringLiteral("layout"));
  check("view type", type, QStringLiteral("maskLayout"));
  return times;
}

// In a process of its own: prints its start-up and the three times.
int measureFirstCalls(const Options &options) {
  const Stopwatch watch;
  BenchPlugin plugIn(QString::fromStdString(options.plugIn), QString(), QString::fromStdString(options.measuredFolder));
  const double startMs = watch.nanoseconds() * kMsPerNs;
  const LookUpTimes times = timeLookUps(plugIn, options.cells);
  std::printf("%f %f %f %f\n", startMs, times.cells, times.views, times.viewType);
  return 0;
}

void measureLookUps(const Options &options, const BenchPlugin &plugIn) {
  const QStringList arguments = {"--measured-folder", plugIn.folder(), "--plugin",
                                 plugIn.file(),       "--cells",       QString::number(options.cells)};
  Samples start, cells, views, viewType, together;
  for (int run = 0; run < options.runs; ++run) {
    const QList<double> figures = figuresOfOwnProcess(arguments, 4);
    start.add(figures.at(0));
    cells.add(figures.at(1));
    views.add(figures.at(2));
    viewType.add(figures.at(3));
    together.add(figures.at(1) + figures.at(2) + figures.at(3));
  }
  std::printf("first look-ups of a process\n");
  std::printf("  its start-up       %s\n", start.text("ms").c_str());
  std::printf("  cells              %s\n", cells.text("ms").c_str());
  std::printf("  views of a cell    %s\n", views.text("ms").c_str());
  std::printf("  type of a view     %s\n", viewType.text("ms").c_str());
  std::printf("  the three together %s\n\n", together.text("ms").c_str());
}

int entriesUnder(const QString &folder) {
  QDirIterator entries(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
  int count = 0;
  while (entries.hasNext()) {
    entries.next();
    ++count;
  }
  return count;
}

// Each cell has a layout (directory, tag, design) and the host's data.
void measureRemoval(const Options &options, BenchPlugin &plugIn) {
  const QString folder = plugIn->getLibPath(BenchPlugin::lib());
  const int before = entriesUnder(folder);
  const Stopwatch watch;
  for (int cell = 0; cell < options.removed; ++cell) {
    plugIn->removeCell(BenchPlugin::lib(), cellName(cell));
  }
  const double ms = watch.nanoseconds() * kMsPerNs;
  constexpr int kEntriesOfACell = 5; // the cell, its data, its view, and the two files of the view
  check("entries left", QString::number(entriesUnder(folder)),
        QString::number(before - kEntriesOfACell * options.removed));
  check("cells left", QString::number(plugIn->getCellNames(BenchPlugin::lib()).size()),
        QString::number(options.cells - options.removed));
  std::printf("removal of %d cells  %.1f ms, %.3f ms each; of their %d files and directories none is left\n",
              options.removed, ms, ms / options.removed, kEntriesOfACell * options.removed);
}

int run(const Options &options) {
  BenchPlugin plugIn(QString::fromStdString(options.plugIn), QString::fromStdString(options.folder));
  printBanner("library look-ups and removal", plugIn.file().toStdString());
  const Stopwatch watch;
  for (int cell = 0; cell < options.cells; ++cell) {
    plugIn->saveLayout(BenchPlugin::lib(), cellName(cell), QStringLiteral("layout"), true, QStringList(),
                       QStringList());
    plugIn->saveClose();
    if (cell < options.removed) {
      plugIn->writeLayoutData(BenchPlugin::lib(), cellName(cell), QStringLiteral("data"));
    }
  }
  std::printf("library of %d cells, written in %.1f s\n\n", options.cells, watch.nanoseconds() * 1e-9);
  std::fflush(stdout);
  measureLookUps(options, plugIn);
  measureRemoval(options, plugIn);
  return 0;
}

int parseAndRun(int argc, char **argv) {
  Options options;
  CLI::App app("Measures a library browser's first look-ups in a large library, and the removal of cells.");
  app.add_option("--cells", options.cells, "cells of the library")
      ->check(CLI::Range(2, 1000000))
      ->capture_default_str();
  app.add_option("--removed", options.removed, "how many of them are removed")
      ->check(CLI::Range(1, 1000000))
      ->capture_default_str();
  addBenchOptions(app, options, "timed processes");
  CLI11_PARSE(app, argc, argv);
  if (options.removed > options.cells) {
    throw std::runtime_error("--removed: there are only " + std::to_string(options.cells) + " cells");
  }
  return options.measuredFolder.empty() ? run(options) : measureFirstCalls(options);
}

} // namespace

int main(int argc, char **argv) { return benchMain(argc, argv, parseAndRun); }
