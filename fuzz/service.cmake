# service_upload_fuzzer and service_parsers_fuzzer give the local service what a client could send. Clang only; they take
# libFuzzer's usual options.
find_package(PkgConfig REQUIRED)
find_package(OpenSSL REQUIRED)
find_package(SQLite3 REQUIRED)
find_package(nlohmann_json REQUIRED)
pkg_check_modules(CPP_HTTPLIB REQUIRED IMPORTED_TARGET cpp-httplib)
set(ORVANE_SERVICE_SOURCES Answers.cpp Catalog.cpp Customers.cpp Database.cpp FileResponse.cpp FileStore.cpp FormBody.cpp
  HostNames.cpp Html.cpp MultipartParser.cpp RequestHead.cpp RequestStream.cpp ReviewPages.cpp Secrets.cpp UnprovenUploads.cpp UploadForm.cpp)
list(TRANSFORM ORVANE_SERVICE_SOURCES PREPEND "${PROJECT_SOURCE_DIR}/Service/")
# One library for both, so that its sources are compiled once.
add_library(orvane_service_fuzzed STATIC ${ORVANE_SERVICE_SOURCES})
target_include_directories(orvane_service_fuzzed PUBLIC "${PROJECT_SOURCE_DIR}/Service")
target_compile_options(orvane_service_fuzzed
  PUBLIC -O1 -g -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
target_link_libraries(orvane_service_fuzzed PUBLIC PkgConfig::CPP_HTTPLIB OpenSSL::Crypto SQLite::SQLite3
  nlohmann_json::nlohmann_json orvane_warnings)
foreach(FUZZER service_upload_fuzzer service_parsers_fuzzer)
  add_executable(${FUZZER} ${FUZZER}.cpp)
  target_link_options(${FUZZER} PRIVATE -fsanitize=fuzzer,address,undefined)
  target_link_libraries(${FUZZER} PRIVATE orvane_service_fuzzed)
endforeach()
