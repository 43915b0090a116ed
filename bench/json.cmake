# json_benchmark compares the JSON library's speed with that of a well-known parser.
find_package(benchmark REQUIRED)
find_package(nlohmann_json REQUIRED)
add_executable(json_benchmark json_benchmark.cpp Figure.cpp)
target_link_libraries(json_benchmark
  PRIVATE orvane_engine orvane_warnings benchmark::benchmark nlohmann_json::nlohmann_json)
