#ifndef OAKIT_DISKNAME_H
#define OAKIT_DISKNAME_H

// Names as they stand on disk: in directory names and in lib.defs. They use letters, digits, '_', '@' and '#' with two
// lower-case hex digits for everything else, so no name can lead out of its library's directory. Inside the kit
// libraries, cells and views are known by these texts, since equal names have equal texts.

#include <string>

namespace OpenAccess_4 {

class oaNameSpace;
class oaScalarName;
class oaString;

namespace kit {

// Longest directory name that the file systems in use can hold.
constexpr std::size_t kMaxDiskNameBytes = 255;

// Raises oacHierNameInvalid for a name with a hierarchy, oacInvalidNameLength for an empty name and for one whose form
// on disk is too long.
std::string diskName(const oaScalarName &name);
// Whether a directory of that name can be a cell or view: it is exactly what diskName() gives for some name.
bool isDiskName(const std::string &text);
// `text` is a disk name.
void nameFromDisk(const std::string &text, oaScalarName &name);
void nameFromDisk(const std::string &text, const oaNameSpace &ns, oaString &out);
// For messages.
std::string nativeText(const std::string &text);

} // namespace kit
} // namespace OpenAccess_4

#endif
