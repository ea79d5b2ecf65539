#include "signalsink.h"

#include "benchplugin.h"
#include "oaplugincore.h"

bool Received::operator==(const Received &other) const {
  return boxes == other.boxes && polygons == other.polygons && paths == other.paths && references == other.references &&
         questions == other.questions && cells == other.cells && errors == other.errors && checksum == other.checksum;
}

QString Received::text() const {
  return QString("%1 boxes, %2 polygons, %3 paths, %4 references, %5 questions, %6 cells, %7 errors, checksum %8")
      .arg(boxes)
      .arg(polygons)
      .arg(paths)
      .arg(references)
      .arg(questions)
      .arg(cells)
      .arg(errors)
      .arg(checksum, 16, 16, QChar('0'));
}

void SignalSink::connectTo(QObject *sender) {
  connect(sender, SIGNAL(reportError(QString, int, QString)), SLOT(reportError(QString, int, QString)));
  connect(sender, SIGNAL(setUnits(double, double)), SLOT(setUnits(double, double)));
  connect(sender, SIGNAL(setCurrentCell(QString)), SLOT(setCurrentCell(QString)));
  connect(sender, SIGNAL(addCell(QString)), SLOT(addCell(QString)));
  connect(sender, SIGNAL(existCell(QString)), SLOT(existCell(QString)));
  connect(sender, SIGNAL(addBox(int, int, int, int, int, int)), SLOT(addBox(int, int, int, int, int, int)));
  connect(sender, SIGNAL(addPolygon(QPolygon, int, int)), SLOT(addPolygon(QPolygon, int, int)));
  connect(sender, SIGNAL(addPath(QPolygon, int, int, int, int, int, int)),
          SLOT(addPath(QPolygon, int, int, int, int, int, int)));
  connect(sender, SIGNAL(addCellRef(QString, QPoint, QString, QString)),
          SLOT(addCellRef(QString, QPoint, QString, QString)));
}

void SignalSink::start() {
  received_ = Received();
  heldCells_.clear();
  firstSignalMs_ = -1;
  firstObjectMs_ = -1;
  residentBytes_ = 0;
  firstError_.clear();
  start_ = std::chrono::steady_clock::now();
}

double SignalSink::elapsedMs() const {
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start_).count();
}

void SignalSink::reportError(QString message, int severity, QString detail) {
  if (received_.errors++ == 0) {
    firstError_ = QString("%1 (%2): %3").arg(message).arg(severity).arg(detail);
  }
}

void SignalSink::setUnits(double userUnitsPerDbu, double metresPerDbu) {
  Q_UNUSED(userUnitsPerDbu)
  Q_UNUSED(metresPerDbu)
  if (firstSignalMs_ < 0) {
    firstSignalMs_ = elapsedMs();
  }
}

void SignalSink::setCurrentCell(QString name) {
  Q_UNUSED(name)
  residentBytes_ = residentBytes();
}

void SignalSink::addCell(QString name) {
  ++received_.cells;
  heldCells_.insert(name);
}

void SignalSink::existCell(QString name) {
  ++received_.questions;
  plugIn_->setBool(heldCells_.contains(name));
}

void SignalSink::addBox(int left, int bottom, int width, int height, int layer, int datatype) {
  noteFirstObject();
  ++received_.boxes;
  received_.checksum += quint64(left) + 3 * quint64(bottom) + 5 * quint64(width) + 7 * quint64(height) +
                        11 * quint64(layer) + 13 * quint64(datatype);
}

namespace {

quint64 sumOf(const QPolygon &points) {
  quint64 sum = quint64(points.size());
  for (const QPoint &point : points) {
    sum = sum * 31 + quint64(point.x()) + 3 * quint64(point.y());
  }
  return sum;
}

} // namespace

void SignalSink::addPolygon(QPolygon points, int layer, int datatype) {
  noteFirstObject();
  ++received_.polygons;
  received_.checksum += sumOf(points) + 11 * quint64(layer) + 13 * quint64(datatype);
}

