#ifndef CELLDATATABLE_H
#define CELLDATATABLE_H

#include <QObject>
#include <QString>
#include <QVector>

class PluginSession;

// What is kept with a cell, as loadComponent() sends it: the component description and the cell's properties.
class CellDataTable : public QObject {
  Q_OBJECT

public:
  struct Entry {
    QString name;
    QString text;
  };

  explicit CellDataTable(PluginSession &session);
  // In the order in which they came.
  const QVector<Entry> &entries() const { return entries_; }

private slots:
  void compData(const QString &data, int type);

private:
  QVector<Entry> entries_;
};

#endif
