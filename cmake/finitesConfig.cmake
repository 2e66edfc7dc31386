# find_package(finites): the targets finites::finites, which brings finites::Tarnix with it, and finites::Morvenik.
include(${CMAKE_CURRENT_LIST_DIR}/finitesTargets.cmake)
