// The name spaces of the kit.
#ifndef OANAMESPACES_H
#define OANAMESPACES_H

#include <memory>

#include "oa/oaNameSpace.h"

namespace OpenAccess_4 {

/// The space that names are kept in: bit a[3], range a[0:7] or a[0:6:2], bundle a,2*b,c[5:0], hierarchy a/b. Case
/// counts. In a member, [ ] / : * , and # are written as # and two hexadecimal digits. A text that is given for a
/// scalar name may hold all of them but / as they are, and keeps them: the scalar A[3] is never the bit 3 of A, though
/// both are written alike.
class oaNativeNS : public oaNameSpace {
public:
  oaNativeNS() {}
  const kit::NameGrammar &grammar() const override;
};

/// Directories and lib.defs. Scalar names only; letters, digits, _ and @ stand for themselves, every other character is
/// written as # and two lower-case hexadecimal digits.
class oaUnixNS : public oaNameSpace {
public:
  oaUnixNS() {}
  const kit::NameGrammar &grammar() const override;
};

/// Bit a<3>, range a<0:7> or a<0:6:2>, list a<2,1,0>, bundle a,<*2>b,<*2>(c,d), hierarchy a`b. Each bit n times
/// a<0:2*n>, the range n times a<(0:2)*n>. Blanks around names are passed over; , \ / : < > ` and blanks within are
/// written as # and two digits.
class oaCdbaNS : public oaNameSpace {
public:
  oaCdbaNS() {}
  const kit::NameGrammar &grammar() const override;
};

/// Bit a[3], range a[7:0], hierarchy a.b; neither steps nor bundles. Names that are no plain identifiers, keywords
/// among them, are written as \name followed by a blank.
class oaVerilogNS : public oaNameSpace {
public:
  oaVerilogNS() {}
  const kit::NameGrammar &grammar() const override;
};

/// Case does not count; %X stands for a capital X that does. Bit a[3], hierarchy a.b; neither ranges nor bundles:
/// a[4:3] is a scalar.
class oaSpiceNS : public oaNameSpace {
public:
  oaSpiceNS() {}
  const kit::NameGrammar &grammar() const override;
};

/// Scalar names only; a backslash escapes one character.
class oaLefNS : public oaNameSpace {
public:
  /// Bus characters [ and ], hierarchy delimiter /.
  oaLefNS();

  /// Letters, digits, blanks and characters with a meaning of their own raise oacProgrammableCharInvalid, a character
  /// that has another of the three roles oacProgrammableCharTaken.
  void setOpenBusChar(oaChar c);
  void setCloseBusChar(oaChar c);
  void setHierDelimiter(oaChar c);
  oaChar getHierDelimiter() const;
  oaChar getOpenBusChar() const;
  oaChar getCloseBusChar() const;

  const kit::NameGrammar &grammar() const override { return *grammar_; }

protected:
  explicit oaLefNS(oaBoolean isDef);

private:
  void setCharacters(oaChar open, oaChar close, oaChar hierarchy, oaChar changed);

  std::shared_ptr<const kit::NameGrammar> grammar_;
  oaBoolean isDef_;
};

/// As LEF, with bits name[3] and hierarchy a/b; name[1][2] is a bit of the name that is written name\[1\].
class oaDefNS : public oaLefNS {
public:
  oaDefNS() : oaLefNS(true) {}
};

} // namespace OpenAccess_4

#endif
