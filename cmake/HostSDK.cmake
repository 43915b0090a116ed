# The host's interface: our own declarations, or with PREMIERE_SDK_DIR the vendor's headers of the same names.
set(PREMIERE_SDK_DIR "" CACHE PATH "Folder with the vendor's SDK headers; empty for the declarations in PremiereSDK/Headers")
add_library(premiere_sdk INTERFACE)
if(PREMIERE_SDK_DIR)
  target_include_directories(premiere_sdk SYSTEM INTERFACE "${PREMIERE_SDK_DIR}")
else()
  target_include_directories(premiere_sdk INTERFACE "${CMAKE_SOURCE_DIR}/PremiereSDK/Headers")
endif()
