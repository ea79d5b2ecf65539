#include "givenparameters.h"

#include "designholder.h"
#include "parametertext.h"
#include "shortesttext.h"

using namespace oa;

namespace {

// The reader sends doubles as floats. One that comes back as the default's float, exact or in a text that hosts make of
// floats, was the default; other values near it are values of their own.
bool isSameToHost(const oaParam &param, const oaParam &defaultParam) {
  if (param == defaultParam || param.getType() != oacDoubleParamType || defaultParam.getType() != oacDoubleParamType) {
    return param == defaultParam;
  }
  const double value = param.getDoubleVal();
  const float sent = float(defaultParam.getDoubleVal());
  return value == double(sent) || value == shortestText(sent).toDouble() ||
         value == QString::number(double(sent), 'g', std::numeric_limits<float>::max_digits10).toDouble();
}

void setByName(oaParamArray &params, const oaParam &param) {
  const QString name = toParameterName(param);
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    if (toParameterName(params[i]) == name) {
      params[i] = param;
      return;
    }
  }
  params.append(param);
}

// The defaults of a parametric master. Otherwise false, with the cause.
bool defaultsOf(const QString &lib, const QString &cell, const QString &view, oaParamArray &defaults, QString &cause) {
  try {
    const DesignHolder master(oaDesign::open(oaConvert::toOaScalarName(lib), oaConvert::toOaScalarName(cell),
                                             oaConvert::toOaScalarName(view), 'r'));
    if (master.get()->isSuperMaster()) {
      master.get()->getParams(defaults);
      return true;
    }
    cause = oaPlugInMain::tr("the cell is not parametric");
  } catch (const oaException &exception) {
    cause = oaConvert::toString(exception.getMsg());
  }
  return false;
}

} // namespace

bool givenParameters(oaPlugInMain &host, const QString &lib, const QString &cell, const QString &view,
                     const HostParameters &parameters, DefaultValues defaultValues, oaParamArray &params) {
  const QStringList names = parameters.names.mid(0, parameters.values.size());
  if (names.isEmpty()) {
    return false;
  }
  const auto tellLeftOut = [&](const QString &cause) {
    emit host.reportError(oaPlugInMain::tr("parameters of a cell reference are left out"), 2,
                          lib + '/' + cell + '/' + view + QLatin1String(": ") + cause);
  };
  oaParamArray defaults;
  QString cause;
  if (!defaultsOf(lib, cell, view, defaults, cause)) {
    tellLeftOut(cause);
    return false;
  }
  QStringList unknown = names;
  for (oaUInt4 i = 0; i < defaults.getNumElements(); ++i) {
    unknown.removeAll(toParameterName(defaults[i]));
  }
  if (!unknown.isEmpty()) {
    tellLeftOut(oaPlugInMain::tr("the cell has no %1").arg(unknown.join(QLatin1String(", "))));
  }
  const oaParamArray merged = oaConvert::mergeParameter(defaults, names, parameters.values);
  for (oaUInt4 i = 0; i < merged.getNumElements(); ++i) {
    if (names.contains(toParameterName(merged[i]))) {
      setByName(params, merged[i]);
    }
  }
  if (defaultValues == DefaultValues::kFollowMaster) {
    oaParamArray others;
    oaParam defaultParam;
    oaString name;
    for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
      params[i].getName(name);
      if (!defaults.find(name, defaultParam) || !isSameToHost(params[i], defaultParam)) {
        others.append(params[i]);
      }
    }
    params = others;
  }
  return params.getNumElements() > 0;
}
