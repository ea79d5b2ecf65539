// Vias in files whose contents are not what they should be: a named exception where the wrong row is used, and no crash
// or endless walk, whatever is done with the rest.

#include "designaccess.h"
#include "viatest.h"

#include <functional>

using namespace viatest;

namespace {

using kit::DesignDatabase;

class DamagedVias : public Vias {
protected:
  // Rows: headers of "v": super 0, sub 1; of "c" 2. Vias 0 (on a net) and 1 of "v", 2 of "c" (in a pin).
  void fill() {
    design_->purge();
    design_ = open("cell", 'w');
    block_ = oaBlock::create(design_);
    oaViaParam params = columns(2);
    params.setCutPatternVal(0, 1, false);
    const auto *def = static_cast<const oaStdViaDef *>(oaViaDef::find(tech_, "v"));
    const auto *custom = static_cast<const oaCustomViaDef *>(oaViaDef::find(tech_, "c"));
    oaScalarNet *net = oaScalarNet::create(block_, scalar("n"));
    Vias::place(def, 0, 0, &params)->addToNet(net);
    Vias::place(def, 5, 5, &params);
    oaCustomVia::create(block_, custom, oaTransform())->addToPin(oaPin::create(oaScalarTerm::create(net, scalar("t"))));
  }

  // What the first exception says.
  std::string readAll() {
    try {
      readVias();
      oaIter<oaViaHeader> headers(block_->getViaHeaders());
      while (oaViaHeader *header = headers.getNext()) {
        header->getMaster();
        header->getSuperHeader();
        header->getVias().getCount();
      }
      boxOf(block_);
    } catch (const oaException &exception) {
      return std::string(exception.getMsg());
    }
    return std::string();
  }

  void changeAll() {
    (void)idRaisedBy([&] { Vias::place(static_cast<oaStdViaDef *>(oaViaDef::find(tech_, "v")), 1, 1); });
    std::vector<oaVia *> all;
    (void)idRaisedBy([&] {
      oaIter<oaVia> vias(block_->getVias());
      while (oaVia *via = vias.getNext()) {
        all.push_back(via);
      }
    });
    for (oaVia *via : all) {
      (void)idRaisedBy([&] { static_cast<oaStdVia *>(via)->setViaParams(columns(4)); });
      (void)idRaisedBy([&] { via->copy(oaTransform()); });
      (void)idRaisedBy([&] { via->destroy(); });
    }
    (void)idRaisedBy([&] { design_->save(); });
  }

private:
  void readVias() {
    oaIter<oaVia> vias(block_->getVias());
    while (oaVia *via = vias.getNext()) {
      oaString name;
      oaTransform xform;
      via->getViaDefName(name);
      via->getViaDef();
      via->getHeader()->isSuperHeader();
      via->getTransform(xform);
      via->getNet();
      via->getPin();
      boxOf(via);
      oaViaParam params;
      oaParamArray array;
      if (via->getType() == oacStdViaType) {
        static_cast<oaStdVia *>(via)->getViaParams(params);
      } else {
        static_cast<oaCustomVia *>(via)->getParams(array);
      }
    }
  }
};

} // namespace

TEST_F(DamagedVias, WrongRowsAreFoundWhenTheyAreUsed) {
  stdDef("v");
  makeLeaf("drawn", oaBox(1, 2, 3, 4));
  customDef("c", "drawn");
  const auto changeParams = [](void (*change)(kit::ViaParamValues &)) {
    return [change](DesignDatabase &design) {
      kit::ViaParamValues values = design.viaParams.params[0];
      change(values);
      design.viaParams.params.set(0, values);
    };
  };
  const struct {
    const char *name;
    std::function<void(DesignDatabase &)> damage;
    const char *found; // in the message
  } cases[] = {
      {"nothing", [](DesignDatabase &) {}, ""},
      {"kind of a via", [](DesignDatabase &d) { d.vias.kind.set(1, oacRectType); }, "table vias, row 1"},
      {"header out of range", [](DesignDatabase &d) { d.vias.header.set(1, 99); }, "table viaHeaders"},
      {"no header", [](DesignDatabase &d) { d.vias.header.set(1, kit::kNoRow); }, "table viaHeaders"},
      {"on the super header", [](DesignDatabase &d) { d.vias.header.set(1, 0); }, "table vias, row 1"},
      {"on a header of another kind", [](DesignDatabase &d) { d.vias.header.set(1, 2); }, "table vias, row 1"},
      {"orientation", [](DesignDatabase &d) { d.vias.orient.set(1, 8); }, "table vias, row 1"},
      {"net out of range", [](DesignDatabase &d) { d.vias.net.set(0, 99); }, "table nets"},
      {"pin out of range", [](DesignDatabase &d) { d.vias.pin.set(2, 99); }, "table pins"},
      {"kind of a header", [](DesignDatabase &d) { d.viaHeaders.kind.set(2, oacRectType); }, "table vias, row 2"},
      {"super header out of range", [](DesignDatabase &d) { d.viaHeaders.super.set(1, 99); }, "table viaHeaders"},
      {"header above itself", [](DesignDatabase &d) { d.viaHeaders.super.set(1, 1); }, ""},
      {"sub header without parameters", [](DesignDatabase &d) { d.viaHeaders.params.set(1, kit::kNoRow); },
       "table viaParams"},
      {"more users than vias", [](DesignDatabase &d) { d.viaHeaders.users.set(1, 99); }, ""},
      {"no users", [](DesignDatabase &d) { d.viaHeaders.users.set(1, 0); }, ""},
      {"no rows of cuts", changeParams([](kit::ViaParamValues &v) { v.cutRows = 0; }), "0 rows"},
      {"pattern out of range", changeParams([](kit::ViaParamValues &v) { v.missingBegin = 99; }), "missing cuts"},
      {"pattern without end", changeParams([](kit::ViaParamValues &v) { v.missingCount = 0xffffffffU; }),
       "missing cuts"},
      {"cut beyond the columns", changeParams([](kit::ViaParamValues &v) { v.cutColumns = 1; }), "cut column 1 of 1"},
      {"name out of range", [](DesignDatabase &d) { d.viaHeaders.name.set(1, 9999); }, "text 9999"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    fill();
    c.damage(kit::designOf(design_));
    reread();
    const std::string message = readAll();
    EXPECT_EQ(message.empty(), *c.found == '\0') << message;
    EXPECT_NE(message.find(c.found), std::string::npos) << message;
    changeAll();
  }
}
