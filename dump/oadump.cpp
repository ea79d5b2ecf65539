#include "oadump.h"

#include "definitiondata.h"
#include "designholder.h"
#include "errorguard.h"
#include "oaconvert.h"
#include "oapluginmain.h"

using namespace oa;

namespace {

// To be counted up when a text of an unchanged design changes.
const int kDumpForm = 2;

// Qt 4 and 5 count a text's characters in an int and its bytes, two for each, as well.
const std::size_t kLongestText = 1000000000;

} // namespace

oaDump::oaDump(oaDesign *design) : design_(design), block_(design->getTopBlock()) {
  design->getLibName(oaConvert::ns, lib_);
}

QString oaDump::text() {
  writeHeader();
  if (block_) {
    findDisplays();
  }
  out_.begin(0, "design").word("cellType", design_->getCellType().getName()).end();
  writeExtras(out_, design_, 1);
  writeParametricMaster();
  if (block_) {
    out_.begin(0, "block").flag("visibleToModule", block_->isVisibleToModule()).end();
    writeExtras(out_, block_, 1);
    writeHeaders();
    writeBusDefinitions();
    writeNets();
    writeEquivalences();
    writeTerms();
    writeInsts();
    writeVias();
    writeShapes();
    writeRemainingDisplays();
  }
  if (out_.size() > kLongestText) {
    throw 'l';
  }
  return toolkit::fromEightBit(out_.string().c_str());
}

void oaDump::writeHeader() {
  oaString text;
  out_.begin(0, "oaDump").number(nullptr, kDumpForm).end();
  out_.begin(0, "library").quoted(nullptr, lib_).end();
  design_->getCellName(oaConvert::ns, text);
  out_.begin(0, "cell").quoted(nullptr, text).end();
  design_->getViewName(oaConvert::ns, text);
  out_.begin(0, "view").quoted(nullptr, text).end();
  design_->getViewType()->getName(text);
  out_.begin(0, "viewType").word(nullptr, text).end();
  if (block_) {
    out_.begin(0, "units")
        .number(nullptr, block_->getDBUPerUU())
        .word(nullptr, "per")
        .word(nullptr, block_->getUserUnits().getName())
        .end();
  }
}

void oaDump::writeParametricMaster() {
  oaParamArray params;
  if (design_->isSuperMaster()) {
    writeDefinition();
    design_->getParams(params);
    writeParams(out_, params, 1);
  } else if (design_->isSubMaster()) {
    out_.begin(0, "subMaster").word("of", cellViewText(design_->getSuperMaster())).end();
    design_->getParams(params);
    writeParams(out_, params, 1);
  } else if (design_->isStdViaMaster()) {
    oaViaParam viaParams;
    design_->getParams(viaParams);
    out_.begin(0, "viaMaster").end();
    writeViaParams(out_, viaParams, 1);
  }
}

void oaDump::writeDefinition() {
  oaString evaluator;
  design_->getPcellEvaluatorName(evaluator);
  out_.begin(0, "superMaster").quoted("evaluator", evaluator);
  oaPcellDef *definition = design_->getPcellDef();
  if (!definition) {
    // Its data can be read by the evaluator alone.
    out_.word("definition", "none").end();
    return;
  }
  out_.end();
  const DefinitionData data = definitionData(*definition);
  for (DefinitionData::const_iterator entry = data.begin(); entry != data.end(); ++entry) {
    out_.begin(1, "data").quoted(nullptr, entry->first.c_str()).quoted(nullptr, entry->second.c_str()).end();
  }
}

void oaDump::writeSection(const char *title, DumpEntries &entries) {
  if (entries.isEmpty()) {
    return;
  }
  out_.begin(0, title).end();
  entries.moveTo(out_);
}

std::string oaDump::libraryText(const oaString &lib) const {
  if (lib == lib_) {
    return ".";
  }
  std::string text;
  appendQuoted(text, lib);
  return text;
}

QString oaPlugInMain::getViewDump(QString lib, QString cell, QString view) {
  QString text;
  guard::printing("getViewDump", [&] {
    oaConvert::init();
    const DesignHolder design(oaDesign::open(toOaScalarName(lib), toOaScalarName(cell), toOaScalarName(view), 'r'));
    text = oaDump(design.get()).text();
  });
  return text;
}
