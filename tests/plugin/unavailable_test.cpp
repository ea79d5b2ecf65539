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
      {"getParameter", [&] { core.getParameter("l", "c", "v", &list, &list, &list); }},
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
