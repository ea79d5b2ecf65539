// Vias as lists of key/value pairs.

#include "layouttest.h"
#include "viaparameters.h"

using namespace oa;
using testing::ElementsAre;

namespace {

Lines linesOf(const QStringList &list) {
  Lines lines;
  for (int i = 0; i + 1 < list.size(); i += 2) {
    lines.push_back((list.at(i) + ' ' + list.at(i + 1)).toStdString());
  }
  return lines;
}

TEST(ViaParametersTest, StandardViaListsEveryValueInOrder) {
  oaViaParam params;
  params.setLayer1Enc(oaVector(5, 10));
  params.setLayer2Enc(oaVector(6, 11));
  params.setImplant2Enc(oaVector(-1, 1));
  params.setCutSpacing(oaVector(140, 150));
  params.setOriginOffset(oaVector(-20, 35));
  params.setCutWidth(130);
  params.setCutHeight(131);
  params.setCutLayer(30);
  params.setCutColumns(3);
  params.setCutRows(2);
  EXPECT_THAT(linesOf(oaConvert::toViaParameterList(params, "M1_M2", 31, 32)),
              ElementsAre("oaType oaStdVia", "oaViaDefName M1_M2", "layer1Enc 5/10", "layer2Enc 6/11",
                          "implant1Enc 0/0", "implant2Enc -1/1", "layer1Offset 0/0", "layer2Offset 0/0",
                          "cutSpacing 140/150", "originOffset -20/35", "cutWidth 130", "cutHeight 131", "cutLayer 30",
                          "cutColumns 3", "cutRows 2", "layer1 31", "layer2 32"));
}

TEST(ViaParametersTest, CustomViaKeepsNumbersExactly) {
  oaParamArray params;
  params.append(oaParam("n", oaInt4(-7)));
  params.append(oaParam("w", oaDouble(0.1)));
  params.append(oaParam("third", oaDouble(1.0 / 3)));
  params.append(oaParam("f", oaFloat(0.1f)));
  params.append(oaParam("model", oaString("a b")));
  oaParam flag;
  flag.setName("on");
  flag.setBooleanVal(true);
  params.append(flag);
  const QStringList list = toCustomViaParameterList(params, "VX", nullptr);
  EXPECT_THAT(linesOf(list), ElementsAre("oaType oaCustomVia", "oaViaDefName VX", "n -7", "w 0.1",
                                         testing::StartsWith("third 0.333333"), "f 0.1", "model a b", "on true"));
  EXPECT_EQ(list.at(9).toDouble(), 1.0 / 3);
}

} // namespace
