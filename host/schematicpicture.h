#ifndef SCHEMATICPICTURE_H
#define SCHEMATICPICTURE_H

#include <optional>

#include <QByteArray>
#include <QHash>
#include <QSize>
#include <QString>

#include "rendergeometry.h"
#include "renderpicture.h"
#include "schematicscene.h"

struct SchematicPictureOptions {
  QSize size{1600, 1200}; // pixels; 96 to the inch in PDF
  bool isDark = false;
  bool hasTexts = true;
  std::optional<Extent> window; // what to show, in database units; default: everything
};

// Draws a schematic or a symbol and returns the file's content; `symbols` as SchematicScene takes them. `title` is
// shown above the drawing. Needs a QGuiApplication. Raises HostError when the picture cannot be made.
QByteArray drawSchematicPicture(const SchematicModel &model, SchematicScene::Kind kind,
                                const QHash<QString, const SymbolModel *> &symbols, const QString &title,
                                PictureFormat format, const SchematicPictureOptions &options);

#endif
