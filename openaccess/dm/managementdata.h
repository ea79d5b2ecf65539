#ifndef OAKIT_MANAGEMENTDATA_H
#define OAKIT_MANAGEMENTDATA_H

#include "opendatabase.h"

#include <string>

namespace OpenAccess_4 {

class oaDMData;

namespace kit {

// What management data belongs to: names in their form on disk, empty where there is none.
struct ManagementDataOwner {
  oaTypeEnum type; // oacLibDMDataType, oacCellDMDataType, oacCellViewDMDataType
  std::string library;
  std::string cell;
  std::string view;
};

// Management data that is open. All its contents are the properties of the database object.
class ManagementData : public OpenDatabase {
public:
  ManagementData(const ManagementDataOwner &owner, DatabasePlace place);
  const ManagementDataOwner &owner() const { return owner_; }

  oaDMData *object();
  static ManagementData &of(const oaDMData *data);
  static OpenRegistry<ManagementData> &registry();
  // Raises oacLibNotFound, oacCellNotFound, oacViewNotFound.
  static DatabasePlace placeOf(const ManagementDataOwner &owner);
  // False for an owner that does not exist.
  static bool findPlace(const ManagementDataOwner &owner, DatabasePlace &place);

  // Raises what oaDMData::open raises.
  static ManagementData &open(const ManagementDataOwner &owner, char mode);
  // NULL when it is not open.
  static ManagementData *find(const ManagementDataOwner &owner);
  static bool exists(const ManagementDataOwner &owner);
  static void destroy(const ManagementDataOwner &owner);
  // Takes one reference off, and closes when it was the last.
  static void close(ManagementData &data);

  // A string property of a library's management data, open or on disk; false when there is none. Never leaves the data
  // open.
  static bool libraryText(const std::string &library, const std::string &property, std::string &value);
  // Sets the property, or removes it (NULL), and saves.
  static void setLibraryText(const std::string &library, const std::string &property, const std::string *value);

private:
  ManagementDataOwner owner_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
