#include "oaconvert.h"

using namespace oa;

QPoint oaConvert::toPoint(const oaPoint &point) { return QPoint(point.x(), point.y()); }

oaPoint oaConvert::toOaPoint(const QPoint &point) { return oaPoint(point.x(), point.y()); }

QPolygon oaConvert::toPointArray(const oaPointArray &points) {
  const int count = static_cast<int>(points.getNumElements());
  const oaPoint *source = points.getElements();
  QPolygon polygon(count);
  QPoint *target = polygon.data();
  for (int i = 0; i < count; ++i) {
    target[i] = toPoint(source[i]);
  }
  return polygon;
}

oaPointArray oaConvert::toOaPointArray(const QPolygon &points) {
  oaPointArray array(static_cast<oaUInt4>(points.size()));
  for (int i = 0; i < points.size(); ++i) {
    array.append(toOaPoint(points.at(i)));
  }
  return array;
}

QString oaConvert::toPointString(const QPoint &point) {
  return QString::number(point.x()) + QLatin1Char(' ') + QString::number(point.y());
}

QPoint oaConvert::stringToPoint(const QString &text) {
  const int blank = text.indexOf(QLatin1Char(' '));
  if (blank <= 0) {
    return QPoint(0, 0);
  }
  return QPoint(text.left(blank).toInt(), text.mid(blank + 1).toInt());
}

QString oaConvert::toString(const oaVector &vector) {
  return QString::number(vector.x()) + QLatin1Char('/') + QString::number(vector.y());
}

// Unlike the blank of a point, the slash may stand in front: "/7" is (0, 7).
oaVector oaConvert::toOaVector(const QString &text) {
  const int slash = text.indexOf(QLatin1Char('/'));
  if (slash < 0) {
    return oaVector(0, 0);
  }
  return oaVector(text.left(slash).toInt(), text.mid(slash + 1).toInt());
}
