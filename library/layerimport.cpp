// Sends the layer table of a library's technology to the host.

#include "oapluginmain.h"

#include <cstdio>

#include "errorguard.h"
#include "qttoolkit.h"

using namespace oa;

namespace {

// Up to the last slash, unless there is none behind the first character.
QString directoryOf(const QString &path) {
  const int slash = path.lastIndexOf(QLatin1Char('/'));
  return slash > 0 ? path.left(slash) : path;
}

// Behind the last slash, unless there is none behind the first character.
QString lastPartOf(const QString &path) {
  const int slash = path.lastIndexOf(QLatin1Char('/'));
  return slash > 0 ? path.mid(slash + 1) : path;
}

// The library whose technology database is the file `location`. Null when it is no library.
oaLib *libraryOfFile(const QString &location) {
  const QString directory = directoryOf(location);
  const QString name = lastPartOf(directory);
  if (oaConvert::debug) {
    std::printf("open tech dbl %s (%s)\n", toolkit::toEightBit(name).constData(),
                toolkit::toEightBit(directory).constData());
  }
  const oaScalarName libName = oaConvert::toOaScalarName(name);
  const oaString path = oaConvert::toOaPath(directory);
  return oaConvert::checkLib(libName, path, false) ? oaConvert::getLib(libName, path) : nullptr;
}

// The open library that `location` names: by its name alone, or by the last part of its directory.
oaLib *libraryOfName(QString location) {
  while (location.size() > 1 && location.endsWith(QLatin1Char('/'))) {
    location.chop(1);
  }
  return oaLib::find(oaConvert::toOaScalarName(lastPartOf(location)));
}

// Layers that the host cannot show are left out. Before the first one that it can, all are switched off.
void sendLayers(oaPlugInMain &host, const oaTech *tech, int layerCount) {
  bool isFirst = true;
  oaString name;
  oaIter<oaLayer> layers(tech->getLayers());
  while (const oaLayer *layer = layers.getNext()) {
    // Unsigned in OpenAccess; numbers in the upper half are negative for the host.
    const int number = int(layer->getNumber());
    layer->getName(name);
    if (oaConvert::debug) {
      std::printf("layer %d = %s\n", number, static_cast<const oaChar *>(name));
    }
    if (number < 0 || number >= layerCount) {
      continue;
    }
    for (int i = 0; isFirst && i < layerCount; ++i) {
      emit host.disableLayer(i);
    }
    isFirst = false;
    emit host.enableLayer(number);
    emit host.setLayerName(number, oaConvert::toString(name));
  }
}

} // namespace

QString oaPlugInMain::importLayer(QString location, int layerCount) {
  QString error;
  guard::reporting(
      [&] {
        oaConvert::init();
        oaLib *lib = location.endsWith(QLatin1String(".db")) ? libraryOfFile(location) : libraryOfName(location);
        if (!lib) {
          throw tr("Not a valid OpenAccess Library");
        }
        // Left open: the layout that is shown next needs it again.
        const oaTech *tech = oaTech::open(lib, 'r');
        if (!tech) {
          throw tr("The library has no technology");
        }
        sendLayers(*this, tech, layerCount);
        if (debug) {
          std::printf("layer load end\n");
        }
      },
      [&](const QString &cause) {
        error = cause;
        std::printf("error %s\n", toolkit::toEightBit(cause).constData());
      });
  return error;
}
