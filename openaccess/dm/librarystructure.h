#ifndef OAKIT_LIBRARYSTRUCTURE_H
#define OAKIT_LIBRARYSTRUCTURE_H

#include "database.h"
#include "filelock.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace OpenAccess_4 {

class oaCellView;
class oaObject;
class oaViewType;

namespace kit {

class Library;

// Rows that stand for parts of a library. What belongs to a row lies beside the table in the structure.
class StructureTable : public Table {
public:
  StructureTable(Database &structure, std::uint16_t id, const char *name, oaTypeEnum type);
  // A new row of the table's type.
  Row add();

private:
  oaTypeEnum type_;
  Column<std::uint8_t> kind_{*this, 1, "kind"};
};

// The cells, views, cell views and files of one library, as far as somebody has asked for them. A directory is read at
// most once in a period of access: nobody else can change the library meanwhile, and what this process changes is noted
// here. When the period ends, clear() makes all handles dead. The object itself lives as long as the process, so that a
// collection may outlive its library.
class LibraryStructure : public Database {
public:
  struct Cell {
    std::string name; // on disk
    bool areViewsListed = false;
    std::vector<Row> cellViews;
  };
  struct View {
    std::string name;
    Row type;
  };
  struct CellView {
    Row cell;
    Row view;
    std::string name;
    std::string primaryFile;
  };
  struct File {
    std::uint16_t ownerTable; // 0: the library
    Row owner;
    std::string name;
    std::unique_ptr<EditLock> lock;
  };

  explicit LibraryStructure(Library &library);
  std::string label() const override;
  Library &library() const { return library_; }

  StructureTable &cells() { return cells_; }
  StructureTable &views() { return views_; }
  StructureTable &cellViews() { return cellViews_; }
  StructureTable &files() { return files_; }
  Cell &cell(Row row) { return cellRows_[row]; }
  View &view(Row row) { return viewRows_[row]; }
  CellView &cellView(Row row) { return cellViewRows_[row]; }
  File &file(Row row) { return fileRows_[row]; }

  void listCells();
  void listCellViews(Row cell);
  void listAllCellViews();
  void listFiles(std::uint16_t ownerTable, Row owner);

  // kNoRow when there is no such thing on disk.
  Row findCell(const std::string &name);
  Row findCellView(Row cell, const std::string &name);
  Row findFile(std::uint16_t ownerTable, Row owner, const std::string &name);
  // Views are only names; one that is asked for exists.
  Row getView(const std::string &name, Row type);
  Row getCell(const std::string &name);
  // Raises oacMismatchViewType.
  Row getCellView(const std::string &cellName, const std::string &viewName, Row type);
  Row addFile(std::uint16_t ownerTable, Row owner, const std::string &name);

  void destroyCell(Row row);
  void destroyCellView(Row row);
  void destroyView(Row row) { destroyRow(views_, row); }
  void destroyFile(Row row);

  // Cell and view have come or gone on disk by the hands of this process.
  void refresh(const std::string &cellName, const std::string &viewName);

  // Absolute.
  std::string cellDirectory(Row row) const;
  std::string cellViewDirectory(Row row) const;
  // Of a library (table 0), cell or cell view; empty for a view.
  std::string directoryOf(std::uint16_t table, Row row) const;

  static LibraryStructure &of(const oaObject *object) { return static_cast<LibraryStructure &>(databaseOf(object)); }

protected:
  void rowIsGoing(Table &table, Row row) override;
  void contentsChanged() override;

private:
  Row addCell(const std::string &name);
  // kNoRow when the directory is no cell view.
  Row addCellView(Row cell, const std::string &name);
  static std::string fileKey(std::uint16_t ownerTable, Row owner, const std::string &name);
  void destroyFilesOf(std::uint16_t ownerTable, Row owner);

  Library &library_;
  StructureTable cells_, views_, cellViews_, files_;
  std::vector<Cell> cellRows_;
  std::vector<View> viewRows_;
  std::vector<CellView> cellViewRows_;
  std::vector<File> fileRows_;
  bool areCellsListed_ = false;
  std::unordered_map<std::string, Row> cellsByName_, viewsByKey_, cellViewsByKey_, filesByKey_;
  std::unordered_map<std::uint64_t, bool> listedFileOwners_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
