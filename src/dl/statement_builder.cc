#include "dl/statement_builder.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <span>
#include <utility>

#include "dl/names.h"

namespace dl {

using enum zarel::Code;

namespace {

// clingo 5.4 walks terms by recursion: it stands 10,000 levels and dies at 100,000.
constexpr std::size_t kMaxNesting = 5000;
constexpr std::int64_t kMaxInteger = 2147483647;

std::int64_t value_of(std::string_view digits) {
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return error == std::errc() && end == digits.data() + digits.size() ? value : kMaxInteger + 1;
}

// clingo takes a leading zero for a number of its own and the digits after it for another.
std::string_view without_leading_zeros(std::string_view text) {
  while (text.size() > 1 && text.front() == '0') text.remove_prefix(1);
  return text;
}

Builtin mirrored(int op) {
  switch (op) {
    case kLess:
      return kGreater;
    case kGreater:
      return kLess;
    case kLessEqual:
      return kGreaterEqual;
    case kGreaterEqual:
      return kLessEqual;
    default:
      return static_cast<Builtin>(op);
  }
}

}    // namespace

VariableId VariableNumbers::number(std::string_view name, VariableId next) {
  if (2 * (used_ + 1) > slots_.size()) grow();
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t i = std::hash<std::string_view>{}(name)&mask;; i = (i + 1) & mask) {
    Slot& slot = slots_[i];
    if (slot.generation != generation_) {
      slot = {generation_, name, next};
      ++used_;
      return next;
    }
    if (slot.name == name) return slot.number;
  }
}

void VariableNumbers::grow() {
  std::vector<Slot> old(2 * slots_.size());
  old.swap(slots_);
  const std::size_t mask = slots_.size() - 1;
  for (const Slot& slot : old) {
    if (slot.generation != generation_) continue;
    std::size_t i = std::hash<std::string_view>{}(slot.name) & mask;
    while (slots_[i].generation == generation_) i = (i + 1) & mask;
    slots_[i] = slot;
  }
}

void StatementBuilder::count_lines_of_string(const Token& string) {
  const auto lines = static_cast<std::uint32_t>(std::ranges::count(string.view(), '\n'));
  if (lines == 0) return;
  line_ += lines;
  line_begin_ = string.text + string.view().rfind('\n') + 1;
}

void StatementBuilder::unexpected_character(const Token& token) {
  if (token.text[0] == '"') {
    return fail(token.line, kUnclosedString, "string without a closing quote", token.view());
  }
  fail(token.line, kUnexpectedCharacter, "unexpected character '" + std::string(token.view()) + "'",
       token.view());
}

void StatementBuilder::unknown_word(const Token& token) {
  fail(token.line, kUnknownWord, "unknown word " + std::string(token.view()), token.view());
}

void StatementBuilder::syntax_error(std::string_view message, std::string_view token) {
  fail(line_, kSyntaxError, std::string(message), token);
}

void StatementBuilder::fail(std::uint32_t line, zarel::Code code, std::string message,
                            std::string_view at) {
  if (!mistake_) mistake_ = Mistake{code, std::move(message), at, {}, line};
}

// The grammar looks one token ahead, so the text may be that of the line before: only the last
// token of a line costs the search for its beginning.
std::uint32_t StatementBuilder::column_of(const char* text) const {
  const char* begin = line_begin_;
  if (text < begin) {
    begin = text;
    while (begin != statement_.source && begin[-1] != '\n') --begin;
  }
  return static_cast<std::uint32_t>(text - begin + 1);
}

Piece StatementBuilder::piece(const Token& token) const {
  const std::uint32_t column = column_of(token.text);
  return {token.view(), {token.line, column, token.line, column + token.length - 1}};
}

// The first token is not always the one that gives the statement its line.
void StatementBuilder::note_begin(const Token& token) {
  if (statement_.written.data() != nullptr) return;
  statement_.written = token.view();
  statement_.range.first_line = token.line;
  statement_.range.first_column = column_of(token.text);
}

