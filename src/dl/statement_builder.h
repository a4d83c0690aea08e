#pragma once
// statement_builder.h - what the grammar's actions call: collects one statement after the other and
// hands each to a receiver.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "dl/folding.h"
#include "dl/mistake.h"
#include "dl/statement.h"
#include "dl/token.h"

namespace dl {

// A piece of the file's text on one line, and where it stands.
struct Piece {
  std::string_view text;
  zarel::SourceRange range{};
};

// Where complete statements go. The statement may be read until the call returns. A receiver that
// finds a mistake answers with it; the line that it shows is the statement's.
class StatementReceiver {
 public:
  virtual ~StatementReceiver() = default;
  virtual MaybeMistake fact(const Statement& statement) = 0;
  virtual MaybeMistake rule(const Statement& statement) = 0;    // a constraint has no heads
  virtual MaybeMistake weak_constraint(const Statement& statement, const Piece& weight,
                                       const Piece& level) = 0;    // empty: not written
  virtual MaybeMistake query(const Statement& statement) = 0;
  virtual MaybeMistake integer_bound(std::int64_t bound, const Piece& number) = 0;
  virtual void include(std::string_view name, const Piece& directive) = 0;
  // `line` is the one to be shown.
  virtual void needs_bound(std::uint32_t line, const Piece& what) = 0;
  // Takes an atom of an unfinished statement and gives the text of one that holds for the same
  // named variables, whatever "_" stands for.
  virtual std::string projection(const Statement& statement, const Term& atom, std::uint32_t line,
                                 std::uint32_t column) = 0;
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
  Operator op;
  std::uint32_t term;
};

class StatementBuilder {
 public:
  // Both must outlive the builder.
  StatementBuilder(StatementReceiver& receiver, const Folding& folding)
      : receiver_(receiver), folding_(folding) {}

  // The arguments of atoms are to be listed, which takes time: see Term::arguments.
  void list_arguments() { lists_arguments_ = true; }
  // Those of nested terms, too.
  void list_all_arguments() { lists_arguments_ = lists_all_ = true; }

  // Tokens come from this text from now on.
  void begin_text(const char* text) { statement_.source = line_begin_ = text; }

  // The next tokens come from further behind in it.
  void begin_part(const char* part) { line_begin_ = part; }
  void pass_lines(std::size_t lines) { line_ += static_cast<std::uint32_t>(lines); }

  // For the scanner.
  std::uint32_t line() const { return line_; }
  void count_lines(const Token& line_ends) {
    line_ += line_ends.length;
    line_begin_ = line_ends.text + line_ends.length;
  }
  void count_lines_of_string(const Token& string);
  void unexpected_character(const Token& token);
  void unknown_word(const Token& token);

  // Mistakes that the sink finds in whole statements are handed on, and the parse goes on behind.
  void go_on_behind_mistakes(std::function<void(const Mistake&)> receiver) {
    takes_mistake_ = std::move(receiver);
  }

  // The first mistake ends the parse; later calls change nothing.
  void syntax_error(std::string_view message, std::string_view token);
  bool has_failed() const { return mistake_.has_value(); }
  const Mistake& mistake() const { return *mistake_; }

  // Statements; `end` is the last token of one.
  void begin(const Token& first) { note_line(first); }
  void begin_weak(const Token& first);
  void fact(const Token& end);
  void rule(const Token& end);
  void constraint(const Token& end) { rule(end); }
  void weak_constraint(const Token& weight, const Token& level, const Token& stop,
                       const Token& end);
  void query(const Token& end);
  void integer_bound(const Token& number);
  void include(const Token& directive);

  // Literals.
  void head(std::uint32_t atom);
  void negation(const Token& word);
  void sign(const Token& sign);
  std::uint32_t strongly_negated(std::uint32_t atom);
  void atom_literal(std::uint32_t atom);
  void comparison(const Operator& op, std::uint32_t left, std::uint32_t right);
  void equality(std::uint32_t left, std::uint32_t right) { assignment(kEqual, {left, right}); }
  void sum(std::uint32_t x, std::uint32_t y, std::uint32_t z) { assignment(kSum, {x, y, z}); }
  void product(std::uint32_t x, std::uint32_t y, std::uint32_t z) {
    assignment(kProduct, {x, y, z});
  }
  void open_builtin(const Operator& name);
  void builtin(const Operator& name);

  // Aggregates.
  void open_aggregate(const Token& function);
  bool awaits_aggregate_colon() const { return awaits_aggregate_colon_; }    // asked by the scanner
  void aggregate_body();
  void close_aggregate(const Token& brace);
  void equal_to_aggregate(std::uint32_t term);
  void left_guard(const Operator& op, std::uint32_t term);
  void right_guard(const Operator& op, std::uint32_t term);
  void two_guards(const WrittenGuard& left, const WrittenGuard& right);
  void missing_guard(std::string_view op);

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
    std::uint32_t simple;    // as in Term
    std::string_view name;
    std::uint32_t nested_begin;    // in nested_
  };

  void note_line(const Token& token) {
    if (statement_.line == 0) begin_statement(token);
  }
  void begin_statement(const Token& token);
  void note_begin(const Token& token);
  void note_end(const Token& end);
  std::uint32_t column_of(const char* text) const;
  Piece piece(const Token& token) const;
  void fail(std::uint32_t line, zarel::Code code, std::string message, std::string_view at);
  void finish(const MaybeMistake& mistake);
  void separate();
  std::uint32_t add_term(TermKind kind, std::uint32_t text_begin, std::uint32_t uses_begin);
  Frame close_frame();
  void push_frame(std::uint32_t text_begin, std::string_view name);
  VariableId add_variable(std::string_view name);
  VariableId add_anonymous(const char* written);
  void add_use(VariableId variable, const char* written);
  void flat_argument(std::string_view word, std::uint32_t line);
  void list_flat_argument(std::string_view word, std::uint32_t line);
  void note_simple_argument();
  void append_number(std::string_view digits, std::uint32_t line);
  void assignment(Builtin kind, std::initializer_list<std::uint32_t> terms);
  void copy_uses(Slice uses);
  void add_builtin(Builtin kind, Slice arguments, std::uint32_t uses_begin);
  void project(std::uint32_t atom);
  void add_literal(Literal literal);
  void check_arity(const Operator& name, std::uint32_t count);
  void add_guards(const Guard& left, const Guard& right);
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
  const char* line_begin_ = nullptr;    // of that line
  std::uint32_t fresh_variables_ = 0;
  bool lists_arguments_ = false;
  bool lists_all_ = false;
  std::vector<std::uint32_t> nested_;    // the arguments of open parentheses, where all are listed
  bool in_aggregate_ = false;
  bool awaits_aggregate_colon_ = false;
  bool outer_negated_ = false;
  bool negated_ = false;
  bool weak_ = false;
  std::string_view negation_;    // the last one that was written
  std::string_view outer_negation_;
  MaybeMistake mistake_;
  std::function<void(const Mistake&)> takes_mistake_;
};

}    // namespace dl
