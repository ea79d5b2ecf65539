// The components of a library: the cells that have a symbol. The list is kept as a property of the library's management
// data, because finding it takes a look at every cell.

#include <cstdio>

#include "dmdataholder.h"
#include "errorguard.h"
#include "hostdatanames.h"
#include "libraryaccess.h"
#include "oapluginmain.h"
#include "qttoolkit.h"

using namespace oa;

namespace {

const char kSymbolView[] = "symbol";
const QChar kSeparator = QLatin1Char(';');

const oaUInt4 kAccessTimeoutSeconds = 10;

// Ends the access that this process holds to a library, whoever asked for it, on every way out of a scope.
class AccessEnd {
public:
  explicit AccessEnd(oaLib *lib) : lib_(lib) {}
  ~AccessEnd() {
    if (lib_->isValid() && lib_->getAccessLevel() != oacNoLibAccessLevel) {
      lib_->releaseAccess();
    }
  }
  AccessEnd(const AccessEnd &) = delete;
  AccessEnd &operator=(const AccessEnd &) = delete;

private:
  oaLib *lib_;
};

// The abort character e stands for a library that cannot be had.
oaLib *requireLib(const oaScalarName &name, const oaString &path) {
  oaLib *lib = oaConvert::getLib(name, path);
  if (!lib) {
    throw 'e';
  }
  return lib;
}

void appendComponents(const oaLib *lib, QStringList &components) {
  oaString name;
  oaIter<oaCell> cells(lib->getCells());
  while (const oaCell *cell = cells.getNext()) {
    oaIter<oaCellView> cellViews(cell->getCellViews());
    while (const oaCellView *cellView = cellViews.getNext()) {
      cellView->getView()->getName(oaConvert::ns, name);
      if (name == kSymbolView) {
        cell->getName(oaConvert::ns, name);
        components.append(oaConvert::toString(name));
      }
    }
  }
}

// Empty when the library has no list.
QStringList readCache(const oaScalarName &libName, const oaString &path) {
  QStringList components;
  const AccessEnd access(requireLib(libName, path));
  if (!oaLibDMData::exists(libName)) {
    return components;
  }
  const DMDataHolder<oaLibDMData> data(oaLibDMData::open(libName, 'r'));
  oaString text;
  oaIter<oaProp> properties(data->getProps());
  while (const oaProp *property = properties.getNext()) {
    property->getName(text);
    if (text == hostdata::kCachedComponents) {
      property->getValue(text);
      if (!text.isEmpty()) { // the list of a library without components; it has no entry, not an empty one
        components = oaConvert::toString(text).split(kSeparator);
      }
    }
  }
  return components;
}

// A library that turns out not to be writable may have become so since it was opened: it is opened again and asked for
// access, so that OpenAccess says what is in the way.
oaLib *openForWriting(const oaScalarName &libName, const oaString &path) {
  oaLib *lib = requireLib(libName, path);
  if (lib->isWritable()) {
    return lib;
  }
  oaString place;
  lib->getFullPath(place);
  lib->close();
  lib = requireLib(libName, path.isEmpty() ? place : path);
  lib->getAccess(oaLibAccess(oacWriteLibAccess), kAccessTimeoutSeconds);
  return lib;
}

void writeCache(const oaScalarName &libName, const oaString &path, const QStringList &components) {
  oaLib *lib = openForWriting(libName, path);
  const AccessEnd atTheEnd(lib);
  const DMDataHolder<oaLibDMData> data(oaLibDMData::open(libName, 'a'));
  oaString name;
  oaIter<oaProp> properties(data->getProps());
  while (oaProp *property = properties.getNext()) {
    property->getName(name);
    if (name == hostdata::kCachedComponents) {
      property->destroy();
    }
  }
  const QByteArray text = toolkit::toEightBit(components.join(QString(kSeparator)));
  oaAppProp::create(data.get(), hostdata::kCachedComponents, hostdata::kApplication, oaUInt4(text.size()),
                    reinterpret_cast<const oaByte *>(text.constData()));
  data->save();
}

} // namespace

QStringList oaConvert::getComponents(const QString &libName, const QString &path) {
  QStringList components;
  bool isComplete = false;
  guard::swallowing([&] {
    isComplete = guard::printing("getComponents ", [&] {
      init();
      oaLib *lib = requireLib(toOaScalarName(libName), toOaPath(path));
      const LibraryReadAccess access(lib);
      appendComponents(lib, components);
    });
  });
  return isComplete ? components : QStringList();
}

bool oaConvert::existComponent(const QString &lib, const QString &device) {
  bool exists = false;
  guard::swallowing([&] {
    init();
    exists =
        oaDesign::exists(toOaScalarName(lib), toOaScalarName(toCellName(device)), toOaScalarName(toViewName(device)));
  });
  return exists;
}

QStringList oaPlugInMain::getComponents(QString lib, QString path, bool useCache) {
  QStringList components;
  if (useCache) {
    guard::printing("get Components", [&] {
      oaConvert::init();
      components = readCache(toOaScalarName(lib), toOaPath(path));
    });
    if (!components.isEmpty()) {
      return components;
    }
  }
  guard::printing(" getComponents", [&] {
    components = oaConvert::getComponents(lib, path);
    writeCache(toOaScalarName(lib), toOaPath(path), components);
    if (debug) {
      std::printf("write cached components %s\n", toolkit::toEightBit(lib).constData());
    }
  });
  return components;
}

bool oaPlugInMain::existComponent(QString lib, QString device) { return oaConvert::existComponent(lib, device); }
