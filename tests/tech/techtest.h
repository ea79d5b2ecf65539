#ifndef TESTS_TECH_TECHTEST_H
#define TESTS_TECH_TECHTEST_H

#include "dmtest.h"

#include <oa/oaTechDB.h>

namespace techtest {

using namespace dmtest;

// Two libraries, L and M, in a folder of the test's own.
class TechTest : public DMTest {
protected:
  TechTest() : lib(createLib("L")), other(createLib("M")) { oaTechInit(); }
  ~TechTest() override {
    lib->close();
    other->close();
  }
  // Saves, closes and opens for reading.
  static oaTech *reopened(oaTech *tech) {
    tech->save();
    tech->close();
    return oaTech::open(named("L"), 'r');
  }
  oaLib *lib;
  oaLib *other;
};

template <class Object, class Collection> std::string textOf(const Collection &collection) {
  std::string text;
  oaIter<Object> objects(collection);
  while (const Object *object = objects.getNext()) {
    oaString name;
    object->getName(name);
    text += (text.empty() ? "" : " ") + std::string(name);
  }
  return text;
}

} // namespace techtest

#endif
