#include "librarystructure.h"

#include "cellviewfiles.h"
#include "diskname.h"
#include "library.h"
#include "oa/oaException.h"
#include "raise.h"
#include "viewtypes.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace OpenAccess_4 {
namespace kit {

namespace {

enum StructureTableId : std::uint16_t { kCellTable = 10, kViewTable = 11, kCellViewTable = 12, kFileTable = 13 };

// Of a cell that another process removes just now: none.
std::vector<std::string> viewDirectories(const std::string &cellDirectory) {
  try {
    return namedDirectories(cellDirectory);
  } catch (const oaException &) {
    if (isDirectory(cellDirectory)) {
      throw;
    }
    return {};
  }
}

std::string viewKey(const std::string &name, Row type) { return name + '/' + std::to_string(type); }
std::string cellViewKey(Row cell, const std::string &name) { return std::to_string(cell) + '/' + name; }
std::uint64_t ownerKey(std::uint16_t table, Row row) { return (std::uint64_t(table) << 32) | row; }

Row found(const std::unordered_map<std::string, Row> &rows, const std::string &key) {
  const auto entry = rows.find(key);
  return entry == rows.end() ? kNoRow : entry->second;
}

} // namespace

StructureTable::StructureTable(Database &structure, std::uint16_t id, const char *name, oaTypeEnum type)
    : Table(structure, id, name, TableLife::kinds), type_(type) {
  setKindColumn(kind_);
}

Row StructureTable::add() {
  const Row row = addRow();
  kind_.set(row, static_cast<std::uint8_t>(type_));
  return row;
}

LibraryStructure::LibraryStructure(Library &library)
    : Database(DatabaseKind::session, oacLibType), library_(library), cells_(*this, kCellTable, "cells", oacCellType),
      views_(*this, kViewTable, "views", oacViewType), cellViews_(*this, kCellViewTable, "cell views", oacCellViewType),
      files_(*this, kFileTable, "files", oacDMFileType) {}

std::string LibraryStructure::label() const { return "library " + library_.label(); }

void LibraryStructure::contentsChanged() {
  cellRows_.clear();
  viewRows_.clear();
  cellViewRows_.clear();
  fileRows_.clear();
  areCellsListed_ = false;
  cellsByName_.clear();
  viewsByKey_.clear();
  cellViewsByKey_.clear();
  filesByKey_.clear();
  listedFileOwners_.clear();
}

void LibraryStructure::listCells() {
  if (areCellsListed_) {
    return;
  }
  for (const std::string &name : namedDirectories(library_.fullPath())) {
    if (found(cellsByName_, name) == kNoRow) {
      addCell(name);
    }
  }
  areCellsListed_ = true;
}

void LibraryStructure::listCellViews(Row row) {
  if (cell(row).areViewsListed) {
    return;
  }
  for (const std::string &name : viewDirectories(cellDirectory(row))) {
    if (found(cellViewsByKey_, cellViewKey(row, name)) == kNoRow) {
      addCellView(row, name);
    }
  }
  cell(row).areViewsListed = true;
}

void LibraryStructure::listAllCellViews() {
  listCells();
  for (Row row = cells_.nextAlive(kNoRow); row != kNoRow; row = cells_.nextAlive(row)) {
    listCellViews(row);
  }
}

void LibraryStructure::listFiles(std::uint16_t ownerTable, Row owner) {
  const std::string directory = directoryOf(ownerTable, owner);
  if (directory.empty() || !listedFileOwners_.emplace(ownerKey(ownerTable, owner), true).second) {
    return;
  }
  for (const std::string &name : visibleFiles(directory)) {
    if (found(filesByKey_, fileKey(ownerTable, owner, name)) == kNoRow) {
      addFile(ownerTable, owner, name);
    }
  }
}

Row LibraryStructure::findCell(const std::string &name) {
  const Row row = found(cellsByName_, name);
  if (row != kNoRow || areCellsListed_ || !isDirectory(library_.fullPath() + "/" + name)) {
    return row;
  }
  return addCell(name);
}

Row LibraryStructure::findCellView(Row row, const std::string &name) {
  const Row known = found(cellViewsByKey_, cellViewKey(row, name));
  if (known != kNoRow || cell(row).areViewsListed || !isDirectory(cellDirectory(row) + "/" + name)) {
    return known;
  }
  return addCellView(row, name);
}

Row LibraryStructure::findFile(std::uint16_t ownerTable, Row owner, const std::string &name) {
  const Row row = found(filesByKey_, fileKey(ownerTable, owner, name));
  if (row != kNoRow) {
    return row;
  }
  listFiles(ownerTable, owner);
  return found(filesByKey_, fileKey(ownerTable, owner, name));
}

Row LibraryStructure::getView(const std::string &name, Row type) {
  const std::string key = viewKey(name, type);
  const Row known = found(viewsByKey_, key);
  if (known != kNoRow) {
    return known;
  }
  const Row row = views_.add();
  viewRows_.push_back({name, type});
  viewsByKey_.emplace(key, row);
  return row;
}

Row LibraryStructure::getCell(const std::string &name) {
  const Row row = findCell(name);
  if (row != kNoRow) {
    return row;
  }
  createDirectory(library_.fullPath() + "/" + name);
  return addCell(name);
}

Row LibraryStructure::getCellView(const std::string &cellName, const std::string &viewName, Row type) {
  ViewTypes &types = ViewTypes::instance();
  const Row cellRow = findCell(cellName);
  Row row = cellRow == kNoRow ? kNoRow : findCellView(cellRow, viewName);
  if (row == kNoRow) {
    createCellViewFiles(library_.fullPath(), cellName, viewName, types.primaryFileOf(type));
    row = findCellView(getCell(cellName), viewName);
    if (row == kNoRow) {
      row = addCellView(getCell(cellName), viewName);
    }
    return row;
  }
  const Row foundType = view(cellView(row).view).type;
  if (foundType != type) {
    raiseDM(oacMismatchViewType, "cell view " + library_.label() + "/" + nativeText(cellName) + "/" +
                                     nativeText(viewName) + ": has the view type " + types.nameOf(foundType) +
                                     ", expected " + types.nameOf(type));
  }
  return row;
}

Row LibraryStructure::addCell(const std::string &name) {
  const Row row = cells_.add();
  cellRows_.emplace_back();
  cellRows_.back().name = name;
  cellsByName_.emplace(name, row);
  return row;
}

Row LibraryStructure::addCellView(Row cellRow, const std::string &name) {
  const std::string primaryFile = findPrimaryFile(cellDirectory(cellRow) + "/" + name);
  const Row type = primaryFile.empty() ? kNoRow : ViewTypes::instance().typeOfPrimaryFile(primaryFile);
  if (type == kNoRow) {
    return kNoRow;
  }
  const Row row = cellViews_.add();
  cellViewRows_.push_back({cellRow, getView(name, type), name, primaryFile});
  cell(cellRow).cellViews.push_back(row);
  cellViewsByKey_.emplace(cellViewKey(cellRow, name), row);
  return row;
}

Row LibraryStructure::addFile(std::uint16_t ownerTable, Row owner, const std::string &name) {
  const Row row = files_.add();
  fileRows_.push_back({ownerTable, owner, name, nullptr});
  filesByKey_.emplace(fileKey(ownerTable, owner, name), row);
  return row;
}

void LibraryStructure::destroyCell(Row row) {
  removeDirectory(cellDirectory(row));
  destroyRow(cells_, row);
}

void LibraryStructure::destroyCellView(Row row) {
  removeDirectory(cellViewDirectory(row));
  destroyRow(cellViews_, row);
}

void LibraryStructure::destroyFile(Row row) {
  const std::string path = directoryOf(file(row).ownerTable, file(row).owner) + "/" + file(row).name;
  if (::unlink(path.c_str()) != 0 && errno != ENOENT) {
    raiseOS(errno, "file " + path + ": cannot be removed");
  }
  destroyRow(files_, row);
}

void LibraryStructure::rowIsGoing(Table &table, Row row) {
  if (&table == &cells_) {
    const std::vector<Row> members = cell(row).cellViews;
    for (const Row member : members) {
      destroyRow(cellViews_, member);
    }
    cellsByName_.erase(cell(row).name);
  } else if (&table == &views_) {
    viewsByKey_.erase(viewKey(view(row).name, view(row).type));
  } else if (&table == &cellViews_) {
    std::vector<Row> &members = cell(cellView(row).cell).cellViews;
    members.erase(std::remove(members.begin(), members.end(), row), members.end());
    cellViewsByKey_.erase(cellViewKey(cellView(row).cell, cellView(row).name));
  } else if (&table == &files_) {
    File &going = file(row);
    going.lock.reset();
    filesByKey_.erase(fileKey(going.ownerTable, going.owner, going.name));
  }
  if (&table == &cells_ || &table == &cellViews_) {
    destroyFilesOf(table.id(), row);
  }
}

void LibraryStructure::destroyFilesOf(std::uint16_t ownerTable, Row owner) {
  for (Row row = files_.nextAlive(kNoRow); row != kNoRow; row = files_.nextAlive(row)) {
    if (file(row).ownerTable == ownerTable && file(row).owner == owner) {
      destroyRow(files_, row);
    }
  }
}

void LibraryStructure::refresh(const std::string &cellName, const std::string &viewName) {
  Row cellRow = found(cellsByName_, cellName);
  if (cellRow != kNoRow) {
    const Row row = found(cellViewsByKey_, cellViewKey(cellRow, viewName));
    if (row != kNoRow && !isDirectory(cellViewDirectory(row))) {
      destroyRow(cellViews_, row);
    }
    if (!isDirectory(cellDirectory(cellRow))) {
      destroyRow(cells_, cellRow);
      return;
    }
  } else if (areCellsListed_ && isDirectory(library_.fullPath() + "/" + cellName)) {
    cellRow = addCell(cellName);
  }
  const bool isViewMissing = cellRow != kNoRow && cell(cellRow).areViewsListed &&
                             found(cellViewsByKey_, cellViewKey(cellRow, viewName)) == kNoRow;
  if (isViewMissing && isDirectory(cellDirectory(cellRow) + "/" + viewName)) {
    addCellView(cellRow, viewName);
  }
}

std::string LibraryStructure::cellDirectory(Row row) const { return library_.fullPath() + "/" + cellRows_[row].name; }

std::string LibraryStructure::cellViewDirectory(Row row) const {
  return cellDirectory(cellViewRows_[row].cell) + "/" + cellViewRows_[row].name;
}

std::string LibraryStructure::directoryOf(std::uint16_t table, Row row) const {
  switch (table) {
  case 0:
    return library_.fullPath();
  case kCellTable:
    return cellDirectory(row);
  case kCellViewTable:
    return cellViewDirectory(row);
  default:
    return {};
  }
}

std::string LibraryStructure::fileKey(std::uint16_t ownerTable, Row owner, const std::string &name) {
  return std::to_string(ownerKey(ownerTable, owner)) + '/' + name;
}

} // namespace kit
} // namespace OpenAccess_4