void StatementBuilder::begin_statement(const Token& token) {
  note_begin(token);
  statement_.line = token.line;
  statement_.column = statement_.range.first_line == token.line ? statement_.range.first_column
                                                                : column_of(token.text);
}

void StatementBuilder::note_end(const Token& end) {
  const char* const begin = statement_.written.data();
  statement_.written = {begin, end.text + end.length};
  statement_.range.last_line = end.line;
  statement_.range.last_column = column_of(end.text);
}

// Hands the outcome of a statement on, and makes room for the next.
void StatementBuilder::finish(const MaybeMistake& mistake) {
  if (mistake && !mistake_) {
    mistake_ = mistake;
    mistake_->line = statement_.line;
    if (takes_mistake_) {
      takes_mistake_(*mistake_);
      mistake_.reset();
    }
  }
  statement_.clear();
  numbers_.clear();
  weak_ = false;
  fresh_variables_ = 0;
}

void StatementBuilder::begin_weak(const Token& first) {
  note_line(first);
  weak_ = true;
  statement_.condition = first.view().substr(first.length);
}

// Only a disjunction may be asked for its range: a million facts do without.
void StatementBuilder::fact(const Token& end) {
  if (statement_.heads.size() > 1) note_end(end);
  finish(receiver_.fact(statement_));
}

void StatementBuilder::rule(const Token& end) {
  note_end(end);
  finish(receiver_.rule(statement_));
}

void StatementBuilder::query(const Token& end) {
  note_end(end);
  finish(receiver_.query(statement_));
}

void StatementBuilder::weak_constraint(const Token& weight, const Token& level, const Token& stop,
                                       const Token& end) {
  for (const Token* measure : {&weight, &level}) {
    if (measure->length != 0 &&
        measure->view().find_first_not_of("0123456789") == std::string_view::npos &&
        value_of(measure->view()) > kMaxInteger) {
      fail(measure->line, kIntegerRange,
           "number " + std::string(measure->view()) + " is greater than 2147483647",
           measure->view());
    }
  }
  if (has_failed()) return;
  const char* const body = statement_.condition.data();
  statement_.condition = {body, static_cast<std::size_t>(stop.text - body)};
  note_end(end);
  // The receiver looks weight and level up as terms, so that variables among them are known to it.
  const auto written = [this](const Token& measure) {
    Piece found = measure.length == 0 ? Piece{} : piece(measure);
    found.text = without_leading_zeros(found.text);
    return found;
  };
  finish(receiver_.weak_constraint(statement_, written(weight), written(level)));
}

void StatementBuilder::integer_bound(const Token& number) {
  note_line(number);
  const std::int64_t value = value_of(number.view());
  if (value > kMaxInteger) {
    return fail(number.line, kIntegerRange, "#maxint is greater than 2147483647", number.view());
  }
  finish(receiver_.integer_bound(value, piece(number)));
}

void StatementBuilder::include(const Token& directive) {
  note_line(directive);
  std::string_view name = directive.view();
  name.remove_prefix(std::string_view("#include").size());
  name.remove_prefix(name.find_first_not_of(" \t"));
  if (name.front() == '<' || name.front() == '"') name = name.substr(1, name.size() - 2);
  receiver_.include(name, piece(directive));
  finish({});
}

void StatementBuilder::negation(const Token& word) {
  note_begin(word);
  negated_ = true;
  negation_ = word.view();
}

void StatementBuilder::sign(const Token& sign) {
  note_begin(sign);
  separate();
  statement_.text += '-';
}

std::uint32_t StatementBuilder::strongly_negated(std::uint32_t atom) {
  Term& term = statement_.terms[atom];
  term.strongly_negated = true;
  --term.text.begin;
  return atom;
}

void StatementBuilder::add_literal(Literal literal) {
  literal.negated = std::exchange(negated_, false);
  if (literal.kind != kAtom) statement_.atoms_only = false;
  statement_.body.push_back(literal);
}

void StatementBuilder::head(std::uint32_t atom) {
  folding_.fold(statement_, atom);
  statement_.heads.push_back(atom);
}

