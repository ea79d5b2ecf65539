// Reading a schematic: the plug-in's stream against its floor, the same signals with the same arguments to the same
// slots from arrays in memory. The writing that comes before is timed as well.

#include <algorithm>
#include <cstdio>

#include <QFileInfo>

#include "benchmain.h"
#include "benchplugin.h"
#include "benchreport.h"
#include "oaplugincore.h"
#include "schematicsink.h"
#include "schematicworkload.h"

namespace {

struct Options : BenchOptions {
  std::vector<std::string> workloads;
  int placements = 100000;
  // Set in the process that measures memory: the cell to read.
  std::string measuredCell;
};

const QString kView = QStringLiteral("schematic");

void readInto(SchematicSink &sink, oaPlugInCore &plugIn, const QString &cell) {
  sink.start();
  plugIn.openSchematic(BenchPlugin::lib(), cell, kView, QString());
}

void checkErrors(const SchematicSink &sink, const char *what) {
  if (sink.received().errors != 0) {
    throw std::runtime_error(std::string(what) + " reported: " + sink.firstError().toStdString());
  }
}

// A process of its own, so that what it uses is what reading uses: prints the memory that the read took and its time.
int measureMemory(const Options &options) {
  BenchPlugin plugIn(QString::fromStdString(options.plugIn), QString(), QString::fromStdString(options.measuredFolder));
  SchematicSink sink;
  sink.connectTo(plugIn.object());
  sink.watchMemory();
  const qint64 before = residentBytes();
  const Stopwatch watch;
  readInto(sink, *plugIn, QString::fromStdString(options.measuredCell));
  const double readNs = watch.nanoseconds();
  std::printf("%lld %.0f\n", static_cast<long long>(sink.mostResidentBytes() - before), readNs);
  checkErrors(sink, "the read");
  return 0;
}

Samples measureWriting(const Options &options, BenchPlugin &plugIn, const QString &cell,
                       const schematicworkload::Counts &counts) {
  SchematicSink sink;
  sink.connectTo(plugIn.object());
  sink.start();
  Samples samples;
  for (int run = -1; run < options.runs; ++run) { // the first one warms up
    const Stopwatch watch;
    schematicworkload::write(*plugIn, BenchPlugin::lib(), cell, counts);
    if (run >= 0) {
      samples.add(watch.nanoseconds() / counts.objects());
    }
    checkErrors(sink, "the writing");
  }
  return samples;
}

void measure(const Options &options, BenchPlugin &plugIn, const std::string &workload) {
  const schematicworkload::Counts counts = schematicworkload::countsOf(workload, options.placements);
  const QString cell = QString::fromStdString(workload);
  const Samples written = measureWriting(options, plugIn, cell, counts);

  SchematicSink sink;
  sink.connectTo(plugIn.object());
  SchematicSink floorSink;
  SchematicFloor floor(counts, BenchPlugin::lib(), cell);
  floorSink.connectTo(&floor);

  Samples read;
  Samples floored;
  Samples firstSignal;
  Samples firstObject;
  for (int run = -1; run < options.runs; ++run) { // the first one warms up
    const Stopwatch readWatch;
    readInto(sink, *plugIn, cell);
    const double readNs = readWatch.nanoseconds();
    floorSink.start();
    const Stopwatch floorWatch;
    floor.send();
    const double floorNs = floorWatch.nanoseconds();
    checkErrors(sink, "the read");
    if (!(sink.received() == floorSink.received())) {
      failCheck("signals of the read", sink.received().text().toStdString(), floorSink.received().text().toStdString());
    }
    if (run >= 0) {
      read.add(readNs / counts.objects());
      floored.add(floorNs / counts.objects());
      firstSignal.add(sink.firstSignalMs());
      firstObject.add(sink.firstObjectMs());
    }
  }
  const QString file = plugIn.designFile(cell, kView);
  const QList<double> alone = figuresOfOwnProcess(
      {"--measured-folder", plugIn.folder(), "--measured-cell", cell, "--plugin", plugIn.file()}, 2);
  const double signalsEach = double(sink.received().signalCount()) / counts.objects();
  std::printf("%s, %d placements, %d wires, %d dots, %d labels, %d ports\n", workload.c_str(), counts.placements,
              counts.wires, counts.dots, counts.labels, counts.ports);
  std::printf("  ratio to the floor  %8.2f\n", read.median() / floored.median());
  std::printf("  read in all         %8.2f ms, %lld signals, %.1f ns for each\n",
              read.median() * counts.objects() * 1e-6, static_cast<long long>(sink.received().signalCount()),
              read.median() / signalsEach);
  std::printf("  read, each object   %s\n", read.text("ns").c_str());
  std::printf("  floor, each object  %s\n", floored.text("ns").c_str());
  std::printf("  first signal after  %s\n", firstSignal.text("ms").c_str());
  std::printf("  first object after  %s\n", firstObject.text("ms").c_str());
  std::printf("  fresh process       %8.2f ms to read, in files that are cached\n", alone.at(1) * 1e-6);
  std::printf("  memory at most      %8.2f bytes each object, mapped file included\n", alone.at(0) / counts.objects());
  std::printf("  file                %8.2f bytes each object\n", double(QFileInfo(file).size()) / counts.objects());
  std::printf("  write, each object  %s\n", written.text("ns").c_str());
  std::printf("  write in all        %8.2f ms, flushed to disk\n\n", written.median() * counts.objects() * 1e-6);
  std::fflush(stdout);
}

int run(const Options &options) {
  BenchPlugin plugIn(QString::fromStdString(options.plugIn), QString::fromStdString(options.folder));
  printBanner("reading schematics", plugIn.file().toStdString());
  schematicworkload::writeMasters(*plugIn, BenchPlugin::lib());
  for (const std::string &workload : options.workloads) {
    measure(options, plugIn, workload);
  }
  return 0;
}

int parseAndRun(int argc, char **argv) {
  Options options;
  for (const schematicworkload::Named &named : schematicworkload::kAll) {
    options.workloads.push_back(named.name);
  }
  CLI::App app(
      "Measures openSchematic() against its floor: the same signals from arrays in memory, in the same run.\n" +
      listOf(schematicworkload::kAll));
  app.add_option("--workload", options.workloads, "workloads to run (default: all)");
  app.add_option("--placements", options.placements, "size; the other kinds are in proportion to it")
      ->check(CLI::Range(100, 10000000))
      ->capture_default_str();
  addBenchOptions(app, options, "timed runs after one that warms up");
  app.add_option("--measured-cell", options.measuredCell)->group("");
  CLI11_PARSE(app, argc, argv);
  return options.measuredFolder.empty() ? run(options) : measureMemory(options);
}

} // namespace

int main(int argc, char **argv) { return benchMain(argc, argv, parseAndRun); }
