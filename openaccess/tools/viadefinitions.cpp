#include "viadefinitions.h"

#include "cellviewfiles.h"
#include "filelayer.h"
#include "properties.h"
#include "techdatabase.h"
#include "techlibrary.h"

namespace OpenAccess_4 {
namespace kit {
namespace check {

namespace {

class LibraryData : public Database {
public:
  LibraryData() : Database(DatabaseKind::managementData, oacLibDMDataType) {}
  std::string label() const override { return "management data"; }
};

bool hasContents(const std::string &path) { return isRegularFile(path) && fileSizeBytes(path) != 0; }

} // namespace

MasterState ViaDefinitions::find(const std::string &name) {
  if (!known_) {
    try {
      known_ = read();
    } catch (const oaException &) {
      known_ = Known(); // told with the technology's own findings
    }
  }
  if (known_->names.count(name) != 0) {
    return MasterState::present;
  }
  return known_->isWhole ? MasterState::missing : MasterState::elsewhere;
}

bool ViaDefinitions::isAttached() const {
  const std::string path = directory_ + "/" + kManagementDataFile;
  if (!hasContents(path)) {
    return false;
  }
  LibraryData data;
  data.load(path);
  const PropertyTable &properties = data.properties();
  for (Row row = properties.nextAlive(kNoRow); row != kNoRow; row = properties.nextAlive(row)) {
    if (data.strings().view(properties.name[row]) == kAttachmentProperty) {
      return true;
    }
  }
  return false;
}

ViaDefinitions::Known ViaDefinitions::read() const {
  Known known;
  if (directory_.empty()) {
    return known;
  }
  const std::string path = directory_ + "/" + kTechFile;
  if (!hasContents(path)) {
    known.isWhole = !isAttached();
    return known;
  }
  DatabasePlace place;
  place.label = path;
  TechDatabase tech(place);
  tech.load(path);
  for (Row row = tech.viaDefs.nextAlive(kNoRow); row != kNoRow; row = tech.viaDefs.nextAlive(row)) {
    known.names.insert(tech.strings().text(tech.viaDefs.name[row]));
  }
  known.isWhole = tech.references.nextAlive(kNoRow) == kNoRow;
  return known;
}

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
