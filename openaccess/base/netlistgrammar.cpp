// The name spaces of the netlist formats Verilog and SPICE.
#include <algorithm>
#include <cstring>
#include <string>

#include "namegrammar.h"
#include "raise.h"

namespace OpenAccess_4 {
namespace kit {

namespace {

NameTraits verilogTraits() {
  NameTraits traits{"Verilog"};
  traits.hierarchy = '.';
  traits.open = '[';
  traits.close = ']';
  traits.hasVectors = true;
  return traits;
}

// The reserved words of IEEE 1364-2001, sorted.
const oaChar *const kVerilogKeywords[] = {"always",
                                          "and",
                                          "assign",
                                          "automatic",
                                          "begin",
                                          "buf",
                                          "bufif0",
                                          "bufif1",
                                          "case",
                                          "casex",
                                          "casez",
                                          "cell",
                                          "cmos",
                                          "config",
                                          "deassign",
                                          "default",
                                          "defparam",
                                          "design",
                                          "disable",
                                          "edge",
                                          "else",
                                          "end",
                                          "endcase",
                                          "endconfig",
                                          "endfunction",
                                          "endgenerate",
                                          "endmodule",
                                          "endprimitive",
                                          "endspecify",
                                          "endtable",
                                          "endtask",
                                          "event",
                                          "for",
                                          "force",
                                          "forever",
                                          "fork",
                                          "function",
                                          "generate",
                                          "genvar",
                                          "highz0",
                                          "highz1",
                                          "if",
                                          "ifnone",
                                          "incdir",
                                          "include",
                                          "initial",
                                          "inout",
                                          "input",
                                          "instance",
                                          "integer",
                                          "join",
                                          "large",
                                          "liblist",
                                          "library",
                                          "localparam",
                                          "macromodule",
                                          "medium",
                                          "module",
                                          "nand",
                                          "negedge",
                                          "nmos",
                                          "nor",
                                          "noshowcancelled",
                                          "not",
                                          "notif0",
                                          "notif1",
                                          "or",
                                          "output",
                                          "parameter",
                                          "pmos",
                                          "posedge",
                                          "primitive",
                                          "pull0",
                                          "pull1",
                                          "pulldown",
                                          "pullup",
                                          "pulsestyle_ondetect",
                                          "pulsestyle_onevent",
                                          "rcmos",
                                          "real",
                                          "realtime",
                                          "reg",
                                          "release",
                                          "repeat",
                                          "rnmos",
                                          "rpmos",
                                          "rtran",
                                          "rtranif0",
                                          "rtranif1",
                                          "scalared",
                                          "showcancelled",
                                          "signed",
                                          "small",
                                          "specify",
                                          "specparam",
                                          "strong0",
                                          "strong1",
                                          "supply0",
                                          "supply1",
                                          "table",
                                          "task",
                                          "time",
                                          "tran",
                                          "tranif0",
                                          "tranif1",
                                          "tri",
                                          "tri0",
                                          "tri1",
                                          "triand",
                                          "trior",
                                          "trireg",
                                          "unsigned",
                                          "use",
                                          "vectored",
                                          "wait",
                                          "wand",
                                          "weak0",
                                          "weak1",
                                          "while",
                                          "wire",
                                          "wor",
                                          "xnor",
                                          "xor"};

class VerilogGrammar : public NameGrammar {
public:
  VerilogGrammar() : NameGrammar(verilogTraits()) {}

protected:
  size_t memberLength(std::string_view text) const override;
  oaNameMem decode(std::string_view text, Role role) const override;
  void encode(const oaNameMem &member, Role role, oaString &out) const override;

private:
  // Characters that an escaped identifier cannot hold, and the # that announces one of them.
  static bool isHexCoded(oaChar c) { return c && (static_cast<unsigned char>(c) <= ' ' || c == 0x7f || c == '#'); }
  static bool isIdentifier(std::string_view text);
};

// An escaped identifier, which may hold delimiters, ends with its blank.
size_t VerilogGrammar::memberLength(std::string_view text) const {
  size_t searched = 0;
  if (!text.empty() && text[0] == '\\') {
    searched = text.find(' ');
    if (searched == std::string_view::npos)
      fail(oacInvalidNameSyntax, text, "an escaped identifier must end with a blank");
  }
  return std::min(text.find('.', searched), text.size());
}

bool VerilogGrammar::isIdentifier(std::string_view text) {
  const auto isInner = [](oaChar c) { return isLetter(c) || isDigit(c) || c == '_' || c == '$'; };
  const auto isBefore = [](const oaChar *word, std::string_view wanted) { return word < wanted; };
  if (text.empty() || isDigit(text[0]) || text[0] == '$' || !std::all_of(text.begin(), text.end(), isInner))
    return false;
  const auto keyword = std::lower_bound(std::begin(kVerilogKeywords), std::end(kVerilogKeywords), text, isBefore);
  return keyword == std::end(kVerilogKeywords) || text != *keyword;
}

oaNameMem VerilogGrammar::decode(std::string_view text, Role role) const {
  static_cast<void>(role);
  if (text[0] != '\\') {
    if (isIdentifier(text))
      return oaNameMem(oaString(text.data(), static_cast<oaUInt4>(text.size())), true);
    if (isDigit(text[0]) || text[0] == '$')
      fail(oacFirstCharInvalid, text, "it must begin with a letter or _, or be escaped");
    fail(oacInvalidNameChar, text,
         "it is a keyword or holds other characters than letters, digits, _ and $, and is not escaped");
  }
  const std::string_view escapedName = text.substr(1, text.find(' ') - 1);
  if (escapedName.empty())
    fail(oacInvalidNameLength, text, "it is empty");
  if (!trimmed(text.substr(escapedName.size() + 1)).empty())
    fail(oacInvalidNameSyntax, text, "only an index may follow the blank of an escaped identifier");
  oaString value;
  for (size_t i = 0; i < escapedName.size(); ++i) {
    const oaChar coded = hexEscape(escapedName.substr(i));
    value += isHexCoded(coded) ? coded : escapedName[i];
    i += isHexCoded(coded) ? 2 : 0;
  }
  return oaNameMem(value, true);
}

void VerilogGrammar::encode(const oaNameMem &member, Role role, oaString &out) const {
  static_cast<void>(role);
  oaString value = member.getValue();
  if (!member.isCaseSensitive())
    value.toLower();
  const oaChar *const text = value;
  if (isIdentifier(text)) {
    out += value;
    return;
  }
  out += '\\';
  for (const oaChar *c = text; *c; ++c) {
    const bool isCoded = *c == '#' ? isHexCoded(hexEscape(std::string_view(c, strnlen(c, 3)))) : isHexCoded(*c);
    if (isCoded)
      appendHex(*c, out);
    else
      out += *c;
  }
  out += ' ';
}

NameTraits spiceTraits() {
  NameTraits traits{"SPICE"};
  traits.hierarchy = '.';
  traits.open = '[';
  traits.close = ']';
  traits.isCaseSensitive = false;
  return traits;
}

// Capitals of names in which case counts are written as % and the letter; a name without % is one in which it does not.
class SpiceGrammar : public NameGrammar {
public:
  SpiceGrammar() : NameGrammar(spiceTraits()) {}

protected:
  size_t suffixStart(std::string_view member) const override;
  oaNameMem decode(std::string_view text, Role role) const override;
  void encode(const oaNameMem &member, Role role, oaString &out) const override;

private:
  static bool isPlain(oaChar c) { return isLetter(c) || isDigit(c) || (c && std::strchr("!_$&*+-/:<>?@\\^|~[]", c)); }
  static bool isFirst(oaChar c) { return isLetter(c) || (c && std::strchr("#!_%", c)); }
};

// Only digits between the last brackets are an index.
size_t SpiceGrammar::suffixStart(std::string_view member) const {
  const size_t start = NameGrammar::suffixStart(member);
  if (start == std::string_view::npos || start + 2 >= member.size())
    return std::string_view::npos;
  const std::string_view inside = member.substr(start + 1, member.size() - start - 2);
  return inside.find_first_not_of("0123456789") == std::string_view::npos ? start : std::string_view::npos;
}

oaNameMem SpiceGrammar::decode(std::string_view text, Role role) const {
  if (!isFirst(text[0]))
    fail(oacFirstCharInvalid, text, "it must begin with a letter or one of # ! _ %");
  if (role == Role::scalar && suffixStart(text) != std::string_view::npos)
    fail(oacInvalidNameSyntax, text, "it has an index, but a scalar name is expected");
  oaString value;
  bool isCaseSensitive = false;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '#') {
      const oaChar coded = hexEscape(text.substr(i));
      if (!coded)
        fail(oacInvalidCharFollowingHexChar, text, "# must be followed by the two hexadecimal digits of a character");
      value += coded;
      i += 2;
    } else if (text[i] == '%') {
      if (++i == text.size() || !isLetter(text[i]))
        fail(oacInvalidCharFollowingEscChar, text, "% must be followed by a letter");
      value += static_cast<oaChar>(text[i] & ~0x20);
      isCaseSensitive = true;
    } else if (isPlain(text[i])) {
      value += text[i];
    } else {
      fail(oacInvalidNameChar, text, std::string("the character '") + text[i] + "' is not allowed in it");
    }
  }
  return oaNameMem(value, isCaseSensitive);
}

void SpiceGrammar::encode(const oaNameMem &member, Role role, oaString &out) const {
  const oaChar *const text = member.getValue();
  const std::string_view whole(text);
  const size_t indexLike = role == Role::base ? std::string_view::npos : suffixStart(whole);
  for (const oaChar *c = text; *c; ++c) {
    const bool isCapital = *c >= 'A' && *c <= 'Z' && member.isCaseSensitive();
    if (isCapital) {
      out += '%';
      out += *c;
    } else if (!isPlain(*c) || (c == text && !isFirst(*c)) || static_cast<size_t>(c - text) == indexLike) {
      appendHex(*c, out);
    } else {
      out += *c;
    }
  }
}

} // namespace

const NameGrammar &verilogGrammar() {
  static const NameGrammar &grammar = *new VerilogGrammar;
  return grammar;
}

const NameGrammar &spiceGrammar() {
  static const NameGrammar &grammar = *new SpiceGrammar;
  return grammar;
}

} // namespace kit
} // namespace OpenAccess_4
