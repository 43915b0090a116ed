# Tests of the engine. Each test file is a program of its own.
add_library(json_reference STATIC json_reference_parser.cpp)
target_include_directories(json_reference PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
target_link_libraries(json_reference PUBLIC orvane_engine PRIVATE orvane_warnings)

foreach(name json jsonParser jsonSerializer)
  add_executable(${name}_test ${name}_test.cpp)
  target_link_libraries(${name}_test PRIVATE json_reference orvane_engine orvane_test_files orvane_warnings GTest::gtest_main)
  gtest_discover_tests(${name}_test)
endforeach()

foreach(name HttpRequest OrvaneProjectsAPI)
  add_executable(${name}_test ${name}_test.cpp)
  target_link_libraries(${name}_test PRIVATE orvane_engine orvane_test_https orvane_warnings GTest::gtest_main)
  gtest_discover_tests(${name}_test)
endforeach()
