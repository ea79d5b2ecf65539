#include "oaconvert.h"

#include <gtest/gtest.h>

namespace {

using Items = QList<propertyItem2>;

propertyItem2 item(int code, const char *value) { return propertyItem2(code, QString(value)); }
propertyItem2 item(const char *name, const char *value) { return propertyItem2(QString(name), QString(value)); }

propertyItem2 integer(const char *name, int value) {
  propertyItem2 item{QString(name)};
  item.setValue(value);
  return item;
}
propertyItem2 real(const char *name, float value) {
  propertyItem2 item{QString(name)};
  item.setValue(value);
  return item;
}

Items cell(const char *lib, const char *cell, const char *view) {
  return Items() << item(1, lib) << item(3, cell) << item(4, view);
}

TEST(VariantHash, IsTheMd5OfTextNamesAndValues) {
  propertyItem2 withoutValue(QString("name"));
  const struct {
    const char *name;
    Items items;
    const char *hash;
  } cases[] = {
      {"nothing", Items(), "d41d8cd98f00b204e9800998ecf8427e"},
      {"identity alone", cell("lib", "inv", "layout"), "d41d8cd98f00b204e9800998ecf8427e"},
      {"w=1;", Items() << item(1, "lib") << item("w", "1"), "a32c2847ea23737c526645bf38d01dcd"},
      {"w=1.5e-06;m=2;", Items() << item("w", "1.5e-06") << item("m", "2"), "3cf901ce09aa026e794725459b248a92"},
      {"name= ;", Items() << withoutValue, "3d2ef0f272f8094c8e98adbf195a9821"},
      {"f=0.333333;", Items() << real("f", 1.0f / 3), "95a1df0b55b384ec05007ceb0225c094"},
      {"model=;", Items() << item("model", ""), "cef9dd611e55959bd351f31cb4d10378"},
      {"m=-3;w=2.5;on=false;model=a=b;c;",
       Items() << integer("m", -3) << real("w", 2.5f) << item("on", "false") << item("model", "a=b;c"),
       "021e1c3b3c914ff31b86c5ec46579a07"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(oaConvert::toHash(c.items), QString(c.hash));
  }
}

TEST(VariantName, NamesCellViewAndForeignLibrary) {
  const struct {
    const char *name;
    Items items;
    const char *cellName;
  } cases[] = {
      {"layout of the current library", cell("lib", "inv", "layout"), "inv"},
      {"other view", cell("lib", "inv", "abstract"), "inv_abstract"},
      {"view in capitals is another view", cell("lib", "inv", "Layout"), "inv_Layout"},
      {"foreign library", cell("devlib", "nmos", "layout"), "nmos~devlib"},
      {"foreign library and view", cell("devlib", "nmos", "sym"), "nmos_sym~devlib"},
      {"no cell", cell("lib", "", "abstract"), "_abstract"},
      {"no view, no library", cell("", "inv", ""), "inv"},
      {"nothing", Items(), ""},
      {"last of a code wins", cell("lib", "inv", "layout") << item(3, "buf"), "buf"},
      {"reserved code is ignored", cell("lib", "inv", "layout") << item(2, "x"), "inv"},
      {"variant", cell("devlib", "nmos", "layout") << item("w", "1"), "nmos~devlib~a32c2847ea23737c526645bf38d01dcd"},
      {"variant of the current library", cell("lib", "nmos", "layout") << item("w", "1"),
       "nmos~a32c2847ea23737c526645bf38d01dcd"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(oaConvert::toCellName(c.items, "lib"), QString(c.cellName));
  }
}

} // namespace
