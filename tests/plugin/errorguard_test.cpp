#include "errorguard.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

void raiseError() { throw oa::oaError(17, "property w is there already"); }
void raiseCharacter() { throw 'e'; }
void raiseText() { throw QString("can not open"); }
void raiseOther() { throw std::runtime_error("other"); }
void raiseNothing() {}

std::string printedBy(const std::function<void()> &body) {
  testing::internal::CaptureStdout();
  body();
  return testing::internal::GetCapturedStdout();
}

TEST(PrintingGuard, TellsExceptionsAndCharacters) {
  const struct {
    const char *name;
    void (*body)();
    bool isCompleted;
    const char *printed;
  } cases[] = {
      {"exception of the kit", raiseError, false, "ERROR (saveNet): property w is there already \n"},
      {"abort character", raiseCharacter, false, "ERROR (saveNet): e \n"},
      {"success", raiseNothing, true, ""},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(printedBy([&] { EXPECT_EQ(guard::printing("saveNet", c.body), c.isCompleted); }), c.printed);
  }
}

TEST(PrintingGuard, GapStandsBeforeMessagesOnly) {
  EXPECT_EQ(printedBy([] { guard::printing("getLibraries", raiseError, "  "); }),
            "ERROR (getLibraries):  property w is there already \n");
  EXPECT_EQ(printedBy([] { guard::printing("getLibraries", raiseCharacter, "  "); }), "ERROR (getLibraries): e \n");
}

TEST(PrintingGuard, PercentSignsInAMessageArePrinted) {
  EXPECT_EQ(printedBy([] { guard::printing("init", [] { throw oa::oaError(0, "100%s full"); }); }),
            "ERROR (init): 100%s full \n");
}

TEST(Guards, LetOtherTypesPass) {
  EXPECT_THROW(guard::printing("saveNet", raiseOther), std::runtime_error);
  EXPECT_THROW(guard::printing("saveNet", raiseText), QString);
  EXPECT_THROW(guard::silently(raiseOther), std::runtime_error);
  EXPECT_THROW(guard::reporting(raiseOther, [](const QString &) {}), std::runtime_error);
}

TEST(SilentGuards, PrintNothing) {
  EXPECT_EQ(printedBy([] {
              EXPECT_FALSE(guard::silently(raiseError));
              EXPECT_FALSE(guard::silently(raiseCharacter));
              EXPECT_TRUE(guard::silently(raiseNothing));
              EXPECT_FALSE(guard::swallowing(raiseOther));
              EXPECT_FALSE(guard::swallowing(raiseError));
            }),
            "");
}

TEST(ReportingGuard, HandsOverTheCause) {
  std::vector<std::string> causes;
  const auto report = [&](const QString &cause) { causes.push_back(cause.toStdString()); };
  EXPECT_EQ(printedBy([&] {
              guard::reporting(raiseError, report);
              guard::reporting(raiseCharacter, report);
              guard::reporting(raiseText, report);
              EXPECT_TRUE(guard::reporting(raiseNothing, report));
            }),
            "");
  EXPECT_EQ(causes, (std::vector<std::string>{"property w is there already", "e", "can not open"}));
}

} // namespace
