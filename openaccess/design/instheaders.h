#ifndef OAKIT_INSTHEADERS_H
#define OAKIT_INSTHEADERS_H

// The headers of instances as they are stored. Instances of an ordinary master lie under its one header. Those of a
// parametric master lie under sub headers, one for each set of parameters that was given; nothing lies under the super
// header above them. A header that was made while its master was not known to be parametric becomes a super header as
// soon as it is.

#include "designdatabase.h"
#include "oa/oaParam.h"

#include <string>

namespace OpenAccess_4 {
namespace kit {

// The plain or super header of a master, or kNoRow. Names are native texts.
Row findInstHeader(DesignDatabase &design, const std::string &lib, const std::string &cell, const std::string &view);
// The header that instances with these parameters lie under, made when missing.
Row instHeaderFor(DesignDatabase &design, const std::string &lib, const std::string &cell, const std::string &view,
                  const oaParamArray &params);
// Takes the instance out of its header's count; the header goes with the last instance, and a super header with its
// last sub header.
void leaveInstHeader(DesignDatabase &design, Row inst);

inline bool isSuperInstHeader(const DesignDatabase &design, Row header) {
  return design.instHeaders.isSuper[header] != 0;
}
inline bool isSubInstHeader(const DesignDatabase &design, Row header) {
  return design.instHeaders.super[header] != kNoRow;
}
// What the header's instances were given; none for plain and super headers.
void getInstHeaderParams(const DesignDatabase &design, Row header, oaParamArray &params);
// A plain header is found to be of a parametric master: its instances go under a sub header without parameters. Does
// nothing to other headers.
void becomeSuperHeader(DesignDatabase &design, Row header);
// The master of a super header, or of the one above a sub header, is found to be ordinary: the sub headers go, and
// their parameters become properties of the instances.
void becomePlainHeader(DesignDatabase &design, Row header);
OwnerIndex &subHeadersOfInstHeader(DesignDatabase &design);

} // namespace kit
} // namespace OpenAccess_4

#endif
