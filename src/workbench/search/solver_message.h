#pragma once
// solver_message.h - what the translation and the search find wrong, in the user's words and at the
// user's own text.

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/diagnostic.h"
#include "dl/clingo_process.h"
#include "dl/translate.h"
#include "workbench/messages/exit_status.h"
#include "workbench/messages/message.h"
#include "zarel/program.h"

namespace workbench {

// The name under which the rewritten program is translated: the first of its sources.
inline constexpr std::string_view kRewrittenName = "rewritten program";

class SolverMessages {
 public:
  // Both must outlive the object. The first source is the program's text, the others are the files
  // that it includes; these become files of the program.
  SolverMessages(zarel::Program& program, const dl::Sources& sources)
      : SolverMessages(
            program.run(), [&program](std::uint32_t line) { return program.origin_of_line(line); },
            sources) {}

  // The same for who knows of the program only its files, and which place a line comes from.
  using Origins = std::function<zarel::LineOrigin(std::uint32_t line)>;
  SolverMessages(zarel::Run& run, Origins origins, const dl::Sources& sources)
      : run_(run), origin_of_line_(std::move(origins)), sources_(sources) {}

  // Of what dl finds, with its place in the sources.
  Message message(const zarel::Diagnostic& finding);

 private:
  // What the user wrote, where the rewritten program is at fault.
  struct Written {
    zarel::Place statement;
    zarel::Place word;                // not known when it is not the user's
    bool is_range = false;            // a fact over a range of integers
    bool is_own_text = false;         // in the solver's language
    std::vector<zarel::Note> uses;    // of templates, from the inside outwards
  };
  Written written(const zarel::Place& place, std::string_view word);
  Written included(const zarel::Place& place);

  zarel::Run& run_;
  const Origins origin_of_line_;
  const dl::Sources& sources_;
  std::unordered_map<std::uint32_t, std::uint32_t> files_;    // of the program, by those of sources
};

// The errors that clingo reports of the translation, as findings with a place in the sources.
std::vector<zarel::Diagnostic> clingo_errors(std::string_view said,
                                             const dl::Translated& translated);

// Why a solver that ended so has not done its work.
Message solver_failure(const std::string& solver, const dl::ProcessEnd& end);

// What a run with this message ends with.
ExitStatus status_of(const Message& message);

}    // namespace workbench
