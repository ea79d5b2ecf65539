#include "designtest.h"

// Texts, evaluated texts and text displays.
namespace designtest {

class Texts : public DesignTest {};

TEST_F(Texts, BoxesFollowLettersAlignmentAndOrientation) {
  const oaOrient r0(oacR0);
  const struct {
    const char *name, *text;
    oaTextAlign align;
    oaOrient orient;
    bool overbar;
    const char *box; // of height 100 at (1000, 2000)
  } cases[] = {
      {"0.6 of the height a character", "abc", oacLowerLeftTextAlign, r0, false, "(1000 2000) (1180 2100)"},
      {"descenders go below", "abg", oacLowerLeftTextAlign, r0, false, "(1000 1975) (1180 2100)"},
      {"an overbar goes above", "abc", oacLowerLeftTextAlign, r0, true, "(1000 2000) (1180 2110)"},
      {"two lines", "abc\nab", oacLowerLeftTextAlign, r0, false, "(1000 2000) (1180 2200)"},
      {"UTF-8 counts characters", "\xc3\xa4\xc3\xb6", oacLowerLeftTextAlign, r0, false, "(1000 2000) (1120 2100)"},
      {"empty", "", oacLowerLeftTextAlign, r0, false, "(1000 2000) (1000 2100)"},
      {"upper left", "abc", oacUpperLeftTextAlign, r0, false, "(1000 1900) (1180 2000)"},
      {"centre", "abc", oacCenterCenterTextAlign, r0, false, "(910 1950) (1090 2050)"},
      {"lower right", "abc", oacLowerRightTextAlign, r0, false, "(820 2000) (1000 2100)"},
      {"upper right, descender", "abp", oacUpperRightTextAlign, r0, false, "(820 1875) (1000 2000)"},
      {"turned", "abc", oacLowerLeftTextAlign, oacR90, false, "(900 2000) (1000 2180)"},
      {"mirrored", "abc", oacLowerLeftTextAlign, oacMY, false, "(820 2000) (1000 2100)"},
  };
  oaBlock *block = newBlock();
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const oaText *text =
        oaText::create(block, 1, 2, c.text, oaPoint(1000, 2000), c.align, c.orient, oacRomanFont, 100, c.overbar);
    EXPECT_EQ(boxOf(text), c.box);
    oaBox box;
    oaFont().calcBBox(oaPoint(1000, 2000), c.text, 100, c.align, c.orient, c.overbar, box);
    EXPECT_EQ(textOf(box), c.box);
  }
}

TEST_F(Texts, AttributesAreKeptAndMoveTheBox) {
  oaBlock *block = newBlock();
  oaText *text = oaText::create(block, 1, 2, "a", oaPoint(0, 0), oacUpperLeftTextAlign, oacR0, oacStickFont, 10);
  text->setText("abc");
  text->setOrigin(oaPoint(7, 8));
  text->setAlignment(oacLowerRightTextAlign);
  text->setOrient(oacR270);
  text->setFont(oacMilSpecFont);
  text->setHeight(100);
  text->setOverbar(true);
  text->setVisible(false);
  text->setDrafting(false);
  const std::string box = boxOf(text);
  block = reopened(block);
  oaIter<oaShape> shapes(block->getShapes());
  text = static_cast<oaText *>(shapes.getNext());
  oaString content;
  oaPoint origin;
  text->getText(content);
  text->getOrigin(origin);
  EXPECT_EQ(content, "abc");
  EXPECT_EQ(textOf(origin), "(7 8)");
  EXPECT_EQ(text->getAlignment(), oacLowerRightTextAlign);
  EXPECT_EQ(text->getOrient(), oacR270);
  EXPECT_EQ(text->getFont(), oacMilSpecFont);
  EXPECT_EQ(text->getHeight(), 100U);
  EXPECT_TRUE(text->hasOverbar());
  EXPECT_FALSE(text->isVisible() || text->isDrafting());
  EXPECT_EQ(boxOf(text), box);
  EXPECT_EQ(boxOf(block), box) << "invisible texts count";
}

