#include "parser/program_builder.h"

#include <charconv>
#include <limits>
#include <ostream>
#include <string>

#include "base/characters.h"
#include "frames/frame_rule.h"
#include "functions/function_terms.h"
#include "model/names.h"
#include "model/namespaces.h"
#include "model/printer.h"
#include "model/run.h"
#include "parser/flat_fact.h"
#include "templates/definitions.h"
#include "templates/invocations.h"
#include "templates/linking.h"
#include "templates/query_rewriting.h"

namespace zarel {
namespace {

constexpr std::uint32_t kFractionDigits = 3;

constexpr std::string_view kSyntaxError = "syntax error";    // as the parser itself reports it

bool is_inclusive(BUILTIN comparison) {
  return comparison == BUILTIN::kLessOrEqual || comparison == BUILTIN::kGreaterOrEqual;
}

bool is_less(BUILTIN comparison) {
  return comparison == BUILTIN::kLess || comparison == BUILTIN::kLessOrEqual;
}

std::uint32_t scaled_fraction(Number fraction) {
  std::uint32_t value = fraction.value;
  for (std::uint32_t digits = fraction.digit_count; digits < kFractionDigits; ++digits) value *= 10;
  for (std::uint32_t digits = fraction.digit_count; digits > kFractionDigits; --digits) value /= 10;
  return value;
}

TERMT scaled_weight(std::uint32_t whole, std::uint32_t fraction) {
  const std::uint64_t scaled = std::uint64_t{whole} * kWeightScale + fraction;
  if (scaled > std::numeric_limits<std::uint32_t>::max()) {
    report(Code::kWeightRange, "weak constraint weight out of range");
  }
  return TERMT::integer(static_cast<std::int32_t>(static_cast<std::uint32_t>(scaled)));
}

// A local name may be a string: its quotes would end the address it becomes part of.
std::string_view without_quotes(std::string_view name) {
  return name.starts_with('"') ? name.substr(1, name.size() - 2) : name;
}

void say_that_query_is_replaced(const Body& old_query, const Body& new_query) {
  Text line("Query ");
  append_list(line, new_query, ", ");
  line += " replaces ";
  append_list(line, old_query, ", ");
  line += ".\n";
  Run& run = current_run();
  report({Code::kReplacedQuery,
          work_place(),
          line.str(),
          {{place_of(run.query_places.back()), "the query that it replaces"}}});
}

}    // namespace

void ProgramBuilder::start_file() {
  spaces_.start_file();
  leave_template();
  end_statement();
}

void ProgramBuilder::parser_failed(std::string_view message) const {
  report(message == kSyntaxError ? Code::kSyntaxError : Code::kInputTooDeep, std::string(message));
}

// What is left of a template body with an error in it is read as statements of the program.
void ProgramBuilder::skipped_statement() {
  ++current_run().findings.parser_errors;
  leave_template();
  end_statement();
}

TERMT ProgramBuilder::qualified_term(const NamePair& prefix_and_local) {
  if (const auto known = qualified_constants_.find(prefix_and_local)) return *known;
  const auto [prefix, local] = prefix_and_local;
  const auto address =
      returnAddress(names().spelling(prefix), without_quotes(names().spelling(local)));
  if (address) {
    note_prefix_use();
    const TERMT constant = newTERMT(*address);
    qualified_constants_.note(prefix_and_local, constant);
    return constant;
  }
  std::string message = "An URI with id '";
  message.append(names().spelling(prefix)).append("' does not exist");
  report(Code::kUnknownPrefix, message);
  return newTERMT(local);
}

NameId ProgramBuilder::disjunction_name() {
  return names().intern("v");
}

FrameContext ProgramBuilder::context() const {
  return {OptionHigherOrder(), is_in_template_ && are_frames_local()};
}

std::vector<CLAUSET>& ProgramBuilder::clauses() {
  return is_in_template_ ? definition_.rules : CLAUSES();
}

// Under the name as written; in a template body under the labelled name.
ATOMT ProgramBuilder::plain_atom(NameId name, std::span<const TERMT> terms,
                                 Negation negation) const {
  const std::string_view written = names().spelling(name);
  if (is_in_template_) check_template_name(written);
  const std::string text = is_in_template_ ? getNameAtomLabeled(written) : std::string(written);
  if (negation == Negation::kStrong) return newNegativeATOMT(text, terms);
  return {text, terms, PREDICATE_NAMETS::TYPE::kUnknown};
}

bool ProgramBuilder::allows_frame_space() const {
  if (is_in_template_) parser_failed(kSyntaxError);
  return !is_in_template_;
}

ATOMT ProgramBuilder::atom(NameId name, TermsMark list, NameId frame_space, Negation negation) {
  if (is_in_template_) return plain_atom(name, terms_.take(list), negation);
  return encoded_atom(name, frame_space, terms_.take(list), negation);
}

ATOMT ProgramBuilder::atom(NameId name, NameId frame_space, Negation negation) {
  if (is_in_template_) return plain_atom(name, {}, negation);
  return addDefaultToAtomt(encoded_bare_atom(name, negation), frame_space);
}

TERMT ProgramBuilder::function_term(NameId functor, TermsMark arguments) {
  if (const std::string_view name = names().spelling(functor); name.starts_with('"')) {
    std::string message = "a functor must be a name without quotes, not ";
    report(Code::kQuotedFunctor, message.append(name));
  }
  return newFTERM(functor, terms_.take(arguments));
}

Literal ProgramBuilder::builtin(BUILTIN code, TermsMark list) {
  return literal(newBuiltin(code, terms_.take(list)));
}

Literal ProgramBuilder::external_atom(NameId name, TermsMark list) {
  return literal(ATOMT::external(names().spelling(name), terms_.take(list), {}));
}

AGGREGATEPREDT* ProgramBuilder::aggregate(AggregateFunction function, TermsMark variables,
                                          Body* body) {
  AGGREGATEPREDT bare{};
  bare.function = function;
  bare.terms = program_storage().store(terms_.take(variables));
  rewriteFunctionsInBody(*body);
  bare.body = store(*body);
  return &aggregates_.emplace_back(bare);
}

// A guard to the left with ">" or ">=" also gets the lower bound 0; its mirror image to the right
// does not.
ATOMT ProgramBuilder::left_guarded(const TERMT& guard, BUILTIN comparison,
                                   const AGGREGATEPREDT* aggregate) {
  const auto written = standardizeGuard(guard, is_inclusive(comparison));
  if (is_less(comparison)) {
    return newAggregate(written, standardizeGuard(TERMT::integer(2147483647), false), *aggregate,
                        true, false, false);
  }
  return newAggregate(standardizeGuard(TERMT::integer(0), true), written, *aggregate, true, true,
                      false);
}

ATOMT ProgramBuilder::right_guarded(const AGGREGATEPREDT* aggregate, BUILTIN comparison,
                                    const TERMT& guard) {
  const auto written = standardizeGuard(guard, is_inclusive(comparison));
  if (is_less(comparison)) {
    return newAggregate(standardizeGuard(TERMT::integer(0), false), written, *aggregate, false,
                        true, false);
  }
  return newAggregate(written, standardizeGuard(TERMT::integer(0), true), *aggregate, true, false,
                      false);
}

ATOMT ProgramBuilder::left_equal(const TERMT& guard, const AGGREGATEPREDT* aggregate) {
  return newAggregate(standardizeGuard(guard, true), standardizeGuard(guard, false), *aggregate,
                      true, false, true);
}

ATOMT ProgramBuilder::right_equal(const AGGREGATEPREDT* aggregate, const TERMT& guard) {
  return newAggregate(standardizeGuard(guard, false), standardizeGuard(guard, true), *aggregate,
                      false, true, true);
}

ATOMT ProgramBuilder::between(const TERMT& lower, BUILTIN lower_comparison,
                              const AGGREGATEPREDT* aggregate, BUILTIN upper_comparison,
                              const TERMT& upper) {
  return newAggregate(standardizeGuard(lower, is_inclusive(lower_comparison)),
                      standardizeGuard(upper, is_inclusive(upper_comparison)), *aggregate, true,
                      true, false);
}

Body* ProgramBuilder::empty_body() {
  if (bodies_in_use_ == bodies_.size()) bodies_.emplace_back();
  Body& body = bodies_[bodies_in_use_++];
  body.clear();
  return &body;
}

Body* ProgramBuilder::first_literal(const Literal& literal) {
  return next_literal(empty_body(), literal);
}

Body* ProgramBuilder::next_literal(Body* body, const Literal& literal) {
  body->add(literal);
  return body;
}

Body* ProgramBuilder::first_frame(const FRAME& frame) {
  return next_frame(empty_body(), frame);
}

Body* ProgramBuilder::next_frame(Body* body, const FRAME& frame) {
  for (const Literal& literal : standardize(frame, FramePosition::kBody, context()))
    body->add(literal);
  return body;
}

FRAME ProgramBuilder::negated(FRAME frame) {
  frame.set_negated(true);
  return frame;
}

void ProgramBuilder::head_frame(const FRAME& frame) {
  if (frame.has_nested_negation())
    report(Code::kNegationInHead, "You cannot have negation in head");
  head_frame_ = frame;
}

// Before what follows is read: its predicates are recorded behind those of the frame.
void ProgramBuilder::next_disjunct() {
  if (!head_frame_) return;
  const auto literals = standardize(*head_frame_, FramePosition::kHead, context());
  for (const Literal& literal : literals) head_.add(literal.atom);
  head_frame_.reset();
}

// A frame alone stays one until the body is known: each of its statements then heads a clause of
// its own.
void ProgramBuilder::close_head() {
  if (head_.size() != 0) next_disjunct();
}

TERMT ProgramBuilder::weight(Number whole) {
  return scaled_weight(whole.value, 0);
}

TERMT ProgramBuilder::weight(Number whole, Number fraction) {
  if (fraction.digit_count > kFractionDigits)
    report(Code::kWeightPrecision, "Number has more precision than supported. Truncated");
  return scaled_weight(whole.value, scaled_fraction(fraction));
}

// An integer may be reported: it stands where it is in the fact, not where that is.
TERMT ProgramBuilder::flat_integer(std::string_view digits, const TokenText& fact) {
  std::uint32_t value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value);
  const SourceRange whole = work_.where().range;
  const auto begin = static_cast<std::uint32_t>(digits.data() - fact.begin) + whole.first_column;
  const auto length = static_cast<std::uint32_t>(digits.size());
  const SourceRange own{whole.first_line, begin, whole.first_line, begin + length - 1};
  return at(own)->bounds_.integer(value);
}

