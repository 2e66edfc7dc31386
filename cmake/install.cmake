# Where the parts go, and to which package each belongs (cmake/package.cmake): what a program needs that runs, "library";
# the rest of what a program needs that is compiled, "development", which is the default; "solver".
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME development)

# install_library(target): a shared library that callers link. Its link without a version is for compilers.
function(install_library target)
  install(TARGETS ${target} EXPORT finites
    LIBRARY DESTINATION lib COMPONENT library NAMELINK_COMPONENT development
    INCLUDES DESTINATION include)
endfunction()
