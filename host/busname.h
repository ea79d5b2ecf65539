#ifndef BUSNAME_H
#define BUSNAME_H

#include <QString>
#include <QStringList>

#include <vector>

// Names in host syntax: members parted by commas, each a scalar (EN), a bit (A<3>) or a range (D<0:7>, D<7:0:2>), with
// a repeat count in front (2*D<0:1>). What does not fit is a scalar with that very text. bitsOfName() and bitNamesOf()
// are declared in schematicconnectivity.h.

struct NameMember {
  enum class Kind { Scalar, Bit, Range };
  Kind kind = Kind::Scalar;
  QString base; // without index or range
  int repeat = 1;
  // The index of a bit is `start`.
  int start = 0;
  int stop = 0;
  int step = 1;

  // Bits of all repeats.
  qint64 bits() const;
  // `offset` counts from 0 within one repeat.
  QString bitName(qint64 offset) const;
};

// Empty members are dropped, blanks around a member do not count.
std::vector<NameMember> membersOfName(const QString &name);

// The form under which names are compared: no empty members, no blanks around members, and a name of one bit as
// bitNamesOf() gives it. Names in this form are equal when they are the same text.
QString plainNetName(const QString &name);

// "A" three times is "3*A", "A,B" is "A,B,A,B,A,B". `name` is in plain form.
QString repeatedName(const QString &name, int times);
// The name that gives `name` when it is repeated; an empty text when there is none.
QString unrepeatedName(const QString &name, int times);

#endif
