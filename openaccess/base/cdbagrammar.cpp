// The CDBA name space:
//
//     name   := item { ',' item }
//     item   := [ '<*' count '>' ] ( '(' name ')' | path )        a group only behind a count
//     path   := { level '`' } member [ '<' bits { ',' bits } '>' ]
//     bits   := ( index | start ':' stop [ ':' step ] ) [ '*' count ]     each bit count times
//             | '(' bits { ',' bits } ')' '*' count                       the list count times
#include <cstring>
#include <string>
#include <vector>

#include "namegrammar.h"
#include "raise.h"

namespace OpenAccess_4 {
namespace kit {

namespace {

// Groups and counts multiply; this stops a short text from growing into a name without bound.
constexpr size_t kMaxMembers = 65536;

NameTraits cdbaTraits() {
  NameTraits traits{"CDBA"};
  traits.hierarchy = '`';
  traits.open = '<';
  traits.close = '>';
  traits.hasVectors = traits.hasSteps = traits.hasBundles = true;
  traits.ignoresOuterBlanks = true;
  return traits;
}

struct Member {
  oaSimpleName name;
  oaUInt4 repeat;
};

class CdbaGrammar : public NameGrammar {
public:
  CdbaGrammar() : NameGrammar(cdbaTraits()) {}

protected:
  oaNameMem decode(std::string_view text, Role role) const override;
  void encode(const oaNameMem &member, Role role, oaString &out) const override;
  bool isBundleText(std::string_view text) const override;
  void parseMembers(std::string_view text, oaBundleName &name) const override;
  void writeRepeat(oaUInt4 repeat, oaString &out) const override;

private:
  class Parser;
};

// Parses one text from left to right.
class CdbaGrammar::Parser {
public:
  Parser(const CdbaGrammar &grammar, std::string_view text) : grammar_(grammar), text_(text) { parse(); }

  std::vector<Member> members;
  bool isBundle = false;

private:
  void parse();
  void parseList(unsigned depth);
  void parseItem(unsigned depth);
  void parsePathItem(std::string_view item, oaUInt4 repeat);
  void parseBits(const oaScalarName &base, std::string_view bits);
  void parseBitsElement(const oaScalarName &base, std::string_view element);
  void repeatFrom(size_t first, oaUInt4 count);
  void add(const oaSimpleName &name, oaUInt4 repeat);
  void skipBlanks();
  std::string_view upTo(oaChar end, oaUInt4 id);

