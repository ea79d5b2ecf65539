#ifndef PROPERTYITEM2_H
#define PROPERTYITEM2_H

#include <QString>

// One optional name and one optional value, each with its kind. Lists of items carry a cell's identity (integer names)
// and its parameters (text names) between the readers and oaConvert::toCellName().
class propertyItem2 {
public:
  // Integer names of a cell's identity.
  enum IdentityCode { kLibraryCode = 1, kReservedCode = 2, kCellCode = 3, kViewCode = 4 };

  propertyItem2();
  // A name without a value.
  explicit propertyItem2(int name);
  explicit propertyItem2(const QString &name);
  propertyItem2(int name, const QString &value);
  propertyItem2(int name, int value);
  propertyItem2(const QString &name, const QString &value);

  void setName(const QString &name);
  void setValue(const QString &value);
  void setValue(int value);
  void setValue(float value);

  // The integer name; of a text name the number that its decimal digits form ("net12a3": 123, no digit: 0); 0 without a
  // name.
  int getNum() const;
  // True when the name is an integer.
  bool isNum() const;
  // True when the name is a text: the item is a parameter.
  bool isText() const { return nameKind_ == kTextName; }
  // The name as text; a null text without a name.
  QString getString() const;
  // The value as text, a float with six significant digits. Without a value it is one blank, which the variant hash
  // depends on.
  QString getValueString() const;
  // The value when it is an integer, otherwise -1.
  int getValueInt() const;

private:
  // The numbers are part of the item's definition; a name is never a float.
  enum NameKind : unsigned int { kNoName = 0, kIntegerName = 1, kTextName = 2 };
  enum ValueKind : unsigned int { kNoValue = 0, kIntegerValue = 1, kTextValue = 2, kFloatValue = 3 };

  NameKind nameKind_;
  ValueKind valueKind_;
  int nameNumber_;
  union {
    int valueNumber_;
    float valueFloat_;
  };
  QString nameText_;
  QString valueText_;
};

#endif
