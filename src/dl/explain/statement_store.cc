#include "dl/explain/statement_store.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "dl/body_order.h"
#include "dl/explain/atom_batch.h"
#include "dl/explain/statement_reader.h"
#include "dl/names.h"
#include "dl/parse.h"

namespace dl {
namespace {

constexpr FactPlace kNoFact;

std::uint32_t integer_of(std::string_view digits) {
  std::uint32_t value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return value;
}

// Stores one statement: the terms that its atoms and literals need, each once.
class StatementCopy {
 public:
  StatementCopy(const Statement& statement, std::optional<std::int64_t> bound, GroundTerms& terms,
                AnswerIndex& index)
      : statement_(statement), bound_(bound), terms_(terms), index_(index) {}

  StoredStatement make(StatementKind kind, std::uint32_t file);
  // The value of a term without variables.
  GroundTerm ground(std::uint32_t term);
  std::optional<PatternNumber> measure(std::string_view text);

 private:
  static constexpr PatternNumber kNotCopied = 0xffffffffu;

  AtomPattern atom(const Term& term);
  PatternNumber pattern(std::uint32_t term);
  TermPattern pattern_of(const Term& term);
  TermPattern compound(const Term& term);
  std::vector<PatternNumber> patterns(Slice arguments);
  GroundTerm ground_of(const Term& term);
  std::vector<StoredLiteral> literals(const std::vector<Literal>& body);
  StoredAggregate aggregate(const Aggregate& written);
  StoredGuard guard(const Guard& written);
  std::vector<VariableId> variables_of(const Literal& literal) const;
  bool is_ready(const Term& term) const;