TERMT ProgramBuilder::flat_term(std::string_view text, const TokenText& fact) {
  if (is_digit(text[0])) return flat_integer(text, fact);
  const NameId name = names().intern(text);
  return is_upper_case(text[0]) ? variable_term(name) : constant_term(name);
}

void ProgramBuilder::flat_fact(const TokenText& text) {
  FlatFact parts({text.begin, text.length});
  const NameId name = names().intern(parts.next());
  TermsMark list = terms_.empty_list();
  for (std::string_view term = parts.next(); !term.empty(); term = parts.next()) {
    list = terms_.next(list, flat_term(term, text));
  }
  head_.add(atom(name, list, frame_space()));
  rule(nullptr);
}

void ProgramBuilder::fact() {
  close_head();
  rule(nullptr);
}

void ProgramBuilder::rule(Body* body) {
  if (hasFunctionTerm()) {
    if (body == nullptr) body = empty_body();
    rewriteFunctions(&head_, *body);
  }
  if (head_frame_) return frame_rule(body);
  Rule rule;
  rule.init(&head_, body);
  clauses().emplace_back(std::move(rule), work_.source());
  end_statement();
}

void ProgramBuilder::frame_rule(const Body* body) {
  const FRAME_HEAD head({*head_frame_});
  for (CLAUSET& clause : frame_rule_clauses(head, body, context()))
    clauses().push_back(std::move(clause));
  end_statement();
}

