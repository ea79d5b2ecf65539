#ifndef BENCHMAIN_H
#define BENCHMAIN_H

#include <cstdio>
#include <exception>
#include <string>

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <QString>

// What every driver can be told.
struct BenchOptions {
  std::string plugIn; // empty: the one of this build
  std::string folder = "/tmp";
  int runs = 5;
  // Set in the processes that a driver starts for itself: the folder of the library to measure.
  std::string measuredFolder;
};

// `runs` says what is repeated.
inline void addBenchOptions(CLI::App &app, BenchOptions &options, const char *runs) {
  app.add_option("--runs", options.runs, runs)->check(CLI::Range(1, 1000))->capture_default_str();
  app.add_option("--folder", options.folder, "where the temporary library goes")->capture_default_str();
  app.add_option("--plugin", options.plugIn, "plug-in to measure (default: the one of this build)");
  app.add_option("--measured-folder", options.measuredFolder)->group("");
}

// Lines for the help text: of an array of structures with `name` and `description`.
template <typename All> std::string listOf(const All &all) {
  std::string lines = "workloads:\n";
  for (const auto &named : all) {
    lines += std::string("  ") + named.name + ": " + named.description + "\n";
  }
  return lines;
}

// Runs `parseAndRun(argc, argv)`, which gives the exit code, and tells what it throws.
template <typename Run> int benchMain(int argc, char **argv, Run parseAndRun) {
  const std::string path = argv[0];
  const std::string name = path.substr(path.rfind('/') + 1);
  try {
    const QCoreApplication application(argc, argv);
    return parseAndRun(argc, argv);
  } catch (const std::exception &error) {
    std::fprintf(stderr, "%s: %s\n", name.c_str(), error.what());
  } catch (const QString &text) { // so the readers tell what the host is to show
    std::fprintf(stderr, "%s: %s\n", name.c_str(), qPrintable(text));
  }
  return 1;
}

#endif