  const Statement& statement_;
  std::optional<std::int64_t> bound_;
  GroundTerms& terms_;
  AnswerIndex& index_;
  std::vector<PatternNumber> copied_;    // by term
  std::vector<char> is_outer_;
  StoredStatement stored_;
};

GroundTerm StatementCopy::ground_of(const Term& term) {
  const std::string_view text = statement_.slice(term.text);
  if (term.kind == TermKind::kInteger) return GroundTerms::integer(integer_of(text));
  if (term.kind == TermKind::kBound) {
    return GroundTerms::integer(static_cast<std::uint32_t>(bound_.value_or(0)));
  }
  if (term.kind == TermKind::kConstant) return terms_.constant(term.name);
  std::string quoted;
  append_input_spelling(quoted, text);
  return terms_.string(quoted);
}

GroundTerm StatementCopy::ground(std::uint32_t term) {
  const Term& each = statement_.terms[term];
  return each.kind == TermKind::kCompound ? stored_.terms[pattern(term)].ground : ground_of(each);
}

// Its arguments are copied before it.
TermPattern StatementCopy::compound(const Term& term) {
  TermPattern made;
  made.functor = terms_.name(term.name);
  std::vector<GroundTerm> grounds;
  for (std::uint32_t i = term.arguments.begin; i < term.arguments.end; ++i) {
    const PatternNumber argument = copied_[statement_.arguments[i]];
    made.arguments.push_back(argument);
    const TermPattern& each = stored_.terms[argument];
    if (each.kind == TermPattern::Kind::kGround) grounds.push_back(each.ground);
  }
  if (grounds.size() == made.arguments.size()) {
    made.ground = terms_.compound(made.functor, grounds);
    made.arguments.clear();
  } else {
    made.kind = TermPattern::Kind::kCompound;
  }
  return made;
}

TermPattern StatementCopy::pattern_of(const Term& term) {
  TermPattern made;
  if (term.kind == TermKind::kCompound) return compound(term);
  if (term.kind == TermKind::kAnonymous) {
    made.kind = TermPattern::Kind::kAnonymous;
  } else if (term.kind == TermKind::kVariable) {
    made.kind = TermPattern::Kind::kVariable;
    made.variable = term.variable;
  } else {
    made.ground = ground_of(term);
  }
  return made;
}

bool StatementCopy::is_ready(const Term& term) const {
  if (term.kind != TermKind::kCompound) return true;
  for (std::uint32_t i = term.arguments.begin; i < term.arguments.end; ++i) {
    if (copied_[statement_.arguments[i]] == kNotCopied) return false;
  }
  return true;
}

// Terms may be nested deep, so they wait in a list.
PatternNumber StatementCopy::pattern(std::uint32_t term) {
  copied_.resize(statement_.terms.size(), kNotCopied);
  std::vector<std::uint32_t> waiting{term};
  while (!waiting.empty()) {
    const std::uint32_t next = waiting.back();
    const Term& each = statement_.terms[next];
    if (copied_[next] != kNotCopied) {
      waiting.pop_back();
    } else if (is_ready(each)) {
      TermPattern made = pattern_of(each);
      copied_[next] = static_cast<PatternNumber>(stored_.terms.size());
      stored_.terms.push_back(std::move(made));
      waiting.pop_back();
    } else {
      for (std::uint32_t i = each.arguments.begin; i < each.arguments.end; ++i) {
        waiting.push_back(statement_.arguments[i]);
      }
    }
  }
  return copied_[term];
}

std::vector<PatternNumber> StatementCopy::patterns(Slice arguments) {
  std::vector<PatternNumber> made;
  made.reserve(arguments.size());
  for (std::uint32_t i = arguments.begin; i < arguments.end; ++i) {
    made.push_back(pattern(statement_.arguments[i]));
  }
  return made;
}

AtomPattern StatementCopy::atom(const Term& term) {
  const std::uint32_t arity = term.kind == TermKind::kCompound ? term.arity : 0;
  return {index_.number({terms_.name(term.name), arity, term.strongly_negated}),
          patterns(term.arguments)};
}

std::vector<VariableId> StatementCopy::variables_of(const Literal& literal) const {
  const bool is_aggregate = literal.kind == kAggregate;
  const Slice uses = is_aggregate ? statement_.aggregates[literal.aggregate].uses : literal.uses;
  std::vector<VariableId> variables;
  for (std::uint32_t i = uses.begin; i < uses.end; ++i) {
    const VariableId variable = statement_.uses[i].variable;
    if (variable == kUnnamed || (is_aggregate && is_outer_[variable] == 0)) continue;
    variables.push_back(variable);
  }
  std::ranges::sort(variables);
  variables.erase(std::unique(variables.begin(), variables.end()), variables.end());
  return variables;
}

std::vector<StoredLiteral> StatementCopy::literals(const std::vector<Literal>& body) {
  std::vector<StoredLiteral> made;
  made.reserve(body.size());
  for (const Literal& literal : body) {
    StoredLiteral each;
    each.kind = literal.kind;
    each.negated = literal.negated;
    each.aggregate = literal.aggregate;
    if (literal.kind == kAtom) each.atom = atom(statement_.terms[literal.term]);
    each.operands = patterns(literal.arguments);
    each.variables = variables_of(literal);
    made.push_back(std::move(each));
  }
  return made;
}

StoredGuard StatementCopy::guard(const Guard& written) {
  if (!written.given) return {};
  return {true, written.op, pattern(written.term)};
}

StoredAggregate StatementCopy::aggregate(const Aggregate& written) {
  return {written.function, guard(written.left), guard(written.right), patterns(written.arguments),
          literals(written.body)};
}

StoredStatement StatementCopy::make(StatementKind kind, std::uint32_t file) {
  stored_.kind = kind;
  is_outer_ = outer_variables(statement_);
  for (const std::uint32_t head : statement_.heads) {
    stored_.heads.push_back(atom(statement_.terms[head]));
  }
  stored_.body = literals(statement_.body);
  for (const Aggregate& each : statement_.aggregates) {
    stored_.aggregates.push_back(aggregate(each));
  }
  for (VariableId variable = 0; variable < statement_.variables.size(); ++variable) {
    stored_.variables.emplace_back(statement_.spelling(variable));
  }
  stored_.is_outer = is_outer_;
  stored_.file = file;
  stored_.range = statement_.range;
  stored_.written = statement_.written;
  return std::move(stored_);
}

// A weight or level, which is not among the statement's terms.
std::optional<PatternNumber> StatementCopy::measure(std::string_view text) {
  if (text.empty()) return std::nullopt;
  TermPattern made;
  if (text.front() >= '0' && text.front() <= '9') {
    made.ground = GroundTerms::integer(integer_of(text));
  } else {
    for (VariableId variable = 0; variable < statement_.variables.size(); ++variable) {
      if (statement_.spelling(variable) != text) continue;
      made.kind = TermPattern::Kind::kVariable;
      made.variable = variable;
    }
  }
  stored_.terms.push_back(std::move(made));
  return static_cast<PatternNumber>(stored_.terms.size() - 1);
}

}    // namespace

// Takes the statements of one text after the other.
class StoreReceiver : public StatementReader {
 public:
  StoreReceiver(StatementStore& store, GroundTerms& terms, AnswerIndex& index)
      : store_(store), terms_(terms), index_(index), batch_(terms, index) {}

  void begin_file(std::uint32_t file) { file_ = file; }

