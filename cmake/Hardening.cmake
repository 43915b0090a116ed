# What runs on Linux is built so that the ways of a fault in memory to more than an end of the process are fewer. Only where
# the compiler optimises, which the checks of buffer sizes need; sanitizers bring their own. A Mac's tools do as they do.
if(NOT APPLE AND NOT ORVANE_SANITIZE AND CMAKE_BUILD_TYPE STREQUAL "Release")
  add_compile_options(-fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
  add_link_options(LINKER:-z,relro,-z,now)
endif()
