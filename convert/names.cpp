#include "oaconvert.h"

#include "qttoolkit.h"

using namespace oa;

bool oaConvert::debug = false;
bool oaConvert::initDone = false;
oaNativeNS oaConvert::ns;

QString oaConvert::toString(const oaString &text) { return toolkit::fromEightBit(static_cast<const oaChar *>(text)); }

QString oaConvert::toString(const oaName &name) {
  oaString text;
  name.get(text);
  return toString(text);
}

QString oaConvert::toString(const oaScalarName &name) {
  oaString text;
  name.get(ns, text);
  return toString(text);
}

QString oaConvert::toString(unsigned int number) { return QString::number(number); }

oaString oaConvert::toOaString(const QString &text) { return oaString(toolkit::toEightBit(text).constData()); }

oaString oaConvert::toOaPath(const QString &path) { return toOaString(path); }

oaScalarName oaConvert::toOaScalarName(const QString &text) {
  return oaScalarName(ns, toolkit::toEightBit(text).constData());
}

oaName oaConvert::toOaName(const QString &text) { return oaName(toOaScalarName(text)); }