// clingo reads "_" in a negated atom as "for none", but refuses it as unsafe behind "not -".
void StatementBuilder::project(std::uint32_t atom) {
  Term& term = statement_.terms[atom];
  const std::span<const Use> uses = statement_.uses_of(term);
  if (std::ranges::find(uses, kUnnamed, &Use::variable) == uses.end()) return;
  const std::uint32_t begin = text_size();
  const char* const name = term.name.data();
  const std::uint32_t column = name < line_begin_ ? 1 : column_of(name);
  statement_.text += receiver_.projection(statement_, term, line_, column);
  term.text = {begin, text_size()};
}

void StatementBuilder::atom_literal(std::uint32_t atom) {
  folding_.fold(statement_, atom);
  const Term& term = statement_.terms[atom];
  if (negated_ && term.strongly_negated && !term.open) project(atom);
  Literal literal;
  literal.term = atom;
  literal.uses = statement_.terms[atom].uses;
  add_literal(literal);
}

void StatementBuilder::add_builtin(Builtin kind, Slice arguments, std::uint32_t uses_begin) {
  Literal literal;
  literal.kind = kind;
  literal.arguments = arguments;
  literal.uses = {uses_begin, uses_size()};
  if (negated_ && !kind_of(kind).may_be_negated) {
    fail(line_, kUnsupportedNegation,
         std::string("\"not\" before ").append(kind_of(kind).name) + " is not supported",
         negation_);
  }
  add_literal(literal);
}

void StatementBuilder::assignment(Builtin kind, std::initializer_list<std::uint32_t> terms) {
  const std::uint32_t begin = arguments_size();
  const std::uint32_t uses_begin = uses_size();
  for (const std::uint32_t term : terms) {
    statement_.arguments.push_back(term);
    copy_uses(statement_.terms[term].uses);
  }
  add_builtin(kind, {begin, arguments_size()}, uses_begin);
}

void StatementBuilder::copy_uses(Slice uses) {
  for (std::uint32_t i = uses.begin; i < uses.end; ++i) {
    const Use use = statement_.uses[i];
    statement_.uses.push_back(use);
  }
}

void StatementBuilder::comparison(const Operator& op, std::uint32_t left, std::uint32_t right) {
  assignment(static_cast<Builtin>(op.kind), {left, right});
}

void StatementBuilder::open_builtin(const Operator& name) {
  note_begin({name.text, name.length, name.line});
  push_frame(text_size(), {});
}

void StatementBuilder::builtin(const Operator& name) {
  const auto kind = static_cast<Builtin>(name.kind);
  const Frame frame = close_frame();
  check_arity(name, frame.count);
  if (kind_of(kind).needs_bound) {
    receiver_.needs_bound(line_, piece({name.text, name.length, name.line}));
  }
  if (!has_failed()) add_builtin(kind, {frame.arguments_begin, arguments_size()}, frame.uses_begin);
}

void StatementBuilder::check_arity(const Operator& name, std::uint32_t count) {
  const auto kind = static_cast<Builtin>(name.kind);
  if (kind == kFunctionTerm) {
    const std::vector<std::uint32_t>& all = statement_.arguments;
    if (count < 2 || statement_.terms[all[all.size() - count + 1]].kind != TermKind::kConstant) {
      fail(line_, kFunctorName, "#function_builtin needs a term and the name of a functor",
           name.view());
    }
    return;
  }
  const std::uint32_t expected = kind_of(kind).arity;
  if (count == expected) return;
  fail(line_, kBuiltinArity,
       std::string(kind_of(kind).name) + " takes " + std::to_string(expected) +
           (expected == 1 ? " argument" : " arguments") + ", not " + std::to_string(count),
       name.view());
}

