#include "startup.h"

#include <array>
#include <cstdio>
#include <string>

#include "buildnumber.h"
#include "oa/oaBaseInit.h"
#include "oa/oaException.h"
#include "raise.h"

namespace OpenAccess_4 {

namespace {

constexpr oaUInt4 kNewestDataModel = UINT_MAX;

bool initialised = false;
// The data model that calls have named; kNewestDataModel before the first that names one.
oaUInt4 namedDataModel = kNewestDataModel;

std::string number(oaUInt4 value) { return std::to_string(value); }

// Reads "22.50.001"; false for any other form.
bool readBuild(const char *text, std::array<unsigned, 3> &build) {
  int used = 0;
  return text && std::sscanf(text, "%4u.%4u.%4u%n", &build[0], &build[1], &build[2], &used) == 3 && text[used] == '\0';
}

oaString &writableAppBuildName() {
  static oaString &name = *new oaString;
  return name;
}

void initialise(oaUInt4 majorRev, oaUInt4 minorRev, oaUInt4 dataModelRev) {
  const std::string kitRevision = number(oacAPIMajorRevNumber) + "." + number(oacAPIMinorRevNumber);
  const std::string application =
      "the application uses revision " + number(majorRev) + "." + number(minorRev) + " of the API";
  if (majorRev != oacAPIMajorRevNumber)
    throw oaCompatibilityError(
        oacInvalidMajorAPIRev,
        (application + ", the kit provides " + kitRevision + "; the first numbers must be equal").c_str());
  if (minorRev > oacAPIMinorRevNumber)
    throw oaCompatibilityError(oacInvalidAPIRev,
                               (application + ", which is newer than the kit's " + kitRevision).c_str());
  if (dataModelRev != kNewestDataModel) {
    if (dataModelRev > oacDataModelRevNumber)
      throw oaCompatibilityError(oacInvalidDataModelRev,
                                 ("data model " + number(dataModelRev) + " was asked for, the kit's newest is " +
                                  number(oacDataModelRevNumber))
                                     .c_str(),
                                 oaString(), dataModelRev);
    if (namedDataModel != kNewestDataModel && namedDataModel != dataModelRev)
      kit::raiseBase(oacInconsistentDataModelRev,
                     "data model " + number(dataModelRev) + " was asked for after " + number(namedDataModel));
    namedDataModel = dataModelRev;
  }
  initialised = true;
}

} // namespace

namespace kit {

const oaString &kitBuildName() {
  static const oaString &name = *new oaString(OPENACCESS_BUILD_TEXT);
  return name;
}

const oaString &appBuildName() { return writableAppBuildName(); }

void requireInitialised() {
  if (!initialised)
    raiseBase(oacOpenAccessNotInitialized,
              "the kit is not started: call oaDesignInit or the init function of another layer first");
}

} // namespace kit

} // namespace OpenAccess_4

void oaBaseInit(OpenAccess_4::oaUInt4 majorRev, OpenAccess_4::oaUInt4 minorRev, OpenAccess_4::oaUInt4 dataModelRev) {
  OpenAccess_4::initialise(majorRev, minorRev, dataModelRev);
}

void oaBaseInit(OpenAccess_4::oaUInt4 majorRev, OpenAccess_4::oaUInt4 minorRev) {
  OpenAccess_4::initialise(majorRev, minorRev, OpenAccess_4::kNewestDataModel);
}

void oaBaseInitAppBuild(const char *appBuild) {
  using namespace OpenAccess_4;
  std::array<unsigned, 3> application, own;
  readBuild(OPENACCESS_BUILD_TEXT, own);
  const std::string found = appBuild ? appBuild : "";
  if (!readBuild(appBuild, application))
    throw oaCompatibilityError(oacInvalidAPIRev,
                               ("the application's build \"" + found + "\" is not of the form 22.50.001").c_str());
  if (application > own)
    throw oaCompatibilityError(oacInvalidAPIRev, ("the application was built with the kit " + found +
                                                  ", which is newer than this kit, " OPENACCESS_BUILD_TEXT)
                                                     .c_str());
  writableAppBuildName() = appBuild;
}
