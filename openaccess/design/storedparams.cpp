#include "storedparams.h"

#include "designaccess.h"
#include "numbertext.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <vector>

namespace OpenAccess_4 {
namespace kit {

namespace {

std::string_view viewOf(const oaString &text) { return {text, text.getLength()}; }

std::string nameOf(const oaParam &param) {
  oaString name;
  param.getName(name);
  return std::string(viewOf(name));
}

std::uint64_t bitsOf(double value) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

double doubleOf(std::uint64_t bits) {
  double value = 0;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

// The value of a parameter: a number, or bytes with the name of their type.
struct ParamValue {
  std::uint64_t number = 0;
  std::string text, appType;
};

ParamValue valueOf(const oaParam &param) {
  ParamValue value;
  switch (param.getType()) {
  case oacIntParamType:
    value.number = static_cast<std::uint64_t>(static_cast<std::int64_t>(param.getIntVal()));
    break;
  case oacFloatParamType:
    value.number = bitsOf(static_cast<double>(param.getFloatVal()));
    break;
  case oacDoubleParamType:
    value.number = bitsOf(param.getDoubleVal());
    break;
  case oacBooleanParamType:
    value.number = param.getBooleanVal() ? 1 : 0;
    break;
  case oacTimeParamType:
    value.number = static_cast<std::uint64_t>(param.getTimeVal());
    break;
  case oacStringParamType:
    value.text = param.getStringVal();
    break;
  case oacAppParamType: {
    oaString type;
    param.getAppType(type);
    value.appType = std::string(viewOf(type));
    std::vector<oaByte> bytes(param.getNumBytes());
    if (!bytes.empty()) {
      param.getAppVal(bytes.data());
    }
    value.text.assign(bytes.begin(), bytes.end());
    break;
  }
  }
  return value;
}

std::string shownValue(const oaParam &param) {
  const ParamValue value = valueOf(param);
  switch (param.getType()) {
  case oacFloatParamType:
  case oacDoubleParamType:
    return numberText(doubleOf(value.number));
  case oacBooleanParamType:
    return value.number != 0 ? "true" : "false";
  case oacStringParamType:
    return "\"" + value.text + "\"";
  case oacAppParamType:
    return std::to_string(value.text.size()) + " bytes";
  default:
    return std::to_string(static_cast<std::int64_t>(value.number));
  }
}

} // namespace

namespace {

// Numbers are stored lowest byte first.
template <typename Number> void append(std::string &bytes, Number number) {
  for (unsigned shift = 0; shift < 8 * sizeof number; shift += 8) {
    bytes += static_cast<char>(number >> shift);
  }
}

void appendText(std::string &bytes, const std::string &text) {
  append(bytes, static_cast<std::uint32_t>(text.size()));
  bytes += text;
}

// Takes stored parameters apart. Raises oacCorruptedDatabase where they end too early.
class ParamReader {
public:
  ParamReader(std::string_view bytes, const DesignDatabase &design) : bytes_(bytes), design_(design) {}
  bool atEnd() const { return at_ == bytes_.size(); }

  oaParam next() {
    oaParam param;
    param.setName(text().c_str());
    const auto type = number<std::uint8_t>();
    switch (type) {
    case oacIntParamType:
      param.setIntVal(static_cast<oaInt4>(static_cast<std::int64_t>(number<std::uint64_t>())));
      break;
    case oacFloatParamType:
      param.setFloatVal(static_cast<oaFloat>(doubleOf(number<std::uint64_t>())));
      break;
    case oacDoubleParamType:
      param.setDoubleVal(doubleOf(number<std::uint64_t>()));
      break;
    case oacBooleanParamType:
      param.setBooleanVal(number<std::uint64_t>() != 0);
      break;
    case oacTimeParamType:
      param.setTimeVal(static_cast<oaTime>(number<std::uint64_t>()));
      break;
    case oacStringParamType:
      param.setStringVal(text().c_str());
      break;
    case oacAppParamType: {
      param.setAppType(text().c_str());
      const std::string value = text();
      param.setAppVal(static_cast<oaUInt4>(value.size()), reinterpret_cast<const oaByte *>(value.data()));
      break;
    }
    default:
      fail("parameter type " + std::to_string(type) + " is unknown");
    }
    return param;
  }

private:
  [[noreturn]] void fail(const std::string &what) const {
    raiseBase(oacCorruptedDatabase, design_.label() + ": damaged: parameters of a parametric cell: " + what);
  }
  void require(std::size_t count) const {
    if (bytes_.size() - at_ < count) {
      fail("end in byte " + std::to_string(bytes_.size()) + ", " + std::to_string(at_ + count) + " are needed");
    }
  }
  template <typename Number> Number number() {
    require(sizeof(Number));
    Number number = 0;
    for (unsigned i = 0; i < sizeof number; ++i) {
      number |= static_cast<Number>(static_cast<Number>(static_cast<unsigned char>(bytes_[at_ + i])) << (8 * i));
    }
    at_ += sizeof number;
    return number;
  }
  std::string text() {
    const auto size = number<std::uint32_t>();
    require(size);
    at_ += size;
    return std::string(bytes_.substr(at_ - size, size));
  }

  std::string_view bytes_;
  const DesignDatabase &design_;
  std::size_t at_ = 0;
};

std::string stored(const oaParam &param) {
  std::string bytes;
  const ParamValue value = valueOf(param);
  appendText(bytes, nameOf(param));
  append(bytes, static_cast<std::uint8_t>(param.getType()));
  switch (param.getType()) {
  case oacStringParamType:
    appendText(bytes, value.text);
    break;
  case oacAppParamType:
    appendText(bytes, value.appType);
    appendText(bytes, value.text);
    break;
  default:
    append(bytes, value.number);
  }
  return bytes;
}

} // namespace

std::string storedParams(const oaParamArray &params) {
  std::string bytes;
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    bytes += stored(params[i]);
  }
  return bytes;
}

void loadParams(const DesignDatabase &design, Row text, oaParamArray &params) {
  params.setNumElements(0);
  if (text == kNoString) {
    return;
  }
  ParamReader reader(design.strings().view(text), design);
  while (!reader.atEnd()) {
    params.append(reader.next());
  }
}

std::string paramKey(const oaParamArray &params) {
  std::vector<std::string> parts;
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    parts.push_back(stored(params[i]));
  }
  std::sort(parts.begin(), parts.end());
  std::string key;
  for (const std::string &part : parts) {
    key += part;
  }
  return key;
}

std::string paramText(const oaParamArray &params) {
  constexpr std::size_t kMost = 200;
  std::string text;
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    text += (i == 0 ? "" : ", ") + nameOf(params[i]) + "=" + shownValue(params[i]);
    if (text.size() > kMost) {
      return text.substr(0, kMost) + "...";
    }
  }
  return text;
}

} // namespace kit
} // namespace OpenAccess_4
