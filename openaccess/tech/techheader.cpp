// References of a technology to others, as clients see them.
#include "oa/oaTechHeader.h"

#include "oa/oaNameSpaces.h"
#include "oa/oaScalarName.h"
#include "oa/oaTech.h"
#include "oa/oaTechException.h"
#include "raise.h"
#include "techreferences.h"

namespace OpenAccess_4 {

namespace {

using kit::kNoRow;
using kit::Row;
using kit::TechDatabase;

oaTechHeader *headerObject(TechDatabase &tech, Row row) {
  return static_cast<oaTechHeader *>(tech.references.handleOfType(row, oacTechHeaderType));
}

template <typename Accepts> oaTechHeader *findHeader(const oaTech *tech, Accepts accepts) {
  TechDatabase &database = TechDatabase::of(tech);
  for (Row row = database.references.nextAlive(kNoRow); row != kNoRow; row = database.references.nextAlive(row)) {
    if (accepts(database, row)) {
      return headerObject(database, row);
    }
  }
  return nullptr;
}

// The headers of all open technologies that refer to the one of the question.
class UsedInKind : public kit::CollectionKind {
public:
  oaObject *next(const kit::CollectionQuestion &question, oaUInt4 &position, oaUInt4 &hint) const override {
    auto &wanted = static_cast<TechDatabase &>(question.table->database());
    const auto &open = TechDatabase::registry().all();
    while (hint < open.size()) {
      TechDatabase &tech = *open[hint];
      const Row row = tech.references.nextAlive(position);
      if (row == kNoRow) {
        ++hint;
        position = kNoRow;
        continue;
      }
      position = row;
      if (tech.referenced(row) == &wanted) {
        return headerObject(tech, row);
      }
    }
    return nullptr;
  }
};

} // namespace

void oaTechHeader::getRefLibName(oaScalarName &refLibName) const {
  TechDatabase &tech = TechDatabase::of(this);
  refLibName.init(oaNativeNS(), tech.strings().text(tech.references.lib[kit::rowOf(this)]).c_str());
}

void oaTechHeader::getRefLibName(const oaNameSpace &ns, oaString &refLibName) const {
  oaScalarName name;
  getRefLibName(name);
  name.get(ns, refLibName);
}

oaTech *oaTechHeader::getRefTech() const {
  TechDatabase *tech = TechDatabase::of(this).referenced(kit::rowOf(this));
  return tech == nullptr ? nullptr : tech->object();
}

oaBoolean oaTechHeader::isBound() const { return getRefTech() != nullptr; }

oaTechHeader *oaTechHeader::find(const oaTech *tech, const oaScalarName &refLibName) {
  oaString wanted;
  refLibName.get(oaNativeNS(), wanted);
  return findHeader(tech, [&](TechDatabase &database, Row row) {
    return database.strings().text(database.references.lib[row]) == std::string(wanted);
  });
}

oaTechHeader *oaTechHeader::find(const oaTech *tech, const oaTech *refTech) {
  const TechDatabase &wanted = TechDatabase::of(refTech);
  return findHeader(tech, [&](TechDatabase &database, Row row) { return database.referenced(row) == &wanted; });
}

void oaTech::setRefs(const oaTechArray &refs) {
  TechDatabase &tech = TechDatabase::of(this);
  std::vector<TechDatabase *> wanted;
  std::vector<TechDatabase *> graph = kit::techsInReach(tech);
  // What is referred to now goes, unless it is named again.
  std::vector<TechDatabase *> kept = {&tech};
  for (TechDatabase *other : graph) {
    if (kit::contains(other->graph(), tech)) {
      kit::addMissing(kept, {other});
    }
  }
  for (oaUInt4 i = 0; i < refs.getNumElements(); ++i) {
    TechDatabase &ref = TechDatabase::of(refs[i]);
    const std::vector<TechDatabase *> reached = ref.graph();
    if (kit::contains(reached, tech)) {
      raiseTech(oacInvalidTech, tech.label() + ": cannot refer to " + ref.label() +
                                    (&ref == &tech ? ", which is the same" : ", which refers back to it"));
    }
    kit::addMissing(wanted, {&ref});
    kit::addMissing(kept, reached);
  }
  const kit::TechConflict conflict = kit::findConflict(kept);
  if (conflict.id != 0) {
    raiseTech(conflict.id, conflict.message);
  }
  tech.setReferences(wanted);
}

void oaTech::unsetRefs() { TechDatabase::of(this).setReferences({}); }

void oaTech::getTechHeaders(oaTechHeaderArray &refHeaders, oaBoolean local) const {
  refHeaders.setNumElements(0);
  TechDatabase &tech = TechDatabase::of(this);
  for (TechDatabase *owner : local ? std::vector<TechDatabase *>{&tech} : tech.graph()) {
    for (Row row = owner->references.nextAlive(kNoRow); row != kNoRow; row = owner->references.nextAlive(row)) {
      refHeaders.append(headerObject(*owner, row));
    }
  }
}

oaBoolean oaTech::hasUnboundRefs() const {
  oaTechHeaderArray headers;
  getTechHeaders(headers);
  for (oaUInt4 i = 0; i < headers.getNumElements(); ++i) {
    if (!headers[i]->isBound()) {
      return true;
    }
  }
  return false;
}

oaCollection<oaTechHeader, oaTech> oaTech::getUsedIn() const {
  static const UsedInKind kind;
  return kit::CollectionAccess::make<oaCollection<oaTechHeader, oaTech>>(kind, &TechDatabase::of(this).references, 0);
}

} // namespace OpenAccess_4
