#include "numbertext.h"

#include <charconv>
#include <cstdlib>
#include <locale.h>

namespace OpenAccess_4 {
namespace kit {

namespace {

constexpr int kDigits = 6;
constexpr std::size_t kMostCharacters = 40;

} // namespace

std::string numberText(double value) {
  char text[kMostCharacters];
  return std::string(text, std::to_chars(text, text + sizeof text, value, std::chars_format::general, kDigits).ptr);
}

double numberIn(const char *text, const char **end) {
  static const locale_t plain = ::newlocale(LC_ALL_MASK, "C", nullptr);
  char *behind = nullptr;
  const double value = ::strtod_l(text, &behind, plain);
  if (end != nullptr) {
    *end = behind;
  }
  return value;
}

double doubleOfDigits(float value) {
  char text[kMostCharacters];
  const std::to_chars_result result = std::to_chars(text, text + sizeof text, value);
  double number = 0;
  std::from_chars(text, result.ptr, number);
  return number;
}

} // namespace kit
} // namespace OpenAccess_4
