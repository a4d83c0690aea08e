#include "dl/explain/relaxed_program.h"

#include <algorithm>
#include <map>
#include <utility>

#include "dl/explain/answer_text.h"
#include "dl/explain/statement_reader.h"
#include "dl/folding.h"
#include "dl/parse.h"

namespace dl {
namespace {

constexpr std::string_view kSourceName = "explanation";

// Where the names of some strongly negated predicates stand.
class NegationReader : public StatementReader {
 public:
  using Names = std::map<std::pair<std::string, std::uint32_t>, std::uint32_t>;
  // Takes the number of a name, and where it is.
  using Take = std::function<void(std::uint32_t, std::uint32_t)>;

  NegationReader(const Names& names, Take take) : names_(names), take_(std::move(take)) {}

  MaybeMistake fact(const Statement& statement) override { return heads(statement); }
  MaybeMistake rule(const Statement& statement) override { return all(statement); }
  MaybeMistake query(const Statement& statement) override { return all(statement); }

 private:
  void look_at(const Statement& statement, const Term& atom) {
    if (!atom.strongly_negated) return;
    const std::uint32_t arity = atom.kind == TermKind::kCompound ? atom.arity : 0;
    const auto found = names_.find({std::string(atom.name), arity});
    if (found == names_.end()) return;
    take_(found->second, static_cast<std::uint32_t>(atom.name.data() - statement.source));
  }
  MaybeMistake heads(const Statement& statement) {
    for (const std::uint32_t head : statement.heads) look_at(statement, statement.terms[head]);
    return {};
  }
  void body(const Statement& statement, const std::vector<Literal>& literals) {
    for (const Literal& literal : literals) {
      if (literal.kind == kAtom) look_at(statement, statement.terms[literal.term]);
    }
  }
  MaybeMistake all(const Statement& statement) {
    heads(statement);
    body(statement, statement.body);
    for (const Aggregate& aggregate : statement.aggregates) body(statement, aggregate.body);
    return {};
  }

