#include "oa/oaSegStyle.h"

#include "raise.h"

namespace OpenAccess_4 {

oaSegStyle::End oaSegStyle::plainEnd(oaEndStyle style, oaDist ext, oaUInt4 errorId) {
  if (ext != 0 && style != oacVariableEndStyle) {
    raiseDesign(errorId, "segment style: extension " + std::to_string(ext) + " for an end of style \"" +
                             std::string(style.getName()) + "\", expected \"variable\"");
  }
  End end;
  end.style = style;
  end.ext = ext;
  return end;
}

oaSegStyle::End oaSegStyle::customEnd(oaEndStyle style, oaDist ext, oaDist leftDiagExt, oaDist rightDiagExt,
                                      oaDist rightHalfWidth, oaUInt4 errorId) {
  if (style != oacCustomEndStyle) {
    raiseDesign(errorId, "segment style: four numbers for an end of style \"" + std::string(style.getName()) +
                             "\", expected \"custom\"");
  }
  End end;
  end.style = style;
  end.ext = ext;
  end.leftDiagExt = leftDiagExt;
  end.rightDiagExt = rightDiagExt;
  end.rightHalfWidth = rightHalfWidth;
  return end;
}

oaSegStyle::oaSegStyle(oaDist width, oaEndStyle beginStyleIn, oaEndStyle endStyleIn, oaDist beginExtIn, oaDist endExtIn)
    : width_(width), begin_(plainEnd(beginStyleIn, beginExtIn, oacInvalidSegStyleBeginExtValue)),
      end_(plainEnd(endStyleIn, endExtIn, oacInvalidSegStyleEndExtValue)) {}

oaSegStyle::oaSegStyle(oaEndStyle beginStyleIn, oaEndStyle endStyleIn, oaDist endExtIn, oaDist endLeftDiagExtIn,
                       oaDist endRightDiagExtIn, oaDist endRightHalfWidthIn, oaDist beginExtIn)
    : width_(2 * endRightHalfWidthIn), begin_(plainEnd(beginStyleIn, beginExtIn, oacInvalidSegStyleBeginExtValue)),
      end_(customEnd(endStyleIn, endExtIn, endLeftDiagExtIn, endRightDiagExtIn, endRightHalfWidthIn,
                     oacInvalidSegStyleEndExtValue)) {}

oaSegStyle::oaSegStyle(oaEndStyle beginStyleIn, oaDist beginExtIn, oaDist beginLeftDiagExtIn,
                       oaDist beginRightDiagExtIn, oaDist beginRightHalfWidthIn, oaEndStyle endStyleIn, oaDist endExtIn)
    : width_(2 * beginRightHalfWidthIn),
      begin_(customEnd(beginStyleIn, beginExtIn, beginLeftDiagExtIn, beginRightDiagExtIn, beginRightHalfWidthIn,
                       oacInvalidSegStyleBeginExtValue)),
      end_(plainEnd(endStyleIn, endExtIn, oacInvalidSegStyleEndExtValue)) {}

oaSegStyle::oaSegStyle(oaEndStyle beginStyleIn, oaDist beginExtIn, oaDist beginLeftDiagExtIn,
                       oaDist beginRightDiagExtIn, oaDist beginRightHalfWidthIn, oaEndStyle endStyleIn, oaDist endExtIn,
                       oaDist endLeftDiagExtIn, oaDist endRightDiagExtIn, oaDist endRightHalfWidthIn)
    : width_(2 * beginRightHalfWidthIn),
      begin_(customEnd(beginStyleIn, beginExtIn, beginLeftDiagExtIn, beginRightDiagExtIn, beginRightHalfWidthIn,
                       oacInvalidSegStyleBeginExtValue)),
      end_(customEnd(endStyleIn, endExtIn, endLeftDiagExtIn, endRightDiagExtIn, endRightHalfWidthIn,
                     oacInvalidSegStyleEndExtValue)) {}

oaDist oaSegStyle::extensionOf(const End &end) const {
  return end.style == oacExtendEndStyle || end.style == oacChamferEndStyle ? width_ / 2 : end.ext;
}

void oaSegStyle::readEnd(const End &end, oaDist &ext, oaDist &leftDiagExt, oaDist &rightDiagExt,
                         oaDist &rightHalfWidth) const {
  ext = extensionOf(end);
  leftDiagExt = end.leftDiagExt;
  rightDiagExt = end.rightDiagExt;
  rightHalfWidth = end.style == oacCustomEndStyle ? end.rightHalfWidth : width_ / 2;
}

oaDist oaSegStyle::getBeginExt() const { return extensionOf(begin_); }

void oaSegStyle::getBeginExt(oaDist &ext, oaDist &leftDiagExt, oaDist &rightDiagExt, oaDist &rightHalfWidth) const {
  readEnd(begin_, ext, leftDiagExt, rightDiagExt, rightHalfWidth);
}

oaDist oaSegStyle::getEndExt() const { return extensionOf(end_); }

void oaSegStyle::getEndExt(oaDist &ext, oaDist &leftDiagExt, oaDist &rightDiagExt, oaDist &rightHalfWidth) const {
  readEnd(end_, ext, leftDiagExt, rightDiagExt, rightHalfWidth);
}

void oaSegStyle::setWidth(oaDist widthIn) { width_ = widthIn; }

void oaSegStyle::setBeginStyle(oaEndStyle style, oaDist ext) {
  begin_ = plainEnd(style, ext, oacInvalidSegStyleBeginExtValue);
}

void oaSegStyle::setBeginStyle(oaEndStyle style, oaDist ext, oaDist leftDiagExt, oaDist rightDiagExt,
                               oaDist rightHalfWidth) {
  begin_ = customEnd(style, ext, leftDiagExt, rightDiagExt, rightHalfWidth, oacInvalidSegStyleBeginExtValue);
}

void oaSegStyle::setEndStyle(oaEndStyle style, oaDist ext) {
  end_ = plainEnd(style, ext, oacInvalidSegStyleEndExtValue);
}

void oaSegStyle::setEndStyle(oaEndStyle style, oaDist ext, oaDist leftDiagExt, oaDist rightDiagExt,
                             oaDist rightHalfWidth) {
  end_ = customEnd(style, ext, leftDiagExt, rightDiagExt, rightHalfWidth, oacInvalidSegStyleEndExtValue);
}

oaBoolean oaSegStyle::operator==(const oaSegStyle &style) const {
  const auto isSame = [](const End &a, const End &b) {
    return a.style == b.style && a.ext == b.ext && a.leftDiagExt == b.leftDiagExt && a.rightDiagExt == b.rightDiagExt &&
           a.rightHalfWidth == b.rightHalfWidth;
  };
  return width_ == style.width_ && isSame(begin_, style.begin_) && isSame(end_, style.end_);
}

} // namespace OpenAccess_4
