# One interface target that every target of the project links: the warnings that the code is kept free of. Methods of
# Objective-C have the parameters that their protocol gives them, used or not.
add_library(orvane_warnings INTERFACE)
target_compile_options(orvane_warnings INTERFACE
  -Wall -Wextra -Wshadow -Wnon-virtual-dtor $<$<COMPILE_LANGUAGE:OBJCXX>:-Wno-unused-parameter>)
