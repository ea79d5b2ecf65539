#ifndef OATCL_TEXTS_H
#define OATCL_TEXTS_H

// Texts of the kit are bytes, those of Tcl characters. Three rules lead from one to the other:
//
//   texts of databases, names among them: each byte is the character of Latin-1 with its number. This is how the
//   plug-in reads and writes them, and whatever bytes another program has stored come through unharmed;
//
//   paths: bytes of the file system, in the encoding that Tcl has for its own (encoding system);
//
//   what people read, and the scripts of parametric cells: UTF-8.

#include "classinfo.h"

#include <string>

namespace OpenAccess_4 {
namespace tcl {

// False when a character is no byte: beyond Latin-1, or NUL. `text` may be NULL.
bool readText(Tcl_Obj *value, oaString *text);
// The same, but raises ScriptError.
oaString textOf(Tcl_Obj *value);
Tcl_Obj *newText(const oaChar *bytes, std::size_t length);
inline Tcl_Obj *newText(const oaString &text) { return newText(text, text.getLength()); }

// Raises ScriptError for a NUL.
oaString pathOf(Tcl_Obj *value);
Tcl_Obj *newPath(const oaString &path);

// A message of the kit, in which texts and paths stand side by side, as UTF-8: bytes that are none are Latin-1.
std::string readableMessage(const std::string &bytes);
// A message of a script for the kit's observers, which read bytes: '?' for other characters.
std::string bytesOfMessage(const std::string &utf8);

} // namespace tcl
} // namespace OpenAccess_4

#endif
