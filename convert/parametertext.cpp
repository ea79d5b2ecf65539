#include "oaconvert.h"

#include <cstdio>

#include "qttoolkit.h"

using namespace oa;

namespace {

QString nameOf(const oaParam &param) {
  oaString name;
  param.getName(name);
  return oaConvert::toString(name);
}

QString toNumberText(double value) { return QString::number(value, 'g', 6); }

QString toParameterLine(const char *tag, const QString &name, const QString &value) {
  return QLatin1Char('<') + QLatin1String(tag) + QLatin1Char(' ') + name + QLatin1Char(' ') + value +
         QLatin1String(" >\n");
}

QString toParameterLine(const oaParam &param) {
  const QString name = oaConvert::putString(nameOf(param));
  switch (static_cast<oaParamTypeEnum>(param.getType())) {
  case oacIntParamType:
    return toParameterLine("int", name, QString::number(param.getIntVal()));
  case oacBooleanParamType:
    return toParameterLine("list", name, QLatin1String(param.getBooleanVal() ? "true false" : "false true"));
  case oacFloatParamType:
    return toParameterLine("double", name, toNumberText(static_cast<double>(param.getFloatVal())));
  case oacStringParamType:
    return toParameterLine("string", name, oaConvert::putString(toolkit::fromEightBit(param.getStringVal())));
  case oacDoubleParamType:
    return toParameterLine("double", name, toNumberText(param.getDoubleVal()));
  case oacAppParamType:
  case oacTimeParamType:
    break;
  }
  return QString();
}

// The host's text becomes a value of the parameter's own type; a bad number becomes 0.
void setValueFromText(oaParam &param, const QString &text) {
  switch (static_cast<oaParamTypeEnum>(param.getType())) {
  case oacBooleanParamType:
    param.setBooleanVal(text == QLatin1String("true"));
    break;
  case oacIntParamType:
    param.setIntVal(text.toInt());
    break;
  case oacFloatParamType:
    param.setFloatVal(static_cast<float>(text.toDouble()));
    break;
  case oacStringParamType:
    param.setStringVal(toolkit::toEightBit(text).constData());
    break;
  case oacDoubleParamType:
    param.setDoubleVal(text.toDouble());
    break;
  case oacAppParamType:
  case oacTimeParamType:
    break;
  }
}

void printValue(const oaParam &param) {
  switch (static_cast<oaParamTypeEnum>(param.getType())) {
  case oacBooleanParamType:
    std::printf("(bool) %s", param.getBooleanVal() ? "true" : "false");
    break;
  case oacIntParamType:
    std::printf("(int) %d", param.getIntVal());
    break;
  case oacFloatParamType:
    std::printf("(float) %f", static_cast<double>(param.getFloatVal()));
    break;
  case oacStringParamType:
    std::printf("(string) %s", param.getStringVal());
    break;
  case oacDoubleParamType:
    // With float precision, like the line above it.
    std::printf("(double) %f", static_cast<double>(static_cast<float>(param.getDoubleVal())));
    break;
  case oacAppParamType:
  case oacTimeParamType:
    break;
  }
}

} // namespace

QString oaConvert::putString(QString text) {
  text.replace(QLatin1Char(' '), QLatin1String("&sp;"));
  text.replace(QLatin1Char('<'), QLatin1String("&lt;"));
  text.replace(QLatin1Char('>'), QLatin1String("&gt;"));
  text.replace(QLatin1Char('"'), QLatin1String("&quote;"));
  text.replace(QLatin1Char('\''), QLatin1String("&rsquo;"));
  text.replace(QLatin1Char('\n'), QLatin1String("&newline;"));
  return text.isEmpty() ? QString(QLatin1String("&nbsp;")) : text;
}

QString oaConvert::toParameterString(oaDesign *design) {
  QString text;
  if (!design->isSuperMaster() && !design->isSubMaster()) {
    return text;
  }
  oaParamArray params;
  design->getParams(params);
  for (oaUInt4 i = params.getNumElements(); i > 0; --i) {
    text += toParameterLine(params[i - 1]);
  }
  return text;
}

oaParamArray oaConvert::mergeParameter(const oaParamArray &params, const QStringList &names,
                                       const QStringList &values) {
  oaParamArray merged;
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    oaParam param(params[i]);
    const QString name = nameOf(param);
    bool isNamed = false;
    for (int entry = 0; entry < names.size(); ++entry) {
      if (names.at(entry) == name) {
        setValueFromText(param, values.value(entry));
        merged.append(param);
        isNamed = true;
      }
    }
    if (!isNamed) {
      merged.append(param);
    }
  }
  return merged;
}

QString oaConvert::getParameter_(const QString &name, const QStringList &names, const QStringList &values,
                                 const QString &defaultValue) {
  const int entry = names.indexOf(name);
  return entry < 0 ? defaultValue : values.value(entry);
}

void oaConvert::printOaParamArray(const oaParamArray &params) {
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    oaString name;
    params[i].getName(name);
    std::printf("%d: %s ", static_cast<int>(i), static_cast<const oaChar *>(name));
    printValue(params[i]);
    std::printf("\n");
  }
}
