#ifndef OAKIT_TEXTDISPLAY_H
#define OAKIT_TEXTDISPLAY_H

#include "designdatabase.h"

namespace OpenAccess_4 {

class oaNameSpace;
class oaString;

namespace kit {

// The text that a display (a row of the shape table) shows now; empty when what it shows is gone. `ns` is for names.
void displayText(DesignDatabase &design, Row shape, const oaNameSpace &ns, oaString &text);
// The box of that text. Unlike other shapes' boxes it is not stored, since nobody tells when the text changes.
oaBox displayBox(DesignDatabase &design, Row shape);
void mergeDisplayBoxes(DesignDatabase &design, oaBox &box);

} // namespace kit
} // namespace OpenAccess_4

#endif
