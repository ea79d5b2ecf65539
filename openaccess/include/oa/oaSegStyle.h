#ifndef OASEGSTYLE_H
#define OASEGSTYLE_H

#include "oa/oaDesignEnums.h"

namespace OpenAccess_4 {

// Width and ends of a path segment. Lengths are database units for orthogonal segments and diagonal units (half the
// square root of two of a database unit) for diagonal ones. An end extends by 0 (truncate), half the width (extend),
// its own extension (variable); a chamfered end extends by half the width and has its corners cut; a custom end is
// given by four numbers.
class oaSegStyle {
public:
  // Width 0, both ends truncated.
  oaSegStyle() = default;
  // Raises oacInvalidSegStyleBeginExtValue, oacInvalidSegStyleEndExtValue for an extension with another style than
  // variable. Setters and the constructors for custom ends raise the same, the latter for four numbers with another
  // style than custom.
  oaSegStyle(oaDist width, oaEndStyle beginStyleIn, oaEndStyle endStyleIn, oaDist beginExtIn = 0, oaDist endExtIn = 0);
  // With a custom end, whose right half width gives the width: twice as much.
  oaSegStyle(oaEndStyle beginStyleIn, oaEndStyle endStyleIn, oaDist endExtIn, oaDist endLeftDiagExtIn,
             oaDist endRightDiagExtIn, oaDist endRightHalfWidthIn, oaDist beginExtIn = 0);
  oaSegStyle(oaEndStyle beginStyleIn, oaDist beginExtIn, oaDist beginLeftDiagExtIn, oaDist beginRightDiagExtIn,
             oaDist beginRightHalfWidthIn, oaEndStyle endStyleIn, oaDist endExtIn = 0);
  oaSegStyle(oaEndStyle beginStyleIn, oaDist beginExtIn, oaDist beginLeftDiagExtIn, oaDist beginRightDiagExtIn,
             oaDist beginRightHalfWidthIn, oaEndStyle endStyleIn, oaDist endExtIn, oaDist endLeftDiagExtIn,
             oaDist endRightDiagExtIn, oaDist endRightHalfWidthIn);

  oaDist getWidth() const { return width_; }
  oaEndStyle getBeginStyle() const { return begin_.style; }
  // The effective extension: half the width for extended and chamfered ends.
  oaDist getBeginExt() const;
  void getBeginExt(oaDist &ext, oaDist &leftDiagExt, oaDist &rightDiagExt, oaDist &rightHalfWidth) const;
  oaEndStyle getEndStyle() const { return end_.style; }
  oaDist getEndExt() const;
  void getEndExt(oaDist &ext, oaDist &leftDiagExt, oaDist &rightDiagExt, oaDist &rightHalfWidth) const;
  void setWidth(oaDist widthIn);
  void setBeginStyle(oaEndStyle style, oaDist ext = 0);
  void setBeginStyle(oaEndStyle style, oaDist ext, oaDist leftDiagExt, oaDist rightDiagExt, oaDist rightHalfWidth);
  void setEndStyle(oaEndStyle style, oaDist ext = 0);
  void setEndStyle(oaEndStyle style, oaDist ext, oaDist leftDiagExt, oaDist rightDiagExt, oaDist rightHalfWidth);
  oaBoolean operator==(const oaSegStyle &style) const;
  oaBoolean operator!=(const oaSegStyle &style) const { return !(*this == style); }

private:
  struct End {
    oaEndStyle style = oacTruncateEndStyle;
    oaDist ext = 0; // given extension; 0 unless variable or custom
    oaDist leftDiagExt = 0;
    oaDist rightDiagExt = 0;
    oaDist rightHalfWidth = 0;
  };
  static End plainEnd(oaEndStyle style, oaDist ext, oaUInt4 errorId);
  static End customEnd(oaEndStyle style, oaDist ext, oaDist leftDiagExt, oaDist rightDiagExt, oaDist rightHalfWidth,
                       oaUInt4 errorId);
  oaDist extensionOf(const End &end) const;
  void readEnd(const End &end, oaDist &ext, oaDist &leftDiagExt, oaDist &rightDiagExt, oaDist &rightHalfWidth) const;

  oaDist width_ = 0;
  End begin_;
  End end_;
};

} // namespace OpenAccess_4

#endif
