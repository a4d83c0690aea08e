#pragma once
// intermediate_files.h - ".source" and ".legend", which a run leaves in the working directory.

#include <fstream>
#include <memory>
#include <string>

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

  // Writes the clauses and queries of the program to both files, and to `shown` where there is one,
  // and joins the files.
  void write_program(std::ostream* shown);

 private:
  std::ofstream verbatim_;
  std::ofstream source_;
};

// Empties ".output", so that the answers of an earlier run never pass for those of this one. False
// when what a solver writes there cannot be read back, from a device, say.
bool empty_output();

inline constexpr char kSourceName[] = ".source";
inline constexpr char kLegendName[] = ".legend";
inline constexpr char kOutputName[] = ".output";

}    // namespace zarel
