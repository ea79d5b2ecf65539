#include "propertyitem2.h"

#include <gtest/gtest.h>

namespace {

TEST(PropertyItem, ConstructorsSetNameAndValue) {
  const struct {
    const char *name;
    propertyItem2 item;
    bool isNumber;
    const char *nameText;
    int nameNumber;
    const char *valueText;
    int valueNumber;
  } cases[] = {
      {"nothing", propertyItem2(), false, "", 0, " ", -1},
      {"integer name", propertyItem2(3), true, "3", 3, " ", -1},
      {"integer name, text value", propertyItem2(3, QString("inv")), true, "3", 3, "inv", -1},
      {"integer name, numeric text value", propertyItem2(3, QString("42")), true, "3", 3, "42", -1},
      {"integer name and value", propertyItem2(-3, 42), true, "-3", -3, "42", 42},
      {"text name and value", propertyItem2(QString("w"), QString("")), false, "w", 0, "", -1},
      {"text name", propertyItem2(QString("w")), false, "w", 0, " ", -1},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(c.item.isNum(), c.isNumber);
    EXPECT_EQ(c.item.getString(), QString(c.nameText));
    EXPECT_EQ(c.item.getNum(), c.nameNumber);
    EXPECT_EQ(c.item.getValueString(), QString(c.valueText));
    EXPECT_EQ(c.item.getValueInt(), c.valueNumber);
  }
  EXPECT_TRUE(propertyItem2().getString().isNull());
}

TEST(PropertyItem, NumberOfATextNameIsMadeOfItsDigits) {
  const struct {
    const char *name;
    int number;
  } cases[] = {{"net12a3", 123}, {"abc", 0}, {"", 0}, {"-7", 7}, {"007", 7}, {"99999999999", 0}};
  for (const auto &c : cases) {
    EXPECT_EQ(propertyItem2(QString(c.name)).getNum(), c.number) << c.name;
  }
}

TEST(PropertyItem, LastValueWins) {
  propertyItem2 item(QString("w"), QString("old"));
  item.setValue(7);
  EXPECT_EQ(item.getValueInt(), 7);
  item.setValue(1.5e-6f);
  EXPECT_EQ(item.getValueInt(), -1);
  EXPECT_EQ(item.getValueString(), QString("1.5e-06"));
  item.setValue(QString("new"));
  EXPECT_EQ(item.getValueString(), QString("new"));
}

TEST(PropertyItem, SettingATextNameReplacesTheInteger) {
  propertyItem2 item(4, QString("layout"));
  item.setName("view");
  EXPECT_FALSE(item.isNum());
  EXPECT_EQ(item.getString(), QString("view"));
  EXPECT_EQ(item.getValueString(), QString("layout"));
}

TEST(PropertyItem, FloatsHaveSixSignificantDigits) {
  const struct {
    float value;
    const char *text;
  } cases[] = {{0.1f, "0.1"},   {1234567.0f, "1.23457e+06"}, {100000.0f, "100000"}, {-2.0f, "-2"}, {0.0f, "0"},
               {1e-5f, "1e-05"}};
  for (const auto &c : cases) {
    propertyItem2 item(QString("w"));
    item.setValue(c.value);
    EXPECT_EQ(item.getValueString(), QString(c.text));
  }
}

TEST(PropertyItem, CopiesAreIndependent) {
  propertyItem2 original(QString("w"), QString("1"));
  propertyItem2 copy = original;
  original.setValue(2);
  EXPECT_EQ(copy.getValueString(), QString("1"));
}

} // namespace
