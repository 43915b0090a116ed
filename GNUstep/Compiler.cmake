# How Objective-C++ is compiled for GNUstep: clang, with GCC's Objective-C runtime that Debian's GNUstep is built on.
if(NOT CMAKE_OBJCXX_COMPILER_ID MATCHES "Clang")
  message(FATAL_ERROR "The window side needs clang++ (blocks); set CMAKE_OBJCXX_COMPILER=clang++.")
endif()
find_program(ORVANE_GCC NAMES gcc-12 gcc REQUIRED)
execute_process(COMMAND "${ORVANE_GCC}" -print-file-name=include
                OUTPUT_VARIABLE ORVANE_OBJC_INCLUDE OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

# gnustep_appkit: Foundation and AppKit under Apple's header names, for every target that holds .mm files.
# gcc's folder goes last (-idirafter): it holds objc/, but also headers that would hide clang's own.
add_library(gnustep_appkit INTERFACE)
target_include_directories(gnustep_appkit INTERFACE "${CMAKE_CURRENT_SOURCE_DIR}/include")
target_compile_options(gnustep_appkit INTERFACE
  "$<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-runtime=gcc;-fblocks;-fexceptions;-fobjc-exceptions;-fconstant-string-class=NSConstantString;-Wno-unknown-pragmas>"
  "SHELL:$<$<COMPILE_LANGUAGE:OBJCXX>:-isystem /usr/include/GNUstep>"
  "SHELL:$<$<COMPILE_LANGUAGE:OBJCXX>:-idirafter ${ORVANE_OBJC_INCLUDE}>")
target_compile_definitions(gnustep_appkit INTERFACE
  $<$<COMPILE_LANGUAGE:OBJCXX>:_NATIVE_OBJC_EXCEPTIONS>
  $<$<COMPILE_LANGUAGE:OBJCXX>:GNUSTEP>
  $<$<COMPILE_LANGUAGE:OBJCXX>:GNUSTEP_BASE_LIBRARY=1>
  $<$<COMPILE_LANGUAGE:OBJCXX>:GNU_GUI_LIBRARY=1>
  $<$<COMPILE_LANGUAGE:OBJCXX>:GNU_RUNTIME=1>)
target_link_libraries(gnustep_appkit INTERFACE gnustep-gui gnustep-base objc)