  MaybeMistake fact(const Statement& statement) override {
    if (statement.heads.size() > 1) {
      store(statement, StatementKind::kRule);
      return {};
    }
    const Term& atom = statement.terms[statement.heads.front()];
    const std::uint32_t arity = atom.kind == TermKind::kCompound ? atom.arity : 0;
    const PredicateNumber predicate = index_.number({name_of(atom), arity, atom.strongly_negated});
    note(store_.has_facts_, predicate) = 1;
    batch_.begin(predicate);
    read_arguments(statement, atom);
    places_.push_back({file_, statement.range.first_line, statement.range.first_column});
    if (batch_.is_full()) note_facts();
    return {};
  }
  // To be called behind the last statement.
  void note_facts() {
    const auto note_fact = [this](PredicateNumber predicate, std::span<const GroundTerm> arguments,
                                  std::size_t hash, std::size_t position) {
      const AtomNumber atom = index_.find(predicate, arguments, hash);
      if (atom == kNoAtom) return;
      FactPlace& place = note(store_.facts_, atom);
      if (place.file == zarel::kNoFile) place = places_[position];
    };
    batch_.empty(note_fact);
    places_.clear();
  }
  MaybeMistake rule(const Statement& statement) override {
    store(statement, statement.heads.empty() ? StatementKind::kConstraint : StatementKind::kRule);
    return {};
  }
  MaybeMistake weak_constraint(const Statement& statement, const Piece& weight,
                               const Piece& level) override {
    StatementCopy copy(statement, store_.bound_, terms_, index_);
    const auto weight_pattern = copy.measure(weight.text);
    const auto level_pattern = copy.measure(level.text);
    store_.statements_.push_back(copy.make(StatementKind::kWeakConstraint, file_));
    store_.statements_.back().weight = weight_pattern;
    store_.statements_.back().level = level_pattern;
    return {};
  }
  MaybeMistake query(const Statement& statement) override {
    store(statement, StatementKind::kQuery);
    return {};
  }

 private:
  template <typename T>
  static T& note(std::vector<T>& list, std::size_t position) {
    if (list.size() <= position) list.resize(position + 1);
    return list[position];
  }

  // Most facts have the predicate of the one before.
  NameNumber name_of(const Term& atom) {
    if (atom.name != last_name_) name_ = terms_.name(atom.name);
    last_name_ = atom.name;
    return name_;
  }

  // There may be a million facts, most of them with arguments as simple as these: a constant is
  // spelled as in the text of the file, which lasts.
  void read_arguments(const Statement& statement, const Term& atom) {
    StatementCopy copy(statement, store_.bound_, terms_, index_);
    for (std::uint32_t i = atom.arguments.begin; i < atom.arguments.end; ++i) {
      const Term& argument = statement.terms[statement.arguments[i]];
      if (argument.kind == TermKind::kConstant) {
        batch_.constant(argument.name);
      } else {
        batch_.term(copy.ground(statement.arguments[i]));
      }
    }
  }

  void store(const Statement& statement, StatementKind kind) {
    const auto number = static_cast<StatementNumber>(store_.statements_.size());
    store_.statements_.push_back(
        StatementCopy(statement, store_.bound_, terms_, index_).make(kind, file_));
    const std::vector<AtomPattern>& heads = store_.statements_.back().heads;
    for (std::uint32_t head = 0; head < heads.size(); ++head) {
      note(store_.heads_, heads[head].predicate).push_back({number, head});
    }
  }

  StatementStore& store_;
  GroundTerms& terms_;
  AnswerIndex& index_;
  std::uint32_t file_ = 0;
  AtomBatch batch_;    // of facts
  std::vector<FactPlace> places_;
  std::string_view last_name_;
  NameNumber name_ = 0;
};

StatementStore::StatementStore(Program& program, std::optional<std::int64_t> bound,
                               GroundTerms& terms, AnswerIndex& index)
    : sources_(program.sources), bound_(bound ? bound : program.survey.bound()) {
  facts_.reserve(index.size());
  StoreReceiver receiver(*this, terms, index);
  const Folding nothing_folded;
  for (std::uint32_t file = 0; file < program.sources.size(); ++file) {
    receiver.begin_file(file);
    StatementBuilder builder(receiver, nothing_folded);
    builder.list_all_arguments();
    parse_text(program.sources.text(file), builder);
  }
  receiver.note_facts();
}

std::span<const HeadUse> StatementStore::heads_of(PredicateNumber predicate) const {
  if (predicate >= heads_.size()) return {};
  return heads_[predicate];
}

const FactPlace& StatementStore::fact(AtomNumber atom) const {
  return atom < facts_.size() ? facts_[atom] : kNoFact;
}

bool StatementStore::is_given(PredicateNumber predicate) const {
  return !heads_of(predicate).empty() ||
         (predicate < has_facts_.size() && has_facts_[predicate] != 0);
}

}    // namespace dl
