# Makes the licensed kit under OPENACCESS_ROOT look like the embedded one: the targets oaBase, oaDM, oaTech and oaDesign, and
# oaTcl where the kit has its Tcl binding.
if(NOT EXISTS ${OPENACCESS_ROOT}/include/oa/oaDesignDB.h)
  message(FATAL_ERROR "OPENACCESS_ROOT is ${OPENACCESS_ROOT}, but there is no include/oa/oaDesignDB.h in it")
endif()
set(kit_library_dirs ${OPENACCESS_ROOT}/lib ${OPENACCESS_ROOT}/lib/linux_rhel70_64/opt ${OPENACCESS_ROOT}/lib/linux_rhel60_64/opt
                     ${OPENACCESS_ROOT}/lib/opt ${OPENACCESS_ROOT}/lib64)
set(previous "")
foreach(package oaBase oaDM oaTech oaDesign)
  find_library(${package}_LIBRARY NAMES ${package} REQUIRED NO_DEFAULT_PATH
               PATHS ${kit_library_dirs})
  add_library(${package} SHARED IMPORTED GLOBAL)
  set_target_properties(${package} PROPERTIES
    IMPORTED_LOCATION ${${package}_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES "${OPENACCESS_ROOT}/include;${OPENACCESS_ROOT}/include/oa"
    INTERFACE_LINK_LIBRARIES "${previous}")
  set(previous ${package})
endforeach()

# Without the binding the plug-in is built all the same; its three Tcl operations then tell that they are not available.
find_library(oaTcl_LIBRARY NAMES oaTcl NO_DEFAULT_PATH PATHS ${kit_library_dirs} PATH_SUFFIXES tcl)
find_path(oaTcl_INCLUDE_DIR oaTclEngineFactory.h NO_DEFAULT_PATH PATHS ${OPENACCESS_ROOT}/include
          PATH_SUFFIXES oa oaTcl oaLang/oaTcl)
if(oaTcl_LIBRARY AND oaTcl_INCLUDE_DIR)
  add_library(oaTcl SHARED IMPORTED GLOBAL)
  set_target_properties(oaTcl PROPERTIES
    IMPORTED_LOCATION ${oaTcl_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${oaTcl_INCLUDE_DIR}
    INTERFACE_LINK_LIBRARIES oaDesign)
else()
  message(STATUS "No Tcl binding under ${OPENACCESS_ROOT} (library oaTcl, header oaTclEngineFactory.h): built without it")
endif()
