#ifndef OAKIT_ATTRIBUTETEXT_H
#define OAKIT_ATTRIBUTETEXT_H

#include "oa/oaDesignObject.h"

namespace OpenAccess_4 {
namespace kit {

// The attributes of an object that a text display can show: those of nets, terminals, instances, instance terminals and
// designs. NULL for types that have none.
const oaEnumNames *attributesOf(oaTypeEnum type);
// "cellName" and the like.
const oaString &attributeName(oaTypeEnum type, oaUInt4 attribute);
// The value as text. The attribute is one of the object's.
void getAttributeText(const oaObject *object, oaUInt4 attribute, const oaNameSpace &ns, oaString &text);

} // namespace kit
} // namespace OpenAccess_4

#endif
