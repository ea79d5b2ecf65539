// Reading a layout of variants: many instances of few variants of a parametric cell, many standard vias of few kinds.
// The floor is the same stream from arrays in memory. What the variants themselves cost (opening, evaluating and naming
// them) is shown apart, from a second cell that places each variant once.

#include <cstdio>
#include <string>

#include <oa/oaDesignDB.h>

#include "benchmain.h"
#include "benchplugin.h"
#include "benchreport.h"
#include "oaplugincore.h"
#include "referencestream.h"
#include "workload.h"

using namespace oa;

namespace {

struct Options : BenchOptions {
  std::vector<std::string> workloads = {"pcells", "vias"};
  int pcells = 10000;
  int variants = 200;
  int vias = 1000000;
  int kinds = 20;
  int runs = 5;
};

const oaNativeNS kNames;

oaScalarName scalar(const std::string &text) { return oaScalarName(kNames, text.c_str()); }
oaScalarName libName() { return scalar(BenchPlugin::lib().toStdString()); }

// One rectangle, as wide as the parameter says; counts and times what it is asked for.
class Evaluator : public IPcell {
public:
  void getName(oaString &name) override { name = "benchBox"; }
  void onEval(oaDesign *design, oaPcellDef *) override {
    const Stopwatch watch;
    oaParam width;
    design->findParam("n", width);
    oaRect::create(oaBlock::create(design), 4, 0, oaBox(0, 0, width.getIntVal(), 10));
    ++count;
    nanoseconds += watch.nanoseconds();
  }

  int count = 0;
  double nanoseconds = 0;
};

oaDesign *create(const std::string &cell) {
  return oaDesign::open(libName(), scalar(cell), scalar("layout"), oaViewType::get(oacMaskLayout), 'w');
}

void saveAndClose(oaDesign *design) {
  design->save();
  design->close();
}

oaTransform place(int index) {
  const QPoint origin = workload::origin(index);
  const oaOrientEnum orients[] = {oacR0, oacR180, oacMX, oacMY};
  return oaTransform(origin.x(), origin.y(), orients[index % 4]);
}

// Neighbours differ, and the first `variants` of them are all different.
int variantOf(int index, int variants) { return int(qint64(index) * 7919 % variants); }

void writePcell() {
  oaParam flag;
  flag.setName("on");
  flag.setBooleanVal(true);
  oaParamArray defaults;
  for (const oaParam &param :
       {oaParam("n", oaInt4(1)), oaParam("w", oaDouble(1.5e-6)), oaParam("model", "nch"), flag}) {
    defaults.append(param);
  }
  oaDesign *design = create("pcell");
  oaBlock::create(design);
  design->defineSuperMaster(oaPcellLink::getPcellDef("benchBox"), defaults);
  saveAndClose(design);
}

void writePcells(const std::string &cell, int count, int variants) {
  oaDesign *design = create(cell);
  oaBlock *block = oaBlock::create(design);
  oaParamArray params;
  params.append(oaParam("n", oaInt4(0)));
  for (int i = 0; i < count; ++i) {
    params[0].setIntVal(10 + variantOf(i, variants));
    oaScalarInst::create(block, libName(), scalar("pcell"), scalar("layout"),
                         scalar(workload::instanceName(i).toStdString()), place(i), &params);
  }
  saveAndClose(design);
}

void writeVias(const std::string &cell, int count, int kinds) {
  oaDesign *design = create(cell);
  oaBlock *block = oaBlock::create(design);
  const auto *viaDef = static_cast<const oaStdViaDef *>(oaViaDef::find(design->getTech(), "M1_M2"));
  oaViaParam params;
  for (int i = 0; i < count; ++i) {
    params.setCutWidth(oaDist(100 + 10 * variantOf(i, kinds)));
    oaStdVia::create(block, viaDef, place(i), &params);
  }
  saveAndClose(design);
}

void writeTechnology() {
  oaTech *tech = oaTech::create(libName());
  oaPhysicalLayer *m1 = oaPhysicalLayer::create(tech, "m1", 31, oacMetalMaterial);
  oaPhysicalLayer *m2 = oaPhysicalLayer::create(tech, "m2", 32, oacMetalMaterial);
  oaViaParam params;
  params.setCutLayer(30);
  params.setCutWidth(100);
  params.setCutHeight(100);
  oaStdViaDef::create(tech, "M1_M2", m1, m2, params);
  tech->save();
}

// A cell, read and sent from memory.
class Measured {
public:
  Measured(BenchPlugin &plugIn, const QString &cell, int count, int variants)
      : plugIn_(plugIn), cell_(cell), count_(count), variants_(variants), sink_(&*plugIn), floorSink_(&*plugIn) {
    sink_.connectTo(plugIn.object());
    floor_.keepFrom(plugIn.object());
    readCell();
    plugIn.object()->disconnect(&floor_);
    plugIn.object()->disconnect(&sink_);
    floorSink_.connectTo(&floor_);
  }

  // Reads once and sends once; the times are readNs and floorNs.
  void run() {
    sink_.connectTo(plugIn_.object());
    const Stopwatch readWatch;
    readCell();
    readNs = readWatch.nanoseconds();
    plugIn_.object()->disconnect(&sink_);
    floorSink_.start();
    const Stopwatch floorWatch;
    floor_.send();
    floorNs = floorWatch.nanoseconds();
    check();
  }