void ProgramBuilder::range_fact(NameId name, const TERMT& first, const TERMT& last) {
  const WorkScope made_of_range(OriginId::kRange);
  const TERMT variable = newTERMT(getNameTerm({}, 0));
  head_.add(atom(name, terms(variable), spaces_.current()));
  Body* const body = first_literal(builtin(BUILTIN::kInt, terms(variable)));
  next_literal(body, builtin(BUILTIN::kGreaterOrEqual, terms(variable, first)));
  next_literal(body, builtin(BUILTIN::kLessOrEqual, terms(variable, last)));
  rule(body);
}

void ProgramBuilder::constraint(Body* body) {
  rewriteFunctions(nullptr, *body);
  clauses().emplace_back(Constraint(*body), work_.source());
  end_statement();
}

void ProgramBuilder::weak_constraint(Body* body, const WeakCost& cost) {
  rewriteFunctions(nullptr, *body);
  clauses().emplace_back(WeakConstraint(*body, cost), work_.source());
  end_statement();
}

// Only one query is kept. The variables that follow are numbered from 0 again.
bool ProgramBuilder::query(Body* body) {
  if (has_invocation_) {
    parser_failed(kSyntaxError);
    return false;
  }
  if (hasFunctionTerm()) rewriteQuery(*body);
  if (!QUERIES().empty()) say_that_query_is_replaced(QUERIES().back(), *body);
  QUERIES().assign(1, *body);
  current_run().query_places.assign(1, work_.source().location);
  LocalVariables().reset();
  end_statement();
  return true;
}

