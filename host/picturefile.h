#ifndef PICTUREFILE_H
#define PICTUREFILE_H

#include <functional>

#include <QByteArray>
#include <QColor>
#include <QSize>
#include <QString>

#include "renderpicture.h"

class QImage;
class QPainter;

// What a picture is painted on.
struct PictureSheet {
  QPainter *painter;
  QImage *image; // of a PNG, of format ARGB32_Premultiplied; null for vector pictures
};

// The content of a file of the given format with a picture that `paint` paints on a background. The size is in pixels;
// 96 to the inch in PDF. Raises HostError when the picture cannot be made.
QByteArray pictureFile(PictureFormat format, const QSize &size, const QColor &background, const QString &title,
                       const std::function<void(const PictureSheet &)> &paint);

#endif
