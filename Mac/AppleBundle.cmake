# Orvane.bundle on macOS.
file(GLOB images CONFIGURE_DEPENDS Resources/Images/*.png)
file(GLOB xibs CONFIGURE_DEPENDS Resources/*.xib)
find_program(ORVANE_IBTOOL ibtool REQUIRED)
set(nibs "")
foreach(xib IN LISTS xibs)
  get_filename_component(name "${xib}" NAME_WE)
  set(nib "${CMAKE_CURRENT_BINARY_DIR}/${name}.nib")
  add_custom_command(OUTPUT "${nib}"
                     COMMAND "${ORVANE_IBTOOL}" --errors --warnings --output-format human-readable-text
                             --minimum-deployment-target ${CMAKE_OSX_DEPLOYMENT_TARGET} --target-device mac
                             --compile "${nib}" "${xib}"
                     DEPENDS "${xib}" VERBATIM)
  list(APPEND nibs "${nib}")
endforeach()

add_library(Orvane MODULE PluginEntry.cpp ${images} ${nibs})
target_link_libraries(Orvane PRIVATE orvane_workflow orvane_warnings)
target_link_options(Orvane PRIVATE "LINKER:-exported_symbol,_xExportControllerEntry")
set_source_files_properties(${images} ${nibs} PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
configure_file(Resources/Info.plist.in "${CMAKE_CURRENT_BINARY_DIR}/Info.plist.in" @ONLY)
set_target_properties(Orvane PROPERTIES BUNDLE ON BUNDLE_EXTENSION bundle LINKER_LANGUAGE OBJCXX
                      MACOSX_BUNDLE_INFO_PLIST "${CMAKE_CURRENT_BINARY_DIR}/Info.plist.in")

install(TARGETS Orvane DESTINATION "${ORVANE_PLUGIN_FOLDER}")
