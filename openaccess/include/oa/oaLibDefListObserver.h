#ifndef OALIBDEFLISTOBSERVER_H
#define OALIBDEFLISTOBSERVER_H

#include "oa/oaDMTypes.h"
#include "oa/oaObserver.h"
#include "oa/oaString.h"

namespace OpenAccess_4 {

class oaLibDefList;

// Is told what happens to library definition lists, and what was wrong with one that was loaded. Exceptions out of
// these functions end the operation that called them.
template <> class oaObserver<oaLibDefList> : public oaStdObserver {
public:
  explicit oaObserver(oaUInt4 priority, oaBoolean enabled = true);
  ~oaObserver() override;

  // Before and after the libraries of a list are opened. False skips that list's libraries.
  virtual oaBoolean onPreOpenLibs(oaLibDefList *defList);
  virtual void onPostOpenLibs(oaLibDefList *defList);
  // `defList` is NULL when there is no list yet. The result has no effect.
  virtual oaBoolean onLoadWarnings(oaLibDefList *defList, const oaString &msg, oaLibDefListWarningTypeEnum type);
  virtual void onPostCreate(oaLibDefList *defList);
  virtual void onPreDestroy(oaLibDefList *defList);
  virtual void onPreSave(oaLibDefList *defList);
  virtual void onPostSave(oaLibDefList *defList);
  virtual void onPreSaveAs(oaLibDefList *defList, const oaString &name);
  virtual void onPostSaveAs(oaLibDefList *defList, const oaString &name);
};

} // namespace OpenAccess_4

#endif
