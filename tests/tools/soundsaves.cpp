// Linked with the kit's own tests: whatever these save, as a design, technology or management data, is checked the
// moment it has its name. Sound files of every kind of object are clean.

#include "filelayer.h"
#include "findings.h"
#include "librarycheck.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace OpenAccess_4::kit;

class CheckingLayer : public FileLayer {
public:
  int rename(const char *from, const char *to) override {
    const int result = FileLayer::rename(from, to);
    const std::string path = to;
    if (result == 0 && (endsWith(path, ".oa") || endsWith(path, ".db") || endsWith(path, ".dm"))) {
      check(path);
    }
    return result;
  }
  std::uint64_t checkedFiles() const { return totals_.databases; }

private:
  static bool endsWith(const std::string &text, const std::string &end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
  }
  void check(const std::string &path) {
    check::Findings findings([](const check::Finding &finding) {
      // Tests place instances of masters that they do not make, and vias before they save the technology; new views
      // begin as empty files.
      const bool isUsual =
          finding.table == "instHeaders" || finding.table == "viaHeaders" || finding.fault.what.find("is empty") == 0;
      if (finding.severity != check::Severity::warning || !isUsual) {
        ADD_FAILURE() << textOf(finding);
      }
    });
    try {
      check::checkFile(path, {}, findings, totals_);
    } catch (const std::exception &exception) {
      ADD_FAILURE() << path << ": " << exception.what();
    }
  }
  check::Totals totals_;
};

class CheckEverySave : public testing::Environment {
public:
  void SetUp() override { FileLayer::replace(&layer_); }
  void TearDown() override {
    FileLayer::replace(nullptr);
    EXPECT_GT(layer_.checkedFiles(), 0U);
  }

private:
  CheckingLayer layer_;
};

const testing::Environment *const environment = testing::AddGlobalTestEnvironment(new CheckEverySave);

} // namespace
