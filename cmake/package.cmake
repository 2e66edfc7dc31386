# The packages that script/package makes: four of Debian, by component, and an archive of all.
set(CPACK_PACKAGE_NAME finites)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "finites developers <finites@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "element library of structural analysis")
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_STRIP_FILES ON)
set(CPACK_OUTPUT_FILE_PREFIX ${CMAKE_BINARY_DIR}/packages)
set(CPACK_COMPONENTS_ALL library development)
if(FINITES_SOLVER)
  list(APPEND CPACK_COMPONENTS_ALL solver)
endif()

# What is installed with COMPONENT python goes into python3-finites.
if(TARGET finites_python)
  list(APPEND CPACK_COMPONENTS_ALL python)
endif()

set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "Shared libraries: plain calls, routines for a solver, companions.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
  "Headers for C and C++, the Fortran module, CMake package, files of pkg-config.")
set(CPACK_COMPONENT_SOLVER_DESCRIPTION "finites-solve, a solver of decks in the form of CalculiX and Abaqus.")
set(CPACK_COMPONENT_PYTHON_DESCRIPTION "The Python package finites.")

# Archive: one, of everything, with its folder on top.
set(CPACK_ARCHIVE_COMPONENT_INSTALL OFF)

# Debian: what a program links is found by dpkg-shlibdeps; the parts of this project depend on each other by version.
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libfinites0)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libfinites-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_SOLVER_PACKAGE_NAME finites-solve)
set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-finites)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
foreach(component DEVELOPMENT SOLVER PYTHON)
  set(CPACK_COMPONENT_${component}_DEPENDS library)
endforeach()
include(CPack)
