#include "currentlayout.h"

#include <cstdio>

#include "designholder.h"
#include "mastertable.h"
#include "viawriter.h"

using namespace oa;

namespace currentlayout {

const oaBlock *BeingRead::block_ = nullptr;

BeingRead::~BeingRead() {
  block_ = outer_;
  if (own_ && host_.currentBlock == own_) {
    host_.currentBlock = nullptr;
  }
}

void BeingRead::show(oaDesign *design, oaBlock *block) {
  host_.currentDesign = design;
  host_.currentBlock = block;
  own_ = block;
  block_ = block;
}

bool isBeingWritten(const oaPlugInMain &host) {
  return host.currentDesign && host.currentBlock && !BeingRead::isShown(host.currentBlock) &&
         host.currentDesign->isValid();
}

bool isOpen(oaPlugInMain &host, const char *label) {
  if (isBeingWritten(host) && host.currentBlock->isValid()) {
    return true;
  }
  emit host.reportError(oaPlugInMain::tr("no design is open for writing"), 1, QLatin1String(label));
  return false;
}

void adopt(oaPlugInMain &host, oaDesign *design) {
  viawriter::forgetTold();
  host.currentDesign = design;
  host.currentBlock = design->getTopBlock();
  if (!host.currentBlock) {
    host.currentBlock = oaBlock::create(design, true);
  }
  host.netsByName.clear();
  host.pinsByName.clear();
}

void abandon(oaPlugInMain &host) {
  if (isBeingWritten(host)) {
    if (host.currentDesign->isModified()) {
      emit host.reportError(oaPlugInMain::tr("a design was left open, its unsaved changes are lost"), 1, path(host));
    }
    DesignHolder(host.currentDesign).close();
  }
  clear(host);
}

void clear(oaPlugInMain &host) {
  host.currentDesign = nullptr;
  host.currentBlock = nullptr;
  host.netsByName.clear();
  host.pinsByName.clear();
}

void rememberConnectivity(oaPlugInMain &host) {
  oaString name;
  oaIter<oaNet> nets(host.currentBlock->getNets());
  while (oaNet *net = nets.getNext()) {
    net->getName(oaConvert::ns, name);
    if (oaConvert::debug) {
      std::printf("net: %s\n", static_cast<const oaChar *>(name));
    }
    host.netsByName.insert(oaConvert::toString(name), net);
  }
  oaIter<oaTerm> terms(host.currentBlock->getTerms());
  while (oaTerm *term = terms.getNext()) {
    term->getName(oaConvert::ns, name);
    const QString termName = oaConvert::toString(name);
    oaIter<oaPin> pins(term->getPins());
    while (oaPin *pin = pins.getNext()) {
      host.pinsByName.insert(termName, pin);
    }
  }
}

QString path(const oaPlugInMain &host) {
  return host.currentDesign && host.currentDesign->isValid() ? MasterTable::pathOf(host.currentDesign) : QString();
}

} // namespace currentlayout
