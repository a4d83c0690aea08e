#include "workbench/checks/check_recursion.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "workbench/checks/fact_circle.h"

namespace workbench {
namespace {

using zarel::BUILTIN;
using zarel::NameId;
using zarel::WrittenKind;
using zarel::WrittenNode;
using zarel::WrittenStatement;

// Rules that are kept as a whole, for what is known of them when all was read.
constexpr std::size_t kMostGrowing = 10'000;
constexpr std::size_t kMostPairs = 1'000'000;
constexpr std::size_t kMostSteps = 20;    // of a way round that is told rule by rule
constexpr std::uint32_t kNone = 0xFFFFFFFF;

bool is(const WrittenNode& node, BUILTIN builtin) {
  return node.value == static_cast<std::uint32_t>(builtin);
}

// "+", "*" and "#succ", whose last term is the result.
bool is_growing_computation(const WrittenNode& node) {
  return node.kind == WrittenKind::kComputation && !is(node, BUILTIN::kInt);
}

// Whether something in the rule may keep it from going on: a comparison, or a literal under "not".
bool has_guard(const WrittenStatement& rule) {
  return std::ranges::any_of(rule.body(), [](const WrittenNode& literal) {
    return literal.is_negated || literal.kind == WrittenKind::kComparison ||
           literal.kind == WrittenKind::kGuarded || literal.kind == WrittenKind::kInvocation ||
           literal.kind == WrittenKind::kExternal;
  });
}

bool has_function_with_variable(const WrittenStatement& rule, const WrittenNode& atom) {
  bool has_variable = false;
  for (std::uint32_t i = atom.begin; i <= rule.index(atom); ++i) {
    const WrittenNode& node = rule.nodes[i];
    if (node.kind == WrittenKind::kVariable) has_variable = true;
    if (node.kind == WrittenKind::kFunction && has_variable) return true;
  }
  return false;
}

// How deep in function terms each variable stands in an atom: at least, and at most.
struct Depths {
  std::uint32_t least = 0;
  std::uint32_t most = 0;
};
using VariableDepths = std::unordered_map<NameId, Depths>;

VariableDepths depths_in(const WrittenStatement& rule, const WrittenNode& atom) {
  VariableDepths result;
  const std::uint32_t end = rule.index(atom);
  std::vector<std::uint32_t> depth(end - atom.begin + 1, 0);
  for (std::uint32_t i = end; i-- > atom.begin;) {
    const WrittenNode& node = rule.nodes[i];
    const bool is_inside = rule.nodes[node.parent].kind == WrittenKind::kFunction;
    depth[i - atom.begin] = depth[node.parent - atom.begin] + (is_inside ? 1U : 0U);
    if (node.kind != WrittenKind::kVariable) continue;
    const std::uint32_t own = depth[i - atom.begin];
    const auto [entry, is_new] = result.try_emplace(node.name, Depths{own, own});
    if (is_new) continue;
    entry->second = {std::min(entry->second.least, own), std::max(entry->second.most, own)};
  }
  return result;
}

}    // namespace

std::optional<std::uint32_t> Recursion::number_of(const WrittenStatement& of,
                                                  const WrittenNode& atom) const {
  const Relation* const relation = relations_.find(atom, of.children(atom).size());
  if (relation == nullptr) return std::nullopt;
  return 2 * relation->number + (atom.is_strongly_negated ? 1U : 0U);
}

std::string Recursion::name_of(std::uint32_t relation) const {
  const NameId name = relations_.all()[relation / 2].key.name;
  return concat({relation % 2 == 0 ? "" : "-", context_.spelling(name)});
}

void Recursion::look_at(const WrittenStatement& statement) {
  if (statement.kind == WrittenStatement::Kind::kMaxint) has_maxint_ = true;
  if (statement.kind != WrittenStatement::Kind::kRule) return;
  if (statement.is_fact() && statement.head().size() == 1) return;
  Rule rule;
  rule.head = {statement.span.file, statement.head().front().name_place};
  for (const WrittenNode& disjunct : statement.head()) {
    if (disjunct.kind != WrittenKind::kAtom) continue;
    if (const auto number = number_of(statement, disjunct)) rule.heads.push_back(*number);
  }
  if (rule.heads.empty()) return;
  for (const WrittenNode& literal : statement.body()) {
    if (literal.kind != WrittenKind::kAtom || literal.is_negated) continue;
    if (const auto number = number_of(statement, literal)) {
      rule.body.push_back(*number);
      rule.at.push_back({statement.span.file, literal.name_place});
    }
  }
  // What is done for each pair of a head and a literal is left out for rules of too many.
  if (rule.heads.size() * rule.body.size() > kMostPairs) {
    rule.body.clear();
    rule.at.clear();
  }
  const bool computes = std::ranges::any_of(statement.body(), is_growing_computation);
  const bool builds = std::ranges::any_of(statement.head(), [&](const WrittenNode& disjunct) {
    return disjunct.kind == WrittenKind::kAtom && has_function_with_variable(statement, disjunct);
  });
  if ((computes || builds) && !rule.body.empty() && statement.head().size() == 1 &&
      !has_guard(statement) && growing_.size() < kMostGrowing) {
    growing_.push_back({statement, static_cast<std::uint32_t>(rules_.size())});
  }
  rules_.push_back(std::move(rule));
}

void Recursion::make_steps() {
  steps_.assign(count(), {});
  for (std::uint32_t i = 0; i < rules_.size(); ++i) {
    for (const std::uint32_t head : rules_[i].heads) {
      for (const std::uint32_t part : rules_[i].body) steps_[head].push_back({part, i});
    }
  }
}

// Tarjan's strongly connected components, with a stack of its own instead of recursion.
void Recursion::find_components() {
  component_.assign(count(), kNone);
  std::vector<std::uint32_t> order(count(), kNone);
  std::vector<std::uint32_t> low(count(), 0);
  std::vector<std::uint32_t> open;
  std::uint32_t next_order = 0;
  std::uint32_t next_component = 0;
  struct Visit {
    std::uint32_t relation;
    std::size_t step;
  };
  std::vector<Visit> visits;
  const auto enter = [&](std::uint32_t relation) {
    order[relation] = low[relation] = next_order++;
    open.push_back(relation);
    visits.push_back({relation, 0});
  };
  for (std::uint32_t root = 0; root < count(); ++root) {
    if (order[root] != kNone || steps_[root].empty()) continue;
    enter(root);
    while (!visits.empty()) {
      const std::uint32_t relation = visits.back().relation;
      if (visits.back().step < steps_[relation].size()) {
        const std::uint32_t to = steps_[relation][visits.back().step++].to;
        if (order[to] == kNone) {
          enter(to);
        } else if (component_[to] == kNone) {
          low[relation] = std::min(low[relation], order[to]);
        }
        continue;
      }
      visits.pop_back();
      if (!visits.empty()) {
        std::uint32_t& above = low[visits.back().relation];
        above = std::min(above, low[relation]);
      }
      if (low[relation] != order[relation]) continue;
      std::uint32_t member = kNone;
      do {
        member = open.back();
        open.pop_back();
        component_[member] = next_component;
      } while (member != relation);
      ++next_component;
    }
  }
}

// What is never given was told of by itself: nothing that only follows from it is said here.
std::vector<char> Recursion::fireable(const ForeignText& foreign) const {
  std::vector<char> fires(count(), 0);
  std::vector<std::vector<std::uint32_t>> waiting(count());
  std::vector<std::size_t> missing(rules_.size(), 0);
  std::vector<std::uint32_t> ready;
  const auto fire = [&](std::uint32_t relation) {
    if (fires[relation] == 0) ready.push_back(relation);
    fires[relation] = 1;
  };
  for (const Relation& relation : relations_.all()) {
    for (const std::uint32_t sign : {0U, 1U}) {
      if (relation.given[sign].count == 0 || relation.facts[sign] != 0 || relation.key.scope != 0 ||
          relations_.may_be_given_by_variable(relation.key) ||
          foreign.mentions(context_.spelling(relation.key.name)))
        fire(2 * relation.number + sign);
    }
  }
  for (std::uint32_t i = 0; i < rules_.size(); ++i) {
    for (const std::uint32_t part : rules_[i].body) waiting[part].push_back(i);
    missing[i] = rules_[i].body.size();
    if (missing[i] == 0) std::ranges::for_each(rules_[i].heads, fire);
  }
  while (!ready.empty()) {
    const std::uint32_t relation = ready.back();
    ready.pop_back();
    for (const std::uint32_t rule : waiting[relation]) {
      if (--missing[rule] == 0) std::ranges::for_each(rules_[rule].heads, fire);
    }
  }
  return fires;
}

// One message for each circle of relations that is closed in itself.
void Recursion::report_never_firing(const ForeignText& foreign) {
  const std::vector<char> fires = fireable(foreign);
  std::unordered_set<std::uint32_t> follows;    // components that wait for another one, too
  for (const Rule& rule : rules_) {
    for (const std::uint32_t head : rule.heads) {
      for (const std::uint32_t part : rule.body) {
        if (fires[head] == 0 && fires[part] == 0 && component_[head] != component_[part]) {
          follows.insert(component_[head]);
        }
      }
    }
  }
  std::unordered_set<std::uint32_t> told;
  for (const Rule& rule : rules_) {
    for (const std::uint32_t head : rule.heads) {
      if (fires[head] != 0 || follows.contains(component_[head])) continue;
      for (std::size_t i = 0; i < rule.body.size(); ++i) {
        if (fires[rule.body[i]] != 0 || !told.insert(component_[head]).second) continue;
        const std::string needed = name_of(rule.body[i]);
        const std::string own = name_of(head);
        Message& message = context_.tell(
            "never-fires", context_.place(rule.head),
            needed == own ? concat({"this rule never applies: ", own,
                                    " is given only where it holds already"})
                          : concat({"this rule never applies: ", own, " and ", needed,
                                    " are given only where the other holds already"}));
        message.notes.push_back({context_.place(rule.at[i]), needed + " is needed here"});
        message.help = concat({"add a fact, or a rule, that gives ", needed, " without ", own});
      }
    }
  }
}

// A rule with one head and one literal of the head's component, and what of their variables is told
// by others.
struct Recursion::Round {
  const WrittenStatement& rule;
  const WrittenNode& head;
  const WrittenNode* literal = nullptr;    // that one
  std::uint32_t own = 0;                   // their relations
  std::uint32_t other = 0;
  VariableDepths after = {};                  // in the head
  VariableDepths before = {};                 // in the literal
  std::unordered_set<NameId> outside = {};    // in literals from outside
  std::unordered_set<NameId> stays = {};      // at the same place in both

