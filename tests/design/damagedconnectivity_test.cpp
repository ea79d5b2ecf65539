// Nets, terminals, instances and connections of several bits out of files with wrong rows and right checksums: whatever
// is asked, changed or saved, a named exception comes out at worst; never a crash, never an endless walk. What oacheck
// calls sound can be read without any exception.

#include "oachecktest.h"

#include "mutateddesign.h"

#include <csignal>
#include <cstdio>
#include <unistd.h>

using namespace oachecktest;

namespace {

// More than a walk takes in the slowest build.
constexpr unsigned kMostSeconds = 60;
char currentCase[512];

void tellEndlessCase(int) {
  const long written = ::write(STDERR_FILENO, currentCase, std::strlen(currentCase));
  ::_exit(written < 0 ? 3 : 2);
}

// Asks everything, each thing by itself, and counts what raises.
class Walk {
public:
  explicit Walk(oaBlock *block) : block_(block) {}

  unsigned raised() const { return raised_; }
  const std::string &firstMessage() const { return firstMessage_; }

  void readAll() {
    ask([&] { readNets(); });
    ask([&] { readTerms(); });
    ask([&] { readDefs<oaBusNetDef>(block_->getBusNetDefs()); });
    ask([&] { readDefs<oaBusTermDef>(block_->getBusTermDefs()); });
    ask([&] { readDefs<oaVectorInstDef>(block_->getVectorInstDefs()); });
    ask([&] { readInsts(); });
    ask([&] { readInstTerms(); });
    ask([&] { readPins(); });
    ask([&] {
      oaBox box;
      block_->getBBox(box);
      block_->hasMultiBitTerm();
    });
  }
  void changeAll() {
    ask([&] { oaNet::create(block_, fulldesign::native("NEW,A,D[9:8]")); });
    ask([&] { oaTerm::create(oaNet::create(block_, fulldesign::native("M[0:1]")), fulldesign::native("M[0:1]")); });
    destroyAll<oaInstTerm>([&] { return block_->getInstTerms(oacInstTermIterAll); });
    destroyAll<oaInst>([&] { return block_->getInsts(oacInstIterAll); });
    destroyAll<oaTerm>([&] { return block_->getTerms(oacTermIterAll); });
    destroyAll<oaNet>([&] { return block_->getNets(oacNetIterAll); });
  }
  template <typename Question> void ask(Question question) {
    try {
      question();
    } catch (const oaException &exception) {
      firstMessage_ = raised_++ == 0 ? std::string(exception.getMsg()) : firstMessage_;
    }
  }

private:
  // Every other one, so that the rest has to get along without.
  template <typename Object, typename Collection> void destroyAll(Collection collection) {
    ask([&] {
      oaIter<Object> objects(collection());
      for (bool isChosen = true; Object *object = objects.getNext(); isChosen = !isChosen) {
        if (isChosen) {
          ask([&] { object->destroy(); });
        }
      }
    });
  }
  template <typename Object> void readName(const Object *object) {
    ask([&] {
      oaString text;
      oaName name;
      object->getName(oaNativeNS(), text);
      object->getName(name);
      name.getNumBits();
    });
  }
  void readNets() {
    oaIter<oaNet> nets(block_->getNets(oacNetIterAll));
    while (oaNet *net = nets.getNext()) {
      readName(net);
      ask([&] {
        const oaUInt4 bits = net->getNumBits();
        for (oaUInt4 bit = 0; bit < std::min(bits, 64u); ++bit) {
          net->getBit(bit)->isImplicit();
        }
      });
      ask([&] { net->getSingleBitMembers().isEmpty(); });
      ask([&] { net->isGlobal(); });
      ask([&] { net->isEmpty(); });
      ask([&] { net->getTerms(oacTermIterEquivNets).getCount(); });
      ask([&] { net->getInstTerms(oacInstTermIterEquivNets).getCount(); });
      ask([&] { net->getPins().getCount(); });
      ask([&] { net->getShapes().getCount(); });
      ask([&] { net->getShapes(oacShapeIterNetPins).getCount(); });
      ask([&] { net->getProps().getCount(); });
      if (net->isBitNet()) {
        ask([&] { static_cast<oaBitNet *>(net)->getEquivalentNets().getCount(); });
        ask([&] { static_cast<oaBitNet *>(net)->isPreferredEquivalent(); });
      }
      if (net->getType() == oacBundleNetType) {
        ask([&] { static_cast<oaBundleNet *>(net)->getMembers().isEmpty(); });
        ask([&] {
          const auto *bundle = static_cast<oaBundleNet *>(net);
          for (oaUInt4 i = 0; i < bundle->getNumMembers(); ++i) {
            bundle->getRepeat(i);
          }
        });
      } else if (net->getType() == oacBusNetType) {
        ask([&] { static_cast<oaBusNet *>(net)->getDef()->getNumBits(); });
      } else if (net->getType() == oacBusNetBitType) {
        ask([&] { static_cast<oaBusNetBit *>(net)->getDef()->getMinIndex(); });
      }
    }
    ask([&] { oaNet::find(block_, fulldesign::native("A,2*D[1:0],E")); });
  }
  void readTerms() {
    oaIter<oaTerm> terms(block_->getTerms(oacTermIterAll));
    while (oaTerm *term = terms.getNext()) {
      readName(term);
      ask([&] { term->getNet(); });
      ask([&] {
        const oaUInt4 bits = term->getNumBits();
        for (oaUInt4 bit = 0; bit < std::min(bits, 64u); ++bit) {
          term->getBit(bit)->getNet();
        }
      });
      ask([&] { term->getPins().getCount(); });
      ask([&] { oaTerm::find(block_, term->getPosition()); });
      if (term->getType() == oacBundleTermType) {
        ask([&] { static_cast<oaBundleTerm *>(term)->getMembers().isEmpty(); });
      }
    }
  }
  template <typename Def, typename Collection> void readDefs(const Collection &collection) {
    oaIter<Def> defs(collection);
    while (Def *def = defs.getNext()) {
      ask([&] {
        oaString name;
        def->getName(oaNativeNS(), name);
        def->getBitOrder();
        def->getMaxIndex();
        def->isImplicit();
      });
    }
  }
  void readInsts() {
    oaIter<oaInst> insts(block_->getInsts(oacInstIterAll));
    while (oaInst *inst = insts.getNext()) {
      ask([&] {
        oaSimpleName name;
        inst->getName(name);
        oaInst::find(block_, name);
      });
      ask([&] {
        oaString cell;
        inst->getCellName(oaNativeNS(), cell);
      });
      ask([&] {
        oaBox box;
        inst->getBBox(box);
      });
      ask([&] { inst->getNumBits(); });
      ask([&] { inst->getPlacementStatus(); });
      ask([&] { inst->getInstTerms(oacInstTermIterAll).getCount(); });
      ask([&] { inst->usesTermPositions(); });
    }
    oaIter<oaInstHeader> headers(block_->getInstHeaders());
    while (oaInstHeader *header = headers.getNext()) {
      ask([&] { header->getInsts().getCount(); });
    }
  }
  void readInstTerms() {
    oaIter<oaInstTerm> instTerms(block_->getInstTerms(oacInstTermIterAll));
    while (oaInstTerm *instTerm = instTerms.getNext()) {
      ask([&] { instTerm->getInst(); });
      ask([&] { instTerm->getNet(true); });
      ask([&] { instTerm->isBound(); });
      ask([&] {
        if (!instTerm->usesTermPosition()) {
          oaName name;
          instTerm->getTermName(name);
          if (!instTerm->getInst()->usesTermPositions()) {
            oaInstTerm::find(instTerm->getInst(), name);
          }
        }
      });
      ask([&] {
        const oaUInt4 bits = instTerm->usesTermPosition() ? 0 : instTerm->getNumBits();
        for (oaUInt4 bit = 0; bit < std::min(bits, 64u); ++bit) {
          instTerm->getBit(bit)->isImplicit();
        }
      });
    }
  }
  void readPins() {
    oaIter<oaPin> pins(block_->getPins());
    while (oaPin *pin = pins.getNext()) {
      ask([&] { pin->getTerm(); });
      ask([&] { pin->getFigs().getCount(); });
      ask([&] {
        oaString name;
        pin->getName(name);
      });
    }
  }

