#include "oa/oaViewType.h"

#include "collection.h"
#include "oa/oaSession.h"
#include "raise.h"
#include "viewtypes.h"

namespace OpenAccess_4 {

using kit::ViewTypes;

void oaViewType::getName(oaString &name) const {
  name = ViewTypes::instance().nameOf(ViewTypes::rowOfType(this)).c_str();
}

oaViewType *oaViewType::create(const oaString &name) {
  ViewTypes &types = ViewTypes::instance();
  const std::string text(name);
  if (types.find(text) != kit::kNoRow) {
    raiseDM(oacViewTypeExists, "view type " + text + ": exists already");
  }
  // The name becomes a file name.
  if (text.empty() || text[0] == '.' || text.find('/') != std::string::npos || text.size() > 200) {
    raiseDM(oacViewTypeExists,
            "view type \"" + text.substr(0, 200) +
                "\": cannot be part of a file name; it must not be empty, begin with '.' or hold a '/'");
  }
  return types.object(types.add(text));
}

oaViewType *oaViewType::find(const oaString &name) {
  ViewTypes &types = ViewTypes::instance();
  const kit::Row row = types.find(std::string(name));
  return row == kit::kNoRow ? nullptr : types.object(row);
}

oaViewType *oaViewType::get(oaReservedViewType type) {
  return ViewTypes::instance().object(static_cast<kit::Row>(static_cast<oaReservedViewTypeEnum>(type)));
}

oaCollection<oaViewType, oaSession> oaViewType::getViewTypes() {
  return kit::wholeTable<oaCollection<oaViewType, oaSession>>(ViewTypes::instance());
}

} // namespace OpenAccess_4
