// The native name space, in which names are kept, and the Unix name space, in which they lie on disk.
#include <cstring>
#include <string>

#include "namegrammar.h"
#include "raise.h"

namespace OpenAccess_4 {
namespace kit {

namespace {

NameTraits nativeTraits() {
  NameTraits traits{"native"};
  traits.hierarchy = '/';
  traits.open = '[';
  traits.close = ']';
  traits.hasVectors = traits.hasSteps = traits.hasBundles = true;
  return traits;
}

// Special characters are escaped only where they would be read as something else, so that lenient scalars come back as
// they went in. The form for keys escapes them all.
class NativeGrammar : public NameGrammar {
public:
  explicit NativeGrammar(bool escapesAll) : NameGrammar(nativeTraits()), escapesAll_(escapesAll) {}

protected:
  oaNameMem decode(std::string_view text, Role role) const override;
  void encode(const oaNameMem &member, Role role, oaString &out) const override;
  bool isBundleText(std::string_view text) const override;
  void parseMembers(std::string_view text, oaBundleName &name) const override;

private:
  static constexpr const oaChar *kSpecial = "[]/:*,#";

  static bool isSpecial(oaChar c) { return c && std::strchr(kSpecial, c); }
  bool isEscaped(const oaChar *c, Role role) const;
  static size_t repeatLength(std::string_view member);

  bool escapesAll_;
};

oaNameMem NativeGrammar::decode(std::string_view text, Role role) const {
  // A name given as scalar keeps every character; in other roles brackets that are no index and loose escapes are
  // mistakes.
  const bool isLenient = role == Role::scalar;
  oaString value;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '#') {
      const oaChar escaped = hexEscape(text.substr(i));
      if (isSpecial(escaped)) {
        value += escaped;
        i += 2;
        continue;
      }
      if (!isLenient)
        fail(oacInvalidCharFollowingHexChar, text,
             "# must be followed by the two hexadecimal digits of one of " + std::string(kSpecial));
    } else if (!isLenient && (text[i] == '[' || text[i] == ']')) {
      fail(oacInvalidNameSyntax, text, "the brackets are no index at its end");
    }
    value += text[i];
  }
  return oaNameMem(value, true);
}

bool NativeGrammar::isEscaped(const oaChar *c, Role role) const {
  switch (*c) {
  case '/':
    return true;
  case '#':
    return escapesAll_ || isSpecial(hexEscape(std::string_view(c, strnlen(c, 3))));
  case '[':
  case ']':
    return escapesAll_ || role == Role::base || role == Role::level;
  case ',':
    return escapesAll_ || role != Role::scalar;
  case ':':
  case '*':
    return escapesAll_;
  default:
    return false;
  }
}

void NativeGrammar::encode(const oaNameMem &member, Role role, oaString &out) const {
  if (member.isCaseSensitive() && !std::strpbrk(member.getValue(), kSpecial)) {
    out += member.getValue();
    return;
  }
  for (const oaChar *c = member.getValue(); *c; ++c) {
    if (isEscaped(c, role))
      appendHex(*c, out);
    else
      out += !member.isCaseSensitive() && *c >= 'A' && *c <= 'Z' ? static_cast<oaChar>(*c - 'A' + 'a') : *c;
  }
}

// The length of a leading "3*", 0 without one. A count of 0 is none.
size_t NativeGrammar::repeatLength(std::string_view member) {
  const size_t digits = std::min(member.find_first_not_of("0123456789"), member.size());
  const bool isCount = member.substr(0, digits).find_first_not_of('0') < digits;
  return isCount && digits < member.size() && member[digits] == '*' ? digits + 1 : 0;
}

bool NativeGrammar::isBundleText(std::string_view text) const {
  return text.find(',') != std::string_view::npos || repeatLength(text) > 0;
}

void NativeGrammar::parseMembers(std::string_view text, oaBundleName &name) const {
  std::string_view rest = text;
  for (bool isLast = false; !isLast;) {
    const size_t comma = rest.find(',');
    isLast = comma == std::string_view::npos;
    std::string_view member = rest.substr(0, comma);
    rest.remove_prefix(isLast ? rest.size() : comma + 1);
    oaUInt4 repeat = 1;
    if (const size_t length = repeatLength(member)) {
      repeat = parseRepeat(member.substr(0, length - 1), text);
      member.remove_prefix(length);
      if (member.empty()) { // n times the empty scalar
        name.append(oaScalarName(), repeat);
        continue;
      }
    }
    oaSimpleName simple;
    if (member.empty())
      fail(oacInvalidNameSyntax, text, "a member of the bundle is empty");
    if (repeatLength(member) > 0)
      fail(oacInvalidNameSyntax, text, "a member of the bundle has two repeat counts");
    parseSimple(member, simple);
    name.append(simple, repeat);
  }
}

class UnixGrammar : public NameGrammar {
public:
  UnixGrammar() : NameGrammar(NameTraits{"Unix"}) {}

protected:
  oaNameMem decode(std::string_view text, Role role) const override;
  void encode(const oaNameMem &member, Role role, oaString &out) const override;

private:
  static bool isPlain(oaChar c) { return isLetter(c) || isDigit(c) || c == '_' || c == '@'; }
};

oaNameMem UnixGrammar::decode(std::string_view text, Role role) const {
  static_cast<void>(role);
  oaString value;
  for (size_t i = 0; i < text.size(); ++i) {
    if (isPlain(text[i])) {
      value += text[i];
    } else if (text[i] == '#') {
      const oaChar escaped = hexEscape(text.substr(i));
      if (!escaped)
        fail(oacInvalidCharFollowingHexChar, text, "# must be followed by the two hexadecimal digits of a character");
      value += escaped;
      i += 2;
    } else {
      fail(oacInvalidNameChar, text,
           std::string("the character '") + text[i] + "' is written as # and two hexadecimal digits");
    }
  }
  return oaNameMem(value, true);
}

void UnixGrammar::encode(const oaNameMem &member, Role role, oaString &out) const {
  static_cast<void>(role);
  for (const oaChar *c = member.getValue(); *c; ++c) {
    if (isPlain(*c))
      out += *c;
    else
      appendHex(*c, out);
  }
}

} // namespace

const NameGrammar &nativeGrammar() {
  static const NameGrammar &grammar = *new NativeGrammar(false);
  return grammar;
}

const NameGrammar &keyGrammar() {
  static const NameGrammar &grammar = *new NativeGrammar(true);
  return grammar;
}

const NameGrammar &unixGrammar() {
  static const NameGrammar &grammar = *new UnixGrammar;
  return grammar;
}

} // namespace kit
} // namespace OpenAccess_4