  const Names& names_;
  Take take_;
};

// "t(X,Y)"; "t" of nothing.
template <typename Range, typename Append>
std::string tuple_text(const Range& values, Append&& append) {
  std::string text("t");
  char separator = '(';
  for (const auto& value : values) {
    text += separator;
    append(text, value);
    separator = ',';
  }
  if (separator == ',') text += ')';
  return text;
}

std::vector<VariableId> named_variables(const StoredStatement& statement) {
  std::vector<VariableId> named;
  for (VariableId variable = 0; variable < statement.variables.size(); ++variable) {
    if (statement.is_outer[variable] != 0 && statement.variables[variable] != "_") {
      named.push_back(variable);
    }
  }
  return named;
}

std::string_view text_of(const Sources& sources, std::uint32_t file) {
  const std::string_view text = sources.text(file);
  return text.substr(0, text.size() - kEndMarks);
}

}    // namespace

RelaxedProgram::RelaxedProgram(const StatementStore& store, GroundTerms& terms, AnswerIndex& index)
    : store_(store),
      terms_(terms),
      index_(index),
      bad_(unused_name("bad")),
      free_(unused_name("free")),
      paid_(unused_name("paid")),
      drop_(unused_name("drop")),
      keep_(unused_name("keep")) {
  for (StatementNumber i = 0; i < store.statements().size(); ++i) {
    if (store.statement(i).kind == StatementKind::kConstraint) statements_.push_back(i);
  }
  find_clashes();
}

std::string RelaxedProgram::unused_name(std::string_view begin) const {
  const Sources& sources = store_.sources();
  for (std::uint32_t number = 0;; ++number) {
    std::string name(begin);
    name += std::to_string(number);
    bool is_used = std::ranges::find(other_names_, name) != other_names_.end();
    for (std::uint32_t file = 0; file < sources.size() && !is_used; ++file) {
      is_used = text_of(sources, file).find(name) != std::string_view::npos;
    }
    if (!is_used) return name;
  }
}

void RelaxedProgram::find_clashes() {
  NegationReader::Names names;
  const auto predicates = static_cast<PredicateNumber>(index_.predicates());
  for (PredicateNumber predicate = 0; predicate < predicates; ++predicate) {
    const Predicate key = index_.predicate(predicate);
    if (key.strongly_negated || !store_.is_given(predicate)) continue;
    if (!store_.is_given(index_.contrary(predicate))) continue;
    const std::string name(terms_.spelling(key.name));
    const auto clash = static_cast<std::uint32_t>(clashes_.size());
    names.emplace(std::pair(name, key.arity), clash);
    clashes_.push_back(predicate);
    // Generic atoms stay generic: see Note [folded atoms].
    other_names_.push_back(unused_name(is_generic(name) ? "a_" : "non"));
  }
  if (clashes_.empty()) return;
  const Sources& sources = store_.sources();
  places_.resize(sources.size());
  for (std::uint32_t file = 0; file < sources.size(); ++file) {
    NegationReader reader(names, [&](std::uint32_t clash, std::uint32_t offset) {
      places_[file].push_back({clash, offset});
    });
    const Folding nothing_folded;
    StatementBuilder builder(reader, nothing_folded);
    std::string text = sources.text(file);
    parse_text(text, builder);
  }
}

ConstraintSet RelaxedProgram::set_of(std::span<const std::uint32_t> lines) const {
  ConstraintSet set;
  for (const std::uint32_t line : lines) {
    if (line < statements_.size()) {
      set.statements.push_back(statements_[line]);
    } else {
      set.clashes.push_back(clashes_[line - statements_.size()]);
    }
  }
  return set;
}

bool RelaxedProgram::has_variables(std::uint32_t line) const {
  if (line < statements_.size()) {
    return !named_variables(store_.statement(statements_[line])).empty();
  }
  return index_.predicate(clashes_[line - statements_.size()]).arity != 0;
}

ConstraintInstance RelaxedProgram::instance_of(const GivenUp& given_up) const {
  ConstraintInstance instance;
  const std::span<const GroundTerm> values = terms_.arguments(given_up.values);
  if (given_up.line < statements_.size()) {
    instance.statement = statements_[given_up.line];
    const StoredStatement& statement = store_.statement(*instance.statement);
    instance.binding.assign(statement.variables.size(), kNoTerm);
    const std::vector<VariableId> named = named_variables(statement);
    for (std::size_t i = 0; i < values.size(); ++i) instance.binding[named[i]] = values[i];
  } else {
    instance.predicate = clashes_[given_up.line - statements_.size()];
    instance.arguments.assign(values.begin(), values.end());
  }
  return instance;
}

std::string RelaxedProgram::bad_atom(std::uint32_t line, std::string_view values) const {
  std::string atom(bad_);
  ((((atom += '(') += std::to_string(line)) += ',') += values) += ')';
  return atom;
}

std::size_t RelaxedProgram::offset_of(const StoredStatement& statement) const {
  return static_cast<std::size_t>(statement.written.data() -
                                  store_.sources().text(statement.file).data());
}

void RelaxedProgram::relax(Edits& edits, std::uint32_t line, Hold hold) const {
  const StoredStatement& statement = store_.statement(statements_[line]);
  const std::size_t begin = offset_of(statement);
  std::vector<Edit>& edited = edits[statement.file];
  if (hold == Hold::kNot) {
    edited.push_back({begin, begin + statement.written.size(), {}});
  } else if (hold != Hold::kHard) {
    std::vector<VariableId> variables;
    if (hold == Hold::kInstances) variables = named_variables(statement);
    const std::string values = tuple_text(variables, [&](std::string& text, VariableId variable) {
      text += statement.variables[variable];
    });
    edited.push_back({begin, begin, bad_atom(line, values)});
  }
}

// The constraint of an atom and its strong negation.
std::string RelaxedProgram::clash_text(std::uint32_t line, Hold hold) const {
  const std::size_t clash = line - statements_.size();
  const Predicate& predicate = index_.predicate(clashes_[clash]);
  std::vector<std::uint32_t> places(predicate.arity);
  for (std::uint32_t i = 0; i < predicate.arity; ++i) places[i] = i;
  std::string arguments = tuple_text(places, [](std::string& text, std::uint32_t place) {
    (text += 'X') += std::to_string(place);
  });
  std::string text = bad_atom(line, hold == Hold::kInstances ? arguments : "t");
  arguments.erase(0, 1);
  ((text += " :- ") += terms_.spelling(predicate.name)) += arguments;
  return (((text += ", -") += other_names_[clash]) += arguments) += ".\n";
}

void RelaxedProgram::drop(Edits& edits, StatementNumber rule) const {
  const StoredStatement& statement = store_.statement(rule);
  const std::size_t end = offset_of(statement) + statement.written.size() - 1;
  std::string text(statement.body.empty() ? " :- not " : ", not ");
  (((text += drop_) += '(') += std::to_string(rule)) += ')';
  edits[statement.file].push_back({end, end, std::move(text)});
}

// A removed statement may hold names that are to be changed.
std::string RelaxedProgram::edited(std::uint32_t file, std::vector<Edit>& edits) const {
  std::ranges::stable_sort(edits, {}, &Edit::begin);
  const std::string_view text = text_of(store_.sources(), file);
  std::string out;
  std::size_t begin = 0;
  for (const Edit& edit : edits) {
    if (edit.begin < begin) continue;
    (out += text.substr(begin, edit.begin - begin)) += edit.text;
    begin = edit.end;
  }
  return out += text.substr(begin);
}

void RelaxedProgram::rename(Edits& edits, std::span<const Hold> holds) const {
  for (std::uint32_t file = 0; file < places_.size(); ++file) {
    for (const NamePlace& place : places_[file]) {
      if (holds[statements_.size() + place.clash] == Hold::kHard) continue;
      const NameNumber name = index_.predicate(clashes_[place.clash]).name;
      edits[file].push_back(
          {place.offset, place.offset + terms_.spelling(name).size(), other_names_[place.clash]});
    }
  }
}

void RelaxedProgram::leave_out_costs(Edits& edits) const {
  for (const StoredStatement& statement : store_.statements()) {
    if (statement.kind != StatementKind::kWeakConstraint) continue;
    const std::size_t begin = offset_of(statement);
    edits[statement.file].push_back({begin, begin + statement.written.size(), {}});
  }
}

void RelaxedProgram::append_choice(std::string& text, StatementNumber rule) const {
  const std::string number = '(' + std::to_string(rule) + ')';
  const auto append = [&](std::string_view one, std::string_view other) {
    ((((text += one) += number) += " :- not ") += other) += number;
    text += ".\n";
  };
  append(drop_, keep_);
  append(keep_, drop_);
}

Program RelaxedProgram::program(std::span<const Hold> holds, std::string_view further) const {
  const Sources& sources = store_.sources();
  Edits edits(sources.size());
  std::string behind(further);
  for (std::uint32_t line = 0; line < lines(); ++line) {
    if (line < statements_.size()) {
      relax(edits, line, holds[line]);
    } else if (holds[line] == Hold::kLine || holds[line] == Hold::kInstances) {
      behind += clash_text(line, holds[line]);
    }
  }
  rename(edits, holds);
  leave_out_costs(edits);
  for (const StatementNumber rule : droppable_) {
    drop(edits, rule);
    append_choice(behind, rule);
  }
  Program program;
  for (std::uint32_t file = 0; file < sources.size(); ++file) {
    survey_text(program, sources.name(file), edited(file, edits[file]));
    if (program.has_failed()) return program;
  }
  survey_text(program, std::string(kSourceName), std::move(behind));
  return program;
}

std::string RelaxedProgram::spelled(const GivenUp& given_up) const {
  std::string values;
  terms_.append(values, given_up.values);
  return '(' + std::to_string(given_up.line) + ',' + values + ')';
}

void RelaxedProgram::append_hard(std::string& text, const GivenUp& given_up) const {
  (((text += ":- ") += bad_) += spelled(given_up)) += ".\n";
}

void RelaxedProgram::append_free(std::string& text, const GivenUp& given_up) const {
  ((text += free_) += spelled(given_up)) += ".\n";
}

std::string RelaxedProgram::costs() const {
  if (!droppable_.empty()) return ":~ " + drop_ + "(N). [1:1]\n";
  return paid_ + "(L,T) :- " + bad_ + "(L,T), not " + free_ + "(L,T).\n:~ " + paid_ +
         "(L,T). [1:1]\n";
}

// Calls `take` with the arguments of each atom of such a name.
template <typename Take>
void RelaxedProgram::each_atom(std::string_view answer, std::string_view name, Take&& take) const {
  AnswerIndex index(terms_);
  add_answer_set(answer, terms_, index);
  const NameNumber number = terms_.name(name);
  for (AtomNumber atom = 0; atom < index.size(); ++atom) {
    if (index.predicate(index.predicate_of(atom)).name == number) take(index.arguments(atom));
  }
}

std::vector<GivenUp> RelaxedProgram::given_up(std::string_view answer) const {
  std::vector<GivenUp> all;
  each_atom(answer, paid_, [&](std::span<const GroundTerm> arguments) {
    all.push_back({GroundTerms::value(arguments[0]), arguments[1]});
  });
  sort(all);
  return all;
}

void RelaxedProgram::sort(std::vector<GivenUp>& given_up) const {
  std::ranges::sort(given_up, [this](const GivenUp& left, const GivenUp& right) {
    if (left.line != right.line) return left.line < right.line;
    return std::is_lt(terms_.compare(left.values, right.values));
  });
}

std::vector<StatementNumber> RelaxedProgram::dropped(std::string_view answer) const {
  std::vector<StatementNumber> all;
  each_atom(answer, drop_, [&](std::span<const GroundTerm> arguments) {
    all.push_back(GroundTerms::value(arguments[0]));
  });
  std::ranges::sort(all);
  return all;
}

}    // namespace dl
