#ifndef OAKIT_LIBDEFLOADER_H
#define OAKIT_LIBDEFLOADER_H

#include "libdeflists.h"

#include <map>
#include <string>
#include <vector>

namespace OpenAccess_4 {
namespace kit {

// Where openLibs() without a path reads: ./lib.defs, $HOME/lib.defs, data/lib.defs or data/libraries/lib.defs of the
// installation. Empty when none of them exists.
std::string defaultLibDefPath();

// Reads a list with its includes and opens the libraries they define. Every file is read once, however often it is
// included.
class LibDefLoader {
public:
  // `isStrict`: raises what otherwise is a warning about paths and recursion.
  explicit LibDefLoader(bool isStrict = false) : isStrict_(isStrict) {}

  // Reads the file, unless its contents are known, and everything it includes. False when there was a syntax error:
  // nothing may be opened then. The list's own file must be readable; throws LibDefFileError when it is not.
  bool readHierarchy(Row top);
  // The same for a list as it is in memory; only includes are read.
  bool readIncludesOf(Row top);
  void openLibraries();

private:
  struct Definition {
    Row member;
    std::string fullPath;
    std::string writePath;
  };
  static constexpr std::size_t kMaxDepth = 64;

  bool isInChain(const std::string &place) const;
  bool collect(Row list);
  bool include(Row list, Row member);
  void define(Row list, Row member);
  // False after a warning that a variable is unknown.
  bool resolve(Row list, const LibDefMember &member, const std::string &path, oaUInt4 strictId, std::string &fullPath);
  void openOne(const Definition &definition);

  bool isStrict_;
  std::vector<std::string> chain_; // files being read, real paths
  std::vector<std::string> seen_;  // files that were read
  std::vector<Row> lists_;         // in the order of reading
  std::map<std::string, Definition> definitions_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
