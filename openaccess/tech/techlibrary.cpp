#include "techlibrary.h"

#include "cellviewfiles.h"
#include "library.h"
#include "managementdata.h"
#include "oa/oaException.h"
#include "oa/oaNameSpaces.h"
#include "oa/oaScalarName.h"
#include "raise.h"

namespace OpenAccess_4 {
namespace kit {

namespace {

constexpr unsigned kMaxAttachments = 32;

} // namespace

DatabasePlace techPlaceOf(const Library &library) {
  return {library.diskName(), library.fullPath(), library.fullPath(), kTechFile, "technology of " + library.label()};
}

bool hasOwnTech(const Library &library) {
  const DatabasePlace place = techPlaceOf(library);
  return TechDatabase::registry().find(place.key()) != nullptr || fileSizeBytes(place.path()) != 0;
}

bool attachmentOf(const Library &library, std::string &nativeName) {
  return ManagementData::libraryText(library.diskName(), kAttachmentProperty, nativeName);
}

Library *techLibraryOf(Library &library) {
  Library *at = &library;
  for (unsigned step = 0; step < kMaxAttachments; ++step) {
    std::string name;
    if (hasOwnTech(*at)) {
      return at;
    }
    if (!attachmentOf(*at, name)) {
      return nullptr;
    }
    Library *next = Libraries::instance().find(oaScalarName(oaNativeNS(), name.c_str()));
    if (next == nullptr) {
      raiseTech(oacCannotFindInheritedTechLib, "library " + at->label() +
                                                   ": is attached to the technology of library " + name +
                                                   ", which is not open");
    }
    at = next;
  }
  raiseTech(oacCannotFindInheritedTechLib,
            "library " + library.label() + ": its attachments to other libraries run in a circle");
}

TechDatabase *findTech(Library &library) {
  try {
    const Library *owner = techLibraryOf(library);
    return owner == nullptr ? nullptr : TechDatabase::registry().find(techPlaceOf(*owner).key());
  } catch (const oaException &) {
    return nullptr;
  }
}

TechDatabase *acquireTech(Library &library) {
  try {
    const Library *owner = techLibraryOf(library);
    if (owner == nullptr) {
      return nullptr;
    }
    DatabasePlace place = techPlaceOf(*owner);
    if (TechDatabase *known = TechDatabase::registry().find(place.key())) {
      known->addReference();
      return known;
    }
    std::unique_ptr<TechDatabase> tech(new TechDatabase(std::move(place)));
    tech->open('r');
    return &TechDatabase::registry().add(std::move(tech));
  } catch (const oaException &) {
    return nullptr;
  }
}

void releaseTech(TechDatabase &tech) {
  if (tech.releaseReference()) {
    TechDatabase::registry().remove(tech);
  }
}

} // namespace kit
} // namespace OpenAccess_4
