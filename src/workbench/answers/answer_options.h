#pragma once
// answer_options.h - what the user wants to see of the answers, and how.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "workbench/answers/item_pattern.h"

namespace workbench {

struct ReportedProgram;

// What pictures of answer sets show.
struct PictureOptions {
  std::vector<std::string> relations = {};    // these and attributes alone; all without one
  std::uint64_t sets = 1;                     // side by side
};

// Whether text is wrapped to the width of a screen.
enum class Wrapping : std::uint8_t { kOnTerminals, kAlways, kNever };

// Where answers go, and in which form.
struct Destination {
  std::string form;    // one of form_names()
  std::string file;    // empty: standard output; may be a folder
};

// The facts relation(least..most)@space.
struct StatedRange {
  std::string relation, space;
  std::uint64_t least, most;
};

struct AnswerOptions {
  std::vector<Destination> destinations;    // at most one of them is standard output
  Wrapping wrapping = Wrapping::kOnTerminals;
  bool has_one_set = false;            // no second one is asked for
  bool has_messages = false;           // standard output takes messages, too, as JSON
  std::vector<ItemPattern> filters;    // everything is shown when there are none
  std::size_t row_limit = 0;           // of each table; 0: none
  bool sorts = false;
  bool differs_from_facts = false;                 // in the form of differences; facts do not come
  bool projects = false;                           // sets that show the same are one
  std::uint64_t different_sets = 0;                // so many of these are wanted; 0: all
  std::optional<std::uint64_t> shown_sets = {};    // the others are counted only
  std::vector<StatedRange> hidden_ranges = {};     // where facts are left out
  PictureOptions picture = {};
  const ReportedProgram* reported = nullptr;    // for a report
};

}    // namespace workbench
