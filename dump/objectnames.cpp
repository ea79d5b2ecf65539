#include "objectnames.h"

#include "dumptext.h"
#include "oaconvert.h"

using namespace oa;

namespace {

// `what` stands in front of the quoted text of the name.
template <typename Name> std::string textWith(const char *what, const Name &name) {
  oaString text;
  name.get(oaConvert::ns, text);
  std::string out(what);
  appendQuoted(out, text);
  return out;
}

std::string bundleText(const oaBundleName &name) {
  std::string out("bundle:(");
  for (oaUInt4 i = 0; i < name.getNumMembers(); ++i) {
    const oaSimpleName &member = name[i];
    if (i > 0) {
      out += ' ';
    }
    if (member.getRepeat() != 1) {
      out += std::to_string(member.getRepeat()) + '*';
    }
    out += nameText(member);
  }
  return out + ')';
}

} // namespace

std::string nameText(const oaScalarName &name) { return textWith("", name); }

std::string nameText(const oaSimpleName &name) {
  if (const oaVectorBitName *bit = name.getVectorBit()) {
    return textWith("bit:", *bit);
  }
  if (const oaVectorName *bus = name.getVector()) {
    return textWith("bus:", *bus);
  }
  return textWith("", name);
}

std::string nameText(const oaName &name) {
  if (const oaBundleName *bundle = name.getBundle()) {
    return bundleText(*bundle);
  }
  if (const oaVectorBitName *bit = name.getVectorBit()) {
    return textWith("bit:", *bit);
  }
  if (const oaVectorName *bus = name.getVector()) {
    return textWith("bus:", *bus);
  }
  return textWith("", name);
}

std::string nameTextOf(const oaInst *inst) {
  oaSimpleName name;
  inst->getName(name);
  return nameText(name);
}