class Doubling : public IEvalText {
public:
  void getName(oaString &name) override { name = "doubling"; }
  void onEval(const oaString &textIn, oaString &textOut) override { textOut = textIn + textIn; }
};

TEST_F(Texts, EvaluatedTextsShowWhatTheirEvaluatorMakes) {
  oaBlock *block = newBlock();
  const auto create = [&](auto link) {
    return oaEvalText::create(block, 1, 2, "ab", oaPoint(0, 0), oacLowerLeftTextAlign, oacR0, oacStickFont, 10, link);
  };
  oaEvalText *plain = create(static_cast<oaEvalTextLink *>(nullptr));
  oaEvalText *unlinked =
      oaEvalText::create(block, 1, 2, "ab", oaPoint(0, 0), oacLowerLeftTextAlign, oacR0, oacStickFont, 10, NULL);
  oaEvalText *named = create(oaString("doubling"));
  EXPECT_EQ(named->getType(), oacEvalTextType);
  const auto shown = [](oaText *text) {
    oaString content;
    text->getText(content);
    return std::string(content);
  };
  EXPECT_EQ(shown(plain) + shown(unlinked) + shown(named), "ababab") << "the evaluator need not be known";
  Doubling doubling;
  oaEvalTextLink *link = oaEvalTextLink::create(&doubling);
  EXPECT_EQ(idRaisedBy([&] { oaEvalTextLink::create(&doubling); }), oacEvalTextLinkExists);
  EXPECT_EQ(oaEvalTextLink::find("doubling"), link);
  EXPECT_EQ(shown(named), "abab");
  EXPECT_EQ(named->getLink(), link);
  plain->setLink(link);
  EXPECT_EQ(boxOf(plain), "(0 0) (24 10)");
  block = reopened(block);
  oaIter<oaShape> shapes(block->getShapes());
  oaEvalText *first = static_cast<oaEvalText *>(shapes.getNext());
  oaString expression, evaluator;
  first->getExpression(expression);
  first->getEvaluatorName(evaluator);
  EXPECT_EQ(shown(first) + " " + std::string(expression) + " " + std::string(evaluator), "abab ab doubling");
  link->destroy();
  EXPECT_EQ(oaEvalTextLink::find("doubling"), nullptr);
  EXPECT_EQ(first->getLink(), nullptr);
  EXPECT_EQ(shown(first), "ab");
}

class TextDisplays : public DesignTest {
protected:
  static std::string shown(const oaTextDisplay *display) {
    oaString text;
    display->getText(text);
    return std::string(text);
  }
  static oaPropDisplay *show(oaProp *prop, oaTextDisplayFormat format = oacNameValueTextDisplayFormat) {
    return oaPropDisplay::create(prop, 1, 2, oaPoint(0, 0), oacLowerLeftTextAlign, oacR0, oacStickFont, 10, format);
  }
  static oaAttrDisplay *show(oaObject *object, oaAttrType attribute) {
    return oaAttrDisplay::create(object, attribute, 1, 2, oaPoint(0, 0), oacLowerLeftTextAlign, oacR0, oacStickFont, 10,
                                 oacNameValueTextDisplayFormat);
  }
};

TEST_F(TextDisplays, ShowNameValueOrBothOfAProperty) {
  oaBlock *block = newBlock();
  oaIntProp *prop = oaIntProp::create(block, "w", 5);
  oaPropDisplay *display = show(prop);
  EXPECT_EQ(display->getProp(), prop);
  EXPECT_EQ(shown(display), "w=5");
  EXPECT_EQ(boxOf(display), "(0 0) (18 10)");
  prop->setValue(1234);
  EXPECT_EQ(shown(display), "w=1234");
  EXPECT_EQ(boxOf(display), "(0 0) (36 10)");
  EXPECT_EQ(boxOf(block), "(0 0) (36 10)") << "nobody tells the display that its text has changed";
  display->setFormat(oacValueTextDisplayFormat);
  EXPECT_EQ(shown(display), "1234");
  display->setFormat(oacNameTextDisplayFormat);
  EXPECT_EQ(shown(display), "w");
  EXPECT_EQ(display->getType(), oacPropDisplayType);
  EXPECT_TRUE(display->isTextDisplay() && display->isShape());
  block = reopened(block);
  display = static_cast<oaPropDisplay *>(oaIter<oaShape>(block->getShapes()).getNext());
  EXPECT_EQ(shown(display), "w");
  EXPECT_EQ(display->getProp(), oaProp::find(block, "w"));
}

