#include "namegrammar.h"

#include "nametext.h"

#include <string>

#include "raise.h"

namespace OpenAccess_4 {
namespace kit {

namespace {

constexpr oaUInt4 kMaxMemberLength = 256;

void appendNumber(oaUInt4 value, oaString &out) {
  oaChar digits[12];
  oaChar *first = digits + sizeof digits - 1;
  *first = '\0';
  do {
    *--first = static_cast<oaChar>('0' + value % 10);
    value /= 10;
  } while (value);
  out += first;
}

// False when it is larger than 32 bits hold.
bool readNumber(std::string_view digits, oaUInt4 &number) {
  oaUInt8 value = 0;
  for (oaChar digit : digits) {
    value = value * 10 + static_cast<oaUInt8>(digit - '0');
    if (value > UINT_MAX)
      return false;
  }
  number = static_cast<oaUInt4>(value);
  return true;
}

bool isNumber(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

} // namespace

int hexDigit(oaChar c) {
  if (isDigit(c))
    return c - '0';
  if (c >= 'a' && c <= 'f')
    return c - 'a' + 10;
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

void appendHex(oaChar c, oaString &out) {
  static const oaChar digits[] = "0123456789abcdef";
  const auto byte = static_cast<unsigned char>(c);
  out += '#';
  out += digits[byte >> 4];
  out += digits[byte & 15];
}

oaChar hexEscape(std::string_view text) {
  if (text.size() < 3 || text[0] != '#')
    return '\0';
  const int high = hexDigit(text[1]), low = hexDigit(text[2]);
  return high < 0 || low < 0 ? '\0' : static_cast<oaChar>(high * 16 + low);
}

std::string_view trimmed(std::string_view text) {
  static const oaChar blanks[] = " \t\n\r\f\v";
  const size_t first = text.find_first_not_of(blanks);
  return first == std::string_view::npos ? std::string_view()
                                         : text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

bool isLetter(oaChar c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool isDigit(oaChar c) { return c >= '0' && c <= '9'; }

void NameGrammar::fail(oaUInt4 id, std::string_view text, const std::string &what) const {
  const std::string shown(text.substr(0, 80));
  raiseBase(id, "name \"" + shown + (text.size() > 80 ? "..." : "") + "\" in the " + traits_.label +
                    " name space: " + what);
}

void NameGrammar::requireKind(bool has, oaUInt4 id, const std::string &what) const {
  if (!has)
    raiseBase(id, std::string("the ") + traits_.label + " name space has no " + what);
}

size_t NameGrammar::memberLength(std::string_view text) const {
  return traits_.hierarchy ? std::min(text.find(traits_.hierarchy), text.size()) : text.size();
}

size_t NameGrammar::suffixStart(std::string_view member) const {
  if (!traits_.open || member.empty() || member.back() != traits_.close)
    return std::string_view::npos;
  return member.rfind(traits_.open);
}

bool NameGrammar::isBundleText(std::string_view text) const {
  static_cast<void>(text);
  return false;
}

void NameGrammar::parseMembers(std::string_view text, oaBundleName &name) const {
  oaSimpleName member;
  parseSimple(text, member);
  name.append(member);
}

void NameGrammar::writeRepeat(oaUInt4 repeat, oaString &out) const {
  appendNumber(repeat, out);
  out += '*';
}

oaUInt4 NameGrammar::parseNumber(std::string_view digits, std::string_view text) const {
  if (!isNumber(digits))
    fail(oacInvalidNumberSyntax, text, "expected a number, found \"" + std::string(digits) + "\"");
  oaUInt4 value;
  if (!readNumber(digits, value))
    fail(oacInvalidBitValue, text, "the number " + std::string(digits) + " is larger than 4294967295");
  return value;
}

oaUInt4 NameGrammar::parseRepeat(std::string_view digits, std::string_view text) const {
  oaUInt4 value;
  if (!isNumber(digits) || !readNumber(digits, value) || value == 0)
    fail(oacInvalidRepeat, text,
         "the repeat count \"" + std::string(digits) + "\" is not a number from 1 to 4294967295");
  return value;
}

void NameGrammar::parseRange(std::string_view range, std::string_view text, oaUInt4 &start, oaUInt4 &stop,
                             oaUInt4 &step) const {
  const size_t first = range.find(':');
  const size_t second = range.find(':', first + 1);
  requireKind(traits_.hasVectors, oacVectorNameInvalid, "vector names");
  requireKind(second == std::string_view::npos || traits_.hasSteps, oacStepNameInvalid, "steps");
  start = parseNumber(range.substr(0, first), text);
  stop = parseNumber(range.substr(first + 1, second == std::string_view::npos ? second : second - first - 1), text);
  step = second == std::string_view::npos ? 1 : parseNumber(range.substr(second + 1), text);
  if (step == 0)
    fail(oacInvalidVectorValue, text, "the step is 0");
}

oaNameMem NameGrammar::decodeMember(std::string_view text, Role role, std::string_view whole) const {
  if (text.empty())
    fail(oacInvalidNameLength, whole, "a part of it is empty");
  oaNameMem member = decode(text, role);
  if (member.getValue().getLength() > kMaxMemberLength)
    fail(oacInvalidNameLength, whole,
         "a part of it has " + std::to_string(member.getValue().getLength()) + " characters, at most " +
             std::to_string(kMaxMemberLength) + " are possible");
  return member;
}

oaNameMem NameGrammar::parseLevel(std::string_view text) const {
  const size_t suffix = suffixStart(text);
  if (suffix == std::string_view::npos)
    return decodeMember(text, Role::level, text);
  const oaUInt4 index = parseNumber(text.substr(suffix + 1, text.size() - suffix - 2), text);
  const oaNameMem base = decodeMember(text.substr(0, suffix), Role::base, text);
  return oaNameMem(base.getValue(), base.isCaseSensitive(), index);
}

std::string_view NameGrammar::checkedText(std::string_view text) const {
  if (traits_.ignoresOuterBlanks)
    text = trimmed(text);
  if (text.size() > kMaxNameLength)
    fail(oacInvalidNameLength, text,
         "it has " + std::to_string(text.size()) + " characters, at most " + std::to_string(kMaxNameLength) +
             " are possible");
  return text;
}

void NameGrammar::parsePath(std::string_view &text, oaScalarName &name) const {
  name.clear();
  const std::string_view whole = text;
  for (size_t length = memberLength(text); length < text.size(); length = memberLength(text)) {
    if (length == 0)
      fail(oacInvalidNameLength, whole, "a part of it is empty");
    name.append(parseLevel(text.substr(0, length)));
    text.remove_prefix(length + 1);
    if (text.empty())
      fail(oacInvalidNameLength, whole, "nothing follows the last hierarchy delimiter");
  }
}

void NameGrammar::parseScalar(std::string_view text, oaScalarName &name) const {
  text = checkedText(text);
  oaScalarName parsed;
  std::string_view last = text;
  parsePath(last, parsed);
  if (!last.empty())
    parsed.append(decodeMember(last, Role::scalar, text));
  name = parsed;
}

void NameGrammar::parseSimple(std::string_view text, oaSimpleName &name) const {
  text = checkedText(text);
  if (text.empty())
    fail(oacInvalidNameLength, text, "it is empty");
  if (isBundleText(text))
    fail(oacInvalidNameSyntax, text, "it is a bundle, but a single member is expected");
  oaScalarName parsed;
  std::string_view last = text;
  parsePath(last, parsed);
  const size_t suffix = suffixStart(last);
  if (suffix == std::string_view::npos) {
    parsed.append(decodeMember(last, Role::undecided, text));
    name = oaSimpleName(parsed);
    return;
  }
  const std::string_view inside = last.substr(suffix + 1, last.size() - suffix - 2);
  parsed.append(decodeMember(last.substr(0, suffix), Role::base, text));
  if (inside.find(':') == std::string_view::npos) {
    name = oaSimpleName(oaVectorBitName(parsed, parseNumber(inside, text)));
    return;
  }
  oaUInt4 start, stop, step;
  parseRange(inside, text, start, stop, step);
  name = oaSimpleName(oaVectorName(parsed, start, stop, step));
}

void NameGrammar::parseBundle(std::string_view text, oaBundleName &name) const {
  requireKind(traits_.hasBundles, oacBundleNameInvalid, "bundle names");
  text = checkedText(text);
  if (text.empty())
    fail(oacInvalidNameLength, text, "it is empty");
  oaBundleName parsed;
  parseMembers(text, parsed);
  name = parsed;
}

void NameGrammar::parseAny(std::string_view text, oaName &name) const {
  text = checkedText(text);
  if (text.empty()) {
    name = oaName();
  } else if (isBundleText(text)) {
    oaBundleName bundle;
    parseBundle(text, bundle);
    name = bundle;
  } else {
    oaSimpleName simple;
    parseSimple(text, simple);
    name = simple;
  }
}

void NameGrammar::writePath(const oaNameBase &name, Role role, oaString &out) const {
  const oaUInt4 members = name.getNumMembers();
  requireKind(members < 2 || traits_.hierarchy, oacHierNameInvalid, "hierarchical names");
  for (oaUInt4 i = 0; i + 1 < members; ++i) {
    encode(name[i], name[i].hasIndex() ? Role::base : Role::level, out);
    if (name[i].hasIndex()) {
      requireKind(traits_.open, oacIndexedNameInvalid, "indices");
      out += traits_.open;
      appendNumber(name[i].getIndex(), out);
      out += traits_.close;
    }
    out += traits_.hierarchy;
  }
  if (members)
    encode(name[members - 1], role, out);
}

void NameGrammar::write(const oaScalarName &name, oaString &out) const { writePath(name, Role::scalar, out); }

void NameGrammar::write(const oaVectorName &name, oaString &out) const {
  requireKind(traits_.hasVectors, oacVectorNameInvalid, "vector names");
  requireKind(name.getStep() == 1 || traits_.hasSteps, oacStepNameInvalid, "steps");
  if (name.isEmpty())
    return;
  writePath(name, Role::base, out);
  out += traits_.open;
  appendNumber(name.getStart(), out);
  out += ':';
  appendNumber(name.getStop(), out);
  if (name.getStep() != 1) {
    out += ':';
    appendNumber(name.getStep(), out);
  }
  out += traits_.close;
}

void NameGrammar::write(const oaVectorBitName &name, oaString &out) const {
  requireKind(traits_.open, oacIndexedNameInvalid, "indices");
  if (name.isEmpty())
    return;
  writePath(name, Role::base, out);
  out += traits_.open;
  appendNumber(name.getIndex(), out);
  out += traits_.close;
}

void NameGrammar::write(const oaSimpleName &name, oaString &out) const {
  if (const oaScalarName *const scalar = name.getScalar())
    write(*scalar, out);
  else if (const oaVectorName *const vector = name.getVector())
    write(*vector, out);
  else if (const oaVectorBitName *const bit = name.getVectorBit())
    write(*bit, out);
}

void NameGrammar::write(const oaBundleName &name, oaString &out) const {
  requireKind(traits_.hasBundles, oacBundleNameInvalid, "bundle names");
  for (oaUInt4 i = 0; i < name.getNumMembers(); ++i) {
    const oaSimpleName &member = name[i];
    if (i)
      out += ',';
    if (member.getRepeat() > 1)
      writeRepeat(member.getRepeat(), out);
    if (const oaScalarName *const scalar = member.getScalar())
      writePath(*scalar, Role::bundleScalar, out);
    else
      write(member, out);
  }
}

void NameGrammar::write(const oaName &name, oaString &out) const {
  if (const oaScalarName *const scalar = name.getScalar())
    write(*scalar, out);
  else if (const oaVectorName *const vector = name.getVector())
    write(*vector, out);
  else if (const oaVectorBitName *const bit = name.getVectorBit())
    write(*bit, out);
  else if (const oaBundleName *const bundle = name.getBundle())
    write(*bundle, out);
}

} // namespace kit
} // namespace OpenAccess_4
