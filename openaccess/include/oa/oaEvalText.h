#ifndef OAEVALTEXT_H
#define OAEVALTEXT_H

#include "oa/oaText.h"

namespace OpenAccess_4 {

// What a client implements to evaluate texts. It must outlive its link.
class IEvalText {
public:
  virtual ~IEvalText() = default;
  // The name under which texts refer to the evaluator.
  virtual void getName(oaString &name) = 0;
  virtual void onEval(const oaString &textIn, oaString &textOut) = 0;
};

// An evaluator that is known to the session.
class oaEvalTextLink {
public:
  // Raises oacEvalTextLinkExists when the evaluator's name is taken.
  static oaEvalTextLink *create(IEvalText *evalText);
  static oaEvalTextLink *find(const oaString &name);
  // Texts keep the name, and show their expression until a link of that name exists again.
  void destroy();
  IEvalText *getIEvalText() const { return evalText_; }

private:
  explicit oaEvalTextLink(IEvalText *evalText) : evalText_(evalText) {}
  IEvalText *evalText_;
};

// A text that is an expression for an evaluator. Without a link, or while its evaluator is unknown, it shows the
// expression.
class oaEvalText : public oaText {
public:
  static oaEvalText *create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaString &text,
                            const oaPoint &origin, oaTextAlign alignment, oaOrient orient, oaFont font, oaDist height,
                            oaEvalTextLink *link = NULL, oaBoolean overbar = false, oaBoolean visible = true,
                            oaBoolean drafting = true);
  static oaEvalText *create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaString &text,
                            const oaPoint &origin, oaTextAlign alignment, oaOrient orient, oaFont font, oaDist height,
                            const oaString &linkName, oaBoolean overbar = false, oaBoolean visible = true,
                            oaBoolean drafting = true);
  // NULL when there is none, or when the evaluator is unknown.
  oaEvalTextLink *getLink() const;
  void setLink(oaEvalTextLink *link);
  void getExpression(oaString &text) const;
  // Empty when there is none.
  void getEvaluatorName(oaString &name) const;
};

} // namespace OpenAccess_4

#endif
