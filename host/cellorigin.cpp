#include "cellorigin.h"

#include <limits>

namespace {

// The shortest text that reads back as the same number. Doubles are narrowed on their way to the host: of one with few
// digits, this is the text that it had.
QString shortestText(float value) {
  QString text;
  for (int digits = 6; digits <= std::numeric_limits<float>::max_digits10; ++digits) {
    text = QString::number(double(value), 'g', digits);
    if (text.toFloat() == value)
      break;
  }
  return text;
}

QString textOf(const QVariant &value) {
  return value.userType() == QMetaType::Float ? shortestText(value.toFloat()) : value.toString();
}

// What the entry says of the cell, given what was known before it.
CellOrigin::Kind kindAfter(CellOrigin::Kind before, const CellDatum &datum) {
  using Kind = CellOrigin::Kind;
  if (datum.name != QLatin1String("oaType"))
    return before == Kind::Plain ? Kind::Variant : before;
  const QString value = datum.value.toString();
  if (value == QLatin1String("oaStdVia"))
    return Kind::StandardVia;
  if (value == QLatin1String("oaCustomVia"))
    return before == Kind::Plain ? Kind::CustomVia : Kind::VariantAsVia;
  return Kind::Variant;
}

} // namespace

QString CellOrigin::parameter(const char *name) const {
  const int index = parameterNames.indexOf(QLatin1String(name));
  return index < 0 ? QString() : parameterValues.at(index);
}

QString CellOrigin::lastParameter(const char *name) const {
  const int index = parameterNames.lastIndexOf(QLatin1String(name));
  return index < 0 ? QString() : parameterValues.at(index);
}

CellOrigin originOf(const LayoutCell &cell) {
  enum Number { None = 0, Library = 1, Cell = 3, View = 4 };
  CellOrigin origin;
  for (const CellDatum &datum : cell.cellData) {
    switch (datum.number) {
    case Library:
      origin.lib = datum.value.toString();
      break;
    case Cell:
      origin.cell = datum.value.toString();
      break;
    case View:
      origin.view = datum.value.toString();
      break;
    case None: {
      const CellOrigin::Kind kind = kindAfter(origin.kind, datum);
      // What comes before the list of a via are the parameters of its master, defaults included.
      if (kind != origin.kind && kind != CellOrigin::Kind::Variant) {
        origin.parameterNames.clear();
        origin.parameterValues.clear();
      }
      origin.kind = kind;
      origin.parameterNames.append(datum.name);
      origin.parameterValues.append(textOf(datum.value));
      break;
    }
    default:
      break;
    }
  }
  return origin;
}
