#include "oa/oaEnumWrapper.h"

#include <algorithm>
#include <cassert>
#include <cstdlib>

namespace OpenAccess_4 {

oaEnumNames::oaEnumNames(Raise raise, oaUInt4 invalidNameId, const oaChar *what,
                         std::initializer_list<const oaChar *> names)
    : raise_(raise), invalidNameId_(invalidNameId), what_(what) {
  values_.reserve(names.size());
  for (const oaChar *name : names)
    values_.push_back({static_cast<oaUInt4>(values_.size()), name});
}

oaEnumNames::oaEnumNames(Raise raise, oaUInt4 invalidNameId, const oaChar *what, std::initializer_list<Entry> entries)
    : raise_(raise), invalidNameId_(invalidNameId), what_(what) {
  values_.reserve(entries.size());
  for (const Entry &entry : entries) {
    assert(values_.empty() || values_.back().value < entry.value);
    values_.push_back({entry.value, entry.name});
  }
}

const oaEnumNames::NamedValue *oaEnumNames::find(oaUInt4 value) const {
  if (value < values_.size() && values_[value].value == value)
    return &values_[value];
  const auto found = std::lower_bound(values_.begin(), values_.end(), value,
                                      [](const NamedValue &named, oaUInt4 wanted) { return named.value < wanted; });
  return found != values_.end() && found->value == value ? &*found : nullptr;
}

const oaString &oaEnumNames::nameOf(oaUInt4 value) const {
  if (const NamedValue *const found = find(value))
    return found->name;
  raiseUnknown(std::to_string(value));
}

oaUInt4 oaEnumNames::valueOf(const oaString &name) const {
  for (const NamedValue &named : values_) {
    if (named.name == name)
      return named.value;
  }
  raiseUnknown("\"" + std::string(name) + "\"");
}

void oaEnumNames::raiseUnknown(const std::string &found) const {
  std::string known;
  for (size_t i = 0; i < values_.size() && i < 16; ++i)
    known += (i ? ", " : "") + std::string(values_[i].name);
  raise_(invalidNameId_, found + " is no " + what_ + "; known are " + known + (values_.size() > 16 ? ", ..." : ""));
  std::abort(); // raise_ does not return, which its type cannot say
}

} // namespace OpenAccess_4
