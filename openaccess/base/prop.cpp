#include "oa/oaProp.h"

#include "database.h"
#include "numbertext.h"
#include "oa/oaBaseMsgIds.h"
#include "oa/oaType.h"
#include "properties.h"
#include "raise.h"

#include <cstdio>
#include <cstring>
#include <ctime>

namespace OpenAccess_4 {

using kit::PropertyTable;
using kit::Row;

namespace {

PropertyTable &propertiesOf(const oaProp *prop) { return static_cast<PropertyTable &>(kit::liveTable(prop)); }

std::uint64_t bitsOf(double value) {
  std::uint64_t bits;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

double doubleOf(std::uint64_t bits) {
  double value;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

std::uint64_t bitsOf(oaInt4 value) { return static_cast<std::uint64_t>(static_cast<std::int64_t>(value)); }

oaInt4 intOf(std::uint64_t bits) { return static_cast<oaInt4>(static_cast<std::int64_t>(bits)); }

std::string_view viewOf(const oaString &text) { return std::string_view(text, text.getLength()); }

// Only the objects of the DM layer that stand for something on disk carry properties in the session.
bool canCarryProperties(const oaObject *object) {
  if (kit::databaseOf(object).kind() != kit::DatabaseKind::session) {
    return true;
  }
  switch (object->getType()) {
  case oacLibType:
  case oacCellType:
  case oacViewType:
  case oacCellViewType:
  case oacDMFileType:
    return true;
  default:
    return object->isProp();
  }
}

// Adds a property after the checks that all classes share.
Row addProperty(oaObject *object, const oaString &name, oaTypeEnum type) {
  kit::Table &table = kit::liveTable(object);
  const std::string text(viewOf(name));
  if (!canCarryProperties(object)) {
    raiseBase(oacInvalidObjForProp, "property " + text + ": an object of type " +
                                        std::string(viewOf(object->getType().getName())) + " cannot carry properties");
  }
  if (text.empty()) {
    raiseBase(oacInvalidNameLength, "a property cannot have an empty name");
  }
  kit::Database &database = table.database();
  if (database.properties().find(table, kit::rowOf(object), text) != kit::kNoRow) {
    raiseBase(oacPropNameUsed, database.label() + ": the object has a property \"" + text + "\" already");
  }
  return database.properties().add(static_cast<std::uint8_t>(type), table, kit::rowOf(object),
                                   database.strings().intern(text));
}

template <typename Prop> Prop *propertyAt(oaObject *object, Row row) {
  return static_cast<Prop *>(kit::databaseOf(object).properties().handle(row));
}

void setBits(const oaProp *prop, std::uint64_t bits) {
  PropertyTable &table = propertiesOf(prop);
  table.value.set(kit::rowOf(prop), bits);
  table.database().touch();
}

std::uint64_t bitsIn(const oaProp *prop) { return propertiesOf(prop).value[kit::rowOf(prop)]; }

void setText(const oaProp *prop, std::string_view text) {
  PropertyTable &table = propertiesOf(prop);
  kit::Database &database = table.database();
  table.text.set(kit::rowOf(prop), database.strings().add(text));
  database.noteAbandonedRows();
  database.touch();
}

std::string_view textIn(const oaProp *prop) {
  PropertyTable &table = propertiesOf(prop);
  return table.database().strings().view(table.text[kit::rowOf(prop)]);
}

template <typename Prop>
Prop *createWithBits(oaObject *object, const oaString &name, oaTypeEnum type, std::uint64_t bits) {
  const Row row = addProperty(object, name, type);
  kit::databaseOf(object).properties().value.set(row, bits);
  return propertyAt<Prop>(object, row);
}

template <typename Value>
void checkRange(oaUInt4 messageId, const oaString &name, Value lower, Value value, Value upper) {
  if (!(lower <= value && value <= upper)) {
    raiseBase(messageId, "property " + std::string(viewOf(name)) + ": " + std::to_string(value) + " is outside " +
                             std::to_string(lower) + " to " + std::to_string(upper));
  }
}

void setRange(const oaProp *prop, std::uint64_t lower, std::uint64_t value, std::uint64_t upper) {
  PropertyTable &table = propertiesOf(prop);
  const Row row = kit::rowOf(prop);
  table.lower.set(row, lower);
  table.value.set(row, value);
  table.upper.set(row, upper);
  table.database().touch();
}

void assign(oaString &out, std::string_view text) { out.assign(text.data(), static_cast<oaUInt4>(text.size())); }

oaString nameIn(const oaProp *prop) {
  oaString name;
  prop->getName(name);
  return name;
}

std::string timeText(oaTime time) {
  char text[64];
  if (::ctime_r(&time, text) == nullptr) {
    return std::to_string(time);
  }
  return std::string(text, std::strcspn(text, "\n"));
}

} // namespace

void oaProp::destroy() {
  PropertyTable &table = propertiesOf(this);
  table.database().destroyRow(table, kit::rowOf(this));
}

oaObject *oaProp::getOwner() const {
  PropertyTable &table = propertiesOf(this);
  const Row row = kit::rowOf(this);
  kit::Table *owner = table.database().table(table.ownerTable[row]);
  if (owner == nullptr) {
    raiseBase(oacInvalidReference, table.database().label() + ": damaged: a property belongs to table " +
                                       std::to_string(table.ownerTable[row]) + ", which does not exist");
  }
  return owner->handle(owner->checkRow(table.ownerRow[row], "a property's owner"));
}

namespace {

using TextColumn = kit::Column<Row> PropertyTable::*;

// Out of line, so that the usual way needs no stack.
[[gnu::noinline]] void findText(const oaProp *prop, TextColumn column, oaString &text) {
  const PropertyTable &table = propertiesOf(prop);
  table.getText(kit::rowOf(prop), table.*column, text);
}

// Name or value, which a walk over a schematic asks of every property. `table` may be NULL.
inline void getText(const oaProp *prop, const kit::Table *table, TextColumn column, oaString &text) {
  if (__builtin_expect(table != nullptr, 1)) {
    const Row *row = (static_cast<const PropertyTable *>(table)->*column).ready(kit::rowOf(prop));
    if (__builtin_expect(row != nullptr, 1)) {
      const std::string_view ready = table->database().strings().readyView(*row);
      if (__builtin_expect(ready.data() != nullptr, 1)) {
        return text.assign(ready.data(), static_cast<oaUInt4>(ready.size()));
      }
    }
  }
  findText(prop, column, text);
}

} // namespace

void oaProp::getName(oaString &name) const { getText(this, kit::tableOf(this), &PropertyTable::name, name); }

namespace {

// The value of a property that is no text.
std::string valueText(const oaProp *prop) {
  switch (prop->getType()) {
  case oacIntPropType:
  case oacIntRangePropType:
    return std::to_string(intOf(bitsIn(prop)));
  case oacFloatPropType:
  case oacFloatRangePropType:
  case oacDoublePropType:
  case oacDoubleRangePropType:
    return kit::numberText(doubleOf(bitsIn(prop)));
  case oacBooleanPropType:
    return bitsIn(prop) != 0 ? "true" : "false";
  case oacTimePropType:
  case oacTimeRangePropType:
    return timeText(static_cast<oaTime>(bitsIn(prop)));
  case oacAppPropType:
    return std::string(textIn(prop).substr(0, textIn(prop).find('\0')));
  default:
    return "oaHierProp";
  }
}

[[gnu::noinline]] void assignValue(const oaProp *prop, oaString &value) { assign(value, valueText(prop)); }

} // namespace

void oaProp::getValue(oaString &value) const {
  const oaTypeEnum type = getType();
  if (__builtin_expect(type == oacStringPropType || type == oacEnumPropType, 1)) {
    return getText(this, kit::tableOf(this), &PropertyTable::text, value);
  }
  assignValue(this, value);
}

void oaProp::setName(const oaString &name) {
  PropertyTable &table = propertiesOf(this);
  const Row row = kit::rowOf(this);
  kit::Database &database = table.database();
  const std::string text(viewOf(name));
  const oaObject *owner = getOwner();
  const Row user = table.find(kit::liveTable(owner), kit::rowOf(owner), text);
  if (user == row) {
    return;
  }
  if (text.empty()) {
    raiseBase(oacInvalidNameLength, "a property cannot have an empty name");
  }
  if (user != kit::kNoRow) {
    raiseBase(oacPropNameUsed, database.label() + ": the object has a property \"" + text + "\" already");
  }
  table.name.set(row, database.strings().intern(text));
  database.noteAbandonedRows();
  database.touch();
}

oaProp *oaProp::moveTo(oaObject *object) {
  PropertyTable &table = propertiesOf(this);
  kit::Table &target = kit::liveTable(object);
  if (&target.database() != &table.database()) {
    oaProp *copy = copyTo(object);
    destroy();
    return copy;
  }
  const std::string name(viewOf(nameIn(this)));
  if (table.find(target, kit::rowOf(object), name) != kit::kNoRow) {
    raiseBase(oacPropNameUsed, target.database().label() + ": the object has a property \"" + name + "\" already");
  }
  for (const oaObject *ancestor = object; ancestor->isProp();
       ancestor = static_cast<const oaProp *>(ancestor)->getOwner()) {
    if (ancestor == this) {
      raiseBase(oacInvalidObjForProp, "property " + name + " cannot be moved to itself or to a property on it");
    }
  }
  table.moveTo(kit::rowOf(this), target, kit::rowOf(object));
  return this;
}

oaProp *oaProp::copyTo(oaObject *object) const {
  PropertyTable &from = propertiesOf(this);
  const Row row = kit::rowOf(this);
  const kit::StringTable &fromStrings = from.database().strings();
  const std::string text = fromStrings.text(from.text[row]);
  const std::string typeText = fromStrings.text(from.typeText[row]);
  const std::vector<Row> nested = from.of(from, row).copy();
  const Row copy = addProperty(object, nameIn(this), getType());
  kit::Database &database = kit::databaseOf(object);
  PropertyTable &to = database.properties();
  to.value.set(copy, from.value[row]);
  to.lower.set(copy, from.lower[row]);
  to.upper.set(copy, from.upper[row]);
  to.text.set(copy, database.strings().add(text));
  to.typeText.set(copy, database.strings().add(typeText));
  oaProp *made = propertyAt<oaProp>(object, copy);
  for (const Row child : nested) {
    static_cast<const oaProp *>(from.handle(child))->copyTo(made);
  }
  return made;
}

oaProp *oaProp::find(const oaObject *object, const oaString &name, oaBoolean) {
  kit::Table &table = kit::liveTable(object);
  PropertyTable &properties = table.database().properties();
  return static_cast<oaProp *>(
      properties.handle(properties.find(table, kit::rowOf(object), std::string(viewOf(name)))));
}

oaInt4 oaIntProp::getValue() const { return intOf(bitsIn(this)); }
void oaIntProp::setValue(oaInt4 value) { setBits(this, bitsOf(value)); }
oaIntProp *oaIntProp::create(oaObject *object, const oaString &name, oaInt4 value) {
  return createWithBits<oaIntProp>(object, name, oacIntPropType, bitsOf(value));
}

oaFloat oaFloatProp::getValue() const { return static_cast<oaFloat>(doubleOf(bitsIn(this))); }
void oaFloatProp::setValue(oaFloat value) { setBits(this, bitsOf(static_cast<double>(value))); }
oaFloatProp *oaFloatProp::create(oaObject *object, const oaString &name, oaFloat value) {
  return createWithBits<oaFloatProp>(object, name, oacFloatPropType, bitsOf(static_cast<double>(value)));
}

oaDouble oaDoubleProp::getValue() const { return doubleOf(bitsIn(this)); }
void oaDoubleProp::setValue(oaDouble value) { setBits(this, bitsOf(value)); }
oaDoubleProp *oaDoubleProp::create(oaObject *object, const oaString &name, oaDouble value) {
  return createWithBits<oaDoubleProp>(object, name, oacDoublePropType, bitsOf(value));
}

oaBoolean oaBooleanProp::getValue() const { return bitsIn(this) != 0; }
void oaBooleanProp::setValue(oaBoolean value) { setBits(this, value ? 1 : 0); }
oaBooleanProp *oaBooleanProp::create(oaObject *object, const oaString &name, oaBoolean value) {
  return createWithBits<oaBooleanProp>(object, name, oacBooleanPropType, value ? 1 : 0);
}

oaTime oaTimeProp::getValue() const { return static_cast<oaTime>(bitsIn(this)); }
void oaTimeProp::setValue(oaTime value) { setBits(this, static_cast<std::uint64_t>(value)); }
oaTimeProp *oaTimeProp::create(oaObject *object, const oaString &name, oaTime value) {
  return createWithBits<oaTimeProp>(object, name, oacTimePropType, static_cast<std::uint64_t>(value));
}

void oaStringProp::getValue(oaString &value) const { oaProp::getValue(value); }
void oaStringProp::setValue(const oaString &value) { setText(this, viewOf(value)); }
oaStringProp *oaStringProp::create(oaObject *object, const oaString &name, const oaString &value) {
  const Row row = addProperty(object, name, oacStringPropType);
  oaStringProp *prop = propertyAt<oaStringProp>(object, row);
  setText(prop, viewOf(value));
  return prop;
}

oaUInt4 oaAppProp::getSize() const { return static_cast<oaUInt4>(textIn(this).size()); }

void oaAppProp::getValue(oaByte *value) const {
  const std::string_view bytes = textIn(this);
  if (!bytes.empty()) {
    std::memcpy(value, bytes.data(), bytes.size());
  }
}

void oaAppProp::getValue(oaByteArray &valueArray) const {
  const std::string_view bytes = textIn(this);
  valueArray.setSize(static_cast<oaUInt4>(bytes.size()));
  valueArray.setNumElements(static_cast<oaUInt4>(bytes.size()));
  for (oaUInt4 i = 0; i < bytes.size(); ++i) {
    valueArray[i] = static_cast<oaByte>(bytes[i]);
  }
}

void oaAppProp::getAppType(oaString &appType) const {
  PropertyTable &table = propertiesOf(this);
  table.database().strings().get(table.typeText[kit::rowOf(this)], appType);
}

void oaAppProp::setAppType(const oaString &appType) {
  PropertyTable &table = propertiesOf(this);
  table.typeText.set(kit::rowOf(this), table.database().strings().intern(viewOf(appType)));
  table.database().noteAbandonedRows();
  table.database().touch();
}

void oaAppProp::setValue(oaUInt4 size, const oaByte *value) {
  setText(this, std::string_view(reinterpret_cast<const char *>(value), size));
}

void oaAppProp::setValue(const oaByteArray &valueArray) {
  setValue(valueArray.getNumElements(), valueArray.getElements());
}

oaAppProp *oaAppProp::create(oaObject *object, const oaString &name, const oaString &appType, const oaUInt4 size,
                             const oaByte *value) {
  const Row row = addProperty(object, name, oacAppPropType);
  oaAppProp *prop = propertyAt<oaAppProp>(object, row);
  prop->setAppType(appType);
  prop->setValue(size, value);
  return prop;
}

oaAppProp *oaAppProp::create(oaObject *object, const oaString &name, const oaString &appType,
                             const oaByteArray &valueArray) {
  return create(object, name, appType, valueArray.getNumElements(), valueArray.getElements());
}

oaHierProp *oaHierProp::create(oaObject *object, const oaString &name) {
  return propertyAt<oaHierProp>(object, addProperty(object, name, oacHierPropType));
}

namespace {

// The texts of an enumeration property: each ended by a zero byte.
bool nextEnumText(std::string_view &rest, std::string_view &text) {
  const std::size_t end = rest.find('\0');
  if (end == std::string_view::npos) {
    return false;
  }
  text = rest.substr(0, end);
  rest.remove_prefix(end + 1);
  return true;
}

std::string_view enumTextsOf(const oaProp *prop) {
  PropertyTable &table = propertiesOf(prop);
  return table.database().strings().view(table.typeText[kit::rowOf(prop)]);
}

bool isEnumText(std::string_view texts, std::string_view wanted) {
  std::string_view text;
  while (nextEnumText(texts, text)) {
    if (text == wanted) {
      return true;
    }
  }
  return false;
}

[[noreturn]] void raiseNotInEnum(const oaString &name, const oaString &value) {
  raiseBase(oacInvalidEnumValue, "property " + std::string(viewOf(name)) + ": \"" + std::string(viewOf(value)) +
                                     "\" is none of the values it may have");
}

} // namespace

oaUInt4 oaEnumCollection::getCount() const {
  std::string_view texts = enumTextsOf(prop_);
  std::string_view text;
  oaUInt4 count = 0;
  while (nextEnumText(texts, text)) {
    ++count;
  }
  return count;
}

oaBoolean oaEnumCollection::isEmpty() const { return enumTextsOf(prop_).empty(); }

oaBoolean oaEnumCollection::includes(const oaString &value) const {
  return isEnumText(enumTextsOf(prop_), viewOf(value));
}

oaBoolean oaEnumPropIter::getNext(oaString &enumV) {
  std::string_view texts = enumTextsOf(prop_);
  std::string_view text;
  for (oaUInt4 i = 0; nextEnumText(texts, text); ++i) {
    if (i == next_) {
      ++next_;
      enumV.assign(text.data(), static_cast<oaUInt4>(text.size()));
      return true;
    }
  }
  return false;
}

void oaEnumProp::getValue(oaString &value) const { oaProp::getValue(value); }

void oaEnumProp::setValue(const oaString &value) {
  if (!getEnums().includes(value)) {
    raiseNotInEnum(nameIn(this), value);
  }
  setText(this, viewOf(value));
}

oaEnumCollection oaEnumProp::getEnums() const { return oaEnumCollection(this); }

oaEnumProp *oaEnumProp::create(oaObject *object, const oaString &name, const oaString &value, oaUInt4 numEnums,
                               const oaString *enums) {
  std::string texts;
  for (oaUInt4 i = 0; i < numEnums; ++i) {
    texts.append(viewOf(enums[i])).push_back('\0');
  }
  if (!isEnumText(texts, viewOf(value))) {
    raiseNotInEnum(name, value);
  }
  const Row row = addProperty(object, name, oacEnumPropType);
  kit::Database &database = kit::databaseOf(object);
  database.properties().typeText.set(row, database.strings().add(texts));
  oaEnumProp *prop = propertyAt<oaEnumProp>(object, row);
  setText(prop, viewOf(value));
  return prop;
}

oaEnumProp *oaEnumProp::create(oaObject *object, const oaString &name, const oaString &value,
                               const oaStringArray &enums) {
  return create(object, name, value, enums.getNumElements(), enums.getElements());
}

oaInt4 oaIntRangeProp::getValue() const { return intOf(bitsIn(this)); }
oaInt4 oaIntRangeProp::getLowerBound() const { return intOf(propertiesOf(this).lower[kit::rowOf(this)]); }
oaInt4 oaIntRangeProp::getUpperBound() const { return intOf(propertiesOf(this).upper[kit::rowOf(this)]); }
void oaIntRangeProp::setValue(oaInt4 value) { set(getLowerBound(), value, getUpperBound()); }
void oaIntRangeProp::set(oaInt4 lowerBound, oaInt4 value, oaInt4 upperBound) {
  checkRange(oacInvalidValueForIntRange, nameIn(this), lowerBound, value, upperBound);
  setRange(this, bitsOf(lowerBound), bitsOf(value), bitsOf(upperBound));
}
oaIntRangeProp *oaIntRangeProp::create(oaObject *object, const oaString &name, oaInt4 lowerBound, oaInt4 value,
                                       oaInt4 upperBound) {
  checkRange(oacInvalidValueForIntRange, name, lowerBound, value, upperBound);
  oaIntRangeProp *prop = propertyAt<oaIntRangeProp>(object, addProperty(object, name, oacIntRangePropType));
  setRange(prop, bitsOf(lowerBound), bitsOf(value), bitsOf(upperBound));
  return prop;
}

oaDouble oaDoubleRangeProp::getValue() const { return doubleOf(bitsIn(this)); }
oaDouble oaDoubleRangeProp::getLowerBound() const { return doubleOf(propertiesOf(this).lower[kit::rowOf(this)]); }
oaDouble oaDoubleRangeProp::getUpperBound() const { return doubleOf(propertiesOf(this).upper[kit::rowOf(this)]); }
void oaDoubleRangeProp::setValue(oaDouble value) { set(getLowerBound(), value, getUpperBound()); }
void oaDoubleRangeProp::set(oaDouble lowerBound, oaDouble value, oaDouble upperBound) {
  checkRange(oacInvalidValueForFloatRange, nameIn(this), lowerBound, value, upperBound);
  setRange(this, bitsOf(lowerBound), bitsOf(value), bitsOf(upperBound));
}
oaDoubleRangeProp *oaDoubleRangeProp::create(oaObject *object, const oaString &name, oaDouble lowerBound,
                                             oaDouble value, oaDouble upperBound) {
  checkRange(oacInvalidValueForFloatRange, name, lowerBound, value, upperBound);
  oaDoubleRangeProp *prop = propertyAt<oaDoubleRangeProp>(object, addProperty(object, name, oacDoubleRangePropType));
  setRange(prop, bitsOf(lowerBound), bitsOf(value), bitsOf(upperBound));
  return prop;
}

oaFloat oaFloatRangeProp::getValue() const { return static_cast<oaFloat>(doubleOf(bitsIn(this))); }
oaFloat oaFloatRangeProp::getLowerBound() const {
  return static_cast<oaFloat>(doubleOf(propertiesOf(this).lower[kit::rowOf(this)]));
}
oaFloat oaFloatRangeProp::getUpperBound() const {
  return static_cast<oaFloat>(doubleOf(propertiesOf(this).upper[kit::rowOf(this)]));
}
void oaFloatRangeProp::setValue(oaFloat value) { set(getLowerBound(), value, getUpperBound()); }
void oaFloatRangeProp::set(oaFloat lowerBound, oaFloat value, oaFloat upperBound) {
  checkRange(oacInvalidValueForFloatRange, nameIn(this), lowerBound, value, upperBound);
  setRange(this, bitsOf(double(lowerBound)), bitsOf(double(value)), bitsOf(double(upperBound)));
}
oaFloatRangeProp *oaFloatRangeProp::create(oaObject *object, const oaString &name, oaFloat lowerBound, oaFloat value,
                                           oaFloat upperBound) {
  checkRange(oacInvalidValueForFloatRange, name, lowerBound, value, upperBound);
  oaFloatRangeProp *prop = propertyAt<oaFloatRangeProp>(object, addProperty(object, name, oacFloatRangePropType));
  setRange(prop, bitsOf(double(lowerBound)), bitsOf(double(value)), bitsOf(double(upperBound)));
  return prop;
}

} // namespace OpenAccess_4
