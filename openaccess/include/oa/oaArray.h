// Arrays with a used part (number of elements) inside an allocated part (size). Element access is not checked: clients
// fill a[i] up to the size and set the number of elements afterwards.
#ifndef OAARRAY_H
#define OAARRAY_H

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <utility>

#include "oa/oaString.h"

namespace OpenAccess_4 {

template <class T> class oaArrayBase {
public:
  /// Room for `size` elements; none is in use.
  oaArrayBase(oaUInt4 size = 0) : elements_(size ? new T[size]() : nullptr), numElements_(0), size_(size) {}
  oaArrayBase(const oaArrayBase<T> &arrayIn) : oaArrayBase(arrayIn.elements_.get(), arrayIn.numElements_) {}
  oaArrayBase(oaArrayBase<T> &&arrayIn) noexcept
      : elements_(std::move(arrayIn.elements_)), numElements_(std::exchange(arrayIn.numElements_, 0)),
        size_(std::exchange(arrayIn.size_, 0)) {}
  oaArrayBase(const T arrayIn[], oaUInt4 numElementsIn) : oaArrayBase(numElementsIn) {
    std::copy_n(arrayIn, numElementsIn, elements_.get());
    numElements_ = numElementsIn;
  }
  ~oaArrayBase() = default;

  oaArrayBase<T> &operator=(const oaArrayBase<T> &arrayIn) {
    if (this != &arrayIn)
      set(arrayIn.elements_.get(), arrayIn.numElements_);
    return *this;
  }
  oaArrayBase<T> &operator=(oaArrayBase<T> &&arrayIn) noexcept {
    std::swap(elements_, arrayIn.elements_);
    std::swap(numElements_, arrayIn.numElements_);
    std::swap(size_, arrayIn.size_);
    return *this;
  }

  const T *getElements() const { return elements_.get(); }
  oaUInt4 getNumElements() const { return numElements_; }
  oaUInt4 getSize() const { return size_; }

  /// Allocates when `n` is more than the size; elements that come into use keep what they held.
  void setNumElements(oaUInt4 n) {
    if (n > size_)
      reallocate(n);
    numElements_ = n;
  }
  /// The elements in use are kept whatever `saveElements` says, as far as they fit.
  void setSize(oaUInt4 newSize, oaBoolean saveElements = false) {
    static_cast<void>(saveElements);
    if (newSize != size_)
      reallocate(newSize);
  }
  /// Copies `numElementsIn` elements, which may be part of this array.
  void set(const T *arrayIn, oaUInt4 numElementsIn) {
    if (numElementsIn > size_) {
      oaArrayBase<T> copy(arrayIn, numElementsIn);
      *this = std::move(copy);
      return;
    }
    if (arrayIn != elements_.get())
      std::copy_n(arrayIn, numElementsIn, elements_.get());
    numElements_ = numElementsIn;
  }

  const T &get(oaUInt4 index) const { return elements_[index]; }
  T &get(oaUInt4 index) { return elements_[index]; }
  const T &operator[](oaUInt4 i) const { return elements_[i]; }
  T &operator[](oaUInt4 i) { return elements_[i]; }

protected:
  /// The size that growth by doubling gives to an array that must hold `needed` elements.
  oaUInt4 grownSize(oaUInt8 needed) const {
    const oaUInt8 doubled = std::max<oaUInt8>(oaUInt8(size_) * 2, 4);
    return static_cast<oaUInt4>(std::min<oaUInt8>(std::max(needed, doubled), UINT_MAX));
  }
  void reallocate(oaUInt4 newSize) {
    std::unique_ptr<T[]> elements(newSize ? new T[newSize]() : nullptr);
    numElements_ = std::min(numElements_, newSize);
    std::move(elements_.get(), elements_.get() + numElements_, elements.get());
    elements_ = std::move(elements);
    size_ = newSize;
  }

  std::unique_ptr<T[]> elements_;
  oaUInt4 numElements_;
  oaUInt4 size_;
};

template <class T> class oaArray : public oaArrayBase<T> {
public:
  using oaArrayBase<T>::oaArrayBase;
  oaArray(oaUInt4 size = 0) : oaArrayBase<T>(size) {}
  oaArray(const oaArray<T> &arrayIn) = default;
  oaArray(oaArray<T> &&arrayIn) noexcept = default;
  virtual ~oaArray() = default;

  oaArray<T> &operator=(const oaArray<T> &arrayIn) = default;
  oaArray<T> &operator=(oaArray<T> &&arrayIn) noexcept = default;

  /// The place of the first equal element, or oacNullIndex.
  oaUInt4 find(const T &element) const {
    const T *const begin = this->getElements();
    const T *const end = begin + this->numElements_;
    const T *const found = std::find(begin, end, element);
    return found == end ? oacNullIndex : static_cast<oaUInt4>(found - begin);
  }
  void append(const T &element) {
    if (this->numElements_ < this->size_) {
      this->elements_[this->numElements_++] = element;
      return;
    }
    T copy(element); // it may be an element of this array
    this->reallocate(this->grownSize(oaUInt8(this->numElements_) + 1));
    this->elements_[this->numElements_++] = std::move(copy);
  }
  void append(const oaArray<T> &arrayIn) {
    const oaUInt4 added = arrayIn.numElements_;
    const oaUInt8 needed = oaUInt8(this->numElements_) + added;
    if (needed > this->size_)
      this->reallocate(this->grownSize(needed));
    std::copy_n(arrayIn.getElements(), added, this->elements_.get() + this->numElements_);
    this->numElements_ += added;
  }
  /// Takes the first equal element out, if there is one; those behind it move up.
  void remove(const T &element) {
    const oaUInt4 found = find(element);
    if (found == oacNullIndex)
      return;
    T *const elements = this->elements_.get();
    std::move(elements + found + 1, elements + this->numElements_, elements + found);
    --this->numElements_;
  }
  /// Sorts by a comparison in the manner of qsort; equal elements keep their order.
  void sort(int (*compare)(const T *, const T *)) {
    std::stable_sort(this->elements_.get(), this->elements_.get() + this->numElements_,
                     [compare](const T &a, const T &b) { return compare(&a, &b) < 0; });
  }

  virtual oaBoolean operator==(const oaArray<T> &other) const {
    return this->numElements_ == other.numElements_ &&
           std::equal(this->getElements(), this->getElements() + this->numElements_, other.getElements());
  }
  oaBoolean operator!=(const oaArray<T> &other) const { return !(*this == other); }
};

/// An array that holds each value once.
template <class T> class oaSubset : public oaArray<T> {
public:
  using oaArray<T>::oaArray;

  void add(T type) {
    if (!includes(type))
      this->append(type);
  }
  oaBoolean includes(T type) const { return this->find(type) != oacNullIndex; }
};

class oaByteArray : public oaArray<oaByte> {
public:
  using oaArray<oaByte>::oaArray;
};

class oaStringArray : public oaArray<oaString> {
public:
  using oaArray<oaString>::oaArray;
};

} // namespace OpenAccess_4

#endif
