# Makes the licensed kit under OPENACCESS_ROOT look like the embedded one: the targets oaBase, oaDM, oaTech and oaDesign.
if(NOT EXISTS ${OPENACCESS_ROOT}/include/oa/oaDesignDB.h)
  message(FATAL_ERROR "OPENACCESS_ROOT is ${OPENACCESS_ROOT}, but there is no include/oa/oaDesignDB.h in it")
endif()
set(previous "")
foreach(package oaBase oaDM oaTech oaDesign)
  find_library(${package}_LIBRARY NAMES ${package} REQUIRED NO_DEFAULT_PATH
               PATHS ${OPENACCESS_ROOT}/lib ${OPENACCESS_ROOT}/lib/linux_rhel70_64/opt ${OPENACCESS_ROOT}/lib/linux_rhel60_64/opt
                     ${OPENACCESS_ROOT}/lib/opt ${OPENACCESS_ROOT}/lib64)
  add_library(${package} SHARED IMPORTED GLOBAL)
  set_target_properties(${package} PROPERTIES
    IMPORTED_LOCATION ${${package}_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES "${OPENACCESS_ROOT}/include;${OPENACCESS_ROOT}/include/oa"
    INTERFACE_LINK_LIBRARIES "${previous}")
  set(previous ${package})
endforeach()
