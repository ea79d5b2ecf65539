// Writing a layout: save operations and saveClose(), flushed to disk, against the peer's GDSII write of the same
// rectangles.

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
  std::vector<std::string> workloads = {"rectangles"};
  int count = 10000000;
  int peerCount = 0; // 0: as many as the plug-in writes
  int runs = 5;
  bool hasPeer = true;
};

const QString kCell = QStringLiteral("top");

// What was written is read again and must be the workload.
void check(BenchPlugin &plugIn, workload::Kind kind, int count) {
  SignalSink sink(&*plugIn);
  sink.connectTo(plugIn.object());
  sink.start();
  plugIn->openLayout(BenchPlugin::lib(), kCell, QStringLiteral("layout"), QString());
  FloorSender expected(kind, count);
  SignalSink expectedSink(&*plugIn);
  expectedSink.connectTo(&expected);
  expectedSink.start();
  expected.send();
  if (!(sink.received() == expectedSink.received())) {
    failCheck("signals of what was written", sink.received().text().toStdString(),
              expectedSink.received().text().toStdString());
  }
}

// Nanoseconds for each object.
double measure(const Options &options, BenchPlugin &plugIn, workload::Kind kind) {
  Samples samples;
  for (int run = -1; run < options.runs; ++run) { // the first one warms up
    const Stopwatch watch;
    workload::write(*plugIn, BenchPlugin::lib(), kCell, kind, options.count);
    if (run >= 0) {
      samples.add(watch.nanoseconds() / options.count);
    }
  }
  check(plugIn, kind, options.count);
  std::printf("%s, %d\n", workload::nameOf(kind), options.count);
  std::printf("  write, each         %s\n", samples.text("ns").c_str());
  std::printf("  file                %8.2f bytes each\n",
              double(QFileInfo(plugIn.designFile(kCell)).size()) / options.count);
  std::fflush(stdout);
  return samples.median();
}

void measurePeer(const Options &options, const BenchPlugin &plugIn, double writeNs) {
  const int count = options.peerCount > 0 ? options.peerCount : options.count;
  Samples samples;
  qint64 fileBytes = 0;
  for (int run = 0; run < options.runs; ++run) {
    const KlayoutFigures figures = runKlayout(count, plugIn.folder());
    samples.add(figures.writeNs);
    fileBytes = figures.fileBytes;
  }
  std::printf("peer: klayout writes %d of the rectangles as GDSII\n", count);
  std::printf("  ratio to the peer   %8.2f\n", writeNs / samples.median());
  std::printf("  write, each         %s\n", samples.text("ns").c_str());
  std::printf("  file                %8.2f bytes each\n", double(fileBytes) / count);
}

int run(const Options &options) {
  BenchPlugin plugIn(QString::fromStdString(options.plugIn), QString::fromStdString(options.folder));
  printBanner("writing layouts", plugIn.file().toStdString());
  for (const std::string &name : options.workloads) {
    const workload::Kind kind = workload::kindOf(name);
    const double writeNs = measure(options, plugIn, kind);
    if (kind == workload::kRectangles && options.hasPeer && hasKlayout()) {
      measurePeer(options, plugIn, writeNs);
    } else if (kind == workload::kRectangles) {
      std::printf("peer: %s\n", options.hasPeer ? "klayout is not installed" : "not asked for");
    }
  }
  return 0;
}

int parseAndRun(int argc, char **argv) {
  Options options;
  CLI::App app("Measures saveLayout(), the save operations and saveClose(), flushed to disk.\n" +
               listOf(workload::kAll));
  app.add_option("--workload", options.workloads, "workloads to run")->capture_default_str();
  app.add_option("--count", options.count, "objects to write")->capture_default_str();
  app.add_option("--peer-count", options.peerCount, "rectangles that klayout writes (default: all of them)");
  app.add_flag("!--no-peer", options.hasPeer, "leave out the comparison with klayout");
  addBenchOptions(app, options, "timed runs after one that warms up");
  CLI11_PARSE(app, argc, argv);
  return run(options);
}

} // namespace

int main(int argc, char **argv) { return benchMain(argc, argv, parseAndRun); }
