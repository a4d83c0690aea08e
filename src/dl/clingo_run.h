#pragma once
// clingo_run.h - one search: clingo is started, fed, listened to and judged.

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/diagnostic.h"
#include "dl/answer_reader.h"
#include "dl/clingo_process.h"
#include "dl/options.h"
#include "dl/translate.h"

namespace dl {

// clingo's exit status is a set of bits.
inline constexpr int kInterrupted = 1;
inline constexpr int kSomeFound = 10;
inline constexpr int kSomeInterrupted = 11;
inline constexpr int kNoneExists = 20;    // no further one, behind some
inline constexpr int kAllFound = 30;
inline constexpr int kOutOfMemory = 33;

// Whether clingo says that it ended as it should, as far as its status tells.
bool has_finished(const ProcessEnd& end);

// The same of a whole search. Some answer sets are all only where no more were asked for: clingo
// ends with that status when it meets a limit of its own, too.
bool has_finished(const ProcessEnd& end, const Options& options, const Traits& traits);

// What clingo is started with.
std::vector<std::string> clingo_arguments(const Options& options, const Traits& traits);

OutputSource output_of(ClingoProcess& process);

// Where the answers of a search go, in pieces, and what is to be said of them.
struct SearchOutput {
  std::function<void(std::string_view)> answers;
  zarel::DiagnosticSink notes;
  std::function<void(std::string_view)> said;    // by a search that was divided, a line
};

class ClingoRun {
 public:
  // Both must outlive the run.
  ClingoRun(const Options& options, const SearchOutput& output)
      : options_(options), output_(output) {}

  // Starts clingo, which from now on is to be given the translation, while that is made: reading
  // takes it longer than translating takes us. A mistake that is found later ends it before it has
  // said anything, as it reads all before it solves.
  void start(const Traits& traits);
  void give(std::string_view text);

  // Gives clingo the text, what it does not have yet, and hands the answers on as they come. The
  // text is taken away once clingo has it. One that was interrupted shows what was found. Throws
  // Failure when the search failed.
  Search solve(Translated& program);

  // The same for a caller who reads the lines: `take` gets each one, without its end. Nothing goes
  // to the output.
  Search solve(Translated& program, const std::function<void(std::string_view)>& take);

 private:
  void give_rest(Translated& program);
  Search judge(bool has_result, const Translated& program);
  void flush(AnswerReader& answers) const;
  Search end(AnswerReader& answers, const Translated& program, bool complete_lines);

  const Options& options_;
  const SearchOutput& output_;
  Traits traits_;
  ClingoProcess process_;
  std::string given_;    // all that clingo was given, where sums are watched
};

}    // namespace dl
