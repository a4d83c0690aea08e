#include "dl/instances.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <span>

namespace dl {
namespace {

// A program has at most so many instances, or ten for each of its rules.
constexpr std::size_t kFewInstances = 10'000;
constexpr std::size_t kInstancesPerRule = 10;
constexpr std::size_t kLiteralsOfARule = 10;    // a longer one counts as several
// After so many steps, some seconds, the program is taken for one of which nothing can be told.
constexpr std::uint64_t kMostWork = 30'000'000;

std::uint64_t at(std::uint32_t number, std::uint32_t place) {
  return (std::uint64_t{number} << 32) + place;
}

template <typename Entry>
Entry& entry(std::vector<Entry>& table, std::size_t index) {
  if (index >= table.size()) table.resize(index + 1);
  return table[index];
}

template <typename Entry>
Entry found(const std::vector<Entry>& table, std::size_t index) {
  return index < table.size() ? table[index] : Entry();
}

std::span<const AtomShape> atoms_in(const Shapes& all, Slice slice) {
  return std::span(all.atoms).subspan(slice.begin, slice.size());
}

std::span<const Argument> arguments_of(const Shapes& all, const AtomShape& atom) {
  return std::span(all.arguments).subspan(atom.arguments.begin, atom.arguments.size());
}

std::span<const AtomShape> all_atoms(const Shapes& all, const RuleShape& rule) {
  return atoms_in(all, {rule.heads.begin, rule.others.end});
}

}    // namespace

std::span<const Argument> Instances::keys_of(const Shapes& all, const AtomShape& atom) const {
  return arguments_of(all, atom).first(relations_.predicate(atom.predicate).keys);
}

bool Instances::has_open_keys(const Shapes& all, const AtomShape& atom) const {
  return std::ranges::any_of(keys_of(all, atom),
                             [](const Argument& key) { return key.kind != ArgumentKind::kSymbol; });
}

bool Instances::is_open(const Shapes& all, const AtomShape& atom) const {
  return has_open_keys(all, atom) && !folding_.keeps(relations_.predicate(atom.predicate).name);
}

// An open atom, as it is written, is in every relation.
RelationId Instances::relation_of(const Shapes& all, const AtomShape& atom) {
  if (has_open_keys(all, atom)) return every_relation(atom.predicate);
  Relation relation{atom.predicate, {}};
  std::ranges::transform(keys_of(all, atom), relation.keys.begin(), &Argument::id);
  return relations_.number(relation);
}

RelationId Instances::every_relation(PredicateId predicate) {
  return relations_.number({predicate, {kEachSymbol}});
}

void Instances::keep(PredicateId predicate) {
  const auto& [name, is_generic, keys] = relations_.predicate(predicate);
  if (keys == kMostKeys) {
    has_failed_ = true;
  } else {
    keep(name);
  }
}

void Instances::keep(std::string_view predicate) {
  if (undecided_.contains(predicate)) kept_.emplace(predicate);
  folding_.keep(predicate);
}

// Keeps the predicate of an atom whose keys cannot be written. Returns whether they are open.
bool Instances::check_keys(const AtomShape& atom, bool is_head) {
  const Predicate& predicate = relations_.predicate(atom.predicate);
  if (!predicate.is_generic) return false;
  bool can_be_folded = predicate.keys != 0;
  bool is_open = false;
  for (const Argument& key : keys_of(rules_, atom)) {
    is_open = is_open || key.kind != ArgumentKind::kSymbol;
    if (key.kind == ArgumentKind::kUnclear) can_be_folded = false;
    if (key.kind == ArgumentKind::kAnonymous && is_head) can_be_folded = false;
  }
  if (!can_be_folded) keep(atom.predicate);
  return is_open;
}

void Instances::add_rule(const Statement& statement) {
  const auto number = static_cast<RuleId>(rules_.rules.size());
  const RuleShape rule = relations_.shape(statement, rules_);
  rules_.rules.push_back(rule);
  bool is_open = false;
  for (std::uint32_t i = rule.heads.begin; i < rule.others.end; ++i) {
    const AtomShape& atom = rules_.atoms[i];
    const bool is_head = i < rule.heads.end;
    is_open = check_keys(atom, is_head) || is_open;
    if (!is_head) continue;
    heads_[relation_of(rules_, atom)].push_back({number, i});
    entry(all_heads_, atom.predicate).push_back({number, i});
  }
  if (is_open) open_rules_.push_back(number);
}

// Finds what has to be known to know the variables among the keys.
void Instances::end_rules() {
  for (const RuleId rule : open_rules_) {
    for (const AtomShape& atom : all_atoms(rules_, rules_.rules[rule])) {
      if (!has_open_keys(rules_, atom)) continue;
      for (const Argument& key : keys_of(rules_, atom)) {
        if (key.kind == ArgumentKind::kVariable) want_variable(rule, key.id);
      }
    }
  }
  while (!new_variables_.empty() && !is_tired()) {
    const auto [rule, variable] = new_variables_.back();
    new_variables_.pop_back();
    for (const AtomShape& atom : atoms_in(rules_, rules_.rules[rule].positives)) {
      const auto arguments = arguments_of(rules_, atom);
      work_ += arguments.size() + 1;
      for (std::uint32_t i = relations_.predicate(atom.predicate).keys; i < arguments.size(); ++i) {
        const Argument& argument = arguments[i];
        if (argument.kind == ArgumentKind::kVariable && argument.id == variable) {
          want_argument(atom, i);
        }
      }
    }
  }
}

void Instances::want_variable(RuleId rule, VariableId variable) {
  if (wanted_variables_.insert(at(rule, variable)).second) {
    new_variables_.emplace_back(rule, variable);
  }
}

void Instances::want_argument(const AtomShape& atom, std::uint32_t place) {
  const bool is_open = has_open_keys(rules_, atom);
  const RelationId relation = relation_of(rules_, atom);
  const bool is_new = is_open ? wanted_of_each_.insert(at(atom.predicate, place)).second
                              : wanted_.insert(at(relation, place)).second;
  if (!is_new) return;
  wanted_somewhere_.insert(at(atom.predicate, place));
  if (is_open) return want_heads(found(all_heads_, atom.predicate), place);
  want_heads(heads_[relation], place);
  want_heads(heads_[every_relation(atom.predicate)], place);
}

void Instances::want_heads(const std::vector<Head>& heads, std::uint32_t place) {
  work_ += heads.size();
  for (const auto& [rule, atom] : heads) {
    const Argument& argument = arguments_of(rules_, rules_.atoms[atom])[place];
    if (argument.kind == ArgumentKind::kVariable) want_variable(rule, argument.id);
  }
}

bool Instances::is_wanted(RelationId relation, std::uint32_t place) const {
  const auto& [predicate, keys] = relations_.relation(relation);
  if (keys[0] == kEachSymbol) return wanted_somewhere_.contains(at(predicate, place));
  return wanted_.contains(at(relation, place)) || wanted_of_each_.contains(at(predicate, place));
}

// Facts of one relation follow each other, as a rule.
void Instances::add_fact(const Statement& statement) {
  for (const std::uint32_t head : statement.heads) {
    const Term& atom = statement.terms[head];
    const std::string_view text = statement.slice(atom.text);
    fact_begin_.assign(text.substr(0, text.find('(')));
    const std::uint32_t keys = folding_.keys_of(statement, atom);
    for (std::uint32_t i = 0; i < keys; ++i) {
      (fact_begin_ += ',') +=
          statement.slice(statement.listed_argument(atom, written_place(i, keys)).text);
    }
    (fact_begin_ += '/') += std::to_string(atom.arity);
    if (last_kind_ == nullptr || fact_begin_ != last_begin_) {
      const auto [kind, is_new] = fact_kinds_.try_emplace(fact_begin_);
      if (is_new) kind->second = kind_of(statement, head);
      last_kind_ = &kind->second;
      last_begin_ = fact_begin_;
    }
    for (const std::uint32_t place : last_kind_->places) {
      const Term& term = statement.listed_argument(atom, written_place(place, keys));
      add_argument(last_kind_->relation, place, relations_.argument(statement, term), {});
    }
  }
}

Instances::FactKind Instances::kind_of(const Statement& statement, std::uint32_t head) {
  scratch_ = {};
  const AtomShape atom = relations_.shape(statement, head, scratch_);
  FactKind kind{relation_of(scratch_, atom), {}};
  add_relation(kind.relation);
  for (std::uint32_t i = 0; i < atom.arguments.size(); ++i) {
    if (is_wanted(kind.relation, i)) kind.places.push_back(i);
  }
  return kind;
}

void Instances::add_relation(RelationId relation) {
  if (std::exchange(entry(is_derived_, relation), 1) != 0) return;
  const auto& [predicate, keys] = relations_.relation(relation);
  if (keys[0] == kEachSymbol) {
    entry(derives_any_, predicate) = 1;
  } else {
    entry(derived_, predicate).push_back(relation);
  }
  changed(relation);
}

void Instances::add_argument(RelationId relation, std::uint32_t place, const Argument& argument,
                             const Domains& domains) {
  Values& values = values_[at(relation, place)];
  bool has_grown = false;
  const auto domain =
      argument.kind == ArgumentKind::kVariable ? domains.find(argument.id) : domains.end();
  if (argument.kind == ArgumentKind::kSymbol) {
    has_grown = values.add(argument.id, most());
  } else if (domain != domains.end()) {
    work_ += domain->second.list().size();
    has_grown = values.add(domain->second, most());
  } else {
    has_grown = values.make_any();
  }
  if (has_grown) changed(relation);
}

void Instances::add_head(const AtomShape& head, RelationId relation, const Domains& domains) {
  ++work_;
  add_relation(relation);
  const auto arguments = arguments_of(rules_, head);
  for (std::uint32_t i = 0; i < arguments.size(); ++i) {
    if (is_wanted(relation, i)) add_argument(relation, i, arguments[i], domains);
  }
}

void Instances::add_open_head(const AtomShape& head, const Domains& domains) {
  std::array<Values, kMostKeys> keys;
  const auto written = keys_of(rules_, head);
  for (std::uint32_t i = 0; i < kMostKeys; ++i) {
    if (i >= written.size()) {
      keys[i].add(kNoSymbol, 1);
    } else if (written[i].kind == ArgumentKind::kSymbol) {
      keys[i].add(written[i].id, 1);
    } else if (written[i].kind == ArgumentKind::kVariable) {
      keys[i] = domains.at(written[i].id);
    } else {
      keys[i].make_any();
    }
  }
  if (std::ranges::any_of(keys, &Values::is_any)) {
    return add_head(head, every_relation(head.predicate), domains);
  }
  std::vector<Relation> relations{{head.predicate, {}}};
  for (std::uint32_t i = 0; i < kMostKeys; ++i) {
    if (relations.size() * keys[i].list().size() > most()) {
      return add_head(head, every_relation(head.predicate), domains);
    }
    for (const Relation& relation : std::exchange(relations, {})) {
      for (const Symbol key : keys[i].list()) {
        relations.push_back(relation);
        relations.back().keys[i] = key;
      }
    }
  }
  for (const Relation& relation : relations) add_head(head, relations_.number(relation), domains);
}

// The variables of a rule whose values reach what has to be known.
Instances::Variables Instances::passed_on(const RuleShape& rule) const {
  Variables variables;
  for (const AtomShape& head : atoms_in(rules_, rule.heads)) {
    const auto arguments = arguments_of(rules_, head);
    const std::uint32_t keys = relations_.predicate(head.predicate).keys;
    for (std::uint32_t i = 0; i < arguments.size(); ++i) {
      if (arguments[i].kind != ArgumentKind::kVariable) continue;
      if (i < keys || wanted_somewhere_.contains(at(head.predicate, i))) {
        variables.insert(arguments[i].id);
      }
    }
  }
  return variables;
}

void Instances::watch(RuleId rule, const Variables& variables) {
  for (const AtomShape& atom : atoms_in(rules_, rules_.rules[rule].positives)) {
    const auto arguments = arguments_of(rules_, atom);
    const bool is_of_use = std::ranges::any_of(arguments, [&](const Argument& argument) {
      return argument.kind == ArgumentKind::kVariable && variables.contains(argument.id);
    });
    if (!is_of_use) continue;
    entry(all_readers_, atom.predicate).push_back(rule);
    if (has_open_keys(rules_, atom)) {
      entry(open_readers_, atom.predicate).push_back(rule);
    } else {
      readers_[relation_of(rules_, atom)].push_back(rule);
    }
  }
}

void Instances::changed(RelationId relation) {
  const auto& [predicate, keys] = relations_.relation(relation);
  if (keys[0] == kEachSymbol) {
    if (predicate < all_readers_.size()) wake(all_readers_[predicate]);
    return;
  }
  if (predicate < open_readers_.size()) wake(open_readers_[predicate]);
  const auto readers = readers_.find(relation);
  if (readers != readers_.end()) wake(readers->second);
}

void Instances::wake(const std::vector<RuleId>& rules) {
  work_ += rules.size();
  for (const RuleId rule : rules) {
    if (std::exchange(waits_[rule], 1) == 0) waiting_.push_back(rule);
  }
}

void Instances::evaluate(RuleId rule) {
  const RuleShape& shape = rules_.rules[rule];
  const auto variables = passed_on_.find(rule);
  Domains known;
  if (variables != passed_on_.end()) known = domains(rules_, shape, variables->second);
  for (const auto& [variable, values] : known) {
    if (values.is_empty()) return;
  }
  for (const AtomShape& head : atoms_in(rules_, shape.heads)) {
    if (has_open_keys(rules_, head)) {
      add_open_head(head, known);
    } else {
      add_head(head, relation_of(rules_, head), known);
    }
  }
}

// Each round takes the rules that the one before has woken.
void Instances::settle() {
  const auto rules = static_cast<RuleId>(rules_.rules.size());
  waits_.assign(rules, 1);
  for (RuleId rule = 0; rule < rules; ++rule) {
    waiting_.push_back(rule);
    Variables variables = passed_on(rules_.rules[rule]);
    if (variables.empty()) continue;
    watch(rule, variables);
    passed_on_.emplace(rule, std::move(variables));
  }
  while (!waiting_.empty() && !is_tired()) {
    for (const RuleId rule : std::exchange(waiting_, {})) {
      waits_[rule] = 0;
      evaluate(rule);
    }
  }
}

bool Instances::is_tired() const {
  return work_ > kMostWork + kInstancesPerRule * rules_.rules.size();
}

bool Instances::matches(const Shapes& all, const AtomShape& atom, RelationId relation) const {
  const auto& keys = relations_.relation(relation).keys;
  const auto written = keys_of(all, atom);
  for (std::uint32_t i = 0; i < written.size(); ++i) {
    const Argument& key = written[i];
    if (key.kind == ArgumentKind::kSymbol && key.id != keys[i]) return false;
  }
  return true;
}

// What can be there in an atom that holds.
Values Instances::values_at(const Shapes& all, const AtomShape& atom, std::uint32_t place) {
  Values values;
  const std::uint32_t keys = relations_.predicate(atom.predicate).keys;
  const bool is_key = place < keys;
  const auto add = [&](RelationId relation) {
    const auto known = values_.find(at(relation, place));
    if (known == values_.end()) return;
    work_ += known->second.list().size();
    values.add(known->second, most());
  };
  if (!has_open_keys(all, atom)) {
    const RelationId relation = relation_of(all, atom);
    if (!is_wanted(relation, place)) values.make_any();
    add(relation);
    if (keys != 0) add(every_relation(atom.predicate));
    return values;
  }
  const bool is_known = is_key ? found(derives_any_, atom.predicate) == 0
                               : wanted_of_each_.contains(at(atom.predicate, place));
  if (!is_known) values.make_any();
  if (!is_known || atom.predicate >= derived_.size()) return values;
  work_ += derived_[atom.predicate].size();
  for (const RelationId relation : derived_[atom.predicate]) {
    if (!matches(all, atom, relation)) continue;
    if (is_key) {
      values.add(relations_.relation(relation).keys[place], most());
    } else {
      add(relation);
    }
  }
  if (!is_key) add(every_relation(atom.predicate));
  return values;
}

Instances::Domains Instances::domains(const Shapes& all, const RuleShape& rule,
                                      const Variables& variables) {
  Domains result;
  for (const AtomShape& atom : atoms_in(all, rule.positives)) {
    const auto arguments = arguments_of(all, atom);
    work_ += arguments.size();
    for (std::uint32_t i = 0; i < arguments.size(); ++i) {
      const Argument argument = arguments[i];
      if (argument.kind != ArgumentKind::kVariable || !variables.contains(argument.id)) continue;
      Values values = values_at(all, atom, i);
      const auto known = result.find(argument.id);
      if (known == result.end()) {
        result.emplace(argument.id, std::move(values));
      } else {
        known->second.meet(values);
      }
    }
  }
  for (const VariableId variable : variables) {
    if (!result.contains(variable)) result[variable].make_any();
  }
  return result;
}

InstancePlan Instances::plan(const Statement& statement) {
  scratch_ = {};
  const RuleShape rule = relations_.shape(statement, scratch_);
  return plan(scratch_, rule);
}

InstancePlan Instances::plan(const Shapes& all, const RuleShape& rule) {
  Variables variables;
  for (const AtomShape& atom : all_atoms(all, rule)) {
    if (!is_open(all, atom)) continue;
    for (const Argument& key : keys_of(all, atom)) {
      if (key.kind == ArgumentKind::kVariable) variables.insert(key.id);
    }
  }
  Domains known = domains(all, rule, variables);
  InstancePlan plan;
  std::unordered_map<VariableId, std::uint32_t> slots;
  const auto new_slot = [&plan](VariableId variable, Values values) {
    plan.slots.push_back({variable, std::move(values)});
    return static_cast<std::uint32_t>(plan.slots.size() - 1);
  };
  const auto add_atom = [&](const AtomShape& atom, bool must_exist) {
    InstancePlan::Atom written{atom, {}, must_exist};
    const auto keys = keys_of(all, atom);
    for (std::uint32_t i = 0; i < keys.size(); ++i) {
      const Argument key = keys[i];
      InstancePlan::Key& out = written.keys[i];
      out = {key.kind != ArgumentKind::kSymbol, key.id};
      if (key.kind == ArgumentKind::kVariable) {
        const auto [slot, is_new] = slots.try_emplace(key.id);
        if (is_new) slot->second = new_slot(key.id, known.at(key.id));
        out.id = slot->second;
      } else if (out.is_slot) {
        out.id = new_slot(kUnnamed, values_at(all, atom, i));
      }
    }
    plan.atoms.push_back(written);
  };
  for (std::uint32_t i = rule.heads.begin; i < rule.positives.end; ++i) {
    const AtomShape atom = all.atoms[i];
    if (is_open(all, atom)) add_atom(atom, i >= rule.positives.begin);
  }
  for (const AtomShape& atom : atoms_in(all, rule.others)) {
    if (!is_open(all, atom)) continue;
    const auto is_known = [&](const Argument& key) {
      return key.kind == ArgumentKind::kSymbol ||
             (key.kind == ArgumentKind::kVariable && !known.at(key.id).is_any());
    };
    if (std::ranges::all_of(keys_of(all, atom), is_known)) {
      add_atom(atom, false);
    } else {
      plan.views.push_back(atom);
    }
  }
  return plan;
}

Relation Instances::relation_of(const InstancePlan::Atom& atom, const std::vector<Symbol>& values) {
  Relation relation{atom.shape.predicate, {}};
  for (std::uint32_t i = 0; i < kMostKeys; ++i) {
    const auto& [is_slot, id] = atom.keys[i];
    relation.keys[i] = is_slot ? values[id] : id;
  }
  return relation;
}

bool Instances::is_derived(const Relation& relation) const {
  const std::optional<RelationId> number = relations_.find(relation);
  return number && found(is_derived_, *number) != 0;
}

void Instances::each(const InstancePlan& plan, const Visit& visit) const {
  walk(plan, std::numeric_limits<std::uint64_t>::max(), visit);
}

// An odometer over the slots that goes on at once where an atom cannot hold.
bool Instances::walk(const InstancePlan& plan, std::uint64_t most_steps, const Visit& visit) const {
  std::vector<std::vector<const InstancePlan::Atom*>> checks(plan.slots.size());
  for (const InstancePlan::Atom& atom : plan.atoms) {
    std::uint32_t last = 0;
    for (const auto& [is_slot, id] : atom.keys) last = is_slot ? std::max(last, id) : last;
    if (atom.must_exist) checks[last].push_back(&atom);
  }
  std::vector<Symbol> values(plan.slots.size());
  const auto can_hold = [&](const InstancePlan::Atom* atom) {
    return is_derived(relation_of(*atom, values));
  };
  std::vector<std::size_t> next(plan.slots.size() + 1, 0);
  std::size_t slot = 0;
  for (std::uint64_t steps = 0; steps < most_steps; ++steps) {
    if (slot == plan.slots.size()) {
      visit(values);
    } else if (next[slot] < plan.slots[slot].values.list().size()) {
      values[slot] = plan.slots[slot].values.list()[next[slot]++];
      if (std::ranges::all_of(checks[slot], can_hold)) next[++slot] = 0;
      continue;
    }
    if (slot-- == 0) return true;
  }
  return false;
}

std::vector<Relation> Instances::relations_of(const AtomShape& atom) const {
  std::vector<Relation> relations;
  if (atom.predicate >= derived_.size()) return relations;
  for (const RelationId relation : derived_[atom.predicate]) {
    if (matches(scratch_, atom, relation)) relations.push_back(relations_.relation(relation));
  }
  return relations;
}

std::size_t Instances::most() const {
  return std::max(kFewInstances, kInstancesPerRule * rules_.rules.size());
}

// How many rules the plan makes; more than most() where they are too many.
std::size_t Instances::count(const InstancePlan& plan) {
  constexpr std::size_t kStepsPerInstance = 10;
  std::size_t number = 0;
  for (const AtomShape& atom : plan.views) {
    if (atom.predicate < derived_.size()) number += derived_[atom.predicate].size();
  }
  const bool is_known = std::ranges::none_of(
      plan.slots, [](const InstancePlan::Slot& slot) { return slot.values.is_any(); });
  const bool is_whole = is_known && walk(plan, kStepsPerInstance * most(),
                                         [&](const std::vector<Symbol>&) { ++number; });
  return is_whole ? number : most() + 1;
}

// Where the instances are too many, those of the rule that has the most are not written. Returns
// whether there was one.
bool Instances::keep_the_most_numerous() {
  std::size_t total = 0;
  std::size_t greatest = 0;
  RuleId rule = 0;
  for (const RuleId open : open_rules_) {
    const InstancePlan made = plan(rules_, rules_.rules[open]);
    if (made.atoms.empty() && made.views.empty()) continue;
    const std::size_t literals = rules_.rules[open].literals;
    std::size_t number = count(made);
    if (number > 1) number *= std::max<std::size_t>(1, literals / kLiteralsOfARule);
    total += number;
    if (number > greatest) {
      greatest = number;
      rule = open;
    }
  }
  if (total <= most()) return false;
  for (const AtomShape& atom : all_atoms(rules_, rules_.rules[rule])) {
    if (is_open(rules_, atom)) keep(atom.predicate);
  }
  return !has_failed_;
}

void Instances::decide() {
  if (has_failed_) return;
  settle();
  for (PredicateId i = 0; i < derives_any_.size(); ++i) {
    if (derives_any_[i] != 0) keep(i);
  }
  while (!has_failed_ && !is_tired() && keep_the_most_numerous()) continue;
  if (!is_tired()) return;
  if (folding_.folds_attributes()) has_failed_ = true;
  for (const std::string& predicate : undecided_) keep(predicate);
}

}    // namespace dl
