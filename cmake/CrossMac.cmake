# Builds for macOS on Debian 12: clang 19 and its tools, with the declarations in AppleSDK/ for the system root. The
# project's own macOS branch does the rest; nothing here names a source or a flag of it.
set(CMAKE_SYSTEM_NAME Darwin)

set(llvm /usr/lib/llvm-19/bin)
set(CMAKE_CXX_COMPILER "${llvm}/clang++")
set(CMAKE_OBJCXX_COMPILER "${llvm}/clang++")
set(CMAKE_CXX_COMPILER_TARGET arm64-apple-macos)
set(CMAKE_OBJCXX_COMPILER_TARGET arm64-apple-macos)
set(CMAKE_INSTALL_NAME_TOOL "${llvm}/llvm-install-name-tool")
set(CMAKE_OSX_SYSROOT "${CMAKE_CURRENT_LIST_DIR}/../AppleSDK")
cmake_path(NORMAL_PATH CMAKE_OSX_SYSROOT)
# What stands in for Apple's compiler of interface files.
set(CMAKE_PROGRAM_PATH "${CMAKE_CURRENT_LIST_DIR}/../scripts/mac_check/tools")

# The compiler calls lipo by that name, and a Mac's libcurl headers are a folder by themselves.
set(tools "${CMAKE_BINARY_DIR}/tools")
file(MAKE_DIRECTORY "${tools}/include")
file(CREATE_LINK "${llvm}/llvm-lipo" "${tools}/lipo" SYMBOLIC)
file(CREATE_LINK /usr/include/x86_64-linux-gnu/curl "${tools}/include/curl" SYMBOLIC)

# The C library's headers come last, behind the system root's and the C++ library's wrappers of them. A header of the
# C++ library brings no others along: half the work, and what a source forgets to include is found.
set(flags "-isystem ${CMAKE_OSX_SYSROOT}/usr/include/c++/v1 -idirafter /usr/include/x86_64-linux-musl")
string(APPEND flags " -idirafter ${tools}/include -B${tools} -D_LIBCPP_REMOVE_TRANSITIVE_INCLUDES")
set(CMAKE_CXX_FLAGS_INIT "${flags}")
set(CMAKE_OBJCXX_FLAGS_INIT "${flags}")
set(CMAKE_MODULE_LINKER_FLAGS_INIT -fuse-ld=lld)

# Archives of objects of two architectures are the work of libtool. Programs cannot be linked, and need not be.
set(CMAKE_CXX_CREATE_STATIC_LIBRARY "${llvm}/llvm-libtool-darwin -static -o <TARGET> <OBJECTS>")
set(CMAKE_OBJCXX_CREATE_STATIC_LIBRARY "${CMAKE_CXX_CREATE_STATIC_LIBRARY}")
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
