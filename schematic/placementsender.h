#ifndef PLACEMENTSENDER_H
#define PLACEMENTSENDER_H

#include <unordered_map>
#include <unordered_set>

#include <QString>

#include "buffers.h"
#include "directsignal.h"
#include "oapluginmain.h"
#include "repeatedtexts.h"
#include "walkfaults.h"

// Sends the instances of a schematic as placements, each followed by its data and connections. What all instances of a
// symbol have in common is made once for the header that they share.
class PlacementSender {
public:
  PlacementSender(oaPlugInMain &host, WalkFaults &faults);

  void send(oa::oaBlock *block);

private:
  // A symbol as the host names it.
  struct Symbol {
    QString device;
    QString library;
  };

  void findPlacementsOnBuses(oa::oaBlock *block);
  void addPlacementsOn(const oa::oaNet *net);
  void sendInst(oa::oaBlock *block, oa::oaInst *inst);
  const Symbol &symbolOf(oa::oaInst *inst);
  void sendProperties(oa::oaInst *inst);
  // The host's name of the placement into `name_`. Gives the definition of an iterated instance, NULL when it has to be
  // looked for under that name.
  const oa::oaVectorInstDef *readName(oa::oaInst *inst);
  void sendIteration(const oa::oaVectorInstDef *def);
  // Connections of several bits only, unless the instance is iterated.
  void sendConnections(oa::oaInst *inst, bool isIterated);
  void sendConnection(const oa::oaInstTerm *instTerm, bool isIterated);
  // Fills `termText_`; false when the terminal's name cannot be had.
  bool readTermName(const oa::oaInstTerm *instTerm);
  // The net's name in the host's syntax, empty when it has none.
  const QString &netNameOf(const oa::oaNet *net);
  static void printMaster(const oa::oaInst *inst);

  oaPlugInMain &host_;
  WalkFaults &faults_;
  const DirectSignal<QString, QString, QPoint, QString> addPlacement_;
  const DirectSignal<QString, QString> setDataString_;
  const DirectSignal<QString, QString> setVectorPlacementConnection_;
  const bool debug_;
  const QString deviceNameKey_;
  QString trans_[8];
  std::unordered_map<const oa::oaObject *, Symbol> symbolByHeader_;
  // Buses have many connections, and a name of several bits takes a while to put together.
  std::unordered_map<const oa::oaNet *, QString> nameByNet_;
  // Instances with connections of several bits, but for vector instances. Most schematics have few, so that there
  // is no need to look at the connections of every instance, unless one of the buses is damaged.
  std::unordered_set<const oa::oaInst *> placementsOnBuses_;
  bool knowsPlacementsOnBuses_ = false;

  oa::oaString name_;
  oa::oaString value_;
  oa::oaString termText_;
  oa::oaString netText_;
  RepeatedTexts propertyNames_;
  TextBuffer qtName_;
  TextBuffer qtValue_;
};

#endif
