#ifndef VIAPARAMETERS_H
#define VIAPARAMETERS_H

#include <QString>
#include <QStringList>

#include <oa/oaDesignDB.h>

// Vias travel as references to cells of their own, whose cell data is a flat list of key/value pairs. These are the
// keys by which the writer knows such a list again; the list of a standard via is made by
// oaConvert::toViaParameterList().
namespace viakey {
const char kType[] = "oaType";
const char kStdVia[] = "oaStdVia";
const char kCustomVia[] = "oaCustomVia";
const char kViaDefName[] = "oaViaDefName";
const char kLayer1[] = "layer1";
const char kLayer2[] = "layer2";
} // namespace viakey

// The parameters in the list of a standard via; what it does not name is left to the definition.
oa::oaViaParam toOaViaParam(const QStringList &names, const QStringList &values);
// Flags the values that are the definition's anyway as default, so that a via follows its definition.
void leaveToDefinition(oa::oaViaParam &params, const oa::oaViaParam &definition);

// The list of a custom via. `viaDef` may be null for an unbound via; its layer numbers are left out then.
QStringList toCustomViaParameterList(const oa::oaParamArray &params, const QString &viaDefName,
                                     const oa::oaViaDef *viaDef);

#endif
