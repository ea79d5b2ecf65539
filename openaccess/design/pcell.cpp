// Evaluators of parametric cells: their links, the plug-ins they come from, what they store, and who is told.

#include "oa/oaPcell.h"

#include "cellviewfiles.h"
#include "oa/oaDesign.h"
#include "oa/oaInstallation.h"
#include "pcellevents.h"
#include "raise.h"
#include "supermaster.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <dlfcn.h>
#include <exception>
#include <unordered_map>

namespace OpenAccess_4 {

namespace kit {

PcellObservers &PcellObservers::instance() {
  // Never destroyed: an observer with static lifetime unregisters late.
  static PcellObservers &observers = *new PcellObservers;
  return observers;
}

void PcellObservers::tellError(oaDesign *design, const std::string &message, oaPcellErrorTypeEnum type) {
  const oaString text(message.c_str());
  tell([&](oaPcellObserver &observer) { observer.onError(design, text, type); });
}

namespace {

std::string orUnknown(const char *text) { return text == nullptr ? "an error without a message" : text; }

} // namespace

std::string textOfException() {
  try {
    throw;
  } catch (const oaException &exception) {
    return std::string(exception.getMsg());
  } catch (const IException &exception) {
    return orUnknown(exception.getMsg());
  } catch (const std::exception &exception) {
    return orUnknown(exception.what());
  } catch (const char *text) {
    return orUnknown(text);
  } catch (...) {
    return "an exception of a type that is not known here";
  }
}

} // namespace kit

using namespace kit;

namespace {

// The links of the session, by the name of their evaluator.
std::unordered_map<std::string, oaPcellLink *> &links() {
  // Never destroyed: designs that are open at the end of the process may still ask.
  static auto &all = *new std::unordered_map<std::string, oaPcellLink *>;
  return all;
}

std::string textOf(const oaString &text) { return std::string(text, text.getLength()); }

std::string nameOf(IPcell *evaluator) {
  oaString name;
  evaluator->getName(name);
  return textOf(name);
}

// Names come out of files, too: none may lead out of the plug-in directories.
bool canBeFile(const std::string &name) {
  return !name.empty() && name.size() < 200 && name[0] != '.' && std::all_of(name.begin(), name.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || std::strchr("_-+.", c);
  });
}

std::vector<std::string> plugInDirectories() {
  std::vector<std::string> directories;
  if (const oaChar *own = oaInstallation::getPlugInDir()) {
    directories.emplace_back(own);
  }
  if (const oaChar *further = oaInstallation::getPlugInPath()) {
    const std::string path = further;
    for (std::size_t begin = 0; begin <= path.size();) {
      const std::size_t end = std::min(path.find(':', begin), path.size());
      if (end > begin) {
        directories.push_back(path.substr(begin, end - begin));
      }
      begin = end + 1;
    }
  }
  return directories;
}

using CreatePcell = IPcell *(*)(const char *name);

// NULL after adding the reason to `faults`. The shared object is never closed again: evaluators live as long as the
// process.
IPcell *loadEvaluator(const std::string &path, const std::string &name, std::string &faults) {
  IPcell *evaluator = nullptr;
  std::string fault;
  void *library = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    const char *why = ::dlerror();
    fault = why == nullptr ? "cannot be loaded" : why;
  } else if (auto *create = reinterpret_cast<CreatePcell>(::dlsym(library, "oaCreatePcell"))) {
    try {
      evaluator = create(name.c_str());
      fault = "has no evaluator of that name";
      if (evaluator != nullptr && nameOf(evaluator) != name) {
        fault = "gave an evaluator with the name \"" + nameOf(evaluator) + "\"";
        evaluator = nullptr;
      }
    } catch (...) {
      fault = textOfException();
      evaluator = nullptr;
    }
  } else {
    fault = "exports no function oaCreatePcell";
  }
  if (evaluator == nullptr) {
    faults += (faults.empty() ? "" : "; ") + path + ": " + fault;
  }
  return evaluator;
}

// `faults` says what is wrong with shared objects of that name.
IPcell *evaluatorFromPlugIns(const std::string &name, std::string &faults) {
  if (!canBeFile(name)) {
    return nullptr;
  }
  for (const std::string &directory : plugInDirectories()) {
    const std::string path = directory + "/" + name + ".so";
    if (fileSizeBytes(path) != 0) {
      if (IPcell *evaluator = loadEvaluator(path, name, faults)) {
        return evaluator;
      }
    }
  }
  return nullptr;
}

// The table of texts as it is stored: each name and value as its length in 4 bytes, lowest first, and its bytes.
void appendText(std::string &bytes, const std::string &text) {
  const auto size = static_cast<std::uint32_t>(text.size());
  for (unsigned shift = 0; shift < 32; shift += 8) {
    bytes += static_cast<char>(size >> shift);
  }
  bytes += text;
}

std::string storedTexts(const oaPcellDef &def) {
  std::string bytes;
  for (const auto &[name, value] : def.getData()) {
    appendText(bytes, name);
    appendText(bytes, value);
  }
  return bytes;
}

[[noreturn]] void raiseDamagedData(std::size_t at, std::size_t size) {
  raiseBase(oacCorruptedDatabase, "the data of a parametric cell are damaged: a text in byte " + std::to_string(at) +
                                      " of " + std::to_string(size) + " is longer than the data");
}

