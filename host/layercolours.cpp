#include "layercolours.h"

#include <algorithm>
#include <cmath>
#include <QStringList>

namespace {

struct NamedPattern {
  const char *name;
  FillPattern pattern;
};

const NamedPattern kPatterns[] = {
    {"solid", FillPattern::Solid},       {"outline", FillPattern::Outline}, {"forward", FillPattern::Forward},
    {"backward", FillPattern::Backward}, {"cross", FillPattern::Cross},     {"horizontal", FillPattern::Horizontal},
    {"vertical", FillPattern::Vertical}, {"grid", FillPattern::Grid},       {"dots", FillPattern::Dots},
};

// Names as processes spell them, lower case, letters and digits only; blanks separate the spellings of one role. From
// the lowest layer to the highest.
struct Convention {
  const char *names;
  QRgb colour;
  FillPattern pattern;
};

const Convention kConventions[] = {
    {"nwell nw", 0xffb8a04a, FillPattern::Dots},
    {"pwell pw psub", 0xffa07d5c, FillPattern::Dots},
    {"dnwell nbulay deepnwell", 0xff8f8a3c, FillPattern::Outline},
    {"nsdm nplus nsd nimp", 0xffd9a3c2, FillPattern::Outline},
    {"psdm pplus psd pimp", 0xffe0b48a, FillPattern::Outline},
    {"diff diffusion activ active comp od fom oxide", 0xff41b04c, FillPattern::Forward},
    {"tap", 0xff86c98a, FillPattern::Forward},
    {"poly poly2 polysilicon gatpoly gate po", 0xffe5403c, FillPattern::Backward},
    {"licon licon1 cont contact con co", 0xffd8d8d8, FillPattern::Cross},
    {"li li1 local localinterconnect metal0 met0 m0", 0xffcf9a52, FillPattern::Backward},
    {"mcon via0 v0", 0xffb9c4d0, FillPattern::Cross},
    {"met1 metal1 m1", 0xff4484ff, FillPattern::Forward},
    {"via via1 v1", 0xffa8c8ff, FillPattern::Cross},
    {"met2 metal2 m2", 0xffdc4fe0, FillPattern::Backward},
    {"via2 v2", 0xffeab0f0, FillPattern::Cross},
    {"met3 metal3 m3", 0xff25c4c8, FillPattern::Forward},
    {"via3 v3", 0xffa6eaea, FillPattern::Cross},
    {"met4 metal4 m4", 0xfff2a11f, FillPattern::Backward},
    {"via4 v4", 0xffffd48a, FillPattern::Cross},
    {"met5 metal5 m5", 0xff9ace38, FillPattern::Forward},
    {"via5 topvia1 v5", 0xffd0ea9c, FillPattern::Cross},
    {"met6 metal6 m6 topmetal1", 0xffff7f6b, FillPattern::Backward},
    {"via6 topvia2 v6", 0xffffc0b5, FillPattern::Cross},
    {"met7 metal7 m7 topmetal2", 0xff9f8cff, FillPattern::Forward},
    {"prbndry prboundary prbound outline boundary border diearea", 0xff9a9a9a, FillPattern::Outline},
};

const Convention *conventionOf(const QString &layerName) {
  QString plain;
  for (const QChar character : layerName.toLower())
    if (character.isLetterOrNumber())
      plain += character;
  for (const Convention &convention : kConventions)
    if (QString::fromLatin1(convention.names).split(QLatin1Char(' ')).contains(plain))
      return &convention;
  return nullptr;
}

} // namespace

bool patternFromName(const QString &text, FillPattern *pattern) {
  for (const NamedPattern &entry : kPatterns) {
    if (text.compare(QLatin1String(entry.name), Qt::CaseInsensitive) == 0) {
      *pattern = entry.pattern;
      return true;
    }
  }
  return false;
}

QString patternNames() {
  QStringList names;
  for (const NamedPattern &entry : kPatterns)
    names += QString::fromLatin1(entry.name);
  return names.join(QLatin1Char(' '));
}

LayerStyle generatedStyle(int layer, int datatype) {
  // Multiples of the golden ratio spread neighbouring layer numbers over the whole colour circle; a datatype moves the
  // hue a little, so that the purposes of one layer stay a family.
  const double kGoldenRatio = 0.6180339887498949;
  const double position = layer * kGoldenRatio + datatype * 0.021;
  const double hue = position - std::floor(position);
  const unsigned mixed = static_cast<unsigned>(layer) * 3u + static_cast<unsigned>(datatype) * 5u;
  const FillPattern kChoices[] = {FillPattern::Forward,    FillPattern::Backward, FillPattern::Dots, FillPattern::Cross,
                                  FillPattern::Horizontal, FillPattern::Vertical, FillPattern::Grid};
  LayerStyle style;
  style.colour = QColor::fromHslF(hue, 0.55 + 0.1 * (mixed % 4), 0.54 + 0.05 * (mixed % 3));
  style.pattern = kChoices[mixed % (sizeof kChoices / sizeof *kChoices)];
  return style;
}

LayerStyle conventionalStyle(const QString &layerName, const QString &purpose, int layer, int datatype) {
  const Convention *convention = conventionOf(layerName);
  const bool isDrawing = purpose.isEmpty() || purpose.compare(QLatin1String("drawing"), Qt::CaseInsensitive) == 0;
  LayerStyle style = generatedStyle(layer, datatype);
  if (convention) {
    style.colour = QColor(convention->colour);
    style.pattern = convention->pattern;
    style.stackRank = static_cast<int>(convention - kConventions);
  } else {
    // Of the layers that a table names, those without a custom are implants and marks that cover whole devices.
    style.pattern = FillPattern::Dots;
  }
  if (!isDrawing) {
    // Pins, labels, fill and blockages lie on top of the drawn layer: lighter and only outlined, so that both are seen.
    style.colour = style.colour.lighter(125);
    style.pattern = FillPattern::Outline;
  }
  return style;
}

namespace {

// Of light as the eye sees it, 0 black to 1 white, by the Web Content Accessibility Guidelines 2.1.
double relativeLuminance(const QColor &colour) {
  const auto linear = [](double channel) {
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double contrastOf(const QColor &first, const QColor &second) {
  const double a = relativeLuminance(first), b = relativeLuminance(second);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

} // namespace

QColor readableOn(const QColor &colour, const QColor &background, double contrast) {
  const double step = relativeLuminance(background) < 0.18 ? 0.02 : -0.02;
  const double hue = std::max(colour.hslHueF(), 0.0); // greys have no hue and say -1
  QColor readable = colour;
  double lightness = colour.lightnessF();
  // White may start on white, and goes the way that leads off the background.
  const double farthest = step < 0 ? 0.0 : 1.0;
  while (contrastOf(readable, background) < contrast && lightness != farthest) {
    lightness = std::clamp(lightness + step, 0.0, 1.0);
    readable = QColor::fromHslF(hue, colour.hslSaturationF(), lightness);
  }
  return readable;
}
