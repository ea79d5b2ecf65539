#include "filecheck.h"

#include "databasefile.h"
#include "techcheck.h"

namespace OpenAccess_4 {
namespace kit {
namespace check {

namespace {

// Management data: properties of the database object, and no tables of its own.
class PlainDatabase : public Database {
public:
  explicit PlainDatabase(oaTypeEnum type) : Database(DatabaseKind::managementData, type) {}
  std::string label() const override { return "management data"; }
};

const char *nameOf(DatabaseKind kind) {
  switch (kind) {
  case DatabaseKind::design:
    return "a design";
  case DatabaseKind::technology:
    return "a technology";
  case DatabaseKind::managementData:
    return "management data";
  default:
    return "a database of unknown kind";
  }
}

DatabaseKind kindOf(FileRole role, DatabaseKind found) {
  switch (role) {
  case FileRole::design:
    return DatabaseKind::design;
  case FileRole::technology:
    return DatabaseKind::technology;
  case FileRole::managementData:
    return DatabaseKind::managementData;
  default:
    return found;
  }
}

void checkContents(const DatabaseFile &file, DatabaseKind kind, const FileQuestion &question, FileReport &report) {
  // The databases are not open in the sense of the API: nothing can find them, and nothing is saved.
  DatabasePlace place;
  place.label = report.file();
  if (kind == DatabaseKind::design) {
    DesignDatabase design(place, {}, {});
    file.lendTo(design, report);
    TableCheck check(design, report);
    check.run(oacDesignType);
    checkDesign(check, design, question.findMaster, question.findViaDefinition);
  } else if (kind == DatabaseKind::technology) {
    TechDatabase tech(place);
    file.lendTo(tech, report);
    TableCheck check(tech, report);
    check.run(oacTechType);
    checkTech(check, tech);
  } else {
    PlainDatabase data(oacLibDMDataType);
    file.lendTo(data, report);
    TableCheck check(data, report);
    oaTypeEnum owner = question.owner;
    if (owner == oacUnknownType) {
      check.guarded([&] { owner = static_cast<oaTypeEnum>(data.databaseTable().kind[0]); });
    }
    check.run(owner);
  }
}

} // namespace

std::size_t checkDatabaseFile(const std::string &path, const FileQuestion &question, FileReport &report) {
  const std::unique_ptr<DatabaseFile> file = DatabaseFile::open(path, report);
  if (!file) {
    return 0;
  }
  file->checkBytes(report);
  const DatabaseKind found = static_cast<DatabaseKind>(file->databaseKind());
  const DatabaseKind expected = kindOf(question.role, found);
  const bool isKnown = found >= DatabaseKind::design && found <= DatabaseKind::managementData;
  if (found != expected || !isKnown) {
    report.damage({std::string("is ") + nameOf(found) + " (kind " + std::to_string(file->databaseKind()) + ")",
                   isKnown ? nameOf(expected) : "a design, a technology or management data"});
  } else {
    checkContents(*file, found, question, report);
  }
  return file->sizeBytes();
}

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
