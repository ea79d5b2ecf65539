#include "units.h"

#include "classes.h"
#include "handles.h"
#include "scripterror.h"
#include "values.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
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
  int count = 0;
  Tcl_Obj **elements = nullptr;
  const Value *value = readValue(list).value;
  if (value != nullptr && (value->isObject() || !value->cls.hasLengths)) {
    return;
  }
  if (value == nullptr && Tcl_GetDoubleFromObj(nullptr, list, &number) == TCL_OK) {
    numbers.push_back(number);
    return;
  }
  if (Tcl_ListObjGetElements(nullptr, list, &count, &elements) != TCL_OK) {
    return;
  }
  // A text that is no list of several things is its own only element.
  for (int i = 0; i < count && (count > 1 || value != nullptr) && depth < kDeepest; ++i) {
    Tcl_Obj *copy = Tcl_DuplicateObj(elements[i]);
    Tcl_IncrRefCount(copy);
    collectNumbers(copy, numbers, depth + 1);
    Tcl_DecrRefCount(copy);
  }
}

std::vector<double> numbersOf(Tcl_Obj *const *arguments, int count) {
  std::vector<double> numbers;
  for (int i = 0; i < count; ++i) {
    Tcl_Obj *copy = Tcl_DuplicateObj(arguments[i]);
    Tcl_IncrRefCount(copy);
    collectNumbers(copy, numbers);
    Tcl_DecrRefCount(copy);
  }
  return numbers;
}

// As far as doubles can tell.
bool isWhole(double number) { return std::fabs(number - std::round(number)) <= 1e-9 + std::fabs(number) * 1e-15; }

// The least factor up to `most` that makes the number whole: the denominator of one of the convergents of its continued
// fraction. 0: there is none.
double wholeFactor(double number, double most) {
  double factor = 1, previous = 0;
  for (double rest = std::fabs(number); factor <= most;) {
    if (isWhole(number * factor)) {
      return factor;
    }
    rest = 1 / (rest - std::floor(rest));
    previous = std::exchange(factor, factor * std::floor(rest) + previous);
  }
  return 0;
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

void refuseVanished(Tcl_Obj *text, double dbuPerUU) {
  constexpr double kNoise = 1e-6;
  for (const double number : dbuPerUU == 1 ? numbersOf(&text, 1) : std::vector<double>()) {
    if (std::fabs(number) > kNoise) {
      throw valueError(std::string("\"") + Tcl_GetString(text) +
                       "\" is less than half a database unit: lengths of what belongs to no design count these");
    }
  }
}

double unitOfLists(Tcl_Obj *const *arguments, int count) {
  constexpr double kMost = 1 << 30;          // sums and differences of two stay in range
  constexpr double kExactProducts = 1 << 26; // areas are exact as doubles
  const std::vector<double> numbers = numbersOf(arguments, count);
  double largest = 1;
  for (const double number : numbers) {
    largest = std::max(largest, std::fabs(number));
  }
  double unit = 1;
  for (const double number : numbers) {
    const double factor = wholeFactor(number * unit, kMost / largest / unit);
    if (factor == 0) { // no fraction of any sensible unit
      return std::pow(10, std::max(0., std::floor(std::log10(kMost / largest))));
    }
    unit *= factor;
  }
  // Room for results that lie between: centres.
  for (const double factor : {10., 2.}) {
    if (unit * factor * largest < kMost) {
      unit *= factor;
      break;
    }
  }
  while (unit * 10 * largest < kExactProducts) {
    unit *= 10;
  }
  return unit;
}

bool areWhole(Tcl_Obj *const *arguments, int count, double dbuPerUU) {
  const std::vector<double> numbers = numbersOf(arguments, count);
  return std::all_of(numbers.begin(), numbers.end(), [&](double number) { return isWhole(number * dbuPerUU); });
}

} // namespace tcl
} // namespace OpenAccess_4
