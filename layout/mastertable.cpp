#include "mastertable.h"

#include <cstring>

#include "designholder.h"
#include "designidentity.h"
#include "hostdatanames.h"
#include "oapluginmain.h"
#include "viaparameters.h"

using namespace oa;

namespace {

QString withCause(const QString &object, const oaException &exception) {
  return object + QLatin1String(": ") + oaConvert::toString(exception.getMsg());
}

} // namespace

// The three names of a master, in both forms.
struct MasterTable::CellPath {
  template <typename Ref> explicit CellPath(const Ref *ref) {
    ref->getLibName(lib);
    ref->getCellName(cell);
    ref->getViewName(view);
    ref->getLibName(oaConvert::ns, libText);
    ref->getCellName(oaConvert::ns, cellText);
    ref->getViewName(oaConvert::ns, viewText);
  }

  QString text() const {
    return oaConvert::toString(libText) + '/' + oaConvert::toString(cellText) + '/' + oaConvert::toString(viewText);
  }

  std::string key() const {
    std::string key;
    for (const oaString *part : {&libText, &cellText, &viewText}) {
      key.append(static_cast<const oaChar *>(*part), part->getLength() + 1);
    }
    return key;
  }

  oaScalarName lib, cell, view;
  oaString libText, cellText, viewText;
};

MasterTable::~MasterTable() {
  for (auto &entry : masters_) {
    DesignHolder closed(entry.second.design);
  }
  for (auto &entry : superMasters_) {
    DesignHolder closed(entry.second);
  }
  for (oaTech *tech : techs_) {
    try {
      tech->close();
    } catch (const oaException &) { // NOLINT(bugprone-empty-catch): nothing is left to be done with it
    }
  }
}

QString MasterTable::pathOf(oaDesign *design) { return CellPath(design).text(); }

QString MasterTable::cellNameOf(oaDesign *design, const QStringList &cellData) const {
  return oaConvert::toCellName(oaConvert::toCellData(design, cellData), currentLib_);
}

void MasterTable::begin(oaDesign *design) {
  variantLimits_.begin(design->isSubMaster() ? design->getSuperMaster() : nullptr);
}

// The second of two designs tells the whole tale; what comes after it is told no more.
QString MasterTable::claimName(const QString &cellName, const oaDesign *design) {
  const std::string identity = identityOf(design);
  const auto known = nameOwners_.find(cellName);
  if (known == nameOwners_.end()) {
    nameOwners_.insert(cellName, {identity, CellPath(design).text(), false});
    return QString();
  }
  if (known->isTold || known->identity == identity) {
    return QString();
  }
  known->isTold = true;
  const QString path = CellPath(design).text();
  return path == known->path ? oaPlugInMain::tr("%1 is the name of several variants of %2").arg(cellName, path)
                             : oaPlugInMain::tr("%1 is the name of %2 and of %3").arg(cellName, known->path, path);
}

// A variant that was refused here may be had elsewhere.
Master *MasterTable::kept(Masters::iterator entry) {
  if (!entry->second.isRefused()) {
    return &entry->second;
  }
  refused_ = entry->second;
  masters_.erase(entry);
  return &refused_;
}

Master *MasterTable::find(oaInst *inst) {
  const CellPath path(inst);
  oaParamArray params;
  inst->getParams(params);
  std::string key = 'i' + path.key();
  appendKey(key, params);
  const auto inserted = masters_.emplace(std::move(key), Master());
  Master &master = inserted.first->second;
  if (!inserted.second) {
    return &master;
  }
  if (std::strcmp(path.viewText, hostdata::kComponentView) == 0) {
    master.fault = Master::kComponentView;
    master.detail = path.text();
    return &master;
  }
  open(master, path, params, Master::kNoCell);
  return kept(inserted.first);
}

// A parametric master is evaluated with the parameters; any other is opened plainly, because the kit refuses parameters
// there. What is once known to be parametric stays open, which spares its variants the look at the disk.
oaDesign *MasterTable::openVariant(Master &master, const CellPath &path, const oaParamArray &params) {
  const std::string key = path.key();
  auto super = superMasters_.find(key);
  if (super == superMasters_.end()) {
    DesignHolder stored(oaDesign::open(path.lib, path.cell, path.view, 'r'));
    if (!stored.get() || !stored.get()->isSuperMaster()) {
      return stored.release();
    }
    super = superMasters_.emplace(key, stored.release()).first;
  }
  // What was evaluated once may be evaluated again.
  if (master.cellName.isEmpty() && !mayEvaluate(master, path, super->second)) {
    return nullptr;
  }
  return oaDesign::open(path.lib, path.cell, path.view, params);
}

bool MasterTable::mayEvaluate(Master &master, const CellPath &path, const oaDesign *super) {
  const VariantLimits::Answer answer = variantLimits_.ask(super);
  switch (answer.verdict) {
  case VariantLimits::kAllowed:
    break;
  case VariantLimits::kTooDeep:
    master.fault = Master::kEndlessVariants;
    master.detail = oaPlugInMain::tr("%1 variants of %2 contain each other, none of them gets a further one")
                        .arg(VariantLimits::kMostWithinEachOther)
                        .arg(path.text());
    break;
  case VariantLimits::kTooMany:
    master.fault = Master::kTooManyVariants;
    master.detail =
        oaPlugInMain::tr("what the variants inside one of %1 place, after %2 others: %3")
            .arg(CellPath(variantLimits_.root()).text(), QString::number(variantLimits_.evaluations()), path.text());
    break;
  }
  if (!answer.isNew) {
    master.detail.clear();
  }
  return answer.verdict == VariantLimits::kAllowed;
}

