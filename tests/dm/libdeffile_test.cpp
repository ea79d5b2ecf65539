#include "libdeffile.h"

#include "dmtest.h"

using namespace dmtest;
using kit::LibDefStatement;
using kit::parseLibDefs;

namespace {

std::string described(const LibDefStatement &statement) {
  switch (statement.kind) {
  case LibDefStatement::Kind::define:
    return "define " + statement.name + "=" + statement.value;
  case LibDefStatement::Kind::include:
    return "include " + statement.value;
  case LibDefStatement::Kind::assign:
    return "assign " + statement.name + "." + statement.attribute + "=" + statement.value;
  case LibDefStatement::Kind::text:
    break;
  }
  return "text";
}

TEST(LibDefFile, UnderstandsEachKindOfLine) {
  const struct {
    const char *name, *line, *meaning;
  } cases[] = {
      {"definition", "DEFINE L /p/l", "define L=/p/l"},
      {"any case, any blanks", "  dEfInE\tL   ./l  ", "define L=./l"},
      {"blanks in a path", "DEFINE L /p/my libs/l", "define L=/p/my libs/l"},
      {"line end of another system", "DEFINE L /p/l\r", "define L=/p/l"},
      {"escaped name", "DEFINE my#2dlib l", "define my#2dlib=l"},
      {"trailing comment", "DEFINE L /p/l # ours", "define L=/p/l"},
      {"number sign in a path", "DEFINE L /p/a#2db", "define L=/p/a#2db"},
      {"include", "include ../other.defs", "include ../other.defs"},
      {"library mode", "ASSIGN L libMode readOnly", "assign L.libMode=readOnly"},
      {"write path", "assign L writePath /tmp/w p", "assign L.writePath=/tmp/w p"},
      {"attribute", "ASSIGN L VCSystem none", "assign L.VCSystem=none"},
      {"comment", "# DEFINE L /p/l", "text"},
      {"comment without a blank", "#DEFINE L /p/l", "text"},
      {"empty line", " \t ", "text"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const kit::LibDefText text = parseLibDefs(std::string(c.line) + "\n");
    EXPECT_EQ(text.error, "");
    ASSERT_EQ(text.statements.size(), 1u);
    EXPECT_EQ(described(text.statements[0]), c.meaning);
    EXPECT_EQ(text.statements[0].raw, c.line);
  }
}

TEST(LibDefFile, SaysWhichLineIsWrong) {
  const struct {
    const char *name;
    std::string line;
  } cases[] = {
      {"unknown keyword", "UNDEFINE L"},
      {"definition without a path", "DEFINE L"},
      {"nothing but a keyword", "DEFINE"},
      {"include without a path", "INCLUDE   # nothing"},
      {"assignment without a value", "ASSIGN L libMode"},
      {"unknown library mode", "ASSIGN L libMode exclusive"},
      {"name that leads elsewhere", "DEFINE ../../etc /p/l"},
      {"broken escape", "DEFINE a#2 /p/l"},
      {"zero byte", std::string("DEFINE L /p\0/l", 14)},
      {"binary", "\x7f"
                 "ELF\x02\x01\x01"},
      {"enormous line", "DEFINE L " + std::string(1000000, 'x')},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const kit::LibDefText text = parseLibDefs("DEFINE First /p/f\n" + c.line + "\nDEFINE Last /p/l\n");
    EXPECT_EQ(text.error.rfind("line 2: ", 0), 0u) << text.error;
    EXPECT_LT(text.error.size(), 200u);
    EXPECT_EQ(text.statements.size(), 1u);
  }
}

TEST(LibDefFile, ExpandsVariablesAndHomes) {
  ::setenv("HOME", "/home/me", 1);
  ::setenv("OAKIT_TEST_PLACE", "/place", 1);
  ::unsetenv("OAKIT_TEST_NONE");
  const struct {
    const char *path, *expanded, *unknown;
  } cases[] = {
      {"plain/l", "plain/l", ""},
      {"$OAKIT_TEST_PLACE/l", "/place/l", ""},
      {"a/${OAKIT_TEST_PLACE}b", "a//placeb", ""},
      {"~/l", "/home/me/l", ""},
      {"~", "/home/me", ""},
      {"a~b", "a~b", ""},
      {"cost$", "cost$", ""},
      {"$OAKIT_TEST_NONE/l", nullptr, "$OAKIT_TEST_NONE"},
      {"~no-such-user-here/l", nullptr, "~no-such-user-here"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.path);
    std::string expanded;
    std::string unknown;
    EXPECT_EQ(kit::expandLibDefPath(c.path, expanded, unknown), c.expanded != nullptr);
    EXPECT_EQ(unknown, c.unknown);
    if (c.expanded != nullptr) {
      EXPECT_EQ(expanded, c.expanded);
    }
  }
}

} // namespace
