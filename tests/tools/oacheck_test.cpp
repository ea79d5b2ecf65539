// The program: arguments, exit codes, and what it prints.

#include "oachecktest.h"

#include <cstdio>
#include <map>
#include <sys/wait.h>

using namespace oachecktest;

namespace {

struct Ended {
  int exitCode;
  std::string output;
};

Ended run(const std::string &arguments) {
  const std::string command = std::string(OACHECK) + " " + arguments + " 2>&1";
  Ended result{-1, {}};
  FILE *pipe = ::popen(command.c_str(), "r");
  char buffer[4096];
  for (std::size_t got; (got = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
    result.output.append(buffer, got);
  }
  const int status = ::pclose(pipe);
  result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return result;
}

class Program : public FullDesign {
protected:
  std::string arguments(const std::string &options) const {
    return options + " --name " + libName() + " " + libFolder().string();
  }
};

TEST_F(Program, SaysThatAllIsWell) {
  const Ended plain = run(arguments(""));
  EXPECT_EQ(plain.exitCode, 0);
  EXPECT_EQ(plain.output.find("2 cells, 2 views, 2 databases of "), 0U) << plain.output;
  EXPECT_NE(plain.output.find(": no damage\n"), std::string::npos) << plain.output;
  const Ended quiet = run(arguments("--quiet"));
  EXPECT_EQ(quiet.exitCode, 0);
  EXPECT_EQ(quiet.output, "");
  EXPECT_EQ(run(file("full").string()).exitCode, 0);
}

TEST_F(Program, NamesDamage) {
  writeDamaged([](kit::DesignDatabase &d) { d.pins.term.set(0, 55); });
  const std::string line = "damage: " + file("full").string() +
                           ": table pins, row 0, column term: refers to row 55 of table terms; expected a row below ";
  const Ended plain = run(arguments(""));
  EXPECT_EQ(plain.exitCode, 1);
  EXPECT_EQ(plain.output.find(line), 0U) << plain.output;
  EXPECT_NE(plain.output.find(": 1 damage\n"), std::string::npos) << plain.output;
  const Ended quiet = run("-q " + file("full").string());
  EXPECT_EQ(quiet.exitCode, 1);
  EXPECT_EQ(quiet.output.find(line), 0U) << quiet.output;
  const Ended json = run(arguments("--json"));
  EXPECT_EQ(json.exitCode, 1);
  EXPECT_NE(json.output.find("{\"severity\": \"damage\", \"file\": \"" + file("full").string() +
                             "\", \"table\": \"pins\", \"row\": 0, \"column\": \"term\", \"what\": \"refers to row 55 "
                             "of table terms\", \"expected\": \"a row below "),
            std::string::npos)
      << json.output;
  EXPECT_NE(json.output.find("\"damages\": 1, \"warnings\": 0, \"foreign\": 0}}"), std::string::npos) << json.output;
}

TEST_F(Program, ChangesNothing) {
  std::map<fs::path, fs::file_time_type> times;
  const auto look = [&] {
    std::map<fs::path, fs::file_time_type> found;
    for (const auto &entry : fs::recursive_directory_iterator(libFolder())) {
      found[entry.path()] = entry.last_write_time();
    }
    return found;
  };
  const auto before = look();
  run(arguments(""));
  EXPECT_EQ(look(), before);
  EXPECT_EQ(bytesOf(file("full")), good());
}

TEST_F(Program, UsageErrorsEndWith2) {
  for (const char *wrong : {"", "--nonsense .", "/does/not/exist", "--limit x ."}) {
    EXPECT_EQ(run(wrong).exitCode, 2) << wrong;
  }
  EXPECT_EQ(run("--help").exitCode, 0);
  EXPECT_NE(run("--version").output.find("oacheck "), std::string::npos);
}

} // namespace