void StatementBuilder::open_aggregate(const Token& function) {
  const std::string_view name = function.view();
  note_begin(function);
  if (name == "#times" || name == "#any") {
    return fail(function.line, kUnsupportedAggregate, std::string(name) + " is not supported",
                name);
  }
  if (in_aggregate_) {
    return fail(function.line, kNestedAggregate, "an aggregate inside an aggregate", name);
  }
  Aggregate aggregate;
  aggregate.function = name == "#count" ? kCount
                       : name == "#sum" ? kSumUp
                       : name == "#min" ? kMin
                       : name == "#max" ? kMax
                                        : kAverage;
  aggregate.uses.begin = uses_size();
  aggregate.range.first_line = function.line;
  aggregate.range.first_column = column_of(function.text);
  statement_.aggregates.push_back(std::move(aggregate));
  in_aggregate_ = true;
  awaits_aggregate_colon_ = true;
  outer_negated_ = std::exchange(negated_, false);
  outer_negation_ = negation_;
  outer_body_.swap(statement_.body);
  push_frame(text_size(), {});
}

void StatementBuilder::aggregate_body() {
  if (has_failed()) return;
  awaits_aggregate_colon_ = false;
  const Frame frame = close_frame();
  statement_.aggregates.back().arguments = {frame.arguments_begin, arguments_size()};
}

void StatementBuilder::close_aggregate(const Token& brace) {
  if (has_failed()) return;
  Aggregate& aggregate = statement_.aggregates.back();
  aggregate.body.swap(statement_.body);
  aggregate.uses.end = uses_size();
  aggregate.range.last_line = brace.line;
  aggregate.range.last_column = column_of(brace.text);
  statement_.body.swap(outer_body_);
  in_aggregate_ = false;
  negated_ = outer_negated_;
  negation_ = outer_negation_;
}

void StatementBuilder::add_guards(const Guard& left, const Guard& right) {
  if (has_failed()) return;
  if (negated_ && statement_.aggregates.back().function == kAverage) {
    return fail(line_, kUnsupportedNegation, "\"not\" before #avg is not supported", negation_);
  }
  Literal literal;
  literal.kind = kAggregate;
  literal.aggregate = static_cast<std::uint32_t>(statement_.aggregates.size() - 1);
  literal.uses.begin = uses_size();
  for (const Guard& guard : {left, right}) {
    if (!guard.given) continue;
    if (guard.op == kUnequal) {
      return fail(line_, kGuardOperator, "!= is not a guard of an aggregate", guard.written);
    }
    copy_uses(statement_.terms[guard.term].uses);
  }
  literal.uses.end = uses_size();
  statement_.aggregates.back().left = left;
  statement_.aggregates.back().right = right;
  add_literal(literal);
}

void StatementBuilder::equal_to_aggregate(std::uint32_t term) {
  add_guards({true, kEqual, term, {}}, {});
}

void StatementBuilder::left_guard(const Operator& op, std::uint32_t term) {
  add_guards({true, static_cast<Builtin>(op.kind), term, op.view()}, {});
}

void StatementBuilder::right_guard(const Operator& op, std::uint32_t term) {
  add_guards({true, mirrored(op.kind), term, op.view()}, {});
}

void StatementBuilder::two_guards(const WrittenGuard& left, const WrittenGuard& right) {
  for (const Operator& op : {left.op, right.op}) {
    if (op.kind == kLess || op.kind == kLessEqual) continue;
    return fail(line_, kGuardOperator,
                "two guards of an aggregate must both be < or <=", op.view());
  }
  add_guards({true, static_cast<Builtin>(left.op.kind), left.term, left.op.view()},
             {true, static_cast<Builtin>(right.op.kind), right.term, right.op.view()});
}

void StatementBuilder::missing_guard(std::string_view op) {
  fail(line_, kMissingGuard, "an aggregate has a comparison without a guard term", op);
}

// Arguments are separated as they are written, so that a compound's text is complete when it is
// closed.
void StatementBuilder::separate() {
  if (frames_.empty()) return;
  if (frames_.back().count++ != 0) statement_.text += ',';
}

std::uint32_t StatementBuilder::add_term(TermKind kind, std::uint32_t text_begin,
                                         std::uint32_t uses_begin) {
  Term term;
  term.kind = kind;
  term.text = {text_begin, text_size()};
  term.uses = {uses_begin, uses_size()};
  statement_.terms.push_back(term);
  return static_cast<std::uint32_t>(statement_.terms.size() - 1);
}

