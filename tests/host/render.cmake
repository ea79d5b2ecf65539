tarnwickdale_test(host_render_test
  SOURCES render_test.cpp renderlayermap_test.cpp
  LIBRARIES host_core)
tarnwickdale_test(host_renderschematic_test SOURCES renderschematic_test.cpp LIBRARIES host_core)
# Runs the executable on a library that the test writes.
tarnwickdale_test(host_rendercommand_test
  SOURCES rendercommand_test.cpp LIBRARIES host_core plugin_objects test_support)
target_compile_definitions(host_rendercommand_test PRIVATE OAHOST_FILE="$<TARGET_FILE:oahost>")
add_dependencies(host_rendercommand_test oahost)
