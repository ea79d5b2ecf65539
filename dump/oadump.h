#ifndef OADUMP_H
#define OADUMP_H

#include <string>
#include <unordered_map>
#include <vector>

#include <QString>

#include <oa/oaDesignDB.h>

#include "dumpentries.h"
#include "dumptext.h"

// The readable text of one open design: every object with its attributes, properties and connectivity. The form is
// described in docs/dump.md. Designs with equal contents have equal texts, whatever order their objects were made in;
// no time, no object address and nothing of the session shows. Time and memory grow with the size of the text, times
// the logarithm for putting entries in order.
//
// An object of this class serves one dump.
class oaDump {
public:
  explicit oaDump(oa::oaDesign *design);

  // Raises what reading the design raises. Throws the character 'n' when properties are nested deeper than 100 levels,
  // 'l' when the text would be longer than a QString can be.
  QString text();

private:
  // A text display is written with the object that it shows.
  typedef std::vector<oa::oaTextDisplay *> Displays;

  void writeHeader();
  void writeParametricMaster();
  // The evaluator of a super master, and what it keeps there.
  void writeDefinition();
  void writeSection(const char *title, DumpEntries &entries);
  // A library's name, "." for the design's own.
  std::string libraryText(const oa::oaString &lib) const;
  // "library/cell/view" of anything that has the three.
  template <typename Placed> std::string cellViewText(const Placed *placed) const;

  // Properties and displays (propertydump.cpp).

  // Whether anything explicit hangs on an object that is implied by others.
  bool hasFacts(const oa::oaObject *object) const;
  // Properties of the object, and the displays that show it.
  void writeExtras(DumpText &text, const oa::oaObject *object, int level);
  void writeProperty(DumpText &text, const oa::oaProp *prop, int level);
  void writeDisplays(DumpText &text, const oa::oaObject *object, int level);
  void writeHeaders();
  void writeViaHeader(DumpEntries &entries, const oa::oaViaHeader *header);

  // Shapes (shapedump.cpp).

  void findDisplays();
  void writeShapes();
  void writeRemainingDisplays();
  void writeShape(DumpEntries &entries, oa::oaShape *shape, const oa::oaObject *shown, int level);
  // The net or pin that the figure belongs to.
  void writeMembership(DumpText &text, const oa::oaPinFig *figure);
  const std::string &netText(const oa::oaNet *net);
  const std::string &pinText(const oa::oaPin *pin);

  // Nets and terminals (netdump.cpp).

  void writeNets();
  void writeEquivalences();
  void writeTerms();
  void writePins(DumpText &text, const oa::oaTerm *term, int level);
  void writeBusDefinitions();
  template <typename Definition> void addDefinition(DumpEntries &entries, const char *what, const Definition *def);

  // Instances and vias (placementdump.cpp).

  void writeInsts();
  // Without its connections.
  void writeInst(DumpText &text, oa::oaInst *inst);
  void writeInstTerms(DumpText &text, const oa::oaInst *inst);
  void writeVias();
  void writeVia(DumpText &text, oa::oaVia *via);

  oa::oaDesign *design_;
  oa::oaBlock *block_;
  oa::oaString lib_;
  DumpText out_;
  std::unordered_map<const oa::oaObject *, Displays> displays_;
  std::unordered_map<const oa::oaObject *, std::string> netTexts_;
  std::unordered_map<const oa::oaObject *, std::string> pinTexts_;
};

// One line for each parameter, in the order of the array or of their names.
void writeParams(DumpText &text, const oa::oaParamArray &params, int level);
void writeParamsByName(DumpText &text, const oa::oaParamArray &params, int level);
void writeViaParams(DumpText &text, const oa::oaViaParam &params, int level);

template <typename Placed> std::string oaDump::cellViewText(const Placed *placed) const {
  const oa::oaNativeNS ns;
  oa::oaString name;
  placed->getLibName(ns, name);
  std::string text = libraryText(name) + '/';
  placed->getCellName(ns, name);
  appendQuoted(text, name);
  text += '/';
  placed->getViewName(ns, name);
  appendQuoted(text, name);
  return text;
}

#endif
