# The benchmarks of the windows. Each is the plug-in's own objects in a small application, and talks to a service in a
# process of its own.
find_package(nlohmann_json REQUIRED)
add_executable(bench_sink bench_sink.cpp FolderTree.cpp SinkServer.cpp)
target_link_libraries(bench_sink PRIVATE orvane_service_core orvane_warnings)

add_library(orvane_bench STATIC
  Application.mm
  CurlProgram.cpp
  Figure.cpp
  FolderTree.cpp
  MainLoopWatch.mm
  PluginUpload.mm
  ProcessMemory.cpp
  RunReporting.cpp
  SinkProcess.cpp)
target_compile_definitions(orvane_bench
  PRIVATE ORVANE_BENCH_SINK="$<TARGET_FILE:bench_sink>" ORVANE_BUNDLE_PATH="${ORVANE_BUNDLE}")
target_include_directories(orvane_bench PUBLIC
  "${CMAKE_CURRENT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/Mac")
target_link_libraries(orvane_bench
  PUBLIC orvane_host_core orvane_engine gnustep_appkit PRIVATE orvane_warnings nlohmann_json::nlohmann_json)
target_include_directories(orvane_bench PRIVATE "$<TARGET_PROPERTY:orvane_theme,INTERFACE_INCLUDE_DIRECTORIES>")
add_dependencies(orvane_bench bench_sink orvane_bundle)

foreach(name IN ITEMS upload_benchmark listing_benchmark)
  add_executable(${name} ${name}.mm)
  target_link_libraries(${name} PRIVATE orvane_bench orvane_local_trust orvane_theme orvane_windows
    gnustep_appkit orvane_warnings)
endforeach()

# This one loads the bundle as the host does, and links nothing of it.
add_executable(export_benchmark export_benchmark.mm)
target_compile_definitions(export_benchmark PRIVATE ORVANE_BUNDLE_PATH="${ORVANE_BUNDLE}")
target_link_libraries(export_benchmark PRIVATE orvane_bench orvane_local_trust orvane_theme orvane_deployment
  gnustep_appkit gnustep_blocks orvane_warnings)
