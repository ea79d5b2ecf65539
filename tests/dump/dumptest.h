#ifndef DUMPTEST_H
#define DUMPTEST_H

#include <string>

#include "plugintest.h"

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

class DumpTest : public PluginTest {
protected:
  std::string dump(const std::string &cell, const std::string &view = "layout", const std::string &lib = "lib");
};

#endif
