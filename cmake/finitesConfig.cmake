# find_package(finites) gives
#
#   finites::elements   the plain calls (elements.h, elements.hpp)
#   finites::finites    the routines for a solver (finites.h), which brings finites::tarnix with it
#   finites::tarnix, finites::morvenik, finites::vornekal
#   finites::fortran    the Fortran module finites_library over both, in a project that has Fortran enabled: it compiles
#                       the module once with the compiler of the project
#
# The companions are also called finites::Tarnix, finites::Morvenik, finites::Vornekal.
include(${CMAKE_CURRENT_LIST_DIR}/finitesTargets.cmake)

foreach(name Tarnix Morvenik Vornekal)
  string(TOLOWER ${name} lower)
  if(NOT TARGET finites::${lower})
    add_library(finites::${lower} ALIAS finites::${name})
  endif()
endforeach()

get_property(finites_languages GLOBAL PROPERTY ENABLED_LANGUAGES)
if("Fortran" IN_LIST finites_languages AND NOT TARGET finites_fortran)
  get_filename_component(finites_prefix ${CMAKE_CURRENT_LIST_DIR}/../../.. ABSOLUTE)
  set(finites_modules ${CMAKE_CURRENT_BINARY_DIR}/finites_modules)
  add_library(finites_fortran STATIC EXCLUDE_FROM_ALL ${finites_prefix}/include/finites/finites.f90)
  set_target_properties(finites_fortran PROPERTIES
    Fortran_MODULE_DIRECTORY ${finites_modules} POSITION_INDEPENDENT_CODE ON)
  target_include_directories(finites_fortran PUBLIC ${finites_modules})
  target_link_libraries(finites_fortran PUBLIC finites::elements finites::finites)
  add_library(finites::fortran ALIAS finites_fortran)
endif()