  double readNs = 0;
  double floorNs = 0;

private:
  void readCell() {
    sink_.start();
    plugIn_->openLayout(BenchPlugin::lib(), cell_, QStringLiteral("layout"), QString());
  }

  void check() const {
    const Received &received = sink_.received();
    if (received.errors != 0) {
      throw std::runtime_error("the read reported: " + sink_.firstError().toStdString());
    }
    if (!(received == floorSink_.received()) || sink_.data() != floorSink_.data()) {
      failCheck("signals of the read", received.text().toStdString(), floorSink_.received().text().toStdString());
    }
    if (received.references != count_ || received.cells != variants_ + 1) {
      failCheck("cells and references", received.text().toStdString(),
                std::to_string(variants_ + 1) + " cells, " + std::to_string(count_) + " references");
    }
  }

  BenchPlugin &plugIn_;
  const QString cell_;
  const int count_;
  const int variants_;
  CellDataSink sink_;
  ReferenceFloor floor_;
  CellDataSink floorSink_;
};

// `write` makes a cell of that name with that many placements. What further placements cost is the difference between
// two reads of the same run, since runs differ more than that.
template <typename Write>
void compare(const Options &options, BenchPlugin &plugIn, const char *title, int count, int variants, Write write) {
  write("top", count);
  write("few", variants);
  Measured all(plugIn, QStringLiteral("top"), count, variants);
  Measured few(plugIn, QStringLiteral("few"), variants, variants);
  Samples read, floor, fewRead, fewFloor, moreRead, moreFloor;
  for (int run = -1; run < options.runs; ++run) { // the first one warms up
    few.run();
    all.run();
    if (run < 0) {
      continue;
    }
    read.add(all.readNs / count);
    floor.add(all.floorNs / count);
    fewRead.add(few.readNs / variants * 1e-3);
    fewFloor.add(few.floorNs / variants * 1e-3);
    moreRead.add((all.readNs - few.readNs) / (count - variants));
    moreFloor.add((all.floorNs - few.floorNs) / (count - variants));
  }
  std::printf("%s, %d of %d variants\n", title, count, variants);
  std::printf("  ratio to the floor               %8.2f\n", read.median() / floor.median());
  std::printf("  read, each                       %s\n", read.text("ns").c_str());
  std::printf("  floor, each                      %s\n", floor.text("ns").c_str());
  std::printf("  a variant with one placement     %s\n", fewRead.text("us").c_str());
  std::printf("  floor of that                    %s\n", fewFloor.text("us").c_str());
  std::printf("  ratio of all further placements  %8.2f\n", moreRead.median() / moreFloor.median());
  std::printf("  further placements, each         %s\n", moreRead.text("ns").c_str());
  std::printf("  floor of these                   %s\n", moreFloor.text("ns").c_str());
}

void measurePcells(const Options &options, BenchPlugin &plugIn) {
  static Evaluator evaluator;
  oaPcellLink::create(&evaluator);
  writePcell();
  compare(options, plugIn, "instances of a parametric cell", options.pcells, options.variants,
          [&](const char *cell, int count) {
            writePcells(cell, count, options.variants);
            evaluator.count = 0;
            evaluator.nanoseconds = 0;
          });
  const int reads = 2 * (options.runs + 2);
  if (evaluator.count != reads * options.variants) {
    failCheck("evaluations", std::to_string(evaluator.count),
              std::to_string(options.variants) + " in each of " + std::to_string(reads) + " reads");
  }
  std::printf("  evaluations a read               %8d, %.2f us each in the evaluator\n\n", options.variants,
              evaluator.nanoseconds / evaluator.count * 1e-3);
  std::fflush(stdout);
}

void measureVias(const Options &options, BenchPlugin &plugIn) {
  compare(options, plugIn, "standard vias", options.vias, options.kinds,
          [&](const char *cell, int count) { writeVias(cell, count, options.kinds); });
  std::printf("\n");
  std::fflush(stdout);
}

int run(const Options &options) {
  BenchPlugin plugIn(QString::fromStdString(options.plugIn), QString::fromStdString(options.folder));
  printBanner("reading parametric layouts", plugIn.file().toStdString());
  writeTechnology();
  for (const std::string &workload : options.workloads) {
    (workload == "pcells" ? measurePcells : measureVias)(options, plugIn);
  }
  return 0;
}

int parseAndRun(int argc, char **argv) {
  Options options;
  CLI::App app(
      "Measures openLayout() on layouts of variants against its floor: the same signals from arrays in memory,\n"
      "in the same run.\n"
      "workloads:\n"
      "  pcells: instances of a parametric cell with four parameters, whose evaluator draws a rectangle\n"
      "  vias: standard vias of one definition with cuts of several widths\n");
  app.add_option("--workload", options.workloads, "workloads to run")
      ->check(CLI::IsMember({"pcells", "vias"}))
      ->capture_default_str();
  const CLI::Range some(1, 100000000);
  app.add_option("--pcells", options.pcells, "instances of the parametric cell")->check(some)->capture_default_str();
  app.add_option("--variants", options.variants, "different ones among them")->check(some)->capture_default_str();
  app.add_option("--vias", options.vias, "vias")->check(some)->capture_default_str();
  app.add_option("--kinds", options.kinds, "different ones among them")->check(some)->capture_default_str();
  addBenchOptions(app, options, "timed runs after one that warms up");
  CLI11_PARSE(app, argc, argv);
  if (options.pcells <= options.variants || options.vias <= options.kinds) {
    throw std::runtime_error("there have to be more placements than different ones");
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
