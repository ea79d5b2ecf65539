#ifndef OAKIT_NUMBERTEXT_H
#define OAKIT_NUMBERTEXT_H

// Numbers as texts, with a decimal point whatever the locale: hosts set the one of their users.

#include <string>

namespace OpenAccess_4 {
namespace kit {

// As printf() writes it with "%g": six digits, "inf", "nan".
std::string numberText(double value);

// The number that a text begins with, behind blanks; 0 when there is none. `end`, unless NULL, is set behind it, to the
// beginning of the text when there is none. Numbers too large for a double are infinite.
double numberIn(const char *text, const char **end = nullptr);

// The double that prints with the digits of the float.
double doubleOfDigits(float value);

} // namespace kit
} // namespace OpenAccess_4

#endif
