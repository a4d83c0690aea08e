# GoogleTest's headers and those that nearly every test includes take a compiler longer than our own text. They are read once.
# A file that lacks an include is found by the linter, which does without.

# zarel_precompiled_headers(NAME [LINK ...] [OPTIONS ...] HEADERS ...): the library NAME, whose headers targets with the same
# options can reuse.
function(zarel_precompiled_headers name)
  cmake_parse_arguments(PARSE_ARGV 1 headers "" "" "LINK;OPTIONS;HEADERS")
  file(CONFIGURE OUTPUT ${name}.cc CONTENT "")
  add_library(${name} OBJECT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cc)
  target_link_libraries(${name} PRIVATE warnings ${headers_LINK})
  target_compile_options(${name} PRIVATE ${headers_OPTIONS})
  target_precompile_headers(${name} PRIVATE ${headers_HEADERS})
endfunction()