void MasterTable::open(Master &master, const CellPath &path, const oaParamArray &params, Master::Fault failure) {
  if (!oaLib::find(path.lib)) {
    master.fault = failure == Master::kNoCell ? Master::kNoLibrary : failure;
    master.detail = failure == Master::kNoCell ? oaConvert::toString(path.libText) : path.text();
    return;
  }
  try {
    if (oaDesign *design = openVariant(master, path, params)) {
      opened(master, design);
      return;
    }
    if (master.isRefused()) {
      return;
    }
    master.detail = path.text();
  } catch (const oaException &exception) {
    master.detail = withCause(path.text(), exception);
  }
  master.fault = failure;
}

Master *MasterTable::find(oaVia *via, oaDesign *parent) {
  return via->getType() == oacStdViaType ? findStdVia(static_cast<oaStdVia *>(via), parent)
                                         : findCustomVia(static_cast<oaCustomVia *>(via), parent);
}

// Null when the via is unbound and the technology of the design's library does not know its definition either.
oaViaDef *MasterTable::viaDefOf(oaVia *via, oaDesign *parent) {
  if (oaViaDef *viaDef = via->getViaDef()) {
    return viaDef;
  }
  oaScalarName lib;
  parent->getLibName(lib);
  oaString name;
  via->getViaDefName(name);
  try {
    oaTech *tech = oaTech::open(lib, 'r');
    if (!tech) {
      return nullptr;
    }
    techs_.push_back(tech); // stays open while the definition is in use
    return oaViaDef::find(tech, name);
  } catch (const oaException &) {
    return nullptr; // a library without a technology
  }
}

void MasterTable::openStdVia(Master &master, oaViaDef *viaDef, oaViaParam &params) {
  try {
    if (oaDesign *design = oaDesign::open(static_cast<oaStdViaDef *>(viaDef), &params)) {
      opened(master, design);
      return;
    }
    master.detail = master.viaDefName;
  } catch (const oaException &exception) {
    master.detail = withCause(master.viaDefName, exception);
  }
  master.fault = Master::kNoStdViaDef;
}

Master *MasterTable::findStdVia(oaStdVia *via, oaDesign *parent) {
  oaString name;
  via->getViaDefName(name);
  oaViaParam params;
  via->getViaParams(params);
  oaViaDef *viaDef = viaDefOf(via, parent);
  const bool isKnown = viaDef && viaDef->getType() == oacStdViaDefType;
  const QString defName = oaConvert::toString(name);
  QStringList cellData;
  std::string key = "s";
  if (isKnown) {
    cellData = oaConvert::toViaParameterList(params, defName, viaDef->getLayer1Num(), viaDef->getLayer2Num());
    oaString techLib;
    viaDef->getTech()->getLibName(oaConvert::ns, techLib);
    key.append(static_cast<const oaChar *>(techLib), techLib.getLength() + 1);
    key += cellData.join(QLatin1String("\n")).toUtf8().constData();
    appendCutPattern(key, params);
  } else {
    key = std::string("u") + static_cast<const oaChar *>(name);
  }
  const auto inserted = masters_.emplace(std::move(key), Master());
  Master &master = inserted.first->second;
  if (!inserted.second) {
    return &master;
  }
  master.viaDefName = defName;
  master.cellData = cellData;
  if (isKnown) {
    openStdVia(master, viaDef, params);
  } else {
    master.fault = Master::kNoStdViaDef;
    master.detail = defName;
  }
  return &master;
}

Master *MasterTable::findCustomVia(oaCustomVia *via, oaDesign *parent) {
  oaString name;
  via->getViaDefName(name);
  oaParamArray params;
  via->getParams(params);
  const CellPath path(via->getHeader());
  const QString defName = oaConvert::toString(name);
  const QStringList cellData = toCustomViaParameterList(params, defName, viaDefOf(via, parent));
  std::string key = 'c' + path.key();
  appendKey(key, params);
  key += cellData.join(QLatin1String("\n")).toUtf8().constData();
  const auto inserted = masters_.emplace(std::move(key), Master());
  Master &master = inserted.first->second;
  if (inserted.second) {
    master.viaDefName = defName;
    master.cellData = cellData;
    open(master, path, params, Master::kNoCustomVia);
  }
  return kept(inserted.first);
}

bool MasterTable::reopen(Master &master, oaRef *ref, oaDesign *parent) {
  oaParamArray params;
  switch (oaTypeEnum(ref->getType())) {
  case oacStdViaType: {
    oaViaParam viaParams;
    static_cast<oaStdVia *>(ref)->getViaParams(viaParams);
    oaViaDef *viaDef = viaDefOf(static_cast<oaVia *>(ref), parent);
    if (viaDef && viaDef->getType() == oacStdViaDefType) {
      openStdVia(master, viaDef, viaParams);
    }
    break;
  }
  case oacCustomViaType:
    static_cast<oaCustomVia *>(ref)->getParams(params);
    open(master, CellPath(static_cast<oaCustomVia *>(ref)->getHeader()), params, Master::kNoCustomVia);
    break;
  default:
    static_cast<oaInst *>(ref)->getParams(params);
    open(master, CellPath(static_cast<oaInst *>(ref)), params, Master::kNoCell);
    break;
  }
  return master.design != nullptr;
}

void MasterTable::opened(Master &master, oaDesign *design) {
  master.design = design;
  ++openCount_;
  master.cellName = cellNameOf(design, master.cellData);
  master.clash = claimName(master.cellName, design);
}

void MasterTable::close(Master &master) {
  DesignHolder closed(master.design);
  master.design = nullptr;
  --openCount_;
}
