#ifndef WALKFAULTS_H
#define WALKFAULTS_H

#include <set>
#include <string>

#include <QString>

#include "saveguard.h"

// Faults of single objects during a walk over a design: each different one is told once, and the walk goes on with the
// next object. When very many objects of a kind fail, the rest of that kind is left out.
class WalkFaults {
public:
  // `label` is the operation's in its error lines; `path` names what is being read.
  WalkFaults(oaPlugInMain &host, const char *label, const QString &path) : host_(host), label_(label), path_(path) {}

  // Runs `body`, which sends all objects of a kind, each one inside guardObject().
  template <typename Body> void guardKind(Body body) {
    count_ = 0;
    try {
      body();
    } catch (const oa::oaException &exception) {
      tell(exception);
      if (count_ > kManyFaults) {
        emit host_.reportError(oaPlugInMain::tr("too many faults, the rest is left out"), 1, path_);
      }
    }
  }

  template <typename Body> void guardObject(Body body) {
    try {
      body();
    } catch (const oa::oaException &exception) {
      if (++count_ > kManyFaults) {
        throw;
      }
      tell(exception);
    }
  }

private:
  static const int kManyFaults = 100;

  // For the exception that is being handled.
  void tell(const oa::oaException &exception) {
    if (told_.insert(static_cast<const oa::oaChar *>(exception.getMsg())).second) {
      saving(
          host_, label_, [] { throw; }, [this] { return path_; });
    }
  }

  oaPlugInMain &host_;
  const char *label_;
  const QString path_;
  std::set<std::string> told_;
  int count_ = 0;
};

#endif
