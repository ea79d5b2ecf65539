#include "pluginlayoutwriter.h"

#include "oaplugincore.h"
#include "pluginsession.h"
#include "usermessage.h"

PluginLayoutWriter::PluginLayoutWriter(PluginSession &session, const QString &lib, const QString &view)
    : session_(session), lib_(lib), view_(view) {}

bool PluginLayoutWriter::beginCell(const QString &cell) {
  session_.synchronise();
  errorsBefore_ = session_.errorCount();
  cell_ = cell;
  session_.core().saveLayout(lib_, cell, view_, true, QStringList(), QStringList());
  session_.synchronise();
  if (session_.errorCount() == errorsBefore_)
    return true;
  tellUser(QStringLiteral("%1 could not be opened for writing and is left out").arg(cellViewName(lib_, cell, view_)));
  return false;
}

void PluginLayoutWriter::writeBox(const QRect &box, LayerPurpose layer) {
  session_.core().saveBox(box, layer.layer, layer.datatype);
}

void PluginLayoutWriter::writePolygon(const QPolygon &points, LayerPurpose layer) {
  session_.core().savePolygon(layer.layer, layer.datatype, points);
}

void PluginLayoutWriter::writePath(const QPolygon &points, int width, int caps, LayerPurpose layer) {
  session_.core().savePath(points, width, layer.layer, layer.datatype, caps);
}

void PluginLayoutWriter::writeText(const ModelText &text, LayerPurpose layer) {
  session_.core().saveText(layer.layer, layer.datatype, text.text, text.origin, text.presentation,
                           text.orientation.toWriterText(), text.height);
}

void PluginLayoutWriter::writeReference(const QString &cell, const ModelReference &reference) {
  placeMaster({lib_, cell, view_, {}, {}}, reference);
}

void PluginLayoutWriter::placeMaster(const CellMaster &master, const ModelReference &reference) {
  const QString trans = reference.orientation.toWriterText();
  if (reference.isArray) {
    session_.core().saveCellrefArray(master.lib, master.cell, master.view, reference.origin, trans, reference.name,
                                     master.parameterNames, master.parameterValues, reference.columnPitch,
                                     reference.rowPitch, reference.columns, reference.rows);
  } else {
    session_.core().saveCellref(master.lib, master.cell, master.view, reference.origin, trans, reference.name,
                                master.parameterNames, master.parameterValues, {}, {});
  }
}

void PluginLayoutWriter::endCell() {
  session_.core().saveClose();
  session_.synchronise();
  const int errors = session_.errorCount() - errorsBefore_;
  if (errors > 0) {
    tellUser(
        QStringLiteral("%1: %2 while it was written")
            .arg(cellViewName(lib_, cell_, view_), counted(static_cast<quint64>(errors), QStringLiteral("error"))));
  }
}
