#ifndef SIGNALCOUNTER_H
#define SIGNALCOUNTER_H

#include "signaltap.h"

#include <QMap>
#include <QPair>

class PluginSession;

// Counts the signals of each kind, and the shapes of each layer and datatype.
class SignalCounter : public SignalTap {
public:
  explicit SignalCounter(PluginSession &session);
  // The counts as lines of words and numbers. References and arrays count their signals, shapes include texts.
  //   signal addBox 42
  //   layer 68/20 boxes 40 polygons 2 paths 0 texts 0
  //   cells 3
  //   references 12
  //   arrays 6
  //   array-elements 52
  //   shapes 42
  //   texts 0
  //   signals 66
  //   seconds 0.00123
  //   signals-per-second 53658
  QByteArray report(double seconds) const;

protected:
  void record(int signal, void **arguments) override;

private:
  enum Kind { kBox, kPolygon, kPath, kText, kArray, kOther };
  struct LayerCounts {
    quint64 shapes[4] = {0, 0, 0, 0};
  };
  void countShape(Kind kind, int layer, int datatype);
  quint64 countOf(const char *name) const;

  QVector<Kind> kinds_; // of each signal
  QVector<quint64> counts_;
  QMap<QPair<int, int>, LayerCounts> layers_;
  // The entry of the layer that was counted last.
  QPair<int, int> lastLayer_;
  LayerCounts *lastCounts_ = nullptr;
  quint64 arrayElements_ = 0;
};

#endif
