#pragma once
// answer_filter.h - which items of an answer set are shown.

#include <array>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "workbench/answers/answer_consumer.h"
#include "workbench/answers/item_pattern.h"

namespace workbench {

class AnswerFilter : public AnswerStage {
 public:
  // Shows what a pattern matches, everything when there is none but for leaving out; then nothing
  // that a pattern leaves out. Never shows the system's own atoms.
  AnswerFilter(AnswerConsumer& next, std::vector<ItemPattern> patterns);

  void answer_set(AnswerSet& set) override;

 private:
  struct Candidate {
    const ItemPattern* pattern;
    std::string_view first;
  };
  struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>()(text);
    }
  };
  using Candidates = std::vector<Candidate>;
  // By the second name of a reading; nothing for any.
  using Index = std::unordered_map<std::string, Candidates, TextHash, std::equal_to<>>;
  using Members = std::unordered_set<std::string_view>;

  struct Parts {    // of an item
    PatternKind kind;
    zarel::AnswerTerm first, second;
  };
  static Parts parts_of(const AnswerSet& set, const Item& item);

  void note_members(const AnswerSet& set);
  bool shows(const AnswerSet& set, const Item& item);
  template <typename Visit>
  void each_candidate(const Parts& parts, Visit&& visit);
  bool matches(const Candidate& candidate, const AnswerSet& set, const Item& item,
               const Parts& parts);
  bool is_named(const zarel::AnswerTerm& term, std::string_view name);
  std::string_view shown_name(const zarel::AnswerTerm& term);

  std::vector<ItemPattern> patterns_;
  std::array<Index, kPatternKinds> by_name_;
  bool shows_the_rest_ = true;
  // The members, in the current set, of each class that may stand in front of an attribute.
  std::unordered_map<std::string, Members, TextHash, std::equal_to<>> members_;
  std::string name_;    // for shown_name()
};

}    // namespace workbench
