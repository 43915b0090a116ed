# json_benchmark measures how the JSON library's time grows with the text.
add_executable(json_benchmark json_benchmark.cpp Figure.cpp)
target_link_libraries(json_benchmark PRIVATE orvane_engine orvane_warnings)
