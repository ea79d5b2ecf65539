#ifndef OAKIT_DESIGNDATABASE_H
#define OAKIT_DESIGNDATABASE_H

// An open design: the tables, and what is derived from them. Everything derived is built at first need, from the tables
// alone, and dropped when the contents change as a whole; so opening a design costs the same whatever its size.

#include "connectivitystate.h"
#include "connectivitytables.h"
#include "designtables.h"
#include "opendatabase.h"
#include "shapetables.h"
#include "viastate.h"
#include "viatables.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace OpenAccess_4 {

class oaDesign;
class oaTech;

namespace kit {

struct StdViaMaster;
struct SubMasterState;
struct SuperMasterState;

class DesignDatabase : public OpenDatabase {
public:
  // `cell` and `view` as they stand on disk; the library's name is in the place.
  DesignDatabase(DatabasePlace place, std::string cell, std::string view);
  ~DesignDatabase() override;

  static const OpenErrorIds &errorIds();
  static OpenRegistry<DesignDatabase> &registry();
  // Out of memory, whatever the count is: headers of other designs that are bound to it become unbound first.
  static void purge(DesignDatabase &design);
  // It was purged, and is there only because somebody is still working on it; see designlife.h.
  bool isGone() const { return isGone_; }
  void pin() { ++pins_; }
  void unpin() { --pins_; }
  // Gives the memory of designs back that nobody can be working on any more.
  static void forgetGone();

  oaDesign *design();
  const std::string &libName() const { return place().libraryName; }
  const std::string &cellName() const { return cell_; }
  const std::string &viewName() const { return view_; }
  // Row of the session's view types, or kNoRow.
  Row viewType();
  // The technology of the library when it is open or can be opened; NULL otherwise.
  oaTech *tech();
  // The row of the block, or kNoRow.
  Row blockRow() const { return blocks.nextAlive(kNoRow); }
  // Open designs are numbered in the order of opening.
  std::uint32_t serialNumber() const { return serialNumber_; }

  DesignAttributesTable attributes{*this};
  BlockTable blocks{*this};
  LPPTable lpps{*this};
  LayerHeaderTable layerHeaders{*this};
  ShapeTable shapes{*this};
  PointTable points{*this};
  OutlineTable outlines{*this};
  PathTable paths{*this};
  PathSegTable pathSegs{*this};
  ArcTable arcs{*this};
  DonutTable donuts{*this};
  DotTable dots{*this};
  TextTable texts{*this};
  TextDisplayTable textDisplays{*this};
  NetTable nets{*this};
  TermTable terms{*this};
  PinTable pins{*this};
  InstHeaderTable instHeaders{*this};
  InstTable insts{*this};
  ArrayTable arrays{*this};
  InstTermTable instTerms{*this};
  BitsTable netBits{*this, kNetBitsTable, "netBits", kBusNetDefTable, kNetMemberTable};
  MemberTable netMembers{*this, kNetMemberTable, "netMembers", kNetTable};
  BitsDefTable busNetDefs{*this, kBusNetDefTable, "busNetDefs"};
  BitsTable termBits{*this, kTermBitsTable, "termBits", kBusTermDefTable, kTermMemberTable};
  MemberTable termMembers{*this, kTermMemberTable, "termMembers", kTermTable};
  BitsDefTable busTermDefs{*this, kBusTermDefTable, "busTermDefs"};
  BitsTable instBits{*this, kInstBitsTable, "instBits", kVectorInstDefTable, kInstMemberTable};
  MemberTable instMembers{*this, kInstMemberTable, "instMembers", kInstTable};
  BitsDefTable vectorInstDefs{*this, kVectorInstDefTable, "vectorInstDefs"};
  MemberTable instTermMembers{*this, kInstTermMemberTable, "instTermMembers", kInstTermTable};
  ViaHeaderTable viaHeaders{*this};
  ViaTable vias{*this};
  ViaParamTable viaParams{*this};
  MissingCutTable viaMissingCuts{*this, kViaMissingCutTable};
  SuperMasterTable superMasters{*this};

  // Of a master of standard vias what it is made from; NULL for all other designs.
  std::unique_ptr<StdViaMaster> stdViaMaster;
  // Of a super master what is known only while it is open, made at first need; of a sub master what it is made from.
  // NULL for all other designs.
  std::unique_ptr<SuperMasterState> superState;
  std::unique_ptr<SubMasterState> subState;

  // Look-ups, each built by the room that uses it.
  NameIndex netsByName, termsByName, instsByName;
  ConnectivityState connectivity;
  ViaState viaState;
  BitsIndexes netBitsIndexes, termBitsIndexes, instBitsIndexes;
  OwnerIndex equivalentNets;      // net named in NetTable::equivalents -> nets of the set
  OwnerIndex instTermsOfInstTerm; // implicit connection -> connections of several bits that it is a bit of
  OwnerIndex termsOfNet, pinsOfTerm, instsOfHeader, instTermsOfInst;
  // Nets of several bits apart: they have few of the connections, and are asked for theirs while no other net is.
  OwnerIndex instTermsOfBitNet, instTermsOfWideNet;
  // These are read and written through figureindexes.h only: rows that were destroyed or have left their owner stay in
  // them and are skipped.
  OwnerIndex shapesOfLpp, shapesOfNet, shapesOfPin, instsOfPin, viasOfNet, viasOfPin, displaysOfObject;
  // Next numbers for automatic names.
  std::uint32_t nextNetNumber = 0, nextInstNumber = 0, nextPinNumber = 0;
  // Masters that instance headers have bound: header row -> design. Each holds one reference of the master's count;
  // forgetMasters() gives them back.
  std::unordered_map<Row, DesignDatabase *> boundMasters;
  // The same for headers of vias.
  std::unordered_map<Row, BoundVia> boundVias;
  void forgetMasters();
  // Of instances and vias; some may be there more than once.
  std::vector<DesignDatabase *> masters() const;
  // One reference less; the last one purges the design.
  static void release(DesignDatabase &design);

