#include "oa/oaNameSpaces.h"

#include "lefdefgrammar.h"
#include "nametext.h"
#include "raise.h"

namespace OpenAccess_4 {

namespace {

std::string_view viewOf(const oaChar *text) { return text ? std::string_view(text) : std::string_view(); }

// Names that differ in case only are the same in an insensitive space.
template <class Name> bool areEqual(const kit::NameGrammar &grammar, const Name &n1, const Name &n2) {
  if (grammar.traits().isCaseSensitive || n1 == n2)
    return n1 == n2;
  oaString key1, key2;
  kit::keyGrammar().write(n1, key1);
  kit::keyGrammar().write(n2, key2);
  return key1.isEqual(key2, true);
}

template <class Name> void writeAt(const kit::NameGrammar &grammar, const Name &in, oaString &out, oaUInt4 &loc) {
  out.resize(loc + 1);
  grammar.write(in, out);
  loc = out.getLength();
}

void requireSpace(bool has, const kit::NameGrammar &grammar, oaUInt4 id, const char *what) {
  if (!has)
    raiseBase(id, std::string("the ") + grammar.traits().label + " name space has no " + what);
}

[[noreturn]] void raiseOtherKind(const kit::NameGrammar &grammar, oaUInt4 id, const oaChar *in, const char *expected) {
  raiseBase(id,
            "name \"" + std::string(in) + "\" in the " + grammar.traits().label + " name space: it is not " + expected);
}

} // namespace

oaNameSpace::~oaNameSpace() = default;

oaBoolean oaNameSpace::isEqual(const oaScalarName &n1, const oaScalarName &n2) const {
  return areEqual(grammar(), n1, n2);
}

oaBoolean oaNameSpace::isEqual(const oaVectorName &n1, const oaVectorName &n2) const {
  return areEqual(grammar(), n1, n2);
}

oaBoolean oaNameSpace::isEqual(const oaVectorBitName &n1, const oaVectorBitName &n2) const {
  return areEqual(grammar(), n1, n2);
}

oaBoolean oaNameSpace::isEqual(const oaBundleName &n1, const oaBundleName &n2) const {
  return areEqual(grammar(), n1, n2);
}

oaBoolean oaNameSpace::isEqual(const oaSimpleName &n1, const oaSimpleName &n2) const {
  return n1.getType() == n2.getType() && areEqual(grammar(), n1, n2);
}

oaBoolean oaNameSpace::isEqual(const oaName &n1, const oaName &n2) const {
  return n1.getType() == n2.getType() && areEqual(grammar(), n1, n2);
}

oaBoolean oaNameSpace::isEqual(const oaNameMem &n1, const oaNameMem &n2) const {
  if (grammar().traits().isCaseSensitive)
    return n1 == n2;
  return n1.hasIndex() == n2.hasIndex() && n1.getIndex() == n2.getIndex() && n1.getValue().isEqual(n2.getValue(), true);
}

oaNameType oaNameSpace::getType(const oaChar *in) const {
  oaName name;
  grammar().parseAny(viewOf(in), name);
  return name.getType();
}

void oaNameSpace::getInternalScalar(const oaChar *in, oaScalarName &out) const {
  grammar().parseScalar(viewOf(in), out);
}

void oaNameSpace::getInternalVBit(const oaChar *in, oaVectorBitName &out, oaBoolean baseOnly) const {
  requireSpace(grammar().traits().open, grammar(), oacIndexedNameInvalid, "bit names");
  if (baseOnly) {
    oaScalarName base;
    grammar().parseScalar(viewOf(in), base);
    out = oaVectorBitName(base, out.getIndex());
    return;
  }
  oaSimpleName name;
  grammar().parseSimple(viewOf(in), name);
  if (!name.getVectorBit())
    raiseOtherKind(grammar(), oacNameNotIndexed, in, "the name of a bit");
  out = *name.getVectorBit();
}

void oaNameSpace::getInternalVector(const oaChar *in, oaVectorName &out, oaBoolean baseOnly) const {
  requireSpace(grammar().traits().hasVectors, grammar(), oacVectorNameInvalid, "vector names");
  if (baseOnly) {
    oaScalarName base;
    grammar().parseScalar(viewOf(in), base);
    out = oaVectorName(base, out.getStart(), out.getStop(), out.getStep());
    return;
  }
  oaSimpleName name;
  grammar().parseSimple(viewOf(in), name);
  if (!name.getVector())
    raiseOtherKind(grammar(), oacInvalidNameSyntax, in, "a vector name");
  out = *name.getVector();
}

void oaNameSpace::getInternalBundle(const oaChar *in, oaBundleName &out) const {
  grammar().parseBundle(viewOf(in), out);
}

void oaNameSpace::getScalarName(const oaScalarName &in, oaString &out, oaUInt4 &loc) const {
  writeAt(grammar(), in, out, loc);
}

void oaNameSpace::getVectorName(const oaVectorName &in, oaString &out, oaUInt4 &loc) const {
  writeAt(grammar(), in, out, loc);
}

void oaNameSpace::getVectorBitName(const oaVectorBitName &in, oaString &out, oaUInt4 &loc) const {
  writeAt(grammar(), in, out, loc);
}

void oaNameSpace::getBundleName(const oaBundleName &in, oaString &out, oaUInt4 &loc) const {
  writeAt(grammar(), in, out, loc);
}

void oaNameSpace::getSimpleName(const oaSimpleName &in, oaString &out, oaUInt4 &loc) const {
  writeAt(grammar(), in, out, loc);
}

const kit::NameGrammar &oaNativeNS::grammar() const { return kit::nativeGrammar(); }
const kit::NameGrammar &oaUnixNS::grammar() const { return kit::unixGrammar(); }
const kit::NameGrammar &oaCdbaNS::grammar() const { return kit::cdbaGrammar(); }
const kit::NameGrammar &oaVerilogNS::grammar() const { return kit::verilogGrammar(); }
const kit::NameGrammar &oaSpiceNS::grammar() const { return kit::spiceGrammar(); }

oaLefNS::oaLefNS() : oaLefNS(false) {}

oaLefNS::oaLefNS(oaBoolean isDef)
    : grammar_(std::make_shared<kit::LefDefGrammar>(isDef, '[', ']', '/')), isDef_(isDef) {}

oaChar oaLefNS::getOpenBusChar() const { return static_cast<const kit::LefDefGrammar &>(*grammar_).open(); }

oaChar oaLefNS::getCloseBusChar() const { return static_cast<const kit::LefDefGrammar &>(*grammar_).close(); }

oaChar oaLefNS::getHierDelimiter() const { return static_cast<const kit::LefDefGrammar &>(*grammar_).hierarchy(); }

void oaLefNS::setOpenBusChar(oaChar c) { setCharacters(c, getCloseBusChar(), getHierDelimiter(), c); }

void oaLefNS::setCloseBusChar(oaChar c) { setCharacters(getOpenBusChar(), c, getHierDelimiter(), c); }

void oaLefNS::setHierDelimiter(oaChar c) { setCharacters(getOpenBusChar(), getCloseBusChar(), c, c); }

void oaLefNS::setCharacters(oaChar open, oaChar close, oaChar hierarchy, oaChar changed) {
  if (!kit::LefDefGrammar::isPossibleDelimiter(changed))
    raiseBase(oacProgrammableCharInvalid,
              std::string("the character '") + changed + "' cannot be a delimiter of names");
  if (open == close || open == hierarchy || close == hierarchy)
    raiseBase(oacProgrammableCharTaken, std::string("the character '") + changed + "' is another delimiter already");
  grammar_ = std::make_shared<kit::LefDefGrammar>(isDef_, open, close, hierarchy);
}

} // namespace OpenAccess_4