void SignalSink::addPath(QPolygon points, int layer, int datatype, int width, int caps, int beginExt, int endExt) {
  noteFirstObject();
  ++received_.paths;
  received_.checksum += sumOf(points) + 11 * quint64(layer) + 13 * quint64(datatype) + 17 * quint64(width) +
                        19 * quint64(caps) + 23 * quint64(beginExt) + 29 * quint64(endExt);
}

void SignalSink::addCellRef(QString cell, QPoint origin, QString trans, QString instance) {
  noteFirstObject();
  ++received_.references;
  received_.checksum += quint64(origin.x()) + 3 * quint64(origin.y()) + 5 * quint64(cell.size()) +
                        7 * quint64(trans.size()) + 31 * quint64(cell.at(cell.size() - 1).unicode()) +
                        37 * quint64(instance.size()) + 41 * quint64(instance.at(instance.size() - 1).unicode());
}

FloorSender::FloorSender(workload::Kind kind, int count) : kind_(kind) {
  const int masters = kind == workload::kInstances ? workload::kMasterCount : 0;
  const int boxes = kind == workload::kRectangles ? count : masters;
  boxes_.reserve(size_t(boxes));
  for (int i = 0; i < boxes; ++i) {
    const workload::Rectangle box = workload::rectangle(i);
    boxes_.push_back({box.left, box.bottom, box.width, box.height, workload::layer(i), 0});
  }
  const int pointCount = kind == workload::kPolygons ? 5 : kind == workload::kPaths ? 3 : 0;
  points_.resize(size_t(pointCount) * size_t(count));
  for (int i = 0; pointCount > 0 && i < count; ++i) {
    layers_.push_back(workload::layer(i));
    (pointCount == 5 ? workload::polygon : workload::path)(i, &points_[size_t(pointCount) * size_t(i)]);
  }
  std::vector<QString> masterNames;
  masterNames.reserve(size_t(masters));
  for (int i = 0; i < masters; ++i) {
    masterNames.push_back(workload::masterName(i));
  }
  references_.reserve(masters ? size_t(count) : 0);
  for (int i = 0; masters && i < count; ++i) {
    references_.push_back(
        {masterNames[size_t(workload::master(i))], workload::origin(i), workload::trans(i), workload::instanceName(i)});
  }
}

// A fresh polygon for each emission, which is what a sender without buffers of its own has to make.
void FloorSender::send() {
  emit setUnits(0.001, 1e-9);
  emit addCell(QStringLiteral("top"));
  switch (kind_) {
  case workload::kRectangles:
    for (const Box &box : boxes_) {
      emit addBox(box.left, box.bottom, box.width, box.height, box.layer, box.datatype);
    }
    break;
  case workload::kPolygons:
    for (size_t i = 0; i < layers_.size(); ++i) {
      QPolygon points(5);
      std::copy_n(&points_[5 * i], 5, points.data());
      emit addPolygon(points, layers_[i], 0);
    }
    break;
  case workload::kPaths:
    for (size_t i = 0; i < layers_.size(); ++i) {
      QPolygon points(3);
      std::copy_n(&points_[3 * i], 3, points.data());
      emit addPath(points, layers_[i], 0, workload::kPathWidthDbu, 0, 0, 0);
    }
    break;
  case workload::kInstances:
    sendMasters();
    break;
  }
  emit setCurrentCell(QStringLiteral("top"));
}

// Each master comes with its first reference.
void FloorSender::sendMasters() {
  size_t sent = 0;
  for (const Reference &reference : references_) {
    emit existCell(reference.cell);
    if (sent < boxes_.size() && &reference - references_.data() == qint64(sent)) {
      const Box &box = boxes_[size_t(workload::master(int(sent)))];
      emit addCell(reference.cell);
      emit addBox(box.left, box.bottom, box.width, box.height, box.layer, box.datatype);
      ++sent;
    }
    emit addCellRef(reference.cell, reference.origin, reference.trans, reference.instance);
  }
}
