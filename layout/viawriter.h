#ifndef VIAWRITER_H
#define VIAWRITER_H

#include <QStringList>

#include "oapluginmain.h"

// Vias that the host describes as the reader sent them: by the names and values in the data of a via's cell.
namespace viawriter {

// Whether the list is that of a via. Such a reference has no cell behind it.
bool isVia(const QStringList &names, const QStringList &values);
bool isCustomVia(const QStringList &names, const QStringList &values);

// A standard via in the current block. A definition that the technology lacks is created in it, with the physical
// layers that it needs: a copy of the one in the technology of `originalLib`, if there is one of that name between the
// same layers, otherwise with the values of the list and without implants, which the list does not tell. Null when
// there cannot be one, or when the technology's own is between other layers, which the host was told. That the
// technology's own has other implants is told once for a design.
oa::oaVia *createStdVia(oaPlugInMain &host, const QString &originalLib, const QStringList &names,
                        const QStringList &values, const oa::oaTransform &xform);

// The definition of a custom via; null when the technology has none of that name between the same layers, which the
// host was told.
oa::oaCustomViaDef *findCustomViaDef(oaPlugInMain &host, const QStringList &names, const QStringList &values);

struct ViaMaster {
  QString lib, cell, view;
};
// Tells the host, once for a design, when the definition has another master than the via that was read.
void reportOtherMaster(oaPlugInMain &host, const oa::oaCustomViaDef *viaDef, const ViaMaster &master);

// Another design is being written: what is told once for a design may be told again.
void forgetTold();

// What is left of the list of a custom via: the parameters of its master.
void takeMasterParameters(QStringList &names, QStringList &values);

} // namespace viawriter

#endif
