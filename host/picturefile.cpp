#include "picturefile.h"

#include <QBuffer>
#include <QFontDatabase>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

#include "hosterror.h"

namespace {

using Paint = std::function<void(const PictureSheet &)>;

void paintVector(QPaintDevice *device, const QSize &size, const QColor &background, const Paint &paint) {
  QPainter painter;
  if (!painter.begin(device))
    throw HostError(QStringLiteral("the picture cannot be begun"));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(QRectF(QPointF(0, 0), QSizeF(size)), background);
  paint({&painter, nullptr});
}

QByteArray pngFile(const QSize &size, const QColor &background, const Paint &paint) {
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  if (image.isNull())
    throw HostError(QStringLiteral("no memory for a picture of %1x%2 pixels").arg(size.width()).arg(size.height()));
  image.fill(background);
  QPainter painter(&image);
  paint({&painter, &image});
  painter.end();
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  if (!image.convertToFormat(QImage::Format_RGB32).save(&buffer, "PNG"))
    throw HostError(QStringLiteral("the picture cannot be encoded as PNG"));
  return buffer.data();
}

QByteArray svgFile(const QSize &size, const QColor &background, const QString &title, const Paint &paint) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  QSvgGenerator generator;
  generator.setOutputDevice(&buffer);
  generator.setResolution(96);
  generator.setSize(size);
  generator.setViewBox(QRect(QPoint(0, 0), size));
  generator.setTitle(title.toHtmlEscaped());
  paintVector(&generator, size, background, paint);
  return buffer.data();
}

QByteArray pdfFile(const QSize &size, const QColor &background, const QString &title, const Paint &paint) {
  const double kPixelsPerInch = 96, kPointsPerInch = 72;
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&buffer);
    writer.setResolution(static_cast<int>(kPixelsPerInch));
    writer.setPageSize(QPageSize(QSizeF(size) * (kPointsPerInch / kPixelsPerInch), QPageSize::Point));
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    writer.setTitle(title);
    paintVector(&writer, size, background, paint);
  }
  return buffer.data();
}

} // namespace

QByteArray pictureFile(PictureFormat format, const QSize &size, const QColor &background, const QString &title,
                       const std::function<void(const PictureSheet &)> &paint) {
  if (QFontDatabase().families().isEmpty())
    throw HostError(QStringLiteral("no font is installed; install one, for example the package fonts-dejavu-core"));
  switch (format) {
  case PictureFormat::Svg:
    return svgFile(size, background, title, paint);
  case PictureFormat::Pdf:
    return pdfFile(size, background, title, paint);
  case PictureFormat::Png:
    break;
  }
  return pngFile(size, background, paint);
}
