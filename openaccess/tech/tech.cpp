#include "oa/oaTech.h"

#include "cellviewfiles.h"
#include "collection.h"
#include "diskname.h"
#include "filelayer.h"
#include "library.h"
#include "managementdata.h"
#include "oa/oaLayer.h"
#include "oa/oaLib.h"
#include "oa/oaNameSpaces.h"
#include "oa/oaPurpose.h"
#include "oa/oaScalarName.h"
#include "oa/oaTechException.h"
#include "oa/oaViaDef.h"
#include "raise.h"
#include "techlibrary.h"
#include "techreferences.h"

#include <cerrno>

namespace OpenAccess_4 {

namespace {

using kit::Libraries;
using kit::Library;
using kit::TechDatabase;

std::string nativeNameOf(const oaScalarName &name) {
  oaString text;
  name.get(oaNativeNS(), text);
  return std::string(text);
}

Library &openLibrary(const oaScalarName &name) {
  if (Library *library = Libraries::instance().find(name)) {
    return *library;
  }
  raiseTech(oacTechLibNotFound, "library " + nativeNameOf(name) + ": is not open");
}

TechDatabase &openTech(Library &library, char mode) {
  const std::string label = "technology of " + library.label();
  TechDatabase::checkMode(mode, TechDatabase::errorIdsOfLayer(), label);
  const Library *owner = kit::techLibraryOf(library);
  if (owner == nullptr) {
    raiseTech(oacCannotFindLibraryTech, label + ": there is none; neither " + kit::techPlaceOf(library).path() +
                                            " nor an attachment to another library exists");
  }
  kit::DatabasePlace place = kit::techPlaceOf(*owner);
  if (TechDatabase *known = TechDatabase::registry().find(place.key())) {
    known->openAgain(mode);
    return *known;
  }
  std::unique_ptr<TechDatabase> tech(new TechDatabase(std::move(place)));
  tech->open(mode);
  return TechDatabase::registry().add(std::move(tech));
}

TechDatabase &createTech(Library &library) {
  kit::DatabasePlace place = kit::techPlaceOf(library);
  if (kit::hasOwnTech(library)) {
    raiseTech(oacTechAlreadyExists, place.label + ": exists already, in " + place.path());
  }
  std::string attached;
  if (kit::attachmentOf(library, attached)) {
    raiseTech(oacTechAttachedTechLibDetected,
              place.label + ": the library is attached to the technology of library " + attached);
  }
  std::unique_ptr<TechDatabase> tech(new TechDatabase(std::move(place)));
  tech->open('w');
  return TechDatabase::registry().add(std::move(tech));
}

void destroyTech(Library &library) {
  const kit::DatabasePlace place = kit::techPlaceOf(library);
  if (TechDatabase::registry().find(place.key()) != nullptr) {
    raiseTech(oacDestroyTechOpen, place.label + ": is open and cannot be destroyed");
  }
  std::string attached;
  if (!kit::isRegularFile(place.path())) {
    if (kit::attachmentOf(library, attached)) {
      raiseTech(oacDestroyWithAttachProperty, place.label + ": belongs to library " + attached +
                                                  ", to which this one is attached; detach it instead");
    }
    raiseTech(oacTechFileDoesNotExist, place.label + ": there is no file " + place.path());
  }
  const kit::BriefWriteAccess access(library, TechDatabase::errorIdsOfLayer(), place.label);
  if (kit::FileLayer::current().unlink(place.path().c_str()) != 0) {
    kit::raiseOS(errno, "file " + place.path() + ": cannot be removed");
  }
}

bool existsTech(Library &library, bool inherited) {
  if (!inherited) {
    return kit::hasOwnTech(library);
  }
  try {
    return kit::techLibraryOf(library) != nullptr;
  } catch (const oaTechError &) {
    return false;
  }
}

oaTech *objectOf(TechDatabase *tech) { return tech == nullptr ? nullptr : tech->object(); }

// The rows of a technology's table and, unless the flags say otherwise, of what it refers to.
template <typename Collection>
Collection inGraph(kit::Table &table, oaUInt4 filterFlags, const kit::GraphRowsKind &kind) {
  const bool isLocal = (filterFlags & oacTechIterLocal) != 0;
  return isLocal ? kit::wholeTable<Collection>(table) : kit::CollectionAccess::make<Collection>(kind, &table, 0);
}

} // namespace

void oaTech::close() { kit::releaseTech(TechDatabase::of(this)); }
void oaTech::purge() { TechDatabase::registry().remove(TechDatabase::of(this)); }
void oaTech::save() { TechDatabase::of(this).save(); }

void oaTech::saveAs(const oaScalarName &libName) {
  TechDatabase &tech = TechDatabase::of(this);
  Library &target = openLibrary(libName);
  const kit::DatabasePlace place = kit::techPlaceOf(target);
  if (kit::hasOwnTech(target)) {
    raiseTech(oacTechAlreadyExists, place.label + ": exists already, in " + place.path());
  }
  const kit::BriefWriteAccess access(target, TechDatabase::errorIdsOfLayer(), place.label);
  tech.saveCopy(place.path());
}

void oaTech::reopen(oaChar mode) { TechDatabase::of(this).reopen(mode); }
void oaTech::revert() { TechDatabase::of(this).revert(); }
void oaTech::getLibName(oaScalarName &libName) const {
  kit::nameFromDisk(TechDatabase::of(this).place().libraryName, libName);
}
void oaTech::getLibName(const oaNameSpace &ns, oaString &out) const {
  kit::nameFromDisk(TechDatabase::of(this).place().libraryName, ns, out);
}

oaLib *oaTech::getLib() const {
  const Library *library = TechDatabase::of(this).library();
  return library == nullptr ? nullptr : library->handle();
}

oaTime oaTech::getCreateTime() const { return TechDatabase::of(this).databaseTable().createTime[0]; }
oaTime oaTech::getLastSavedTime() const { return TechDatabase::of(this).databaseTable().savedTime[0]; }
oaChar oaTech::getMode() const { return TechDatabase::of(this).mode(); }
oaUInt4 oaTech::getRefCount() const { return TechDatabase::of(this).refCount(); }
oaBoolean oaTech::isModified() const { return TechDatabase::of(this).isModified(); }

oaCollection<oaLayer, oaTech> oaTech::getLayers() const { return getLayers(oacTechIterAll); }
oaCollection<oaLayer, oaTech> oaTech::getLayers(oaUInt4 filterFlags) const {
  static const kit::GraphRowsKind kind([](TechDatabase &tech) -> kit::Table & { return tech.layers; });
  return inGraph<oaCollection<oaLayer, oaTech>>(TechDatabase::of(this).layers, filterFlags, kind);
}
oaCollection<oaPurpose, oaTech> oaTech::getPurposes() const { return getPurposes(oacTechIterAll); }
oaCollection<oaPurpose, oaTech> oaTech::getPurposes(oaUInt4 filterFlags) const {
  static const kit::GraphRowsKind kind([](TechDatabase &tech) -> kit::Table & { return tech.purposes; });
  return inGraph<oaCollection<oaPurpose, oaTech>>(TechDatabase::of(this).purposes, filterFlags, kind);
}
oaCollection<oaViaDef, oaTech> oaTech::getViaDefs() const { return getViaDefs(oacTechIterAll); }
oaCollection<oaViaDef, oaTech> oaTech::getViaDefs(oaUInt4 filterFlags) const {
  static const kit::GraphRowsKind kind([](TechDatabase &tech) -> kit::Table & { return tech.viaDefs; });
  return inGraph<oaCollection<oaViaDef, oaTech>>(TechDatabase::of(this).viaDefs, filterFlags, kind);
}

oaTech *oaTech::create(const oaScalarName &libName) { return createTech(openLibrary(libName)).object(); }
oaTech *oaTech::create(oaLib *lib) { return createTech(Libraries::of(lib)).object(); }
oaTech *oaTech::open(const oaScalarName &libName, oaChar mode) { return openTech(openLibrary(libName), mode).object(); }
oaTech *oaTech::open(oaLib *lib, oaChar mode) { return openTech(Libraries::of(lib), mode).object(); }

oaTech *oaTech::find(const oaScalarName &libName) {
  Library *library = Libraries::instance().find(libName);
  return library == nullptr ? nullptr : objectOf(kit::findTech(*library));
}
oaTech *oaTech::find(const oaLib *lib) { return objectOf(kit::findTech(Libraries::of(lib))); }

void oaTech::destroy(const oaScalarName &libName) { destroyTech(openLibrary(libName)); }
void oaTech::destroy(oaLib *lib) { destroyTech(Libraries::of(lib)); }

oaBoolean oaTech::exists(const oaScalarName &libName, oaBoolean inherited) {
  Library *library = Libraries::instance().find(libName);
  return library != nullptr && existsTech(*library, inherited);
}
oaBoolean oaTech::exists(oaLib *lib, oaBoolean inherited) { return existsTech(Libraries::of(lib), inherited); }

void oaTech::attach(oaLib *lib, const oaScalarName &attachLibName) {
  Library &library = Libraries::of(lib);
  if (kit::hasOwnTech(library)) {
    raiseTech(oacAttachLibraryHasLocalTech,
              "library " + library.label() + ": has a technology of its own and cannot be attached to another");
  }
  const std::string name = nativeNameOf(attachLibName);
  if (name.empty()) {
    raiseTech(oacTechLibNotFound, "library " + library.label() + ": cannot be attached to a library without a name");
  }
  kit::ManagementData::setLibraryText(library.diskName(), kit::kAttachmentProperty, &name);
}

void oaTech::detach(oaLib *lib) {
  Library &library = Libraries::of(lib);
  if (!hasAttachment(lib)) {
    raiseTech(oacDetachNoAttachment,
              "library " + library.label() + ": is not attached to another library's technology");
  }
  kit::ManagementData::setLibraryText(library.diskName(), kit::kAttachmentProperty, nullptr);
}

oaBoolean oaTech::hasAttachment(const oaLib *lib) {
  std::string name;
  return kit::attachmentOf(Libraries::of(lib), name);
}

void oaTech::getAttachment(const oaLib *lib, oaScalarName &attachLibName) {
  const Library &library = Libraries::of(lib);
  std::string name;
  if (!kit::attachmentOf(library, name)) {
    raiseTech(oacGetAttachmentNoAttachment,
              "library " + library.label() + ": is not attached to another library's technology");
  }
  attachLibName.init(oaNativeNS(), name.c_str());
}

oaCollection<oaTech, oaTech> oaTech::getOpenTechs() {
  return kit::openDatabases<oaCollection<oaTech, oaTech>, TechDatabase>();
}

} // namespace OpenAccess_4
