// Super masters and their sub masters: definition, evaluation, sharing, lifetime, and what evaluators may do wrong.

#include "pcelltest.h"

using namespace pcelltest;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

TEST_F(Pcells, ASuperMasterIsStoredAndReadAgain) {
  makeBox();
  oaDesign *super = open("box", 'r');
  EXPECT_TRUE(super->isSuperMaster());
  EXPECT_FALSE(super->isSubMaster());
  oaString evaluator;
  super->getPcellEvaluatorName(evaluator);
  EXPECT_STREQ(evaluator, "boxes");
  EXPECT_EQ(paramsOf(super), "w=10 l=20 title=t");
  oaParamArray given = defaults();
  super->getParams(given, false);
  EXPECT_EQ(given.getNumElements(), 0u);
  EXPECT_TRUE(boxes_.calls.empty()) << "nobody needed the evaluator yet";
  EXPECT_EQ(super->getPcellDef()->getIPcell(), &boxes_);
  super->close();
  EXPECT_THAT(boxes_.calls, ElementsAre("bind", "unbind"));
}

TEST_F(Pcells, ParametersOfAllTypesComeBack) {
  oaParamArray params;
  params.append(oaParam("i", oaInt4(-7)));
  params.append(oaParam("f", oaFloat(0.1f)));
  params.append(oaParam("d", 1e-300));
  params.append(oaParam("s", oaString("")));
  const oaByte bytes[] = {0, 255, 10, 0};
  params.append(oaParam("a", oaString("blob"), 4, bytes));
  oaParam truth("b", 0), moment("t", 0);
  truth.setBooleanVal(true);
  moment.setTimeVal(1234567890123);
  params.append(truth);
  params.append(moment);
  oaDesign *design = open("all", 'w');
  design->defineSuperMaster(oaPcellLink::getPcellDef("boxes"), params);
  design->save();
  design->close();
  boxes_.draw = [](oaDesign *sub, const oaParamArray &) { oaBlock::create(sub); };
  oaDesign *super = open("all", 'r');
  oaParamArray read;
  super->getParams(read);
  ASSERT_EQ(read.getNumElements(), params.getNumElements());
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    EXPECT_TRUE(read[i] == params[i]) << "parameter " << i;
  }
  oaDesign *sub = variant(params, "all");
  sub->getParams(read);
  EXPECT_TRUE(read[4] == params[4]);
}

TEST_F(Pcells, EqualParametersShareOneSubMaster) {
  makeBox();
  oaDesign *plain = variant(oaParamArray());
  EXPECT_TRUE(plain->isSubMaster());
  EXPECT_FALSE(plain->isSuperMaster());
  EXPECT_EQ(plain->getMode(), 's');
  EXPECT_EQ(drawn(plain), "0 0 10 20");
  oaParamArray both = one("l", 5), turned = one("w", 3);
  both.append(oaParam("w", 3));
  turned.append(oaParam("l", 5));
  oaParamArray repeated = one("w", 99);
  repeated.append(oaParam("l", 5));
  repeated.append(oaParam("w", 3));
  oaDesign *sub = variant(both);
  EXPECT_EQ(drawn(sub), "0 0 3 5");
  EXPECT_EQ(paramsOf(sub), "w=3 l=5 title=t");
  oaParamArray given;
  sub->getParams(given, false);
  EXPECT_EQ(textOf(given), "w=3 l=5");
  EXPECT_EQ(variant(turned), sub);
  EXPECT_EQ(variant(repeated), sub) << "the last of equal names counts";
  EXPECT_NE(variant(one("w", 10)), plain) << "given with its default value is given all the same";
  EXPECT_EQ(sub->getRefCount(), 3u);
  EXPECT_THAT(boxes_.calls, ElementsAre("bind", "eval", "eval", "eval"));
  EXPECT_EQ(plain->getSuperMaster()->getSubMasters().getCount(), 3u);
  EXPECT_EQ(oaDesign::find(scalar(libName()), scalar("box"), scalar("layout")), sub->getSuperMaster());
}

TEST_F(Pcells, TheSuperMasterStaysOpenAsLongAsItsSubMasters) {
  makeBox();
  oaDesign *sub = variant(one("w", 3));
  oaDesign *super = sub->getSuperMaster();
  EXPECT_EQ(super->getRefCount(), 1u);
  sub->close();
  EXPECT_FALSE(super->isValid());
  EXPECT_FALSE(sub->isValid());

  super = open("box", 'r');
  sub = variant(one("w", 3));
  super->close();
  EXPECT_TRUE(super->isValid());
  super->purge();
  EXPECT_FALSE(sub->isValid()) << "nothing is left of what it was made from";
}

