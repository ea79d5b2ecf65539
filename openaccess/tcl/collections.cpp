#include "collections.h"

#include "call.h"
#include "classes.h"
#include "forms.h"
#include "parameter.h"
#include "scripterror.h"
#include "table.h"

namespace OpenAccess_4 {
namespace tcl {

const ClassInfo kCollectionClass = {"Collection", nullptr, ClassKind::utility};

Collection::Collection(const oaBaseCollection &members, const oaObject *container)
    : members_(members), walk_(members), container_(container),
      table_(container != nullptr ? kit::tableOf(container) : nullptr),
      row_(container != nullptr ? kit::rowOf(container) : 0) {}

void Collection::check() const {
  if (container_ != nullptr && (kit::tableOf(container_) != table_ || kit::rowOf(container_) != row_)) {
    throw ScriptError{"the object that this collection belongs to was destroyed, or its database has been closed",
                      "OA " + std::to_string(oacDeletedDatabase)};
  }
}

oaObject *Collection::next() {
  check();
  return walk_.nextObject();
}

void Collection::reset() {
  check();
  walk_.reset();
}

oaUInt4 Collection::count() const {
  check();
  return members_.getCount();
}

bool Collection::isEmpty() const {
  check();
  return members_.isEmpty();
}

bool Collection::includes(const oaObject *object) const {
  check();
  return members_.includes(object);
}

void Call::give(const oaBaseCollection &members) {
  const oaObject *container = nullptr;
  if (count_ > 0) {
    container = readHandle(arguments_[0]).object;
  }
  add(newObject(new ValueOf<Collection>(kCollectionClass, 1, Collection(members, container))));
}

namespace {

constexpr Parameter kCollection = {ParameterKind::collection, "collection", &kCollectionClass};
constexpr Parameter kOne[] = {kCollection};
constexpr Parameter kTwo[] = {kCollection, {ParameterKind::object, "object", &classOf<oaObject>()}};

const Form kForms[] = {
    {"getNext", kOne, 1, 1, Effect::none, [](Call &call) { call.give(call.changed<Collection>(0).next()); }},
    {"reset", kOne, 1, 1, Effect::none, [](Call &call) { call.changed<Collection>(0).reset(); }},
    {"getCount", kOne, 1, 1, Effect::none, [](Call &call) { call.give(call.changed<Collection>(0).count()); }},
    {"isEmpty", kOne, 1, 1, Effect::none, [](Call &call) { call.give(call.changed<Collection>(0).isEmpty()); }},
    {"includes", kTwo, 2, 2, Effect::none,
     [](Call &call) { call.give(call.changed<Collection>(0).includes(call.object<oaObject>(1))); }},
};

} // namespace

const FormTable kCollectionForms = {kForms, sizeof kForms / sizeof kForms[0]};

} // namespace tcl
} // namespace OpenAccess_4
