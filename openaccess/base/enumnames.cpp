// Text names of the base layer's enumerations.
#include "oa/oaDomain.h"
#include "oa/oaNameSpace.h"
#include "oa/oaOrient.h"
#include "oa/oaParam.h"
#include "oa/oaType.h"
#include "raise.h"

namespace OpenAccess_4 {

OA_ENUM_NAMES(oaOrient, raiseBase, oacInvalidOrientName, "orientation", "R0", "R90", "R180", "R270", "MY", "MYR90",
              "MX", "MXR90")

OA_ENUM_NAMES(oaParamType, raiseBase, oacInvalidParamTypeName, "parameter type", "intParam", "floatParam",
              "stringParam", "appParam", "doubleParam", "booleanParam", "timeParam")

// There are no numbers of their own for wrong texts of these two.
OA_ENUM_NAMES(oaNameType, raiseBase, oacInvalidEnumValue, "name type", "empty", "scalarName", "vectorName",
              "vectorBitName", "bundleName")

OA_ENUM_NAMES_AT(oaDomain, raiseBase, oacInvalidEnumValue, "domain", {oacNoDomain, "none"}, {oacBlockDomain, "block"},
                 {oacOccDomain, "occurrence"}, {oacModDomain, "module"}, {oacFutureDomain, "future"})

// In the order of oaTypeEnum.
OA_ENUM_NAMES(
    oaType, raiseBase, oacInvalidObjectTypeName, "object type", "Unknown", "Session", "Lib", "Tech", "Design", "Wafer",
    "Block", "Module", "Occurrence", "LPPHeader", "LayerHeader", "Arc", "Donut", "Dot", "Ellipse", "Line", "Path",
    "PathSeg", "Polygon", "Rect", "Text", "EvalText", "PropDisplay", "AttrDisplay", "TextOverride", "InstPropDisplay",
    "InstAttrDisplay", "Route", "Marker", "TrackPattern", "Row", "RowHeader", "Pin", "Cluster", "AreaBoundary",
    "PRBoundary", "SnapBoundary", "ClusterBoundary", "AreaBlockage", "AreaHalo", "LayerBlockage", "LayerHalo",
    "Steiner", "StdVia", "CustomVia", "StdViaHeader", "CustomViaHeader", "GCellPattern", "CMap", "ArrayInst",
    "ScalarInst", "VectorInst", "VectorInstBit", "VectorInstDef", "BundleNet", "BusNet", "BusNetBit", "ScalarNet",
    "BusNetDef", "BundleTerm", "BusTerm", "BusTermBit", "ScalarTerm", "BusTermDef", "InstTerm", "NetConnectDef",
    "TermConnectDef", "AssignValue", "AssignAssignment", "ScanChain", "ScanChainInst", "ScanChainSet", "InstHeader",
    "OccScalarInst", "OccVectorInst", "OccVectorInstBit", "OccVectorInstDef", "OccBundleNet", "OccBusNet",
    "OccBusNetBit", "OccScalarNet", "OccBusNetDef", "OccBundleTerm", "OccBusTerm", "OccBusTermBit", "OccScalarTerm",
    "OccBusTermDef", "OccInstTerm", "OccNetConnectDef", "OccTermConnectDef", "OccAssignValue", "OccAssignAssignment",
    "ObsoleteType92", "ObsoleteType93", "ObsoleteType94", "OccInstHeader", "ModScalarInst", "ModVectorInst",
    "ModVectorInstBit", "ModVectorInstDef", "ModBundleNet", "ModBusNet", "ModBusNetBit", "ModScalarNet", "ModBusNetDef",
    "ModBundleTerm", "ModBusTerm", "ModBusTermBit", "ModScalarTerm", "ModBusTermDef", "ModInstTerm", "ModNetConnectDef",
    "ModTermConnectDef", "ModAssignValue", "ModAssignAssignment", "ObsoleteType115", "ObsoleteType116",
    "ObsoleteType117", "ModInstHeader", "ModModuleScalarInst", "ModModuleVectorInst", "ModModuleVectorInstBit",
    "OccArrayInst", "OccModuleScalarInst", "OccModuleVectorInst", "OccModuleVectorInstBit", "OccModuleInstHeader",
    "ModModuleInstHeader", "AnalysisPoint", "AnalysisOpPoint", "OpPointHeader", "ReducedDriver", "ParasiticNetwork",
    "SubNetwork", "SubNetworkMem", "Resistor", "CouplingCap", "Inductor", "Diode", "SeriesRL", "MutualInductor",
    "ExternalDevice", "Node", "GroundedNode", "Guide", "LumpedElmore", "PiElmore", "PiPoleResidue", "Elmore",
    "PoleResidue", "OccArc", "OccDonut", "OccDot", "OccEllipse", "OccLine", "OccPath", "OccPathSeg", "OccPolygon",
    "OccRect", "OccText", "OccEvalText", "OccPropDisplay", "OccAttrDisplay", "OccTextOverride", "OccInstPropDisplay",
    "OccInstAttrDisplay", "IntProp", "IntRangeProp", "FloatProp", "FloatRangeProp", "StringProp", "AppProp",
    "DoubleProp", "DoubleRangeProp", "BooleanProp", "HierProp", "TimeProp", "TimeRangeProp", "EnumProp", "Group",
    "GroupMember", "PhysicalLayer", "DerivedLayer", "SizedLayer", "Purpose", "ScalarSiteDef", "ArraySiteDef", "ViaSpec",
    "StdViaDef", "CustomViaDef", "OpPoint", "AnalysisLib", "AppObject", "Cell", "View", "CellView", "DMFile",
    "WaferDesc", "Frame", "Reticle", "ReticleRef", "WaferFeature", "StepperMap", "Image", "FrameInst", "DesignInst",
    "ViewType", "ConstraintParamDef", "ConstraintParam", "SimpleConstraintDef", "LayerConstraintDef",
    "LayerPairConstraintDef", "SimpleConstraint", "LayerConstraint", "LayerPairConstraint", "ConstraintGroup",
    "ConstraintGroupMem", "ConstraintGroupHeader", "BooleanValue", "IntValue", "FltValue", "LayerArrayValue",
    "Int1DTblValue", "Flt1DTblValue", "Int2DTblValue", "Flt2DTblValue", "IntFltTblValue", "FltIntFltTblValue",
    "DualIntValue", "DualInt1DTblValue", "BoxArrayValue", "ValueArrayValue", "ViaDefArrayValue", "LayerValue",
    "AntennaRatioValue", "AntennaRatioArrayValue", "ViaDef2DTblValue", "IntAppDef", "FloatAppDef", "StringAppDef",
    "IntraPointerAppDef", "InterPointerAppDef", "DataAppDef", "VarDataAppDef", "TimeAppDef", "DoubleAppDef",
    "VoidPointerAppDef", "BooleanAppDef", "AppObjectDef", "LibDefList", "LibDef", "LibDefListRef", "LibDMData",
    "CellDMData", "ViewDMData", "CellViewDMData", "Feature", "FigGroup", "FigGroupMem", "TechHeader", "TechLayerHeader",
    "TechViaDefHeader", "LayerArrayConstraintDef", "LayerArrayConstraint", "UInt8Value", "IntDualIntArrayTblValue",
    "IntRangeValue", "UInt8RangeValue", "DerivedLayerParamDef", "DerivedLayerParam", "DerivedLayerDef", "PurposeValue",
    "ConstraintGroupDef", "StdViaVariant", "CustomViaVariant", "TechViaVariantHeader", "DesignViaVariantHeader",
    "ViaTopologyArrayValue", "ViaTopology2DTblValue", "StringValue", "LayerRangeBlockage", "LayerRangeHalo",
    "IntRangeArrayValue", "IntRangeArray1DTblValue", "IntRangeArray2DTblValue", "FlatGroupDef", "HierGroupDef")

} // namespace OpenAccess_4
