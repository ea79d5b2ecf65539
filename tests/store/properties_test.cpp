#include "testdatabase.h"

#include "oa/oaBaseMsgIds.h"
#include "oa/oaProp.h"

#include <gtest/gtest.h>

using namespace storetest;

namespace {

// Names, types and texts of an object's properties, nested ones in brackets.
std::string propertiesOf(const oaObject *object) {
  std::string text;
  oaIter<oaProp> props(object->getProps());
  while (const oaProp *prop = props.getNext()) {
    oaString name, value;
    prop->getName(name);
    prop->getValue(value);
    text += std::string(name) + "=" + std::string(prop->getType().getName()) + ":" + std::string(value);
    text += prop->hasProp() ? "[" + propertiesOf(prop) + "] " : " ";
  }
  return text;
}

template <typename Action> oaUInt4 idRaisedBy(Action action) {
  try {
    action();
  } catch (const oaException &exception) {
    return exception.getMsgId();
  }
  return oacNullIndex;
}

const oaByte kBytes[] = {'a', 'b', 0, 'c'};

void addOneOfEachClass(oaObject *object) {
  oaIntProp::create(object, "int", -7);
  oaFloatProp::create(object, "float", 0.5F);
  oaDoubleProp::create(object, "double", 1.5e-06);
  oaStringProp::create(object, "string", "nch lvt");
  oaBooleanProp::create(object, "yes", true);
  oaBooleanProp::create(object, "no", false);
  oaAppProp::create(object, "app", "listFormat", 4, kBytes);
  oaAppProp::create(object, "emptyApp", "listFormat", 0, nullptr);
  oaIntRangeProp::create(object, "range", 1, 5, 9);
  oaStringArray enums;
  enums.append("slow");
  enums.append("");
  enums.append("fast");
  oaEnumProp::create(object, "speed", "fast", enums);
  oaHierProp *hier = oaHierProp::create(object, "hier");
  oaIntProp::create(oaHierProp::create(hier, "inner"), "leaf", 3);
}

const char *const kOneOfEachClass =
    "int=IntProp:-7 float=FloatProp:0.5 double=DoubleProp:1.5e-06 string=StringProp:nch lvt yes=BooleanProp:true "
    "no=BooleanProp:false app=AppProp:ab emptyApp=AppProp: range=IntRangeProp:5 speed=EnumProp:fast "
    "hier=HierProp:oaHierProp[inner=HierProp:oaHierProp[leaf=IntProp:3 ] ] ";

} // namespace

TEST(Properties, EveryClassSurvivesSavingInOrderOfCreation) {
  const TemporaryDirectory directory;
  const std::string path = directory.file("db.oa");
  TestDatabase database;
  addOneOfEachClass(database.self());
  // The row before it goes, so that owners are renumbered.
  const Row going = database.add("going", {}, kNoRow);
  const Row staying = database.add("staying", {}, kNoRow);
  oaIntProp::create(database.outlines.handle(staying), "mine", 1);
  oaIntProp::create(database.outlines.handle(going), "its", 1);
  database.destroyRow(database.outlines, going);
  database.writeTo(path);

  TestDatabase loaded;
  loaded.load(path);
  EXPECT_EQ(propertiesOf(loaded.self()), kOneOfEachClass);
  EXPECT_EQ(propertiesOf(loaded.outlines.handle(0)), "mine=IntProp:1 ");
  oaByteArray bytes;
  static_cast<oaAppProp *>(oaProp::find(loaded.self(), "app"))->getValue(bytes);
  EXPECT_EQ(std::string(reinterpret_cast<const char *>(bytes.getElements()), bytes.getNumElements()),
            std::string("ab\0c", 4));
  EXPECT_EQ(static_cast<oaAppProp *>(oaProp::find(loaded.self(), "emptyApp"))->getSize(), 0u);
  EXPECT_EQ(static_cast<oaEnumProp *>(oaProp::find(loaded.self(), "speed"))->getEnums().getCount(), 3u);
}

