#pragma once
// intermediate_files.h - ".source" and ".legend", which a run leaves in the working directory.

#include <cstdint>
#include <fstream>
#include <memory>
#include <string>

#include "zarel/input_file.h"

namespace zarel {

// ".source" holds, in this order: the verbatim sections, written while the input is read; the
// include lines; the user's clauses; an empty line; all of ".legend" and its last character once
// more. ".legend" holds the legend of template invocations, an empty line, the clauses of the
// expansion, and the queries. A file that cannot be opened or written completely is reported and
// ends the run with status 1.
class IntermediateFiles {
 public:
  // Makes both files, empty.
  IntermediateFiles();

  std::ostream& verbatim() { return verbatim_; }

  // ".legend", to add lines to it; closed with the result. When it cannot be opened, what is
  // written is lost without a word.
  std::unique_ptr<std::ostream> legend();

  // Opens ".source" to add the program to it, and writes the include lines.
  void begin_program();

  // Writes the clauses and queries of the program to both files, and joins the files.
  void write_program();

  // Writes the clauses and queries to `out`. Call only after write_program().
  void show_program(std::ostream& out) const;

 private:
  // The part of a file that holds a part of the program.
  struct Part {
    std::uintmax_t begin = 0;
    std::uintmax_t length = 0;
  };
  static bool copy_part(const char* name, Part part, std::ostream& out);
  bool write_legend();

  std::ofstream verbatim_;
  std::ofstream source_;
  Part clauses_;      // of ".source"
  Part generated_;    // of ".legend", the queries included
};

// ".output", empty, so that the answers of an earlier run never pass for those of this one, and
// open for reading what a solver writes there. Not open when that could not be read back, from a
// device, say.
InputFile open_output();

inline constexpr char kSourceName[] = ".source";
inline constexpr char kLegendName[] = ".legend";
inline constexpr char kOutputName[] = ".output";

}    // namespace zarel
