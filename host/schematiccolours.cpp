#include "schematiccolours.h"

#include "layercolours.h"

namespace {

// Lines are thin, so they need more contrast than areas do.
constexpr double kLineContrast = 3.5;

} // namespace

SchematicTheme SchematicTheme::light() {
  SchematicTheme theme;
  theme.background = Qt::white;
  theme.wire = QColor(0x1a, 0x3f, 0x9c);
  theme.bus = QColor(0x12, 0x2c, 0x78);
  theme.label = QColor(0x8a, 0x4b, 0x00);
  theme.port = QColor(0xb8, 0x1c, 0x28);
  theme.ground = QColor(0x14, 0x5a, 0x32);
  theme.device = QColor(0x14, 0x5a, 0x32);
  theme.name = QColor(0x1a, 0x1c, 0x20);
  theme.property = QColor(0x5c, 0x62, 0x6a);
  theme.missing = QColor(0xc2, 0x5a, 0x00);
  theme.origin = QColor(0x9a, 0xa0, 0xa8);
  return theme;
}

SchematicTheme SchematicTheme::dark() {
  SchematicTheme theme;
  theme.background = QColor(0x10, 0x12, 0x16);
  theme.wire = QColor(0x6e, 0xa8, 0xff);
  theme.bus = QColor(0x9c, 0xc4, 0xff);
  theme.label = QColor(0xf0, 0xb4, 0x5a);
  theme.port = QColor(0xff, 0x70, 0x78);
  theme.ground = QColor(0x6c, 0xd0, 0x96);
  theme.device = QColor(0x6c, 0xd0, 0x96);
  theme.name = QColor(0xe8, 0xea, 0xed);
  theme.property = QColor(0x9a, 0xa0, 0xa8);
  theme.missing = QColor(0xff, 0xa0, 0x40);
  theme.origin = QColor(0x6c, 0x74, 0x7e);
  return theme;
}

QColor SchematicColours::colour(const QString &text) {
  const auto known = seen_.constFind(text);
  if (known != seen_.constEnd())
    return *known;
  QColor colour = theme_.device;
  if (QColor::isValidColor(text)) {
    const QColor asked(text);
    if (asked.alpha() > 0)
      colour = readableOn(QColor(asked.rgb()), theme_.background, kLineContrast);
  }
  return *seen_.insert(text, colour);
}
