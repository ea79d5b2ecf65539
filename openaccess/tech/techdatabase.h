#ifndef OAKIT_TECHDATABASE_H
#define OAKIT_TECHDATABASE_H

#include "oa/oaTechTypes.h"
#include "oa/oaViaParam.h"
#include "opendatabase.h"
#include "viaparamtable.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace OpenAccess_4 {

class oaTech;
class oaTechObject;

namespace kit {

class Library;

// Part of the file format: never changed, never used again.
enum TechTableId : std::uint16_t {
  kTechAttributesTable = 15,
  kUnitsTable = 16,
  kLayerTable = 17,
  kPurposeTable = 18,
  kViaDefTable = 19,
  kStdViaDefTable = 20,
  kCustomViaDefTable = 21,
  kTechMissingCutTable = 22,
  kTechReferenceTable = 23,
};

class TechAttributesTable : public Table { // one row
public:
  explicit TechAttributesTable(Database &database);
  Column<std::uint8_t> kind{*this, 1, "kind"};
  Column<std::uint8_t> isGridSet{*this, 2, "isGridSet"};
  Column<std::uint32_t> gridDbu{*this, 3, "gridDbu"};
  Column<Row> processFamily{*this, 4, "processFamily", kNoRow};
};

// A row for each view type whose units were ever set.
class UnitsTable : public Table {
public:
  explicit UnitsTable(Database &database);
  Column<std::uint8_t> kind{*this, 1, "kind"};
  Column<std::uint32_t> viewType{*this, 2, "viewType"}; // oaReservedViewTypeEnum
  Column<std::uint32_t> dbuPerUU{*this, 3, "dbuPerUU"}; // 0: not set
  Column<std::uint8_t> userUnits{*this, 4, "userUnits"};
  Column<std::uint8_t> isUserUnitsSet{*this, 5, "isUserUnitsSet"};
};

class LayerTable : public Table {
public:
  explicit LayerTable(Database &database);
  Column<std::uint8_t> kind{*this, 1, "kind"};
  Column<Row> name{*this, 2, "name", kNoRow};
  Column<oaLayerNum> number{*this, 3, "number"};
  // Physical layers.
  Column<std::uint8_t> material{*this, 4, "material"};
  Column<std::uint8_t> routingDirection{*this, 5, "routingDirection"};
  Column<std::uint32_t> maskNumber{*this, 6, "maskNumber", oacUnsetMaskNumber};
  Column<std::uint8_t> isGridSet{*this, 7, "isGridSet"};
  Column<std::uint32_t> gridDbu{*this, 8, "gridDbu"};
  // Derived layers: numbers of the two others.
  Column<oaLayerNum> layer1{*this, 9, "layer1"};
  Column<oaLayerNum> layer2{*this, 10, "layer2"};
  Column<std::uint8_t> operation{*this, 11, "operation"};
};

class PurposeTable : public Table {
public:
  explicit PurposeTable(Database &database);
  Column<std::uint8_t> kind{*this, 1, "kind"};
  Column<Row> name{*this, 2, "name", kNoRow};
  Column<oaPurposeNum> number{*this, 3, "number"};
};

class ViaDefTable : public Table {
public:
  explicit ViaDefTable(Database &database);
  Column<std::uint8_t> kind{*this, 1, "kind"};
  Column<Row> name{*this, 2, "name", kNoRow};
  Column<oaLayerNum> layer1{*this, 3, "layer1"};
  Column<oaLayerNum> layer2{*this, 4, "layer2"};
  Column<float> resistancePerCut{*this, 5, "resistancePerCut"};
  // Row of the table for standard or custom definitions.
  Column<Row> payload{*this, 6, "payload", kNoRow};
};

class StdViaDefTable : public Table {
public:
  explicit StdViaDefTable(Database &database);
  Column<ViaParamValues> params{*this, 1, "params"};
  Column<oaLayerNum> implant1{*this, 2, "implant1"};
  Column<oaLayerNum> implant2{*this, 3, "implant2"};
  Column<std::uint8_t> implants{*this, 4, "implants"}; // bits: 1 has implant1, 2 has implant2
};

class CustomViaDefTable : public Table {
public:
  explicit CustomViaDefTable(Database &database);
  // Native texts.
  Column<Row> lib{*this, 1, "lib", kNoRow};
  Column<Row> cell{*this, 2, "cell", kNoRow};
  Column<Row> view{*this, 3, "view", kNoRow};
};

// A row for each library whose technology this one refers to, in the order of the search.
class TechReferenceTable : public Table {
public:
  explicit TechReferenceTable(Database &database);
  Column<std::uint8_t> kind{*this, 1, "kind"}; // oacTechType; the headers' own number is too large
  Column<Row> lib{*this, 2, "lib", kNoRow};    // native text
};

// An open technology.
class TechDatabase : public OpenDatabase {
public:
  explicit TechDatabase(DatabasePlace place);
  // Lets go of the technologies that it refers to.
  ~TechDatabase() override;

