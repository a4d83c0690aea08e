#pragma once
// statement_builder.h - what the grammar's actions call: collects one statement after the other and
// hands each to a receiver.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "dl/folding.h"
#include "dl/statement.h"
#include "dl/token.h"

namespace dl {

// Where complete statements go. The statement may be read until the call returns. A receiver that
// finds a mistake answers with its text (one line, without the place), else with an empty text.
class StatementReceiver {
 public:
  virtual ~StatementReceiver() = default;
  virtual std::string fact(const Statement& statement) = 0;
  virtual std::string rule(const Statement& statement) = 0;    // a constraint has no heads
  virtual std::string weak_constraint(const Statement& statement, std::string_view weight,
                                      std::string_view level) = 0;    // empty: not written
  virtual std::string query(const Statement& statement) = 0;
  virtual std::string integer_bound(std::int64_t bound) = 0;
  virtual std::string include(std::string_view name, std::uint32_t line) = 0;
  virtual void needs_bound(std::uint32_t line, std::string_view what) = 0;
  // Takes an atom of an unfinished statement and gives the text of one that holds for the same
  // named variables, whatever "_" stands for.
  virtual std::string projection(const Statement& statement, const Term& atom,
                                 std::uint32_t line) = 0;
};

// Finds the number that a variable has in the current statement; clearing it costs nothing.
class VariableNumbers {
 public:
  void clear() {
    ++generation_;
    used_ = 0;
  }
  // The number of `name`, `next` when it is new in this statement.
  VariableId number(std::string_view name, VariableId next);

 private:
  struct Slot {
    std::uint64_t generation = 0;
    std::string_view name;
    VariableId number = 0;
  };
  void grow();
  std::vector<Slot> slots_ = std::vector<Slot>(64);
  std::uint64_t generation_ = 1;
  std::size_t used_ = 0;
};

// A guard as the grammar gives it: an operator and the index of a term.
struct WrittenGuard {
  int op;
  std::uint32_t term;
};

class StatementBuilder {
 public:
  // Both must outlive the builder.
  StatementBuilder(StatementReceiver& receiver, const Folding& folding)
      : receiver_(receiver), folding_(folding) {}

  // For the scanner.
  std::uint32_t line() const { return line_; }
  void count_lines(std::uint32_t lines) { line_ += lines; }
  void count_lines_of_string(const Token& string);
  void unexpected_character(const Token& token);
  void unknown_word(const Token& token);

  // The first mistake ends the parse; later calls change nothing.
  void syntax_error(std::string_view message);
  bool has_failed() const { return failed_; }
  const std::string& mistake() const { return mistake_; }
  std::uint32_t mistake_line() const { return mistake_line_; }

  // Statements.
  void begin(const Token& first) { note_line(first); }
  void begin_weak(const Token& first);
  void fact();
  void rule();
  void constraint() { rule(); }
  void weak_constraint(const Token& weight, const Token& level);
  void query();
  void integer_bound(const Token& number);
  void include(const Token& directive);

  // Literals.
  void head(std::uint32_t atom);
  void negation() { negated_ = true; }
  void sign();
  std::uint32_t strongly_negated(std::uint32_t atom);
  void atom_literal(std::uint32_t atom);
  void comparison(int op, std::uint32_t left, std::uint32_t right);
  void equality(std::uint32_t left, std::uint32_t right) { comparison(kEqual, left, right); }
  void sum(std::uint32_t x, std::uint32_t y, std::uint32_t z) { assignment(kSum, {x, y, z}); }
  void product(std::uint32_t x, std::uint32_t y, std::uint32_t z) {
    assignment(kProduct, {x, y, z});
  }
  void open_builtin();
  void builtin(int kind);

  // Aggregates.
  void open_aggregate(const Token& function);
  bool awaits_aggregate_colon() const { return awaits_aggregate_colon_; }    // asked by the scanner
  void aggregate_body();
  void close_aggregate();
  void equal_to_aggregate(std::uint32_t term);
  void left_guard(int op, std::uint32_t term);
  void right_guard(int op, std::uint32_t term);
  void two_guards(WrittenGuard left, WrittenGuard right);
  void missing_guard();

  // Terms; each returns its index.
  std::uint32_t constant(const Token& name);
  std::uint32_t variable(const Token& name);
  std::uint32_t string(const Token& quoted);
  std::uint32_t number(const Token& digits);
  std::uint32_t anonymous(const Token& token);
  std::uint32_t bound_term(const Token& token);
  void open_compound(const Token& name);
  std::uint32_t close_compound();
  std::uint32_t flat_compound(const Token& token);
  void argument(std::uint32_t term);

 private:
  // A parenthesis or brace whose arguments are being read.
  struct Frame {
    std::uint32_t text_begin;
    std::uint32_t uses_begin;
    std::uint32_t arguments_begin;
    std::uint32_t count;
    std::uint32_t constants;    // how many of the first arguments are constants
    std::string_view name;
  };

  void note_line(const Token& token) {
    if (statement_.line == 0) statement_.line = token.line;
  }
  void fail(std::uint32_t line, std::string message);
  void finish(const std::string& mistake);
  void separate();
  std::uint32_t add_term(TermKind kind, std::uint32_t text_begin, std::uint32_t uses_begin);
  Frame close_frame();
  void push_frame(std::uint32_t text_begin, std::string_view name);
  VariableId add_variable(std::string_view name);
  VariableId add_anonymous();
  void flat_argument(std::string_view word, std::uint32_t line);
  void append_number(std::string_view digits, std::uint32_t line);
  void assignment(Builtin kind, std::initializer_list<std::uint32_t> terms);
  void add_builtin(Builtin kind, Slice arguments, std::uint32_t uses_begin);
  void project(std::uint32_t atom);
  void add_literal(Literal literal);
  void check_arity(Builtin kind, std::uint32_t count);
  void add_guards(Guard left, Guard right);
  std::uint32_t text_size() const { return static_cast<std::uint32_t>(statement_.text.size()); }
  std::uint32_t uses_size() const { return static_cast<std::uint32_t>(statement_.uses.size()); }
  std::uint32_t arguments_size() const {
    return static_cast<std::uint32_t>(statement_.arguments.size());
  }

  StatementReceiver& receiver_;
  const Folding& folding_;
  Statement statement_;
  VariableNumbers numbers_;
  std::vector<Frame> frames_;
  std::vector<Literal> outer_body_;    // the rule's literals, while those of an aggregate are read
  std::uint32_t line_ = 1;
  std::uint32_t fresh_variables_ = 0;
  bool in_aggregate_ = false;
  bool awaits_aggregate_colon_ = false;
  bool outer_negated_ = false;
  bool negated_ = false;
  bool weak_ = false;
  bool failed_ = false;
  std::string mistake_;
  std::uint32_t mistake_line_ = 0;
};

}    // namespace dl
