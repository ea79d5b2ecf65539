#ifndef KITDIRECTORIES_H
#define KITDIRECTORIES_H

#include <QString>

// The directory lines of the kit's report: label, directory, CR LF for each directory that the kit reports, in their
// order. Empty for a kit whose accessors are not known here.
QString kitDirectoryLines();

#endif