TEST_F(Pcells, WhatDoesNotFitIsRefused) {
  makeBox();
  oaDesign *plain = open("plain", 'w');
  oaDesign *sub = variant(oaParamArray());
  oaDesign *read = sub->getSuperMaster();
  oaPcellDef *def = oaPcellLink::getPcellDef("boxes");
  oaParamArray twice = one("w", 1);
  twice.append(oaParam("w", 2));
  oaParamArray params;
  oaString name;
  struct Refusal {
    oaUInt4 id;
    const char *what;
    std::function<void()> action;
  } refusals[] = {
      {oacNotExistInDefaultParam, "unknown parameter", [&] { variant(one("h", 1)); }},
      {oacInvalidDataTypeForParam, "other type", [&] { variant(one("w", 1.5)); }},
      {oacInvalidSuperMaster, "parameters for an ordinary design", [&] { variant(one("w", 1), "plain"); }},
      {oacInvalidPcellMaster, "parameters of one", [&] { plain->getParams(params); }},
      {oacInvalidPcellMaster, "a parameter of one",
       [&] {
         oaParam p;
         plain->findParam("w", p);
       }},
      {oacInvalidSuperMaster, "its evaluator", [&] { plain->getPcellEvaluatorName(name); }},
      {oacInvalidSuperMaster, "its sub masters", [&] { plain->getSubMasters(); }},
      {oacInvalidSuperMaster, "evaluating it", [&] { plain->evalSuperMaster(); }},
      {oacInvalidSubMaster, "super master of a super master", [&] { read->getSuperMaster(); }},
      {oacInvalidSuperMaster, "evaluator of a sub master", [&] { sub->getPcellEvaluatorName(name); }},
      {oacInvalidSuperMaster, "a sub master as super master", [&] { sub->defineSuperMaster(def, defaults()); }},
      {oacCannotModifyReadModeDesign, "in mode r", [&] { read->defineSuperMaster(def, defaults()); }},
      {oacCannotModifyReadModeDesign, "in mode r", [&] { read->undefineSuperMaster(); }},
      {oacPcellInvalidPcellDef, "no definition", [&] { plain->defineSuperMaster(nullptr, defaults()); }},
      {oacPcellInvalidPcellDef, "another's", [&] { plain->defineSuperMaster(read->getPcellDef(), defaults()); }},
      {oacInvalidDataTypeForParam, "a name twice", [&] { plain->defineSuperMaster(def, twice); }},
      {oacPcellLinkExists, "linked twice", [&] { oaPcellLink::create(&boxes_); }},
      {oacPcellEvaluatorNotFound, "unknown evaluator", [&] { oaPcellLink::getPcellDef("nobody"); }},
      {oacSaveScratchModeDesign, "saving a sub master", [&] { sub->save(); }},
  };
  for (const Refusal &refusal : refusals) {
    EXPECT_EQ(idRaisedBy(refusal.action), refusal.id) << refusal.what;
  }
  EXPECT_FALSE(plain->isSuperMaster());
  delete def;
}

TEST_F(Pcells, FailuresAreToldAndLeaveNoBlock) {
  makeBox();
  Errors errors;
  boxes_.draw = [](oaDesign *design, const oaParamArray &) {
    oaRect::create(oaBlock::create(design), 1, 2, oaBox(0, 0, 1, 1));
    throw std::runtime_error("w is too small");
  };
  oaDesign *sub = variant(one("w", 0));
  EXPECT_EQ(drawn(sub), "no block");
  ASSERT_THAT(errors.texts, ElementsAre(HasSubstr("w is too small")));
  EXPECT_THAT(errors.texts[0], HasSubstr("(w=0)"));
  EXPECT_THAT(errors.kinds, ElementsAre(int(oacPcellEvalError)));
  EXPECT_TRUE(errors.isAboutSubMaster);
  EXPECT_EQ(errors.before, 1);
  EXPECT_EQ(errors.after, 0);
  EXPECT_EQ(variant(one("w", 0)), sub) << "not tried again while it is open";
  boxes_.draw = [](oaDesign *design, const oaParamArray &) { design->purge(); };
  EXPECT_EQ(idRaisedBy([&] { variant(one("w", 1)); }), oacInvalidSubMaster);
  boxes_.draw = BoxEvaluator::drawBox;
  EXPECT_EQ(drawn(variant(one("w", 2))), "0 0 2 20");
}

