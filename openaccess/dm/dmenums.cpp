#include "oa/oaDMTypes.h"
#include "raise.h"

namespace OpenAccess_4 {

OA_ENUM_NAMES(oaLibMode, raiseBase, oacInvalidEnumValue, "library mode", "shared", "nonShared", "readOnly")
OA_ENUM_NAMES(oaLibAccess, raiseBase, oacInvalidEnumValue, "kind of library access", "read", "write")
OA_ENUM_NAMES(oaLibAccessLevel, raiseBase, oacInvalidEnumValue, "level of library access", "no access", "read access",
              "write access")
OA_ENUM_NAMES(oaReservedViewType, raiseBase, oacInvalidEnumValue, "reserved view type", "maskLayout", "schematic",
              "schematicSymbol", "netlist", "wafer", "verilogAMSText", "VHDLAMSText", "verilogText", "VHDLText",
              "verilogAText", "oaHierDesign", "systemVerilogText", "SPECTREText", "SPICEText", "HSPICEText", "CDLText")

} // namespace OpenAccess_4
