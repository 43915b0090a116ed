# The engine: plain C++ without Objective-C, built and tested on its own with any C++17 compiler.
find_package(CURL REQUIRED)
add_library(orvane_engine STATIC
  HttpRequest.cpp
  json.cpp
  jsonEquality.cpp
  jsonParser.cpp
  jsonSerializer.cpp
  OrvaneProjectsAPI.cpp
  WorkflowState.cpp)
target_include_directories(orvane_engine PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
target_link_libraries(orvane_engine PUBLIC orvane_deployment CURL::libcurl PRIVATE orvane_warnings)
set_target_properties(orvane_engine PROPERTIES CXX_VISIBILITY_PRESET hidden)
