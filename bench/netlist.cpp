// Netlists: loadNetlist() on generated schematics of several sizes. What counts is that the time for each placement
// stays the same, and how much more it is than that of the signals alone.

#include <cstdio>
#include <string>

#include <oa/oaDesignDB.h>

#include "benchmain.h"
#include "benchplugin.h"
#include "benchreport.h"
#include "netliststream.h"
#include "oaplugincore.h"

using namespace oa;

namespace {

struct Options : BenchOptions {
  std::vector<std::string> workloads = {"gates", "buses"};
  std::vector<int> counts = {10000, 30000, 100000};
  int runs = 5;
};

const int kMasters = 16;
const int kWidth = 8;
const oaNativeNS kNames;

oaScalarName scalar(const std::string &text) { return oaScalarName(kNames, text.c_str()); }
oaName anyName(const std::string &text) { return oaName(kNames, text.c_str()); }

oaDesign *create(const std::string &cell, const std::string &view, oaReservedViewTypeEnum type) {
  return oaDesign::open(scalar(BenchPlugin::lib().toStdString()), scalar(cell), scalar(view),
                        oaViewType::get(oaReservedViewType(type)), 'w');
}

void saveAndClose(oaDesign *design) {
  design->save();
  design->close();
}

std::string masterName(int index) { return "gate" + std::to_string(index % kMasters); }

void writeMasters() {
  for (int i = 0; i < kMasters; ++i) {
    oaDesign *design = create(masterName(i), "symbol", oacSchematicSymbol);
    oaBlock *block = oaBlock::create(design);
    for (const char *name : {"A", "B", "Y"}) {
      oaTerm::create(oaNet::create(block, anyName(name)), anyName(name));
    }
    saveAndClose(design);
  }
}

// Three nets for each placement, in its neighbourhood; every tenth net has a terminal.
void writeGates(oaBlock *block, int count) {
  const char *const terminals[] = {"A", "B", "Y"};
  std::vector<oaNet *> nets;
  for (int i = 0; i < 3 * count; ++i) {
    nets.push_back(oaNet::create(block, anyName("net" + std::to_string(i))));
    if (i % 10 == 0) {
      oaTerm::create(nets.back(), anyName("net" + std::to_string(i)));
    }
  }
  const oaScalarName lib = scalar(BenchPlugin::lib().toStdString());
  for (int i = 0; i < count; ++i) {
    oaInst *inst = oaScalarInst::create(block, lib, scalar(masterName(i)), scalar("symbol"),
                                        scalar("X" + std::to_string(i)), oaTransform(100 * (i % 500), 100 * (i / 500)));
    for (int pin = 0; pin < 3; ++pin) {
      oaInstTerm::create(nets[size_t((3 * i + 7 * pin) % (3 * count))], inst, anyName(terminals[pin]));
    }
    oaStringProp::create(inst, "model", "typical");
    oaIntProp::create(inst, "m", i % 4);
  }
}

// Iterated placements over buses, and one net that all of them share.
void writeBuses(oaBlock *block, int count) {
  const std::string range = "[" + std::to_string(kWidth - 1) + ":0]";
  const oaScalarName lib = scalar(BenchPlugin::lib().toStdString());
  oaNet *clock = oaNet::create(block, anyName(std::to_string(kWidth) + "*clock"));
  for (int i = 0; i < count / kWidth; ++i) {
    const std::string number = std::to_string(i);
    const std::string bits = std::string(number).append("_").append(range);
    oaInst *inst = oaVectorInst::create(block, lib, scalar(masterName(i)), scalar("symbol"), scalar("X" + number + "_"),
                                        kWidth - 1, 0, oaTransform(100 * (i % 500), 100 * (i / 500)));
    oaInstTerm::create(oaNet::create(block, anyName("in" + bits)), inst, anyName("A"));
    oaInstTerm::create(clock, inst, anyName("B"));
    oaInstTerm::create(oaNet::create(block, anyName("out" + bits)), inst, anyName("Y"));
  }
}

void write(const std::string &cell, const std::string &workload, int count) {
  oaDesign *design = create(cell, "schematic", oacSchematic);
  (workload == "gates" ? writeGates : writeBuses)(oaBlock::create(design), count);
  saveAndClose(design);
}

// The netlist that the generator's formulas call for, as far as counts go.
void check(const std::string &workload, int count, const ReceivedNetlist &received) {
  const qint64 nodes = workload == "gates" ? qint64(3) * count : qint64(2) * count + 1;
  if (received.nodes != nodes || received.devices != count || received.connections != qint64(3) * count ||
      received.errors != 0) {
    failCheck("netlist", received.text().toStdString(),
              std::to_string(nodes) + " nodes and " + std::to_string(count) + " devices of 3 terminals");
  }
}

// Returns the median time for each placement in nanoseconds.
double measure(const Options &options, BenchPlugin &plugIn, const std::string &workload, int count) {
  const std::string cell = workload + std::to_string(count);
  write(cell, workload, count);
  const auto load = [&] {
    plugIn->loadNetlist(BenchPlugin::lib(), QString::fromStdString(cell), QStringLiteral("schematic"));
  };
  NetlistFloor floor;
  floor.keepFrom(plugIn.object());
  load();
  plugIn.object()->disconnect(&floor);
  NetlistSink sink;
  sink.connectTo(plugIn.object());
  NetlistSink floorSink;
  floorSink.connectTo(&floor);
  Samples loads;
  Samples floors;
  for (int run = -1; run < options.runs; ++run) { // the first one warms up
    sink.start();
    const Stopwatch loadWatch;
    load();
    const double loadNs = loadWatch.nanoseconds();
    floorSink.start();
    const Stopwatch floorWatch;
    floor.send();
    const double floorNs = floorWatch.nanoseconds();
    check(workload, count, sink.received());
    if (!(sink.received() == floorSink.received())) {
      failCheck("netlist", sink.received().text().toStdString(), floorSink.received().text().toStdString());
    }
    if (run >= 0) {
      loads.add(loadNs / count);
      floors.add(floorNs / count);
    }
  }
  std::printf("%s, %d placements, %lld nodes\n", workload.c_str(), count,
              static_cast<long long>(sink.received().nodes));
  std::printf("  whole netlist        %8.2f ms\n", loads.median() * count * 1e-6);
  std::printf("  each placement       %s\n", loads.text("ns").c_str());
  std::printf("  signals alone, each  %s\n", floors.text("ns").c_str());
  std::printf("  share of the signals %8.1f %%\n\n", 100 * floors.median() / loads.median());
  std::fflush(stdout);
  return loads.median();
}

int run(const Options &options) {
  BenchPlugin plugIn(QString::fromStdString(options.plugIn), QString::fromStdString(options.folder));
  printBanner("netlists", plugIn.file().toStdString());
  writeMasters();
  for (const std::string &workload : options.workloads) {
    double first = 0;
    double last = 0;
    for (const int count : options.counts) {
      last = measure(options, plugIn, workload, count);
      first = first > 0 ? first : last;
    }
    std::printf("%s: a placement of the last size takes %.2f times as long as one of the first\n\n", workload.c_str(),
                last / first);
  }
  return 0;
}

int parseAndRun(int argc, char **argv) {
  Options options;
  CLI::App app("Measures loadNetlist() on schematics of several sizes, and the same signals sent from memory.\n"
               "workloads:\n"
               "  gates: placements of three terminals and two properties, three nets for each\n"
               "  buses: iterated placements of eight bits over buses of eight bits and one shared net\n");
  app.add_option("--workload", options.workloads, "workloads to run")
      ->check(CLI::IsMember({"gates", "buses"}))
      ->capture_default_str();
  app.add_option("--count", options.counts, "placements, bits counted; one measurement each")
      ->check(CLI::Range(kWidth, 10000000))
      ->capture_default_str();
  addBenchOptions(app, options, "timed runs after one that warms up");
  CLI11_PARSE(app, argc, argv);
  for (int &count : options.counts) {
    count -= count % kWidth;
  }
  return run(options);
}

} // namespace

int main(int argc, char **argv) {
  return benchMain(argc, argv, [](int count, char **arguments) {
    try {
      return parseAndRun(count, arguments);
    } catch (const oaException &error) {
      throw std::runtime_error(static_cast<const oaChar *>(error.getMsg()));
    }
  });
}
