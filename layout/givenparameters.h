#ifndef GIVENPARAMETERS_H
#define GIVENPARAMETERS_H

#include <QString>
#include <QStringList>

#include "oapluginmain.h"

// The parameters that the host names for a placement; the lists run parallel.
struct HostParameters {
  QStringList names, values;
};

// What becomes of a parameter that the host sets to its default.
enum class DefaultValues {
  kFollowMaster, // it is not stored, so that the placement follows its master
  kAreGiven      // it is stored like any other value
};

// The parameters to store with a placement of lib/cell/view, each in the type that the master gives it; of a name that
// comes twice, the last value. False when there are none to store. The kit would refuse those of a master that is not
// parametric or cannot be read, and names that the master does not have: they are left out, which the host is told.
bool givenParameters(oaPlugInMain &host, const QString &lib, const QString &cell, const QString &view,
                     const HostParameters &parameters, DefaultValues defaultValues, oa::oaParamArray &params);

#endif
