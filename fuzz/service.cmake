# service_fuzzer gives the local service what a client could send.
find_package(PkgConfig REQUIRED)
find_package(OpenSSL REQUIRED)
find_package(SQLiteCpp REQUIRED)
find_package(nlohmann_json REQUIRED)
pkg_check_modules(MICROHTTPD REQUIRED IMPORTED_TARGET libmicrohttpd)
pkg_check_modules(GLIB REQUIRED IMPORTED_TARGET glib-2.0)
file(GLOB ORVANE_SERVICE_SOURCES "${PROJECT_SOURCE_DIR}/Service/*.cpp")
list(REMOVE_ITEM ORVANE_SERVICE_SOURCES "${PROJECT_SOURCE_DIR}/Service/main.cpp")
orvane_fuzzer(service_fuzzer
  SOURCES service_fuzzer.cpp ${ORVANE_SERVICE_SOURCES}
  LIBRARIES orvane_deployment PkgConfig::MICROHTTPD PkgConfig::GLIB OpenSSL::Crypto SQLiteCpp
            nlohmann_json::nlohmann_json)
target_include_directories(service_fuzzer PRIVATE "${PROJECT_SOURCE_DIR}/Service")
