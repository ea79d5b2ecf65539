// Names of all kinds. Text goes through the grammar of the name space.
#include "oa/oaName.h"

#include <algorithm>
#include <utility>

#include "namegrammar.h"
#include "nametext.h"
#include "raise.h"

namespace OpenAccess_4 {

namespace {

std::string_view viewOf(const oaChar *text) { return text ? std::string_view(text) : std::string_view(); }

template <class Name> void writeTo(const kit::NameGrammar &grammar, const Name &name, oaString &out) {
  out = "";
  grammar.write(name, out);
}

template <class Name> void writeBaseTo(const kit::NameGrammar &grammar, const Name &name, oaString &out) {
  out = "";
  grammar.writeBase(name, out);
}

// A name without its index or range.
oaScalarName baseOf(const oaNameBase &name) {
  oaScalarName base;
  for (oaUInt4 i = 0; i < name.getNumMembers(); ++i)
    base.append(name[i]);
  return base;
}

void requireStep(oaUInt4 step) {
  if (step == 0)
    raiseBase(oacInvalidVectorValue, "the step of a vector name cannot be 0");
}

[[noreturn]] void raiseNoSuchBit(oaUInt4 bit, oaUInt4 bits, const oaName &name) {
  raiseBase(oacBitNotInRangeForName, "name " + kit::textOf(name) + " has " + std::to_string(bits) + " bits, but bit " +
                                         std::to_string(bit) + " was asked for");
}

[[noreturn]] void raiseEmpty() { raiseBase(oacInvalidName, "hierarchy cannot be added to an empty name"); }

// The bit of a member, counted within it.
void writeBit(const oaSimpleName &name, const oaNameSpace &nSpace, oaUInt4 bit, oaString &out) {
  if (const oaVectorName *const vector = name.getVector())
    vector->getBitName(nSpace, bit, out);
  else
    name.get(nSpace, out);
}

} // namespace

oaBoolean oaNameMem::operator==(const oaNameMem &other) const {
  return caseSensitive_ == other.caseSensitive_ && hasIndex_ == other.hasIndex_ && index_ == other.index_ &&
         value_.isEqual(other.value_, !caseSensitive_);
}

void oaNameBase::clear() {
  path_.clear();
  last_ = oaNameMem();
}

void oaNameBase::append(const oaNameMem &member) {
  oaNameMem added(member); // it may be part of this name
  if (!isEmpty())
    path_.push_back(last_);
  last_ = std::move(added);
}

void oaNameBase::insertPath(const oaNameBase &path, const oaNameMem &lastOfPath) {
  if (isEmpty())
    raiseEmpty();
  std::vector<oaNameMem> longer(path.path_);
  if (!path.isEmpty())
    longer.push_back(lastOfPath);
  longer.insert(longer.end(), path_.begin(), path_.end());
  path_ = std::move(longer);
}

void oaNameBase::addHierPath(const oaScalarName &path) { insertPath(path, path.last_); }

void oaNameBase::addHierPath(const oaVectorBitName &path) {
  const oaNameMem &last = static_cast<const oaNameBase &>(path).last_;
  insertPath(path, oaNameMem(last.getValue(), last.isCaseSensitive(), path.getIndex()));
}

void oaNameBase::addHierMem(const oaNameSpace &nSpace, const oaChar *in, oaUInt4 len) {
  addHierMem(nSpace.grammar().parseLevel(viewOf(in).substr(0, len)));
}

void oaNameBase::addHierMem(const oaNameMem &in) {
  if (isEmpty())
    raiseEmpty();
  path_.push_back(oaNameMem(in));
}

void oaScalarName::init(const oaNameSpace &nSpace, const oaChar *in) { nSpace.getInternalScalar(in, *this); }

void oaScalarName::get(const oaNameSpace &nSpace, oaString &out) const { writeTo(nSpace.grammar(), *this, out); }

void oaScalarName::get(oaString &out) const { writeTo(kit::nativeGrammar(), *this, out); }

oaVectorName::oaVectorName(const oaNameSpace &nSpace, const oaChar *in, oaUInt4 start, oaUInt4 stop, oaUInt4 step)
    : oaVectorName(oaScalarName(nSpace, in), start, stop, step) {}

oaVectorName::oaVectorName(const oaScalarName &in, oaUInt4 start, oaUInt4 stop, oaUInt4 step)
    : oaNameBase(in), start_(start), stop_(stop), step_(step) {
  requireStep(step);
}

void oaVectorName::init(const oaNameSpace &nSpace, const oaChar *in, oaBoolean baseOnly) {
  nSpace.getInternalVector(in, *this, baseOnly);
}

void oaVectorName::get(const oaNameSpace &nSpace, oaString &out) const { writeTo(nSpace.grammar(), *this, out); }

void oaVectorName::get(oaString &out) const { writeTo(kit::nativeGrammar(), *this, out); }

void oaVectorName::getBaseName(const oaNameSpace &nSpace, oaString &out) const { baseOf(*this).get(nSpace, out); }

void oaVectorName::getBaseName(oaString &out) const { baseOf(*this).get(out); }

void oaVectorName::getBaseName(oaScalarName &out) const { out = baseOf(*this); }

void oaVectorName::getBitName(const oaNameSpace &nSpace, oaUInt4 bit, oaString &out) const {
  oaVectorBitName(baseOf(*this), getBitIndex(bit)).get(nSpace, out);
}

oaUInt4 oaVectorName::getBitIndex(oaUInt4 bit) const {
  // A range of 2^32 bits has more of them than getNumBits() can say.
  const oaUInt4 length = start_ < stop_ ? stop_ - start_ : start_ - stop_;
  if (isEmpty() || bit > length / step_)
    raiseNoSuchBit(bit, getNumBits(), *this);
  return start_ < stop_ ? start_ + bit * step_ : start_ - bit * step_;
}

oaUInt4 oaVectorName::getNumBits() const {
  const oaUInt4 length = start_ < stop_ ? stop_ - start_ : start_ - stop_;
  return isEmpty() ? 0 : static_cast<oaUInt4>(std::min<oaUInt8>(oaUInt8(length / step_) + 1, UINT_MAX));
}

void oaVectorName::setStep(oaUInt4 val) {
  requireStep(val);
  step_ = val;
}

oaVectorBitName::oaVectorBitName(const oaNameSpace &nSpace, const oaChar *in, oaUInt4 index)
    : oaVectorBitName(oaScalarName(nSpace, in), index) {}

void oaVectorBitName::init(const oaNameSpace &nSpace, const oaChar *in, oaBoolean baseOnly) {
  nSpace.getInternalVBit(in, *this, baseOnly);
}

void oaVectorBitName::get(const oaNameSpace &nSpace, oaString &out) const { writeTo(nSpace.grammar(), *this, out); }

void oaVectorBitName::get(oaString &out) const { writeTo(kit::nativeGrammar(), *this, out); }

void oaVectorBitName::getBaseName(const oaNameSpace &nSpace, oaString &out) const { baseOf(*this).get(nSpace, out); }

void oaVectorBitName::getBaseName(oaString &out) const { baseOf(*this).get(out); }

void oaVectorBitName::getBaseName(oaScalarName &out) const { out = baseOf(*this); }

void oaSimpleName::init(const oaNameSpace &nSpace, const oaChar *in) {
  oaSimpleName parsed;
  nSpace.grammar().parseSimple(viewOf(in), parsed);
  *this = parsed;
}

void oaSimpleName::get(const oaNameSpace &nSpace, oaString &out) const { writeTo(nSpace.grammar(), *this, out); }

void oaSimpleName::get(oaString &out) const { writeTo(kit::nativeGrammar(), *this, out); }

void oaSimpleName::getBitName(const oaNameSpace &nSpace, oaUInt4 bit, oaString &out) const {
  if (bit >= getNumBits())
    raiseNoSuchBit(bit, getNumBits(), *this);
  writeBit(*this, nSpace, bit, out);
}

oaNameBase &oaSimpleName::base() {
  if (oaScalarName *const scalar = getScalar())
    return *scalar;
  if (oaVectorName *const vector = getVector())
    return *vector;
  if (oaVectorBitName *const bit = getVectorBit())
    return *bit;
  raiseEmpty();
}

oaUInt4 oaSimpleName::getNumMembers() const {
  return name_.index() == oacEmptyNameType ? 0 : const_cast<oaSimpleName *>(this)->base().getNumMembers();
}

oaUInt4 oaSimpleName::getNumBits() const {
  if (const oaVectorName *const vector = getVector())
    return vector->getNumBits();
  return getNumMembers() ? 1 : 0;
}

const oaNameMem &oaSimpleName::operator[](oaUInt4 i) const { return const_cast<oaSimpleName *>(this)->base()[i]; }

void oaSimpleName::addHierPath(const oaScalarName &path) { base().addHierPath(path); }

void oaSimpleName::addHierPath(const oaVectorBitName &path) { base().addHierPath(path); }

void oaSimpleName::addHierMem(const oaNameSpace &nSpace, const oaChar *in, oaUInt4 len) {
  base().addHierMem(nSpace, in, len);
}

void oaSimpleName::addHierMem(const oaNameMem &in) { base().addHierMem(in); }

void oaBundleName::init(const oaNameSpace &nSpace, const oaChar *in) { nSpace.getInternalBundle(in, *this); }

void oaBundleName::get(const oaNameSpace &nSpace, oaString &out) const { writeTo(nSpace.grammar(), *this, out); }

void oaBundleName::get(oaString &out) const { writeTo(kit::nativeGrammar(), *this, out); }

void oaBundleName::getBitName(const oaNameSpace &nSpace, oaUInt4 bit, oaString &out) const {
  oaUInt8 rest = bit;
  for (const oaSimpleName &member : members_) {
    const oaUInt4 bits = member.getNumBits();
    const oaUInt8 all = oaUInt8(bits) * member.getRepeat();
    if (rest < all) {
      writeBit(member, nSpace, static_cast<oaUInt4>(rest % bits), out);
      return;
    }
    rest -= all;
  }
  raiseNoSuchBit(bit, getNumBits(), *this);
}

void oaBundleName::append(const oaSimpleName &name, oaUInt4 repeat) {
  if (repeat == 0)
    raiseBase(oacInvalidRepeat, "the repeat count of a bundle's member cannot be 0");
  oaSimpleName member(name); // it may be a member of this bundle
  member.repeat_ = repeat;
  members_.push_back(std::move(member));
}

void oaBundleName::addHierPath(const oaScalarName &path) {
  if (isEmpty())
    raiseEmpty();
  for (oaSimpleName &member : members_)
    member.addHierPath(path);
}

void oaBundleName::addHierPath(const oaVectorBitName &path) {
  if (isEmpty())
    raiseEmpty();
  for (oaSimpleName &member : members_)
    member.addHierPath(path);
}

void oaBundleName::addHierMem(const oaNameSpace &nSpace, const oaChar *in, oaUInt4 len) {
  addHierMem(nSpace.grammar().parseLevel(viewOf(in).substr(0, len)));
}

void oaBundleName::addHierMem(const oaNameMem &in) {
  if (isEmpty())
    raiseEmpty();
  // It may be part of this bundle. NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
  const oaNameMem level(in);
  for (oaSimpleName &member : members_)
    member.addHierMem(level);
}

oaUInt4 oaBundleName::getNumBits() const {
  oaUInt8 bits = 0;
  for (const oaSimpleName &member : members_)
    bits = std::min<oaUInt8>(bits + oaUInt8(member.getNumBits()) * member.getRepeat(), UINT_MAX);
  return static_cast<oaUInt4>(bits);
}

void oaBundleName::resize(oaUInt4 newSize) {
  if (newSize < members_.size())
    members_.resize(newSize);
  members_.reserve(newSize);
}

oaBoolean oaBundleName::operator==(const oaBundleName &name) const {
  return std::equal(
      members_.begin(), members_.end(), name.members_.begin(), name.members_.end(),
      [](const oaSimpleName &a, const oaSimpleName &b) { return a == b && a.getRepeat() == b.getRepeat(); });
}

oaName &oaName::operator=(const oaSimpleName &name) {
  if (const oaScalarName *const scalar = name.getScalar())
    name_ = *scalar;
  else if (const oaVectorName *const vector = name.getVector())
    name_ = *vector;
  else if (const oaVectorBitName *const bit = name.getVectorBit())
    name_ = *bit;
  else
    name_ = std::monostate();
  return *this;
}

void oaName::init(const oaNameSpace &nSpace, const oaChar *in) {
  oaName parsed;
  nSpace.grammar().parseAny(viewOf(in), parsed);
  *this = std::move(parsed);
}

void oaName::get(const oaNameSpace &nSpace, oaString &out) const { writeTo(nSpace.grammar(), *this, out); }

void oaName::get(oaString &out) const { writeTo(kit::nativeGrammar(), *this, out); }

void oaName::getBitName(const oaNameSpace &nSpace, oaUInt4 bit, oaString &out) const {
  if (const oaBundleName *const bundle = getBundle()) {
    bundle->getBitName(nSpace, bit, out);
  } else if (const oaVectorName *const vector = getVector()) {
    vector->getBitName(nSpace, bit, out);
  } else {
    if (bit >= getNumBits())
      raiseNoSuchBit(bit, getNumBits(), *this);
    get(nSpace, out);
  }
}

oaUInt4 oaName::getNumBits() const {
  if (const oaScalarName *const scalar = getScalar())
    return scalar->getNumBits();
  if (const oaVectorName *const vector = getVector())
    return vector->getNumBits();
  if (const oaVectorBitName *const bit = getVectorBit())
    return bit->getNumBits();
  return getBundle() ? getBundle()->getNumBits() : 0;
}

// Carries out `change` on the name that is inside; raises for the empty name.
template <class Change> static void changeHierarchy(const oaName &name, Change change) {
  if (oaScalarName *const scalar = name.getScalar())
    change(*scalar);
  else if (oaVectorName *const vector = name.getVector())
    change(*vector);
  else if (oaVectorBitName *const bit = name.getVectorBit())
    change(*bit);
  else if (oaBundleName *const bundle = name.getBundle())
    change(*bundle);
  else
    raiseEmpty();
}

void oaName::addHierPath(const oaScalarName &path) {
  changeHierarchy(*this, [&](auto &name) { name.addHierPath(path); });
}

void oaName::addHierPath(const oaVectorBitName &path) {
  changeHierarchy(*this, [&](auto &name) { name.addHierPath(path); });
}

void oaName::addHierMem(const oaNameSpace &nSpace, const oaChar *in, oaUInt4 len) {
  changeHierarchy(*this, [&](auto &name) { name.addHierMem(nSpace, in, len); });
}

void oaName::addHierMem(const oaNameMem &in) {
  changeHierarchy(*this, [&](auto &name) { name.addHierMem(in); });
}

} // namespace OpenAccess_4
