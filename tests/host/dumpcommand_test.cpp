// oahost dump and diff, and the difference of two texts.

#include "gdsbytes.h"
#include "hostprocess.h"
#include "unifieddiff.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

using testing::HasSubstr;

std::string diffOf(const QByteArray &before, const QByteArray &after) {
  return unifiedDiff({"a", before}, {"b", after}).toStdString();
}

QByteArray lettersAsLines(const char *letters) {
  QByteArray text;
  for (; *letters != '\0'; ++letters)
    text += QByteArray(1, *letters) + '\n';
  return text;
}

// Applies a difference the way any tool does that reads the format: by the numbers in its hunks.
QByteArray patched(const QByteArray &before, const QByteArray &difference) {
  const QList<QByteArray> lines = before.split('\n');
  QByteArray result;
  int next = 0;
  const QList<QByteArray> script = difference.split('\n');
  for (int i = 2; i < script.size(); ++i) {
    const QByteArray &line = script[i];
    if (line.startsWith("@@ -")) {
      const QList<QByteArray> range = line.mid(4, line.indexOf(' ', 4) - 4).split(',');
      const int begin = range[0].toInt() - (range.value(1) == "0" ? 0 : 1);
      for (; next < begin; ++next)
        result += lines[next] + '\n';
    } else if (line.startsWith('+')) {
      result += line.mid(1) + '\n';
    } else if (line.startsWith('-') || line.startsWith(' ')) {
      EXPECT_EQ(lines.value(next), line.mid(1));
      if (line.startsWith(' '))
        result += line.mid(1) + '\n';
      ++next;
    }
  }
  for (; next + 1 < lines.size(); ++next)
    result += lines[next] + '\n';
  return result;
}

int changedLines(const QByteArray &difference) {
  int count = -2; // the two lines with the names
  for (const QByteArray &line : difference.split('\n'))
    count += line.startsWith('+') || line.startsWith('-') ? 1 : 0;
  return count;
}

TEST(UnifiedDiff, Form) {
  const struct {
    const char *name, *before, *after, *difference;
  } cases[] = {
      {"equal", "abc", "abc", ""},
      {"both empty", "", "", ""},
      {"all new", "", "ab", "--- a\n+++ b\n@@ -0,0 +1,2 @@\n+a\n+b\n"},
      {"all gone", "ab", "", "--- a\n+++ b\n@@ -1,2 +0,0 @@\n-a\n-b\n"},
      {"one line", "a", "b", "--- a\n+++ b\n@@ -1 +1 @@\n-a\n+b\n"},
      {"context of three", "abcdefghi", "abcdXfghi",
       "--- a\n+++ b\n@@ -2,7 +2,7 @@ a\n b\n c\n d\n-e\n+X\n f\n g\n h\n"},
      {"neighbours share a hunk", "abcdefghij", "aXcdefghYj",
       "--- a\n+++ b\n@@ -1,10 +1,10 @@\n a\n-b\n+X\n c\n d\n e\n f\n g\n h\n-i\n+Y\n j\n"},
      {"far ones do not", "abcdefghijkl", "Xbcdefghijkl-",
       "--- a\n+++ b\n@@ -1,4 +1,4 @@\n-a\n+X\n b\n c\n d\n@@ -10,3 +10,4 @@ i\n j\n k\n l\n+-\n"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(diffOf(lettersAsLines(c.before), lettersAsLines(c.after)), c.difference);
  }
  EXPECT_EQ(diffOf("a\n b\n", "a\n c\n"), "--- a\n+++ b\n@@ -1,2 +1,2 @@\n a\n- b\n+ c\n");
  EXPECT_EQ(diffOf("a\n", "a"), "--- a\n+++ b\n@@ -1 +1 @@\n-a\n+a\n\\ No newline at end of file\n");
}

// Few letters make many ways to match; the reference is the length of the longest common subsequence.
TEST(UnifiedDiff, IsTheSmallestOfShortTexts) {
  std::mt19937 random(7);
  for (int round = 0; round < 400; ++round) {
    std::string texts[2];
    for (std::string &text : texts) {
      const unsigned length = random() % 40;
      for (unsigned i = 0; i < length; ++i)
        text += static_cast<char>('a' + random() % 4);
    }
    std::vector<std::vector<int>> common(texts[0].size() + 1, std::vector<int>(texts[1].size() + 1));
    for (std::size_t x = 1; x <= texts[0].size(); ++x) {
      for (std::size_t y = 1; y <= texts[1].size(); ++y) {
        common[x][y] = texts[0][x - 1] == texts[1][y - 1] ? common[x - 1][y - 1] + 1
                                                          : std::max(common[x - 1][y], common[x][y - 1]);
      }
    }
    SCOPED_TRACE(texts[0] + " " + texts[1]);
    const QByteArray before = lettersAsLines(texts[0].c_str());
    const QByteArray after = lettersAsLines(texts[1].c_str());
    const QByteArray difference = unifiedDiff({"a", before}, {"b", after});
    if (before == after) {
      EXPECT_EQ(difference, "");
      continue;
    }
    EXPECT_EQ(patched(before, difference), after);
    EXPECT_EQ(changedLines(difference), static_cast<int>(texts[0].size() + texts[1].size()) - 2 * common.back().back());
  }
}

TEST(UnifiedDiff, LongTexts) {
  constexpr int kLines = 100000;
  std::mt19937 random(11);
  std::vector<QByteArray> numbers;
  numbers.reserve(kLines);
  for (int i = 0; i < kLines; ++i)
    numbers.push_back(QByteArray::number(i));
  const auto joined = [](const std::vector<QByteArray> &lines) {
    QByteArray text;
    for (const QByteArray &line : lines)
      text += line + '\n';
    return text;
  };
  const QByteArray before = joined(numbers);
  std::vector<QByteArray> few = numbers;
  for (int i = 0; i < 20; ++i)
    std::swap(few[random() % few.size()], few[random() % few.size()]);
  std::vector<QByteArray> shuffled = numbers;
  std::shuffle(shuffled.begin(), shuffled.end(), random);
  std::vector<QByteArray> foreign;
  foreign.reserve(kLines);
  for (const QByteArray &number : numbers)
    foreign.push_back('x' + number);
  const struct {
    const char *name;
    const std::vector<QByteArray> &after;
  } cases[] = {{"few differences", few}, {"shuffled", shuffled}, {"nothing in common", foreign}};
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const QByteArray after = joined(c.after);
    const QByteArray difference = unifiedDiff({"a", before}, {"b", after});
    EXPECT_EQ(patched(before, difference), after);
  }
}

