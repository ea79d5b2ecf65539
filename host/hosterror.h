#ifndef HOSTERROR_H
#define HOSTERROR_H

#include <QString>

#include <stdexcept>

// A failure that ends the command: main() prints it as "oahost: <message>" on standard error and exits with 1.
class HostError : public std::runtime_error {
public:
  explicit HostError(const QString &message) : std::runtime_error(message.toStdString()) {}
  QString message() const { return QString::fromStdString(what()); }
};

#endif
