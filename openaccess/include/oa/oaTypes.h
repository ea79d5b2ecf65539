// Scalar types, revision numbers and the constants that clients write without a qualifier.
#ifndef OATYPES_H
#define OATYPES_H

#include <climits>
#include <cstddef>
#include <cstdint>
#include <ctime>

// Clients compare these in #if and write them unqualified, so they are macros.
#define oacAPIMajorRevNumber 5
#define oacAPIMinorRevNumber 506
#define oacDataModelRevNumber 4

#define OA_MAJOR_RELEASE_NUM 22
#define OA_MINOR_RELEASE_NUM 50

// Access directions of a pin; they combine with |.
#define oacNone 0x0
#define oacTop 0x1
#define oacBottom 0x2
#define oacLeft 0x4
#define oacRight 0x8

// Filter flags of the collections that are named in each flag.
#define oacNetIterAll 0x0001
#define oacNetIterSingleBit 0x0002
#define oacNetIterBundle 0x0004
#define oacNetIterPreferred 0x0010
#define oacNetIterNotImplicit 0x0020
#define oacNetIterGlobal 0x0040
#define oacNetIterMask 0x007f
#define oacEquivalentNetIterAll 0x0001
#define oacEquivalentNetIterExplicit 0x0002
#define oacEquivalentNetIterImplicit 0x0004
#define oacTermIterAllNotHidden 0x0001
#define oacTermIterSingleBit 0x0002
#define oacTermIterBundle 0x0004
#define oacTermIterNotImplicit 0x0010
#define oacTermIterAll 0x0020
#define oacTermIterMask 0x003f
#define oacTermIterEquivNets 0x0100
#define oacBusTermIterAll 0x0001
#define oacBusTermIterAllNotHidden 0x0002
#define oacBusTermIterMask 0x0003
#define oacBusTermBitIterAll 0x0001
#define oacBusTermBitIterAllNotHidden 0x0002
#define oacBusTermBitIterMask 0x0003
#define oacInstIterAll 0x0000
#define oacInstIterSingleBit 0x0001
#define oacInstIterNotImplicit 0x0002
#define oacInstIterMask 0x0003
#define oacInstTermIterAllNotHidden 0x0000
#define oacInstTermIterSingleBit 0x0001
#define oacInstTermIterNotImplicit 0x0002
#define oacInstTermIterEquivNets 0x0004
#define oacInstTermIterAll 0x0010
#define oacInstTermIterMask 0x0013
#define oacShapeIterNetOnly 0x0000
#define oacShapeIterNetRoutes 0x0001
#define oacShapeIterNetPins 0x0002
#define oacViaIterNetOnly 0x0000
#define oacViaIterNetRoutes 0x0001
#define oacViaIterNetPins 0x0002

/// The answer of index searches that found nothing. Visible with and without qualification.
constexpr std::uint32_t oacNullIndex = 0xffffffffU;

namespace OpenAccess_4 {

using ::oacNullIndex;

// The digit counts bytes.
typedef signed char oaInt1;
typedef std::int16_t oaInt2;
typedef std::int32_t oaInt4;
typedef std::int64_t oaInt8;
typedef unsigned char oaUInt1;
typedef std::uint16_t oaUInt2;
typedef std::uint32_t oaUInt4;
typedef std::uint64_t oaUInt8;
typedef unsigned char oaByte;
typedef char oaChar;
typedef bool oaBoolean;
typedef float oaFloat;
typedef double oaDouble;
/// Calendar time in seconds, the C library's.
typedef std::time_t oaTime;

// Lengths and places, in database units.
typedef oaInt4 oaCoord;
typedef oaInt4 oaOffset;
typedef oaUInt4 oaDist;

typedef oaUInt4 oaLayerNum;
typedef oaUInt4 oaPurposeNum;

} // namespace OpenAccess_4

namespace oa = OpenAccess_4;

#endif
