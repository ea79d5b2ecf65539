#ifndef OADMATTR_H
#define OADMATTR_H

#include "oa/oaArray.h"

namespace OpenAccess_4 {

// A name and a value that a library carries for its storage system, such as libReadOnly or origFileSystem.
class oaDMAttr {
public:
  oaDMAttr() = default;
  oaDMAttr(const oaString &nameIn, const oaString &value) : name_(nameIn), value_(value) {}

  const oaString &getName() const { return name_; }
  const oaString &getValue() const { return value_; }
  void setName(const oaString &nameIn) { name_ = nameIn; }
  void setValue(const oaString &valueIn) { value_ = valueIn; }

  oaBoolean operator==(const oaDMAttr &other) const { return name_ == other.name_ && value_ == other.value_; }
  oaBoolean operator!=(const oaDMAttr &other) const { return !(*this == other); }

private:
  oaString name_;
  oaString value_;
};

class oaDMAttrArray : public oaArray<oaDMAttr> {
public:
  using oaArray<oaDMAttr>::oaArray;
};

} // namespace OpenAccess_4

#endif