  const CdbaGrammar &grammar_;
  std::string_view text_;
  size_t position_ = 0;
};

void CdbaGrammar::Parser::parse() {
  parseList(0);
  if (position_ != text_.size())
    grammar_.fail(oacInvalidParenSyntax, text_, "a closing parenthesis has no opening one");
}

void CdbaGrammar::Parser::skipBlanks() {
  while (position_ < text_.size() && std::isspace(static_cast<unsigned char>(text_[position_])))
    ++position_;
}

// The text from here to the character, which is passed over.
std::string_view CdbaGrammar::Parser::upTo(oaChar end, oaUInt4 id) {
  const size_t found = text_.find(end, position_);
  if (found == std::string_view::npos)
    grammar_.fail(id, text_, std::string("'") + end + "' is missing");
  const std::string_view part = text_.substr(position_, found - position_);
  position_ = found + 1;
  return part;
}

void CdbaGrammar::Parser::add(const oaSimpleName &name, oaUInt4 repeat) {
  if (members.size() >= kMaxMembers)
    grammar_.fail(oacInvalidRepeat, text_, "it has more than " + std::to_string(kMaxMembers) + " members");
  members.push_back({name, repeat});
}

// Repeats what was added since `first`.
void CdbaGrammar::Parser::repeatFrom(size_t first, oaUInt4 count) {
  const size_t added = members.size() - first;
  if (added == 1) {
    const oaUInt8 repeat = oaUInt8(members[first].repeat) * count;
    if (repeat > UINT_MAX)
      grammar_.fail(oacInvalidRepeat, text_, "the repeat count " + std::to_string(repeat) + " is too large");
    members[first].repeat = static_cast<oaUInt4>(repeat);
    return;
  }
  if (added * count > kMaxMembers)
    grammar_.fail(oacInvalidRepeat, text_, "it has more than " + std::to_string(kMaxMembers) + " members");
  for (oaUInt4 i = 1; i < count; ++i) {
    for (size_t j = 0; j < added; ++j) {
      const Member member = members[first + j];
      add(member.name, member.repeat);
    }
  }
}

void CdbaGrammar::Parser::parseList(unsigned depth) {
  for (;;) {
    parseItem(depth);
    skipBlanks();
    if (position_ == text_.size() || text_[position_] != ',')
      return;
    isBundle = true;
    ++position_;
  }
}

void CdbaGrammar::Parser::parseItem(unsigned depth) {
  skipBlanks();
  oaUInt4 repeat = 1;
  if (text_.substr(position_, 2) == "<*") {
    position_ += 2;
    repeat = grammar_.parseRepeat(trimmed(upTo('>', oacInvalidBusSyntax)), text_);
    isBundle = true;
    skipBlanks();
    if (position_ < text_.size() && text_[position_] == '(') {
      ++position_;
      const size_t first = members.size();
      parseList(depth + 1);
      if (position_ == text_.size())
        grammar_.fail(oacInvalidParenSyntax, text_, "a closing parenthesis is missing");
      ++position_;
      repeatFrom(first, repeat);
      return;
    }
  }
  const size_t first = position_;
  while (position_ < text_.size() && text_[position_] != ',' && !(depth && text_[position_] == ')')) {
    if (text_[position_++] == '<')
      upTo('>', oacInvalidBusSyntax);
  }
  parsePathItem(trimmed(text_.substr(first, position_ - first)), repeat);
}

void CdbaGrammar::Parser::parsePathItem(std::string_view item, oaUInt4 repeat) {
  const size_t first = members.size();
  oaScalarName name;
  std::string_view last = item;
  grammar_.parsePath(last, name);
  const size_t suffix = grammar_.suffixStart(last);
  if (suffix == std::string_view::npos) {
    name.append(grammar_.decodeMember(last, Role::undecided, text_));
    add(name, repeat);
    return;
  }
  name.append(grammar_.decodeMember(trimmed(last.substr(0, suffix)), Role::base, text_));
  parseBits(name, last.substr(suffix + 1, last.size() - suffix - 2));
  if (repeat > 1)
    repeatFrom(first, repeat);
}

// The list between < and >, or between parentheses in it.
void CdbaGrammar::Parser::parseBits(const oaScalarName &base, std::string_view bits) {
  size_t begin = 0;
  unsigned depth = 0;
  for (size_t i = 0; i <= bits.size(); ++i) {
    if (i == bits.size() || (bits[i] == ',' && depth == 0)) {
      isBundle = isBundle || i < bits.size();
      parseBitsElement(base, trimmed(bits.substr(begin, i - begin)));
      begin = i + 1;
    } else if (bits[i] == '(') {
      ++depth;
    } else if (bits[i] == ')' && depth-- == 0) {
      grammar_.fail(oacInvalidParenSyntax, text_, "a closing parenthesis has no opening one");
    }
  }
}

void CdbaGrammar::Parser::parseBitsElement(const oaScalarName &base, std::string_view element) {
  const bool isGroup = !element.empty() && element[0] == '(';
  const size_t close = isGroup ? element.rfind(')') : 0;
  if (close == std::string_view::npos)
    grammar_.fail(oacInvalidParenSyntax, text_, "a closing parenthesis is missing");
  const size_t star = element.find('*', close);
  const std::string_view body = trimmed(element.substr(0, star));
  oaUInt4 count = 1;
  if (star != std::string_view::npos) {
    count = grammar_.parseRepeat(trimmed(element.substr(star + 1)), text_);
    isBundle = true;
  }
  if (isGroup) {
    if (body.back() != ')' || body.size() < 2)
      grammar_.fail(oacInvalidParenSyntax, text_, "only a repeat count may follow a closing parenthesis");
    const size_t first = members.size();
    isBundle = true;
    parseBits(base, body.substr(1, body.size() - 2));
    repeatFrom(first, count);
    return;
  }
  if (body.find(':') == std::string_view::npos) {
    add(oaVectorBitName(base, grammar_.parseNumber(body, text_)), count);
    return;
  }
  oaUInt4 start, stop, step;
  grammar_.parseRange(body, text_, start, stop, step);
  const oaVectorName range(base, start, stop, step);
  if (count == 1) {
    add(range, 1);
    return;
  }
  for (oaUInt4 bit = 0, n = range.getNumBits(); bit < n; ++bit)
    add(oaVectorBitName(base, range.getBitIndex(bit)), count);
}

bool isIllegal(oaChar c) { return std::strchr(",\\/:<>`", c) || static_cast<unsigned char>(c) <= ' ' || c == 0x7f; }

bool isHexCoded(oaChar c) { return c && (isIllegal(c) || c == '#' || c == '('); }

oaNameMem CdbaGrammar::decode(std::string_view text, Role role) const {
  static_cast<void>(role);
  oaString value;
  text = trimmed(text);
  for (size_t i = 0; i < text.size(); ++i) {
    if (isIllegal(text[i]))
      fail(oacInvalidNameChar, text, std::string("the character '") + text[i] + "' is not allowed in it");
    const oaChar escaped = hexEscape(text.substr(i));
    value += isHexCoded(escaped) ? escaped : text[i];
    i += isHexCoded(escaped) ? 2 : 0;
  }
  return oaNameMem(value, true);
}

void CdbaGrammar::encode(const oaNameMem &member, Role role, oaString &out) const {
  static_cast<void>(role);
  const oaChar *const begin = member.getValue();
  for (const oaChar *c = begin; *c; ++c) {
    const bool isEscapeLike = *c == '#' && isHexCoded(hexEscape(std::string_view(c, strnlen(c, 3))));
    if (isIllegal(*c) || isEscapeLike || (*c == '(' && c == begin))
      appendHex(*c, out);
    else
      out += !member.isCaseSensitive() && *c >= 'A' && *c <= 'Z' ? static_cast<oaChar>(*c - 'A' + 'a') : *c;
  }
}

bool CdbaGrammar::isBundleText(std::string_view text) const { return Parser(*this, text).isBundle; }

void CdbaGrammar::parseMembers(std::string_view text, oaBundleName &name) const {
  for (const Member &member : Parser(*this, text).members)
    name.append(member.name, member.repeat);
}

void CdbaGrammar::writeRepeat(oaUInt4 repeat, oaString &out) const {
  out += "<*";
  out += std::to_string(repeat).c_str();
  out += '>';
}

} // namespace

const NameGrammar &cdbaGrammar() {
  static const NameGrammar &grammar = *new CdbaGrammar;
  return grammar;
}

} // namespace kit
} // namespace OpenAccess_4
