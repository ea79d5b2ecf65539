#ifndef SCHEMATICTEST_H
#define SCHEMATICTEST_H

#include <string>
#include <vector>

#include "plugintest.h"
#include "signalrecorder.h"

// A schematic or symbol that a test builds with the API: opened empty, saved and closed when it goes out of scope.
class SchematicBuilder {
public:
  enum Kind { schematic = 1, symbol = 2 };
  SchematicBuilder(const std::string &cell, const std::string &view, Kind kind, const std::string &lib = "lib");
  ~SchematicBuilder();

  oa::oaBlock *operator*() const { return block_; }
  oa::oaDesign *design() const { return design_; }

private:
  oa::oaDesign *design_;
  oa::oaBlock *block_;
};

// A design opened for reading for as long as the object lives.
class OpenView {
public:
  explicit OpenView(const std::string &cell, const std::string &view = "schematic", const std::string &lib = "lib");
  ~OpenView() { design_->close(); }

  oa::oaDesign *operator->() const { return design_; }
  oa::oaBlock *operator*() const { return design_->getTopBlock(); }

private:
  oa::oaDesign *design_;
};

// With a recorder on the plug-in's signals.
class SchematicTest : public PluginTest {
protected:
  SchematicTest() : recorder(&plugIn) {}

  // The signals of openSchematic(lib/cell/view).
  Lines read(const std::string &cell, const std::string &view = "schematic");
  // Errors and notices that reached the host since the recorder was last cleared.
  Lines reports() const { return recorder.lines({"reportError"}); }

  SignalRecorder recorder;
};

// Standard output of a call, from C's stdio as well.
template <typename Call> std::string printedBy(Call call) {
  testing::internal::CaptureStdout();
  call();
  std::fflush(stdout);
  return testing::internal::GetCapturedStdout();
}

#endif
