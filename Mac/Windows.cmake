# The window side. The same objects go into the bundle and into the tests.
set(ORVANE_WINDOW_SOURCES
  AlertSheet.mm
  ButtonTitle.mm
  CppExceptions.cpp
  DialogWindow.mm
  ExceptionGuard.mm
  ExportController.cpp
  ExportControllerPaths.cpp
  ExportControllerTime.cpp
  ExportLifetime.cpp
  FocusRing.mm
  HostEvents.cpp
  MainThread.mm
  NSString+CompareToVersion.mm
  NSString+TrimmingAdditions.mm
  NSTextField+VerticalAlignment.mm
  OrderedDictionary.mm
  OrvaneUI.mm
  OrvaneUIController.mm
  OrvaneUploadWindowController.mm
  PictureButton.mm
  PlainLabel.mm
  PluginBundle.mm
  RoundedButton.mm
  RoundedView.mm
  SavedLogin.mm
  ServiceAnswer.mm
  SlicedButtonCell.mm
  TagButton.mm
  TagsView.mm
  UploadCompleteWindowController.mm
  UploadStatusWindowController.mm)

add_library(orvane_windows OBJECT ${ORVANE_WINDOW_SOURCES})
target_include_directories(orvane_windows PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
target_link_libraries(orvane_windows PUBLIC orvane_engine orvane_kckeychain premiere_sdk PRIVATE orvane_warnings)
target_compile_options(orvane_windows PRIVATE -Wno-unused-parameter -Wno-deprecated-declarations)
set_target_properties(orvane_windows PROPERTIES CXX_VISIBILITY_PRESET hidden OBJCXX_VISIBILITY_PRESET hidden)

if(APPLE)
  include(AppleBundle.cmake)
else()
  target_link_libraries(orvane_windows PUBLIC orvane_platform gnustep_blocks)
  include(GNUstepBundle.cmake)
endif()
