#include "managementdata.h"

#include "cellviewfiles.h"
#include "diskname.h"
#include "filelayer.h"
#include "library.h"
#include "oa/oaDMData.h"
#include "oa/oaDMException.h"
#include "oa/oaProps.h"
#include "raise.h"

#include <cerrno>

namespace OpenAccess_4 {
namespace kit {

namespace {

constexpr OpenErrorIds kIds = {
    raiseDM,
    oacOpenUndefinedModeDMData,
    oacDMDataDoesNotExist,
    oacSaveReadOnlyDMData,
    0,
    oacCannotLockDMData,
    oacDMDataCannotGetWriteAccess,
    oacDMDataHasReadNeedWriteAccess,
    oacLibNotFound,
    oacDMDataDoesNotExist,
};

// Closes at the end of a scope, without saving.
struct Closing {
  ManagementData &data;
  ~Closing() { ManagementData::close(data); }
};

} // namespace

ManagementData::ManagementData(const ManagementDataOwner &owner, DatabasePlace place)
    : OpenDatabase(DatabaseKind::managementData, owner.type, kIds, std::move(place)), owner_(owner) {}

oaDMData *ManagementData::object() { return static_cast<oaDMData *>(self()); }

ManagementData &ManagementData::of(const oaDMData *data) { return static_cast<ManagementData &>(databaseOf(data)); }

OpenRegistry<ManagementData> &ManagementData::registry() {
  // Never destroyed: data that is open at the end of the process is dropped with it.
  static OpenRegistry<ManagementData> &registry = *new OpenRegistry<ManagementData>;
  return registry;
}

DatabasePlace ManagementData::placeOf(const ManagementDataOwner &owner) {
  DatabasePlace place;
  const Library *library = Libraries::instance().find(owner.library);
  if (library == nullptr) {
    raiseDM(oacLibNotFound, "library " + nativeText(owner.library) + ": is not open");
  }
  place.libraryName = owner.library;
  place.libraryPath = library->fullPath();
  place.directory = library->fullPath();
  place.fileName = kManagementDataFile;
  std::string label = library->label();
  if (!owner.cell.empty()) {
    label += "/" + nativeText(owner.cell);
    place.directory += "/" + owner.cell;
    if (!isDirectory(place.directory)) {
      raiseDM(oacCellNotFound, "cell " + label + ": does not exist");
    }
  }
  if (!owner.view.empty()) {
    label += "/" + nativeText(owner.view);
    place.directory += "/" + owner.view;
    if (!isDirectory(place.directory) || findPrimaryFile(place.directory).empty()) {
      raiseDM(oacViewNotFound, "cell view " + label + ": does not exist");
    }
  }
  place.label = "management data of " + label;
  return place;
}

ManagementData &ManagementData::open(const ManagementDataOwner &owner, char mode) {
  DatabasePlace place = placeOf(owner);
  if (ManagementData *known = registry().find(place.key())) {
    known->openAgain(mode);
    return *known;
  }
  std::unique_ptr<ManagementData> data(new ManagementData(owner, std::move(place)));
  data->OpenDatabase::open(mode);
  return registry().add(std::move(data));
}

bool ManagementData::findPlace(const ManagementDataOwner &owner, DatabasePlace &place) {
  try {
    place = placeOf(owner);
    return true;
  } catch (const oaDMError &) {
    return false;
  }
}

ManagementData *ManagementData::find(const ManagementDataOwner &owner) {
  DatabasePlace place;
  return findPlace(owner, place) ? registry().find(place.key()) : nullptr;
}

bool ManagementData::exists(const ManagementDataOwner &owner) {
  DatabasePlace place;
  return findPlace(owner, place) && (registry().find(place.key()) != nullptr || fileSizeBytes(place.path()) != 0);
}

void ManagementData::destroy(const ManagementDataOwner &owner) {
  const DatabasePlace place = placeOf(owner);
  if (registry().find(place.key()) != nullptr) {
    raiseDM(oacDestroyDMDataOpen, place.label + ": is open and cannot be destroyed");
  }
  if (!isRegularFile(place.path())) {
    raiseDM(oacDestroyDMDataDoesNotExist, place.label + ": there is no file " + place.path());
  }
  const BriefWriteAccess access(*Libraries::instance().find(owner.library), kIds, place.label);
  if (FileLayer::current().unlink(place.path().c_str()) != 0) {
    raiseOS(errno, "file " + place.path() + ": cannot be removed");
  }
}

void ManagementData::close(ManagementData &data) {
  if (data.releaseReference()) {
    registry().remove(data);
  }
}

bool ManagementData::libraryText(const std::string &library, const std::string &property, std::string &value) {
  const ManagementDataOwner owner{oacLibDMDataType, library, {}, {}};
  if (!exists(owner)) {
    return false;
  }
  ManagementData &data = open(owner, 'r');
  const Closing closing{data};
  const oaProp *prop = oaProp::find(data.object(), property.c_str());
  if (prop == nullptr || prop->getType() != oacStringPropType) {
    return false;
  }
  oaString text;
  prop->getValue(text);
  value = std::string(text);
  return true;
}

void ManagementData::setLibraryText(const std::string &library, const std::string &property, const std::string *value) {
  ManagementData &data = open({oacLibDMDataType, library, {}, {}}, 'a');
  const Closing closing{data};
  if (oaProp *prop = oaProp::find(data.object(), property.c_str())) {
    prop->destroy();
  }
  if (value != nullptr) {
    oaStringProp::create(data.object(), property.c_str(), value->c_str());
  }
  data.save();
}

} // namespace kit
} // namespace OpenAccess_4
