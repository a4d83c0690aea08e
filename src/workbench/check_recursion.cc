#include "workbench/check_recursion.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

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
            "this rule never applies: " + own +
                (needed == own ? " is given only where it"
                               : " and " + needed + " are given only where the other") +
                " holds already");
        message.notes.push_back({context_.place(rule.at[i]), needed + " is needed here"});
        message.help = "add a fact, or a rule, that gives " + needed + " without " + own;
      }
    }
  }
}

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

void Recursion::tell_endless(const Growing& growing, const WrittenNode& grown, std::uint32_t from,
                             std::uint32_t to, bool is_number) {
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
  for (const Step& step : way) {
    const Rule& rule = rules_[step.rule];
    const auto part = std::ranges::find(rule.body, step.to);
    message.notes.push_back(
        {context_.place(rule.at[static_cast<std::size_t>(part - rule.body.begin())]),
         name_of(given) + " is made out of " + name_of(step.to) + " here"});
    given = step.to;
  }
  message.help = is_number ? "bound it: by a comparison in the body, or by #maxint"
                           : "let another literal of the body, or a comparison, bound it";
}

// A head grows over a literal of its own component when a variable that this literal alone gives
// stands deeper in the head, or is what a result is computed from. It is said only when nothing
// else can come to an end on the way round: no argument gets shorter, and none is taken on to
// another value by a literal from outside.
void Recursion::report_endless(const Growing& growing) {
  const WrittenStatement& rule = growing.statement;
  std::vector<const WrittenNode*> recursive;
  std::unordered_set<NameId> outside;
  for (const WrittenNode& head : rule.head()) {
    const auto own = head.kind == WrittenKind::kAtom ? number_of(rule, head) : std::nullopt;
    if (!own) continue;
    recursive.clear();
    outside.clear();
    for (const WrittenNode& literal : rule.body()) {
      const auto number =
          literal.kind == WrittenKind::kAtom ? number_of(rule, literal) : std::nullopt;
      if (number && component_[*number] == component_[*own]) {
        recursive.push_back(&literal);
      } else if (literal.kind != WrittenKind::kComputation || is(literal, BUILTIN::kInt)) {
        for (const auto& [name, depth] : depths_in(rule, literal)) outside.insert(name);
      }
    }
    if (recursive.size() != 1) continue;    // two may hold each other
    const VariableDepths after = depths_in(rule, head);
    const VariableDepths before = depths_in(rule, *recursive.front());
    const bool gets_shorter =
        std::ranges::any_of(before, [](const auto& entry) { return entry.second.most > 0; });
    if (gets_shorter) continue;
    // What stays in its place in head and literal is no way out.
    std::unordered_set<NameId> stays;
    if (rule.children(head).size() == rule.children(*recursive.front()).size()) {
      auto argument = rule.children(*recursive.front()).begin();
      for (const WrittenNode& of_head : rule.children(head)) {
        if (of_head.kind == WrittenKind::kVariable && argument->kind == WrittenKind::kVariable &&
            of_head.name == argument->name)
          stays.insert(of_head.name);
        ++argument;
      }
    }
    const bool is_led = std::ranges::any_of(before, [&](const auto& entry) {
      return outside.contains(entry.first) && !stays.contains(entry.first);
    });
    if (is_led) continue;
    const auto is_own = [&](NameId name) {
      return before.contains(name) && !outside.contains(name);
    };
    const auto other = *number_of(rule, *recursive.front());
    for (const auto& argument : rule.children(head)) {
      if (argument.kind != WrittenKind::kFunction) continue;
      const bool grows = std::ranges::any_of(depths_in(rule, argument), [&](const auto& entry) {
        return is_own(entry.first) && !stays.contains(entry.first);
      });
      if (grows) return tell_endless(growing, argument, *own, other, false);
    }
    if (has_maxint_) continue;
    for (const WrittenNode& literal : rule.body()) {
      if (!is_growing_computation(literal) || is(literal, BUILTIN::kSucc)) continue;
      const WrittenNode* result = nullptr;
      bool reads_own = false;
      bool is_neutral = false;    // "+ 0", "* 1" and "* 0" make nothing greater
      for (const WrittenNode& term : rule.children(literal)) {
        reads_own = reads_own || (result != nullptr && result->kind == WrittenKind::kVariable &&
                                  is_own(result->name));
        is_neutral = is_neutral || (result != nullptr && result->kind == WrittenKind::kInteger &&
                                    result->value <= (is(literal, BUILTIN::kTimes) ? 1U : 0U));
        result = &term;
      }
      const bool is_given = result->kind == WrittenKind::kVariable &&
                            after.contains(result->name) && !outside.contains(result->name) &&
                            !before.contains(result->name);
      if (reads_own && is_given && !is_neutral) {
        return tell_endless(growing, literal, *own, other, true);
      }
    }
  }
}

void Recursion::report(const ForeignText& foreign) {
  make_steps();
  find_components();
  report_never_firing(foreign);
  for (const Growing& growing : growing_) report_endless(growing);
}

}    // namespace workbench
