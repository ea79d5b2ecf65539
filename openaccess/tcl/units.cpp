#include "units.h"

#include "classes.h"
#include "handles.h"
#include "scripterror.h"
#include "values.h"

#include <cmath>
#include <limits>
#include <vector>

namespace OpenAccess_4 {
namespace tcl {

namespace {

// What oaBlock::getDBUPerUU() answers, for a design that has no block as well.
double dbuPerUUOfDesign(const oaDesign *design) {
  const oaTech *tech = design->getTech();
  const oaViewType *type = design->getViewType();
  return tech == nullptr ? oaTech::getDefaultDBUPerUU(type) : tech->getDBUPerUU(type);
}

template <class Integer> Integer rounded(double uu, double dbuPerUU, const char *what) {
  const double dbu = std::round(uu * dbuPerUU);
  if (!(dbu >= std::numeric_limits<Integer>::min() && dbu <= std::numeric_limits<Integer>::max())) {
    throw valueError(std::string(what) + " " + std::to_string(uu) + " at " + std::to_string(long(dbuPerUU)) +
                     " database units per user unit is out of range");
  }
  return static_cast<Integer>(dbu);
}

// `list` is taken apart for good: a copy of the caller's. No list of lengths is nested deeper than kDeepest.
constexpr int kDeepest = 8;
void collectNumbers(Tcl_Obj *list, std::vector<double> &numbers, int depth = 0) {
  double number = 0;
  if (Tcl_GetDoubleFromObj(nullptr, list, &number) == TCL_OK) {
    numbers.push_back(number);
    return;
  }
  int count = 0;
  Tcl_Obj **elements = nullptr;
  if (readValue(list).value != nullptr || Tcl_ListObjGetElements(nullptr, list, &count, &elements) != TCL_OK) {
    return;
  }
  // A text that is no list of several things is its own only element.
  for (int i = 0; i < count && count > 1 && depth < kDeepest; ++i) {
    Tcl_Obj *copy = Tcl_DuplicateObj(elements[i]);
    Tcl_IncrRefCount(copy);
    collectNumbers(copy, numbers, depth + 1);
    Tcl_DecrRefCount(copy);
  }
}

bool areWhole(const std::vector<double> &numbers, double unit) {
  for (const double number : numbers) {
    if (std::fabs(number * unit - std::round(number * unit)) > 1e-6) {
      return false;
    }
  }
  return true;
}

} // namespace

double dbuPerUUOf(oaObject *object) {
  if (const oaDesign *design = designOfObject(object)) {
    return dbuPerUUOfDesign(design);
  }
  const ClassInfo &cls = managedClass(object->getType());
  if (cls.distanceTo(classOf<oaProp>()) >= 0) {
    return dbuPerUUOf(static_cast<oaProp *>(object)->getOwner());
  }
  if (cls.distanceTo(classOf<oaTechObject>()) >= 0) {
    const oaTech *tech =
        object->isTech() ? static_cast<oaTech *>(object) : static_cast<oaTechObject *>(object)->getTech();
    return tech->getDBUPerUU(oaViewType::get(oacMaskLayout));
  }
  throw ScriptError{std::string("a ") + cls.name + " has no user units", "OA NOTECH"};
}

oaCoord toCoordinate(double uu, double dbuPerUU) { return rounded<oaCoord>(uu, dbuPerUU, "coordinate"); }
oaDist toDistance(double uu, double dbuPerUU) { return rounded<oaDist>(uu, dbuPerUU, "distance"); }

Tcl_Obj *newLength(oaInt8 dbu, double dbuPerUU) {
  if (dbuPerUU == 1) {
    return Tcl_NewWideIntObj(dbu);
  }
  return Tcl_NewDoubleObj(static_cast<double>(dbu) / dbuPerUU);
}

double unitOfList(Tcl_Obj *const *arguments, int count) {
  std::vector<double> numbers;
  for (int i = 0; i < count; ++i) {
    Tcl_Obj *copy = Tcl_DuplicateObj(arguments[i]);
    Tcl_IncrRefCount(copy);
    collectNumbers(copy, numbers);
    Tcl_DecrRefCount(copy);
  }
  for (const double unit : {1., 10., 100., 160., 1000., 1600., 2000., 10000., 16000., 20000.}) {
    if (areWhole(numbers, unit)) {
      return unit;
    }
  }
  return 100000;
}

} // namespace tcl
} // namespace OpenAccess_4
