#include "oaconvert.h"

#include <cstdio>

#include "parametertext.h"
#include "qttoolkit.h"

using namespace oa;

namespace {

const char kUnsupported[] = "unsupported";

QString toNumberText(double value) { return QString::number(value, 'g', 6); }

// A value that is text has blanks and more in it, the choices of a list are two tokens.
QString toToken(const oaParam &param, const QString &value) {
  return param.getType() == oacStringParamType ? oaConvert::putString(value) : value;
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

bool ParameterText::isSupported() const { return type != kUnsupported; }

ParameterText toParameterText(const oaParam &param) {
  switch (static_cast<oaParamTypeEnum>(param.getType())) {
  case oacIntParamType:
    return {"int", QString::number(param.getIntVal())};
  case oacFloatParamType:
    return {"double", toNumberText(static_cast<double>(param.getFloatVal()))};
  case oacDoubleParamType:
    return {"double", toNumberText(param.getDoubleVal())};
  case oacBooleanParamType:
    return {"list", QLatin1String(param.getBooleanVal() ? "true false" : "false true")};
  case oacStringParamType:
    return {"string", toolkit::fromEightBit(param.getStringVal())};
  case oacAppParamType:
  case oacTimeParamType:
    break;
  }
  return {kUnsupported, QLatin1String("")};
}

QString toParameterName(const oaParam &param) {
  oaString name;
  param.getName(name);
  return oaConvert::toString(name);
}

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
    const oaParam &param = params[i - 1];
    const ParameterText parameter = toParameterText(param);
    if (parameter.isSupported()) {
      text += QLatin1Char('<') + QLatin1String(parameter.type) + QLatin1Char(' ') + putString(toParameterName(param)) +
              QLatin1Char(' ') + toToken(param, parameter.value) + QLatin1String(" >\n");
    }
  }
  return text;
}

oaParamArray oaConvert::mergeParameter(const oaParamArray &params, const QStringList &names,
                                       const QStringList &values) {
  oaParamArray merged;
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    oaParam param(params[i]);
    const QString name = toParameterName(param);
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
