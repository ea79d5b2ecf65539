#include "propertyitem2.h"

#include <QRegExp>

propertyItem2::propertyItem2() : nameKind_(kNoName), valueKind_(kNoValue), nameNumber_(0), valueNumber_(0) {}

propertyItem2::propertyItem2(int name)
    : nameKind_(kIntegerName), valueKind_(kNoValue), nameNumber_(name), valueNumber_(0) {}

propertyItem2::propertyItem2(const QString &name)
    : nameKind_(kTextName), valueKind_(kNoValue), nameNumber_(0), valueNumber_(0), nameText_(name) {}

propertyItem2::propertyItem2(int name, const QString &value)
    : nameKind_(kIntegerName), valueKind_(kTextValue), nameNumber_(name), valueNumber_(0), valueText_(value) {}

propertyItem2::propertyItem2(int name, int value)
    : nameKind_(kIntegerName), valueKind_(kIntegerValue), nameNumber_(name), valueNumber_(value) {}

propertyItem2::propertyItem2(const QString &name, const QString &value)
    : nameKind_(kTextName), valueKind_(kTextValue), nameNumber_(0), valueNumber_(0), nameText_(name),
      valueText_(value) {}

void propertyItem2::setName(const QString &name) {
  nameKind_ = kTextName;
  nameText_ = name;
}

void propertyItem2::setValue(const QString &value) {
  valueKind_ = kTextValue;
  valueText_ = value;
}

void propertyItem2::setValue(int value) {
  valueKind_ = kIntegerValue;
  valueNumber_ = value;
  valueText_ = QString();
}

void propertyItem2::setValue(float value) {
  valueKind_ = kFloatValue;
  valueFloat_ = value;
  valueText_ = QString();
}

int propertyItem2::getNum() const {
  if (nameKind_ == kIntegerName) {
    return nameNumber_;
  }
  return QString(nameText_).remove(QRegExp(QLatin1String("\\D"))).toInt();
}

bool propertyItem2::isNum() const { return nameKind_ == kIntegerName; }

QString propertyItem2::getString() const {
  return nameKind_ == kIntegerName ? QString::number(nameNumber_) : nameText_;
}

QString propertyItem2::getValueString() const {
  switch (valueKind_) {
  case kIntegerValue:
    return QString::number(valueNumber_);
  case kTextValue:
    return valueText_;
  case kFloatValue:
    return QString::number(static_cast<double>(valueFloat_), 'g', 6);
  case kNoValue:
    break;
  }
  return QLatin1String(" ");
}

int propertyItem2::getValueInt() const { return valueKind_ == kIntegerValue ? valueNumber_ : -1; }
