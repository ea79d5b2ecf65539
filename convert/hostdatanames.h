#ifndef HOSTDATANAMES_H
#define HOSTDATANAMES_H

// Names under which the host's own things stand in OpenAccess libraries. They are part of what other installations
// read.
namespace hostdata {

// View of a component of the host: it is placed by its cell's plain name, and its contents are not OpenAccess's.
const char kComponentView[] = "TarnwickdaleComponent";
// Property of a library: the cells with a symbol, as they were when they were last listed.
const char kCachedComponents[] = "cachedComponents";
// Application type of the host's properties.
const char kApplication[] = "Tarnwickdale";

} // namespace hostdata

#endif
