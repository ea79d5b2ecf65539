#ifndef GDSINDEX_H
#define GDSINDEX_H

#include "coordinatescale.h"
#include "gdsparser.h"
#include "importreport.h"

#include <QHash>

#include <vector>

struct GdsStructure {
  QByteArray name;
  qint64 offset = -1;      // -1: placed, but not in the file
  std::vector<int> placed; // numbers of the structures that it places, each once
  bool isDefined() const { return offset >= 0; }
};

// The first pass over a file, which finds all faults before anything is written: broken grammar, coordinates that
// cannot be scaled, structures defined twice, not defined, or placing themselves.
class GdsIndex : private GdsHandler {
public:
  // Throws GdsError for what makes the file unusable; the rest goes into the report.
  GdsIndex(const GdsParser &parser, const CoordinateScale &scale, ImportReport &report);

  // Defined ones in the file's order, among them those that are only placed.
  const std::vector<GdsStructure> &structures() const { return structures_; }
  // The number of a structure, or -1.
  int find(const QByteArray &name) const { return numbers_.value(name, -1); }

private:
  void beginStructure(const QByteArray &name, qint64 offset) override;
  void element(const GdsElement &element) override;
  void endStructure() override;

  int number(const QByteArray &name);
  void checkScale(const GdsElement &element, int value) const;
  void reportMissing();
  void reportRecursion();

  const GdsParser &parser_;
  const CoordinateScale &scale_;
  ImportReport &report_;
  std::vector<GdsStructure> structures_;
  QHash<QByteArray, int> numbers_;
  int current_ = -1;
  std::vector<int> lastPlacedIn_; // of each structure: the last one that was seen to place it
};

#endif
