#include "referencestream.h"

void CellDataSink::connectTo(QObject *sender) {
  SignalSink::connectTo(sender);
  connect(sender, SIGNAL(addCellNumData(int, QString)), SLOT(addCellNumData(int, QString)));
  connect(sender, SIGNAL(addCellData(QString, QString)), SLOT(addCellData(QString, QString)));
  connect(sender, SIGNAL(addCellDataInt(QString, int)), SLOT(addCellDataInt(QString, int)));
  connect(sender, SIGNAL(addCellDataFloat(QString, float)), SLOT(addCellDataFloat(QString, float)));
  connect(sender, SIGNAL(endCell()), SLOT(endCell()));
}

void CellDataSink::start() {
  SignalSink::start();
  data_ = 0;
}

void CellDataSink::addCellNumData(int key, QString value) { data_ += key + value.size(); }
void CellDataSink::addCellData(QString key, QString value) { data_ += key.size() + value.size(); }
void CellDataSink::addCellDataInt(QString key, int value) { data_ += key.size() + value; }
void CellDataSink::addCellDataFloat(QString key, float value) { data_ += key.size() + qint64(value); }
void CellDataSink::endCell() { ++data_; }

void ReferenceFloor::keepFrom(QObject *sender) {
  connect(sender, SIGNAL(addCell(QString)), SLOT(keepCell(QString)));
  connect(sender, SIGNAL(addCellNumData(int, QString)), SLOT(keepNumData(int, QString)));
  connect(sender, SIGNAL(addCellData(QString, QString)), SLOT(keepData(QString, QString)));
  connect(sender, SIGNAL(addCellDataInt(QString, int)), SLOT(keepDataInt(QString, int)));
  connect(sender, SIGNAL(addCellDataFloat(QString, float)), SLOT(keepDataFloat(QString, float)));
  connect(sender, SIGNAL(addBox(int, int, int, int, int, int)), SLOT(keepBox(int, int, int, int, int, int)));
  connect(sender, SIGNAL(addCellRef(QString, QPoint, QString, QString)),
          SLOT(keepReference(QString, QPoint, QString, QString)));
}

void ReferenceFloor::keepCell(QString name) {
  cells_.emplace_back();
  cells_.back().name = name;
}
void ReferenceFloor::keepNumData(int key, QString value) { cells_.back().numbers.push_back({key, value}); }
void ReferenceFloor::keepData(QString key, QString value) { cells_.back().texts.push_back({key, value}); }
void ReferenceFloor::keepDataInt(QString key, int value) { cells_.back().integers.push_back({key, value}); }
void ReferenceFloor::keepDataFloat(QString key, float value) { cells_.back().reals.push_back({key, value}); }
void ReferenceFloor::keepBox(int left, int bottom, int width, int height, int layer, int datatype) {
  cells_.back().boxes.push_back({left, bottom, width, height, layer, datatype});
}

// Masters come one by one, each in front of its first reference.
void ReferenceFloor::keepReference(QString cell, QPoint origin, QString trans, QString instance) {
  const bool isFirst = cellsPlaced_ < cells_.size();
  cellsPlaced_ = cells_.size();
  references_.push_back({cell, origin, trans, instance, isFirst});
}

void ReferenceFloor::sendCell(const Cell &cell) {
  emit addCell(cell.name);
  for (const Number &number : cell.numbers) {
    emit addCellNumData(number.key, number.value);
  }
  for (const Integer &integer : cell.integers) {
    emit addCellDataInt(integer.key, integer.value);
  }
  for (const Real &real : cell.reals) {
    emit addCellDataFloat(real.key, real.value);
  }
  for (const Text &text : cell.texts) {
    emit addCellData(text.key, text.value);
  }
  for (const Box &box : cell.boxes) {
    emit addBox(box.left, box.bottom, box.width, box.height, box.layer, box.datatype);
  }
}

void ReferenceFloor::send() {
  emit setUnits(0.001, 1e-9);
  sendCell(cells_.front());
  size_t next = 1;
  for (const Reference &reference : references_) {
    emit existCell(reference.cell);
    if (reference.isFirst) {
      sendCell(cells_[next++]);
      emit endCell();
    }
    emit addCellRef(reference.cell, reference.origin, reference.trans, reference.instance);
  }
  emit endCell();
  emit setCurrentCell(cells_.front().name);
}