  TechAttributesTable attributes{*this};
  UnitsTable units{*this};
  LayerTable layers{*this};
  PurposeTable purposes{*this};
  ViaDefTable viaDefs{*this};
  StdViaDefTable stdViaDefs{*this};
  CustomViaDefTable customViaDefs{*this};
  MissingCutTable missingCuts{*this, kTechMissingCutTable};
  TechReferenceTable references{*this};

  oaTech *object();
  static TechDatabase &of(const oaTechObject *object);
  static OpenRegistry<TechDatabase> &registry();
  static const OpenErrorIds &errorIdsOfLayer();

  bool hasReferences() const { return references.nextAlive(kNoRow) != kNoRow; }
  // The technology that a row of the references stands for, opened for reading when it is not open. NULL when its
  // library is not open or has none that can be read.
  TechDatabase *referenced(Row row);
  // This technology and what it refers to, directly or through others: depth first, itself first, each once. What
  // cannot be opened is left out.
  std::vector<TechDatabase *> graph();
  // In place of the references that there are. The caller has checked for circles and conflicts.
  void setReferences(const std::vector<TechDatabase *> &techs);

  // In this technology alone; kNoRow when there is none.
  Row findLayer(const std::string &name);
  Row findLayer(oaLayerNum number);
  Row findPurpose(const std::string &name);
  Row findPurpose(oaPurposeNum number);
  Row findViaDef(const std::string &name);
  // Raise the API's errors for names and numbers in use, also in technologies that refer to each other with this one.
  Row addLayer(oaTypeEnum type, const std::string &name, oaLayerNum number);
  Row addPurpose(const std::string &name, oaPurposeNum number);
  Row addViaDef(oaTypeEnum type, const std::string &name, oaLayerNum layer1, oaLayerNum layer2);
  void renameLayer(Row row, const std::string &name);
  void renumberLayer(Row row, oaLayerNum number);
  // With the derived layers and via definitions that use it.
  void destroyLayer(Row row);
  void renamePurpose(Row row, const std::string &name);
  void renumberPurpose(Row row, oaPurposeNum number);

  // Hides Database::touch(): designs depend on technologies that are not theirs alone.
  void touch() {
    ++changes_;
    Database::touch();
  }
  // Grows with every change of any open technology.
  static std::uint64_t changes() { return changes_; }

  // The row of the units table for a view type, kNoRow when nothing was set.
  Row findUnits(Row viewType);
  Row getUnits(Row viewType);

protected:
  void initialiseNew() override;
  void afterLoad() override;
  void rowIsGoing(Table &table, Row row) override;
  void contentsChanged() override;

private:
  void addReservedPurposes();
  void buildIndexes();
  void checkLayerName(const std::string &name);
  void checkLayerNumber(oaLayerNum number);
  void checkPurposeName(const std::string &name);
  void checkPurposeNumber(oaPurposeNum number);
  void destroyUsersOfLayer(oaLayerNum number);
  void releaseReferences();

  static std::uint64_t changes_;
  bool areIndexesBuilt_ = false;
  NameIndex layersByName_, purposesByName_, viaDefsByName_;
  std::unordered_map<oaLayerNum, Row> layersByNumber_;
  std::unordered_map<oaPurposeNum, Row> purposesByNumber_;
  // By row of the references; each is held open by a reference count.
  std::unordered_map<Row, TechDatabase *> bound_;
};

// Units that hold where nothing was set. `viewType` is a row of ViewTypes; raises oacInvalidTechViewType unless it is a
// design type.
oaUInt4 defaultDbuPerUU(Row viewType);
oaUserUnitsTypeEnum defaultUserUnits(Row viewType);
// Of a technology, of the first that it refers to which says anything, or the default; `tech` may be NULL.
oaUInt4 dbuPerUU(TechDatabase *tech, Row viewType, bool isLocal = false);
oaUserUnitsTypeEnum userUnits(TechDatabase *tech, Row viewType, bool isLocal = false);

// The technology that a library uses, through its attachments, open in any mode. NULL when it is not open.
TechDatabase *findTech(Library &library);
// The same; opens it for reading when it is not open, and takes a reference, which releaseTech() gives back. NULL,
// never an exception, when there is none or it cannot be read.
TechDatabase *acquireTech(Library &library);
void releaseTech(TechDatabase &tech);

} // namespace kit
} // namespace OpenAccess_4

#endif
