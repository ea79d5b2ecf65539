#include "oa/oaDMObject.h"

#include "collection.h"
#include "library.h"
#include "librarystructure.h"
#include "oa/oaDMFile.h"
#include "oa/oaLib.h"

namespace OpenAccess_4 {

namespace {

// Files of one container: the filter flags hold the container's table (0: the library).
class FilesOfContainer : public kit::WholeTableKind {
protected:
  bool accepts(const kit::CollectionQuestion &question, kit::Row row) const override {
    const auto &file = static_cast<kit::LibraryStructure &>(question.table->database()).file(row);
    return file.ownerTable == question.flags && file.owner == question.owner;
  }
  bool isFiltered(const kit::CollectionQuestion &) const override { return true; }
};

} // namespace

oaBoolean oaDMObject::isContainer() const { return getType() != oacDMFileType; }

oaLib *oaDMObject::getLib() const {
  if (getType() == oacLibType) {
    return const_cast<oaLib *>(static_cast<const oaLib *>(static_cast<const oaObject *>(this)));
  }
  return kit::LibraryStructure::of(this).library().handle();
}

oaCollection<oaDMFile, oaDMContainer> oaDMContainer::getDMFiles() const {
  static const FilesOfContainer kind;
  const bool isLibrary = getType() == oacLibType;
  kit::Library &library = kit::Libraries::of(getLib());
  kit::LibraryStructure &structure = library.structure();
  const std::uint16_t table = isLibrary ? 0 : kit::liveTable(this).id();
  const kit::Row row = isLibrary ? 0 : kit::rowOf(this);
  structure.listFiles(table, row);
  return kit::CollectionAccess::make<oaCollection<oaDMFile, oaDMContainer>>(kind, &structure.files(), row, table);
}

} // namespace OpenAccess_4