  // Headers of layers and of layer-purpose pairs.
  // The header of a pair, which is made when missing. `lastLpp_` remembers the last answer: shapes are made in runs.
  Row lppFor(oaLayerNum layer, oaPurposeNum purpose) {
    if (__builtin_expect(lastLpp_ != kNoRow && lastLayer_ == layer && lastPurpose_ == purpose, 1)) {
      return lastLpp_;
    }
    return findOrAddLpp(layer, purpose);
  }
  // Layer and purpose of a header, from a copy of the header table that is filled as they are asked for.
  struct alignas(16) LppNumbers { // a power of two, for the sake of indexing
    oaLayerNum layer;
    oaPurposeNum purpose;
    bool isKnown;
  };
  // NULL when they were not asked for yet; numbersOf() finds them then.
  const LppNumbers *knownNumbers(Row lpp) const {
    return __builtin_expect(lpp < lppNumbers_.size() && lppNumbers_[lpp].isKnown, 1) ? &lppNumbers_[lpp] : nullptr;
  }
  const LppNumbers &numbersOf(Row lpp);
  // What a shape's handle notes of its header: one more than the row, or 0 when its numbers are not at hand.
  // gatherNumbers() brings those of all headers at hand; they stay there as long as handles live.
  std::uint16_t asideOfLpp(Row lpp) const {
    return static_cast<std::uint16_t>(lpp < gatheredLpps_ && lppNumbers_[lpp].isKnown ? lpp + 1 : 0);
  }
  void gatherNumbers();
  const LppNumbers &numbersByAside(std::uint16_t aside) const { return lppNumbers_[aside - 1U]; }
  Row findLpp(oaLayerNum layer, oaPurposeNum purpose);
  Row findLayerHeader(oaLayerNum layer);
  // A shape leaves the pair; without shapes the header goes, and with the layer's last pair the layer's.
  void leaveLpp(Row lpp);

  // Box of the block: shapes, text displays, instances and vias. Inverted when it is empty.
  const oaBox &blockBox();
  // Union of the boxes of all shapes but text displays. Known exactly while shapes are only added; otherwise computed
  // when asked for.
  const oaBox &shapeBox();
  void shapeBoxGrows(const oaBox &box) {
    if (__builtin_expect(!shapeBox_.contains(box), 0)) {
      shapeBox_.merge(box);
      ++boxGeneration_;
    }
  }
  // Called with the box that a shape had before it moved, changed or went.
  void shapeBoxLeaves(const oaBox &box) {
    ++boxGeneration_;
    if (box.left() <= shapeBox_.left() || box.bottom() <= shapeBox_.bottom() || box.right() >= shapeBox_.right() ||
        box.top() >= shapeBox_.top()) {
      isShapeBoxKnown_ = false;
    }
  }

  // Hides Database::touch() for the sake of instances, whose changes are told by this alone.
  void touch() {
    boxMayChange();
    Database::touch();
  }
  // By something outside of the design.
  static void boxMayChange() { ++boxGeneration_; }
  static std::uint64_t boxGeneration() { return boxGeneration_; }

protected:
  void rowIsGoing(Table &table, Row row) override;
  void contentsChanged() override;
  void checkLoaded() override;
  void initialiseNew() override;
  void beforeDrop() override;
  void beforeSave() override;

private:
  // Everything that it holds of others.
  void letGo();

  bool isGone_ = false;
  unsigned pins_ = 0;
  std::string cell_, view_;
  oaTech *heldTech_ = nullptr; // opened by this design
  std::uint32_t serialNumber_;

  Row findOrAddLpp(oaLayerNum layer, oaPurposeNum purpose);
  void buildLppNumbers();

  std::vector<LppNumbers> lppNumbers_;
  Row gatheredLpps_ = 0; // at most 0xfffe: a note has 16 bits
  Row lastLpp_ = kNoRow;
  oaLayerNum lastLayer_ = 0;
  oaPurposeNum lastPurpose_ = 0;
  std::unordered_map<std::uint64_t, Row> lppByNumbers_; // layer << 32 | purpose
  struct LayerPairs {
    Row header;
    std::uint32_t pairs;
  };
  std::unordered_map<oaLayerNum, LayerPairs> layerHeaderByNumber_;
  bool isLppByNumbersBuilt_ = false;
  bool isShapeBoxKnown_ = true;
  oaBox shapeBox_;

  // Grows with every change by which the box of any open design may change, since boxes of masters are parts of others.
  static std::uint64_t boxGeneration_;
  static std::uint64_t techChanges_;     // of technologies, when the counter above last grew because of one
  std::uint64_t blockBoxGeneration_ = 0; // 0: unknown
  bool isFindingBlockBox_ = false;       // guards against designs that contain themselves
  oaBox blockBox_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