  bool is_own(NameId name) const { return before.contains(name) && !outside.contains(name); }
};

// The shortest way from a head to a relation of a body in the same component.
std::vector<Recursion::Step> Recursion::path(std::uint32_t from, std::uint32_t to) const {
  std::unordered_map<std::uint32_t, Step> came;    // from which relation, by which rule
  std::vector<std::uint32_t> queue = {from};
  came[from] = {kNone, 0};
  for (std::size_t i = 0; i < queue.size() && !came.contains(to); ++i) {
    for (const Step& step : steps_[queue[i]]) {
      if (component_[step.to] != component_[from] || came.contains(step.to)) continue;
      came[step.to] = {queue[i], step.rule};
      queue.push_back(step.to);
    }
  }
  std::vector<Step> way;
  for (std::uint32_t at = to; at != from && came.contains(at); at = came.at(at).to) {
    way.push_back({at, came.at(at).rule});
  }
  std::ranges::reverse(way);
  return way;
}

void Recursion::tell_endless(const Growing& growing, const WrittenNode& grown, const Round& round,
                             bool is_number, const Circle* circle) {
  const std::uint32_t from = round.own;
  const std::uint32_t to = round.other;
  if (!told_.insert(component_[from]).second) return;
  const std::string name = name_of(from);
  Message& message = context_.tell(
      "endless-recursion", context_.place(growing.statement, grown.place),
      name + " makes ever " + (is_number ? "greater numbers" : "longer terms") + " out of itself");
  message.label = is_number ? "a greater number each time" : "a longer term each time";
  // From what the rule gives to what it reads, and from there back.
  std::vector<Step> way = {{to, growing.rule}};
  const std::vector<Step> back = path(to, from);
  if (to != from) way.insert(way.end(), back.begin(), back.end());
  std::uint32_t given = from;
  for (std::size_t i = 0; i < way.size(); ++i) {
    const Rule& rule = rules_[way[i].rule];
    const auto part = std::ranges::find(rule.body, way[i].to);
    const zarel::Place place =
        context_.place(rule.at[static_cast<std::size_t>(part - rule.body.begin())]);
    if (i + 1 > kMostSteps && way.size() > i + 1) {
      message.notes.push_back({place, name_of(given) + " is made in " +
                                          std::to_string(way.size() - i) +
                                          " further steps out of " + name_of(way.back().to)});
      break;
    }
    message.notes.push_back(
        {place, name_of(given) + " is made out of " + name_of(way[i].to) + " here"});
    given = way[i].to;
  }
  if (circle != nullptr) {
    message.notes.push_back(
        {context_.place(circle->place),
         "these facts lead from " + circle->on_it + " back to " + circle->on_it});
  }
  message.help = is_number ? "bound it: by a comparison in the body, or by #maxint"
                           : "let another literal of the body, or a comparison, bound it";
}

// Nothing when the rule has no such literal, or two, which may hold each other.
std::optional<Recursion::Round> Recursion::round_of(const WrittenStatement& rule) const {
  Round round{rule, rule.head().front()};
  const auto own = number_of(rule, round.head);
  if (!own) return std::nullopt;
  round.own = *own;
  for (const WrittenNode& literal : rule.body()) {
    const auto number =
        literal.kind == WrittenKind::kAtom ? number_of(rule, literal) : std::nullopt;
    if (number && component_[*number] == component_[*own]) {
      if (round.literal != nullptr) return std::nullopt;
      round.literal = &literal;
      round.other = *number;
    } else if (literal.kind != WrittenKind::kComputation || is(literal, BUILTIN::kInt)) {
      for (const auto& [name, depth] : depths_in(rule, literal)) round.outside.insert(name);
    }
  }
  if (round.literal == nullptr) return std::nullopt;
  round.after = depths_in(rule, round.head);
  round.before = depths_in(rule, *round.literal);
  const auto arguments = rule.children(*round.literal);
  auto argument = arguments.begin();
  for (const WrittenNode& of_head : rule.children(round.head)) {
    if (argument == arguments.end()) break;
    if (of_head.kind == WrittenKind::kVariable && argument->kind == WrittenKind::kVariable &&
        of_head.name == argument->name)
      round.stays.insert(of_head.name);
    ++argument;
  }
  return round;
}

// An argument of the head that holds a variable of the literal in a function term; null without one.
const WrittenNode* Recursion::longer_term(const Round& round) {
  for (const WrittenNode& argument : round.rule.children(round.head)) {
    if (argument.kind != WrittenKind::kFunction) continue;
    const VariableDepths inside = depths_in(round.rule, argument);
    if (std::ranges::any_of(inside, [&](const auto& entry) {
          return round.is_own(entry.first) && !round.stays.contains(entry.first);
        }))
      return &argument;
  }
  return nullptr;
}

// A sum or product of a variable of the literal, whose result the head takes; null without one.
const WrittenNode* Recursion::greater_number(const Round& round) {
  for (const WrittenNode& literal : round.rule.body()) {
    if (!is_growing_computation(literal) || is(literal, BUILTIN::kSucc)) continue;
    const WrittenNode* result = nullptr;
    bool reads_own = false;
    bool is_neutral = false;    // "+ 0", "* 1" and "* 0" make nothing greater
    for (const WrittenNode& term : round.rule.children(literal)) {
      if (result != nullptr && result->kind == WrittenKind::kVariable) {
        reads_own = reads_own || round.is_own(result->name);
      } else if (result != nullptr && result->kind == WrittenKind::kInteger) {
        is_neutral = is_neutral || result->value <= (is(literal, BUILTIN::kTimes) ? 1U : 0U);
      }
      result = &term;
    }
    const bool is_taken =
        result->kind == WrittenKind::kVariable && round.after.contains(result->name) &&
        !round.outside.contains(result->name) && !round.before.contains(result->name);
    if (reads_own && is_taken && !is_neutral) return &literal;
  }
  return nullptr;
}

// It is said only when nothing else can come to an end on the way round: no argument gets shorter,
// and none is led on to another value by a literal from outside, unless that goes in circles.
void Recursion::report_endless(const Growing& growing) {
  const std::optional<Round> round = round_of(growing.statement);
  if (!round) return;
  const bool gets_shorter =
      std::ranges::any_of(round->before, [](const auto& entry) { return entry.second.most > 0; });
  if (gets_shorter) return;
  const bool is_led = std::ranges::any_of(round->before, [&](const auto& entry) {
    return round->outside.contains(entry.first) && !round->stays.contains(entry.first);
  });
  const WrittenNode* const term = is_led ? nullptr : longer_term(*round);
  const WrittenNode* const number = has_maxint_ ? nullptr : greater_number(*round);
  if (term != nullptr) return tell_endless(growing, *term, *round, false);
  if (number == nullptr) return;
  if (!is_led) return tell_endless(growing, *number, *round, true);
  if (const auto circle = circle_of(*round)) {
    tell_endless(growing, *number, *round, true, &*circle);
  }
}

// The facts that lead the literal's argument on to the head's, when these are all that differ, and
// the facts lead back to where they began.
std::optional<Recursion::Circle> Recursion::circle_of(const Round& round) {
  const auto arguments = round.rule.children(*round.literal);
  auto argument = arguments.begin();
  std::optional<std::pair<NameId, NameId>> led;
  for (const WrittenNode& of_head : round.rule.children(round.head)) {
    if (argument == arguments.end() || of_head.kind != WrittenKind::kVariable ||
        argument->kind != WrittenKind::kVariable)
      return std::nullopt;
    if (of_head.name != argument->name && round.outside.contains(of_head.name)) {
      if (led) return std::nullopt;
      led = {argument->name, of_head.name};
    }
    ++argument;
  }
  if (!led) return std::nullopt;
  const WrittenNode* leading = nullptr;
  for (const WrittenNode& literal : round.rule.body()) {
    if (&literal == round.literal || literal.kind == WrittenKind::kComputation) continue;
    const VariableDepths inside = depths_in(round.rule, literal);
    if (!inside.contains(led->first) && !inside.contains(led->second)) continue;
    if (leading != nullptr || literal.kind != WrittenKind::kAtom) return std::nullopt;
    leading = &literal;
  }
  if (leading == nullptr || leading->is_strongly_negated) return std::nullopt;
  std::size_t from = 0;
  std::size_t to = 0;
  std::size_t position = 0;
  for (const WrittenNode& term : round.rule.children(*leading)) {
    ++position;
    if (term.kind == WrittenKind::kAnonymous) continue;
    if (term.kind != WrittenKind::kVariable || round.stays.contains(term.name)) return std::nullopt;
    if (term.name == led->first) from = position;
    if (term.name == led->second) to = position;
  }
  const Relation* const relation = relations_.find(*leading, position);
  if (from == 0 || to == 0 || relation == nullptr || circles_ == 0) return std::nullopt;
  if (relation->facts[0] != relation->given[0].count) return std::nullopt;
  --circles_;
  const auto on_circle = circle_in_facts(
      context_.run(), {relation->key.name, relation->key.space, position, from, to});
  if (!on_circle) return std::nullopt;
  return Circle{{round.rule.span.file, leading->name_place}, *on_circle};
}

void Recursion::report(const ForeignText& foreign) {
  make_steps();
  find_components();
  report_never_firing(foreign);
  for (const Growing& growing : growing_) report_endless(growing);
}

}    // namespace workbench