std::uint32_t StatementBuilder::constant(const Token& name) {
  note_line(name);
  separate();
  const std::uint32_t begin = text_size();
  append_clingo_name(statement_.text, name.view());
  const std::uint32_t term = add_term(TermKind::kConstant, begin, uses_size());
  statement_.terms[term].name = name.view();
  return term;
}

VariableId StatementBuilder::add_variable(std::string_view name) {
  const auto next = static_cast<VariableId>(statement_.variables.size());
  const VariableId id = numbers_.number(name, next);
  if (id == next)
    statement_.variables.push_back(
        {text_size(), text_size() + static_cast<std::uint32_t>(name.size())});
  statement_.text += name;
  add_use(id, name.data());
  return id;
}

void StatementBuilder::add_use(VariableId variable, const char* written) {
  statement_.uses.push_back({variable, static_cast<std::uint32_t>(written - statement_.source)});
}

std::uint32_t StatementBuilder::variable(const Token& name) {
  note_line(name);
  separate();
  const std::uint32_t begin = text_size();
  const VariableId id = add_variable(name.view());
  const std::uint32_t term = add_term(TermKind::kVariable, begin, uses_size() - 1);
  statement_.terms[term].variable = id;
  return term;
}

std::uint32_t StatementBuilder::anonymous(const Token& token) {
  note_line(token);
  separate();
  const std::uint32_t begin = text_size();
  const VariableId variable = add_anonymous(token.text);
  const TermKind kind = variable == kUnnamed ? TermKind::kAnonymous : TermKind::kVariable;
  const std::uint32_t term = add_term(kind, begin, uses_size() - 1);
  statement_.terms[term].variable = variable;
  return term;
}

// A weak constraint costs once for each instance of its body, and an anonymous variable is a
// variable of the body like any other. clingo would project it away, so in positive literals it
// gets a name. So does an operand of a builtin, which is looked at like any other operand.
VariableId StatementBuilder::add_anonymous(const char* written) {
  const bool is_operand = frames_.empty() || frames_.back().name.empty();
  if (!is_operand && (!weak_ || negated_ || in_aggregate_)) {
    statement_.text += '_';
    add_use(kUnnamed, written);
    return kUnnamed;
  }
  const std::uint32_t begin = text_size();
  statement_.text += "_V" + std::to_string(++fresh_variables_);
  const auto id = static_cast<VariableId>(statement_.variables.size());
  statement_.variables.push_back({begin, text_size()});
  add_use(id, written);
  return id;
}

std::uint32_t StatementBuilder::string(const Token& quoted) {
  note_line(quoted);
  separate();
  const std::uint32_t begin = text_size();
  append_clingo_string(statement_.text, quoted.view());
  return add_term(TermKind::kString, begin, uses_size());
}

std::uint32_t StatementBuilder::number(const Token& digits) {
  note_line(digits);
  separate();
  const std::uint32_t begin = text_size();
  append_number(digits.view(), digits.line);
  return add_term(TermKind::kInteger, begin, uses_size());
}

void StatementBuilder::append_number(std::string_view digits, std::uint32_t line) {
  const std::string_view value = without_leading_zeros(digits);
  if (value.size() >= 10 && value_of(value) > kMaxInteger) {
    fail(line, kIntegerRange, "number " + std::string(value) + " is greater than 2147483647",
         digits);
  }
  statement_.text += value;
}

std::uint32_t StatementBuilder::bound_term(const Token& token) {
  note_line(token);
  separate();
  receiver_.needs_bound(token.line, piece(token));
  const std::uint32_t begin = text_size();
  statement_.text += "_m";
  return add_term(TermKind::kBound, begin, uses_size());
}

void StatementBuilder::push_frame(std::uint32_t text_begin, std::string_view name) {
  if (frames_.size() == kMaxNesting) {
    fail(line_, kInputTooDeep,
         "a term is nested deeper than " + std::to_string(kMaxNesting) + " levels", name);
  }
  frames_.push_back({text_begin, uses_size(), arguments_size(), 0, 0, name,
                     static_cast<std::uint32_t>(nested_.size())});
}

