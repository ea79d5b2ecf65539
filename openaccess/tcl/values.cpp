#include "values.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <string>
#include <unordered_map>

namespace OpenAccess_4 {
namespace tcl {

namespace {

// Objects by the number in their text.
std::unordered_map<oaUInt8, Value *> &objects() {
  static auto &table = *new std::unordered_map<oaUInt8, Value *>;
  return table;
}

oaUInt8 lastSerial = 0;
oaUInt8 lastHiddenSerial = 0;

Value *contentOf(Tcl_Obj *text) { return static_cast<Value *>(text->internalRep.otherValuePtr); }

void drop(Value *value) {
  if (--value->holders == 0) {
    delete value;
  }
}

// Objects whose Tcl value was taken for a list, a string of characters or the like: their text is all that is left, and
// scripts expect it to work. The number is bounded so that a loop which does so uses no memory without end.
void keepForItsText(Value *value) {
  constexpr std::size_t kKept = 65536;
  static auto &kept = *new std::deque<Value *>;
  kept.push_back(value);
  if (kept.size() > kKept) {
    drop(kept.front());
    kept.pop_front();
  }
}

void freeValue(Tcl_Obj *text) {
  Value *value = contentOf(text);
  text->typePtr = nullptr;
  const bool isDeleted = text->length == -1; // as opposed to a change of type: Tcl's way to tell
  if (value->isObject() && !isDeleted) {
    keepForItsText(value);
  } else {
    drop(value);
  }
}

void copyValue(Tcl_Obj *source, Tcl_Obj *copy) {
  ++contentOf(source)->holders;
  copy->internalRep.otherValuePtr = source->internalRep.otherValuePtr;
  copy->typePtr = source->typePtr;
}

void setText(Tcl_Obj *text, const char *bytes, std::size_t length) {
  text->bytes = Tcl_Alloc(static_cast<unsigned>(length) + 1);
  std::memcpy(text->bytes, bytes, length);
  text->bytes[length] = '\0';
  text->length = static_cast<int>(length);
}

void printValue(Tcl_Obj *text) {
  const Value &value = *contentOf(text);
  if (value.isObject()) {
    char number[24];
    std::snprintf(number, sizeof number, ":0x%llx", static_cast<unsigned long long>(value.serial));
    const std::string name = std::string("oa:") + value.cls.name + number;
    setText(text, name.data(), name.size());
    return;
  }
  Tcl_Obj *plain = value.cls.makePlain(value.data(), value.dbuPerUU);
  Tcl_IncrRefCount(plain);
  int length = 0;
  const char *bytes = Tcl_GetStringFromObj(plain, &length);
  setText(text, bytes, static_cast<std::size_t>(length));
  Tcl_DecrRefCount(plain);
}

const Tcl_ObjType kValueType = {"oaValue", freeValue, copyValue, printValue, nullptr};

Tcl_Obj *newText(Value *value) {
  Tcl_Obj *text = Tcl_NewObj();
  Tcl_InvalidateStringRep(text);
  ++value->holders;
  text->internalRep.otherValuePtr = value;
  text->typePtr = &kValueType;
  return text;
}

} // namespace

Value::~Value() {
  if (serial != 0) {
    objects().erase(serial);
  }
}

Tcl_Obj *newObject(Value *value) {
  value->serial = ++lastSerial;
  objects().emplace(value->serial, value);
  return newText(value);
}

Tcl_Obj *newPlainValue(Value *value) { return newText(value); }
Tcl_Obj *newReference(Value *value) { return newText(value); }

oaUInt8 lastObjectSerial() { return lastSerial; }
void hideObjectsUpTo(oaUInt8 serial) { lastHiddenSerial = serial; }

bool isValue(const Tcl_Obj *text) { return text->typePtr == &kValueType; }

ReadValue readValue(Tcl_Obj *text) {
  if (isValue(text)) {
    return {contentOf(text), false};
  }
  // Any other text "oa:Class:0x1" must name an object that still exists.
  const char *bytes = Tcl_GetString(text);
  if (std::strncmp(bytes, "oa:", 3) != 0) {
    return {nullptr, false};
  }
  const char *number = std::strstr(bytes + 3, ":0x");
  if (number == nullptr || number[3] == '\0' || number[3 + std::strspn(number + 3, "0123456789abcdef")] != '\0' ||
      !isObjectClass(std::string_view(bytes + 3, static_cast<std::size_t>(number - bytes) - 3))) {
    return {nullptr, false};
  }
  const auto found = objects().find(std::strtoull(number + 3, nullptr, 16));
  if (found == objects().end() || found->first <= lastHiddenSerial ||
      std::string(bytes + 3, number) != found->second->cls.name) {
    return {nullptr, true};
  }
  return {found->second, false};
}

} // namespace tcl
} // namespace OpenAccess_4