TEST_F(TextDisplays, ShowAttributesByKindOfObject) {
  oaBlock *block = newBlock();
  oaNet *net = oaNet::create(block, oaName(scalar("A")), oacPowerSigType, true);
  oaTerm *term = oaTerm::create(net, oaName(scalar("T")));
  oaInst *inst =
      oaScalarInst::create(block, scalar(libName()), scalar("inv"), scalar("layout"), scalar("I1"), oaTransform());
  oaInstTerm *instTerm = oaInstTerm::create(net, inst, oaName(scalar("Z")));
  const struct {
    oaObject *object;
    oaAttrType attribute;
    const char *text;
  } cases[] = {
      {net, oacNameNetAttrType, "name=A"},
      {net, oacSigTypeNetAttrType, "sigType=power"},
      {net, oacIsGlobalNetAttrType, "isGlobal=true"},
      {net, oacNumBitsNetAttrType, "numBits=1"},
      {term, oacNameTermAttrType, "name=T"},
      {term, oacHasPinsTermAttrType, "hasPins=false"},
      {inst, oacCellNameInstAttrType, "cellName=inv"},
      {inst, oacNameInstAttrType, "name=I1"},
      {inst, oacIsBoundInstAttrType, "isBound=false"},
      {instTerm, oacNameInstTermAttrType, "name=Z"},
      {block->getDesign(), oacCellNameDesignAttrType, "cellName=top"},
      {block->getDesign(), oacCellTypeDesignAttrType, "cellType=none"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.text);
    const oaAttrDisplay *display = show(c.object, c.attribute);
    EXPECT_EQ(shown(display), c.text);
    EXPECT_EQ(display->getObject(), c.object);
    EXPECT_EQ(display->getAttribute().getRawValue(), c.attribute.getRawValue());
  }
  oaRect *rect = oaRect::create(block, 1, 2, oaBox(0, 0, 1, 1));
  EXPECT_EQ(idRaisedBy([&] { show(rect, oacNameNetAttrType); }), 1606U);
  EXPECT_EQ(idRaisedBy([&] { show(term, oaAttrType(3)); }), 1606U);
  oaTech *tech = oaTech::create(lib());
  EXPECT_EQ(idRaisedBy([&] { show(oaIntProp::create(tech, "p", 1)); }), oacNonDesignTextDisplay);
  tech->purge();
}

TEST_F(TextDisplays, DieWithTheirObject) {
  oaBlock *block = newBlock();
  oaNet *net = oaNet::create(block, oaName(scalar("A")));
  oaNet *other = oaNet::create(block, oaName(scalar("B")));
  oaTerm *term = oaTerm::create(net, oaName(scalar("A")));
  oaAttrDisplay *ofNet = show(net, oacNameNetAttrType);
  oaAttrDisplay *ofTerm = show(term, oacNameTermAttrType);
  oaAttrDisplay *moved = show(net, oacNameNetAttrType);
  EXPECT_EQ(oaTextDisplay::getTextDisplays(net).getCount(), 2U);
  moved->setObject(other);
  EXPECT_EQ(shown(moved), "name=B");
  oaTextDisplayIter displays(oaTextDisplay::getTextDisplays(net));
  EXPECT_EQ(displays.getNext(), ofNet);
  EXPECT_EQ(displays.getNext(), nullptr);
  net->destroy(); // and with it the terminal
  EXPECT_FALSE(ofNet->isValid() || ofTerm->isValid());
  EXPECT_TRUE(moved->isValid());
  EXPECT_EQ(block->getShapes().getCount(), 1U);
  oaShape *copy = static_cast<oaShape *>(moved->copy(oaTransform(0, 50)));
  EXPECT_EQ(boxOf(copy), "(0 50) (36 60)");
  EXPECT_EQ(idRaisedBy([&] { moved->copy(oaTransform(), newBlock("elsewhere")); }), oacNonDesignTextDisplay);
  other->destroy();
  EXPECT_TRUE(block->getShapes().isEmpty());
}

