#pragma once
// program_builder.h - what the grammar's actions call: each construct of the input, made into the
// program model.

#include <cstdint>
#include <deque>
#include <optional>
#include <utility>
#include <vector>

#include "frames/frame_translation.h"
#include "model/clause.h"
#include "model/generic_atoms.h"
#include "model/report.h"
#include "model/template_records.h"
#include "parser/frame_builder.h"
#include "parser/frame_spaces.h"
#include "parser/integer_bounds.h"
#include "parser/list_stack.h"

namespace zarel {

// The text of a token, where it stands in the scanner's buffer: valid until the next token is read.
struct TokenText {
  const char* begin;
  std::size_t length;
};

// The value of a NUMBER token: nine digits at most.
struct Number {
  std::uint32_t value;
  std::uint32_t digit_count;    // leading zeros count: they matter behind a weight's full stop
};

using TermsMark = ListStack<TERMT>::Mark;
using ActualsMark = ListStack<ATOMT>::Mark;

// One builder reads all files of a program. It owns everything that semantic values refer to until
// the statement's end, so that a statement dropped in the middle leaks nothing; finished clauses
// and queries go to CLAUSES and QUERIES. Errors are reported to the run.
class ProgramBuilder {
 public:
  ProgramBuilder() : work_(work()) {}

  void start_file();

  // While a file is parsed, the place of the construct whose action runs.
  void follow(const SourceRange& place) { work_.reading = &place; }

  // The builder, for one call, with what it reports and makes at another place.
  class Placed {
   public:
    Placed(ProgramBuilder& builder, const SourceRange& place)
        : builder_(builder), before_(std::exchange(builder.work_.reading, &place)) {}
    ~Placed() { builder_.work_.reading = before_; }
    Placed(const Placed&) = delete;
    Placed& operator=(const Placed&) = delete;
    ProgramBuilder* operator->() const { return &builder_; }

   private:
    ProgramBuilder& builder_;
    const SourceRange* before_;
  };
  Placed at(const SourceRange& place) { return {*this, place}; }

  void parser_failed(std::string_view message) const;    // as the generated parser says it
  void skipped_statement();                              // after a syntax error: counts it

  // Terms.
  TERMT constant_term(NameId name) {
    return TERMT::constant(name);
  }    // of a small letter or quoted
  TERMT variable_term(NameId name) { return newTERMT(name); }
  TERMT anonymous_term() { return TERMT::anonymous(); }
  TERMT integer_term(Number number) { return bounds_.integer(number.value); }
  TERMT maxint_term() { return bounds_.maxint(); }
  TERMT qualified_term(
      const NamePair& prefix_and_local);    // prefix:local; an unknown prefix counts an error
  TERMT function_term(NameId functor, TermsMark arguments);    // a quoted functor counts an error
  NameId disjunction_name();    // the word "v", where it stands for a name

  // Lists of terms while they are read.
  ListStack<TERMT>& term_lists() { return terms_; }
  TermsMark terms(const TERMT& a) { return terms_.first(a); }
  TermsMark terms(const TERMT& a, const TERMT& b) { return terms_.next(terms(a), b); }
  TermsMark terms(const TERMT& a, const TERMT& b, const TERMT& c) {
    return terms_.next(terms(a, b), c);
  }

  // Atoms and literals.
  NameId frame_space(NameId name) { return spaces_.named(name); }
  NameId frame_space() { return spaces_.current(); }
  ATOMT atom(NameId name, TermsMark list, NameId frame_space, Negation negation = Negation::kNone);
  ATOMT atom(NameId name, NameId frame_space, Negation negation = Negation::kNone);
  // Whether a frame space may be named behind an atom here: not in a template body, where it is a
  // syntax error.
  bool allows_frame_space() const;
  Literal builtin(BUILTIN code, TermsMark list);
  Literal external_atom(NameId name, TermsMark list);
  Literal literal(const ATOMT& atom) { return {atom, false}; }
  Literal negated(const ATOMT& atom) { return {atom, true}; }