TEST_F(Pcells, AMissingEvaluatorIsToldAndItsCellsAreKept) {
  makeBox();
  link_->destroy();
  link_ = nullptr;
  Errors errors;
  oaDesign *sub = variant(one("w", 3));
  EXPECT_EQ(drawn(sub), "no block");
  EXPECT_THAT(errors.kinds, ElementsAre(int(oacPcellPlugInError)));
  EXPECT_THAT(errors.texts[0], HasSubstr("boxes"));
  EXPECT_EQ(paramsOf(sub), "w=3 l=20 title=t");
  EXPECT_EQ(sub->getSuperMaster()->getPcellDef(), nullptr);
  sub->close();
  oaDesign *super = open("box", 'a');
  super->save(); // without the evaluator nothing that it stored is lost
  EXPECT_EQ(idRaisedBy([&] { super->saveAs(scalar(libName()), scalar("copy"), scalar("layout")); }),
            oacCannotSaveUnboundSuperMaster);
  super->close();
  link_ = oaPcellLink::create(&boxes_);
  EXPECT_EQ(drawn(variant(one("w", 3))), "0 0 3 20");
}

TEST_F(Pcells, WhatTheEvaluatorKeepsIsSavedWithTheDesign) {
  oaPcellDef *def = oaPcellLink::getPcellDef("boxes");
  EXPECT_TRUE(def->addData("a", "x y"));
  EXPECT_FALSE(def->addData("a", "again"));
  EXPECT_TRUE(def->addData("b", ""));
  EXPECT_TRUE(def->addData("c", "gone"));
  EXPECT_FALSE(def->setDataValue("d", "none"));
  EXPECT_TRUE(def->removeData("c"));
  oaDesign *design = open("box", 'w');
  design->defineSuperMaster(def, defaults());
  EXPECT_TRUE(def->setDataValue("b", std::string(100000, 'z').c_str()));
  design->save();
  design->saveAs(scalar(libName()), scalar("copy"), scalar("layout"));
  design->close();
  for (const char *cell : {"box", "copy"}) {
    oaPcellDef *read = open(cell, 'r')->getPcellDef();
    oaString a, b;
    ASSERT_TRUE(read->getDataValue("a", a) && read->getDataValue("b", b)) << cell;
    EXPECT_EQ(std::string(a, a.getLength()), std::string("x y"));
    EXPECT_EQ(b.getLength(), 100000u);
    EXPECT_FALSE(read->getDataValue("c", a));
  }
}

TEST_F(Pcells, RedefiningDrawsOpenSubMastersAnew) {
  makeBox();
  oaDesign *super = open("box", 'a');
  oaDesign *plain = variant(oaParamArray()), *wide = variant(one("w", 30)),
           *titled = variant(one("title", oaString("x")));
  oaParamArray others = one("w", 11);
  others.append(oaParam("l", 22));
  super->defineSuperMaster(super->getPcellDef(), others);
  EXPECT_EQ(drawn(plain), "0 0 11 22");
  EXPECT_EQ(drawn(wide), "0 0 30 22");
  EXPECT_FALSE(titled->isValid()) << "there is no such parameter any more";

  boxes_.draw = [](oaDesign *design, const oaParamArray &) {
    oaRect::create(oaBlock::create(design), 1, 2, oaBox(0, 0, 1, 1));
  };
  super->evalSuperMaster();
  EXPECT_EQ(drawn(wide), "0 0 1 1");

  super->undefineSuperMaster();
  EXPECT_FALSE(super->isSuperMaster());
  EXPECT_FALSE(plain->isValid());
  EXPECT_EQ(static_cast<oaIntProp *>(oaProp::find(super, "w"))->getValue(), 11);
  EXPECT_EQ(boxes_.calls.back(), "unbind");
}

TEST_F(Pcells, TruncatingAndRevertingLetGoOfSubMasters) {
  makeBox();
  oaDesign *sub = variant(one("w", 3));
  oaDesign *super = sub->getSuperMaster();
  super->reopen('a');
  super->revert();
  EXPECT_FALSE(sub->isValid());
  ASSERT_TRUE(super->isValid());
  EXPECT_TRUE(super->isSuperMaster());
  sub = variant(one("w", 3));
  EXPECT_EQ(drawn(sub), "0 0 3 20");
  super->reopen('w');
  EXPECT_FALSE(sub->isValid());
  EXPECT_FALSE(super->isSuperMaster());
}

} // namespace
