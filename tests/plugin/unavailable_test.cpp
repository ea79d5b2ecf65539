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
      {"getParameter", [&] { core.getParameter("l", "c", "v", &list, &list, &list); }},
      {"getViewDump", [&] { EXPECT_EQ(core.getViewDump("l", "c", "v"), QString()); }},
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
