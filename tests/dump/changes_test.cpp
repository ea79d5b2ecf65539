// Every single change of a design shows in its dump, and no two changes look alike.

#include "contents.h"
#include "definitiondata.h"
#include "testevaluator.h"

#include <functional>
#include <map>

using namespace oa;

namespace {

struct Change {
  const char *name;
  std::function<void(Contents &)> apply;
};

typedef std::vector<Change> Changes;

Changes shapeChanges() {
  typedef Contents C;
  return {
      {"layer", [](C &c) { c.rect->setLayerNum(9); }},
      {"purpose", [](C &c) { c.rect->setPurposeNum(9); }},
      {"reserved purpose", [](C &c) { c.rect->setPurposeNum(0xfffffffeU); }},
      {"arc box", [](C &c) { c.arc->set(oaBox(0, 0, 40, 30), 0.5, 1.5); }},
      {"arc start", [](C &c) { c.arc->set(oaBox(0, 0, 40, 20), 0.25, 1.5); }},
      {"arc stop", [](C &c) { c.arc->set(oaBox(0, 0, 40, 20), 0.5, 1.75); }},
      {"donut centre", [](C &c) { c.donut->setCenter(oaPoint(50, 51)); }},
      {"donut radius", [](C &c) { c.donut->setRadius(21); }},
      {"donut hole", [](C &c) { c.donut->setHoleRadius(11); }},
      {"dot location", [](C &c) { c.dot->setLocation(oaPoint(7, 9)); }},
      {"dot width", [](C &c) { c.dot->setWidth(3); }},
      {"dot height", [](C &c) { c.dot->setHeight(5); }},
      {"ellipse", [](C &c) { c.ellipse->setBBox(oaBox(0, 0, 31, 10)); }},
      {"line",
       [](C &c) {
         c.line->setPoints(pointsOf({{0, 0}, {5, 0}, {5, 6}}));
       }},
      {"path points",
       [](C &c) {
         c.path->setPoints(pointsOf({{0, 0}, {50, 0}, {50, 91}}));
       }},
      {"path width", [](C &c) { c.path->setWidth(6); }},
      {"path style", [](C &c) { c.path->setStyle(oacRoundPathStyle); }},
      {"path begin", [](C &c) { c.path->setBeginExt(5); }},
      {"path end", [](C &c) { c.path->setEndExt(5); }},
      {"segment points", [](C &c) { c.pathSeg->setPoints(oaPoint(0, 0), oaPoint(81, 0)); }},
      {"segment width",
       [](C &c) {
         c.pathSeg->setStyle({8, oacVariableEndStyle, oacExtendEndStyle, 4});
       }},
      {"segment begin",
       [](C &c) {
         c.pathSeg->setStyle({6, oacVariableEndStyle, oacExtendEndStyle, 5});
       }},
      {"segment end",
       [](C &c) {
         c.pathSeg->setStyle({6, oacVariableEndStyle, oacTruncateEndStyle, 4});
       }},
      {"segment custom",
       [](C &c) {
         c.pathSeg->setStyle({oacCustomEndStyle, 1, 2, 3, 3, oacExtendEndStyle});
       }},
      {"segment custom diagonal",
       [](C &c) {
         c.pathSeg->setStyle({oacCustomEndStyle, 1, 4, 3, 3, oacExtendEndStyle});
       }},
      {"polygon",
       [](C &c) {
         c.polygon->setPoints(pointsOf({{0, 0}, {9, 0}, {0, 8}}));
       }},
      {"rect", [](C &c) { c.rect->setBBox(oaBox(0, 0, 10, 6)); }},
      {"rect as polygon", [](C &c) { c.rect->convertToPolygon(); }},
      {"one less", [](C &c) { c.dot->destroy(); }},
      {"the same twice", [](C &c) { oaRect::create(c.block, 2, 3, oaBox(5, 0, 10, 5)); }},
  };
}

// The attributes that texts and displays share.
template <typename Shape>
void addTextChanges(Changes &changes, Shape *Contents::*shape, const char *const (&names)[8]) {
  typedef Contents C;
  const std::function<void(C &)> applied[] = {
      [=](C &c) { (c.*shape)->setOrigin(oaPoint(100, 2)); },
      [=](C &c) { (c.*shape)->setAlignment(oacUpperRightTextAlign); },
      [=](C &c) { (c.*shape)->setOrient(oacMX); },
      [=](C &c) { (c.*shape)->setFont(oacGothicFont); },
      [=](C &c) { (c.*shape)->setHeight(13); },
      [=](C &c) { (c.*shape)->setOverbar(true); },
      [=](C &c) { (c.*shape)->setVisible(false); },
      [=](C &c) { (c.*shape)->setDrafting(false); },
  };
  for (int i = 0; i < 8; ++i) {
    changes.push_back({names[i], applied[i]});
  }
}

Changes textChanges() {
  typedef Contents C;
  Changes changes = {
      {"text", [](C &c) { c.text->setText("out"); }},
      {"expression", [](C &c) { c.evalText->setText("[@y]"); }},
      {"evaluator", [](C &c) { c.evalText->setLink(nullptr); }},
      {"display format", [](C &c) { c.propDisplay->setFormat(oacNameTextDisplayFormat); }},
      {"display's object", [](C &c) { c.attrDisplay->setObject(c.spare); }},
      {"display's attribute",
       [](C &c) {
         c.attrDisplay->destroy();
         oaAttrDisplay::create(c.net, oaNetAttrType(oacIsGlobalNetAttrType), 230, 0xffffffffU, oaPoint(2, 2),
                               oacLowerLeftTextAlign, oacR0, oacStickFont, 12, oacValueTextDisplayFormat);
       }},
      {"display on a net", [](C &c) { c.propDisplay->addToNet(c.net); }},
  };
  addTextChanges(changes, &C::text,
                 {"text origin", "text alignment", "text orientation", "text font", "text height", "text overbar",
                  "text visible", "text drafting"});
  addTextChanges(changes, &C::evalText,
                 {"evaluated origin", "evaluated alignment", "evaluated orientation", "evaluated font",
                  "evaluated height", "evaluated overbar", "evaluated visible", "evaluated drafting"});
  addTextChanges(changes, &C::propDisplay,
                 {"display origin", "display alignment", "display orientation", "display font", "display height",
                  "display overbar", "display visible", "display drafting"});
  return changes;
}

Changes netChanges() {
  typedef Contents C;
  return {
      {"net's name", [](C &c) { c.spare->setName(scalar("bb")); }},
      {"global", [](C &c) { c.net->setGlobal(true); }},
      {"signal type", [](C &c) { c.net->setSigType(oacClockSigType); }},
      {"net's priority", [](C &c) { c.net->setPriority(-4); }},
      {"preferred net", [](C &c) { c.twin->setPreferredEquivalent(); }},
      {"no equivalence", [](C &c) { c.spare->breakEquivalence(); }},
      {"equivalent implicit bit", [](C &c) { c.bus->getBit(2)->makeEquivalent(c.net); }},
      {"bus's priority", [](C &c) { c.bus->setPriority(2); }},
      {"bundle is gone", [](C &c) { c.bundle->destroy(); }},
      {"bit is gone", [](C &c) { c.bit->destroy(); }},
      {"bit order", [](C &c) { c.netDef->setBitOrder(oacDescendingBitOrder); }},
      {"implicit bit made explicit", [](C &c) { oaBusNetBit::create(c.block, scalar("D"), 1); }},
      {"property on an implicit bit", [](C &c) { oaIntProp::create(c.bus->getBit(1), "p", 1); }},
      {"figure on another net", [](C &c) { c.rect->addToNet(c.spare); }},
      {"figure on no net", [](C &c) { c.rect->removeFromNet(); }},
      {"figure on a bit", [](C &c) { c.rect->addToNet(c.bit); }},
  };
}

Changes termChanges() {
  typedef Contents C;
  return {
      {"terminal's name", [](C &c) { static_cast<oaScalarTerm *>(c.term)->setName(scalar("input")); }},
      {"terminal's net", [](C &c) { c.term->moveToNet(c.spare); }},
      {"terminal's type", [](C &c) { c.term->setTermType(oacTristateTermType); }},
      {"terminal's position", [](C &c) { c.term->setPosition(0); }},
      {"no interface", [](C &c) { c.term->setIsInterface(false); }},
      {"bus terminal's type", [](C &c) { c.busTerm->setTermType(oacOutputTermType); }},
      {"terminal's bit order", [](C &c) { c.termDef->setBitOrder(oacNoneBitOrder); }},
      {"pin's name", [](C &c) { c.pin->setName("p9"); }},
      {"pin's access", [](C &c) { c.pin->setAccessDir(oacBottom); }},
      {"pin's status", [](C &c) { c.pin->setPlacementStatus(oacFixedPlacementStatus); }},
      {"pin's type", [](C &c) { c.pin->setPinType(oacBumpPinType); }},
      {"pin's terminal", [](C &c) { c.pin->setTerm(c.busTerm); }},
      {"figure in no pin", [](C &c) { c.pinRect->removeFromPin(); }},
      {"figure in another pin", [](C &c) { c.pinRect->addToPin(oaPin::find(c.term, "p2")); }},
      {"instance in a pin", [](C &c) { c.inst->addToPin(c.pin); }},
  };
}

Changes instChanges() {
  typedef Contents C;
  return {
      {"instance's name", [](C &c) { c.inst->setName(scalar("I9")); }},
      {"master's library", [](C &c) { c.inst->setMaster(scalar("other"), scalar("inv"), scalar("layout")); }},
      {"master's cell", [](C &c) { c.inst->setMaster(scalar("lib"), scalar("buf"), scalar("layout")); }},
      {"master's view", [](C &c) { c.inst->setMaster(scalar("lib"), scalar("inv"), scalar("symbol")); }},
      {"origin", [](C &c) { c.inst->setOrigin(oaPoint(11, 20)); }},
      {"orientation", [](C &c) { c.inst->setOrient(oacMYR90); }},
      {"status", [](C &c) { c.inst->setPlacementStatus(oacLockedPlacementStatus); }},
      {"priority", [](C &c) { c.inst->setPriority(5); }},
      {"array rows", [](C &c) { c.array->setNumRows(4); }},
      {"array columns", [](C &c) { c.array->setNumCols(4); }},
      {"array pitch in x", [](C &c) { c.array->setDX(31); }},
      {"array pitch in y", [](C &c) { c.array->setDY(-40); }},
      {"vector's origin", [](C &c) { c.vector->setOrigin(oaPoint(1, 0)); }},
      {"instance bit's origin", [](C &c) { c.instBit->setOrigin(oaPoint(1, 0)); }},
      {"instances' bit order", [](C &c) { c.instDef->setBitOrder(oacDescendingBitOrder); }},
      {"property on an implicit bit", [](C &c) { oaIntProp::create(c.vector->getBit(1), "p", 1); }},
      {"connection's net", [](C &c) { c.instTerm->addToNet(c.spare); }},
      {"connection to no net", [](C &c) { c.instTerm->removeFromNet(); }},
      {"connection is gone", [](C &c) { c.instTerm->destroy(); }},
      {"connection by another name",
       [](C &c) {
         c.instTerm->destroy();
         oaInstTerm::create(c.net, c.inst, named("C"));
       }},
      {"connection at a position", [](C &c) { c.positionTerm->addToNet(c.spare); }},
      {"connection of a vector", [](C &c) { oaInstTerm::create(c.net, c.instBit, named("A")); }},
  };
}

Changes propChanges() {
  typedef Contents C;
  const oaByte bytes[] = {0, 255, 17};
  const std::string changedBytes(reinterpret_cast<const char *>(bytes), sizeof bytes);
  return {
      {"property's name", [](C &c) { c.intProp->setName("counted"); }},
      {"int", [](C &c) { c.intProp->setValue(4); }},
      {"int range", [](C &c) { c.intRange->setValue(3); }},
      {"int range from", [](C &c) { c.intRange->set(0, 2, 3); }},
      {"int range to", [](C &c) { c.intRange->set(1, 2, 4); }},
      {"float", [](C &c) { c.floatProp->setValue(0.10000001F); }},
      {"float range", [](C &c) { c.floatRange->setValue(1.5F); }},
      {"float range from", [](C &c) { c.floatRange->set(-1, 1, 2); }},
      {"float range to", [](C &c) { c.floatRange->set(0, 1, 3); }},
      {"double", [](C &c) { c.doubleProp->setValue(0.2); }},
      {"double in the last place", [](C &c) { c.doubleProp->setValue(0.10000000000000002); }},
      {"double range", [](C &c) { c.doubleRange->setValue(1.5); }},
      {"double range from", [](C &c) { c.doubleRange->set(-1, 1, 2); }},
      {"double range to", [](C &c) { c.doubleRange->set(0, 1, 3); }},
      {"boolean", [](C &c) { c.booleanProp->setValue(false); }},
      {"time", [](C &c) { c.timeProp->setValue(1000000001); }},
      {"string", [](C &c) { c.stringProp->setValue("say hi"); }},
      {"string that looks escaped", [](C &c) { c.stringProp->setValue("say \\\"hi\\\"\\n"); }},
      {"enum", [](C &c) { c.enumProp->setValue("slow"); }},
      {"app type", [](C &c) { c.appProp->setAppType("yours"); }},
      {"app bytes",
       [changedBytes](C &c) { c.appProp->setValue(3, reinterpret_cast<const oaByte *>(changedBytes.data())); }},
      {"inner property", [](C &c) { oaIntProp::create(c.hierProp, "more", 2); }},
      {"property is gone", [](C &c) { c.booleanProp->destroy(); }},
      {"property of the block", [](C &c) { oaIntProp::create(c.block, "p", 1); }},
      {"property of the design", [](C &c) { oaIntProp::create(c.block->getDesign(), "p", 1); }},
      {"property of a net", [](C &c) { oaIntProp::create(c.net, "p", 1); }},
      {"property of a terminal", [](C &c) { oaIntProp::create(c.term, "p", 1); }},
      {"property of a pin", [](C &c) { oaIntProp::create(c.pin, "p", 1); }},
      {"property of an instance", [](C &c) { oaIntProp::create(c.inst, "p", 1); }},
      {"property of a connection", [](C &c) { oaIntProp::create(c.instTerm, "p", 1); }},
      {"property of a definition", [](C &c) { oaIntProp::create(c.netDef, "p", 1); }},
      {"property of a display", [](C &c) { oaIntProp::create(c.propDisplay, "p", 1); }},
      {"property of a pair", [](C &c) { oaIntProp::create(oaLPPHeader::find(c.block, 2, 3), "p", 1); }},
      {"property of a layer", [](C &c) { oaIntProp::create(oaLayerHeader::find(c.block, 2), "p", 1); }},
      {"property of a header", [](C &c) { oaIntProp::create(c.inst->getHeader(), "p", 1); }},
      {"cell type", [](C &c) { c.block->getDesign()->setCellType(oacPadCellType); }},
  };
}

class DumpChanges : public DumpTest {
protected:
  std::string dumpAfter(const std::function<void(Contents &)> &change) {
    {
      const NewView view("changed", "layout", oacMaskLayout);
      Contents contents(*view);
      EXPECT_NO_THROW(change(contents));
    }
    return dump("changed");
  }

