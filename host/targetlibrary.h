#ifndef TARGETLIBRARY_H
#define TARGETLIBRARY_H

#include <QString>

class PluginSession;

// The library that an import writes to: one that is known, one that lies at the path and is made known, or a new one.
class TargetLibrary {
public:
  // Looks the library up, and makes one that lies at `path` known. `path` may be empty for a library that is known.
  // Throws HostError when it is known at another path, or when there is no path to make it at.
  TargetLibrary(PluginSession &session, const QString &lib, const QString &path);

  bool isKnown() const { return isKnown_; }
  // Makes the library. Throws HostError with the reason when that is not possible.
  void create();

private:
  bool find();
  QString fault() const;

  PluginSession &session_;
  const QString lib_;
  const QString path_; // absolute
  bool isKnown_ = false;
};

#endif
