// The exceptions of the base layer. Every failure of the kit is one of these or of the layers' classes in
// oaDMException.h, oaTechException.h and oaDesignException.h; they are thrown by value.
#ifndef OAEXCEPTION_H
#define OAEXCEPTION_H

#include "oa/oaString.h"

namespace OpenAccess_4 {

class oaException {
public:
  /// An exception of a client's own: its number is oacNullIndex.
  explicit oaException(const oaString &message) : msgId_(oacNullIndex), msg_(message) {}
  oaException(oaUInt4 msgId, const oaString &message) : msgId_(msgId), msg_(message) {}
  oaException(const oaException &) = default;
  oaException &operator=(const oaException &) = default;
  virtual ~oaException();

  oaUInt4 getMsgId() const { return msgId_; }
  const oaString &getMsg() const { return msg_; }
  /// The system's error number (errno) of the last oaOSError that this thread raised; 0 before the first.
  static oaUInt8 getLastOSError();

private:
  oaUInt4 msgId_;
  oaString msg_;
};

class oaError : public oaException {
public:
  using oaException::oaException;
};

class oaOSException : public oaException {
public:
  using oaException::oaException;
};

class oaOSError : public oaOSException {
public:
  using oaOSException::oaOSException;
};

class oaMemoryError : public oaException {
public:
  using oaException::oaException;
};

/// The application, the kit and a database do not fit together. What is not known reads as an empty text or as 0.
class oaCompatibilityError : public oaException {
public:
  oaCompatibilityError(oaUInt4 msgId, const oaString &message, const oaString &databaseName = oaString(),
                       oaUInt4 appDataModelRev = 0, oaUInt4 databaseDataModelRev = 0);

  const oaString &getAppBuildName() const { return appBuildName_; }
  const oaString &getKitBuildName() const { return kitBuildName_; }
  const oaString &getDataModelBuildName() const { return kitBuildName_; }
  const oaString &getDatabaseName() const { return databaseName_; }
  oaUInt4 getAppDataModelRev() const { return appDataModelRev_; }
  oaUInt4 getKitDataModelRev() const { return oacDataModelRevNumber; }
  oaUInt4 getDBDataModelRev() const { return databaseDataModelRev_; }

private:
  oaString appBuildName_;
  oaString kitBuildName_;
  oaString databaseName_;
  oaUInt4 appDataModelRev_;
  oaUInt4 databaseDataModelRev_;
};

/// The errors that plug-ins (evaluators of parametric cells and of texts) raise.
class IException {
public:
  virtual ~IException();
  virtual oaUInt4 getMsgId() const = 0;
  virtual const oaChar *getMsg() const = 0;
};

} // namespace OpenAccess_4

#endif