TEST(Properties, RefusalsNameTheirReasonAndChangeNothing) {
  TestDatabase database;
  oaObject *object = database.self();
  addOneOfEachClass(object);
  auto *range = static_cast<oaIntRangeProp *>(oaProp::find(object, "range"));
  auto *speed = static_cast<oaEnumProp *>(oaProp::find(object, "speed"));
  EXPECT_EQ(idRaisedBy([&] { oaStringProp::create(object, "int", "again"); }), oaUInt4(oacPropNameUsed));
  EXPECT_EQ(idRaisedBy([&] { speed->setName("int"); }), oaUInt4(oacPropNameUsed));
  EXPECT_EQ(idRaisedBy([&] { oaIntProp::create(object, "", 1); }), oaUInt4(oacInvalidNameLength));
  EXPECT_EQ(idRaisedBy([&] { range->setValue(10); }), oaUInt4(oacInvalidValueForIntRange));
  EXPECT_EQ(idRaisedBy([&] { oaIntRangeProp::create(object, "bad", 5, 1, 9); }), oaUInt4(oacInvalidValueForIntRange));
  EXPECT_EQ(idRaisedBy([&] { speed->setValue("slower"); }), oaUInt4(oacInvalidEnumValue));
  oaProp *hier = oaProp::find(object, "hier");
  EXPECT_EQ(idRaisedBy([&] { hier->moveTo(oaProp::find(hier, "inner")); }), oaUInt4(oacInvalidObjForProp));
  EXPECT_EQ(propertiesOf(object), kOneOfEachClass);
}

TEST(Properties, DestroyingDuringAWalkMeetsEachOnce) {
  TestDatabase database;
  addOneOfEachClass(database.self());
  oaIter<oaProp> props(database.self()->getProps());
  int met = 0;
  while (oaProp *prop = props.getNext()) {
    ++met;
    prop->destroy();
    EXPECT_FALSE(prop->isValid());
  }
  EXPECT_EQ(met, 11);
  EXPECT_FALSE(database.self()->hasProp());
  EXPECT_EQ(database.properties().countAlive(), 0u) << "nested properties go with their owner";
}

TEST(Properties, CopiesAndMovesTakeNestedPropertiesAlong) {
  TestDatabase from;
  TestDatabase to;
  addOneOfEachClass(from.self());
  oaProp *hier = oaProp::find(from.self(), "hier");
  hier->copyTo(to.self());
  EXPECT_EQ(propertiesOf(to.self()), "hier=HierProp:oaHierProp[inner=HierProp:oaHierProp[leaf=IntProp:3 ] ] ");
  oaObject *outline = from.outlines.handle(from.add("a", {}, kNoRow));
  EXPECT_EQ(hier->moveTo(outline), hier) << "a move within the database keeps the object";
  EXPECT_EQ(hier->getOwner(), outline);
  EXPECT_EQ(oaProp::find(from.self(), "hier"), nullptr);
  EXPECT_EQ(propertiesOf(outline), "hier=HierProp:oaHierProp[inner=HierProp:oaHierProp[leaf=IntProp:3 ] ] ");
}