  void expectAllDifferent(const Changes &changes) {
    std::map<std::string, const char *> seen;
    seen[dumpAfter([](Contents &) {})] = "no change";
    for (const Change &change : changes) {
      SCOPED_TRACE(change.name);
      const auto result = seen.emplace(dumpAfter(change.apply), change.name);
      EXPECT_TRUE(result.second) << change.name << " dumps like " << result.first->second;
      EXPECT_FALSE(result.first->first.empty()) << change.name;
    }
  }
};

TEST_F(DumpChanges, OfShapesShow) { expectAllDifferent(shapeChanges()); }
TEST_F(DumpChanges, OfTextsShow) { expectAllDifferent(textChanges()); }
TEST_F(DumpChanges, OfNetsShow) { expectAllDifferent(netChanges()); }
TEST_F(DumpChanges, OfTerminalsShow) { expectAllDifferent(termChanges()); }
TEST_F(DumpChanges, OfInstancesShow) { expectAllDifferent(instChanges()); }
TEST_F(DumpChanges, OfPropertiesShow) { expectAllDifferent(propChanges()); }

TEST_F(DumpChanges, OfViasShow) {
  oaTech *tech = oaTech::create(scalar("lib"));
  oaPhysicalLayer *lower = oaPhysicalLayer::create(tech, "m1", 1);
  oaPhysicalLayer *upper = oaPhysicalLayer::create(tech, "m2", 3);
  oaViaParam defaults;
  defaults.setCutLayer(2);
  defaults.setCutWidth(10);
  defaults.setCutHeight(10);
  oaStdViaDef *std = oaStdViaDef::create(tech, "std", lower, upper, defaults);
  oaStdViaDef *other = oaStdViaDef::create(tech, "other", lower, upper, defaults);
  oaCustomViaDef *custom =
      oaCustomViaDef::create(tech, "custom", scalar("lib"), scalar("via"), scalar("layout"), lower, upper);
  const auto withVia = [](const std::function<oaVia *(Contents &)> &create) { return [=](Contents &c) { create(c); }; };
  const auto withParams = [std](const std::function<void(oaViaParam &)> &set) {
    return [=](Contents &c) {
      oaViaParam params;
      set(params);
      oaStdVia::create(c.block, std, oaTransform(5, 6), &params);
    };
  };
  const oaTransform place(5, 6);
  expectAllDifferent({
      {"standard", withVia([=](Contents &c) { return oaStdVia::create(c.block, std, place); })},
      {"another definition", withVia([=](Contents &c) { return oaStdVia::create(c.block, other, place); })},
      {"another place", withVia([=](Contents &c) { return oaStdVia::create(c.block, std, oaTransform(5, 7)); })},
      {"turned", withVia([=](Contents &c) { return oaStdVia::create(c.block, std, oaTransform(5, 6, oacR90)); })},
      {"custom", withVia([=](Contents &c) { return oaCustomVia::create(c.block, custom, place); })},
      {"on a net", [=](Contents &c) { oaStdVia::create(c.block, std, place)->addToNet(c.net); }},
      {"purpose", [=](Contents &c) { oaStdVia::create(c.block, std, place)->setPurposeNum(4); }},
      {"property", [=](Contents &c) { oaIntProp::create(oaStdVia::create(c.block, std, place), "p", 1); }},
      {"property of the header",
       [=](Contents &c) { oaIntProp::create(oaStdVia::create(c.block, std, place)->getHeader(), "p", 1); }},
      {"property of the super header",
       [=](Contents &c) {
         oaStdVia::create(c.block, std, place);
         oaIntProp::create(oaViaHeader::find(c.block, std), "p", 1);
       }},
      {"the default given", withParams([](oaViaParam &p) { p.setCutWidth(10); })},
      {"cut width", withParams([](oaViaParam &p) { p.setCutWidth(11); })},
      {"cut height", withParams([](oaViaParam &p) { p.setCutHeight(11); })},
      {"cut layer", withParams([](oaViaParam &p) { p.setCutLayer(9); })},
      {"columns", withParams([](oaViaParam &p) { p.setCutColumns(2); })},
      {"rows", withParams([](oaViaParam &p) { p.setCutRows(2); })},
      {"cut spacing", withParams([](oaViaParam &p) { p.setCutSpacing(oaVector(1, 2)); })},
      {"origin offset", withParams([](oaViaParam &p) { p.setOriginOffset(oaVector(1, 2)); })},
      {"enclosure 1", withParams([](oaViaParam &p) { p.setLayer1Enc(oaVector(1, 2)); })},
      {"enclosure 2", withParams([](oaViaParam &p) { p.setLayer2Enc(oaVector(1, 2)); })},
      {"offset 1", withParams([](oaViaParam &p) { p.setLayer1Offset(oaVector(1, 2)); })},
      {"offset 2", withParams([](oaViaParam &p) { p.setLayer2Offset(oaVector(1, 2)); })},
      {"implant 1", withParams([](oaViaParam &p) { p.setImplant1Enc(oaVector(1, 2)); })},
      {"implant 2", withParams([](oaViaParam &p) { p.setImplant2Enc(oaVector(1, 2)); })},
      {"cut pattern", withParams([](oaViaParam &p) {
         p.setCutColumns(2);
         p.setCutPatternVal(0, 1, false);
       })},
  });
  tech->close();
}

TEST_F(DumpChanges, OfWhatIsShownOfAMasterShow) {
  {
    const NewView master("inv", "layout", oacMaskLayout);
    oaIntProp::create(master.design(), "w", 1);
    oaIntProp::create(master.design(), "l", 2);
    for (const char *string : {"one", "two"}) {
      oaText::create(*master, 1, 1, string, oaPoint(), oacLowerLeftTextAlign, oacR0, oacStickFont, 1);
    }
  }
  oaDesign *master = oaDesign::open(scalar("lib"), scalar("inv"), scalar("layout"), 'r');
  const auto propShown = [master](const char *name) {
    return [=](Contents &c) {
      oaInstPropDisplay::create(c.inst, oaProp::find(master, name), 1, 1, oaPoint(), oacLowerLeftTextAlign, oacR0,
                                oacStickFont, 1);
    };
  };
  const auto textShown = [master](oaUInt4 place) {
    return [=](Contents &c) {
      oaIter<oaShape> shapes(master->getTopBlock()->getShapes());
      oaShape *shape = shapes.getNext();
      shape = place == 0 ? shape : shapes.getNext();
      oaTextOverride::create(static_cast<oaText *>(shape), c.inst, 1, 1, oaPoint(), oacLowerLeftTextAlign, oacR0,
                             oacStickFont, 1);
    };
  };
  const auto attributeShown = [](oaDesignAttrTypeEnum attribute) {
    return [=](Contents &c) {
      oaInstAttrDisplay::create(c.inst, oaDesignAttrType(attribute), 1, 1, oaPoint(), oacLowerLeftTextAlign, oacR0,
                                oacStickFont, 1);
    };
  };
  expectAllDifferent({{"one property", propShown("w")},
                      {"another property", propShown("l")},
                      {"one text", textShown(0)},
                      {"another text", textShown(1)},
                      {"one attribute", attributeShown(oacCellNameDesignAttrType)},
                      {"another attribute", attributeShown(oacViewNameDesignAttrType)}});
  master->close();
}

TEST_F(DumpChanges, OfParametricMastersShow) {
  const TestEvaluator boxes("boxes", [](oaDesign *, const oaParamArray &) {});
  const TestEvaluator others("others", [](oaDesign *, const oaParamArray &) {});
  const DefinitionData script = {{"GenCellProc", "draw"}};
  const oaParam w("w", oaDouble(1.5)), m("m", oaInt4(2));
  const auto super = [](const char *evaluator, const DefinitionData &data, std::initializer_list<oaParam> params) {
    const oaParamArray defaults = paramsOf(params);
    return [=](Contents &c) {
      oaPcellDef *definition = oaPcellLink::getPcellDef(evaluator);
      for (const auto &entry : data) {
        definition->addData(entry.first.c_str(), entry.second.c_str());
      }
      c.block->getDesign()->defineSuperMaster(definition, defaults);
    };
  };
  expectAllDifferent({
      {"super master", super("boxes", script, {w, m})},
      {"evaluator", super("others", script, {w, m})},
      {"no data", super("boxes", {}, {w, m})},
      {"script", super("boxes", {{"GenCellProc", "paint"}}, {w, m})},
      {"script's name", super("boxes", {{"ScriptEngineName", "draw"}}, {w, m})},
      {"more data", super("boxes", {{"GenCellProc", "draw"}, {"anything", ""}}, {w, m})},
      {"data across entries", super("boxes", {{"GenCellProc", "draw\" \"anything"}}, {w, m})},
      {"order", super("boxes", script, {m, w})},
      {"value", super("boxes", script, {oaParam("w", oaDouble(1.6)), m})},
      {"type", super("boxes", script, {w, oaParam("m", oaFloat(2))})},
      {"parameter's name", super("boxes", script, {w, oaParam("n", oaInt4(2))})},
      {"fewer parameters", super("boxes", script, {w})},
  });
}

// A definition as kits have it that give texts only by name.
struct NamedTexts {
  DefinitionData texts;
  bool getDataValue(const char *name, oaString &value) {
    value = texts[name].c_str();
    return !texts[name].empty();
  }
};

TEST(DefinitionData, KnownNamesAreAskedForWhereTheTableIsNotShown) {
  NamedTexts definition{{{"GenCellProc", "draw"}, {"TimeLimit", "5"}, {"anything", "else"}}};
  EXPECT_EQ(definitionData(definition), (DefinitionData{{"GenCellProc", "draw"}, {"TimeLimit", "5"}}));
}

} // namespace
