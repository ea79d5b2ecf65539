#ifndef OACONNECTIVITYENUMS_H
#define OACONNECTIVITYENUMS_H

#include "oa/oaDesignEnums.h"

namespace OpenAccess_4 {

enum oaSigTypeEnum {
  oacSignalSigType = 0,
  oacPowerSigType = 1,
  oacGroundSigType = 2,
  oacClockSigType = 3,
  oacTieoffSigType = 4,
  oacTieHiSigType = 5,
  oacTieLoSigType = 6,
  oacAnalogSigType = 7,
  oacScanSigType = 8,
  oacResetSigType = 9
};
OA_ENUM_WRAPPER(oaSigType);

enum oaTermTypeEnum {
  oacInputTermType = 0,
  oacOutputTermType = 1,
  oacInputOutputTermType = 2,
  oacSwitchTermType = 3,
  oacJumperTermType = 4,
  oacUnusedTermType = 5,
  oacTristateTermType = 6
};
OA_ENUM_WRAPPER(oaTermType);

enum oaPlacementStatusEnum {
  oacNonePlacementStatus = 0,
  oacUnplacedPlacementStatus = 1,
  oacPlacedPlacementStatus = 2,
  oacFixedPlacementStatus = 3,
  oacLockedPlacementStatus = 4
};
OA_ENUM_WRAPPER(oaPlacementStatus);

// The order in which the bits of a bus are usually written.
enum oaBitOrderEnum { oacNoneBitOrder = 0, oacAscendingBitOrder = 1, oacDescendingBitOrder = 2 };
OA_ENUM_WRAPPER(oaBitOrder);

enum oaPinTypeEnum { oacNonePinType = 0, oacCorePinType = 1, oacBumpPinType = 2 };
OA_ENUM_WRAPPER(oaPinType);

} // namespace OpenAccess_4

#endif
