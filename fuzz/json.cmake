# json_fuzzer gives the JSON parser texts of libFuzzer's making. Clang only; it takes libFuzzer's usual options.
set(ORVANE_JSON_SOURCES json.cpp jsonEquality.cpp jsonParser.cpp jsonSerializer.cpp)
list(TRANSFORM ORVANE_JSON_SOURCES PREPEND "${PROJECT_SOURCE_DIR}/Mac/")
add_executable(json_fuzzer json_fuzzer.cpp ${ORVANE_JSON_SOURCES})
target_include_directories(json_fuzzer PRIVATE "${PROJECT_SOURCE_DIR}/Mac")
target_compile_options(json_fuzzer PRIVATE -O1 -g -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=all)
target_link_options(json_fuzzer PRIVATE -fsanitize=fuzzer,address,undefined)
target_link_libraries(json_fuzzer PRIVATE orvane_warnings)
