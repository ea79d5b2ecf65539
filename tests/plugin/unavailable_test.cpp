#include "oapluginmain.h"

#include <functional>

#include <gtest/gtest.h>

#include "signalrecorder.h"

namespace {

TEST(UnavailableOperations, TellTheHostAndReturnNothing) {
  oaPlugInMain plugIn;
  oaPlugInCore &core = plugIn;
  QStringList list;
  const struct {
    const char *name;
    std::function<void()> call;
  } operations[] = {
      {"removeView", [&] { core.removeView("l", "c", "v"); }},
      {"removeCell", [&] { core.removeCell("l", "c"); }},
      {"removeLayoutData", [&] { core.removeLayoutData("l", "c"); }},
      {"writeLayoutData", [&] { core.writeLayoutData("l", "c", "d"); }},
      {"writeCdfData", [&] { core.writeCdfData("l", "c", "d"); }},
      {"importLayer", [&] { EXPECT_EQ(core.importLayer("l", 256), QString()); }},
      {"openSchematic", [&] { core.openSchematic("l", "c", "v", ""); }},
      {"getComponents", [&] { EXPECT_EQ(core.getComponents("l", "", true), QStringList()); }},
      {"existComponent", [&] { EXPECT_FALSE(core.existComponent("l", "d")); }},
      {"loadComponent", [&] { core.loadComponent("l", "d"); }},
      {"loadNetlist", [&] { core.loadNetlist("l", "c", "v"); }},
      {"getParameter", [&] { core.getParameter("l", "c", "v", &list, &list, &list); }},
      {"getViewDump", [&] { EXPECT_EQ(core.getViewDump("l", "c", "v"), QString()); }},
      {"saveSchematic", [&] { core.saveSchematic("l", "c", "v"); }},
      {"saveSymbol", [&] { core.saveSymbol("l", "c", "v"); }},
      {"saveNet", [&] { core.saveNet(1, "n", 0); }},
      {"savePolygon", [&] { core.savePolygon(QPolygon(), "red"); }},
      {"saveText", [&] { core.saveText("t", QPoint(), "red", 90); }},
      {"savePort", [&] { core.savePort("p", QPoint(), false, "in"); }},
      {"savePort", [&] { core.savePort(1, QPoint(), false, "in", "s"); }},
      {"savePlacement", [&] { core.savePlacement("l", "c", "v", "i", QPoint(), ""); }},
      {"savePropInt", [&] { core.savePropInt("n", 1); }},
      {"tclInit", [&] { core.tclInit(nullptr); }},
      {"tclExecFile", [&] { EXPECT_EQ(core.tclExecFile(nullptr, "f"), -1); }},
      {"tclExec", [&] { EXPECT_EQ(core.tclExec(nullptr, "c"), -1); }},
  };
  SignalRecorder recorder(&plugIn);
  for (const auto &operation : operations) {
    SCOPED_TRACE(operation.name);
    recorder.clear();
    operation.call();
    EXPECT_EQ(recorder.lines(),
              std::vector<std::string>{"reportError \"This operation is not available in this build.\" 1 \"" +
                                       std::string(operation.name) + "\""});
  }
  EXPECT_TRUE(list.isEmpty());
}

} // namespace
