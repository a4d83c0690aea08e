#include "workbench/checks/check_statement.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "model/clause.h"

namespace workbench {
namespace {

using zarel::BUILTIN;
using zarel::kNoNode;
using zarel::NameId;
using zarel::WrittenKind;
using zarel::WrittenNode;
using zarel::WrittenStatement;

// Terms nested deeper are not followed to the outside.
constexpr int kDeepest = 1000;

// Whether "_" could stand for the variable and the literal mean the same. Where it could not, a
// variable that occurs once is there because something has to be.
bool could_be_anonymous(const WrittenStatement& clause, const WrittenNode& variable) {
  const WrittenNode* node = &variable;
  int depth = 0;
  while (node->parent != kNoNode && clause.nodes[node->parent].kind == WrittenKind::kFunction &&
         ++depth < kDeepest) {
    node = &clause.nodes[node->parent];
  }
  if (node->parent == kNoNode) return false;
  const WrittenNode& parent = clause.nodes[node->parent];
  switch (parent.kind) {
    case WrittenKind::kAtom:
    case WrittenKind::kInvocation:
      return true;
    case WrittenKind::kComparison:
      return parent.value == static_cast<std::uint32_t>(BUILTIN::kEqual);
    case WrittenKind::kAttribute:
      return parent.first_child != clause.index(*node);
    default:
      return false;
  }
}

}    // namespace

void check_single_variables(const WrittenStatement& clause, CheckContext& context) {
  // A weak constraint costs its weight for each value of its variables: all of them matter there.
  if (clause.kind == WrittenStatement::Kind::kQuery ||
      clause.kind == WrittenStatement::Kind::kWeakConstraint)
    return;
  struct Occurrence {
    std::uint32_t node;
    std::uint32_t count;
  };
  std::vector<NameId> order;
  std::unordered_map<NameId, Occurrence> occurrences;
  const auto note = [&](NameId name, std::uint32_t node) {
    const auto [entry, is_new] = occurrences.try_emplace(name, Occurrence{node, 0});
    if (is_new) order.push_back(name);
    ++entry->second.count;
  };
  for (std::uint32_t i = 0; i < clause.nodes.size(); ++i) {
    const WrittenNode& node = clause.nodes[i];
    if (node.kind == WrittenKind::kVariable) note(node.name, i);
    if (node.kind != WrittenKind::kAtom) continue;
    if (context.is_variable(node.name)) note(node.name, i);
    if (context.is_variable(node.second_name)) note(node.second_name, i);
  }
  for (const NameId name : order) {
    const Occurrence& occurrence = occurrences.at(name);
    const WrittenNode& node = clause.nodes[occurrence.node];
    if (occurrence.count != 1 || node.kind != WrittenKind::kVariable ||
        !could_be_anonymous(clause, node))
      continue;
    Message& message =
        context.tell("single-variable", context.place(clause, node.place),
                     "the variable " + context.text(name) + " occurs only here in its statement");
    message.label = "used once";
    message.help = "write _ if its value does not matter";
    message.fixes.push_back({Fix::Kind::kReplace, message.place, "_"});
  }
}

void check_weight(const WrittenStatement& clause, CheckContext& context) {
  if (clause.weight == kNoNode) return;
  const WrittenNode& weight = clause.nodes[clause.weight];
  if (weight.kind != WrittenKind::kDecimal || weight.value % zarel::kWeightScale == 0) return;
  const std::string whole = std::to_string(weight.value / zarel::kWeightScale);
  // More digits than are read have a message of their own.
  constexpr std::size_t kDigitsRead = 3;
  if (weight.place.last_column - weight.place.first_column > whole.size() + kDigitsRead) return;
  Message& message = context.tell("weight-cut", context.place(clause, weight.place),
                                  "the fraction of this weight is cut off: it counts as " + whole);
  message.label = whole == "0" ? "costs nothing" : "costs " + whole;
  message.help = "multiply the weights of all weak constraints, so that they are whole numbers";
}

// A literal with a term that is a variable answers for all of its variables; frames do for theirs.
void check_query(const WrittenStatement& query, CheckContext& context) {
  if (std::ranges::none_of(
          query.nodes, [](const WrittenNode& node) { return node.kind == WrittenKind::kFunction; }))
    return;
  std::unordered_set<NameId> answered;
  for (const bool is_telling : {false, true}) {
    for (const WrittenNode& literal : query.body()) {
      const bool is_plain =
          literal.kind == WrittenKind::kAtom || literal.kind == WrittenKind::kComparison;
      const bool answers =
          !is_plain || (literal.kind == WrittenKind::kAtom && context.is_variable(literal.name)) ||
          std::ranges::any_of(query.children(literal), [](const WrittenNode& term) {
            return term.kind == WrittenKind::kVariable;
          });
      if (answers == is_telling) continue;
      for (std::uint32_t i = literal.begin; i <= query.index(literal); ++i) {
        const WrittenNode& node = query.nodes[i];
        if (node.kind != WrittenKind::kVariable || !answered.insert(node.name).second) continue;
        if (!is_telling) continue;
        const std::string name = context.text(node.name);
        Message& message = context.tell("query-in-function", context.place(query, node.place),
                                        "the answers do not tell " + name);
        message.label = name + " stands inside a function term only";
        message.help = concat({"let it occur outside, too: add ", name, " == ", name});
      }
    }
  }
}

}    // namespace workbench
