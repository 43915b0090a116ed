# Orvane.bundle on Linux: the macOS layout, and beside it the links by which GNUstep's NSBundle finds its way in.
add_library(Orvane MODULE)
target_link_libraries(Orvane PRIVATE orvane_windows orvane_kckeychain orvane_platform orvane_security gnustep_blocks)
target_link_options(Orvane PRIVATE "LINKER:--version-script=${CMAKE_CURRENT_SOURCE_DIR}/exports.map" "LINKER:--no-undefined")
if(ORVANE_SANITIZE)
  # The sanitizers' runtime is in the host's executable.
  target_link_options(Orvane PRIVATE "LINKER:-z,undefs")
endif()
set_target_properties(Orvane PROPERTIES PREFIX "" SUFFIX "" LINKER_LANGUAGE OBJCXX
                      LINK_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/exports.map")

set(ORVANE_BUNDLE "${CMAKE_BINARY_DIR}/Orvane.bundle" CACHE INTERNAL "The built bundle")
set(contents "${ORVANE_BUNDLE}/Contents")
set_target_properties(Orvane PROPERTIES LIBRARY_OUTPUT_DIRECTORY "${contents}/MacOS")

configure_file(Resources/Info.plist.in "${CMAKE_CURRENT_BINARY_DIR}/Info.plist" @ONLY)
file(GLOB images CONFIGURE_DEPENDS Resources/Images/*.png "${PROJECT_SOURCE_DIR}/GNUstep/Images/*.png")
file(GLOB xibs CONFIGURE_DEPENDS Resources/*.xib)
set(resources "")

foreach(image IN LISTS images)
  get_filename_component(name "${image}" NAME)
  add_custom_command(OUTPUT "${contents}/Resources/${name}"
                     COMMAND ${CMAKE_COMMAND} -E copy "${image}" "${contents}/Resources/${name}"
                     DEPENDS "${image}" VERBATIM)
  list(APPEND resources "${contents}/Resources/${name}")
endforeach()

foreach(xib IN LISTS xibs)
  get_filename_component(name "${xib}" NAME)
  add_custom_command(OUTPUT "${contents}/Resources/${name}"
                     COMMAND sed -E -f "${PROJECT_SOURCE_DIR}/GNUstep/xib_fonts.sed" "${xib}" > "${contents}/Resources/${name}"
                     DEPENDS "${xib}" "${PROJECT_SOURCE_DIR}/GNUstep/xib_fonts.sed" VERBATIM)
  list(APPEND resources "${contents}/Resources/${name}")
endforeach()

# GNUstep looks for Resources/ and the executable in the bundle's root, and for Info.plist in Resources/.
add_custom_command(OUTPUT "${contents}/Info.plist"
                   COMMAND ${CMAKE_COMMAND} -E make_directory "${contents}/Resources"
                   COMMAND ${CMAKE_COMMAND} -E copy "${CMAKE_CURRENT_BINARY_DIR}/Info.plist" "${contents}/Info.plist"
                   COMMAND ${CMAKE_COMMAND} -E create_symlink ../Info.plist "${contents}/Resources/Info.plist"
                   COMMAND ${CMAKE_COMMAND} -E create_symlink Contents/Resources "${ORVANE_BUNDLE}/Resources"
                   COMMAND ${CMAKE_COMMAND} -E create_symlink Contents/MacOS/Orvane "${ORVANE_BUNDLE}/Orvane"
                   DEPENDS "${CMAKE_CURRENT_BINARY_DIR}/Info.plist" VERBATIM)
add_custom_target(orvane_bundle ALL DEPENDS Orvane ${resources} "${contents}/Info.plist")

install(DIRECTORY "${ORVANE_BUNDLE}" USE_SOURCE_PERMISSIONS
        DESTINATION "/Library/Application Support/Adobe/Common/Plug-ins/7.0/MediaCore/OrvaneVorrel")
