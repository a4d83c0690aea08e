#pragma once
// nearest_instance.h - the instance of a rule that comes nearest to giving an atom.
//
// Note [nearest instances]
// A body falls into parts that share no variable once those of the head have values; each part is
// looked at alone, so what fails in one is not multiplied by what holds in another. In a part that
// holds with no values
//   1. one literal is left out, each in turn: where the rest holds, only that one is missing;
//   2. else negated atoms and aggregates are left out, and of the values with which the rest holds
//      those are taken with which the fewest of them fail;
//   3. else as many literals as hold together are taken, beginning with an order in which they can
//      be evaluated.
// Leaving out a literal may make a rest hold in very many ways, or take very long to find out that
// it does not, since it joined what the rest has. So bindings are counted up to a bound, and all
// searches but that for the whole part share an effort that grows with the data. What is said of
// each literal in the end is looked up with the values that were chosen, however they were found.

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "dl/explain/body_evaluator.h"
#include "dl/explain/body_parts.h"
#include "dl/explain/failure_search.h"

namespace dl {

class NearestInstance {
 public:
  // The rule's binding is given, with the values that the head has; find() gives the rest but
  // `other_heads`, and takes what it spends from the effort. Operands range where the program bounds
  // its integers. All must outlive this.
  NearestInstance(BodyEvaluator& evaluator, const StoredStatement& statement, OpenOperands open,
                  FailedRule& rule, std::uint64_t& effort);

  void find();

 private:
  using Literals = std::vector<LiteralNumber>;
  using Values = std::vector<std::pair<VariableId, GroundTerm>>;
  // The values with which literals hold.
  struct Instances {
    Values values;    // the first ones
    std::uint64_t count = 0;
    bool was_cut = false;    // there may be more
  };

  // An order, how many of its first literals hold together, and values with which they do.
  struct Prefix {
    Literals order;
    std::size_t held = 0;
    Values values;
  };

  void settle(const BodyPart& part);
  bool leave_out_one(const BodyPart& part, std::span<const LiteralNumber> order);
  bool is_one_short(const Instances& found, const std::vector<BodyPart>& rest,
                    LiteralNumber left_out);
  bool leave_out_tests(const BodyPart& part);
  bool is_test(LiteralNumber literal) const;
  std::uint64_t count_failing(const Literals& tests, const Binding& binding, std::uint64_t most);
  void keep_most(const BodyPart& part, Prefix prefix);
  Prefix longest_prefix(const BodyPart& part, Literals order);
  std::size_t follow(std::span<const LiteralNumber> literals);
  bool extend(Prefix& prefix, std::size_t count);

  Instances whole(const BodyPart& part);
  Instances instances(const BodyPart& part, OpenOperands open, std::uint64_t most);
  Instances instances(const std::vector<BodyPart>& parts, std::uint64_t most);
  bool search(const Literals& literals, OpenOperands open, const TakeBinding& take);
  bool has_effort();
  static Values values_of(const BodyPart& part, const Binding& binding);
  void take(const Instances& chosen);
  void tell();
  LiteralState tell_aggregate(LiteralNumber literal);
  LiteralState state(LiteralNumber literal);
  bool is_impossible(LiteralNumber literal);
  bool leaves_factor_open(LiteralNumber literal);

  BodyEvaluator& evaluator_;
  const StoredStatement& statement_;
  OpenOperands open_operands_;
  // Of what is left of a part: operands range there only if they do in the whole part.
  OpenOperands rest_operands_ = OpenOperands::kUnknown;
  FailedRule& rule_;
  std::uint64_t& effort_;
  BodyParts parts_;
  std::vector<char> is_impossible_;    // by literal: it is a part that does not hold
  // A search may spend that part of the effort; with 0 as much as it needs.
  std::uint64_t shares_ = 1;
};

}    // namespace dl
