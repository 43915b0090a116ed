# Tests of the window side. They link its objects; images and interface files come from the built bundle.
# Object libraries give their objects to the target that links them directly.
set(ORVANE_WINDOW_OBJECTS orvane_windows orvane_kckeychain orvane_platform orvane_security gnustep_blocks
    CACHE INTERNAL "Object libraries of the window side")

function(orvane_add_mac_test name)
  orvane_add_window_test(${name} ${name}.mm PluginResources.mm LIBRARIES ${ORVANE_WINDOW_OBJECTS} ${ARGN})
  target_compile_definitions(${name} PRIVATE ORVANE_BUNDLE_PATH="${ORVANE_BUNDLE}")
  add_dependencies(${name} orvane_bundle)
endfunction()

foreach(name IN ITEMS
    DialogWindow_test
    ExceptionGuard_test
    ExportControllerPaths_test
    NSString_test
    OrderedDictionary_test
    OrvaneUIController_test
    OrvaneUploadWindowController_test
    PictureButton_test
    RoundedButton_test
    RoundedView_test
    TagButton_test
    TagsView_test
    UploadCompleteWindowController_test
    UploadStatusWindowController_test)
  orvane_add_mac_test(${name})
endforeach()

add_executable(ExportControllerTime_test ExportControllerTime_test.cpp
               "${PROJECT_SOURCE_DIR}/Mac/ExportControllerTime.cpp")
target_include_directories(ExportControllerTime_test PRIVATE "${PROJECT_SOURCE_DIR}/Mac")
target_link_libraries(ExportControllerTime_test PRIVATE premiere_sdk orvane_warnings GTest::gtest_main)
gtest_discover_tests(ExportControllerTime_test)

# The module itself, loaded as the host loads it.
orvane_add_window_test(ExportController_test ExportController_test.mm PluginRun.mm LIBRARIES
  orvane_host_core orvane_local_trust orvane_service_core gnustep_blocks PkgConfig::LIBSECRET)
target_compile_definitions(ExportController_test PRIVATE ORVANE_BUNDLE_PATH="${ORVANE_BUNDLE}")
target_include_directories(ExportController_test PRIVATE "${PROJECT_SOURCE_DIR}/Mac")
add_dependencies(ExportController_test orvane_bundle)
set_tests_properties(ExportController_test PROPERTIES RESOURCE_LOCK installed_presets TIMEOUT 600)

add_test(NAME exported_symbols
         COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/exported_symbols_test" "${ORVANE_BUNDLE}/Contents/MacOS/Orvane")