// The directive's own number is no integer of the program: no earlier bound holds for it.
void ProgramBuilder::maxint_directive(Number number) {
  maxint_directive(TERMT::integer(static_cast<std::int32_t>(number.value)));
}

void ProgramBuilder::maxint_directive(const TERMT& term) {
  if (bounds_.define(term)) CLAUSES().emplace_back(term, work_.source());
  end_statement();
}

void ProgramBuilder::include_line(NameId name) {
  std::string line = "#include ";
  Includes().push_back(line.append(names().spelling(name)));
  current_run().include_places.push_back(work_.source().location);
}

void ProgramBuilder::include_library_line(NameId name) {
  std::string line = "#include <";
  Includes().push_back(line.append(names().spelling(name)).append(">"));
  current_run().include_places.push_back(work_.source().location);
}

void ProgramBuilder::declare_namespace(NameId prefix, NameId uri) {
  std::string quoted(names().spelling(uri));
  if (quoted.front() != '"') quoted.insert(0, 1, '"').push_back('"');
  if (!vectorName().declare(names().spelling(prefix), quoted)) {
    report(Code::kRedefinedPrefix, "Cannot define more namespace with the same name");
  }
}

void ProgramBuilder::formal_predicate(NameId name, Number arity) {
  definition_.formals.add(
      {std::string(names().spelling(name)), static_cast<std::int32_t>(arity.value)});
}

void ProgramBuilder::global_predicate(NameId name) {
  GLOBALS().add(name);
  definition_.globals.insert(name);
}

void ProgramBuilder::open_template(NameId name, Number output_arity) {
  definition_.name = names().spelling(name);
  check_template_name(definition_.name);
  definition_.outputArity = static_cast<std::int32_t>(output_arity.value);
  definition_.sequence_number = static_cast<std::uint32_t>(cont());
  definition_.frame_space = spaces_.current_default();
  definition_.head = work_.where();
  is_in_template_ = true;
}

void ProgramBuilder::close_template() {
  addedDefinition(std::move(definition_));
  leave_template();
  end_statement();
}

// A definition with an error used its number up too: names of two definitions never mix.
void ProgramBuilder::leave_template() {
  if (is_in_template_) ++cont();
  is_in_template_ = false;
  definition_ = DEFINITIONATOM{};
}

ATOMT ProgramBuilder::actual(NameId name, Negation negation) {
  return plain_atom(name, {}, negation);
}

ATOMT ProgramBuilder::actual(NameId name, TermsMark parameters, Negation negation) {
  return plain_atom(name, terms_.take(parameters), negation);
}

ATOMT ProgramBuilder::invocation(NameId name, ActualsMark actuals, TermsMark output_terms) {
  const std::span<const TERMT> terms = terms_.take(output_terms);
  INVOCATIONATOM invocation{std::string(names().spelling(name)), {terms.begin(), terms.end()}, {}};
  for (const ATOMT& actual : actuals_.take(actuals)) {
    invocation.actuals.add(actual);
    invocation.origins.push_back({actual, spaces_.current_default()});
  }
  invocation.written = work_.where();
  has_invocation_ = true;
  if (is_in_template_) return ATOMT(invocation);
  invocation.expansion_key = marker_key(expansion_of(invocation));
  const ATOMT marker(invocation);
  record_invocation(std::move(invocation));
  return marker;
}

void ProgramBuilder::end_statement() {
  actuals_.clear();
  has_invocation_ = false;
  terms_.clear();
  frames_.clear();
  head_.clear();
  head_frame_.reset();
  bodies_in_use_ = 0;
  aggregates_.clear();
  if (hasFunctionTerm()) FTermTable().clear();
}

}    // namespace zarel