TEST_F(TextDisplays, DieWithTheirProperty) {
  oaBlock *block = newBlock();
  oaRect *rect = oaRect::create(block, 1, 2, oaBox(0, 0, 1, 1));
  oaPropDisplay *display = show(oaIntProp::create(rect, "w", 5));
  oaPropDisplay *second = show(oaIntProp::create(rect, "l", 5));
  oaProp::find(rect, "l")->destroy();
  EXPECT_EQ(block->getShapes().getCount(), 2U);
  EXPECT_FALSE(second->isValid());
  EXPECT_TRUE(display->isValid());
  rect->destroy();
  EXPECT_TRUE(block->getShapes().isEmpty());
  EXPECT_FALSE(display->isValid());
}

TEST_F(TextDisplays, OfInstancesShowTheMaster) {
  oaBlock *master = newBlock("inv");
  oaText *label = oaText::create(master, 1, 2, "label", oaPoint(0, 0), oacLowerLeftTextAlign, oacR0, oacStickFont, 10);
  oaProp *prop = oaStringProp::create(master->getDesign(), "model", "fast");
  oaBlock *top = newBlock();
  oaInst *inst =
      oaScalarInst::create(top, scalar(libName()), scalar("inv"), scalar("layout"), scalar("I1"), oaTransform());
  oaInst *unbound =
      oaScalarInst::create(top, scalar(libName()), scalar("none"), scalar("layout"), scalar("I2"), oaTransform());
  const oaPoint at(0, 0);
  const oaTextAlign align(oacLowerLeftTextAlign);
  const oaTextDisplayFormat both(oacNameValueTextDisplayFormat);
  EXPECT_EQ(idRaisedBy([&] { oaTextOverride::create(label, unbound, 1, 2, at, align, oacR0, oacStickFont, 5); }),
            oacNoMasterForTextDisplay);
  EXPECT_EQ(idRaisedBy([&] {
              oaInstPropDisplay::create(inst, oaStringProp::create(top, "own", ""), 1, 2, at, align, oacR0,
                                        oacStickFont, 5);
            }),
            oacPropNotOnInstanceMaster);
  oaTextOverride *override = oaTextOverride::create(label, inst, 1, 2, at, align, oacR0, oacStickFont, 5);
  oaInstPropDisplay *model = oaInstPropDisplay::create(inst, prop, 1, 2, at, align, oacR0, oacStickFont, 5, both);
  oaInstAttrDisplay *cell =
      oaInstAttrDisplay::create(inst, oacCellNameDesignAttrType, 1, 2, at, align, oacR0, oacStickFont, 5, both);
  EXPECT_EQ(shown(override) + " " + shown(model) + " " + shown(cell), "label model=fast cellName=inv");
  EXPECT_EQ(override->getMasterText(), label);
  EXPECT_EQ(model->getMasterProp(), prop);
  EXPECT_TRUE(override->isBound() && model->isBound() && cell->isBound());
  EXPECT_EQ(oaTextDisplay::getTextDisplays(inst).getCount(), 3U);
  // Without the master they show what they showed last.
  oaTextOverride *kept = override;
  master->getDesign()->purge();
  fs::remove_all(viewFolder("inv"));
  EXPECT_EQ(shown(kept), "label");
  EXPECT_EQ(shown(model), "model");
  EXPECT_FALSE(kept->isBound());
  inst->destroy();
  EXPECT_TRUE(top->getShapes().isEmpty());
}

} // namespace designtest
