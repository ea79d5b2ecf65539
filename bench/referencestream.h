#ifndef REFERENCESTREAM_H
#define REFERENCESTREAM_H

#include <vector>

#include "signalsink.h"

// A sink that takes the data of cells too, as a host does that tells variants apart.
class CellDataSink : public SignalSink {
  Q_OBJECT

public:
  using SignalSink::SignalSink;

  void connectTo(QObject *sender);
  void start();
  qint64 data() const { return data_; }

public slots:
  void addCellNumData(int key, QString value);
  void addCellData(QString key, QString value);
  void addCellDataInt(QString key, int value);
  void addCellDataFloat(QString key, float value);
  void endCell();

private:
  qint64 data_ = 0;
};

// The floor of a cell that places cells of boxes: a stream that was received before, emitted from arrays in memory by
// an object with the plug-in's declarations.
class ReferenceFloor : public QObject {
  Q_OBJECT

public:
  // Keeps what arrives from here on.
  void keepFrom(QObject *sender);
  void send();

public slots:
  void keepCell(QString name);
  void keepNumData(int key, QString value);
  void keepData(QString key, QString value);
  void keepDataInt(QString key, int value);
  void keepDataFloat(QString key, float value);
  void keepBox(int left, int bottom, int width, int height, int layer, int datatype);
  void keepReference(QString cell, QPoint origin, QString trans, QString instance);

signals:
  void setUnits(double, double);
  void setCurrentCell(QString);
  void addCell(QString cellname);
  void addCellNumData(int, QString);
  void addCellData(QString, QString);
  void addCellDataInt(QString, int);
  void addCellDataFloat(QString, float);
  void existCell(QString cellname);
  void endCell();
  void addBox(int left, int bottom, int width, int height, int layer, int datatype);
  void addPolygon(QPolygon pa, int layer, int datatype);
  void addPath(QPolygon pa, int layer, int datatype, int width, int caps, int bExt, int eExt);
  void addCellRef(QString cell, QPoint, QString trans, QString devicename);
  void reportError(QString, int, QString);

private:
  struct Box {
    int left, bottom, width, height, layer, datatype;
  };
  struct Number {
    int key;
    QString value;
  };
  struct Text {
    QString key, value;
  };
  struct Integer {
    QString key;
    int value;
  };
  struct Real {
    QString key;
    float value;
  };
  struct Cell {
    QString name;
    std::vector<Number> numbers;
    std::vector<Text> texts;
    std::vector<Integer> integers;
    std::vector<Real> reals;
    std::vector<Box> boxes;
  };
  struct Reference {
    QString cell;
    QPoint origin;
    QString trans, instance;
    // The cell comes in front of this reference.
    bool isFirst;
  };

  void sendCell(const Cell &cell);

  // The top cell first, then the others in their order.
  std::vector<Cell> cells_;
  std::vector<Reference> references_;
  // While keeping: how many cells have a reference, the top cell among them.
  size_t cellsPlaced_ = 1;
};

#endif
