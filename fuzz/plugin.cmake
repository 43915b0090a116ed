# What the plug-in reads from outside: the answers of a log-in, those that the windows read, and the saved login.
find_package(CURL REQUIRED)
set(mac "${PROJECT_SOURCE_DIR}/Mac")

# orvane_fuzzer(NAME SOURCES FILE... LIBRARIES LIBRARY...): a fuzzer whose sources are all compiled for it.
function(orvane_fuzzer name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
  add_executable(${name} ${arg_SOURCES})
  target_include_directories(${name} PRIVATE "${mac}" "${PROJECT_SOURCE_DIR}/GNUstep")
  target_compile_options(${name} PRIVATE -O1 -g -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=all)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer,address,undefined)
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} orvane_warnings)
endfunction()

orvane_fuzzer(login_answers_fuzzer
  SOURCES login_answers_fuzzer.cpp "${mac}/OrvaneProjectsAPI.cpp" "${mac}/WorkflowState.cpp" ${ORVANE_JSON_SOURCES}
  LIBRARIES orvane_deployment CURL::libcurl)
orvane_fuzzer(window_answers_fuzzer
  SOURCES window_answers_fuzzer.mm "${mac}/PlatformJson.mm" "${mac}/SavedLogin.mm" "${mac}/ServiceAnswer.mm"
    "${mac}/KcKeychain/KcKeychainQuery.mm"
  LIBRARIES orvane_deployment orvane_platform orvane_security gnustep_blocks)