  // Aggregates: the bare one, then with a guard to its left, to its right, or on both sides.
  AGGREGATEPREDT* aggregate(AggregateFunction function, TermsMark variables, Body* body);
  ATOMT left_guarded(const TERMT& guard, BUILTIN comparison, const AGGREGATEPREDT* aggregate);
  ATOMT right_guarded(const AGGREGATEPREDT* aggregate, BUILTIN comparison, const TERMT& guard);
  ATOMT left_equal(const TERMT& guard, const AGGREGATEPREDT* aggregate);
  ATOMT right_equal(const AGGREGATEPREDT* aggregate, const TERMT& guard);
  ATOMT between(const TERMT& lower, BUILTIN lower_comparison, const AGGREGATEPREDT* aggregate,
                BUILTIN upper_comparison, const TERMT& upper);

  Body* first_literal(const Literal& literal);
  Body* next_literal(Body* body, const Literal& literal);
  Body* first_frame(const FRAME& frame);
  Body* next_frame(Body* body, const FRAME& frame);
  // Frames: their parts, then the whole with its frame space, and under "not".
  FrameBuilder& frames() { return frames_; }
  FRAME negated(FRAME frame);

  // The disjuncts of a head, what stands between two of them, and its end. "not" inside a frame
  // there is reported and counted.
  void head_atom(const ATOMT& atom) { head_.add(atom); }
  void head_frame(const FRAME& frame);
  void next_disjunct();
  void close_head();

  // The parts of a weak constraint's cost.
  TERMT weight(Number whole);
  TERMT weight(Number whole, Number fraction);
  TERMT level(Number number) { return TERMT::integer(static_cast<std::int32_t>(number.value)); }

  // Statements.
  void flat_fact(const TokenText& text);
  void fact();              // of the disjuncts read; closes the head
  void rule(Body* body);    // the closed head; null: no body
  void range_fact(NameId name, const TERMT& first, const TERMT& last);
  void constraint(Body* body);
  void weak_constraint(Body* body, const WeakCost& cost);
  // False, with a message, when the query holds a template invocation: a syntax error.
  bool query(Body* body);
  void maxint_directive(Number number);
  void maxint_directive(const TERMT& term);
  void include_line(NameId name);            // #include name
  void include_library_line(NameId name);    // #include <name>
  void declare_namespace(NameId prefix, NameId uri);
  void default_frame_space(NameId name) { spaces_.set_default(name); }
  void default_frame_space() { spaces_.reset_default(); }

  // Template definitions: the head's parts, the head, and the end of the body. Until then, clauses
  // go to the definition, and atoms are plain atoms of labelled names. A second definition of a
  // name ends the run.
  void formal_predicate(NameId name, Number arity);
  void global_predicate(NameId name);
  void open_template(NameId name, Number output_arity);
  void close_template();

  // Template invocations: their actual predicates, and the marker atom. One outside of template
  // bodies is scheduled and recorded.
  TERMT asterisk_term() { return TERMT::asterisk(); }
  TERMT dollar_term() { return TERMT::dollar(); }
  ATOMT actual(NameId name, Negation negation = Negation::kNone);
  ATOMT actual(NameId name, TermsMark parameters, Negation negation = Negation::kNone);
  ListStack<ATOMT>& actual_lists() { return actuals_; }
  ATOMT invocation(NameId name, ActualsMark actuals, TermsMark output_terms);

 private:
  TERMT flat_term(std::string_view text, const TokenText& fact);
  TERMT flat_integer(std::string_view digits, const TokenText& fact);
  Body* empty_body();
  FrameContext context() const;
  ATOMT plain_atom(NameId name, std::span<const TERMT> terms, Negation negation) const;
  std::vector<CLAUSET>& clauses();    // where finished clauses go
  void leave_template();
  void frame_rule(const Body* body);
  void end_statement();

  FrameSpaces spaces_;
  IntegerBounds bounds_;
  ListStack<TERMT> terms_;
  QualifiedConstants qualified_constants_;
  FrameBuilder frames_;
  Head head_;                          // of a rule that is not headed by one frame alone
  std::optional<FRAME> head_frame_;    // of one that is, or so far
  std::deque<Body> bodies_;            // reused from statement to statement
  std::size_t bodies_in_use_ = 0;
  std::deque<AGGREGATEPREDT> aggregates_;
  DEFINITIONATOM definition_{};    // being read
  bool is_in_template_ = false;    // between its head and its end
  ListStack<ATOMT> actuals_;
  bool has_invocation_ = false;    // in this statement
  Work& work_;                     // the run's
};

}    // namespace zarel