// A file in the order of its owners, and one whose first owner got another property later.
TEST(Properties, WalksOverAFileStandChangesMeanwhile) {
  const TemporaryDirectory directory;
  const std::string path = directory.file("db.oa");
  for (const bool isInOrder : {true, false}) {
    SCOPED_TRACE(isInOrder);
    TestDatabase database;
    const Row rows[] = {database.add("a", {}, kNoRow), database.add("b", {}, kNoRow), database.add("c", {}, kNoRow)};
    for (const Row row : {rows[0], rows[2]}) {
      for (const char *name : {"p", "q", "r", "s"}) {
        oaIntProp::create(database.outlines.handle(row), name, oaInt4(row));
      }
    }
    oaStringProp::create(database.outlines.handle(rows[isInOrder ? 2 : 0]), "t", "last");
    oaStringProp::create(database.self(), "u", "of the database");
    oaStringProp::create(database.self(), "v", "too");
    database.writeTo(path);

    TestDatabase loaded;
    loaded.load(path);
    oaObject *first = loaded.outlines.handle(rows[0]);
    oaObject *last = loaded.outlines.handle(rows[2]);
    const std::string others = propertiesOf(last);
    EXPECT_FALSE(loaded.outlines.handle(rows[1])->hasProp());
    EXPECT_EQ(first->getProps().getCount(), isInOrder ? 4u : 5u);
    EXPECT_EQ(propertiesOf(loaded.self()), "u=StringProp:of the database v=StringProp:too ");

    oaIter<oaProp> walk(first->getProps());
    std::string met;
    while (oaProp *prop = walk.getNext()) {
      oaString name;
      prop->getName(name);
      met += name;
      if (name == "q") {
        oaProp::find(first, "p")->destroy();
        prop->moveTo(loaded.outlines.handle(rows[1]));
        oaIntProp::create(last, "new", 1);
      }
    }
    EXPECT_EQ(met, isInOrder ? "pqrs" : "pqrst");
    EXPECT_EQ(propertiesOf(first),
              isInOrder ? "r=IntProp:0 s=IntProp:0 " : "r=IntProp:0 s=IntProp:0 t=StringProp:last ");
    EXPECT_EQ(propertiesOf(loaded.outlines.handle(rows[1])), "q=IntProp:0 ");
    EXPECT_EQ(propertiesOf(last), others + "new=IntProp:1 ");
  }
}

TEST(Properties, OneThatBelongsToALaterOneComesBack) {
  const TemporaryDirectory directory;
  const std::string path = directory.file("db.oa");
  TestDatabase database;
  oaProp *first = oaIntProp::create(database.self(), "first", 1);
  oaHierProp *second = oaHierProp::create(database.self(), "second");
  oaHierProp *third = oaHierProp::create(database.self(), "third");
  first->moveTo(second);
  second->moveTo(third);
  database.writeTo(path);
  TestDatabase loaded;
  loaded.load(path);
  EXPECT_EQ(propertiesOf(loaded.self()), "third=HierProp:oaHierProp[second=HierProp:oaHierProp[first=IntProp:1 ] ] ");
}

TEST(Properties, CirclesInAFileAreRefused) {
  const TemporaryDirectory directory;
  const std::string path = directory.file("db.oa");
  // The owner of each property, among the properties; kNoRow: the database.
  const struct {
    const char *name;
    std::vector<Row> owners;
    std::vector<Row> circles; // one property of each
  } cases[] = {
      {"of itself", {kNoRow, 1}, {1}},
      {"of two", {1, 0}, {0}},
      {"with a tail", {1, 2, 3, 1}, {1}},
      {"two of them", {1, 0, kNoRow, 4, 3, 3}, {0, 3}},
      {"chains up and down", {3, 0, 1, kNoRow, 2}, {}},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    TestDatabase database;
    for (std::size_t i = 0; i < c.owners.size(); ++i) {
      oaHierProp::create(database.self(), std::to_string(i).c_str());
    }
    kit::PropertyTable &properties = database.properties();
    for (Row row = 0; row < c.owners.size(); ++row) {
      if (c.owners[row] != kNoRow) {
        properties.ownerTable.set(row, kit::kPropertyTable);
        properties.ownerRow.set(row, c.owners[row]);
      }
    }
    EXPECT_EQ(properties.circles(), c.circles);
    database.writeTo(path);
    EXPECT_EQ(idRaisedBy([&] {
                TestDatabase loaded;
                loaded.load(path);
                propertiesOf(loaded.self());
              }),
              c.circles.empty() ? oaUInt4(oacNullIndex) : oaUInt4(oacInvalidReference));
  }
}
