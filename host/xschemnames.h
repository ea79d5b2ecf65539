#ifndef XSCHEMNAMES_H
#define XSCHEMNAMES_H

#include "importreport.h"
#include "schematicmodel.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <map>
#include <optional>

// Turns the names of one file into the host's syntax. xschem writes A[3:0], A[6:0:2], A[3,1], A[3..0] (the scalars A3
// to A0), A,B, 2*A and 2*(A,B); the host A<3:0>, A<6:0:2>, A<3>,A<1>, ... What the host or the database takes for
// something else (/ < > : * within a name, # before it) becomes "_", characters beyond Latin-1 see latin1Name(), and
// two names never become one by that.
class XschemNames {
public:
  // `report` is borrowed.
  explicit XschemNames(ImportReport &report) : report_(report) {}

  // The name of a net, port or pin; nothing, with a problem told, where it cannot be expressed.
  std::optional<QString> netName(const QString &name, const QString &place);

  // Gives a placement its name and range. A name of several that is no plain range makes an iterated placement that
  // counts from 0; a name that is taken gets a number. Both are told.
  void nameInstance(SchematicPlacement &placement, const QString &name, const QString &place);

private:
  QString databaseName(QHash<QString, QString> &originals, const QString &name, const QString &place);
  bool claim(const SchematicPlacement &placement);

  ImportReport &report_;
  // Of each name in the database, what the file calls it.
  QHash<QString, QString> originalNets_, originalInstances_;
  QSet<QString> instances_;                   // single ones
  QHash<QString, std::map<int, int>> ranges_; // first and last number of the iterated ones of each name
  QHash<QString, int> lastNumbers_;           // added to each name so far
};

// Whether a name means several bits; false for what cannot be understood.
bool isXschemBusName(const QString &name);

#endif
