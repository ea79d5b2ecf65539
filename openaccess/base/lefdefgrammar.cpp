#include "lefdefgrammar.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "raise.h"

namespace OpenAccess_4 {
namespace kit {

namespace {

NameTraits lefDefTraits(bool isDef, oaChar open, oaChar close, oaChar hierarchy) {
  NameTraits traits{isDef ? "DEF" : "LEF"};
  if (isDef) {
    traits.open = open;
    traits.close = close;
    traits.hierarchy = hierarchy;
  }
  return traits;
}

// What a backslash cannot escape either.
bool isUnescapable(oaChar c) { return c && (static_cast<unsigned char>(c) <= ' ' || c == ';' || c == 0x7f); }

// Whether the backslashes before the place are of odd number.
bool isEscaped(std::string_view text, size_t place) {
  size_t backslashes = 0;
  while (backslashes < place && text[place - backslashes - 1] == '\\')
    ++backslashes;
  return backslashes % 2 == 1;
}

} // namespace

LefDefGrammar::LefDefGrammar(bool isDef, oaChar open, oaChar close, oaChar hierarchy)
    : NameGrammar(lefDefTraits(isDef, open, close, hierarchy)), open_(open), close_(close), hierarchy_(hierarchy) {}

bool LefDefGrammar::isPossibleDelimiter(oaChar c) {
  return c > ' ' && c < 0x7f && !isLetter(c) && !isDigit(c) && !std::strchr("\\;#,*", c);
}

size_t LefDefGrammar::memberLength(std::string_view text) const {
  if (!traits().hierarchy)
    return text.size();
  size_t place = text.find(hierarchy_);
  while (place != std::string_view::npos && isEscaped(text, place))
    place = text.find(hierarchy_, place + 1);
  return std::min(place, text.size());
}

size_t LefDefGrammar::suffixStart(std::string_view member) const {
  if (!traits().open || member.empty() || member.back() != close_ || isEscaped(member, member.size() - 1))
    return std::string_view::npos;
  size_t place = member.rfind(open_);
  while (place != std::string_view::npos && isEscaped(member, place))
    place = place ? member.rfind(open_, place - 1) : std::string_view::npos;
  return place;
}

oaNameMem LefDefGrammar::decode(std::string_view text, Role role) const {
  if (role == Role::scalar && suffixStart(text) != std::string_view::npos)
    fail(oacInvalidNameSyntax, text, "it has an index, but a scalar name is expected");
  oaString value;
  for (size_t i = 0; i < text.size(); ++i) {
    const oaChar coded = hexEscape(text.substr(i));
    if (isUnescapable(coded)) {
      value += coded;
      i += 2;
    } else if (text[i] == '\\') {
      if (++i == text.size() || isUnescapable(text[i]))
        fail(oacInvalidCharFollowingEscChar, text,
             "a backslash must be followed by a character other than a blank and ;");
      value += text[i];
    } else if (isUnescapable(text[i])) {
      fail(oacInvalidNameChar, text, "it holds a blank, a control character or ;");
    } else if (!traits().open && isDelimiter(text[i])) {
      fail(text[i] == hierarchy_ ? oacHierNameInvalid : oacIndexedNameInvalid, text,
           std::string("the character '") + text[i] + "' is not escaped");
    } else {
      value += text[i];
    }
  }
  return oaNameMem(value, true);
}

void LefDefGrammar::encode(const oaNameMem &member, Role role, oaString &out) const {
  static_cast<void>(role);
  for (const oaChar *c = member.getValue(); *c; ++c) {
    if (isUnescapable(*c)) {
      appendHex(*c, out);
      continue;
    }
    if (isDelimiter(*c) || *c == '\\' || *c == '#')
      out += '\\';
    out += !member.isCaseSensitive() && *c >= 'A' && *c <= 'Z' ? static_cast<oaChar>(*c - 'A' + 'a') : *c;
  }
}

} // namespace kit
} // namespace OpenAccess_4
