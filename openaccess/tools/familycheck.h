#ifndef OAKIT_FAMILYCHECK_H
#define OAKIT_FAMILYCHECK_H

#include "multibit.h"
#include "tablecheck.h"

#include <vector>

namespace OpenAccess_4 {
namespace kit {
namespace check {

// The nets, terminals or instances of a design as named objects of one or several bits; see multibit.h. Reads the
// tables alone, and makes no use of what the kit derives from them.
class FamilyCheck {
public:
  FamilyCheck(const TableCheck &check, const BitsFamily &family, std::uint8_t secondScalarKind = 0);
  void run();

  // After run(). The object lives, and its bits can be told.
  bool isSound(Row object) const { return object < widths_.size() && widths_[object] != 0; }
  // 0 for what is not sound.
  std::uint32_t width(Row object) const { return object < widths_.size() ? widths_[object] : 0; }
  bool hasMembers(Row object) const;
  // The bits of a sound object in order, repeats included. False when that would go on for too long: a hostile file may
  // describe more bits than can be listed in a life.
  bool listBits(Row object, std::vector<Row> &bits) const;
  const BitsFamily &family() const { return family_; }

private:
  void noteNeeds();
  void checkDefs();
  void checkObjects();
  void checkObject(Row object);
  void checkScalar(Row object);
  bool checkBitsRow(Row object, bool needsDef);
  void checkBit(Row object, Row bits);
  void checkRange(Row object, Row bits);
  void checkBundle(Row object);
  bool checkRangeMembers(Row object);
  void checkNeeds() const;
  void checkNames();
  void checkBundleNames(std::vector<Row> &bundles) const;
  void append(Row object, std::vector<Row> &bits) const;
  BitsTable::Span span(Row object) const { return family_.ranges.members[family_.bits[object]]; }
  std::uint8_t kind(Row object) const { return family_.kind[object]; }
  bool isBundle(Row object) const { return family_.bundleKind != 0 && kind(object) == family_.bundleKind; }
  template <typename Describe> void damage(Row object, const char *column, Describe describe) const {
    check_.report().damage(family_.objects, object, column, describe);
  }

  const TableCheck &check_;
  BitsFamily family_;
  std::uint8_t secondScalarKind_; // of array instances
  std::vector<std::uint32_t> widths_;
  std::vector<bool> isNeeded_;
  std::vector<bool> isDefUsed_;
  ClaimedRows claimedRanges_;
  std::vector<std::pair<Row, Row>> scalars_; // text numbers and objects
  std::vector<std::pair<Row, Row>> bases_;   // text numbers and definitions
  mutable std::uint64_t listedBits_ = 0;
};

} // namespace check
} // namespace kit
} // namespace OpenAccess_4

#endif
