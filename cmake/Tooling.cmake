# Build-wide switches that catch faults early. Included before any target is
# defined, so they reach every library, program and test of the project; the
# third-party code we use comes prebuilt (Qt, GoogleTest, SQLite) and its
# headers are system headers, so -Werror never judges it.

option(M182_SANITIZE "Build everything with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
option(M182_WERROR "Treat compiler warnings in the project's own code as errors" OFF)

if(M182_SANITIZE)
  set(_m182_sanitize_flags
      -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  add_compile_options(${_m182_sanitize_flags})
  add_link_options(${_m182_sanitize_flags})
endif()

if(M182_WERROR)
  add_compile_options(-Werror)
endif()