  oaBlock *block_;
  unsigned raised_ = 0;
  std::string firstMessage_;
};

class DamagedConnectivity : public FullDesign {
protected:
  DamagedConnectivity() {
    good_ = file("full").string() + "-good";
    fs::copy_file(file("full"), good_);
    ::signal(SIGALRM, tellEndlessCase);
  }
  ~DamagedConnectivity() override { ::alarm(0); }

  // Opens, reads, changes and saves; adds to the counts.
  void tryOne(const std::string &told) {
    std::snprintf(currentCase, sizeof currentCase, "endless with%s\n", told.c_str());
    ::alarm(kMostSeconds);
    const Outcome outcome = checkedFile(file("full"));
    oaDesign *design = nullptr;
    try {
      design = openExisting("full", 'a');
    } catch (const oaException &) {
      EXPECT_NE(outcome.damages, 0U) << told;
      ++refused_;
    }
    if (design != nullptr) {
      if (oaBlock *block = design->getTopBlock()) {
        Walk reading(block);
        reading.readAll();
        raised_ += reading.raised() != 0 ? 1 : 0;
        if (outcome.damages == 0) {
          ++sound_;
          EXPECT_EQ(reading.raised(), 0U)
              << "oacheck finds nothing, but reading raises \"" << reading.firstMessage() << "\" with" << told;
        }
        Walk changing(block);
        changing.changeAll();
        changing.readAll();
        changing.ask([&] { design->save(); });
      }
      design->purge();
    }
    ::alarm(0);
  }

