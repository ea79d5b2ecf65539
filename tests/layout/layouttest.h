#ifndef LAYOUTTEST_H
#define LAYOUTTEST_H

#include <memory>
#include <string>
#include <vector>

#include "plugintest.h"
#include "signalrecorder.h"

// A layout cell that a test builds with the API: opened empty, saved and closed when it goes out of scope.
class CellBuilder {
public:
  CellBuilder(const std::string &lib, const std::string &cell, const std::string &view = "layout");
  ~CellBuilder();

  oa::oaBlock *operator*() const { return block_; }
  oa::oaDesign *design() const { return design_; }

  oa::oaRect *rect(int layer, int purpose, int left, int bottom, int right, int top);
  oa::oaScalarInst *inst(const std::string &name, const std::string &cell, int x = 0, int y = 0,
                         oa::oaOrient orient = oa::oacR0, const std::string &lib = "",
                         const std::string &view = "layout");
  oa::oaText *text(int layer, int purpose, const std::string &text, int x, int y);
  // A terminal on a net of its own name, with one pin.
  oa::oaPin *pin(const std::string &name);

private:
  std::string lib_;
  oa::oaDesign *design_;
  oa::oaBlock *block_;
};

// A design opened for reading for as long as the object lives.
class OpenCell {
public:
  OpenCell(const std::string &lib, const std::string &cell);
  ~OpenCell() { design_->close(); }

  oa::oaDesign *operator->() const { return design_; }
  oa::oaBlock *operator*() const { return design_->getTopBlock(); }
  // "Rect 4/0 (0 0 10 5)" for each shape: type, layer/purpose and what the object was created with.
  Lines shapes() const;

private:
  oa::oaDesign *design_;
};

// With a recorder on the plug-in's signals.
class LayoutTest : public PluginTest {
protected:
  LayoutTest() : recorder(&plugIn) {}

  // The signals of reading lib/cell, all of them or those named.
  Lines read(const std::string &cell, const std::string &view = "layout");
  Lines read(const std::string &cell, const Lines &signalNames);
  std::string pathOf(const std::string &cell, const std::string &view = "layout") const;

  void beginLayout(const QString &cell, bool replaceConnectivity = true, const QStringList &nets = QStringList(),
                   const QStringList &terms = QStringList());
  // Errors and notices that reached the host since the recorder was last cleared.
  Lines reports() const { return recorder.lines({"reportError"}); }

  SignalRecorder recorder;
};

#endif
