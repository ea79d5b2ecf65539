// A stop watch and a counter of changes.
#ifndef OATIMER_H
#define OATIMER_H

#include <chrono>

#include "oa/oaTypes.h"

namespace OpenAccess_4 {

class oaTimer {
public:
  oaTimer() : start_(std::chrono::steady_clock::now()) {}
  void reset() { start_ = std::chrono::steady_clock::now(); }
  /// Seconds since construction or the last reset().
  oaFloat getElapsed() const {
    return std::chrono::duration<oaFloat>(std::chrono::steady_clock::now() - start_).count();
  }

private:
  std::chrono::steady_clock::time_point start_;
};

/// Counts the changes of something; it wraps around.
class oaTimeStamp {
public:
  oaTimeStamp() : value_(0) {}
  oaTimeStamp(oaUInt4 value) : value_(value) {}

  void set(oaUInt4 st) { value_ = st; }
  void set(const oaTimeStamp &st) { value_ = st.value_; }
  oaTimeStamp &operator++() { return *this += 1; }
  // The API's postfix form answers with the new value too.
  oaTimeStamp &operator++(int) { return *this += 1; }
  oaTimeStamp &operator+=(oaUInt4 value) {
    value_ += value;
    return *this;
  }
  oaBoolean operator==(const oaTimeStamp &timeStamp) const { return value_ == timeStamp.value_; }
  oaBoolean operator!=(const oaTimeStamp &timeStamp) const { return value_ != timeStamp.value_; }
  operator oaUInt4() const { return value_; }

private:
  oaUInt4 value_;
};

} // namespace OpenAccess_4

#endif
