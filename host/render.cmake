# Sources of the drawing part of oahost, in `render_sources`. Its user links Qt5::Gui and Qt5::Svg. rendercommand.cpp belongs
# to the executable alone; the others make pictures of a LayoutModel or a SchematicModel without any plug-in.
set(render_sources
  evaluatedtext.cpp
  gridfinder.cpp
  junctionsides.cpp
  layercolours.cpp
  layermap.cpp
  picturefile.cpp
  rendercommand.cpp
  rendergeometry.cpp
  renderindex.cpp
  renderlabels.cpp
  renderlayout.cpp
  renderpage.cpp
  renderpicture.cpp
  renderrastercanvas.cpp
  renderschematic.cpp
  rendervectorcanvas.cpp
  schematiccolours.cpp
  schematicgeometry.cpp
  schematicpicture.cpp
  schematicscene.cpp
  schematictext.cpp)
