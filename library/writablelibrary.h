#ifndef WRITABLELIBRARY_H
#define WRITABLELIBRARY_H

#include <oa/oaDesignDB.h>

// How long the operations that change a library wait for another process to give up its access.
const oa::oaUInt4 kWriteAccessTimeoutSeconds = 10;

// The library, ready to be changed. One that is not writable may have become so since it was opened: it is closed,
// opened again from lib.defs and asked for write access, so that OpenAccess says what is in the way. Access is not
// asked for otherwise. Throws the character 'e' when `lib` is null or the library cannot be opened again.
oa::oaLib *makeWritable(oa::oaLib *lib, const oa::oaScalarName &name);

// Gives one access back, if there is any.
void releaseAccessIfHeld(oa::oaLib *lib);

#endif
