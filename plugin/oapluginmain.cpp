#include "oapluginmain.h"

oaPlugInMain::oaPlugInMain()
    : layerMax(0), datatypeMax(0), cellExistsReply(false), currentDesign(nullptr), currentBlock(nullptr),
      currentTech(nullptr), currentScalarInst(nullptr), currentVectorInst(nullptr), propertyTarget(nullptr) {}

oaPlugInMain::~oaPlugInMain() {}

void oaPlugInMain::setLayerMax(int layers, int datatypes) {
  layerMax = layers;
  datatypeMax = datatypes;
}

void oaPlugInMain::setGlobalNodes(QString nodes) { globalNodes = nodes; }

void oaPlugInMain::setBool(bool value) { cellExistsReply = value; }
