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

struct Options {
  std::vector<std::string> files;
  std::vector<std::string> filters;    // a name shows the predicate and its strong negation
  std::vector<std::string> positive_filters;    // a name shows the predicate alone
  std::string clingo = "clingo";
  std::uint64_t answer_sets = 0;    // at most so many, 0: all; the one that a question is about
  std::uint64_t seconds = 0;        // 0: no limit
  std::uint64_t threads = 1;
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

// The versions of clingo that dl is tested with. A later one of this major version goes by the same
// rules.
inline constexpr std::string_view kTestedClingo = "5.4.1 and 5.8.1";
inline constexpr std::string_view kClingoMajor = "5.";

// The texts of -help and -version, with their line ends.
std::string_view help_text();
std::string version_text();

}    // namespace dl