StatementBuilder::Frame StatementBuilder::close_frame() {
  Frame frame = frames_.back();
  frames_.pop_back();
  if (lists_all_) {
    const auto begin = nested_.begin() + frame.nested_begin;
    frame.arguments_begin = arguments_size();
    statement_.arguments.insert(statement_.arguments.end(), begin, nested_.end());
    nested_.erase(begin, nested_.end());
  }
  return frame;
}

void StatementBuilder::open_compound(const Token& name) {
  note_line(name);
  separate();
  const std::uint32_t begin = text_size();
  append_clingo_name(statement_.text, name.view());
  statement_.text += '(';
  push_frame(begin, name.view());
}

std::uint32_t StatementBuilder::close_compound() {
  const Frame frame = close_frame();
  statement_.text += ')';
  const std::uint32_t index = add_term(TermKind::kCompound, frame.text_begin, frame.uses_begin);
  Term& term = statement_.terms[index];
  term.name = frame.name;
  term.arity = frame.count;
  term.simple = frame.simple;
  term.arguments = {frame.arguments_begin, arguments_size()};
  return index;
}

// Note [flat compounds]
// Most atoms are a name and names, variables and numbers in parentheses, without a blank. The
// scanner gives such an atom as one token, which is taken apart here: a third of the time that its
// pieces would take as tokens.
std::uint32_t StatementBuilder::flat_compound(const Token& token) {
  const std::string_view text = token.view();
  std::size_t end = text.find('(');
  open_compound({token.text, static_cast<std::uint32_t>(end), token.line});
  while (end + 1 < text.size()) {
    const std::size_t begin = end + 1;
    end = begin;
    while (is_word(text[end])) ++end;
    flat_argument(text.substr(begin, end - begin), token.line);
  }
  return close_compound();
}

void StatementBuilder::flat_argument(std::string_view word, std::uint32_t line) {
  separate();
  if (lists_all_ || (lists_arguments_ && frames_.size() == 1))
    return list_flat_argument(word, line);
  if (is_lower(word.front())) {
    note_simple_argument();
    append_clingo_name(statement_.text, word);
  } else if (word.front() == '_') {
    add_anonymous(word.data());
  } else if (word.front() <= '9') {
    note_simple_argument();
    append_number(word, line);
  } else {
    add_variable(word);
  }
}

void StatementBuilder::list_flat_argument(std::string_view word, std::uint32_t line) {
  const std::uint32_t begin = text_size();
  const std::uint32_t uses_begin = uses_size();
  TermKind kind = TermKind::kVariable;
  VariableId variable = kUnnamed;
  if (is_lower(word.front())) {
    kind = TermKind::kConstant;
    append_clingo_name(statement_.text, word);
  } else if (word.front() == '_') {
    variable = add_anonymous(word.data());
    if (variable == kUnnamed) kind = TermKind::kAnonymous;
  } else if (word.front() <= '9') {
    kind = TermKind::kInteger;
    append_number(word, line);
  } else {
    variable = add_variable(word);
  }
  const std::uint32_t term = add_term(kind, begin, uses_begin);
  statement_.terms[term].variable = variable;
  statement_.terms[term].name = word;
  argument(term);
}

void StatementBuilder::note_simple_argument() {
  Frame& frame = frames_.back();
  if (frame.count <= 32) frame.simple |= 1U << (frame.count - 1);
}

// Only the arguments of the outermost parentheses are looked at one by one, as a rule, so only they
// are listed. Where all are, each parenthesis lists its own when it is closed.
void StatementBuilder::argument(std::uint32_t term) {
  if (frames_.empty()) return;
  if (is_simple(statement_.terms[term].kind)) note_simple_argument();
  if (lists_all_) {
    nested_.push_back(term);
  } else if (frames_.size() == 1) {
    statement_.arguments.push_back(term);
  }
}

}    // namespace dl
