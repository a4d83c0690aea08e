#pragma once
// rule_text.h - a rule as clingo reads it, on one line or, where its body is long, on several.
//
// Note [long bodies]
// clingo needs time quadratic in the length of a body: 4,000 literals take seconds, 100,000 would
// take hours. So a long body is cut into pieces, each the body of a helper atom that the next piece
// begins with. The helper carries the variables bound so far that the head or a later literal still
// needs. Replacing a part of one body by an atom that has this part as its only definition does not
// change the answer sets.

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/line_map.h"
#include "dl/body_order.h"
#include "dl/literal_text.h"
#include "dl/mistake.h"
#include "dl/program_parts.h"
#include "dl/statement.h"

namespace dl {

// Note [counted instances]
// What a rule costs the grounder is how often its body can be instantiated, and its aggregates'
// elements. clingo does not tell for which rule it writes what. So, where they are counted, each
// body and each element becomes the body of an atom _i(K,...) with all of its variables, too: as
// many of these as clingo writes is what the rule with the number K has. Nothing else uses them, so
// the rest is grounded as it is without them.

// The text for clingo, and where each of its lines comes from.
struct Translation {
  std::string text;
  zarel::LineMap lines;
  // Where it is given, takes the text in pieces of whole lines, and what it has taken is forgotten
  // here; the last piece stays.
  std::function<void(std::string_view)> receiver;

  void end_line(const zarel::SourceLocation& location) {
    text += '\n';
    lines.add({location});
    if (text.size() >= kPiece && receiver) {
      receiver(text);
      text.clear();
    }
  }

 private:
  static constexpr std::size_t kPiece = std::size_t{1} << 16;    // what a pipe holds
};

// Where a statement stands, in the line that is shown, and what of it is at fault if an integer is.
struct StatementPlace {
  zarel::SourceLocation location;
  FileRange range;
};

class RuleWriter {
 public:
  // Both must outlive the writer.
  RuleWriter(Translation& out, ProgramParts& parts, bool counts)
      : out_(out), parts_(parts), counts_(counts) {}

  // Orders the statement's body and makes it ready to be written as body(); the pieces that were
  // cut off and the rules that watch its integers are written at once. `kept` tells by variable
  // what the rest of the rule uses; all of it must be bound. Returns the mistake that was found, if
  // any: an unsafe rule.
  MaybeMistake prepare(const Statement& statement, const StatementPlace& place,
                       const std::vector<char>& kept);

  const std::string& body() const { return body_; }

  // Counts the instances of the prepared body. See Note [counted instances].
  void count_body(const Statement& statement, const std::vector<char>& kept);

  // Writes the rule that tells of a fault where the body holds, and what is wrong with it.
  void write_fault(FaultKind kind, const std::string& before, std::string_view what,
                   const StatementPlace& place);

  // A variable of the prepared body that only a bound on integers gives values, or kUnnamed.
  VariableId ranging_variable() const { return ranging_; }

 private:
  class Pieces;
  MaybeMistake prepare_atoms(const Statement& statement, const std::vector<char>& kept);
  void write_steps(const OrderedBody& body, const BodyOrder& order, const std::vector<char>& kept);
  void note_range(const Step& step);
  void add_step(std::string& text, const OrderedBody& body, const Step& step);
  std::string write_inside(const std::string& before, const OrderedBody& body,
                           const Aggregate& aggregate);
  void write_ways(const std::string& before, const OrderedBody& body, const BodyOrder& order,
                  const Step& step, const std::string& helper);
  void cut(std::string& body, std::string helper);
  void count(const Statement& statement, const std::vector<char>& variables,
             const std::string& body);
  void count_elements(const std::string& before, const Statement& statement,
                      const Aggregate& aggregate, const std::string& condition);
  IntegerBound integers() const;

  Translation& out_;
  ProgramParts& parts_;
  bool counts_;            // instances
  bool is_cut_ = false;    // the prepared body: variables may be missing
  std::string body_;
  std::vector<char> marks_;
  VariableId ranging_ = kUnnamed;
  StatementPlace place_;    // of the prepared statement; inside an aggregate its range
  std::uint32_t helpers_ = 0;
};

// A helper atom of that name over these variables, without kUnnamed among them.
std::string helper_atom(const Statement& statement, std::string name,
                        std::span<const VariableId> variables);

// The mistake of a variable that nothing binds: under this name, written there.
Mistake unsafe_mistake(std::string_view variable, std::string_view at);

// Likewise; where the statement uses it first.
Mistake unsafe_mistake(const Statement& statement, VariableId variable);

// Where the statement uses the variable first.
std::string_view first_use(const Statement& statement, VariableId variable);

}    // namespace dl
