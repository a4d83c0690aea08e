#include "workbench/checks/check_frames.h"

#include <algorithm>
#include <unordered_map>

namespace workbench {
namespace {

using zarel::ARROW;
using zarel::BUILTIN;
using zarel::NameId;
using zarel::WrittenKind;
using zarel::WrittenNode;
using zarel::WrittenStatement;

constexpr std::size_t kMostRules = 10'000;    // that are kept as a whole
constexpr std::size_t kMostLiterals = 100;    // of those that are looked at
constexpr auto kSingle = static_cast<std::uint32_t>(ARROW::kSingle) + 1;

bool is_function_with_variable(const WrittenStatement& clause, const WrittenNode& term) {
  if (term.kind != WrittenKind::kFunction) return false;
  return std::any_of(clause.nodes.begin() + term.begin, clause.nodes.begin() + clause.index(term),
                     [](const WrittenNode& node) { return node.kind == WrittenKind::kVariable; });
}

bool is_constant(const WrittenNode& term) {
  return term.kind == WrittenKind::kConstant || term.kind == WrittenKind::kInteger;
}

// A head of one frame with a constant object and a single value that is a variable.
bool has_single_variable(const WrittenStatement& rule) {
  if (rule.kind != WrittenStatement::Kind::kRule || rule.is_fact() || rule.head().size() != 1)
    return false;
  const WrittenNode& head = rule.head().front();
  if (head.kind != WrittenKind::kFrame || !is_constant(rule.nodes[head.first_child])) return false;
  return std::ranges::any_of(rule.children(head), [&](const WrittenNode& part) {
    if (part.kind != WrittenKind::kAttribute || part.value != kSingle) return false;
    const WrittenNode& name = rule.nodes[part.first_child];
    return is_constant(name) && rule.nodes[name.next_sibling].kind == WrittenKind::kVariable;
  });
}

}    // namespace

// As it was written, but for what is in function terms inside a function term.
std::string Frames::term_text(const WrittenStatement& clause, const WrittenNode& term) const {
  std::string text = head_of_term(term);
  if (term.kind != WrittenKind::kFunction) return text;
  text += "(";
  std::string_view separator;
  for (const WrittenNode& argument : clause.children(term)) {
    (text += separator) += head_of_term(argument);
    if (argument.kind == WrittenKind::kFunction) text += "(...)";
    separator = ", ";
  }
  return text += ")";
}

std::string Frames::head_of_term(const WrittenNode& term) const {
  if (term.kind == WrittenKind::kInteger) return std::to_string(term.value);
  if (term.kind == WrittenKind::kAnonymous) return "_";
  if (term.kind == WrittenKind::kMaxint) return "#maxint";
  std::string text = context_.text(term.name);
  if (term.kind == WrittenKind::kQualified) (text += ":") += context_.spelling(term.second_name);
  return text;
}

void Frames::look_at(const WrittenStatement& clause, bool is_of_program) {
  if (clause.head().size() > 1) has_choice_ = true;
  for (const WrittenNode& node : clause.nodes) {
    if (node.kind == WrittenKind::kInvocation) has_choice_ = true;
    if (node.kind == WrittenKind::kFrame) {
      const WrittenNode& object = clause.nodes[node.first_child];
      if (object.kind == WrittenKind::kConstant) objects_.insert(object.name);
    }
    if (node.kind == WrittenKind::kMembership) look_at_membership(clause, node);
  }
  if (is_of_program && has_single_variable(clause) && head_values_.size() < kMostRules) {
    head_values_.push_back(clause);
  }
}

void Frames::look_at_membership(const WrittenStatement& clause, const WrittenNode& node) {
  const WrittenNode& object = clause.nodes[node.first_child];
  const WrittenNode& of = clause.nodes[object.next_sibling];
  if (of.next_sibling == zarel::kNoNode) {
    const bool has_object = is_function_with_variable(clause, object);
    const bool has_class = is_function_with_variable(clause, of);
    if (!has_object && !has_class) return;
    Conditional conditional{{clause.span.file, node.place},
                            {},
                            term_text(clause, object),
                            term_text(clause, of),
                            has_object && has_class};
    for (const WrittenNode* side : {&object, &of}) {
      if (side->kind != WrittenKind::kFunction) continue;
      conditional.functors.emplace_back(side->name, clause.children(*side).size());
    }
    conditionals_.push_back(std::move(conditional));
    return;
  }
  if (of.kind != WrittenKind::kConstant) return;
  const WrittenNode& attribute = clause.nodes[of.next_sibling];
  const WrittenNode& name = clause.nodes[attribute.first_child];
  memberships_.push_back({object.name,
                          of.name,
                          term_text(clause, object),
                          term_text(clause, of),
                          term_text(clause, name),
                          {clause.span.file, name.place},
                          clause.is_fact()});
}

// The variables of the rule with one value, as far as that can be told: those of an aggregate, of a
// single fact, of what is looked up under a constant, and what follows from them. In doubt a
// variable has one.
std::unordered_set<NameId> Frames::settled_variables(const WrittenStatement& rule) const {
  std::unordered_set<NameId> settled;
  const auto is_settled = [&](const WrittenNode& term) {
    return term.kind != WrittenKind::kAnonymous &&
           (term.kind != WrittenKind::kVariable || settled.contains(term.name));
  };
  const auto has_settled_value = [&](const WrittenNode& part) {
    if (part.kind != WrittenKind::kAttribute) return false;
    const std::uint32_t value = rule.nodes[part.first_child].next_sibling;
    return value != zarel::kNoNode && is_settled(rule.nodes[value]);
  };
  const auto has_many_rows = [&](const WrittenNode& literal) {
    if (literal.is_negated) return true;    // gives nothing
    if (literal.kind == WrittenKind::kFrame || literal.kind == WrittenKind::kMembership) {
      return !is_settled(rule.nodes[literal.first_child]) &&
             std::ranges::none_of(rule.children(literal), has_settled_value);
    }
    if (literal.kind != WrittenKind::kAtom || literal.is_strongly_negated) return false;
    const Relation* const relation = relations_.find(literal, rule.children(literal).size());
    return relation != nullptr && relation->facts[0] >= 2 &&
           std::ranges::none_of(rule.children(literal), is_settled);
  };
  std::size_t before = 0;
  do {
    before = settled.size();
    for (const WrittenNode& literal : rule.body()) {
      if (has_many_rows(literal)) continue;
      for (std::uint32_t i = literal.begin; i <= rule.index(literal); ++i) {
        const WrittenNode& node = rule.nodes[i];
        if (node.kind == WrittenKind::kVariable) settled.insert(node.name);
      }
    }
  } while (settled.size() != before);
  return settled;
}

// Whether a frame or an atom of the body with many rows gives it.
bool Frames::comes_from_rows(const WrittenStatement& rule, NameId variable) const {
  return std::ranges::any_of(rule.nodes, [&](const WrittenNode& node) {
    if (node.kind != WrittenKind::kVariable || node.name != variable) return false;
    if (node.parent == zarel::kNoNode) return false;
    const WrittenNode& parent = rule.nodes[node.parent];
    if (parent.kind == WrittenKind::kAtom) return true;
    if (parent.kind != WrittenKind::kAttribute || parent.value != kSingle) return false;
    const bool is_in_head = rule.index(parent) <= rule.first_in_head;
    return !is_in_head && relations_.times_given(rule.nodes[parent.first_child].name) >= 2;
  });
}

void Frames::report_head_values(const WrittenStatement& rule) {
  const WrittenNode& head = rule.head().front();
  const WrittenNode& object = rule.nodes[head.first_child];
  if (rule.body().size() > kMostLiterals) return;
  const std::unordered_set<NameId> settled = settled_variables(rule);
  for (const WrittenNode& part : rule.children(head)) {
    if (part.kind != WrittenKind::kAttribute || part.value != kSingle) continue;
    const WrittenNode& name = rule.nodes[part.first_child];
    const WrittenNode& value = rule.nodes[name.next_sibling];
    if (value.kind != WrittenKind::kVariable || settled.contains(value.name) ||
        !comes_from_rows(rule, value.name))
      continue;
    const std::string shown = term_text(rule, object);
    Message& message = context_.tell(
        "mixed-rows", context_.place(rule, object.place),
        shown + " gets the values of all rows, and nothing tells which belong together");
    message.label = "the same object for every row";
    message.notes.push_back({context_.place(rule, value.place),
                             context_.text(value.name) + " has a value in each row"});
    message.help =
        "write an object that differs from row to row: a variable, or a function term "
        "such as " +
        shown + "(" + context_.text(value.name) + "); for many values, write ->>";
    return;
  }
}

void Frames::report() {
  for (const Membership& membership : memberships_) {
    if (objects_.contains(membership.of)) continue;    // who writes person[...], knows
    Message& message =
        context_.tell("class-attributes", context_.place(membership.place),
                      membership.attribute_text + " is an attribute of the class " +
                          membership.class_text + " here, not of " + membership.object_text);
    message.label = "belongs to " + membership.class_text;
    message.help = "write " + membership.object_text + " : " + membership.class_text +
                   (membership.is_fact ? ". " : ", ") + membership.object_text + "[...]";
  }
  for (const Conditional& conditional : conditionals_) {
    const bool is_predicate = std::ranges::any_of(conditional.functors, [&](const auto& functor) {
      return relations_.is_given(functor.first, functor.second);
    });
    if (!conditional.is_certain && !is_predicate) continue;
    Message& message = context_.tell("conditional-literal", context_.place(conditional.place),
                                     "this is a membership: the object " + conditional.object_text +
                                         " in the class " + conditional.class_text);
    message.label = "there are no conditional literals";
    message.help = "give what holds for all of them a rule of its own, or count with #count";
  }
  if (has_choice_) return;    // an answer set may hold one row of each
  for (const WrittenStatement& rule : head_values_) report_head_values(rule);
}

}    // namespace workbench
