#ifndef DUMPENTRIES_H
#define DUMPENTRIES_H

#include <array>
#include <string>
#include <vector>

#include "dumptext.h"

// The entries of one section of a dump, put in order: each is the lines of one object and of what belongs to it.
// Entries are ordered by their keys and, where those are equal, by the bytes of their text, so that the order of their
// creation shows nowhere. Entries that are equal in everything read the same, whichever comes first.
class DumpEntries {
public:
  // Compared from the left. For objects that have a name the text alone orders.
  struct Key {
    oa::oaUInt4 layer = 0;
    oa::oaUInt4 purpose = 0;
    oa::oaUInt4 kind = 0;
    // The numbers that say where the object lies.
    std::array<oa::oaInt4, 4> place{{0, 0, 0, 0}};
  };

  // Where the lines of the next entry are written to; add() then closes it.
  DumpText &text() { return text_; }
  void add(const Key &key);
  void add() { add(Key()); }

  bool isEmpty() const { return entries_.empty(); }
  // All entries in their order. Afterwards there are none.
  void moveTo(DumpText &out);

private:
  struct Entry {
    Key key;
    std::size_t begin;
    std::size_t end;
  };
  bool isBefore(const Entry &a, const Entry &b) const;

  DumpText text_; // of all entries
  std::vector<Entry> entries_;
};

#endif
