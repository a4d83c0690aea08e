#include "dl/translator.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "dl/folding.h"
#include "dl/names.h"

namespace dl {
namespace {

constexpr std::int64_t kMaxInteger = 2147483647;

// The variable of that name in the statement, or kUnnamed.
VariableId find_variable(const Statement& statement, std::string_view name) {
  for (std::size_t i = 0; i < statement.variables.size(); ++i) {
    if (statement.slice(statement.variables[i]) == name) return static_cast<VariableId>(i);
  }
  return kUnnamed;
}

bool is_variable(std::string_view measure) {
  return !measure.empty() && measure.front() >= 'A' && measure.front() <= 'Z';
}

// Whether a literal of such a body is written with the bound.
bool uses_bound(const std::vector<Literal>& body) {
  return std::ranges::any_of(body, [](const Literal& literal) {
    return literal.kind >= kInt && literal.kind <= kProduct;
  });
}

bool uses_bound(const Statement& statement) {
  return uses_bound(statement.body) ||
         std::ranges::any_of(statement.aggregates,
                             [](const Aggregate& aggregate) { return uses_bound(aggregate.body); });
}

std::int64_t integer(std::string_view digits) {
  std::int64_t value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return value;
}

}    // namespace

Translator::Translator(const Options& options, const Sources& sources, ProgramParts& parts,
                       Translation& out)
    : options_(options),
      sources_(sources),
      parts_(parts),
      out_(out),
      writer_(out, parts, options.counts_instances) {
  parts_.bound = options.bound;
}

zarel::SourceLocation Translator::location(const Statement& statement) const {
  return {statement.line, statement.column, file_};
}

StatementPlace Translator::place(const Statement& statement) const {
  return {location(statement), {file_, statement.range}};
}

// Notes the predicates and variables of the heads; an anonymous variable there is bound by nothing.
MaybeMistake Translator::mark_heads(const Statement& statement) {
  kept_.assign(statement.variables.size(), 0);
  for (const std::uint32_t head : statement.heads) {
    const Term& atom = statement.terms[head];
    parts_.signatures.add(predicate_of(statement, atom), atom.arity, atom.strongly_negated);
    for (std::uint32_t i = atom.uses.begin; i < atom.uses.end; ++i) {
      const Use& use = statement.uses[i];
      if (use.variable == kUnnamed) return unsafe_mistake("_", statement.written_use(use));
      kept_[use.variable] = 1;
    }
  }
  return {};
}

void Translator::append_heads(const Statement& statement) {
  const char* separator = "";
  for (const std::uint32_t head : statement.heads) {
    out_.text += separator;
    out_.text += statement.term_text(head);
    separator = ";";
  }
}

MaybeMistake Translator::fact(const Statement& statement) {
  MaybeMistake mistake = mark_heads(statement);
  if (mistake) return mistake;
  if (!statement.variables.empty()) return unsafe_mistake(statement, 0);
  append_heads(statement);
  out_.text += '.';
  if (options_.leave_out_facts && statement.heads.size() == 1) {
    parts_.facts.emplace(statement.term_text(statement.heads.front()));
  }
  out_.end_line(location(statement));
  return {};
}

// The mistake in an open statement, which is that of the statement as it was written.
template <typename Write>
MaybeMistake Translator::mistake_in(const Statement& statement, Write&& write) const {
  Translation out;
  ProgramParts parts;
  parts.traits = parts_.traits;
  Translator trial(options_, sources_, parts, out);
  trial.begin_file(file_);
  return write(trial, statement);
}

// Writes the statement, or its instances: see Note [instances]. One that has none can never do
// anything, and is written as it is: it may be the only weak constraint of its level.
template <typename Write>
MaybeMistake Translator::each_instance(const Statement& statement, VariableUse use, Write&& write) {
  if (!statement.atoms_only && !uses_bound_) uses_bound_ = uses_bound(statement);
  if (!statement.is_open) return write(*this, statement);
  MaybeMistake mistake = mistake_in(statement, write);
  if (mistake) return mistake;
  const InstancePlan plan = instances_->plan(statement);
  Statement common = statement;
  for (const AtomShape& view : plan.views) {
    replace_by_view(common, view, write_view(statement, view));
  }
  InstanceMaker maker(*instances_, plan, common, use);
  bool is_written = false;
  const auto write_one = [&](Statement& instance) {
    is_written = true;
    project_negations(instance);
    if (!mistake) mistake = write(*this, instance);
  };
  instances_->each(plan, [&](const std::vector<Symbol>& values) { write_one(maker.make(values)); });
  if (!is_written) write_one(common);
  return mistake;
}

// A helper over the variables of the atom, with a rule for each of its relations.
std::string Translator::write_view(const Statement& statement, const AtomShape& atom) {
  std::vector<VariableId> variables;
  for (const Use& use : statement.uses_of(statement.terms[atom.term])) {
    variables.push_back(use.variable);
  }
  std::string helper = helper_atom(statement, "_some" + std::to_string(++projections_), variables);
  for (const Relation& relation : instances_->relations_of(atom)) {
    ((out_.text += helper) += ":-") += view_body(*instances_, statement, atom, relation);
    out_.text += '.';
    out_.end_line(location(statement));
  }
  return helper;
}

// What the builder could not do with an open atom.
void Translator::project_negations(Statement& statement, std::vector<Literal>& body) {
  for (const Literal& literal : body) {
    if (literal.kind != kAtom || !literal.negated) continue;
    Term& atom = statement.terms[literal.term];
    const auto uses = statement.uses_of(atom);
    if (!statement.slice(atom.text).starts_with('-')) continue;
    if (std::ranges::find(uses, kUnnamed, &Use::variable) == uses.end()) continue;
    const std::string helper = projection(statement, atom, statement.line, statement.column);
    const auto begin = static_cast<std::uint32_t>(statement.text.size());
    statement.text += helper;
    atom.text = {begin, static_cast<std::uint32_t>(statement.text.size())};
  }
}

void Translator::project_negations(Statement& statement) {
  project_negations(statement, statement.body);
  for (Aggregate& aggregate : statement.aggregates) project_negations(statement, aggregate.body);
}

MaybeMistake Translator::prepare(const Statement& statement) {
  MaybeMistake mistake = writer_.prepare(statement, place(statement), kept_);
  if (!mistake) writer_.count_body(statement, kept_);
  const VariableId ranging = writer_.ranging_variable();
  if (!mistake && ranging != kUnnamed && !bound_user_) {
    bound_user_ = {"the variable " + std::string(statement.spelling(ranging)) +
                       ", which no positive literal binds,",
                   sources_.range(file_, first_use(statement, ranging)), statement.line,
                   std::string(statement.spelling(ranging))};
  }
  return mistake;
}

MaybeMistake Translator::rule(const Statement& statement) {
  return each_instance(
      statement, VariableUse::kWithinLiterals,
      [](Translator& out, const Statement& instance) { return out.write_rule(instance); });
}

MaybeMistake Translator::write_rule(const Statement& statement) {
  MaybeMistake mistake = mark_heads(statement);
  if (!mistake) mistake = prepare(statement);
  if (mistake) return mistake;
  append_heads(statement);
  ((out_.text += ":-") += writer_.body()) += '.';
  out_.end_line(location(statement));
  return {};
}

void Translator::write_measure_fault(const WeakConstraint& weak, const Piece& measure) {
  if (!is_variable(measure.text)) return;
  writer_.write_fault(FaultKind::kMeasure, weak.body, "2147483647<" + std::string(measure.text),
                      {weak.location, {file_, measure.range}});
}

MaybeMistake Translator::weak_constraint(const Statement& statement, const Piece& weight,
                                         const Piece& level) {
  const auto write = [&](Translator& out, const Statement& instance) {
    return out.write_weak_constraint(instance, weight, level);
  };
  return each_instance(statement, VariableUse::kAsAnswers, write);
}

MaybeMistake Translator::write_weak_constraint(const Statement& statement, const Piece& weight,
                                               const Piece& level) {
  WeakConstraint weak;
  weak.location = location(statement);
  weak.weight = weight.text.empty() ? "1" : weight.text;
  weak.level = level.text.empty() ? "1" : level.text;
  kept_ = outer_variables(statement);
  for (const Piece& measure : {weight, level}) {
    if (!is_variable(measure.text)) continue;
    const VariableId variable = find_variable(statement, measure.text);
    if (variable == kUnnamed || !kept_[variable]) return unsafe_mistake(measure.text, measure.text);
  }
  MaybeMistake mistake = prepare(statement);
  if (mistake) return mistake;
  weak.body = writer_.body();
  write_measure_fault(weak, weight);
  write_measure_fault(weak, level);
  weak.tuple = std::to_string(parts_.weak_constraints.size() + 1);
  for (std::size_t i = 0; i < kept_.size(); ++i) {
    if (kept_[i]) (weak.tuple += ',') += statement.slice(statement.variables[i]);
  }
  if (is_variable(weak.level)) {
    parts_.variable_levels = true;
  } else {
    parts_.levels.push_back(integer(weak.level));
  }
  parts_.weak_constraints.push_back(std::move(weak));
  return {};
}

MaybeMistake Translator::query(const Statement& statement) {
  if (const auto& first = options_.leaves_out_query ? left_out_query_ : parts_.query) {
    return Mistake{zarel::Code::kSecondQuery,
                   "a second query; the first is in " + sources_.name(first->range.file) + ", " +
                       "line " + std::to_string(first->line),
                   statement.written, Elsewhere{first->range, "the first query"}};
  }
  const auto write = [](Translator& out, const Statement& instance) {
    return out.write_query(instance);
  };
  if (!options_.leaves_out_query) return each_instance(statement, VariableUse::kAsAnswers, write);
  left_out_query_ = Query{{}, {file_, statement.range}, statement.line};
  return mistake_in(statement, write);
}

MaybeMistake Translator::write_query(const Statement& statement) {
  kept_ = outer_variables(statement);
  MaybeMistake mistake = prepare(statement);
  if (mistake) return mistake;
  parts_.query = Query{{}, {file_, statement.range}, statement.line};
  std::vector<VariableId> variables;
  for (VariableId variable = 0; variable < kept_.size(); ++variable) {
    if (!kept_[variable] || statement.is_unnamed(variable)) continue;
    variables.push_back(variable);
    parts_.query->variables.emplace_back(statement.slice(statement.variables[variable]));
  }
  out_.text += helper_atom(statement, "_q", variables);
  ((out_.text += ":-") += writer_.body()) += '.';
  out_.end_line(location(statement));
  return {};
}

// The option goes before the program, as it is what the user asked for last.
MaybeMistake Translator::integer_bound(std::int64_t bound, const Piece& number) {
  if (options_.bound) return {};
  if (parts_.bound && *parts_.bound != bound) {
    return Mistake{zarel::Code::kSecondBound, "#maxint is already " + std::to_string(*parts_.bound),
                   number.text, Elsewhere{bound_range_, "the first #maxint"}};
  }
  if (!parts_.bound) bound_range_ = {file_, number.range};
  parts_.bound = bound;
  return {};
}

void Translator::needs_bound(std::uint32_t line, const Piece& what) {
  uses_bound_ = true;
  if (!bound_user_) {
    bound_user_ = {std::string(what.text), {file_, what.range}, line, std::string(what.text)};
  }
}

// A helper, written at once, that has the atom as its only body.
std::string Translator::projection(const Statement& statement, const Term& atom, std::uint32_t line,
                                   std::uint32_t column) {
  std::vector<VariableId> variables;
  for (const Use& use : statement.uses_of(atom)) variables.push_back(use.variable);
  std::string helper = helper_atom(statement, "_some" + std::to_string(++projections_), variables);
  (((out_.text += helper) += ":-") += statement.slice(atom.text)) += '.';
  out_.end_line({line, column, file_});
  return helper;
}

void Translator::write_line(const std::string& line, const zarel::SourceLocation& location) {
  out_.text += line;
  out_.end_line(location);
}

std::optional<zarel::Diagnostic> Translator::end_program() {
  if (bound_user_ && !parts_.bound) {
    zarel::Diagnostic diagnostic{zarel::Code::kMissingBound, sources_.place(bound_user_->range),
                                 bound_user_->name + " needs a bound on integers, #maxint or -N="};
    diagnostic.parser_line = static_cast<int>(bound_user_->line);
    diagnostic.detail = bound_user_->detail;
    return diagnostic;
  }
  const zarel::SourceLocation end{0, 0, file_};
  std::ranges::sort(parts_.levels, std::greater<>());
  parts_.levels.erase(std::unique(parts_.levels.begin(), parts_.levels.end()), parts_.levels.end());
  if (parts_.variable_levels) {
    write_variable_levels(end);
  } else {
    write_weak_constraints(end);
  }
  write_bound(end);
  write_shown(end);
  return {};
}

// The element of weight 0 makes clingo report every level, also one of which no instance exists.
void Translator::write_weak_constraints(const zarel::SourceLocation& end) {
  for (const WeakConstraint& weak : parts_.weak_constraints) {
    write_line(":~" + weak.body + ".[" + weak.weight + "@" + weak.level + "," + weak.tuple + "]",
               weak.location);
  }
  for (const std::int64_t level : parts_.levels) {
    write_line(":~.[0@" + std::to_string(level) + ",0]", end);
  }
}

// Note [levels of variables]
// clingo reports costs without their levels. Where levels are variables, each violated instance
// becomes an atom _w(level,weight,instance) that is read with the answer set, and the costs are
// added up from these.
void Translator::write_variable_levels(const zarel::SourceLocation& end) {
  for (const WeakConstraint& weak : parts_.weak_constraints) {
    write_line(
        "_w(" + weak.level + "," + weak.weight + ",(" + weak.tuple + ",0)):-" + weak.body + ".",
        weak.location);
  }
  write_line(":~_w(L,W,T).[W@L,T]", end);
  write_line(":~.[0@1,0]", end);
}

// Only where it is used: for a #const clingo looks at every term of every fact, which is up to 3 %
// of its work.
void Translator::write_bound(const zarel::SourceLocation& end) {
  if (!uses_bound_) return;
  const std::string bound = std::to_string(parts_.bound.value_or(kMaxInteger));
  write_line("#const _m=" + bound + ".", end);
  write_line("#const _r=" + (parts_.bound ? bound : "-1") + ".", end);
  write_line(parts_.bound ? "#const _o=0." : "#const _o=1.", end);
}

// Helpers are hidden because nothing is shown but what is named here.
void Translator::write_shown(const zarel::SourceLocation& end) {
  if (parts_.traits.has_sums) write_line("#external _u.", end);
  write_line("#show.", end);
  for (std::size_t i = 0; i < parts_.faults.size(); ++i) {
    // In every answer set there is one or the other, so that a query sees both in what holds in all
    // of them.
    if (parts_.query)
      write_line("_fine(" + std::to_string(i) + "):-not _fault(" + std::to_string(i) + ").", end);
  }
  if (!parts_.faults.empty()) write_line("#show _fault/1.", end);
  if (parts_.query) {
    if (!parts_.faults.empty()) write_line("#show _fine/1.", end);
    return write_line("#show _q/" + std::to_string(parts_.query->variables.size()) + ".", end);
  }
  if (parts_.variable_levels) write_line("#show _w/3.", end);
  for (const Signature& signature : parts_.signatures.all()) {
    if (!options_.shows(unfolded_predicate(signature.name), signature.strongly_negated)) continue;
    std::string line = signature.strongly_negated ? "#show -" : "#show ";
    if (signature.name.find('\'') == std::string::npos) {
      append_clingo_name(line, signature.name);
    } else {
      line += signature.name;    // folded
    }
    write_line(line + "/" + std::to_string(signature.arity) + ".", end);
  }
}

}    // namespace dl
