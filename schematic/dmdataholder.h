#ifndef DMDATAHOLDER_H
#define DMDATAHOLDER_H

#include <oa/oaDesignDB.h>

// One opened reference on the management data of a library or cell, given back at the end of the scope. Changes that
// were not saved are lost with the last reference.
template <typename Data> class DMDataHolder {
public:
  explicit DMDataHolder(Data *data) : data_(data) {}
  ~DMDataHolder() {
    if (!data_ || !data_->isValid()) {
      return;
    }
    try {
      data_->close();
    } catch (const oa::oaException &) { // NOLINT(bugprone-empty-catch): nothing is left to be done with it
    }
  }
  DMDataHolder(const DMDataHolder &) = delete;
  DMDataHolder &operator=(const DMDataHolder &) = delete;

  Data *operator->() const { return data_; }
  Data *get() const { return data_; }

private:
  Data *data_;
};

#endif
