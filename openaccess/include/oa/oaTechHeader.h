#ifndef OATECHHEADER_H
#define OATECHHEADER_H

#include "oa/oaArray.h"
#include "oa/oaTechObject.h"

namespace OpenAccess_4 {

class oaNameSpace;
class oaScalarName;
class oaString;
class oaTech;

class oaTechArray : public oaArray<oaTech *> {
public:
  using oaArray<oaTech *>::oaArray;
};

// One reference of a technology to that of another library; see oaTech::setRefs().
class oaTechHeader : public oaTechObject {
public:
  void getRefLibName(oaScalarName &refLibName) const;
  void getRefLibName(const oaNameSpace &ns, oaString &refLibName) const;
  // Opens it for reading when it is not open; it then stays open as long as the technology that refers to it. NULL when
  // that library is not open or has no technology that can be read.
  oaTech *getRefTech() const;
  // getRefTech() gives a technology.
  oaBoolean isBound() const;

  // NULL when `tech` does not itself refer to it.
  static oaTechHeader *find(const oaTech *tech, const oaScalarName &refLibName);
  static oaTechHeader *find(const oaTech *tech, const oaTech *refTech);
};

class oaTechHeaderArray : public oaArray<oaTechHeader *> {
public:
  using oaArray<oaTechHeader *>::oaArray;
};

} // namespace OpenAccess_4

#endif
