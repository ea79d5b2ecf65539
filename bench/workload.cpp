#include "workload.h"

#include <stdexcept>

#include "oaplugincore.h"

namespace workload {

namespace {

const int kColumns = 4096;
const int kPitchDbu = 100;
const int kLayers = 16;
const QString kView = QStringLiteral("layout");

} // namespace

Kind kindOf(const std::string &name) {
  for (const Named &named : kAll) {
    if (name == named.name) {
      return named.kind;
    }
  }
  throw std::invalid_argument("there is no workload " + name);
}

const char *nameOf(Kind kind) {
  for (const Named &named : kAll) {
    if (kind == named.kind) {
      return named.name;
    }
  }
  return "";
}

Rectangle rectangle(int index) {
  return {index % kColumns * kPitchDbu, index / kColumns * kPitchDbu, 20 + index % 61, 10 + index % 43};
}

int layer(int index) { return index % kLayers; }

void polygon(int index, QPoint *points) {
  const Rectangle box = rectangle(index);
  points[0] = QPoint(box.left, box.bottom);
  points[1] = QPoint(box.left + box.width, box.bottom);
  points[2] = QPoint(box.left + box.width, box.bottom + box.height);
  points[3] = QPoint(box.left + box.width / 2, box.bottom + box.height + 5);
  points[4] = QPoint(box.left, box.bottom + box.height);
}

void path(int index, QPoint *points) {
  const Rectangle box = rectangle(index);
  points[0] = QPoint(box.left, box.bottom);
  points[1] = QPoint(box.left + box.width, box.bottom);
  points[2] = QPoint(box.left + box.width, box.bottom + box.height);
}

QString masterName(int master) { return QStringLiteral("master%1").arg(master); }

// Neighbours have different masters, as in a row of standard cells.
int master(int index) { return int(qint64(index) * 7919 % kMasterCount); }

QPoint origin(int index) {
  const Rectangle box = rectangle(index);
  return QPoint(box.left, box.bottom);
}

QString trans(int index) {
  static const QString kTrans[] = {QString(), QStringLiteral("R180"), QStringLiteral("M"), QStringLiteral("R180M")};
  return kTrans[index % 4];
}

QString instanceName(int index) { return QStringLiteral("I%1").arg(index); }

namespace {

void save(oaPlugInCore &plugIn, const QString &lib, Kind kind, int index) {
  const Rectangle box = rectangle(index);
  switch (kind) {
  case kRectangles:
    // QRect holds the corners as they are given.
    plugIn.saveBox(QRect(QPoint(box.left, box.bottom + box.height), QPoint(box.left + box.width, box.bottom)),
                   layer(index), 0);
    break;
  case kPolygons: {
    QPolygon points(5);
    polygon(index, points.data());
    plugIn.savePolygon(layer(index), 0, points);
    break;
  }
  case kPaths: {
    QPolygon points(3);
    path(index, points.data());
    plugIn.savePath(points, kPathWidthDbu, layer(index), 0, 0);
    break;
  }
  case kInstances:
    plugIn.saveCellref(lib, masterName(master(index)), kView, origin(index), trans(index), instanceName(index), {}, {},
                       {}, {});
    break;
  }
}

} // namespace

void write(oaPlugInCore &plugIn, const QString &lib, const QString &cell, Kind kind, int count) {
  if (kind == kInstances) {
    for (int index = 0; index < kMasterCount; ++index) {
      plugIn.saveLayout(lib, masterName(index), kView, true, {}, {});
      save(plugIn, lib, kRectangles, index);
      plugIn.saveClose();
    }
  }
  plugIn.saveLayout(lib, cell, kView, true, {}, {});
  for (int index = 0; index < count; ++index) {
    save(plugIn, lib, kind, index);
  }
  plugIn.saveClose();
}

} // namespace workload
