#include "oa/oaEvalText.h"

#include "shapeaccess.h"
#include "textstyle.h"

#include <memory>
#include <string>
#include <unordered_map>

namespace OpenAccess_4 {

using namespace kit;

namespace {

const Table &textsOf(const DesignDatabase &design) { return design.texts; }

// The links of the session, by the name of their evaluator.
std::unordered_map<std::string, std::unique_ptr<oaEvalTextLink>> &links() {
  static auto *all = new std::unordered_map<std::string, std::unique_ptr<oaEvalTextLink>>;
  return *all;
}

std::string nameOf(IEvalText *evalText) {
  oaString name;
  evalText->getName(name);
  return std::string(name);
}

} // namespace

oaEvalTextLink *oaEvalTextLink::create(IEvalText *evalText) {
  const std::string name = nameOf(evalText);
  if (links().count(name) != 0) {
    raiseDesign(oacEvalTextLinkExists, "text evaluator \"" + name + "\" is linked already");
  }
  oaEvalTextLink *link = new oaEvalTextLink(evalText);
  links()[name].reset(link);
  return link;
}

oaEvalTextLink *oaEvalTextLink::find(const oaString &name) {
  const auto found = links().find(std::string(name));
  return found == links().end() ? nullptr : found->second.get();
}

void oaEvalTextLink::destroy() {
  for (auto entry = links().begin(); entry != links().end(); ++entry) {
    if (entry->second.get() == this) {
      links().erase(entry);
      return;
    }
  }
}

oaEvalText *oaEvalText::create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaString &text,
                               const oaPoint &origin, oaTextAlign alignment, oaOrient orient, oaFont font,
                               oaDist height, oaEvalTextLink *link, oaBoolean overbar, oaBoolean visible,
                               oaBoolean drafting) {
  const std::string name = link == nullptr ? std::string() : nameOf(link->getIEvalText());
  return create(block, layerNum, purposeNum, text, origin, alignment, orient, font, height, oaString(name.c_str()),
                overbar, visible, drafting);
}

oaEvalText *oaEvalText::create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaString &text,
                               const oaPoint &origin, oaTextAlign alignment, oaOrient orient, oaFont font,
                               oaDist height, const oaString &linkName, oaBoolean overbar, oaBoolean visible,
                               oaBoolean drafting) {
  DesignDatabase &design = designOfShapes(block);
  design.lppFor(layerNum, purposeNum); // refuses purposes before a payload is made
  const TextStyle style = toTextStyle(origin, alignment, orient, font, height, overbar, visible, drafting);
  const Row payload = design.texts.addRow();
  design.texts.style.set(payload, style);
  design.texts.text.set(payload, design.strings().add(std::string_view(text, text.getLength())));
  design.texts.evaluator.set(payload, design.strings().intern(std::string_view(linkName, linkName.getLength())));
  const Row row = addShape(design, layerNum, purposeNum, oacEvalTextType, oaBox(origin, origin), payload);
  setShapeBox(design, row, shownTextBox(design, row, style));
  return shapeAt<oaEvalText>(design, row);
}

oaEvalTextLink *oaEvalText::getLink() const {
  oaString name;
  getEvaluatorName(name);
  return oaEvalTextLink::find(name);
}

void oaEvalText::setLink(oaEvalTextLink *link) {
  const ShapeRow at = shapeRow(this, oacEvalTextType, textsOf);
  const std::string name = link == nullptr ? std::string() : nameOf(link->getIEvalText());
  at.design.texts.evaluator.set(at.payload, at.design.strings().intern(name));
  StyledShape(this, StyledShape::Kind::text).store();
}

void oaEvalText::getExpression(oaString &text) const {
  const ShapeRow at = shapeRow(this, oacEvalTextType, textsOf);
  at.design.strings().get(at.design.texts.text[at.payload], text);
}

void oaEvalText::getEvaluatorName(oaString &name) const {
  const ShapeRow at = shapeRow(this, oacEvalTextType, textsOf);
  at.design.strings().get(at.design.texts.evaluator[at.payload], name);
}

} // namespace OpenAccess_4
