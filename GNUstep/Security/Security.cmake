# The Security framework's keychain on the Secret Service.
find_package(PkgConfig REQUIRED)
pkg_check_modules(LIBSECRET REQUIRED IMPORTED_TARGET GLOBAL libsecret-1)
add_library(orvane_security OBJECT Security/Security.mm Security/KeyringItem.mm)
target_include_directories(orvane_security PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}/include")
target_link_libraries(orvane_security PUBLIC gnustep_appkit PkgConfig::LIBSECRET PRIVATE orvane_warnings)
set_target_properties(orvane_security PROPERTIES OBJCXX_VISIBILITY_PRESET hidden)
