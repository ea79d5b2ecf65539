#ifndef OATCLEXCEPTION_H
#define OATCLEXCEPTION_H

#include "oa/oaLangException.h"

namespace oaTcl {

class oaTclException : public oaLang::oaLangException {
public:
  using oaLangException::oaLangException;
  ~oaTclException() override;
};

} // namespace oaTcl

#endif
