#pragma once
// solving.h - from a rewritten program to printed answers.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "dl/options.h"
#include "workbench/answers/answer_options.h"
#include "workbench/messages/exit_status.h"
#include "workbench/messages/reporter.h"
#include "zarel/program.h"

namespace workbench {

enum class Consequences : std::uint8_t { kCautious, kBrave };    // what holds for a query

// What is asked of a search.
struct SearchOptions {
  std::uint64_t answer_sets = 0;    // at most so many; 0: all
  Consequences consequences = Consequences::kCautious;
  std::string_view consequences_option;    // that asked for them; empty: none did
  double seconds = 0;                      // of the whole run; 0: no limit
  unsigned threads = 1;
  std::string configuration;    // of clingo, or the race among them; empty: its own choice
  dl::Cuts cuts = dl::Cuts::kNone;
  std::uint64_t parts = 0;    // where the search is cut: at least so many; 0: by the cores
  std::optional<std::int64_t> maxint;
  std::optional<std::uint32_t> seed;
  bool leaves_out_facts = false;
  bool tells_statistics = false;
  bool tells_profile = false;      // which rules have most instances
  bool shows_improving = false;    // what is found on the way to a best answer set
  std::string solver;    // another solver of the same language; empty: clingo, by translation
  std::string clingo = "clingo";
  std::string keep_folder;    // where the stages are kept as files; empty: nowhere
};

// Where to go on when there is none.
inline constexpr std::string_view kConflictHint =
    "zrl conflict tells what stands in the way of one";

// From now on SIGINT, SIGTERM, SIGHUP and the end of the time limit end the run, with what was
// found, and ExitStatus::kIncomplete. To be called once, before anything else takes time.
void watch_the_run(double seconds, const MessageOptions& messages);

// Why it ended, when that has come to pass: "interrupted".
std::string interruption_in_words();

// Solves the program, which was rewritten and gives its text away, and prints its answers to the
// descriptor as they come. What is to be said of them goes to the reporter. When nobody reads the
// answers any more, it ends without a word, and with ExitStatus::kOutputFailed.
ExitStatus solve(zarel::Program& program, const SearchOptions& options,
                 const AnswerOptions& answers, Reporter& reporter, int output);

// Tells what the translation finds wrong with the program, which was rewritten and gives its text
// away, without solving it. ExitStatus::kFound when that is nothing.
ExitStatus check_translation(zarel::Program& program, const SearchOptions& options,
                             Reporter& reporter);

}    // namespace workbench
