#ifndef OAKIT_LIBRARYFILE_H
#define OAKIT_LIBRARYFILE_H

#include <string>
#include <utility>
#include <vector>

namespace OpenAccess_4 {
namespace kit {

// The file `.oalib`, which makes a directory a library:
//
//     <?xml version="1.0" encoding="utf-8" ?>
//     <Library DMSystem="oaDMFileSys">
//         <oaDMFileSys libReadOnly="No" origFileSystem="Unix"/>
//     </Library>
//
// Reading is lenient: elements and attributes that it does not know are kept or passed over, missing ones have their
// defaults.
struct LibraryFile {
  std::string dmSystem = "oaDMFileSys";
  // Attributes of the inner element, in their order.
  std::vector<std::pair<std::string, std::string>> attributes = {{"libReadOnly", "No"}, {"origFileSystem", "Unix"}};

  bool isReadOnly() const;
  const std::string *attribute(const std::string &name) const;
  // Adds it, or changes its value.
  void setAttribute(const std::string &name, const std::string &value);

  // Raises oacCannotOpenLibDataFile, or oacLibDataFileSyntaxError with the line.
  static LibraryFile read(const std::string &path);
  // Raises oacLibDataFileSyntaxError for text that is not the file of a library. `path` is for messages.
  static LibraryFile parse(const std::string &text, const std::string &path);
  std::string toText() const;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
