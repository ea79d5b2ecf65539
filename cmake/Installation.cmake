# What `cmake --install` lays out:
#
#   bin/oahost, bin/oacheck
#   lib/liboaplugin.so                       the plug-in
#   lib/liboa{Base,DM,Tech,Design,Tcl}.so    the embedded kit
#   data/plugins/                            evaluators of parametric cells: that for Tcl scripts, and the examples
#   lib/cmake/TarnwickdaleOpenAccess/        CMake package: targets oa::oaBase, oa::oaDM, oa::oaTech, oa::oaDesign
#   lib/pkgconfig/tarnwickdale-openaccess.pc
#   include/oa/                              the kit's public headers
#   include/tarnwickdale/oaplugincore.h      the interface between host and plug-in
#   share/doc/tarnwickdale/                  licence, README, docs
#
# Everything finds its neighbours relative to itself, so an installed tree may be moved. With a licensed kit only the plug-in, the
# interface header, the host and the documents are installed.
include(CMakePackageConfigHelpers)

# The plug-in and oahost are installed by their own folders.
install(FILES ${PROJECT_SOURCE_DIR}/plugin/oaplugincore.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tarnwickdale)
set(document_dir ${CMAKE_INSTALL_DATAROOTDIR}/doc/tarnwickdale)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_SOURCE_DIR}/README.md DESTINATION ${document_dir})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION ${document_dir})

if(OPENACCESS_ROOT)
  return()
endif()

set(kit_libraries oaBase oaDM oaTech oaDesign)
set(package TarnwickdaleOpenAccess)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/${package})
install(TARGETS ${kit_libraries} EXPORT ${package} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT ${package} FILE ${package}Targets.cmake NAMESPACE oa:: DESTINATION ${package_dir})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/openaccess/include/oa DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        FILES_MATCHING PATTERN "*.h")

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/${package}Config.cmake.in
  ${CMAKE_BINARY_DIR}/package/${package}Config.cmake
  INSTALL_DESTINATION ${package_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/package/${package}ConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/package/${package}Config.cmake
              ${CMAKE_BINARY_DIR}/package/${package}ConfigVersion.cmake
        DESTINATION ${package_dir})

file(RELATIVE_PATH prefix_from_pkgconfig /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(${PROJECT_SOURCE_DIR}/cmake/tarnwickdale-openaccess.pc.in
  ${CMAKE_BINARY_DIR}/package/tarnwickdale-openaccess.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/package/tarnwickdale-openaccess.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
