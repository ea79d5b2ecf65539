#include "oa/oaLibDefList.h"

#include "diskname.h"
#include "libdeflists.h"
#include "oa/oaException.h"
#include "oa/oaScalarName.h"
#include "raise.h"

#include <algorithm>
#include <cctype>

namespace OpenAccess_4 {

namespace {

using kit::kNoRow;
using kit::LibDefLists;
using kit::LibDefMember;
using kit::LibDefMembers;
using kit::Row;

// A member that is about to change: its old lines no longer say what it is.
LibDefMember &changing(const oaLibDefListMem *object) {
  LibDefMember &member = LibDefMembers::of(object);
  member.lines.clear();
  LibDefLists::instance().list(member.list).isModified = true;
  return member;
}

// Raises when `value` could not be read back from the file.
void checkValue(const std::string &value, const std::string &what) {
  if (!kit::isWritableLibDefValue(value)) {
    raiseDM(oacInvalidLibDefListMemCreate,
            what + " \"" + value.substr(0, 200) +
                "\" cannot be written in a library definition file: it must not be empty, "
                "hold line ends or \"# \", or begin or end with a blank");
  }
}

void checkAttribute(const std::string &name, const std::string &value) {
  const auto isWordCharacter = [](unsigned char c) { return std::isgraph(c) != 0 && c != '#'; };
  if (name.empty() || !std::all_of(name.begin(), name.end(), isWordCharacter)) {
    raiseDM(oacInvalidLibDefListMemCreate, "\"" + name.substr(0, 200) + "\" is no attribute name: it must be one word");
  }
  checkValue(value, "the value");
}

Row followingRow(const oaLibDefListMem *following, Row list) {
  if (following == nullptr) {
    return kNoRow;
  }
  if (LibDefMembers::of(following).list != list) {
    raiseDM(oacInvalidLibDefListMemCreate, "file " + LibDefLists::instance().list(list).fullPath +
                                               ": the member to stand before belongs to another list");
  }
  return kit::rowOf(following);
}

// The first member that fits, or kNoRow.
template <typename Fits> Row findMember(const oaLibDefList *list, Fits fits) {
  for (const Row row : LibDefLists::instance().list(LibDefLists::rowOf(list)).memberRows()) {
    if (fits(LibDefMembers::instance().member(row))) {
      return row;
    }
  }
  return kNoRow;
}

template <typename Member> Member *memberObject(Row row) {
  return static_cast<Member *>(static_cast<oaObject *>(LibDefMembers::instance().handle(row)));
}

// Takes the member out and puts it before `following` (kNoRow: at the end).
void move(const oaLibDefListMem *member, Row following) {
  LibDefLists &lists = LibDefLists::instance();
  lists.removeMember(kit::rowOf(member));
  lists.insert(LibDefMembers::of(member).list, kit::rowOf(member), following);
}

} // namespace

oaLibDefList *oaLibDefListMem::getList() const { return LibDefLists::instance().object(LibDefMembers::of(this).list); }

void oaLibDefListMem::moveAfter(oaLibDefListMem *member) {
  const Row list = LibDefMembers::of(this).list;
  const Row after = followingRow(member, list);
  if (after == kit::rowOf(this)) {
    return;
  }
  std::vector<Row> rows = LibDefLists::instance().list(list).memberRows();
  rows.erase(std::find(rows.begin(), rows.end(), kit::rowOf(this)));
  const auto place = std::find(rows.begin(), rows.end(), after);
  move(this, place == rows.end() || place + 1 == rows.end() ? kNoRow : *(place + 1));
}

void oaLibDefListMem::moveToFirst() {
  const Row first = LibDefLists::instance().list(LibDefMembers::of(this).list).memberRows().front();
  if (first != kit::rowOf(this)) {
    move(this, first);
  }
}

void oaLibDefListMem::moveToLast() {
  LibDefMembers::of(this);
  move(this, kNoRow);
}

void oaLibDefListMem::destroy() {
  LibDefMembers::of(this);
  const Row row = kit::rowOf(this);
  LibDefLists::instance().removeMember(row);
  LibDefMembers::instance().destroy(row);
}

void oaLibDef::getLibName(oaScalarName &libName) const { kit::nameFromDisk(LibDefMembers::of(this).libName, libName); }
void oaLibDef::getLibPath(oaString &path) const { path = LibDefMembers::of(this).path.c_str(); }
void oaLibDef::getLibWritePath(oaString &writePath) const { writePath = LibDefMembers::of(this).writePath.c_str(); }

void oaLibDef::setLibWritePath(const oaString &writePath) {
  const std::string text(writePath);
  if (!text.empty()) {
    checkValue(text, "the write path");
  }
  changing(this).writePath = text;
}

oaLibMode oaLibDef::getLibMode() const { return oaLibMode(LibDefMembers::of(this).mode); }
void oaLibDef::setLibMode(oaLibMode libMode) { changing(this).mode = libMode; }

void oaLibDef::getLibAttributes(oaDMAttrArray &attrs) const {
  attrs.setNumElements(0);
  for (const auto &[name, value] : LibDefMembers::of(this).attributes) {
    attrs.append(oaDMAttr(name.c_str(), value.c_str()));
  }
}

void oaLibDef::addLibAttribute(const oaString &attrName, const oaString &attrVal) {
  const std::string name(attrName);
  checkAttribute(name, std::string(attrVal));
  removeLibAttribute(attrName);
  changing(this).attributes.emplace_back(name, std::string(attrVal));
}

void oaLibDef::removeLibAttribute(const oaString &attrName) {
  const std::string name(attrName);
  auto &attributes = changing(this).attributes;
  attributes.erase(
      std::remove_if(attributes.begin(), attributes.end(), [&](const auto &entry) { return entry.first == name; }),
      attributes.end());
}

oaLibDef *oaLibDef::create(oaLibDefList *defList, const oaScalarName &libName, const oaString &libPath,
                           const oaString &writePath, oaLibMode libMode, const oaDMAttrArray *libAttrs,
                           oaLibDefListMem *followingMem) {
  const Row list = LibDefLists::rowOf(defList);
  LibDefMember member;
  member.list = list;
  try {
    member.libName = kit::diskName(libName);
  } catch (const oaError &error) {
    raiseDM(oacInvalidLibName, std::string(error.getMsg()) + "; no library can be called so");
  }
  if (find(defList, libName) != nullptr) {
    raiseDM(oacLibDefExists, "file " + LibDefLists::instance().list(list).fullPath + ": defines library " +
                                 kit::nativeText(member.libName) + " already");
  }
  member.path = std::string(libPath);
  checkValue(member.path, "library path");
  member.writePath = std::string(writePath);
  if (!member.writePath.empty()) {
    checkValue(member.writePath, "write path");
  }
  member.mode = libMode;
  for (oaUInt4 i = 0; libAttrs != nullptr && i < libAttrs->getNumElements(); ++i) {
    const oaDMAttr &attribute = (*libAttrs)[i];
    checkAttribute(std::string(attribute.getName()), std::string(attribute.getValue()));
    member.attributes.emplace_back(std::string(attribute.getName()), std::string(attribute.getValue()));
  }
  const Row following = followingRow(followingMem, list);
  const Row row = LibDefMembers::instance().add(oacLibDefType, std::move(member));
  LibDefLists::instance().insert(list, row, following);
  return memberObject<oaLibDef>(row);
}

oaLibDef *oaLibDef::find(const oaLibDefList *defList, const oaScalarName &libName) {
  std::string name;
  try {
    name = kit::diskName(libName);
  } catch (const oaError &) {
    LibDefLists::rowOf(defList);
    return nullptr;
  }
  const Row row = findMember(defList, [&](const LibDefMember &member) { return member.libName == name; });
  return row == kNoRow ? nullptr : memberObject<oaLibDef>(row);
}

void oaLibDefListRef::getRefListPath(oaString &path) const { path = LibDefMembers::of(this).path.c_str(); }

oaLibDefListRef *oaLibDefListRef::create(oaLibDefList *libList, const oaString &refListPath,
                                         oaLibDefListMem *followingMem) {
  const Row list = LibDefLists::rowOf(libList);
  if (find(libList, refListPath) != nullptr) {
    raiseDM(oacLibDefListRefExists, "file " + LibDefLists::instance().list(list).fullPath + ": includes " +
                                        std::string(refListPath) + " already");
  }
  LibDefMember member;
  member.list = list;
  member.path = std::string(refListPath);
  checkValue(member.path, "included path");
  const Row following = followingRow(followingMem, list);
  const Row row = LibDefMembers::instance().add(oacLibDefListRefType, std::move(member));
  LibDefLists::instance().insert(list, row, following);
  return memberObject<oaLibDefListRef>(row);
}

oaLibDefListRef *oaLibDefListRef::find(const oaLibDefList *defList, const oaString &refListPath) {
  const std::string path(refListPath);
  const Row row =
      findMember(defList, [&](const LibDefMember &member) { return member.libName.empty() && member.path == path; });
  return row == kNoRow ? nullptr : memberObject<oaLibDefListRef>(row);
}

} // namespace OpenAccess_4
