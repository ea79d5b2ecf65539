// Properties of any object, with the displays that show it.

#include "oadump.h"

#include <algorithm>
#include <unordered_set>

using namespace oa;

namespace {

// Only a damaged or hostile design is nested deeper. The indentation alone would make its text endless.
const int kDeepestLevel = 100;

void writeEnumValues(DumpText &text, const oaEnumProp *prop) {
  std::string values("(");
  oaString value;
  oaEnumPropIter iter(prop->getEnums());
  while (iter.getNext(value)) {
    if (values.size() > 1) {
      values += ' ';
    }
    appendQuoted(values, value);
  }
  text.word("values", values + ')');
}

template <typename Property> const Property *as(const oaProp *prop) { return static_cast<const Property *>(prop); }

DumpText &writeNumber(DumpText &text, const char *name, oaInt4 value) { return text.number(name, value); }
DumpText &writeNumber(DumpText &text, const char *name, oaFloat value) { return text.real(name, value); }
DumpText &writeNumber(DumpText &text, const char *name, oaDouble value) { return text.real(name, value); }

template <typename Range> void writeRange(DumpText &text, const char *kind, const Range *range, const oaString &name) {
  text.word(nullptr, kind).quoted(nullptr, name);
  writeNumber(text, nullptr, range->getValue());
  writeNumber(text, "from", range->getLowerBound());
  writeNumber(text, "to", range->getUpperBound());
}

// Kind, name and value. Texts that a property makes of its value are not used: they round numbers and hide types.
void writeValue(DumpText &text, const oaProp *prop, const oaString &name) {
  oaString value;
  const oaType type = prop->getType();
  switch (oaTypeEnum(type)) {
  case oacIntPropType:
    text.word(nullptr, "int").quoted(nullptr, name).number(nullptr, as<oaIntProp>(prop)->getValue());
    break;
  case oacIntRangePropType:
    writeRange(text, "intRange", as<oaIntRangeProp>(prop), name);
    break;
  case oacFloatPropType:
    text.word(nullptr, "float").quoted(nullptr, name).real(nullptr, as<oaFloatProp>(prop)->getValue());
    break;
  case oacFloatRangePropType:
    writeRange(text, "floatRange", as<oaFloatRangeProp>(prop), name);
    break;
  case oacDoublePropType:
    text.word(nullptr, "double").quoted(nullptr, name).real(nullptr, as<oaDoubleProp>(prop)->getValue());
    break;
  case oacDoubleRangePropType:
    writeRange(text, "doubleRange", as<oaDoubleRangeProp>(prop), name);
    break;
  case oacBooleanPropType:
    text.word(nullptr, "boolean").quoted(nullptr, name).flag(nullptr, as<oaBooleanProp>(prop)->getValue());
    break;
  case oacTimePropType:
    text.word(nullptr, "time").quoted(nullptr, name).number(nullptr, as<oaTimeProp>(prop)->getValue());
    break;
  case oacStringPropType:
    as<oaStringProp>(prop)->getValue(value);
    text.word(nullptr, "string").quoted(nullptr, name).quoted(nullptr, value);
    break;
  case oacEnumPropType:
    as<oaEnumProp>(prop)->getValue(value);
    text.word(nullptr, "enum").quoted(nullptr, name).quoted(nullptr, value);
    writeEnumValues(text, as<oaEnumProp>(prop));
    break;
  case oacAppPropType: {
    oaByteArray bytes;
    as<oaAppProp>(prop)->getValue(bytes);
    as<oaAppProp>(prop)->getAppType(value);
    text.word(nullptr, "app").quoted(nullptr, name).quoted("type", value).bytes("bytes", bytes);
    break;
  }
  case oacHierPropType:
    text.word(nullptr, "hier").quoted(nullptr, name);
    break;
  default:
    prop->getValue(value);
    text.word(nullptr, type.getName()).quoted(nullptr, name).quoted(nullptr, value);
    break;
  }
}

void writeParam(DumpText &text, const oaParam &param) {
  oaString name, value;
  param.getName(name);
  switch (oaParamTypeEnum(param.getType())) {
  case oacIntParamType:
    text.word(nullptr, "int").quoted(nullptr, name).number(nullptr, param.getIntVal());
    break;
  case oacFloatParamType:
    text.word(nullptr, "float").quoted(nullptr, name).real(nullptr, param.getFloatVal());
    break;
  case oacStringParamType:
    param.getStringVal(value);
    text.word(nullptr, "string").quoted(nullptr, name).quoted(nullptr, value);
    break;
  case oacAppParamType: {
    oaByteArray bytes;
    bytes.setNumElements(param.getNumBytes());
    if (bytes.getNumElements() > 0) {
      param.getAppVal(&bytes[0]);
    }
    param.getAppType(value);
    text.word(nullptr, "app").quoted(nullptr, name).quoted("type", value).bytes("bytes", bytes);
    break;
  }
  case oacDoubleParamType:
    text.word(nullptr, "double").quoted(nullptr, name).real(nullptr, param.getDoubleVal());
    break;
  case oacBooleanParamType:
    text.word(nullptr, "boolean").quoted(nullptr, name).flag(nullptr, param.getBooleanVal());
    break;
  case oacTimeParamType:
    text.word(nullptr, "time").quoted(nullptr, name).number(nullptr, param.getTimeVal());
    break;
  }
}

} // namespace

