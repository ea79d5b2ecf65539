// The name spaces of LEF and DEF, whose delimiters are settings.
#ifndef OPENACCESS_LEFDEFGRAMMAR_H
#define OPENACCESS_LEFDEFGRAMMAR_H

#include "namegrammar.h"

namespace OpenAccess_4 {
namespace kit {

class LefDefGrammar : public NameGrammar {
public:
  LefDefGrammar(bool isDef, oaChar open, oaChar close, oaChar hierarchy);

  oaChar open() const { return open_; }
  oaChar close() const { return close_; }
  oaChar hierarchy() const { return hierarchy_; }
  /// Whether the character may be a delimiter at all.
  static bool isPossibleDelimiter(oaChar c);

protected:
  size_t memberLength(std::string_view text) const override;
  size_t suffixStart(std::string_view member) const override;
  oaNameMem decode(std::string_view text, Role role) const override;
  void encode(const oaNameMem &member, Role role, oaString &out) const override;

private:
  bool isDelimiter(oaChar c) const { return c == open_ || c == close_ || c == hierarchy_; }

  oaChar open_;
  oaChar close_;
  oaChar hierarchy_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
