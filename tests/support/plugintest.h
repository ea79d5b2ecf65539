#ifndef PLUGINTEST_H
#define PLUGINTEST_H

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QDir>

#include "oapluginmain.h"

typedef std::vector<std::string> Lines;

inline oa::oaScalarName scalar(const std::string &text) { return oa::oaScalarName(oaConvert::ns, text.c_str()); }

// A plug-in object and a library "lib" in a temporary folder that is also the home and the working directory, so that
// no other lib.defs is found. Libraries live as long as the process, so all cases of a program share the folder, and
// each leaves the libraries empty.
class PluginTest : public ::testing::Test {
protected:
  PluginTest();
  ~PluginTest() override;

  void createLib(const std::string &name);
  static QDir folder();

  oaPlugInMain plugIn;
};

#endif
