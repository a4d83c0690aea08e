#pragma once
// search_plan.h - how a search is divided among processes, if it is: which program runs, and with
// which arguments.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "dl/options.h"
#include "dl/program_parts.h"

namespace dl {

// clingo's own configurations, and the race among them.
inline constexpr std::string_view kConfigurations[] = {"auto",  "frumpy", "jumpy",  "tweety",
                                                       "handy", "crafty", "trendy", "many"};
inline constexpr std::string_view kRaceWord = "race";
bool is_configuration(std::string_view name);    // or the race
std::string configuration_list();                // "auto, frumpy, ... or race"

enum class SearchKind : std::uint8_t {
  kPlain,
  kRace,     // the first configuration to finish wins
  kParts,    // the search is cut into parts, which run on the cores of this machine
  kAuto      // the same if the whole takes some seconds, which goes on besides
};

struct SearchPlan {
  SearchKind kind = SearchKind::kPlain;
  std::string clingo;
  std::vector<std::string> arguments;    // of clingo
  std::size_t workers = 1;
  std::size_t parts = 0;
  bool cuts_easy_parts = false;    // somebody wants to have so many
};

inline constexpr std::uint64_t kMostParts = 1'000'000;

// What the options ask for. May ask clingo for its version; see Note [threads].
SearchPlan plan_search(const Options& options, const Traits& traits);

// What a host starts in place of clingo, feeds and reads as clingo: for a plain search that is
// clingo, and for others this program, which divides the search.
struct SearchCommand {
  std::string program;
  std::vector<std::string> arguments;
};
SearchCommand command_of(const SearchPlan& plan);

// The first argument of a program that is to divide a search; the others are those of a plan.
inline constexpr std::string_view kDivideSearch = "--divide-search";
// Nothing where they are not.
std::optional<SearchPlan> read_plan(std::span<char* const> arguments);

// In front of a line that says how the search went, between the answers.
inline constexpr std::string_view kSearchNote = "Search: ";

}    // namespace dl