// One GDSII file in two libraries.
class DumpCommands : public testing::Test {
protected:
  DumpCommands() {
    GdsBytes gds;
    gds.head().structure("TOP").boundary(68, {0, 0, 0, 50, 100, 50, 100, 0, 0, 0}).label("A", 0, false, 0.25, 0);
    gds.path(0, 10, {0, 0, 0, 90}).sref("LEAF", {1000, 0}, true, 90).endStructure();
    gds.structure("LEAF").boundary(1, {0, 0, 0, 5, 10, 5, 10, 0, 0, 0}).endStructure().endLibrary();
    host.write("chip.gds", gds.bytes);
    for (const char *lib : {"one", "two"}) {
      const HostResult result = host.run(QStringList{"import-gds", "chip.gds", "--lib", lib, "--path", host.path(lib)});
      EXPECT_EQ(result.exitCode, 0) << result.errors;
    }
  }
  HostProcess host;
};

TEST_F(DumpCommands, CopiesAreEqualAndCellsDiffer) {
  const QList<QByteArray> cells = host.run("cells one").output.trimmed().split('\n');
  ASSERT_GE(cells.size(), 2);
  const QString first = QString::fromLatin1(cells[0]);
  const QString second = QString::fromLatin1(cells[1]);
  const HostResult dump = host.run(QStringList{"dump", "one", first, "layout"});
  EXPECT_EQ(dump.exitCode, 0) << dump.errors;
  EXPECT_THAT(dump.output.toStdString(),
              testing::StartsWith("oaDump 2\nlibrary \"one\"\ncell \"" + cells[0].toStdString()));
  EXPECT_EQ(host.run(QStringList{"dump", "one", first}).output, dump.output) << "the view's default";
  for (const QByteArray &cell : cells) {
    const HostResult equal = host.run(QStringList{"diff", "one", cell, "layout", "two", cell, "layout"});
    EXPECT_EQ(equal.exitCode, 0) << cell.constData() << equal.output.constData() << equal.errors;
    EXPECT_EQ(equal.output, "");
  }
  const HostResult different = host.run(QStringList{"diff", "one", first, "layout", "two", second, "layout"});
  EXPECT_EQ(different.exitCode, 1) << different.errors;
  EXPECT_THAT(different.output.toStdString(), HasSubstr("+++ two/" + cells[1].toStdString() + "/layout\n@@ -"));
}

// Everything that the importer writes: properties of the design, evaluated and other texts, buses, iterated placements.
TEST_F(DumpCommands, CopiedSchematicsAndSymbolsAreEqual) {
  const QString examples = EXAMPLES_DIR "/smallschematic";
  HostResult result = host.run(QStringList{"import-xschem", examples, "--lib", "small", "--path", host.path("s")});
  ASSERT_EQ(result.exitCode, 0) << result.errors;
  result = host.run(QStringList{"register", host.path("copied")});
  ASSERT_EQ(result.exitCode, 0) << result.errors;
  result = host.run("copy small top copied");
  ASSERT_EQ(result.exitCode, 0) << result.errors;
  const QByteArray cells = host.run("cells small").output;
  EXPECT_EQ(host.run("cells copied").output, cells);
  std::string dumps;
  for (const QByteArray &cell : cells.trimmed().split('\n')) {
    const QByteArray views = host.run(QStringList{"views", "small", cell}).output;
    EXPECT_EQ(host.run(QStringList{"views", "copied", cell}).output, views);
    for (const QByteArray &view : views.trimmed().split('\n')) {
      dumps += host.run(QStringList{"dump", "small", cell, view}).output.toStdString();
      const HostResult equal = host.run(QStringList{"diff", "small", cell, view, "copied", cell, view});
      EXPECT_EQ(equal.exitCode, 0) << equal.output.toStdString() << equal.errors;
    }
  }
  // What the copies have to be equal in.
  for (const char *part : {"viewType schematicSymbol", "viewType schematic\n", "\n  prop string \"xschem.header\" ",
                           "evalText 230/annotation expression=\"@name\"", "text 231/annotation text="})
    EXPECT_THAT(dumps, HasSubstr(part));
}

TEST_F(DumpCommands, WhatIsNotThereIsTold) {
  const struct {
    const char *arguments;
    int exitCode;
    const char *error;
  } cases[] = {
      {"dump one nothing layout", 1, "library one has no cell nothing"},
      {"dump one", 2, "CELL is required"},
      {"diff one nothing layout two nothing layout", 2, "library one has no cell nothing"},
      {"diff one nothing layout", 2, "LIB2 is required"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.arguments);
    const HostResult result = host.run(c.arguments);
    EXPECT_EQ(result.exitCode, c.exitCode);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, HasSubstr(c.error));
  }
}

} // namespace
