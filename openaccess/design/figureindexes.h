#ifndef OAKIT_FIGUREINDEXES_H
#define OAKIT_FIGUREINDEXES_H

// Which shapes lie on a layer-purpose pair, which figures are on a net or in a pin, and which displays show an object.
//
// The columns (lpp, net, pin, ...) are the truth. An index is built from them at first need. Rows are added as they
// come, but never taken out, since that would make destroying the members of a large header one by one quadratic; so
// each reader compares with the column.

#include "designdatabase.h"
#include "oa/oaFig.h"

namespace OpenAccess_4 {

class oaLPPHeader;
class oaNet;
class oaPin;
class oaShape;
class oaVia;

namespace kit {

// Members in creation order; of a pin: shapes, then instances, then vias.
oaCollection<oaShape, oaLPPHeader> shapesOnLpp(DesignDatabase &design, Row lpp);
oaCollection<oaShape, oaNet> shapesOnNet(DesignDatabase &design, Row net);
oaCollection<oaVia, oaNet> viasOnNet(DesignDatabase &design, Row net);
oaCollection<oaPinFig, oaPin> figsInPin(DesignDatabase &design, Row pin);

// The figure (a row of the shapes, instances or vias) joins a net or pin, or leaves it for kNoRow. No checks.
void setNetOfFigure(DesignDatabase &design, Table &table, Row figure, Row net);
void setPinOfFigure(DesignDatabase &design, Table &table, Row figure, Row pin);
Row netOfFigure(DesignDatabase &design, const Table &table, Row figure);
Row pinOfFigure(DesignDatabase &design, const Table &table, Row figure);
// A net or pin is going: its figures stay, without it.
void leaveNet(DesignDatabase &design, Row net);
void leavePin(DesignDatabase &design, Row pin);
bool isNetWithoutFigures(DesignDatabase &design, Row net);
// All figures of the net `from` are on `to` now.
void moveFiguresToNet(DesignDatabase &design, Row from, Row to);

// To be called when a shape comes into being on a pair, or moves to one.
void shapeJoinsLpp(DesignDatabase &design, Row shape, Row lpp);

// Rows of the shape table: the displays that show the object, in creation order.
std::vector<Row> displaysOf(DesignDatabase &design, const Table &table, Row row);
// The displays' shape rows, of all objects.
RowSpan allDisplays(DesignDatabase &design);
void displayShows(DesignDatabase &design, Row displayShape);
// Destroys the displays whose object is gone: nobody tells when a property goes, and a file may hold any. Called before
// displays are met.
void dropOrphanedDisplays(DesignDatabase &design);

} // namespace kit
} // namespace OpenAccess_4

#endif
