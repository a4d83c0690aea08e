#pragma once
// relaxed_program.h - the text of a program some constraints of which may be given up.
//
// Note [relaxed programs]
// A constraint that may be given up gets a head, bad0(7,t(X,Y)), of its number and the variables
// that the user has named, and a weak constraint makes that atom cost. Best answer sets of such a
// program give up as little as there is to give up. Strong negation is relaxed by another name for
// -a, and a constraint of both: -non0 and a. The user's own weak constraints are left out. The
// programs are text of the same language as the user's, and go the same way. No name is given that
// the user's text holds, and none that clingo would hide from a projection, as those of Note
// [reserved names].

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "dl/explain/relaxation.h"

namespace dl {

// What becomes of a constraint or clash.
enum class Hold : std::uint8_t {
  kHard,         // holds
  kLine,         // may be given up as a whole
  kInstances,    // each instance may be given up
  kNot           // is left out
};

// What is given up: a line, and the values of its variables as one term.
struct GivenUp {
  std::uint32_t line = 0;
  GroundTerm values = kNoTerm;
  friend bool operator==(const GivenUp&, const GivenUp&) = default;
  friend bool operator<(const GivenUp& left, const GivenUp& right) {
    return std::tie(left.line, left.values) < std::tie(right.line, right.values);
  }
};

class RelaxedProgram {
 public:
  // All must outlive this.
  RelaxedProgram(const StatementStore& store, GroundTerms& terms, AnswerIndex& index);

  // The constraints in the order of writing, and behind them the predicates that can clash.
  std::size_t lines() const { return statements_.size() + clashes_.size(); }
  ConstraintSet set_of(std::span<const std::uint32_t> lines) const;
  ConstraintInstance instance_of(const GivenUp& given_up) const;
  // Whether the line has instances to tell apart.
  bool has_variables(std::uint32_t line) const;

  // The rules of the numbers may be left out, at a cost of one each.
  void may_drop(std::span<const StatementNumber> rules) {
    droppable_ = {rules.begin(), rules.end()};
  }

  // The program, with further text: the rest of the functions gives some. `holds` is by line.
  Program program(std::span<const Hold> holds, std::string_view further) const;
  // What is given up costs one each.
  std::string costs() const;
  // This must not be given up; giving this up is free.
  void append_hard(std::string& text, const GivenUp& given_up) const;
  void append_free(std::string& text, const GivenUp& given_up) const;

  // What alone is to be shown of the program's answer sets, and what they say.
  std::vector<std::string> shown() const { return {paid_, drop_}; }
  std::vector<GivenUp> given_up(std::string_view answer) const;    // sorted
  // By line, and by values as the language orders them.
  void sort(std::vector<GivenUp>& given_up) const;
  std::vector<StatementNumber> dropped(std::string_view answer) const;

 private:
  // Text that takes the place of other text.
  struct Edit {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::string text;
  };
  using Edits = std::vector<std::vector<Edit>>;    // by file

  // Where a strongly negated atom has its name.
  struct NamePlace {
    std::uint32_t clash = 0;
    std::uint32_t offset = 0;
  };

  std::string unused_name(std::string_view begin) const;
  void find_clashes();
  std::size_t offset_of(const StoredStatement& statement) const;
  void relax(Edits& edits, std::uint32_t line, Hold hold) const;
  void drop(Edits& edits, StatementNumber rule) const;
  std::string clash_text(std::uint32_t line, Hold hold) const;
  std::string bad_atom(std::uint32_t line, std::string_view values) const;
  void rename(Edits& edits, std::span<const Hold> holds) const;
  void leave_out_costs(Edits& edits) const;
  void append_choice(std::string& text, StatementNumber rule) const;
  std::string edited(std::uint32_t file, std::vector<Edit>& edits) const;
  std::string spelled(const GivenUp& given_up) const;
  template <typename Take>
  void each_atom(std::string_view answer, std::string_view name, Take&& take) const;

  const StatementStore& store_;
  GroundTerms& terms_;
  AnswerIndex& index_;
  std::vector<StatementNumber> statements_;    // the constraints
  std::vector<PredicateNumber> clashes_;
  std::vector<std::string> other_names_;          // by clash: of its strong negation
  std::vector<std::vector<NamePlace>> places_;    // by file
  std::vector<StatementNumber> droppable_;
  std::string bad_, free_, paid_, drop_, keep_;    // names of ours
};

}    // namespace dl
