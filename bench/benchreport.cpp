#include "benchreport.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <thread>

double Samples::median() const {
  std::vector<double> sorted = values_;
  std::sort(sorted.begin(), sorted.end());
  const size_t middle = sorted.size() / 2;
  return sorted.size() % 2 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
}

double Samples::least() const { return *std::min_element(values_.begin(), values_.end()); }

double Samples::most() const { return *std::max_element(values_.begin(), values_.end()); }

std::string Samples::text(const char *unit) const {
  char text[120];
  std::snprintf(text, sizeof text, "%8.2f %s (%.2f to %.2f)", median(), unit, least(), most());
  return text;
}

namespace {

std::string processorName() {
  std::ifstream file("/proc/cpuinfo");
  std::string line;
  while (std::getline(file, line)) {
    if (line.compare(0, 10, "model name") == 0) {
      return line.substr(std::min(line.find(':') + 2, line.size()));
    }
  }
  return "unknown processor";
}

const char *buildFault() {
#if BENCH_SANITIZED
  return "built with sanitizers";
#elif !defined(__OPTIMIZE__)
  return "built without optimisation";
#elif !defined(NDEBUG)
  return "built with assertions";
#else
  return nullptr;
#endif
}

} // namespace

void printBanner(const char *subject, const std::string &plugInFile) {
  std::printf("%s, version %s\n", subject, BENCH_VERSION);
  std::printf("machine  %s, %u processors\n", processorName().c_str(), std::thread::hardware_concurrency());
  std::printf("build    %s, compiler %s\n", BENCH_BUILD_TYPE, __VERSION__);
  std::printf("plug-in  %s\n", plugInFile.c_str());
  if (const char *fault = buildFault()) {
    std::printf("WARNING  %s: the figures below are slower than those of a release build\n", fault);
  }
  std::printf("\n");
}

void failCheck(const std::string &what, const std::string &found, const std::string &expected) {
  throw std::runtime_error(what + ": found " + found + ", expected " + expected);
}
