#ifndef OACHECKTEST_H
#define OACHECKTEST_H

#include "columnfile.h"
#include "designdatabase.h"
#include "designtest.h"
#include "fulldesign.h"
#include "librarycheck.h"

#include <vector>

namespace oachecktest {

using namespace designtest;
namespace check = kit::check;

// What a check has found, and what it has looked at.
struct Outcome {
  std::vector<check::Finding> findings;
  check::Totals totals;
  std::uint64_t damages = 0, warnings = 0, foreign = 0;

  std::string text() const {
    std::string all;
    for (const check::Finding &finding : findings) {
      all += textOf(finding) + "\n";
    }
    return all;
  }
};

template <typename Run> Outcome outcomeOf(Run run, std::uint64_t limit = 100) {
  Outcome outcome;
  check::Findings findings([&](const check::Finding &finding) { outcome.findings.push_back(finding); }, limit);
  run(findings, outcome.totals);
  outcome.damages = findings.count(check::Severity::damage);
  outcome.warnings = findings.count(check::Severity::warning);
  outcome.foreign = findings.count(check::Severity::foreign);
  return outcome;
}

inline Outcome checkedFile(const fs::path &path) {
  return outcomeOf(
      [&](check::Findings &findings, check::Totals &totals) { check::checkFile(path.string(), {}, findings, totals); });
}

inline Outcome checkedLibrary(const fs::path &path, const std::string &name) {
  return outcomeOf([&](check::Findings &findings, check::Totals &totals) {
    check::CheckOptions options;
    options.libraryName = name;
    check::checkLibrary(path.string(), options, findings, totals);
  });
}

class OacheckTest : public DesignTest {
protected:
  fs::path libFolder() const { return viewFolder("x").parent_path().parent_path(); }
  Outcome checkedLibrary() const { return oachecktest::checkedLibrary(libFolder(), libName()); }
};

// The design `full`, whose rows are changed behind the API's back and written with right checksums.
class FullDesign : public OacheckTest {
protected:
  FullDesign() {
    fulldesign::make(libName());
    good_ = bytesOf(file("full"));
  }
  const std::string &good() const { return good_; }
  template <typename Damage> void writeDamaged(Damage damage) const {
    writeBytes(file("full"), good_);
    kit::DatabasePlace place;
    place.label = "full";
    kit::DesignDatabase design(place, "full", "layout");
    design.load(file("full").string());
    damage(design);
    design.writeTo(file("full").string());
  }
  // The good design with another number of rows in the directory than the columns hold.
  void writeClaiming(kit::Row rows, const std::string &tableName) const {
    writeBytes(file("full"), good_);
    kit::DesignDatabase design({}, "full", "layout");
    design.load(file("full").string());
    kit::ColumnFileWriter writer(file("full").string());
    for (const kit::Table *table : design.tables()) {
      const bool isChanged = tableName.empty() || tableName == table->name();
      writer.beginTable(table->id(), table->name(), isChanged ? rows : table->rowCount());
      for (const kit::ColumnBase *column : table->columns()) {
        writer.beginColumn(column->id(), column->name(), column->elementBytes());
        if (column->size() != 0) {
          writer.addElements(column->element(0), column->size()); // small: one segment
        }
        writer.endColumn();
      }
    }
    writer.finish(static_cast<std::uint8_t>(kit::DatabaseKind::design));
  }

private:
  std::string good_;
};

} // namespace oachecktest

#endif
