#ifndef OAKIT_FILECHECK_H
#define OAKIT_FILECHECK_H

#include "designcheck.h"
#include "findings.h"
#include "oa/oaType.h"

#include <cstddef>
#include <string>

namespace OpenAccess_4 {
namespace kit {
namespace check {

// What a file is to be, by its place.
enum class FileRole { any, design, technology, managementData };

struct FileQuestion {
  FileRole role = FileRole::any;
  // Of management data; oacUnknownType: whichever.
  oaTypeEnum owner = oacUnknownType;
  FindMaster findMaster;
  FindViaDefinition findViaDefinition;
};

// Checks one database file. Returns its size, 0 when it is none or foreign.
std::size_t checkDatabaseFile(const std::string &path, const FileQuestion &question, FileReport &report);

} // namespace check
} // namespace kit
} // namespace OpenAccess_4

#endif
