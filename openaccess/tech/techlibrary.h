#ifndef OAKIT_TECHLIBRARY_H
#define OAKIT_TECHLIBRARY_H

// Which technology a library uses. A library may be attached to another one: the string property "techLibName" of its
// management data then holds that library's name in the native name space, and that library's technology, or the one it
// is attached to in turn, is meant.

#include "techdatabase.h"

#include <string>

namespace OpenAccess_4 {
namespace kit {

class Library;

constexpr const char *kAttachmentProperty = "techLibName";

DatabasePlace techPlaceOf(const Library &library);
// A technology of the library's own: open, or on disk with contents.
bool hasOwnTech(const Library &library);
// The name of the library it is attached to; false when it is not.
bool attachmentOf(const Library &library, std::string &nativeName);
// The library whose own technology this library uses: itself or the end of its attachments. NULL when there is none.
// Raises oacCannotFindInheritedTechLib when an attached library is not open or the attachments run in a circle.
Library *techLibraryOf(Library &library);

} // namespace kit
} // namespace OpenAccess_4

#endif
