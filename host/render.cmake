# Sources of the drawing part of oahost, in `render_sources`. Its user links Qt5::Gui and Qt5::Svg. rendercommand.cpp belongs
# to the executable alone; the others make pictures of a LayoutModel without any plug-in.
set(render_sources
  layercolours.cpp
  layermap.cpp
  rendercommand.cpp
  rendergeometry.cpp
  renderindex.cpp
  renderlabels.cpp
  renderlayout.cpp
  renderpage.cpp
  renderpicture.cpp
  renderrastercanvas.cpp
  rendervectorcanvas.cpp)