  std::string good_;
  unsigned refused_ = 0, raised_ = 0, sound_ = 0;
};

bool isOfConnectivity(const kit::Table &table) {
  return (table.id() >= kit::kNetTable && table.id() <= kit::kInstTermMemberTable) || table.id() == kit::kStringTable;
}

// A longer run by hand: DAMAGED_DESIGNS=100000, and DAMAGED_SEED=... for other numbers.
unsigned numberFrom(const char *variable, unsigned byDefault) {
  const char *text = std::getenv(variable);
  return text == nullptr ? byDefault : static_cast<unsigned>(std::strtoul(text, nullptr, 10));
}

TEST_F(DamagedConnectivity, WrongElementsRaiseAtWorst) {
  const unsigned designs = numberFrom("DAMAGED_DESIGNS", 300), seed = numberFrom("DAMAGED_SEED", 20261121);
  for (unsigned i = 0; i < designs; ++i) {
    std::mt19937 random(seed + i);
    const bool isAnyTable = i % 4 == 0;
    const std::string told =
        mutateddesign::write(good_, file("full").string(), 1 + i % 3, random,
                             [&](const kit::Table &table) { return isAnyTable || isOfConnectivity(table); });
    tryOne(" seed " + std::to_string(seed + i) + ":" + told);
  }
  std::printf("%u damaged designs: %u refused, %u raised while they were read, %u sound to oacheck and to the kit\n",
              designs, refused_, raised_, sound_);
  EXPECT_GT(raised_, designs / 10);
  EXPECT_GT(sound_, 0U);
}

TEST_F(DamagedConnectivity, TheUndamagedDesignLosesNothing) {
  oaDesign *design = openExisting("full", 'r');
  Walk reading(design->getTopBlock());
  reading.readAll();
  EXPECT_EQ(reading.raised(), 0U) << reading.firstMessage();
  design->purge();
}

} // namespace
