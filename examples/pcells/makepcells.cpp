// makepcells: makes a library with the parametric cells of this folder and a cell that places some of each.

#include "samplecells.h"

#include <oa/oaDesignDB.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <string>

using namespace oa;

namespace {

constexpr int kFailure = 1;
constexpr int kUsageError = 2;
const oaNativeNS kNames;
const char *const kView = "layout";

oaScalarName nameOf(const std::string &text) { return oaScalarName(kNames, text.c_str()); }

// Evaluators that fail end no operation; the sub master just stays empty.
class ErrorPrinter : public oaPcellObserver {
public:
  ErrorPrinter() : oaPcellObserver(1) {}
  void onError(oaDesign *, const oaString &message, oaPcellErrorTypeEnum) override {
    std::cerr << "makepcells: " << message << "\n";
    ++errors_;
  }
  int errors() const { return errors_; }

private:
  int errors_ = 0;
};

void makeTechnology(oaLib *lib) {
  static const struct {
    const char *name;
    oaLayerNum number;
    oaMaterialEnum material;
  } kLayers[] = {{"nwell", samples::kNwell, oacNWellMaterial},   {"active", samples::kActive, oacDiffMaterial},
                 {"poly", samples::kPoly, oacPolyMaterial},      {"contact", samples::kContact, oacCutMaterial},
                 {"metal1", samples::kMetal1, oacMetalMaterial}, {"via1", samples::kVia1, oacCutMaterial},
                 {"metal2", samples::kMetal2, oacMetalMaterial}};
  oaTech *const tech = oaTech::create(lib);
  tech->setDBUPerUU(oaViewType::get(oacMaskLayout), 1000);
  tech->setDefaultManufacturingGrid(5);
  oaPurpose::create(tech, "pin", 1);
  for (const auto &layer : kLayers) {
    oaPhysicalLayer::create(tech, layer.name, layer.number, layer.material);
  }
  tech->save();
}

oaDesign *newLayout(const std::string &libName, const std::string &cellName) {
  return oaDesign::open(nameOf(libName), nameOf(cellName), nameOf(kView), oaViewType::get(oacMaskLayout), 'w');
}

// The cell has the name of its evaluator.
void makeSuperMaster(const std::string &libName, const samples::Cell &cell) {
  oaPcellDef *const definition = oaPcellLink::getPcellDef(cell.evaluator);
  oaDesign *const design = newLayout(libName, cell.evaluator);
  design->defineSuperMaster(definition, cell.defaults);
  design->save();
  design->close();
}

// One row for each cell, its variants side by side, with what is different about each of them written below.
void makeTestChip(const std::string &libName) {
  constexpr oaCoord kGap = 5000;
  constexpr oaDist kTextHeight = 800;
  oaDesign *const design = newLayout(libName, "testchip");
  oaBlock *const block = oaBlock::create(design);
  oaCoord bottom = 0;
  for (const samples::Cell &cell : samples::cells()) {
    oaCoord left = 0, top = bottom;
    int number = 0;
    for (const samples::Variant &variant : cell.variants) {
      const std::string instName = std::string(cell.evaluator) + std::to_string(++number);
      oaInst *const inst = oaScalarInst::create(block, nameOf(libName), nameOf(cell.evaluator), nameOf(kView),
                                                nameOf(instName), oaTransform(), &variant.parameters);
      const oaDesign *const master = inst->getMaster(); // evaluates it
      if (!master || !master->getTopBlock()) {
        continue; // the observer has told why
      }
      oaBox box;
      inst->getBBox(box);
      inst->move(oaTransform(left - box.left(), bottom - box.bottom()));
      oaText *const text = oaText::create(block, samples::kMetal2, oavPurposeNumberAnnotation, variant.description,
                                          oaPoint(left, bottom - oaCoord(kTextHeight)), oacUpperLeftTextAlign, oacR0,
                                          oacStickFont, kTextHeight);
      oaBox textBox;
      text->getBBox(textBox);
      left = std::max(left + oaCoord(box.getWidth()), textBox.right()) + kGap;
      top = std::max(top, bottom + oaCoord(box.getHeight()));
    }
    bottom = top + 2 * kGap;
  }
  design->save();
  design->close();
}

int makeLibrary(const std::string &libName, const std::string &path) {
  if (std::filesystem::exists(path)) {
    std::cerr << "makepcells: " << path << " is there already, expected the name of a new directory\n";
    return kFailure;
  }
  const ErrorPrinter printer;
  oaLib *const lib = oaLib::create(nameOf(libName), path.c_str());
  makeTechnology(lib);
  for (const samples::Cell &cell : samples::cells()) {
    makeSuperMaster(libName, cell);
  }
  makeTestChip(libName);
  oaTech::find(lib)->close();
  lib->close();
  if (printer.errors() > 0) {
    return kFailure;
  }
  std::cout << "library " << libName << " is in " << path << "\n";
  return 0;
}

int run(int argc, char **argv) {
  CLI::App app("Makes a library with the parametric cells resistor, mosTransistor, guardRing and spiralInductor,\n"
               "and a cell testchip that places three of each",
               "makepcells");
  std::string libName, path;
  app.add_option("--lib", libName, "Name of the new library")->required()->type_name("NAME");
  app.add_option("--path", path, "Directory where it is made; must not exist yet")->required()->type_name("DIR");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError &error) {
    return app.exit(error) == 0 ? 0 : kUsageError;
  }
  oaDesignInit();
  return makeLibrary(libName, path);
}

} // namespace

int main(int argc, char **argv) {
  try {
    return run(argc, argv);
  } catch (const oaException &error) {
    std::fprintf(stderr, "makepcells: %s\n", static_cast<const oaChar *>(error.getMsg()));
  } catch (const std::exception &error) {
    std::fprintf(stderr, "makepcells: %s\n", error.what());
  }
  return kFailure;
}
