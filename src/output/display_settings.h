#pragma once
// display_settings.h - what the user wants to see of an answer set.

#include <functional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace zarel {

// Predicate names, asked for once for every atom.
class NameSet {
 public:
  void add(std::string_view name) { names_.emplace(name); }
  bool contains(std::string_view name) const { return names_.find(name) != names_.end(); }
  bool is_empty() const { return names_.empty(); }

 private:
  struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>{}(text);
    }
  };
  std::unordered_set<std::string, TextHash, std::equal_to<>> names_;
};

// Set from the command line before answer sets are read, and only looked at by the reader.
struct DisplaySettings {
  NameSet filters;             // predicates of which every atom is shown
  NameSet positive_filters;    // predicates of which the atoms without "-" are shown
  bool noFilters = true;       // everything is shown
  bool space = true;           // the frame space "default" is not shown
  bool address = true;         // full URIs are shortened to prefix:name

  // Adds names to the two lists, and clears noFilters when one of the lists then has a name.
  void set_filters(const std::vector<std::string>& names,
                   const std::vector<std::string>& positive_names);
};

DisplaySettings& display_settings();

}    // namespace zarel
