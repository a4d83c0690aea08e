#pragma once
// options.h - the command line of dl.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dl {

enum class Reasoning { kCautious, kBrave };

// What is asked of an answer set instead of the answer sets themselves.
enum class QuestionKind { kNone, kWhy, kWhyNot, kConflict, kPaid };

// Whether the search is cut into parts that run on this machine: always, or where it takes long.
enum class Cuts { kNone, kLocal, kAuto };

// What is done with a search in parts that lies in a folder.
enum class JobCommand { kNone, kSplit, kPart, kDivide, kMissing, kJoin };

struct Options {
  std::vector<std::string> files;
  std::vector<std::string> filters;    // a name shows the predicate and its strong negation
  std::vector<std::string> positive_filters;    // a name shows the predicate alone
  std::string clingo = "clingo";
  std::uint64_t answer_sets = 0;    // at most so many, 0: all; the one that a question is about
  std::uint64_t seconds = 0;        // 0: no limit
  std::uint64_t threads = 1;
  std::string configuration;    // of clingo; empty: its own choice
  Cuts cuts = Cuts::kNone;
  std::uint64_t parts = 0;    // at least so many; 0: by the number of cores
  JobCommand job = JobCommand::kNone;
  std::string jobs;              // its folder
  std::uint64_t part = 0;        // of which it is
  bool is_partial = false;       // a join of what is there
  bool hands_bound_on = true;    // to parts that run later
  std::optional<std::int64_t> bound;
  std::optional<std::uint32_t> seed;    // a search in another order; for hosts, not for dl's users
  Reasoning reasoning = Reasoning::kCautious;
  QuestionKind question = QuestionKind::kNone;
  std::string asked;          // its atom
  std::uint32_t depth = 8;    // of proofs; 0: no limit
  bool leave_out_facts = false;
  bool translate_only = false;
  bool tell_all = false;    // mistakes of statements, not the first alone; for hosts
  // How best answer sets are looked for; for hosts.
  bool one_best = false;            // any one of them, not one after the other
  bool by_cores = false;            // from below: where little is to be paid
  bool differ_in_shown = false;     // answer sets that show the same count as one
  bool leaves_out_query = false;    // it is checked, but nothing asks for it; for hosts
  bool shows_costs = false;         // which rules have most instances
  bool counts_instances = false;    // see Note [counted instances]; for such a count alone
  bool fold = true;                 // see Note [folded atoms]
  bool help = false;
  bool version = false;

  bool shows(std::string_view name, bool strongly_negated) const;
};

// Reads the arguments after the program's name, in any order, with one dash or two. Throws Failure
// for an argument that is no option and a value that does not fit.
Options read_options(const std::vector<std::string_view>& arguments);

inline constexpr std::string_view kDlVersion = "1.0";

// The versions of clingo that dl is tested with. A later one of this major version goes by the same
// rules.
inline constexpr std::string_view kTestedClingo = "5.4.1 and 5.8.1";
inline constexpr std::string_view kClingoMajor = "5.";

// The texts of -help and -version, with their line ends.
std::string_view help_text();
std::string version_text();

}    // namespace dl
