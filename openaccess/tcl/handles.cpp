#include "handles.h"

#include "classes.h"
#include "table.h"
#include "values.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unordered_set>

namespace OpenAccess_4 {
namespace tcl {

namespace {

constexpr char kPrefix[] = "oa:0x";
constexpr std::size_t kPrefixLength = sizeof kPrefix - 1;

// Blocks of handles of which at least one was given to a script. There is an entry for 1,024 objects, and blocks are
// used again, so the set stays small without ever being cleaned.
class KnownBlocks {
public:
  void add(const oaObject *object) {
    const std::uintptr_t block = blockOf(reinterpret_cast<std::uintptr_t>(object));
    if (block != last_) {
      blocks_.insert(block);
      last_ = block;
    }
  }
  bool holds(std::uintptr_t address) const {
    return address % sizeof(oaObject) == 0 && blocks_.count(blockOf(address)) != 0;
  }

private:
  static_assert(sizeof(kit::HandleBlock) == kit::HandleBlock::kHandles * sizeof(oaObject),
                "a block holds nothing else");
  static std::uintptr_t blockOf(std::uintptr_t address) { return address / sizeof(kit::HandleBlock); }
  std::uintptr_t last_ = 0;
  std::unordered_set<std::uintptr_t> blocks_;
};

KnownBlocks &knownBlocks() {
  static KnownBlocks &blocks = *new KnownBlocks;
  return blocks;
}

void printHandle(Tcl_Obj *text) {
  char buffer[32];
  const int length =
      std::snprintf(buffer, sizeof buffer, "%s%llx", kPrefix,
                    static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(text->internalRep.otherValuePtr)));
  text->bytes = Tcl_Alloc(static_cast<unsigned>(length) + 1);
  std::memcpy(text->bytes, buffer, static_cast<std::size_t>(length) + 1);
  text->length = length;
}

void copyHandle(Tcl_Obj *source, Tcl_Obj *copy) {
  copy->internalRep.otherValuePtr = source->internalRep.otherValuePtr;
  copy->typePtr = source->typePtr;
}

const Tcl_ObjType kHandleType = {"oaObject", nullptr, copyHandle, printHandle, nullptr};

Handle stateOf(oaObject *object) {
  return object->isValid() ? Handle{HandleState::alive, object} : Handle{HandleState::dead, nullptr};
}

} // namespace

Tcl_Obj *newHandle(const oaObject *object) {
  Tcl_Obj *text = Tcl_NewObj();
  if (object != nullptr) {
    knownBlocks().add(object);
    Tcl_InvalidateStringRep(text);
    text->internalRep.otherValuePtr = const_cast<oaObject *>(object);
    text->typePtr = &kHandleType;
  }
  return text;
}

Handle readHandle(Tcl_Obj *text) {
  if (text->typePtr == &kHandleType) {
    return stateOf(static_cast<oaObject *>(text->internalRep.otherValuePtr));
  }
  if (isValue(text)) {
    return {HandleState::none, nullptr}; // without making its text
  }
  int length = 0;
  const char *bytes = Tcl_GetStringFromObj(text, &length);
  if (length == 0 || std::strcmp(bytes, "null") == 0 || std::strcmp(bytes, "NULL") == 0) {
    return {HandleState::null, nullptr};
  }
  if (std::strncmp(bytes, kPrefix, kPrefixLength) != 0 ||
      std::strspn(bytes + kPrefixLength, "0123456789abcdef") + kPrefixLength != static_cast<std::size_t>(length) ||
      static_cast<std::size_t>(length) == kPrefixLength || length > 21) {
    return {HandleState::none, nullptr};
  }
  const std::uintptr_t address = std::strtoull(bytes + kPrefixLength, nullptr, 16);
  if (!knownBlocks().holds(address)) {
    return {HandleState::none, nullptr};
  }
  return stateOf(reinterpret_cast<oaObject *>(address));
}

oaDesign *designOfObject(oaObject *object) {
  const ClassInfo &cls = managedClass(object->getType());
  if (cls.distanceTo(classOf<oaProp>()) >= 0) {
    return designOfObject(static_cast<oaProp *>(object)->getOwner());
  }
  if (cls.distanceTo(classOf<oaDesign>()) >= 0) {
    return static_cast<oaDesign *>(object);
  }
  return cls.distanceTo(classOf<oaDesignObject>()) >= 0 ? static_cast<oaDesignObject *>(object)->getDesign() : nullptr;
}

} // namespace tcl
} // namespace OpenAccess_4
