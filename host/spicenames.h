#ifndef SPICENAMES_H
#define SPICENAMES_H

#include <QHash>
#include <QSet>
#include <QString>

// Names as SPICE simulators accept them, different from each other without regard to case.
class SpiceNames {
public:
  // The bits of buses in square brackets, a[3], and an underscore for each character that ends a name or begins
  // something else.
  static QString legal(const QString &name);

  // A legal name that no earlier call has returned: `name` itself, or with a number behind it.
  QString unique(const QString &name);
  // Keeps a legal name from being given away.
  void reserve(const QString &legalName) { taken_.insert(legalName.toLower()); }

private:
  QSet<QString> taken_;
  QHash<QString, int> lastNumbers_; // added to each name so far
};

#endif
