tarnwickdale_test(host_render_test
  SOURCES render_test.cpp renderlayermap_test.cpp
  LIBRARIES host_core)
