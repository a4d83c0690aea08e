#pragma once
// parse.h - reads the input into the program, one file or text after the other.

#include <cstdint>
#include <cstdio>
#include <iosfwd>
#include <string_view>

namespace zarel {

class ProgramBuilder;

// Parses an open file, which has this number in the run's table of files, from where it stands.
// What stands in verbatim sections goes to `verbatim`, everything else through the builder into the
// program. What is wrong is reported to the run, whose parser_line is advanced. A parse keeps its
// state to itself: several may be under way, each with a builder of its own.
void parse_file(std::FILE* in, std::uint32_t file, ProgramBuilder& builder, std::ostream& verbatim);

// The same with a text in memory, as if it were the file's content.
void parse_text(std::string_view text, std::uint32_t file, ProgramBuilder& builder,
                std::ostream& verbatim);

}    // namespace zarel
