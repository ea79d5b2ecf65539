#ifndef XSCHEMPROPERTIES_H
#define XSCHEMPROPERTIES_H

#include <QByteArray>
#include <QHash>
#include <QPair>
#include <QString>

#include <vector>

// The text of a file: UTF-8, or Latin-1 where it is no valid UTF-8.
QString xschemText(const QByteArray &bytes);

// An attribute text such as `name=x1 model="nfet 1v8"`: words of the form key=value, with blanks or line ends between
// them. Quotation marks keep blanks in a value and are no part of it; a backslash takes the meaning from the character
// after it. Of a key that stands twice the first value counts. Words without "=" are no attributes.
class XschemProperties {
public:
  XschemProperties() = default;
  explicit XschemProperties(const QString &text);

  bool contains(const QString &key) const { return indexOf_.contains(key); }
  // Empty when there is none.
  QString value(const QString &key) const;
  // "true", "1" and the like.
  bool isTrue(const QString &key) const;
  // In order.
  const std::vector<QPair<QString, QString>> &all() const { return properties_; }

private:
  void add(const QString &key, const QString &value);

  std::vector<QPair<QString, QString>> properties_;
  QHash<QString, int> indexOf_;
};

// True of a value that xschem would have Tcl compute: tcleval(...).
bool isTclExpression(const QString &value);

#endif
