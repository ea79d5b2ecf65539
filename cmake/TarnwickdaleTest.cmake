# tarnwickdale_test(<target> SOURCES <file>... [LIBRARIES <target>...] [INCLUDES <dir>...] [LABELS <label>...])
#
# One GoogleTest executable whose cases ctest runs one by one, in any order and in parallel. Cases labelled "slow" stay out of the
# quick run (ctest -LE slow).
# Half of a build's time would be tests. So they are not optimised, whatever the build type, and take the test library's
# headers precompiled; what they test is built as everywhere.
function(tarnwickdale_test target)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES;INCLUDES;LABELS" ${ARGN})
  add_executable(${target} ${ARG_SOURCES})
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN/../lib")
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support ${ARG_INCLUDES})
  target_link_libraries(${target} PRIVATE ${ARG_LIBRARIES} GTest::gmock GTest::gtest_main)
  target_compile_options(${target} PRIVATE -O0 -fPIC)
  target_precompile_headers(${target} REUSE_FROM test_headers)
  gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300 LABELS "${ARG_LABELS}")
endfunction()

# tarnwickdale_plugin_fixture(<target> <file>...)
#
# What the tests of one room of the plug-in have in common, compiled once: its objects are among the SOURCES of each test. The
# plug-in's own objects come with the test.
function(tarnwickdale_plugin_fixture target)
  add_library(${target} OBJECT ${ARGN})
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support
    $<TARGET_PROPERTY:plugin_objects,INTERFACE_INCLUDE_DIRECTORIES>)
  target_compile_definitions(${target} PRIVATE ${TOOLKIT_DEFINITIONS})
  target_link_libraries(${target} PRIVATE toolkit_qt oaDesign oaTech oaDM oaBase GTest::gmock)
  target_compile_options(${target} PRIVATE -O0 -fPIC)
  target_precompile_headers(${target} REUSE_FROM test_headers)
endfunction()
