#ifndef CELLDATA_H
#define CELLDATA_H

#include "importreport.h"

#include <QString>
#include <QVector>

class PluginSession;

// A property of a cell's management data: the editor's data, the component description, or what others keep there.
struct CellProperty {
  QString name;
  QString text;
};

// All of them, in the order of their creation; none for a cell that has no such data. Asked for in Tcl, since the
// plug-in sends them only together with a drawing, which a cell need not have. Throws HostError when they cannot be
// read.
QVector<CellProperty> readCellData(PluginSession &session, const QString &lib, const QString &cell);

// Copies the editor's data and the component description of cells. A target cell that has other ones keeps them unless
// they are to be replaced. What stays behind goes to `report`.
struct CellDataCopy {
  QString lib;
  QString targetLib;
  bool isReplacing = false;
};
void copyCellData(PluginSession &session, const CellDataCopy &copy, const QString &cell, const QString &targetCell,
                  ImportReport &report);

#endif
