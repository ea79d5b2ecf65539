#ifndef OAKIT_VIAACCESS_H
#define OAKIT_VIAACCESS_H

// What the sources of the via classes share.

#include "connectivityaccess.h"
#include "oa/oaVia.h"
#include "oa/oaViaDef.h"

#include <string>

namespace OpenAccess_4 {
namespace kit {

// The row behind a via or header. Raises oacCorruptedDatabase when it is of no such kind. `kind` 0: any via.
DesignRow viaRow(const oaVia *via, std::uint8_t kind = 0);
DesignRow viaHeaderRow(const oaObject *header, std::uint8_t kind = 0);

// Headers. A via's header is one that may place vias: a sub header, or the header of a custom definition.

// The header of a via, which is of the via's kind.
Row headerOfVia(DesignDatabase &design, Row via);
bool isSubHeader(const DesignDatabase &design, Row header);
bool isSuperHeader(const DesignDatabase &design, Row header);
// The header of a definition: the super header of a standard one. kNoRow when there is none.
Row findViaHeader(DesignDatabase &design, oaTypeEnum kind, const std::string &name);
// The header for vias of a standard definition with these values (see ownViaParam), made when missing.
Row stdViaHeaderFor(DesignDatabase &design, const std::string &name, const oaViaParam &own);
// A custom definition and what a via of it was given. Names are native texts.
struct CustomViaSource {
  std::string name, lib, cell, view;
  oaParamArray params;
};
// The header for vias of a custom definition, made when missing.
Row customViaHeaderFor(DesignDatabase &design, const CustomViaSource &source);
// The via is not on its header any more; a header without users goes.
void leaveViaHeader(DesignDatabase &design, Row via);
void joinViaHeader(DesignDatabase &design, Row via, Row header);
// What the vias of a header do not take from the definition.
oaViaParam ownParamOf(const DesignDatabase &design, Row header);
// What the vias of a custom header were given; none for plain and super headers.
void getCustomViaParams(const DesignDatabase &design, Row header, oaParamArray &params);

OwnerIndex &viasOfHeader(DesignDatabase &design);
OwnerIndex &subHeadersOfHeader(DesignDatabase &design);

// Definitions and masters.

// NULL when the design's technology has no definition of that name and kind.
oaViaDef *viaDefOf(DesignDatabase &design, Row header);
// The master, bound when it is not yet or when the definition has changed; NULL when that fails.
oaDesign *bindViaMaster(DesignDatabase &design, Row header);
void unbindViaMaster(DesignDatabase &design, Row header);
// The stored names of a custom via's master become those that its definition has now, if there is one.
void followViaDef(DesignDatabase &design, Row header);
// The box of the master's block: what was stored while there is no master, inverted when that is unknown.
oaBox viaMasterBox(DesignDatabase &design, Row header);
bool isViaBound(DesignDatabase &design, Row header);
// The values of all vias of a header, the definition's included.
void getEffectiveParams(DesignDatabase &design, Row header, oaViaParam &params);

// Called whenever a via appears, goes, moves or changes its master.
inline void viasChanged(DesignDatabase &design) {
  design.viaState.isBoxKnown = false;
  design.touch();
}

} // namespace kit
} // namespace OpenAccess_4

#endif
