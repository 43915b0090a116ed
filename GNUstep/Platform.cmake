# orvane_platform goes into every module that holds the plug-in's window side. It is an object library: its categories
# and its +load are referred to by nothing, and a linker would leave them out of a plain archive.
add_library(orvane_platform OBJECT
  AccessibilityLabel.mm
  AlertPanel.mm
  AppKitAdditions.mm
  CoreFoundation.mm
  CoreServices.mm
  Dispatch.mm
  FontFallback.mm
  ModalLoop.mm
  NibLoading.mm
  NibProgressIndicator.mm
  PopUpButton.mm
  Replacements.mm
  ReturnKey.mm
  TemplateImages.mm
  TextTruncation.mm
  WindowDisplay.mm
  WorkspaceOpen.mm)
target_include_directories(orvane_platform PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}/include"
                           PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}")
find_package(Threads REQUIRED)
target_link_libraries(orvane_platform PUBLIC gnustep_appkit Threads::Threads PRIVATE orvane_warnings)
set_target_properties(orvane_platform PROPERTIES OBJCXX_VISIBILITY_PRESET hidden)
