// Instances with their connections, and vias.

#include "oadump.h"

#include "oaconvert.h"
#include "objectnames.h"

using namespace oa;

namespace {

const oaUInt4 kAllInsts = oacInstIterAll;
const oaUInt4 kAllInstTerms = oacInstTermIterAll;

void writePlace(DumpText &text, const oaRef *ref) {
  oaPoint origin;
  ref->getOrigin(origin);
  text.point("origin", origin).word("orient", ref->getOrient().getName());
}

void writeArray(DumpText &text, const oaArrayInst *array) {
  text.number("rows", array->getNumRows()).number("cols", array->getNumCols());
  text.number("dX", array->getDX()).number("dY", array->getDY());
}

// One character for each cut, from the lower left to the right and then upwards; rows between commas.
std::string cutPattern(const oaViaParam &params) {
  std::string pattern;
  for (oaUInt4 row = 0; row < params.getCutRows(); ++row) {
    if (row > 0) {
      pattern += ',';
    }
    for (oaUInt4 column = 0; column < params.getCutColumns(); ++column) {
      pattern += params.getCutPatternVal(row, column) ? 'x' : '.';
    }
  }
  return pattern;
}

// The values that come from the via's definition.
std::string definedValues(const oaViaParam &params) {
  static const oaViaParamTypeEnum kTypes[] = {
      oacLayer1EncViaParamType,    oacLayer2EncViaParamType,    oacImplant1EncViaParamType, oacImplant2EncViaParamType,
      oacLayer1OffsetViaParamType, oacLayer2OffsetViaParamType, oacCutSpacingViaParamType,  oacOriginOffsetViaParamType,
      oacCutLayerViaParamType,     oacCutColumnsViaParamType,   oacCutRowsViaParamType,     oacCutWidthViaParamType,
      oacCutHeightViaParamType};
  std::string names;
  for (const oaViaParamTypeEnum type : kTypes) {
    if (params.hasDefault(type)) {
      names += (names.empty() ? "" : ",") + std::string(oaViaParamType(type).getName());
    }
  }
  return names.empty() ? "none" : names;
}

} // namespace

void writeViaParams(DumpText &text, const oaViaParam &params, int level) {
  text.begin(level, "viaParams").number("cutLayer", params.getCutLayer());
  text.number("cutWidth", params.getCutWidth()).number("cutHeight", params.getCutHeight());
  text.number("cutColumns", params.getCutColumns()).number("cutRows", params.getCutRows());
  text.vector("cutSpacing", params.getCutSpacing()).vector("originOffset", params.getOriginOffset());
  text.vector("layer1Enc", params.getLayer1Enc()).vector("layer2Enc", params.getLayer2Enc());
  text.vector("layer1Offset", params.getLayer1Offset()).vector("layer2Offset", params.getLayer2Offset());
  text.vector("implant1Enc", params.getImplant1Enc()).vector("implant2Enc", params.getImplant2Enc());
  if (!params.hasDefaultCutPattern()) {
    text.word("cutPattern", cutPattern(params));
  }
  text.word("defined", definedValues(params)).end();
}

void oaDump::writeInsts() {
  DumpEntries entries;
  oaIter<oaInst> insts(block_->getInsts(kAllInsts));
  while (oaInst *inst = insts.getNext()) {
    DumpText connections;
    writeInstTerms(connections, inst);
    if (inst->isImplicit() && connections.size() == 0 && !hasFacts(inst)) {
      continue;
    }
    writeInst(entries.text(), inst);
    entries.text().append(connections.string());
    entries.add();
  }
  writeSection("insts", entries);
}

void oaDump::writeInst(DumpText &text, oaInst *inst) {
  text.begin(1, "inst").word(nullptr, nameTextOf(inst));
  if (inst->isImplicit()) {
    text.flag("implicit", true).end();
    writeExtras(text, inst, 2);
    return;
  }
  text.word("master", cellViewText(inst));
  writePlace(text, inst);
  if (inst->getType() == oacArrayInstType) {
    writeArray(text, static_cast<const oaArrayInst *>(inst));
  }
  text.word("status", inst->getPlacementStatus().getName()).number("priority", inst->getPriority());
  if (inst->usesTermPositions()) {
    text.flag("termPositions", true);
  }
  writeMembership(text, inst);
  text.end();
  oaParamArray params;
  inst->getParams(params);
  writeParamsByName(text, params, 2);
  writeExtras(text, inst, 2);
}

void oaDump::writeInstTerms(DumpText &text, const oaInst *inst) {
  DumpEntries entries;
  oaIter<oaInstTerm> instTerms(inst->getInstTerms(kAllInstTerms));
  while (const oaInstTerm *instTerm = instTerms.getNext()) {
    const bool isImplicit = instTerm->isImplicit();
    if (isImplicit && !hasFacts(instTerm)) {
      continue;
    }
    DumpText &line = entries.text();
    line.begin(2, "instTerm");
    DumpEntries::Key key;
    if (instTerm->usesTermPosition()) {
      const oaUInt4 position = instTerm->getTermPosition();
      key.place[0] = static_cast<oaInt4>(position);
      line.number(nullptr, position);
    } else {
      oaName name;
      instTerm->getTermName(name);
      line.word(nullptr, nameText(name));
    }
    const oaNet *net = instTerm->getNet();
    line.word("net", net ? netText(net) : "none");
    if (isImplicit) {
      line.flag("implicit", true);
    }
    line.end();
    writeExtras(line, instTerm, 3);
    entries.add(key);
  }
  entries.moveTo(text);
}

void oaDump::writeVias() {
  DumpEntries entries;
  oaIter<oaVia> vias(block_->getVias());
  while (oaVia *via = vias.getNext()) {
    writeVia(entries.text(), via);
    entries.add();
  }
  writeSection("vias", entries);
}

void oaDump::writeVia(DumpText &text, oaVia *via) {
  oaString definition;
  via->getViaDefName(definition);
  text.begin(1, "via").quoted(nullptr, definition);
  const bool isCustom = via->getType() == oacCustomViaType;
  if (isCustom) {
    text.word("master", cellViewText(static_cast<const oaCustomVia *>(via)));
  }
  writePlace(text, via);
  text.purpose("purpose", via->getPurposeNum());
  writeMembership(text, via);
  text.end();
  if (isCustom) {
    oaParamArray params;
    static_cast<const oaCustomVia *>(via)->getParams(params);
    writeParamsByName(text, params, 2);
  } else {
    oaViaParam params;
    static_cast<const oaStdVia *>(via)->getViaParams(params);
    writeViaParams(text, params, 2);
  }
  writeExtras(text, via, 2);
}
