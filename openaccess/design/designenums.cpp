#include "oa/oaDesignEnums.h"

#include "oa/oaAttrType.h"
#include "oa/oaFont.h"
#include "raise.h"

namespace OpenAccess_4 {

OA_ENUM_NAMES(oaPathStyle, raiseBase, oacInvalidEnumValue, "path style", "truncate", "extend", "round", "variable")

OA_ENUM_NAMES(oaEndStyle, raiseDesign, oacInvalidEndStyleName, "end style", "truncate", "extend", "variable", "chamfer",
              "custom")

OA_ENUM_NAMES(oaTextAlign, raiseBase, oacInvalidEnumValue, "text alignment", "upperLeft", "centerLeft", "lowerLeft",
              "upperCenter", "centerCenter", "lowerCenter", "upperRight", "centerRight", "lowerRight")

OA_ENUM_NAMES(oaTextDisplayFormat, raiseBase, oacInvalidEnumValue, "text display format", "name", "value",
              "name and value")

OA_ENUM_NAMES(oaFont, raiseBase, oacInvalidEnumValue, "font", "euroStyle", "gothic", "math", "roman", "script", "stick",
              "fixed", "swedish", "milSpec")

OA_ENUM_NAMES(oaCellType, raiseBase, oacInvalidEnumValue, "cell type", "none", "block", "blockRing", "cover",
              "coverBump", "pad", "padSpacer", "core", "coreSpacer", "coreAntenna", "corner", "softMacro", "via",
              "blockBlackBox", "padAreaIO", "coreWellTap")

OA_ENUM_NAMES(oaBlockDomainVisibility, raiseBase, oacInvalidEnumValue, "block domain visibility", "inheritFromTopBlock",
              "excludeFromModuleDomain")

OA_ENUM_NAMES(oaInstAttrType, raiseBase, oacInvalidEnumValue, "instance attribute", "libName", "cellName", "viewName",
              "name", "numBits", "isBound")

OA_ENUM_NAMES(oaTermAttrType, raiseBase, oacInvalidEnumValue, "terminal attribute", "name", "hasPins", "numBits")

OA_ENUM_NAMES(oaNetAttrType, raiseBase, oacInvalidEnumValue, "net attribute", "name", "sigType", "isGlobal",
              "isImplicit", "isEmpty", "numBits")

OA_ENUM_NAMES(oaInstTermAttrType, raiseBase, oacInvalidEnumValue, "instance terminal attribute", "name")

OA_ENUM_NAMES(oaDesignAttrType, raiseBase, oacInvalidEnumValue, "design attribute", "libName", "cellName", "viewName",
              "cellType", "lastSavedTime")

} // namespace OpenAccess_4
