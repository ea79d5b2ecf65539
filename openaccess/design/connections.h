#ifndef OAKIT_CONNECTIONS_H
#define OAKIT_CONNECTIONS_H

// The rows behind oaInstTerm. A connection by the name of several bits, or of a vector instance, is wide: it has one
// member for each bit, a connection of its own; members that nobody has created are made with it and called implicit.
// Invariants:
//  (1) a member is a single bit: it has no members itself;
//  (2) a bit of an instance has one row, however many wide connections share it;
//  (3) the net of an implicit bit is what the wide connections that have a net say; they say the same net, or
//      equivalent ones;
//  (4) an implicit connection is a member of at least one wide connection, and goes when that is no longer so.
// Connections by position have no members: their terminal's bits have no positions of their own.

#include "connectivityaccess.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace OpenAccess_4 {
namespace kit {

// What a connection is found by on its instance.
struct ConnectionKey {
  oaNameTypeEnum kind; // of the name; oacEmptyNameType for a position
  std::string text;    // as InstTermTable::termName has it
  std::uint32_t position = 0xffffffffu;
};
ConnectionKey keyOfTerm(const oaName &name);
ConnectionKey keyOfTerm(std::uint32_t position);

class Connections {
public:
  explicit Connections(DesignDatabase &design) : design_(design) {}

  // Explicit or implicit, or kNoRow.
  Row find(Row inst, const ConnectionKey &key) const;
  bool usesPositions(Row inst) const;
  bool isByPosition(Row row) const { return design_.instTerms.termPosition[row] != 0xffffffffu; }
  bool isImplicit(Row row) const { return (design_.instTerms.flags[row] & kInstTermImplicit) != 0; }
  // The name of the terminal; not for connections by position.
  void getName(Row row, oaName &name) const;
  std::uint32_t memberCount(Row row) const { return span(row).count; }
  Row member(Row row, std::uint32_t index) const;
  // The wide connections that need this one, each once.
  RowSpan owners(Row row) const;
  bool hasOneBit(Row row) const;

  // A new explicit connection, or the implicit one of that name, which becomes explicit. The caller has seen to it that
  // no explicit one has the name. `net` may be kNoRow. Raises oacNetInstTermWidthMismatchForInstTerm,
  // oacInstTermBitAlreadyExists, oacInstTermNetMismatchInRepeatedMembers, oacInvalidTermName for too many bits; nothing
  // has changed then.
  Row make(Row inst, Row net, const oaName &name);
  // `bits` is the width of the terminal, 0 when it is not known.
  Row make(Row inst, Row net, std::uint32_t position, std::uint32_t bits);
  // An explicit connection leaves its net and goes to this one, which may be kNoRow; its bits go along. Raises like
  // make().
  void moveToNet(Row row, Row net, std::uint32_t bits);

  // Destroys an explicit connection, or makes it implicit again when a wide one needs it.
  void drop(Row row);
  // Destroys any connection; those that need it go first.
  void destroyWithOwners(Row row);
  // See instTermIsGoing() and instTermLosesNet().
  void leave(Row row);
  void loseNet(Row row);

private:
  // The bits of a connection that exists or is about to: in order, repeats included.
  struct Plan {
    std::vector<Row> rows;            // kNoRow: still to be made
    std::vector<std::uint32_t> first; // for each place the one where the same bit occurs first
    std::vector<Row> nets;            // empty without a net
  };
  using Nets = std::unordered_map<Row, Row>;

  // Owner number in the index of names.
  static std::uint64_t slotOf(Row inst, const ConnectionKey &key);
  BitsTable::Span span(Row row) const;
  OwnerIndex &ownersOf() const;
  bool matches(Row row, const ConnectionKey &key) const;
  ConnectionKey keyOf(Row row) const;
  Plan planOf(Row row, Row net) const;
  // What is being connected, for messages.
  struct Attempt {
    Row inst;
    const ConnectionKey &key;
  };
  std::string describe(const Attempt &attempt) const;
  void checkWidth(const Attempt &attempt, Row net, std::uint64_t bits) const;
  void checkBits(const Attempt &attempt, Row self, const Plan &plan) const;
  Plan planOf(Row inst, Row net, const oaName &name) const;
  Row makeWide(const Attempt &attempt, Row net, const oaName &name);
  // What wide connections other than `except` say of the nets of these bits; those without a word are left out.
  Nets netsByOwners(const std::vector<Row> &bits, Row except) const;
  bool agree(Row net, Row other) const;
  Row addRow(Row inst, Row net, const ConnectionKey &key, bool isImplicit);
  void forgetRuns();
  void noteJoined(Row net, Row row);
  void noteLeft(Row net, Row row);
  void setNet(Row row, Row net);
  void setImplicit(Row row, bool isImplicit);
  void setMembers(Row row, const std::vector<Row> &members);
  // Implicit bits get the net that their owners say now.
  void refresh(const std::vector<Row> &bits);
  std::vector<Row> differentMembers(Row row) const;

  DesignDatabase &design_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
