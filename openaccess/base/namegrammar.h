// How a name space writes names: the common part of parsing and writing, and the hooks in which the spaces differ.
//
// A name is a path of members with the name proper last, then an index or a range, if any. Parsing splits the text
// first and decodes the members afterwards, so an escaped character is never taken for a delimiter.
#ifndef OPENACCESS_NAMEGRAMMAR_H
#define OPENACCESS_NAMEGRAMMAR_H

#include <string_view>

#include "oa/oaName.h"

namespace OpenAccess_4 {
namespace kit {

/// What the name spaces have and with which characters; a NUL stands for "none".
struct NameTraits {
  const oaChar *label; // for messages
  oaChar hierarchy = '\0';
  oaChar open = '\0'; // of an index
  oaChar close = '\0';
  bool hasVectors = false;
  bool hasSteps = false;
  bool hasBundles = false;
  bool isCaseSensitive = true;
  bool ignoresOuterBlanks = false;
};

class NameGrammar {
public:
  virtual ~NameGrammar() = default;
  const NameTraits &traits() const { return traits_; }

  // Text to name. The empty text gives the empty scalar and the empty name; the others refuse it.
  void parseScalar(std::string_view text, oaScalarName &name) const;
  void parseSimple(std::string_view text, oaSimpleName &name) const;
  void parseBundle(std::string_view text, oaBundleName &name) const;
  void parseAny(std::string_view text, oaName &name) const;
  /// One level of a path, which may have an index.
  oaNameMem parseLevel(std::string_view text) const;

  // Name to text, added to `out`.
  void write(const oaScalarName &name, oaString &out) const;
  void write(const oaVectorName &name, oaString &out) const;
  void write(const oaVectorBitName &name, oaString &out) const;
  void write(const oaSimpleName &name, oaString &out) const;
  void write(const oaBundleName &name, oaString &out) const;
  void write(const oaName &name, oaString &out) const;
  /// Without index or range.
  void writeBase(const oaVectorName &name, oaString &out) const { writePath(name, Role::base, out); }
  void writeBase(const oaVectorBitName &name, oaString &out) const { writePath(name, Role::base, out); }

protected:
  /// What a member is part of: spaces may treat a name that is known to be scalar more leniently.
  enum class Role {
    scalar,       // given as a scalar name
    bundleScalar, // a scalar member of a bundle
    undecided,    // a scalar because its text has no index
    base,         // before an index or a range
    level         // of a path
  };

  explicit NameGrammar(const NameTraits &traits) : traits_(traits) {}

  /// The length of the first member of the text, index included.
  virtual size_t memberLength(std::string_view text) const;
  /// Where the index or range of a member begins, with its opening character; npos when it has none.
  virtual size_t suffixStart(std::string_view member) const;
  /// The plain characters of a member that has no index, at least one.
  virtual oaNameMem decode(std::string_view text, Role role) const = 0;
  virtual void encode(const oaNameMem &member, Role role, oaString &out) const = 0;
  /// Whether the text is a bundle rather than a simple name.
  virtual bool isBundleText(std::string_view text) const;
  /// Appends the members of a text that need not be a bundle.
  virtual void parseMembers(std::string_view text, oaBundleName &name) const;
  /// What stands before a member with a repeat count over 1.
  virtual void writeRepeat(oaUInt4 repeat, oaString &out) const;

  [[noreturn]] void fail(oaUInt4 id, std::string_view text, const std::string &what) const;
  /// Raises for a text that is too long; without its outer blanks where they do not count.
  std::string_view checkedText(std::string_view text) const;
  /// A number of digits only, up to 2^32 - 1.
  oaUInt4 parseNumber(std::string_view digits, std::string_view text) const;
  /// As parseNumber(), for a repeat count, which is not 0.
  oaUInt4 parseRepeat(std::string_view digits, std::string_view text) const;
  /// start:stop or start:stop:step.
  void parseRange(std::string_view range, std::string_view text, oaUInt4 &start, oaUInt4 &stop, oaUInt4 &step) const;
  /// Splits the path off the text and leaves the last member.
  void parsePath(std::string_view &text, oaScalarName &name) const;
  oaNameMem decodeMember(std::string_view text, Role role, std::string_view whole) const;
  void requireKind(bool has, oaUInt4 id, const std::string &what) const;

private:
  void writePath(const oaNameBase &name, Role role, oaString &out) const;

  NameTraits traits_;
};

// The grammars of the spaces without settings.
const NameGrammar &nativeGrammar();
/// The native grammar that escapes every special character; see keyOf() in nametext.h.
const NameGrammar &keyGrammar();
const NameGrammar &unixGrammar();
const NameGrammar &cdbaGrammar();
const NameGrammar &verilogGrammar();
const NameGrammar &spiceGrammar();

/// Value of a hexadecimal digit in either case, -1 for another character.
int hexDigit(oaChar c);
/// '#' and two lower-case digits.
void appendHex(oaChar c, oaString &out);
/// The character that "#xx" at the text's begin stands for; NUL when it is no such escape.
oaChar hexEscape(std::string_view text);
/// Without the blanks at both ends.
std::string_view trimmed(std::string_view text);
bool isLetter(oaChar c);
bool isDigit(oaChar c);

} // namespace kit
} // namespace OpenAccess_4

#endif
