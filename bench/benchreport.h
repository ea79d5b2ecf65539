#ifndef BENCHREPORT_H
#define BENCHREPORT_H

#include <chrono>
#include <string>
#include <vector>

// The figures of one measurement over several runs.
class Samples {
public:
  void add(double value) { values_.push_back(value); }
  bool isEmpty() const { return values_.empty(); }
  // Of an even number of runs the mean of the two in the middle. There must be a run.
  double median() const;
  double least() const;
  double most() const;
  // "23.4 ns (22.9 to 25.1)"
  std::string text(const char *unit) const;

private:
  std::vector<double> values_;
};

class Stopwatch {
public:
  double nanoseconds() const {
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start_).count();
  }

private:
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

// Prints what is measured, version, machine and build, and warns when the build's figures mean nothing.
void printBanner(const char *subject, const std::string &plugInFile);

// Ends the driver: the measured code did not do what it was to do, so its time means nothing. Raises
// std::runtime_error.
[[noreturn]] void failCheck(const std::string &what, const std::string &found, const std::string &expected);

#endif
