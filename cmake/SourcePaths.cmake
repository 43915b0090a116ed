# The folder of whoever builds is nobody's business, so the products do not hold it. Debuggers find the sources all the
# same: only __FILE__ is without it.
add_compile_options("-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=")
# GCC's Objective-C runtime wants every source's path in the bundle, and no option of the compiler shortens that. It is
# overwritten, in what is linked for release.
if(NOT APPLE AND CMAKE_BUILD_TYPE STREQUAL "Release")
  string(REGEX REPLACE "." "/" slashes "${PROJECT_SOURCE_DIR}")
  string(REGEX REPLACE "([][.*^$|\\])" "\\\\\\1" folder "${PROJECT_SOURCE_DIR}")
  list(APPEND CMAKE_OBJCXX_CREATE_SHARED_MODULE "env LC_ALL=C sed -i 's|${folder}|${slashes}|g' <TARGET>")
endif()
