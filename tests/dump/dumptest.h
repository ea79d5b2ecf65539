#ifndef DUMPTEST_H
#define DUMPTEST_H

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QDir>

#include "oapluginmain.h"

inline oa::oaScalarName scalar(const std::string &text) { return oa::oaScalarName(oaConvert::ns, text.c_str()); }
inline oa::oaName named(const std::string &text) { return oa::oaName(oaConvert::ns, text.c_str()); }

// A new design that a test fills: opened empty, saved and closed when it goes out of scope.
class NewView {
public:
  NewView(const std::string &cell, const std::string &view, oa::oaReservedViewTypeEnum type,
          const std::string &lib = "lib");
  ~NewView();

  oa::oaBlock *operator*() const { return block_; }
  oa::oaDesign *design() const { return design_; }

private:
  oa::oaDesign *design_;
  oa::oaBlock *block_;
};

// A plug-in object and a library "lib" in a temporary folder that is also the home directory.
class DumpTest : public ::testing::Test {
protected:
  DumpTest();
  ~DumpTest() override;

  void createLib(const std::string &name);
  std::string dump(const std::string &cell, const std::string &view = "layout", const std::string &lib = "lib");

  oaPlugInMain plugIn;
};

#endif
