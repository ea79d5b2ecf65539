#ifndef OBJECTNAMES_H
#define OBJECTNAMES_H

#include <string>

#include <oa/oaDesignDB.h>

// Names as a dump writes them. A scalar name is its quoted text. The other kinds say what they are, because a scalar
// name may be written like one of them: the scalar "A[3]" is not bit:"A[3]".
//
//   scalar "A"     bit:"A[3]"     bus:"A[0:7]"     bundle:("A" 2*bit:"B[1]")

std::string nameText(const oa::oaName &name);
std::string nameText(const oa::oaSimpleName &name);
std::string nameText(const oa::oaScalarName &name);

// Of anything with getName(oaName &): nets and terminals.
template <typename Named> std::string nameTextOf(const Named *object) {
  oa::oaName name;
  object->getName(name);
  return nameText(name);
}
std::string nameTextOf(const oa::oaInst *inst);

#endif
