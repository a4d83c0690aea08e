#pragma once
// input_reader.h - reads the files and texts of one program.

#include <functional>
#include <ostream>
#include <string>
#include <string_view>

#include "parser/fact_builder.h"
#include "parser/program_builder.h"

namespace zarel {

class InputReader {
 public:
  // Into the current run. Verbatim sections go to `verbatim`.
  explicit InputReader(std::ostream& verbatim) : verbatim_(verbatim) {}

  // Reads a file, which findings call `shown_name`, behind what was read so far. Calls `opened`
  // once it is open. One that cannot be opened is reported and left out.
  void read_file(const std::string& path, std::string_view shown_name,
                 const std::function<void()>& opened = {});

  // The same for a text in memory, which has to last as long as the run.
  void read_text(std::string_view text, std::string_view shown_name);

  // The same for what is no text, but a file of data: `give` makes facts of it.
  void read_facts(const std::string& path, std::string_view shown_name,
                  const std::function<void(FactBuilder&)>& give);

 private:
  std::ostream& verbatim_;
  ProgramBuilder builder_;
};

}    // namespace zarel
