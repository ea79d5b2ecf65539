#ifndef OAKIT_VIEWTYPES_H
#define OAKIT_VIEWTYPES_H

// The view types of the session and the primary files that stand for them. Row numbers of the reserved types are their
// enumeration values; types made by clients, or found on disk, follow.

#include "oa/oaDMTypes.h"
#include "oa/oaViewType.h"
#include "table.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace OpenAccess_4 {
namespace kit {

class ViewTypes : public Table {
public:
  static ViewTypes &instance();

  // kNoRow when there is none.
  Row find(const std::string &name) const;
  Row add(const std::string &name);
  Row findOrAdd(const std::string &name);
  const std::string &nameOf(Row type) const { return names_[type]; }
  // "layout.oa" for maskLayout; the name itself for other types whose name has a dot, else the name and ".file".
  std::string primaryFileOf(Row type) const;
  // The type that a primary file stands for; kNoRow for a file name that stands for none.
  Row typeOfPrimaryFile(const std::string &fileName);

  oaViewType *object(Row type) { return static_cast<oaViewType *>(static_cast<oaObject *>(handle(type))); }
  // Raises oacDeletedDatabase for NULL.
  static Row rowOfType(const oaViewType *type);

private:
  explicit ViewTypes(Database &session);

  Column<std::uint8_t> kind_{*this, 1, "kind"};
  std::vector<std::string> names_;
  std::unordered_map<std::string, Row> byName_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
