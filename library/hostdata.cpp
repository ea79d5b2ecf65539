// What the host keeps with a cell: its own editor data and the component description, both as application properties of
// the cell's management data.
//
// When OpenAccess raises while the data is open, it stays open with what was changed in it, and a later operation on
// the same cell goes on from there.

#include "oapluginmain.h"

#include <cstdio>

#include "errorguard.h"
#include "hostdatanames.h"
#include "qttoolkit.h"
#include "writablelibrary.h"

using namespace oa;

namespace {

// Name and application type of one kind of host data.
struct HostDataKind {
  const char *property;
  const char *applicationType;
};
const HostDataKind kEditorData = {"TarnwickdaleData", hostdata::kApplication};
const HostDataKind kComponentDescription = {"cdfData", "ILList"};

void printProperty(const oaString &name, const oaString &value, const oaString &type) {
  if (oaConvert::debug) {
    std::printf("cell DM prop (%s): %s\n", static_cast<const oaChar *>(name), static_cast<const oaChar *>(value));
    std::printf("cell DM proname (%s)\n", static_cast<const oaChar *>(type));
  }
}

// Destroys every property of that name.
void destroyProperties(const oaCellDMData *data, const char *propertyName) {
  oaString name;
  oaString value;
  oaIter<oaProp> properties(data->getProps());
  while (oaProp *property = properties.getNext()) {
    property->getName(name);
    property->getValue(value);
    printProperty(name, value, property->getType().getName());
    if (name == propertyName) {
      property->destroy();
    }
  }
}

void saveAndClose(oaCellDMData *data) {
  data->save();
  data->close();
}

void writeData(const QString &libName, const QString &cellName, const QString &text, const HostDataKind &kind) {
  oaConvert::init();
  const oaScalarName lib = oaConvert::toOaScalarName(libName);
  oaLib *library = makeWritable(oaConvert::getLib(lib, ""), lib);
  oaCellDMData *data = oaCellDMData::open(lib, oaConvert::toOaScalarName(cellName), 'a');
  destroyProperties(data, kind.property);
  const QByteArray bytes = toolkit::toEightBit(text);
  if (oaConvert::debug) {
    std::printf("write %d (%s/%s) %s\n", bytes.size(), toolkit::toEightBit(libName).constData(),
                toolkit::toEightBit(cellName).constData(), bytes.constData());
  }
  oaAppProp::create(data, kind.property, kind.applicationType, oaUInt4(bytes.size()),
                    reinterpret_cast<const oaByte *>(bytes.constData()));
  saveAndClose(data);
  releaseAccessIfHeld(library);
}

} // namespace

void oaPlugInMain::removeLayoutData(QString lib, QString cell) {
  guard::printing("removeLayoutData", [&] {
    oaConvert::init();
    const oaScalarName libName = toOaScalarName(lib);
    const oaScalarName cellName = toOaScalarName(cell);
    oaLib *library = getLib(libName, "");
    if (!library) {
      throw 'e';
    }
    if (oaCellDMData::exists(libName, cellName)) {
      oaCellDMData *data = oaCellDMData::open(libName, cellName, 'a');
      destroyProperties(data, kEditorData.property);
      saveAndClose(data);
    }
    releaseAccessIfHeld(library);
  });
}

void oaPlugInMain::writeLayoutData(QString lib, QString cell, QString data) {
  guard::printing("writeLayoutData", [&] { writeData(lib, cell, data, kEditorData); });
}

void oaPlugInMain::writeCdfData(QString lib, QString cell, QString data) {
  guard::printing("writeCdfData", [&] { writeData(lib, cell, data, kComponentDescription); });
}
