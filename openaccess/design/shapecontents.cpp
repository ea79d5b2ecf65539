#include "shapecontents.h"

#include "boundaries.h"
#include "figureindexes.h"
#include "shapeaccess.h"
#include "textstyle.h"

namespace OpenAccess_4 {
namespace kit {

namespace {

template <typename Payloads> Row payloadOf(const DesignDatabase &design, Row row, const Payloads &payloads) {
  return checkedRow(payloads, design.shapes.payload[row], "a shape");
}

void readText(const DesignDatabase &design, Row row, ShapeContents &contents) {
  const Row payload = payloadOf(design, row, design.texts);
  contents.style = design.texts.style[payload];
  checkTextStyle(design.texts, payload, contents.style);
  contents.text = design.strings().text(design.texts.text[payload]);
  contents.evaluator = design.strings().text(design.texts.evaluator[payload]);
}

void readDisplay(const DesignDatabase &design, Row row, ShapeContents &contents) {
  contents.displayPayload = payloadOf(design, row, design.textDisplays);
  contents.style = design.textDisplays.style[contents.displayPayload];
  checkTextStyle(design.textDisplays, contents.displayPayload, contents.style);
}

// The box of contents; of texts it depends on what they show and is found later.
oaBox contentsBox(const ShapeContents &contents) {
  oaPointArray outline;
  switch (contents.kind) {
  case oacRectType:
  case oacEllipseType:
    return contents.box;
  case oacPathType: {
    const PathTable::Path &path = contents.path;
    pathBoundary(contents.points, path.widthDbu, static_cast<oaPathStyleEnum>(path.style), path.beginExtDbu,
                 path.endExtDbu, outline);
    return boxOf(outline);
  }
  case oacPathSegType:
    segBoundary(contents.segment, outline);
    return boxOf(outline);
  case oacArcType:
    return arcBox(contents.arc);
  case oacDonutType:
    return donutBox(contents.donut, contents.donut.radiusDbu);
  case oacDotType:
    return dotBox(contents.dot);
  case oacPolygonType:
  case oacLineType:
    return boxOf(contents.points);
  default:
    return oaBox(contents.style.origin, contents.style.origin);
  }
}

bool isTextual(oaTypeEnum kind) {
  return kind == oacTextType || kind == oacEvalTextType || ShapeTable::isDisplayKind(static_cast<std::uint8_t>(kind));
}

void setTextBox(DesignDatabase &design, Row row, const ShapeContents &contents) {
  if (isTextual(contents.kind)) {
    setShapeBox(design, row, shownTextBox(design, row, contents.style));
  }
}

Row addPayload(DesignDatabase &design, const ShapeContents &contents) {
  switch (contents.kind) {
  case oacRectType:
  case oacEllipseType:
    return kNoRow;
  case oacPolygonType:
  case oacLineType:
    return addOutline(design, contents.points);
  case oacPathType: {
    PathTable::Path path = contents.path;
    path.points = addPoints(design, contents.points);
    const Row row = design.paths.addRow();
    design.paths.paths.set(row, path);
    return row;
  }
  case oacPathSegType: {
    const Row row = design.pathSegs.addRow();
    design.pathSegs.segments.set(row, contents.segment);
    return row;
  }
  case oacArcType: {
    const Row row = design.arcs.addRow();
    design.arcs.arcs.set(row, contents.arc);
    return row;
  }
  case oacDonutType: {
    const Row row = design.donuts.addRow();
    design.donuts.donuts.set(row, contents.donut);
    return row;
  }
  case oacDotType: {
    const Row row = design.dots.addRow();
    design.dots.dots.set(row, contents.dot);
    return row;
  }
  case oacTextType:
  case oacEvalTextType: {
    const Row row = design.texts.addRow();
    design.texts.style.set(row, contents.style);
    design.texts.text.set(row, design.strings().add(contents.text));
    design.texts.evaluator.set(row, design.strings().intern(contents.evaluator));
    return row;
  }
  default: {
    TextDisplayTable &displays = design.textDisplays;
    const Row row = displays.addRow(), from = contents.displayPayload;
    displays.style.set(row, contents.style);
    displays.format.set(row, displays.format[from]);
    displays.objectTable.set(row, displays.objectTable[from]);
    displays.objectRow.set(row, displays.objectRow[from]);
    displays.attribute.set(row, displays.attribute[from]);
    displays.masterText.set(row, displays.masterText[from]);
    return row;
  }
  }
}

} // namespace

ShapeContents readShape(const DesignDatabase &design, Row row) {
  ShapeContents contents;
  contents.kind = static_cast<oaTypeEnum>(design.shapes.kindOf(row));
  contents.box = design.shapes.box[row];
  switch (contents.kind) {
  case oacRectType:
  case oacEllipseType:
    break;
  case oacPolygonType:
  case oacLineType:
    getPoints(design, design.outlines.points[payloadOf(design, row, design.outlines)], contents.points);
    break;
  case oacPathType: {
    const Row payload = payloadOf(design, row, design.paths);
    contents.path = design.paths.paths[payload];
    checkedEnum<oaPathStyleEnum>(design.paths, payload, contents.path.style, oacVariablePathStyle + 1, "the style");
    getPoints(design, contents.path.points, contents.points);
    break;
  }
  case oacPathSegType:
    contents.segment = design.pathSegs.segments[payloadOf(design, row, design.pathSegs)];
    break;
  case oacArcType:
    contents.arc = design.arcs.arcs[payloadOf(design, row, design.arcs)];
    break;
  case oacDonutType:
    contents.donut = design.donuts.donuts[payloadOf(design, row, design.donuts)];
    break;
  case oacDotType:
    contents.dot = design.dots.dots[payloadOf(design, row, design.dots)];
    break;
  case oacTextType:
  case oacEvalTextType:
    readText(design, row, contents);
    break;
  default:
    if (!ShapeTable::isDisplayKind(static_cast<std::uint8_t>(contents.kind))) {
      raiseCorrupted(design.shapes, row, "kind " + std::to_string(contents.kind) + " is none of a shape");
    }
    readDisplay(design, row, contents);
    break;
  }
  return contents;
}

void writeShape(DesignDatabase &design, Row row, const ShapeContents &contents) {
  const Row payload = design.shapes.payload[row];
  switch (contents.kind) {
  case oacRectType:
  case oacEllipseType:
    break;
  case oacPolygonType:
  case oacLineType:
    design.outlines.points.set(payload, replacePoints(design, design.outlines.points[payload], contents.points));
    break;
  case oacPathType: {
    PathTable::Path path = contents.path;
    path.points = replacePoints(design, path.points, contents.points);
    design.paths.paths.set(payload, path);
    break;
  }
  case oacPathSegType:
    design.pathSegs.segments.set(payload, contents.segment);
    break;
  case oacArcType:
    design.arcs.arcs.set(payload, contents.arc);
    break;
  case oacDonutType:
    design.donuts.donuts.set(payload, contents.donut);
    break;
  case oacDotType:
    design.dots.dots.set(payload, contents.dot);
    break;
  case oacTextType:
  case oacEvalTextType:
    design.texts.style.set(payload, contents.style);
    break;
  default:
    design.textDisplays.style.set(payload, contents.style);
    break;
  }
  if (isTextual(contents.kind)) {
    setTextBox(design, row, contents);
  } else {
    setShapeBox(design, row, contentsBox(contents));
  }
}

Row addShape(DesignDatabase &design, oaLayerNum layer, oaPurposeNum purpose, const ShapeContents &contents,
             const DesignDatabase &from) {
  const bool isDisplay = contents.displayPayload != kNoRow;
  if (isDisplay && &design != &from) {
    raiseDesign(oacNonDesignTextDisplay, from.label() + ": a text display cannot go to " + design.label() +
                                             ", where the object that it shows is not");
  }
  design.lppFor(layer, purpose); // refuses purposes before a payload is made
  const Row payload = addPayload(design, contents);
  const Row row = addShape(design, layer, purpose, contents.kind, contentsBox(contents), payload);
  if (isDisplay) {
    displayShows(design, row);
  }
  setTextBox(design, row, contents);
  return row;
}

} // namespace kit
} // namespace OpenAccess_4
