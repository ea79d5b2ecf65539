// What headers of vias are bound to: the definition in the design's technology, and the master that it makes.

#include "designlife.h"
#include "oa/oaException.h"
#include "oa/oaNameSpaces.h"
#include "oa/oaTech.h"
#include "stdviamaster.h"
#include "techdatabase.h"
#include "viaaccess.h"
#include "viareferences.h"
#include "viavalues.h"

#include <cstring>

namespace OpenAccess_4 {
namespace kit {

namespace {

// The kinds of definitions and headers come in pairs.
oaTypeEnum definitionKindOf(const DesignDatabase &design, Row header) {
  return design.viaHeaders.kind[header] == oacStdViaHeaderType ? oacStdViaDefType : oacCustomViaDefType;
}

void noteSource(BoundVia &bound, oaViaDef *definition) {
  const TechDatabase &tech = TechDatabase::of(definition);
  const Row payload = tech.viaDefs.payload[rowOf(definition)];
  bound.definition = definition;
  if (definition->getType() == oacStdViaDefType) {
    bound.params = tech.stdViaDefs.params[tech.stdViaDefs.checkRow(payload, "a standard via definition")];
  } else {
    const CustomViaDefTable &customs = tech.customViaDefs;
    customs.checkRow(payload, "a custom via definition");
    bound.lib = customs.lib[payload];
    bound.cell = customs.cell[payload];
    bound.view = customs.view[payload];
  }
}

// Whether the definition is still there and still what the master was made from.
bool isCurrent(const DesignDatabase &design, Row header, const BoundVia &bound) {
  const oaViaDef *definition = bound.definition;
  if (!definition->isValid() || definition->getType() != definitionKindOf(design, header)) {
    return false;
  }
  BoundVia now;
  noteSource(now, bound.definition);
  return std::memcmp(&now.params, &bound.params, sizeof now.params) == 0 && now.lib == bound.lib &&
         now.cell == bound.cell && now.view == bound.view;
}

// Designs that cannot be opened or drawn are no errors of the design that places them.
oaDesign *openStdMaster(DesignDatabase &design, Row header, const oaStdViaDef *definition) {
  try {
    oaViaParam defaults;
    definition->getParams(defaults);
    return openStdViaMaster(definition, effectiveViaParam(ownParamOf(design, header), defaults));
  } catch (const oaException &) {
    return nullptr;
  }
}

oaDesign *openCustomMaster(const DesignDatabase &design, Row header, const oaCustomViaDef *definition) {
  oaScalarName lib, cell, view;
  definition->getLibName(lib);
  definition->getCellName(cell);
  definition->getViewName(view);
  try {
    oaParamArray params;
    getCustomViaParams(design, header, params);
    oaDesign *master =
        isSuperHeader(design, header) ? oaDesign::open(lib, cell, view, 'r') : oaDesign::open(lib, cell, view, params);
    if (!reachesThroughMasters(designOf(master), design)) {
      return master;
    }
    master->close();
  } catch (const oaException &) { // NOLINT(bugprone-empty-catch): as above
  }
  return nullptr;
}

// The definition may have another master than when the header was stored.
void followDefinition(DesignDatabase &design, Row header, const oaCustomViaDef *definition) {
  const oaNativeNS ns;
  ViaHeaderTable &headers = design.viaHeaders;
  const auto follow = [&](Column<Row> &column, void (oaCustomViaDef::*get)(const oaNameSpace &, oaString &) const) {
    oaString text;
    (definition->*get)(ns, text);
    if (design.strings().text(column[header]) != textOf(text)) {
      column.set(header, design.strings().intern(textOf(text)));
    }
  };
  follow(headers.lib, &oaCustomViaDef::getLibName);
  follow(headers.cell, &oaCustomViaDef::getCellName);
  follow(headers.view, &oaCustomViaDef::getViewName);
}

} // namespace

void unbindViaMaster(DesignDatabase &design, Row header) {
  const auto found = design.boundVias.find(header);
  if (found != design.boundVias.end()) {
    DesignDatabase &master = *found->second.master;
    design.boundVias.erase(found); // first: a master that goes tells its users so
    DesignDatabase::release(master);
  }
}

oaViaDef *viaDefOf(DesignDatabase &design, Row header) {
  const oaTech *tech = design.tech();
  if (tech == nullptr) {
    return nullptr;
  }
  const std::string name = design.strings().text(design.viaHeaders.name[header]);
  oaViaDef *definition = oaViaDef::find(tech, oaString(name.c_str()));
  return definition != nullptr && definition->getType() == definitionKindOf(design, header) ? definition : nullptr;
}

namespace {

oaBox boxOfMaster(const oaDesign *master) {
  oaBox box;
  box.init();
  if (const oaBlock *block = master->getTopBlock()) {
    block->getBBox(box);
  }
  return box;
}

} // namespace

oaDesign *bindViaMaster(DesignDatabase &design, Row header) {
  const auto found = design.boundVias.find(header);
  if (found != design.boundVias.end()) {
    if (isCurrent(design, header, found->second)) {
      return found->second.master->design();
    }
    unbindViaMaster(design, header);
    design.boxMayChange();
  }
  oaViaDef *definition = viaDefOf(design, header);
  if (definition == nullptr) {
    return nullptr;
  }
  const PinnedDesign pinned(design);
  oaDesign *master = nullptr;
  if (definition->getType() == oacStdViaDefType) {
    master = openStdMaster(design, header, static_cast<oaStdViaDef *>(definition));
  } else {
    const auto *custom = static_cast<oaCustomViaDef *>(definition);
    followDefinition(design, header, custom);
    master = openCustomMaster(design, header, custom);
  }
  if (master == nullptr) {
    return nullptr;
  }
  BoundVia bound;
  bound.master = &designOf(master);
  // An evaluator may have closed the design or the technology, taken the vias away, or bound the header itself.
  const bool isWanted = !design.isGone() && design.viaHeaders.isAlive(header) && definition->isValid();
  if (!isWanted || design.boundVias.count(header) != 0) {
    DesignDatabase::release(*bound.master);
    return isWanted ? design.boundVias[header].master->design() : nullptr;
  }
  noteSource(bound, definition);
  design.boundVias.emplace(header, bound);
  if (master->getTopBlock() != nullptr) { // a sub master without its evaluator has none, but had one once
    design.viaHeaders.masterBox.set(header, boxOfMaster(master));
  }
  design.boxMayChange();
  return master;
}

void followViaDef(DesignDatabase &design, Row header) {
  if (const oaViaDef *definition = viaDefOf(design, header)) {
    followDefinition(design, header, static_cast<const oaCustomViaDef *>(definition));
  }
}

bool isViaBound(DesignDatabase &design, Row header) { return bindViaMaster(design, header) != nullptr; }

oaBox viaMasterBox(DesignDatabase &design, Row header) {
  const oaDesign *master = bindViaMaster(design, header);
  return master == nullptr || master->getTopBlock() == nullptr ? design.viaHeaders.masterBox[header]
                                                               : boxOfMaster(master);
}

void getEffectiveParams(DesignDatabase &design, Row header, oaViaParam &params) {
  params = ownParamOf(design, header);
  if (oaViaDef *definition = viaDefOf(design, header)) {
    oaViaParam defaults;
    static_cast<oaStdViaDef *>(definition)->getParams(defaults);
    params = effectiveViaParam(params, defaults);
  }
}

bool areViaMastersCurrent(const DesignDatabase &design) {
  const ViaHeaderTable &headers = design.viaHeaders;
  for (Row header = headers.nextAlive(kNoRow); header != kNoRow; header = headers.nextAlive(header)) {
    if (isSuperHeader(design, header)) {
      continue;
    }
    const auto bound = design.boundVias.find(header);
    if (bound == design.boundVias.end() || !isCurrent(design, header, bound->second)) {
      return false;
    }
  }
  return true;
}

void bindViaMasters(DesignDatabase &design) {
  const PinnedDesign pinned(design);
  for (Row header = design.viaHeaders.nextAlive(kNoRow); header != kNoRow && !design.isGone();
       header = design.viaHeaders.nextAlive(header)) {
    if (!isSuperHeader(design, header)) {
      (void)bindViaMaster(design, header);
    }
  }
}

void storeViaMasters(DesignDatabase &design) {
  try {
    bindViaMasters(design);
  } catch (const oaException &) { // NOLINT(bugprone-empty-catch): a damaged header keeps what it has; the rest is saved
  }
  for (const auto &entry : design.boundVias) {
    if (entry.second.master->blockRow() != kNoRow) {
      design.viaHeaders.masterBox.set(entry.first, boxOfMaster(entry.second.master->design()));
    }
  }
}

} // namespace kit
} // namespace OpenAccess_4
