# warnings: linked by every target of our own code; generated scanners and parsers do without.
add_library(warnings INTERFACE)
target_compile_options(warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror
  $<$<CXX_COMPILER_ID:Clang>:-Wreserved-identifier>)    # the linter takes a fifth of its time for the same

# -g1, for all sanitizers: of what debuggers are told the lines alone, which are what a report shows.
if(ZAREL_SANITIZE_THREADS)
  add_compile_options(-fsanitize=thread -g1)
  add_link_options(-fsanitize=thread)
endif()
if(ZAREL_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(ZAREL_SANITIZE OR ZAREL_FUZZ)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -g1)
  add_link_options(-fsanitize=address,undefined)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # g++ warns of the instrumented moves of a std::variant that it leaves alone otherwise.
    target_compile_options(warnings INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()

# own_runtime: linked by the installed programs. One that carries its C++ library starts in two thirds of the time, and runs
# where another version of that library is installed.
add_library(own_runtime INTERFACE)
target_link_options(own_runtime INTERFACE $<$<CONFIG:Release>:-static-libstdc++ -static-libgcc>)
