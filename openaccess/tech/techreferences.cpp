#include "techreferences.h"

#include "diskname.h"
#include "library.h"
#include "oa/oaException.h"
#include "oa/oaNameSpaces.h"
#include "oa/oaScalarName.h"
#include "raise.h"
#include "viewtypes.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace OpenAccess_4 {
namespace kit {

namespace {

// Where each key was met first.
template <typename Key> class FirstOwners {
public:
  // NULL unless another technology has that key already.
  const TechDatabase *otherOwner(const Key &key, const TechDatabase &tech) {
    const auto added = owners_.emplace(key, &tech);
    return added.second || added.first->second == &tech ? nullptr : added.first->second;
  }

private:
  std::unordered_map<Key, const TechDatabase *> owners_;
};

TechConflict conflict(oaUInt4 id, const TechDatabase &one, const TechDatabase &other, const std::string &what) {
  return {id, one.label() + " and " + other.label() + ": both have " + what};
}

// A table whose rows have a name and, unless `numbers` is NULL, a number.
struct NamedRows {
  Table &table;
  const Column<Row> &names;
  const Column<std::uint32_t> *numbers;
};

TechConflict findNamedConflict(const std::vector<TechDatabase *> &techs, NamedRows (*rowsOf)(TechDatabase &),
                               oaUInt4 nameId, oaUInt4 numberId, const std::string &what) {
  FirstOwners<std::string> names;
  FirstOwners<std::uint32_t> numbers;
  for (TechDatabase *tech : techs) {
    const NamedRows rows = rowsOf(*tech);
    for (Row row = rows.table.nextAlive(kNoRow); row != kNoRow; row = rows.table.nextAlive(row)) {
      if (&rows.table == &tech->purposes && (*rows.numbers)[row] >= oavPurposeNumberFillOPC) {
        continue;
      }
      const std::string name = tech->strings().text(rows.names[row]);
      if (const TechDatabase *other = names.otherOwner(name, *tech)) {
        return conflict(nameId, *other, *tech, "a " + what + " of the name \"" + name + "\"");
      }
      if (rows.numbers == nullptr) {
        continue;
      }
      const std::uint32_t number = (*rows.numbers)[row];
      if (const TechDatabase *other = numbers.otherOwner(number, *tech)) {
        return conflict(numberId, *other, *tech, "a " + what + " of the number " + std::to_string(number));
      }
    }
  }
  return {};
}

NamedRows layersOf(TechDatabase &tech) { return {tech.layers, tech.layers.name, &tech.layers.number}; }
NamedRows purposesOf(TechDatabase &tech) { return {tech.purposes, tech.purposes.name, &tech.purposes.number}; }
NamedRows viaDefsOf(TechDatabase &tech) { return {tech.viaDefs, tech.viaDefs.name, nullptr}; }

TechConflict findUnitsConflict(const std::vector<TechDatabase *> &techs) {
  std::unordered_map<Row, const TechDatabase *> owners;
  std::unordered_map<Row, oaUInt4> values;
  for (TechDatabase *tech : techs) {
    for (Row row = tech->units.nextAlive(kNoRow); row != kNoRow; row = tech->units.nextAlive(row)) {
      const Row viewType = tech->units.viewType[row];
      const oaUInt4 value = tech->units.dbuPerUU[row];
      if (value == 0 || (owners.emplace(viewType, tech).second && values.emplace(viewType, value).second) ||
          values[viewType] == value) {
        continue;
      }
      return {oacInvalidDBUPerUU, owners[viewType]->label() + " and " + tech->label() + ": have " +
                                      std::to_string(values[viewType]) + " and " + std::to_string(value) +
                                      " database units a user unit for one view type"};
    }
  }
  return {};
}

} // namespace

TechConflict findConflict(const std::vector<TechDatabase *> &techs) {
  TechConflict found = findNamedConflict(techs, layersOf, oacLayerNameExists, oacLayerNumberExists, "layer");
  if (found.id == 0) {
    found = findNamedConflict(techs, purposesOf, oacPurposeNameExists, oacPurposeNumberExists, "purpose");
  }
  if (found.id == 0) {
    found = findNamedConflict(techs, viaDefsOf, oacViaDefExists, 0, "via definition");
  }
  return found.id == 0 ? findUnitsConflict(techs) : found;
}

bool contains(const std::vector<TechDatabase *> &techs, const TechDatabase &tech) {
  return std::find(techs.begin(), techs.end(), &tech) != techs.end();
}

void addMissing(std::vector<TechDatabase *> &techs, const std::vector<TechDatabase *> &more) {
  for (TechDatabase *tech : more) {
    if (!contains(techs, *tech)) {
      techs.push_back(tech);
    }
  }
}

std::vector<TechDatabase *> techsInReach(TechDatabase &tech) {
  std::vector<TechDatabase *> techs = tech.graph();
  // By index: a graph opens what it needs, which lengthens the list.
  const auto &open = TechDatabase::registry().all();
  for (std::size_t i = 0; i < open.size(); ++i) {
    TechDatabase &other = *open[i];
    if (&other == &tech || !other.hasReferences()) {
      continue;
    }
    const std::vector<TechDatabase *> graph = other.graph();
    if (contains(graph, tech)) {
      addMissing(techs, graph);
    }
  }
  return techs;
}

oaObject *GraphRowsKind::next(const CollectionQuestion &question, oaUInt4 &position, oaUInt4 &hint) const {
  auto &tech = static_cast<TechDatabase &>(question.table->database());
  const std::vector<TechDatabase *> graph = tech.graph();
  while (hint < graph.size()) {
    Table &table = tableOf_(*graph[hint]);
    const Row row = table.nextAlive(position);
    if (row == kNoRow) {
      ++hint;
      position = kNoRow;
      continue;
    }
    position = row;
    const bool isRepeated =
        hint > 0 && &table == &graph[hint]->purposes && graph[hint]->purposes.number[row] >= oavPurposeNumberFillOPC;
    if (!isRepeated) {
      return table.handle(row, table.kindOf(row));
    }
  }
  return nullptr;
}

TechObservers &TechObservers::instance() {
  // Never destroyed: an observer with static lifetime unregisters late.
  static TechObservers &observers = *new TechObservers;
  return observers;
}

void TechObservers::tellConflict(oaTech *tech, const TechConflict &conflict) {
  const oaString text(conflict.message.c_str());
  tell([&](oaObserver<oaTech> &observer) { observer.onConflict(tech, conflict.id, text); });
}

// What a technology database does with its references.

TechReferenceTable::TechReferenceTable(Database &database)
    : Table(database, kTechReferenceTable, "references", TableLife::kinds) {
  setKindColumn(kind);
  lib.refersTo(kStringTable);
}

TechDatabase::~TechDatabase() {
  for (const auto &other : registry().all()) {
    auto &bound = other->bound_;
    for (auto entry = bound.begin(); entry != bound.end();) {
      entry = entry->second == this ? bound.erase(entry) : std::next(entry);
    }
  }
  releaseReferences();
}

void TechDatabase::releaseReferences() {
  // Off the list first: what is released here may come back to it.
  const auto going = std::move(bound_);
  bound_.clear();
  for (const auto &[row, tech] : going) {
    releaseTech(*tech);
  }
}

TechDatabase *TechDatabase::referenced(Row row) {
  const auto found = bound_.find(row);
  if (found != bound_.end()) {
    return found->second;
  }
  TechDatabase *tech = nullptr;
  try {
    Library *library =
        Libraries::instance().find(oaScalarName(oaNativeNS(), strings().text(references.lib[row]).c_str()));
    tech = library == nullptr ? nullptr : acquireTech(*library);
  } catch (const oaException &) {
    return nullptr;
  }
  if (tech == this) { // only a damaged file says so
    releaseReference();
    return nullptr;
  }
  if (tech != nullptr) {
    bound_.emplace(row, tech);
    if (!TechObservers::instance().isEmpty()) {
      const TechConflict conflict = findConflict(graph());
      if (conflict.id != 0) {
        TechObservers::instance().tellConflict(object(), conflict);
      }
    }
  }
  return tech;
}

std::vector<TechDatabase *> TechDatabase::graph() {
  std::vector<TechDatabase *> found;
  std::vector<TechDatabase *> next = {this};
  while (!next.empty()) {
    TechDatabase *tech = next.back();
    next.pop_back();
    if (contains(found, *tech)) {
      continue;
    }
    found.push_back(tech);
    std::vector<TechDatabase *> direct;
    for (Row row = tech->references.nextAlive(kNoRow); row != kNoRow; row = tech->references.nextAlive(row)) {
      if (TechDatabase *other = tech->referenced(row)) {
        direct.push_back(other);
      }
    }
    // The first reference comes off the stack first.
    next.insert(next.end(), direct.rbegin(), direct.rend());
  }
  return found;
}

void TechDatabase::setReferences(const std::vector<TechDatabase *> &techs) {
  for (Row row = references.nextAlive(kNoRow); row != kNoRow; row = references.nextAlive(row)) {
    destroyRow(references, row);
  }
  // Held before the old ones are given back, which may be the same.
  std::unordered_map<Row, TechDatabase *> bound;
  for (TechDatabase *tech : techs) {
    const Row row = references.addRow();
    references.kind.set(row, oacTechType);
    references.lib.set(row, strings().add(nativeText(tech->place().libraryName)));
    tech->addReference();
    bound.emplace(row, tech);
  }
  releaseReferences();
  bound_ = std::move(bound);
  noteAbandonedRows();
  touch();
}

} // namespace kit

oaObserver<oaTech>::oaObserver(oaUInt4 priority, oaBoolean enabled) : oaStdObserver(priority, enabled) {
  kit::TechObservers::instance().add(this);
}

oaObserver<oaTech>::~oaObserver() { kit::TechObservers::instance().remove(this); }

void oaObserver<oaTech>::onConflict(oaTech *, oaUInt4, const oaString &) {}

} // namespace OpenAccess_4