std::string takeText(const oaByte *data, std::size_t size, std::size_t &at) {
  std::size_t length = 0;
  if (size - at < 4) {
    raiseDamagedData(at, size);
  }
  for (unsigned i = 0; i < 4; ++i) {
    length |= std::size_t(data[at + i]) << (8 * i);
  }
  if (size - at - 4 < length) {
    raiseDamagedData(at, size);
  }
  const std::string text(reinterpret_cast<const char *>(data) + at + 4, length);
  at += 4 + length;
  return text;
}

} // namespace

oaPcellDef::~oaPcellDef() = default;

oaBoolean oaPcellDef::addData(const oaString &name, const oaString &value) {
  return data_.emplace(textOf(name), textOf(value)).second;
}

oaBoolean oaPcellDef::removeData(const oaString &name) { return data_.erase(textOf(name)) != 0; }

oaBoolean oaPcellDef::getDataValue(const oaString &name, oaString &value) {
  const auto found = data_.find(textOf(name));
  if (found == data_.end()) {
    return false;
  }
  value = oaString(found->second.data(), static_cast<oaUInt4>(found->second.size()));
  return true;
}

oaBoolean oaPcellDef::setDataValue(const oaString &name, const oaString &value) {
  const auto found = data_.find(textOf(name));
  if (found == data_.end()) {
    return false;
  }
  found->second = textOf(value);
  return true;
}

IPlugInBase::~IPlugInBase() = default;
oaInt4 IPlugInBase::queryInterface(const oaString &, void **) { return -1; }
oaUInt4 IPlugInBase::addRef() { return ++refCount_; }
oaUInt4 IPlugInBase::release() { return refCount_ == 0 ? 0 : --refCount_; }
oaUInt4 IPlugInBase::getRefCount() const { return refCount_; }

oaPcellDef *IPcell::getPcellDef() { return new oaPcellDef(this); }
void IPcell::onBind(oaDesign *, oaPcellDef *) {}
void IPcell::onUnbind(oaDesign *, oaPcellDef *) {}

oaUInt4 IPcell::calcDiskSize(oaPcellDef *pcellDef) { return static_cast<oaUInt4>(storedTexts(*pcellDef).size()); }

void IPcell::onWrite(oaDesign *, oaByte *data, oaUInt4 numBytes, oaPcellDef *pcellDef) {
  const std::string bytes = storedTexts(*pcellDef);
  std::copy_n(bytes.begin(), std::min<std::size_t>(bytes.size(), numBytes), data);
}

void IPcell::onRead(oaDesign *, const oaByte *data, oaUInt4 numBytes, oaPcellDef *pcellDef) {
  std::map<std::string, std::string> texts;
  for (std::size_t at = 0; at < numBytes;) {
    const std::string name = takeText(data, numBytes, at);
    texts[name] = takeText(data, numBytes, at);
  }
  pcellDef->setData(std::move(texts));
}

namespace {

oaPcellLink *findLink(const std::string &wanted, std::string &faults) {
  const auto found = links().find(wanted);
  if (found != links().end()) {
    return found->second;
  }
  IPcell *evaluator = evaluatorFromPlugIns(wanted, faults);
  if (evaluator == nullptr) {
    return nullptr;
  }
  // The shared object may have linked it itself.
  const auto linked = links().find(wanted);
  return linked != links().end() ? linked->second : oaPcellLink::create(evaluator);
}

} // namespace

oaPcellLink *oaPcellLink::find(const oaString &name) {
  std::string faults;
  oaPcellLink *link = findLink(textOf(name), faults);
  if (!faults.empty()) {
    PcellObservers::instance().tellError(nullptr, "evaluator \"" + textOf(name) + "\": " + faults, oacPcellPlugInError);
  }
  return link;
}

oaPcellLink *oaPcellLink::create(IPcell *pcellIn) {
  if (pcellIn == nullptr) {
    raiseDesign(oacPcellInvalidPcellDef, "an evaluator is needed, NULL was given");
  }
  const std::string name = nameOf(pcellIn);
  if (links().count(name) != 0) {
    raiseDesign(oacPcellLinkExists, "evaluator \"" + name + "\" is linked already");
  }
  oaPcellLink *link = new oaPcellLink(pcellIn);
  links()[name] = link;
  return link;
}

oaPcellDef *oaPcellLink::getPcellDef(const oaString &name) {
  std::string faults;
  const oaPcellLink *link = findLink(textOf(name), faults);
  oaPcellDef *def = link == nullptr ? nullptr : link->getIPcell()->getPcellDef();
  if (def == nullptr) {
    raiseDesign(oacPcellEvaluatorNotFound,
                "there is no evaluator \"" + textOf(name) + "\": none is linked, and " +
                    (faults.empty() ? "no plug-in directory has " + textOf(name) + ".so with one" : faults));
  }
  return def;
}

void oaPcellLink::destroy() {
  for (auto entry = links().begin(); entry != links().end(); ++entry) {
    if (entry->second == this) {
      links().erase(entry); // first: nothing is to be bound to it again
      evaluatorIsGoing(pcell_);
      delete this;
      return;
    }
  }
}

oaPcellObserver::oaPcellObserver(oaUInt4 priority, oaBoolean enabled) : oaBaseObserver(priority, enabled) {
  PcellObservers::instance().add(this);
}
oaPcellObserver::~oaPcellObserver() { PcellObservers::instance().remove(this); }
void oaPcellObserver::onError(oaDesign *, const oaString &, oaPcellErrorTypeEnum) {}
void oaPcellObserver::onPreEval(oaDesign *, oaPcellDef *) {}
void oaPcellObserver::onPostEval(oaDesign *, oaPcellDef *) {}

} // namespace OpenAccess_4
