// Reading a layout: the plug-in's stream against its floor, the same signals with the same arguments to the same slots
// from arrays in memory.

#include <algorithm>
#include <cstdio>

#include <QFileInfo>

#include "benchmain.h"
#include "benchplugin.h"
#include "benchreport.h"
#include "klayoutpeer.h"
#include "oaplugincore.h"
#include "signalsink.h"
#include "workload.h"

namespace {

struct Options : BenchOptions {
  std::vector<std::string> workloads;
  std::vector<int> counts = {1000000, 10000000};
  int instances = 1000000;
  int runs = 5;
  bool isCold = false;
  bool hasPeer = true;
  // Set in the process that measures memory: the folder of the library to read.
  std::string measuredFolder;
};

const QString kCell = QStringLiteral("top");

void readInto(SignalSink &sink, oaPlugInCore &plugIn) {
  sink.start();
  plugIn.openLayout(BenchPlugin::lib(), kCell, QStringLiteral("layout"), QString());
}

// A process of its own, so that what it uses is what reading uses: prints the memory before and at the end of the read.
int measureMemory(const Options &options) {
  BenchPlugin plugIn(QString::fromStdString(options.plugIn), QString(), QString::fromStdString(options.measuredFolder));
  SignalSink sink(&*plugIn);
  sink.connectTo(plugIn.object());
  const qint64 before = residentBytes();
  readInto(sink, *plugIn);
  std::printf("%lld %lld\n", static_cast<long long>(before), static_cast<long long>(sink.residentBytesAtEnd()));
  return sink.received().errors == 0 ? 0 : 1;
}

double memoryOfRead(const BenchPlugin &plugIn) {
  const QList<double> figures =
      figuresOfOwnProcess({"--measured-folder", plugIn.folder(), "--plugin", plugIn.file()}, 2);
  return figures.at(1) - figures.at(0);
}

void measure(const Options &options, BenchPlugin &plugIn, workload::Kind kind, int count) {
  workload::write(*plugIn, BenchPlugin::lib(), kCell, kind, count);
  const QString file = plugIn.designFile(kCell);

  SignalSink sink(&*plugIn);
  sink.connectTo(plugIn.object());
  SignalSink floorSink(&*plugIn);
  FloorSender floor(kind, count);
  floorSink.connectTo(&floor);

  Samples read;
  Samples floored;
  Samples firstSignal;
  Samples firstObject;
  for (int run = -1; run < options.runs; ++run) { // the first one warms up
    if (options.isCold) {
      dropFromCache(file);
    }
    const Stopwatch readWatch;
    readInto(sink, *plugIn);
    const double readNs = readWatch.nanoseconds();
    floorSink.start();
    const Stopwatch floorWatch;
    floor.send();
    const double floorNs = floorWatch.nanoseconds();
    if (sink.received().errors != 0) {
      throw std::runtime_error("the read reported: " + sink.firstError().toStdString());
    }
    if (!(sink.received() == floorSink.received())) {
      failCheck("signals of the read", sink.received().text().toStdString(), floorSink.received().text().toStdString());
    }
    if (run >= 0) {
      read.add(readNs / count);
      floored.add(floorNs / count);
      firstSignal.add(sink.firstSignalMs());
      firstObject.add(sink.firstObjectMs());
    }
  }
  std::printf("%s, %d%s\n", workload::nameOf(kind), count, options.isCold ? ", cold file cache" : "");
  std::printf("  ratio to the floor  %8.2f\n", read.median() / floored.median());
  std::printf("  read, each          %s\n", read.text("ns").c_str());
  std::printf("  floor, each         %s\n", floored.text("ns").c_str());
  std::printf("  first signal after  %s\n", firstSignal.text("ms").c_str());
  std::printf("  first object after  %s\n", firstObject.text("ms").c_str());
  std::printf("  memory at the end   %8.2f bytes each, mapped file included\n", memoryOfRead(plugIn) / count);
  std::printf("  file                %8.2f bytes each\n\n", double(QFileInfo(file).size()) / count);
  std::fflush(stdout);
}

void measurePeer(const Options &options, const BenchPlugin &plugIn) {
  if (!options.hasPeer || !hasKlayout()) {
    std::printf("peer: %s\n", options.hasPeer ? "klayout is not installed" : "not asked for");
    return;
  }
  const int count = *std::min_element(options.counts.begin(), options.counts.end());
  Samples load;
  Samples walk;
  for (int run = 0; run < options.runs; ++run) {
    const KlayoutFigures figures = runKlayout(count, plugIn.folder());
    load.add(figures.loadNs);
    walk.add(figures.walkNs);
  }
  std::printf("peer: klayout on the same %d rectangles as GDSII\n", count);
  std::printf("  load and walk, each %8.2f ns\n", load.median() + walk.median());
  std::printf("  load, each          %s\n", load.text("ns").c_str());
  std::printf("  walk, each          %s\n", walk.text("ns").c_str());
}

int run(const Options &options) {
  BenchPlugin plugIn(QString::fromStdString(options.plugIn), QString::fromStdString(options.folder));
  printBanner("reading layouts", plugIn.file().toStdString());
  bool hasRectangles = false;
  for (const std::string &name : options.workloads) {
    const workload::Kind kind = workload::kindOf(name);
    hasRectangles = hasRectangles || kind == workload::kRectangles;
    if (kind == workload::kInstances) {
      measure(options, plugIn, kind, options.instances);
      continue;
    }
    for (const int count : options.counts) {
      measure(options, plugIn, kind, count);
    }
  }
  if (hasRectangles) {
    measurePeer(options, plugIn);
  }
  return 0;
}

int parseAndRun(int argc, char **argv) {
  Options options;
  for (const workload::Named &named : workload::kAll) {
    options.workloads.push_back(named.name);
  }
  CLI::App app("Measures openLayout() against its floor: the same signals from arrays in memory, in the same run.\n" +
               listOf(workload::kAll));
  app.add_option("--workload", options.workloads, "workloads to run (default: all)");
  app.add_option("--count", options.counts, "shapes of the flat workloads, one measurement each")
      ->capture_default_str();
  app.add_option("--instances", options.instances, "instances of that workload")->capture_default_str();
  app.add_flag("--cold", options.isCold, "take the design file out of the page cache before each run");
  app.add_flag("!--no-peer", options.hasPeer, "leave out the comparison with klayout");
  addBenchOptions(app, options, "timed runs after one that warms up");
  CLI11_PARSE(app, argc, argv);
  return options.measuredFolder.empty() ? run(options) : measureMemory(options);
}

} // namespace

int main(int argc, char **argv) { return benchMain(argc, argv, parseAndRun); }
