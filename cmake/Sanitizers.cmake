# ORVANE_SANITIZE takes what -fsanitize= takes: "address,undefined" or "thread". A finding ends the program.
set(ORVANE_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")
if(ORVANE_SANITIZE)
  add_compile_options(-fsanitize=${ORVANE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer -g)
  add_link_options(-fsanitize=${ORVANE_SANITIZE})
endif()
