# ORVANE_SANITIZE takes what -fsanitize= takes: "address,undefined" or "thread". A finding ends the program.
set(ORVANE_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")
if(ORVANE_SANITIZE)
  add_compile_options(-fsanitize=${ORVANE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer -g)
  add_link_options(-fsanitize=${ORVANE_SANITIZE})
endif()
if(ORVANE_SANITIZE MATCHES thread)
  # A loaded bundle calls these of the runtime that is in the program, which exports all others by itself.
  add_link_options("LINKER:--export-dynamic-symbol=__tsan_ignore_thread_begin"
                   "LINKER:--export-dynamic-symbol=__tsan_ignore_thread_end")
endif()
