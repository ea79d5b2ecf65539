#ifndef CURRENTLAYOUT_H
#define CURRENTLAYOUT_H

#include <QString>

#include "oapluginmain.h"

// The design that the plug-in object holds between a begin operation and saveClose().
namespace currentlayout {

// A reader shows its design as the current one while it walks. That design is not open for writing, whoever else may
// have it open, and its block is forgotten at the end, unless an operation called in a slot has put another in its
// place.
class BeingRead {
public:
  explicit BeingRead(oaPlugInMain &host) : host_(host), outer_(block_) {}
  ~BeingRead();
  BeingRead(const BeingRead &) = delete;
  BeingRead &operator=(const BeingRead &) = delete;

  // `block` may be null.
  void show(oa::oaDesign *design, oa::oaBlock *block);
  static bool isShown(const oa::oaBlock *block) { return block && block == block_; }

private:
  oaPlugInMain &host_;
  const oa::oaBlock *own_ = nullptr;
  const oa::oaBlock *outer_; // of the reader in one of whose slots this one was called
  static const oa::oaBlock *block_;
};

// Whether the plug-in itself holds the current design open for writing.
bool isBeingWritten(const oaPlugInMain &host);

// Whether there is a live design to write into; tells the host when there is not.
bool isOpen(oaPlugInMain &host, const char *label);

// Makes an open design the current one and gives it a top block if it has none. The tables of nets and pins are
// emptied.
void adopt(oaPlugInMain &host, oa::oaDesign *design);

// Closes a design that an earlier begin operation left open. What was not saved is dropped, and the host is told.
void abandon(oaPlugInMain &host);

// Forgets the current design, whatever became of it.
void clear(oaPlugInMain &host);

// Enters the block's nets and the pins of its terminals into the tables by name.
void rememberConnectivity(oaPlugInMain &host);

// "lib/cell/view" of the current design; empty when there is none.
QString path(const oaPlugInMain &host);

} // namespace currentlayout

#endif
