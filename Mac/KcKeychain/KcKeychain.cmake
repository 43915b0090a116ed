# The credential store, on the Security framework.
add_library(orvane_kckeychain OBJECT KcKeychain/KcKeychain.mm KcKeychain/KcKeychainQuery.mm)
target_include_directories(orvane_kckeychain PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
target_link_libraries(orvane_kckeychain PUBLIC orvane_deployment PRIVATE orvane_warnings)
target_compile_options(orvane_kckeychain PRIVATE -Wno-deprecated-declarations)
set_target_properties(orvane_kckeychain PROPERTIES OBJCXX_VISIBILITY_PRESET hidden)
if(NOT APPLE)
  target_link_libraries(orvane_kckeychain PUBLIC orvane_security orvane_platform)
endif()
