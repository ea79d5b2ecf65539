#ifndef OATCL_PLAINFORMS_H
#define OATCL_PLAINFORMS_H

// The plain forms of utility classes:
//
//   point, vector           {x y}
//   box                     {{left bottom} {right top}}
//   segment                 {{x1 y1} {x2 y2}}
//   arrays                  lists of the elements' forms
//   transform               {{x y} orient}
//   parameter               {name type value}
//   library attribute       {name value}
//   bytes                   a byte string
//   names                   their text in the current name space
//
// A class gets a plain form by a specialisation of PlainForm and a line "plain" in bindings.txt.

#include "values.h"

#include <string>

namespace OpenAccess_4 {
namespace tcl {

template <class T> struct PlainForm;

#define OATCL_PLAIN_FORM(T)                                                                                            \
  template <> struct PlainForm<T> {                                                                                    \
    static bool read(Tcl_Obj *text, double dbuPerUU, T *value);                                                        \
    static Tcl_Obj *make(const T &value, double dbuPerUU);                                                             \
  }

OATCL_PLAIN_FORM(oaPoint);
OATCL_PLAIN_FORM(oaVector);
OATCL_PLAIN_FORM(oaBox);
OATCL_PLAIN_FORM(oaSegment);
OATCL_PLAIN_FORM(oaTransform);
OATCL_PLAIN_FORM(oaParam);
OATCL_PLAIN_FORM(oaDMAttr);
OATCL_PLAIN_FORM(oaString);
OATCL_PLAIN_FORM(oaByteArray);
OATCL_PLAIN_FORM(oaPointArray);
OATCL_PLAIN_FORM(oaBoxArray);
OATCL_PLAIN_FORM(oaParamArray);
OATCL_PLAIN_FORM(oaDMAttrArray);
OATCL_PLAIN_FORM(oaStringArray);
OATCL_PLAIN_FORM(oaTechArray);
OATCL_PLAIN_FORM(oaTechHeaderArray);
OATCL_PLAIN_FORM(oaScalarName);
OATCL_PLAIN_FORM(oaVectorName);
OATCL_PLAIN_FORM(oaVectorBitName);
OATCL_PLAIN_FORM(oaSimpleName);
OATCL_PLAIN_FORM(oaBundleName);
OATCL_PLAIN_FORM(oaName);

#undef OATCL_PLAIN_FORM

// For a message: which parameter of a text that could be a parameter or a list of those cannot be read, and why. Empty
// when there is none, and for other classes.
std::string faultInParams(const ClassInfo &cls, Tcl_Obj *text);

// For ClassInfo.
template <class T> bool readPlainForm(Tcl_Obj *text, double dbuPerUU, void *value) {
  return PlainForm<T>::read(text, dbuPerUU, static_cast<T *>(value));
}
template <class T> Tcl_Obj *makePlainForm(const void *value, double dbuPerUU) {
  return PlainForm<T>::make(*static_cast<const T *>(value), dbuPerUU);
}

} // namespace tcl
} // namespace OpenAccess_4

#endif
