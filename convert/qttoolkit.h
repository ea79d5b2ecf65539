#ifndef QTTOOLKIT_H
#define QTTOOLKIT_H

// Everything in which Qt 4.8 and Qt 5 differ for the plug-in's folders.

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#if QT_VERSION >= 0x050000
// The meta-object compiler writes the entry point qt_plugin_instance from Q_PLUGIN_METADATA; Qt 4 has no such macro.
#define TOOLKIT_HAS_PLUGIN_METADATA
#endif

namespace toolkit {

// The 8-bit form in which text goes to OpenAccess. Qt 4 honours a codec that the host set for 8-bit strings; Qt 5 has
// no such setting any more and means Latin-1. A character without an 8-bit form is replaced.
inline QByteArray toEightBit(const QString &text) {
#if QT_VERSION >= 0x050000
  return text.toLatin1();
#else
  return text.toAscii();
#endif
}

// The text that stands behind 8-bit characters of OpenAccess; the counterpart of toEightBit().
inline QString fromEightBit(const char *characters) {
#if QT_VERSION >= 0x050000
  return QString::fromLatin1(characters);
#else
  return QString::fromAscii(characters);
#endif
}

} // namespace toolkit

#endif
