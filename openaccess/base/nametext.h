// Forms of names for the rest of the kit: file system names and keys.
#ifndef OPENACCESS_NAMETEXT_H
#define OPENACCESS_NAMETEXT_H

#include <cstddef>
#include <string>

#include "oa/oaName.h"

namespace OpenAccess_4 {
namespace kit {

/// Characters of a whole name in its native form. A longer one can be put together from members, but never be read.
constexpr std::size_t kMaxNameLength = 8024;

/// The directory of a cell, view or library name, in the Unix name space. It consists of letters, digits, _, @ and #,
/// so it never leaves its parent directory. Raises oacInvalidNameLength for the empty name and for one longer than a
/// file system takes, oacHierNameInvalid for one with hierarchy.
std::string directoryOf(const oaScalarName &name);

/// The name of a directory entry; false, with `name` untouched, when no name is written so (".git", "x.bak").
bool nameOfDirectory(const std::string &directory, oaScalarName &name);

/// The native form with all special characters escaped. Unlike get(), it keeps the scalar A[3] apart from the bit:
/// names of one kind are equal exactly when their keys are, and oaName(oaNativeNS(), key) gives the name back. Empty
/// for the empty name. A bundle of one member reads like that member.
void keyOf(const oaName &name, oaString &key);
void keyOf(const oaScalarName &name, oaString &key);

/// Native text of a name, for messages.
std::string textOf(const oaScalarName &name);
std::string textOf(const oaName &name);

} // namespace kit
} // namespace OpenAccess_4

#endif
