# zarel_parser(NAME): makes of this folder's scanner.l and grammar.y the object library NAME_generated. What links it gets the
# objects and, to include, "scanner.h" and "grammar.h": the library of the folder, privately, so that no other folder sees
# them. What the three differ in (prefixes, tables, locations) stands in the .l and the .y themselves.
function(zarel_parser name)
  set(folder ${CMAKE_CURRENT_BINARY_DIR})
  flex_target(scanner scanner.l ${folder}/scanner.cc DEFINES_FILE ${folder}/scanner.h)
  # A conflict stops the build, and is shown with an example.
  bison_target(grammar grammar.y ${folder}/grammar.cc
    DEFINES_FILE ${folder}/grammar.h COMPILE_FLAGS "-Wall -Wcounterexamples -Werror")
  add_flex_bison_dependency(scanner grammar)

  add_library(${name}_generated OBJECT ${BISON_grammar_OUTPUTS} ${FLEX_scanner_OUTPUTS})
  target_include_directories(${name}_generated PRIVATE ${PROJECT_SOURCE_DIR}/src)
  target_include_directories(${name}_generated SYSTEM INTERFACE ${folder})    # without warnings
  target_compile_options(${name}_generated PRIVATE -w)
  if(ZAREL_FUZZ)
    # What generated code compares is positions in its tables: nothing to learn from, and a third of the time.
    target_compile_options(${name}_generated PRIVATE -fno-sanitize-coverage=trace-cmp)
  endif()
endfunction()
