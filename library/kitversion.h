#ifndef KITVERSION_H
#define KITVERSION_H

// The API revision that the plug-in is written for.
const unsigned int kApiMajorRevision = 5;
const unsigned int kApiMinorRevision = 506;

// Makes sure that the OpenAccess kit found at run time is not older than the one the plug-in is written for.
// `baseLibrary` is the file name of the kit's base library ("liboaBase.so"). Throws the character 'E' when it cannot be
// loaded, and an oaException when it is too old.
void requireKitVersion(const char *baseLibrary);

#endif
