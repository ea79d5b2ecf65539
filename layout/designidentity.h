#ifndef DESIGNIDENTITY_H
#define DESIGNIDENTITY_H

#include <string>

#include <oa/oaDesignDB.h>

// Byte strings by which designs and what they are made from are told apart. Unlike the host's names of cells they are
// exact: two are equal if and only if everything in them is.

// Names, types and values, in the order of the array.
void appendKey(std::string &key, const oa::oaParamArray &params);

// Which cuts of a standard via are left out. Nothing is appended when there are none.
void appendCutPattern(std::string &key, const oa::oaViaParam &params);

// Library, cell and view, and the parameters of a parametric master, of a variant or of a standard via's master. Among
// the variants of one super master those with equal values are equal, however many of the values were given.
std::string identityOf(const oa::oaDesign *design);

#endif
