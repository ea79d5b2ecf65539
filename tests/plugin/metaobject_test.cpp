#include "oapluginmain.h"

#include <QMetaMethod>

#include <gtest/gtest.h>

namespace {

// In the order of their indices, with the parameter names that the host may connect by.
const struct {
  const char *signature, *names;
} kSignals[] = {
    {"disableLayer(int)", "layer"},
    {"enableLayer(int)", "layer"},
    {"setLayerName(int,QString)", "layer,name"},
    {"reportError(QString,int,QString)", ",,"},
    {"setUnits(double,double)", ","},
    {"setCurrentCell(QString)", ""},
    {"addCell(QString)", "cellname"},
    {"addCellData(QString,QString)", ","},
    {"addCellNumData(int,QString)", ","},
    {"addCellDataInt(QString,int)", ","},
    {"addCellDataFloat(QString,float)", ","},
    {"addBox(int,int,int,int,int,int)", "left,bottom,width,height,layer,datatype"},
    {"addPath(QPolygon,int,int,int,int,int,int)", "pa,layer,datatype,width,caps,bExt,eExt"},
    {"addPolygon(QPolygon,int,int)", "pa,layer,datatype"},
    {"addText(QString,QPoint,int,int,int,int,QString)", ",,width,layer,datatype,,trans"},
    {"addCellRef(QString,QPoint,QString,QString)", "cell,,trans,devicename"},
    {"addCellRefArray(QString,QPoint,int,int,int,int,QString,QString)", "cell,,sx,sy,nx,ny,trans,devicename"},
    {"existCell(QString)", "cellname"},
    {"endCell()", ""},
    {"addPolygon(QPolygon,QString)", "pa,color"},
    {"addPolyline(QPolygon,QString)", "pa,color"},
    {"addPort(QPoint,QString)", ",name"},
    {"addText(QPoint,QString,QString,int)", ",color,text,rot"},
    {"addCircle(QPoint,QPoint,QString)", ",,color"},
    {"addRect(QPoint,QPoint,QString)", ",,color"},
    {"addArc(QPolygon,QString)", "pa,color"},
    {"addWireLabel(QPoint,QString,QPoint)", ",name,offset"},
    {"addWire(QPolygon)", "pa"},
    {"addBus(QPolygon)", "pa"},
    {"addWireDot(QPoint)", ""},
    {"addGround(QPoint)", ""},
    {"setGlobal(bool)", ""},
    {"addPlacement(QString,QString,QPoint,QString)", ",,,trans"},
    {"upgradeToVectorPlacement(int,int)", "start,stop"},
    {"setVectorPlacementConnection(QString,QString)", "port,net"},
    {"setDataString(QString,QString)", ","},
    {"setDataPoint(int,QPoint)", "type,"},
    {"compPolygon(QPolygon,QString)", "pa,color"},
    {"compPolyline(QPolygon,QString)", "pa,color"},
    {"compPort(QPoint,QString)", ",name"},
    {"compText(QPoint,QString,QString)", ",color,text"},
    {"compCircle(QPoint,QPoint,QString)", ",,color"},
    {"compRect(QPoint,QPoint,QString)", ",,color"},
    {"compOffset(QPoint)", ""},
    {"compSetGlobal(bool)", ""},
    {"netlistAddNode(QString,int,bool)", "name,nodeCount,external"},
    {"netlistAddDevice(QString,QString,QStringList,QList<int>,QStringList,QStringList)",
     "devicename,cellname,connections,toNode,parameter,parameterValue"},
    {"compData(QString,int)", "data,type"},
};
const int kSignalCount = sizeof kSignals / sizeof kSignals[0];

TEST(MetaObject, SignalsHaveTheirOrderTypesAndParameterNames) {
  const QMetaObject &meta = oaPlugInMain::staticMetaObject;
  ASSERT_EQ(kSignalCount, 48);
  ASSERT_EQ(meta.methodCount() - meta.methodOffset(), kSignalCount);
  for (int i = 0; i < kSignalCount; ++i) {
    const QMetaMethod method = meta.method(meta.methodOffset() + i);
    SCOPED_TRACE(i);
    EXPECT_EQ(method.methodType(), QMetaMethod::Signal);
    EXPECT_EQ(method.methodSignature(), QByteArray(kSignals[i].signature));
    EXPECT_EQ(method.parameterNames().join(','), QByteArray(kSignals[i].names));
    EXPECT_STREQ(method.typeName(), "void");
  }
}

TEST(MetaObject, ForeignIndicesAreReducedByTheSignalsOfThisClass) {
  oaPlugInMain plugIn;
  const int beyond = oaPlugInMain::staticMetaObject.methodOffset() + kSignalCount + 5;
  void *arguments[] = {nullptr};
  EXPECT_EQ(plugIn.qt_metacall(QMetaObject::InvokeMetaMethod, beyond, arguments), 5);
}

TEST(MetaObject, CastsByName) {
  oaPlugInMain plugIn;
  oaPlugInCore *core = &plugIn;
  const struct {
    const char *name;
    void *object;
  } cases[] = {
      {"oaPlugInMain", &plugIn},
      {"oaPlugInCore", core},
      {"oaConvert", &plugIn},
      {OAPLUGIN_INTERFACE_ID, core},
      {"QObject", static_cast<QObject *>(&plugIn)},
      {"oaDump", nullptr},
      {"oaPlugInCore/1.6", nullptr},
      {"", nullptr},
      {nullptr, nullptr},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name ? c.name : "null");
    EXPECT_EQ(plugIn.qt_metacast(c.name), c.object);
  }
  EXPECT_EQ(qobject_cast<oaPlugInCore *>(static_cast<QObject *>(&plugIn)), core);
}

TEST(InterfaceIdentifier, EndsWithTheNameAndVersion) {
  EXPECT_TRUE(QString(OAPLUGIN_INTERFACE_ID).endsWith(".Tarnwickdale.oaPlugInCore/1.6"));
}

TEST(PlugInObject, SettingsAreStored) {
  oaPlugInMain plugIn;
  oaPlugInCore &core = plugIn;
  core.setLayerMax(256, 64);
  core.setGlobalNodes("vdd! gnd!");
  core.setBool(true);
  EXPECT_EQ(plugIn.layerMax, 256);
  EXPECT_EQ(plugIn.datatypeMax, 64);
  EXPECT_EQ(plugIn.globalNodes, QString("vdd! gnd!"));
  EXPECT_TRUE(plugIn.cellExistsReply);
}

} // namespace
