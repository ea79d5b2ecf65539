// The members of a name: the hierarchy levels of a/b[2]/c are a, b[2] and c. A member holds plain characters, without
// the escapes of any name space.
#ifndef OANAMEMEM_H
#define OANAMEMEM_H

#include <vector>

#include "oa/oaString.h"

namespace OpenAccess_4 {

class oaNameMem {
public:
  oaNameMem() : index_(0), caseSensitive_(true), hasIndex_(false) {}
  oaNameMem(const oaString &in, oaBoolean caseSensitive)
      : value_(in), index_(0), caseSensitive_(caseSensitive), hasIndex_(false) {}
  oaNameMem(const oaChar *in, oaBoolean caseSensitive) : oaNameMem(oaString(in), caseSensitive) {}
  /// A level that is one bit of an iterated instance.
  oaNameMem(const oaString &in, oaBoolean caseSensitive, oaUInt4 index)
      : value_(in), index_(index), caseSensitive_(caseSensitive), hasIndex_(true) {}

  oaBoolean isCaseSensitive() const { return caseSensitive_; }
  oaBoolean hasIndex() const { return hasIndex_; }
  oaUInt4 getIndex() const { return index_; }
  /// The characters without the index.
  const oaString &getValue() const { return value_; }
  void getBaseName(oaString &out) const { out = value_; }

  /// Case counts unless both are insensitive; a sensitive and an insensitive member differ.
  oaBoolean operator==(const oaNameMem &other) const;
  oaBoolean operator!=(const oaNameMem &other) const { return !(*this == other); }

private:
  oaString value_;
  oaUInt4 index_;
  oaBoolean caseSensitive_;
  oaBoolean hasIndex_;
};

class oaNameSpace;
class oaScalarName;
class oaVectorBitName;

/// The hierarchy levels of a scalar, vector or bit name, the name proper last.
class oaNameBase {
public:
  /// 0 for the empty name.
  oaUInt4 getNumMembers() const { return isEmpty() ? 0 : static_cast<oaUInt4>(path_.size()) + 1; }
  const oaNameMem &operator[](oaUInt4 i) const { return i < path_.size() ? path_[i] : last_; }
  oaBoolean isEmpty() const { return last_.getValue().isEmpty() && path_.empty(); }

  /// Puts levels in front. These four raise oacInvalidName for an empty name.
  void addHierPath(const oaScalarName &path);
  void addHierPath(const oaVectorBitName &path);
  /// Puts one level before the last member: `len` characters of a text in that name space, or a member.
  void addHierMem(const oaNameSpace &nSpace, const oaChar *in, oaUInt4 len);
  void addHierMem(const oaNameMem &in);

protected:
  oaBoolean hasEqualMembers(const oaNameBase &other) const { return last_ == other.last_ && path_ == other.path_; }
  void clear();
  void append(const oaNameMem &member);

private:
  void insertPath(const oaNameBase &path, const oaNameMem &lastOfPath);

  std::vector<oaNameMem> path_;
  oaNameMem last_;
};

} // namespace OpenAccess_4

#endif
