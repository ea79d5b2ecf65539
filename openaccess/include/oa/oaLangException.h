// The exceptions of the script language bindings.
#ifndef OALANGEXCEPTION_H
#define OALANGEXCEPTION_H

#include "oa/oaString.h"

namespace oaLang {

/// What a language binding could not do for a reason of its own, such as an interpreter that is none. Errors of the
/// database inside a command never take this way: they are errors of the script.
class oaLangException {
public:
  explicit oaLangException(const OpenAccess_4::oaString &message) : msg_(message) {}
  oaLangException(const oaLangException &) = default;
  oaLangException &operator=(const oaLangException &) = default;
  virtual ~oaLangException();

  const OpenAccess_4::oaString &getMsg() const { return msg_; }

private:
  OpenAccess_4::oaString msg_;
};

} // namespace oaLang

#endif
