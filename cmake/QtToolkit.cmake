# The Qt that the plug-in is built with: Qt 5 from the system, or with QT_MAJOR=4 a Qt 4.8 under QT4_ROOT.
#
#   toolkit_qt                 include directories, definitions and libraries of QtCore and QtGui
#   toolkit_moc(<out-var> <header>... [INCLUDES <dir>...])
#                              runs that Qt's meta-object compiler; the sources it writes are listed in <out-var>
#   plugin_folder(<target>)    what all object libraries of the plug-in have in common

add_library(toolkit_qt INTERFACE)

if(QT_MAJOR EQUAL 5)
  find_package(Qt5 5.9 REQUIRED COMPONENTS Core Gui)
  target_link_libraries(toolkit_qt INTERFACE Qt5::Core Qt5::Gui)
  set(TOOLKIT_INCLUDE_DIRS ${Qt5Core_INCLUDE_DIRS} ${Qt5Gui_INCLUDE_DIRS})
  get_target_property(TOOLKIT_MOC Qt5::moc IMPORTED_LOCATION)
elseif(QT_MAJOR EQUAL 4)
  if(NOT QT4_ROOT)
    message(FATAL_ERROR "QT_MAJOR=4 needs QT4_ROOT, the prefix of a Qt 4.8 that holds bin/moc, include/QtCore and lib/libQtCore.so")
  endif()
  foreach(part bin/moc include/QtCore/qglobal.h include/QtGui/qpolygon.h lib/libQtCore.so lib/libQtGui.so)
    if(NOT EXISTS ${QT4_ROOT}/${part})
      message(FATAL_ERROR "QT4_ROOT is ${QT4_ROOT}, but there is no ${part} in it")
    endif()
  endforeach()
  file(STRINGS ${QT4_ROOT}/include/QtCore/qglobal.h version_line REGEX "^#define QT_VERSION_STR ")
  if(NOT version_line MATCHES "\"4\\.8\\.")
    message(FATAL_ERROR "QT4_ROOT is ${QT4_ROOT}, expected a Qt 4.8 there, but its qglobal.h says: ${version_line}")
  endif()
  set(TOOLKIT_INCLUDE_DIRS ${QT4_ROOT}/include ${QT4_ROOT}/include/QtCore ${QT4_ROOT}/include/QtGui)
  set(TOOLKIT_MOC ${QT4_ROOT}/bin/moc)
  target_include_directories(toolkit_qt SYSTEM INTERFACE ${TOOLKIT_INCLUDE_DIRS})
  target_compile_definitions(toolkit_qt INTERFACE QT_CORE_LIB QT_GUI_LIB QT_SHARED QT_NO_DEBUG)
  target_link_libraries(toolkit_qt INTERFACE ${QT4_ROOT}/lib/libQtGui.so ${QT4_ROOT}/lib/libQtCore.so)
else()
  message(FATAL_ERROR "QT_MAJOR is ${QT_MAJOR}, expected 5 or 4")
endif()

# The interface's identifier is compared as text, so plug-in, host and tests are given the same prefix.
set(TOOLKIT_DEFINITIONS "")
if(NOT OAPLUGIN_INTERFACE_PREFIX STREQUAL "org.tarnwickdale")
  list(APPEND TOOLKIT_DEFINITIONS "OAPLUGIN_INTERFACE_PREFIX=\"${OAPLUGIN_INTERFACE_PREFIX}\"")
endif()

function(toolkit_moc out_variable)
  cmake_parse_arguments(ARG "" "" "INCLUDES;DEPENDS" ${ARGN})
  set(flags "")
  foreach(directory ${CMAKE_CURRENT_SOURCE_DIR} ${ARG_INCLUDES} ${TOOLKIT_INCLUDE_DIRS})
    list(APPEND flags "-I${directory}")
  endforeach()
  foreach(definition ${TOOLKIT_DEFINITIONS})
    list(APPEND flags "-D${definition}")
  endforeach()
  set(moc_writes_dependencies OFF)
  if(QT_MAJOR EQUAL 5 AND NOT Qt5Core_VERSION VERSION_LESS 5.15)
    set(moc_writes_dependencies ON)
    list(APPEND flags --output-dep-file)
  endif()
  set(sources "")
  foreach(header ${ARG_UNPARSED_ARGUMENTS})
    get_filename_component(header ${header} ABSOLUTE)
    get_filename_component(name ${header} NAME_WE)
    set(source ${CMAKE_CURRENT_BINARY_DIR}/moc_${name}.cpp)
    set(dependencies "")
    if(moc_writes_dependencies)
      set(dependencies DEPFILE ${source}.d)
    endif()
    add_custom_command(
      OUTPUT ${source}
      COMMAND ${TOOLKIT_MOC} ${flags} -o ${source} ${header}
      DEPENDS ${header} ${ARG_DEPENDS}
      ${dependencies}
      COMMENT "Meta-object code of ${name}.h"
      VERBATIM)
    list(APPEND sources ${source})
  endforeach()
  set(${out_variable} ${sources} PARENT_SCOPE)
endfunction()

function(plugin_folder target)
  set_target_properties(${target} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  target_compile_definitions(${target} PRIVATE ${TOOLKIT_DEFINITIONS})
  if(OPENACCESS_ROOT)
    target_compile_definitions(${target} PRIVATE OAPLUGIN_LICENSED_KIT)
  endif()
endfunction()
