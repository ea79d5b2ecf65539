#ifndef HOSTSYNTAX_H
#define HOSTSYNTAX_H

#include <oa/oaDesignDB.h>

// Turns the name of a net or terminal into the host's syntax, which writes the bits of buses in angle brackets: A[3] is
// A<3> there.
inline void toHostName(oa::oaString &name) {
  const oa::oaChar *characters = name;
  for (oa::oaUInt4 i = 0; characters[i] != '\0'; ++i) {
    if (characters[i] == '[') {
      name[i] = '<';
    } else if (characters[i] == ']') {
      name[i] = '>';
    }
  }
}

#endif
