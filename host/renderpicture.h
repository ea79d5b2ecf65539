#ifndef RENDERPICTURE_H
#define RENDERPICTURE_H

#include <limits>
#include <optional>

#include <QByteArray>
#include <QSize>
#include <QString>

#include "layermap.h"
#include "layoutmodel.h"
#include "rendergeometry.h"

enum class PictureFormat { Png, Svg, Pdf };

struct PictureOptions {
  QSize size{1600, 1200};                       // pixels; 96 to the inch in PDF
  int levels = std::numeric_limits<int>::max(); // of cells; the top cell is the first
  bool isDark = true;
  bool hasLegend = true;
  bool hasTexts = true;
  std::optional<Extent> window; // what to show, in database units of the top cell; default: everything
};

// The format that a file's ending asks for; nothing for an unknown ending.
std::optional<PictureFormat> pictureFormatOf(const QString &fileName);

// Draws the model's top cell and returns the file's content. `title` is shown above the drawing. Needs a
// QGuiApplication. Raises HostError when the picture cannot be made.
QByteArray drawPicture(const LayoutModel &model, const LayerMap &layers, const QString &title, PictureFormat format,
                       const PictureOptions &options);

#endif
