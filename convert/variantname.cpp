#include "oaconvert.h"

#include <QCryptographicHash>

#include "qttoolkit.h"

QString oaConvert::toHash(const QList<propertyItem2> &items) {
  QByteArray bytes;
  for (int i = 0; i < items.size(); ++i) {
    if (items.at(i).isText()) {
      bytes += toolkit::toEightBit(items.at(i).getString()) + '=';
      bytes += toolkit::toEightBit(items.at(i).getValueString()) + ';';
    }
  }
  return QLatin1String(QCryptographicHash::hash(bytes, QCryptographicHash::Md5).toHex().constData());
}

QString oaConvert::toCellName(const QList<propertyItem2> &items, const QString &currentLib) {
  QString lib;
  QString cell;
  QString view;
  bool isVariant = false;
  for (int i = 0; i < items.size(); ++i) {
    const propertyItem2 &item = items.at(i);
    isVariant = isVariant || item.isText();
    if (!item.isNum()) {
      continue;
    }
    switch (item.getNum()) {
    case propertyItem2::kLibraryCode:
      lib = item.getValueString();
      break;
    case propertyItem2::kCellCode:
      cell = item.getValueString();
      break;
    case propertyItem2::kViewCode:
      view = item.getValueString();
      break;
    default:
      break;
    }
  }

  QString name = cell;
  if (!view.isEmpty() && view != QLatin1String("layout")) {
    name += QLatin1Char('_') + view;
  }
  if (!lib.isEmpty() && lib != currentLib) {
    name += QLatin1Char('~') + lib;
  }
  if (isVariant) {
    name += QLatin1Char('~') + toHash(items);
  }
  return name;
}
