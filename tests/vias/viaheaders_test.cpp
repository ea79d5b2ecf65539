// Headers: what vias share, and for how long.

#include "viatest.h"

#include <filesystem>
#include <map>
#include <random>

using namespace viatest;
using testing::ElementsAre;

namespace {

class ViaHeaders : public Vias {};

} // namespace

TEST_F(ViaHeaders, OneForEachParameterSet) {
  oaStdViaDef *def = stdDef("v");
  const oaViaParam two = columns(2);
  oaViaParam unset = columns(2);
  unset.setDefault(oacCutColumnsViaParamType);
  oaStdVia *plain = place(def, 0, 0);
  oaStdVia *wide = place(def, 0, 0, &two);
  EXPECT_EQ(place(def, 5, 5, &two)->getHeader(), wide->getHeader());
  EXPECT_EQ(place(def, 5, 5, &unset)->getHeader(), plain->getHeader()) << "default values do not count";
  EXPECT_THAT(headers(), ElementsAre("v/super(0)", "v/sub(2)", "v/sub(2)"));
  oaStdViaHeader *header = wide->getHeader();
  oaRefHeader *super = header->getSuperHeader();
  EXPECT_EQ(super, oaViaHeader::find(block_, "v"));
  EXPECT_EQ(super, oaViaHeader::find(block_, def));
  EXPECT_EQ(super->getSuperHeader(), nullptr);
  EXPECT_EQ(static_cast<oaViaHeader *>(super)->getSubHeaders().getCount(), 2u);
  EXPECT_EQ(header->getViaDef(), def);
  oaViaParam params;
  header->getParams(params);
  EXPECT_EQ(params.getCutColumns(), 2u);
  static_cast<oaStdViaHeader *>(super)->getParams(params);
  EXPECT_TRUE(params.isEqual(oneCut()));
  EXPECT_EQ(header->getMaster(), wide->getMaster());
  EXPECT_NE(header->getMaster(), plain->getMaster());
  oaBox box;
  header->getMasterBBox(box);
  EXPECT_EQ(textOf(box), "-130 -60 130 60");
  header->getBBox(box);
  EXPECT_EQ(textOf(box), "-130 -60 135 65");

  // The last via takes its header along, the last header the super header and the masters.
  oaDesign *master = wide->getMaster();
  wide->setViaParams(oaViaParam());
  EXPECT_THAT(headers(), ElementsAre("v/super(0)", "v/sub(3)", "v/sub(1)"));
  EXPECT_EQ(wide->getHeader(), plain->getHeader());
  oaIter<oaVia> vias(block_->getVias());
  while (oaVia *via = vias.getNext()) {
    via->destroy();
  }
  EXPECT_THAT(headers(), ElementsAre());
  EXPECT_FALSE(master->isValid() || header->isValid());
  EXPECT_EQ(oaViaHeader::find(block_, "v"), nullptr);
}

TEST_F(ViaHeaders, BlockTakesItsViasAlong) {
  place(stdDef("v"), 0, 0);
  block_->destroy();
  block_ = oaBlock::create(design_);
  EXPECT_EQ(block_->getVias().getCount(), 0u);
  EXPECT_EQ(block_->getViaHeaders().getCount(), 0u);
  EXPECT_EQ(boxOf(block_), "none");
}

TEST_F(ViaHeaders, MakeManyViasOfFewKindsSmall) {
  constexpr int kVias = 20000;
  const oaStdViaDef *defs[] = {stdDef("a"), stdDef("b"), stdDef("c"), stdDef("d")};
  for (int i = 0; i < kVias; ++i) {
    const oaViaParam params = columns(1 + oaUInt4(i / 4 % 5));
    place(defs[i % 4], i, -i, &params);
  }
  reread('r');
  EXPECT_EQ(block_->getViaHeaders().getCount(), 24u);
  EXPECT_EQ(block_->getVias().getCount(), oaUInt4(kVias));
  EXPECT_LT(std::filesystem::file_size(libPath() + "/cell/layout/layout.oa"), 15u * kVias);
}

// Random changes, on the design and on plain containers.
TEST_F(ViaHeaders, CountAsVias) {
  std::mt19937 random(5);
  const auto below = [&](unsigned count) { return static_cast<unsigned>(random() % count); };
  oaStdViaDef *defs[] = {stdDef("a"), stdDef("b")};
  std::map<std::string, unsigned> expected; // definition and columns -> vias
  std::vector<std::pair<oaStdVia *, std::string>> vias;
  const auto keyOf = [](unsigned def, unsigned count) {
    return std::string(1, char('a' + def)) + std::to_string(count);
  };
  const auto take = [&](const std::string &key) {
    if (--expected[key] == 0) {
      expected.erase(key);
    }
  };
  for (int step = 0; step < 2000; ++step) {
    const unsigned action = below(vias.size() < 20 ? 4 : 6);
    const unsigned count = 1 + below(5);
    const oaViaParam params = columns(count);
    if (action < 3 || vias.empty()) {
      const unsigned def = below(2);
      vias.emplace_back(place(defs[def], int(below(100)), int(below(100)), &params), keyOf(def, count));
      ++expected[vias.back().second];
    } else if (action == 3) {
      auto &[via, key] = vias[below(unsigned(vias.size()))];
      take(key);
      via->setViaParams(params);
      key = keyOf(unsigned(key[0] - 'a'), count);
      ++expected[key];
    } else {
      const unsigned place = below(unsigned(vias.size()));
      take(vias[place].second);
      vias[place].first->destroy();
      vias.erase(vias.begin() + place);
    }
    if (step % 100 != 99) {
      continue;
    }
    if (step % 500 == 499) {
      reread();
      vias.clear();
      oaIter<oaVia> all(block_->getVias());
      while (oaVia *via = all.getNext()) {
        oaViaParam own;
        static_cast<oaStdVia *>(via)->getViaParams(own);
        vias.emplace_back(static_cast<oaStdVia *>(via), keyOf(via->getViaDef() == defs[1], own.getCutColumns()));
      }
    }
    std::map<std::string, unsigned> found;
    oaIter<oaViaHeader> headers(block_->getViaHeaders());
    while (oaViaHeader *header = headers.getNext()) {
      if (header->isSubHeader()) {
        oaViaParam own;
        static_cast<oaStdViaHeader *>(header)->getParams(own);
        found[keyOf(header->getViaDef() == defs[1], own.getCutColumns())] = header->getVias().getCount();
      }
    }
    ASSERT_EQ(found, expected) << "step " << step;
  }
}