void writeParams(DumpText &text, const oaParamArray &params, int level) {
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    text.begin(level, "param");
    writeParam(text, params[i]);
    text.end();
  }
}

void writeParamsByName(DumpText &text, const oaParamArray &params, int level) {
  std::vector<std::pair<std::string, oaUInt4>> order;
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    oaString name;
    params[i].getName(name);
    order.emplace_back(static_cast<const oaChar *>(name), i);
  }
  std::sort(order.begin(), order.end()); // of two with one name, the last counts
  oaParamArray sorted;
  for (const auto &place : order) {
    sorted.append(params[place.second]);
  }
  writeParams(text, sorted, level);
}

bool oaDump::hasFacts(const oaObject *object) const {
  return object->hasProp() || (!displays_.empty() && displays_.count(object) > 0);
}

void oaDump::writeExtras(DumpText &text, const oaObject *object, int level) {
  if (object->hasProp()) {
    if (level > kDeepestLevel) {
      throw 'n';
    }
    oaIter<oaProp> props(object->getProps());
    while (const oaProp *prop = props.getNext()) {
      writeProperty(text, prop, level);
    }
  }
  if (!displays_.empty()) {
    writeDisplays(text, object, level);
  }
}

void oaDump::writeProperty(DumpText &text, const oaProp *prop, int level) {
  oaString name;
  prop->getName(name);
  text.begin(level, "prop");
  writeValue(text, prop, name);
  text.end();
  writeExtras(text, prop, level + 1);
}

void oaDump::writeDisplays(DumpText &text, const oaObject *object, int level) {
  const auto found = displays_.find(object);
  if (found == displays_.end()) {
    return;
  }
  // Taken out, so that a display which shows something of itself is not met again.
  const Displays displays = std::move(found->second);
  displays_.erase(found);
  DumpEntries entries;
  for (oaTextDisplay *display : displays) {
    writeShape(entries, display, object, level);
  }
  entries.moveTo(text);
}

// Headers follow from the figures; only what somebody hung on them is content. Those of one master or via definition
// are told apart by their parameters.
void oaDump::writeHeaders() {
  DumpEntries entries;
  const auto close = [&](const oaObject *header) {
    writeExtras(entries.text(), header, 2);
    entries.add();
  };
  oaIter<oaLayerHeader> layers(block_->getLayerHeaders());
  while (const oaLayerHeader *header = layers.getNext()) {
    if (hasFacts(header)) {
      entries.text().begin(1, "layer").number(nullptr, header->getLayerNum()).end();
      close(header);
    }
  }
  oaIter<oaLPPHeader> pairs(block_->getLPPHeaders());
  while (const oaLPPHeader *header = pairs.getNext()) {
    if (hasFacts(header)) {
      entries.text().begin(1, "layerPurpose").layer(header->getLayerNum(), header->getPurposeNum()).end();
      close(header);
    }
  }
  oaIter<oaInstHeader> masters(block_->getInstHeaders());
  while (const oaInstHeader *header = masters.getNext()) {
    if (hasFacts(header)) {
      oaParamArray params;
      header->getParams(params);
      entries.text().begin(1, "master").word(nullptr, cellViewText(header)).end();
      writeParamsByName(entries.text(), params, 2);
      close(header);
    }
  }
  // A kit may count sub headers among the headers of the block or not.
  std::unordered_set<const oaViaHeader *> written;
  oaIter<oaViaHeader> vias(block_->getViaHeaders());
  while (const oaViaHeader *header = vias.getNext()) {
    if (written.insert(header).second) {
      writeViaHeader(entries, header);
    }
    oaIter<oaViaHeader> subHeaders(header->getSubHeaders());
    while (const oaViaHeader *subHeader = subHeaders.getNext()) {
      if (written.insert(subHeader).second) {
        writeViaHeader(entries, subHeader);
      }
    }
  }
  writeSection("headers", entries);
}

void oaDump::writeViaHeader(DumpEntries &entries, const oaViaHeader *header) {
  if (!hasFacts(header)) {
    return;
  }
  oaString definition;
  header->getViaDefName(definition);
  entries.text().begin(1, "viaHeader").quoted(nullptr, definition).flag("subHeader", header->isSubHeader()).end();
  if (header->getType() == oacStdViaHeaderType) {
    oaViaParam params;
    static_cast<const oaStdViaHeader *>(header)->getParams(params);
    writeViaParams(entries.text(), params, 2);
  } else {
    oaParamArray params;
    static_cast<const oaCustomViaHeader *>(header)->getParams(params);
    writeParamsByName(entries.text(), params, 2);
  }
  writeExtras(entries.text(), header, 2);
  entries.add();
}
