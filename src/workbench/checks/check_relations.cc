#include "workbench/checks/check_relations.h"

#include <algorithm>

#include "model/generic_encoding.h"
#include "workbench/messages/nearest.h"

namespace workbench {
namespace {

using zarel::ARROW;
using zarel::NameId;
using zarel::SourceSpan;
using zarel::WrittenKind;
using zarel::WrittenNode;
using zarel::WrittenStatement;

// Suggestions look at every name: beyond this many, nobody reads them any more.
constexpr std::size_t kMostSuggestions = 100;

SourceSpan name_span(const WrittenStatement& of, const WrittenNode& node) {
  return {of.span.file, node.name_place};
}

std::string with_arguments(std::size_t arity) {
  if (arity == 0) return "without arguments";
  std::string text = "with ";
  return text.append(std::to_string(arity)).append(arity == 1 ? " argument" : " arguments");
}

constexpr std::array<std::string_view, 8> kArrowTexts = {"",    "->",  "->>",  "=>",
                                                         "=>>", "*->", "*->>", ""};

std::string with_arrow(std::size_t arrow) {
  if (arrow == 0) return "without a value";
  return std::string("with ").append(kArrowTexts[arrow]);
}

constexpr std::uint64_t kAnySpace = 0xFFFFFFFF;
std::uint64_t variable_key(std::size_t arity, std::uint64_t space) {
  return (static_cast<std::uint64_t>(arity) << 32U) | space;
}

// What other languages have built in is a predicate like any other here.
std::string_view help_for_builtin(std::string_view name) {
  struct Builtin {
    std::string_view names, help;    // each name between blanks
  };
  constexpr Builtin kBuiltins[] = {
      {" findall bagof setof aggregate_all ",
       "write an aggregate for what is to be counted: N = #count{Y : r(X, Y)}"},
      {" forall ", "name what breaks it, bad :- p(X), not q(X)., and write not bad"},
      {" write writeln print nl format ",
       "rules print nothing: leave it out, what holds is printed"},
      {" assert asserta assertz retract ",
       "nothing is changed by a rule: let its head say what holds"},
  };
  for (const Builtin& each : kBuiltins) {
    if (each.names.find(concat({" ", name, " "})) != std::string_view::npos) return each.help;
  }
  return {};
}

}    // namespace

Relation& Relations::at(const RelationKey& key) {
  const auto [entry, is_new] = by_key_.try_emplace(key, nullptr);
  if (is_new) {
    relations_.push_back({key, static_cast<std::uint32_t>(relations_.size()), {}, {}, {}, {}});
    entry->second = &relations_.back();
    by_name_[key.name].push_back(entry->second);
  }
  return *entry->second;
}

// Nothing for what is no relation of its own: a variable, a formal predicate, a frame's.
std::optional<RelationKey> Relations::key_of(NameId name, NameId space, std::size_t arity) {
  const auto count = static_cast<std::uint32_t>(arity);
  if (scope_ != 0) {
    const auto bound = bound_names_.find(name);
    if (bound == bound_names_.end()) return RelationKey{name, {}, count, scope_};
    if (!bound->second) return std::nullopt;
  } else if (context_.is_variable(name)) {
    return std::nullopt;
  }
  const std::string_view shown_space = context_.spelling(space);
  if (zarel::is_upper_case(shown_space[0]) ||
      shown_space.find(zarel::kFrameMarker) != std::string_view::npos)
    return std::nullopt;
  return RelationKey{name, space, count, 0};
}

void Relations::look_at(const zarel::WrittenFlatFact& fact) {
  if (last_flat_ == nullptr || last_flat_->key.name != fact.name ||
      last_flat_->key.arity != fact.arity || last_flat_->key.space != fact.frame_space) {
    scope_ = 0;
    const std::optional<RelationKey> key = key_of(fact.name, fact.frame_space, fact.arity);
    if (!key) return give_frames_by_variable(fact.frame_space);
    last_flat_ = &at(*key);
  }
  ++last_flat_->facts[0];
  Occurrences& given = last_flat_->given[0];
  if (given.count++ != 0) return;
  given.first = fact.declared != nullptr ? *fact.declared : fact.span;
  if (fact.declared != nullptr) return;
  const auto length = static_cast<std::uint32_t>(context_.spelling(fact.name).size());
  given.first.range.last_line = fact.span.range.first_line;
  given.first.range.last_column = fact.span.range.first_column + length - 1;
}

void Relations::look_at(const WrittenStatement& statement) {
  if (statement.kind == WrittenStatement::Kind::kTemplate) return look_at_template(statement);
  look_at_clause(statement, 0);
}

void Relations::look_at_template(const WrittenStatement& definition) {
  if (!context_.run().options.links_templates) return;    // they read other atoms
  bound_names_.clear();
  for (const zarel::WrittenPredicate& formal : definition.formals) {
    bound_names_[formal.name] = false;
  }
  for (const zarel::WrittenPredicate& global : definition.globals) {
    bound_names_[global.name] = true;
  }
  template_names_.push_back(definition.name);
  const auto scope = static_cast<std::uint32_t>(template_names_.size() - 1);
  for (const WrittenStatement& clause : definition.clauses) look_at_clause(clause, scope);
}

void Relations::look_at_clause(const WrittenStatement& clause, std::uint32_t scope) {
  scope_ = scope;
  if (clause.kind == WrittenStatement::Kind::kRange) {
    if (const auto key = key_of(clause.name, clause.frame_space, 1)) {
      at(*key).given[0].add({clause.span.file, clause.name_place});
      at(*key).facts[0] += 2;
    }
    return;
  }
  for (const WrittenNode& disjunct : clause.head()) give(clause, disjunct);
  for (const WrittenNode& literal : clause.body()) read(clause, literal);
}

// A head with a variable for its frame space, or in one of frames, may say anything of frames.
void Relations::give_frames_by_variable(NameId space) {
  const std::string_view spelling = context_.spelling(space);
  if (zarel::is_upper_case(spelling[0]) ||
      spelling.find(zarel::kFrameMarker) != std::string_view::npos) {
    attributes_vary_ = classes_vary_ = true;
  }
}

void Relations::give(const WrittenStatement& clause, const WrittenNode& disjunct) {
  if (disjunct.kind != WrittenKind::kAtom) return give_frame(clause, disjunct);
  const std::size_t arity = clause.children(disjunct).size();
  if (const auto key = key_of(disjunct.name, disjunct.second_name, arity)) {
    Relation& relation = at(*key);
    const std::size_t sign = disjunct.is_strongly_negated ? 1 : 0;
    relation.given[sign].add(name_span(clause, disjunct));
    const bool is_alone = disjunct.begin == 0 && disjunct.next_sibling == zarel::kNoNode;
    if (clause.is_fact() && is_alone) ++relation.facts[sign];
    return;
  }
  give_frames_by_variable(disjunct.second_name);
  if (scope_ != 0) return;
  const bool has_space = !context_.is_variable(disjunct.second_name);
  given_by_variable_.insert(
      variable_key(arity, has_space ? zarel::to_index(disjunct.second_name) : kAnySpace));
}

void Relations::give_frame(const WrittenStatement& clause, const WrittenNode& disjunct) {
  const auto begin = disjunct.begin;
  for (std::uint32_t i = begin; i <= clause.index(disjunct); ++i) {
    const WrittenNode& node = clause.nodes[i];
    if (node.kind == WrittenKind::kAttribute) {
      const WrittenNode& name = clause.nodes[node.first_child];
      if (name.kind == WrittenKind::kVariable) attributes_vary_ = true;
      if (node.value >= kArrowTexts.size()) {    // "!=>": the atom name(object, value)
        if (name.kind != WrittenKind::kConstant) continue;
        if (const auto key = key_of(name.name, disjunct.second_name, 2)) {
          at(*key).given[0].add(name_span(clause, name));
        }
        continue;
      }
      if (name.kind == WrittenKind::kConstant)
        attributes_[name.name].given[node.value].add(name_span(clause, name));
    } else if (node.kind == WrittenKind::kMembership) {
      const WrittenNode& of = clause.nodes[clause.nodes[node.first_child].next_sibling];
      if (of.kind == WrittenKind::kConstant) {
        classes_[of.name].given[0].add(name_span(clause, of));
      } else {
        classes_vary_ = true;
      }
    }
  }
}

// Everything in the literal is visited; "not" counts where it stands in front of an atom.
void Relations::read(const WrittenStatement& clause, const WrittenNode& literal) {
  for (std::uint32_t i = literal.begin; i <= clause.index(literal); ++i) {
    const WrittenNode& node = clause.nodes[i];
    if (node.kind == WrittenKind::kAtom || node.kind == WrittenKind::kActual) {
      // A bare name says nothing of its arguments.
      if (node.kind == WrittenKind::kActual &&
          (node.first_child == zarel::kNoNode || !context_.run().options.links_templates))
        continue;
      const auto key = key_of(node.name, node.second_name, clause.children(node).size());
      if (!key) continue;
      Relation& relation = at(*key);
      auto& list = node.is_negated ? relation.read_under_not : relation.read;
      list[node.is_strongly_negated ? 1 : 0].add(name_span(clause, node));
    } else if (node.kind == WrittenKind::kAttribute && node.value < kArrowTexts.size()) {
      const WrittenNode& name = clause.nodes[node.first_child];
      if (name.kind == WrittenKind::kConstant)
        attributes_[name.name].read[node.value].add(name_span(clause, name));
    } else if (node.kind == WrittenKind::kMembership) {
      const WrittenNode& object = clause.nodes[node.first_child];
      const WrittenNode& of = clause.nodes[object.next_sibling];
      // With a function term in front it is more likely a conditional literal.
      if (of.kind == WrittenKind::kConstant && object.kind != WrittenKind::kFunction)
        classes_[of.name].read[0].add(name_span(clause, of));
    }
  }
}

const Relation* Relations::find(const WrittenNode& atom, std::size_t arity) const {
  const auto found =
      by_key_.find(RelationKey{atom.name, atom.second_name, static_cast<std::uint32_t>(arity), 0});
  return found == by_key_.end() ? nullptr : found->second;
}

bool Relations::is_given(NameId name, std::size_t arity) const {
  const auto named = by_name_.find(name);
  if (named == by_name_.end()) return false;
  return std::ranges::any_of(named->second, [&](const Relation* relation) {
    return relation->key.arity == arity && relation->given[0].count != 0;
  });
}

std::size_t Relations::times_given(NameId attribute) const {
  const auto found = attributes_.find(attribute);
  constexpr auto kSingle = static_cast<std::size_t>(ARROW::kSingle) + 1;
  return found == attributes_.end() ? 0 : found->second.given[kSingle].count;
}

bool Relations::may_be_given_by_variable(const RelationKey& key) const {
  return key.scope == 0 &&
         (given_by_variable_.contains(variable_key(key.arity, kAnySpace)) ||
          given_by_variable_.contains(variable_key(key.arity, zarel::to_index(key.space))));
}

std::string Relations::shown(const Relation& relation, int sign) const {
  return concat({sign == 0 ? "" : "-", context_.spelling(relation.key.name)});
}

std::vector<std::string_view> Relations::given_names(std::uint32_t scope) const {
  std::vector<std::string_view> names;
  for (const Relation& relation : relations_) {
    if (relation.key.scope == scope && relation.given[0].count + relation.given[1].count != 0) {
      names.push_back(context_.spelling(relation.key.name));
    }
  }
  return names;
}

void Relations::suggest(Message& message, NameId name,
                        std::span<const std::string_view> candidates) {
  const std::string_view wrong = context_.spelling(name);
  std::vector<std::string_view> others(candidates.begin(), candidates.end());
  std::erase(others, wrong);
  const std::string_view near = nearest(wrong, others);
  if (near.empty()) return;
  message.help = concat({"did you mean ", near, "?"});
  message.fixes.push_back({Fix::Kind::kReplace, message.place, std::string(near)});
}

// The last relation of that name and arity that is given, in whatever frame space, or the first one
// of that name. A name may be one of many frame spaces: all are gone through once.
const Relation* Relations::given_elsewhere(const RelationKey& key, std::size_t sign) {
  constexpr std::uint32_t kAnyArity = 0xFFFFFFFF;
  const auto anywhere = [](RelationKey wanted, std::uint32_t arity) {
    wanted.space = {};
    wanted.arity = arity;
    return wanted;
  };
  if (given_anywhere_[0].empty() && given_anywhere_[1].empty()) {
    for (const Relation& relation : relations_) {
      for (const std::size_t own : {std::size_t{0}, std::size_t{1}}) {
        if (relation.given[own].count == 0) continue;
        given_anywhere_[own].try_emplace(anywhere(relation.key, kAnyArity), &relation);
        given_anywhere_[own][anywhere(relation.key, relation.key.arity)] = &relation;
      }
    }
  }
  for (const std::uint32_t arity : {key.arity, kAnyArity}) {
    const auto found = given_anywhere_[sign].find(anywhere(key, arity));
    if (found != given_anywhere_[sign].end()) return found->second;
  }
  return nullptr;
}

void Relations::report_unknown(const Relation& relation, int sign, const ForeignText& foreign) {
  const auto own = static_cast<std::size_t>(sign);
  const RelationKey& key = relation.key;
  const bool other_sign = relation.given[1 - own].count != 0;
  Occurrences used = relation.read[own];
  if (!other_sign) {    // "not -p(X)" where there is p alone is what it is written for
    used.count += relation.read_under_not[own].count;
    if (relation.read[own].count == 0) used.first = relation.read_under_not[own].first;
  }
  if (relation.given[own].count != 0 || used.count == 0) return;
  if (may_be_given_by_variable(key) || foreign.mentions(context_.spelling(key.name))) return;
  const Relation* const other = given_elsewhere(key, own);
  const std::string name = shown(relation, sign);
  if (other != nullptr && other->key.arity != key.arity) {
    Message& message = context_.tell("other-arity", context_.place(used.first),
                                     name + " is used " + with_arguments(key.arity) +
                                         ", and given " + with_arguments(other->key.arity));
    message.label = and_more("used " + with_arguments(key.arity), used.count - 1, "place");
    message.notes.push_back({context_.place(other->given[own].first), "given here"});
    message.help = "give every " + name + " the same number of arguments";
    return;
  }
  std::string text = name + " is used, but no fact and no rule gives it";
  if (other != nullptr) {
    text = name + " is used in the frame space " + context_.text(key.space) + ", and given in " +
           context_.text(other->key.space);
  } else if (key.scope != 0) {
    text = name + " is used in the template " + context_.text(template_names_[key.scope]) +
           ", but no rule there gives it";
  }
  Message& message = context_.tell("never-given", context_.place(used.first), text);
  message.label = and_more("used here", used.count - 1, "place");
  if (other != nullptr) {
    message.notes.push_back({context_.place(other->given[own].first), "given here"});
    message.help = "write @" + context_.text(other->key.space) + " behind it";
  } else if (const std::string_view help = help_for_builtin(name); !help.empty()) {
    message.help = help;
  } else if (suggestions_++ < kMostSuggestions) {
    suggest(message, key.name, given_names(key.scope));
  }
}

void Relations::report_unused(const Relation& relation, int sign, const ForeignText& foreign) {
  const auto own = static_cast<std::size_t>(sign);
  const RelationKey& key = relation.key;
  if (relation.given[own].count == 0 || relation.read[own].count != 0 ||
      relation.read_under_not[own].count != 0)
    return;
  if (key.scope != 0 && key.name == template_names_[key.scope]) return;
  if (foreign.mentions(context_.spelling(key.name))) return;
  Message& message = context_.tell("never-used", context_.place(relation.given[own].first),
                                   shown(relation, sign) + " is given, but nothing uses it");
  message.label = and_more("given here", relation.given[own].count - 1, "place");
}

void Relations::report_attribute(NameId name, const Attribute& attribute,
                                 const ForeignText& foreign) {
  if (attributes_vary_ || foreign.mentions(context_.spelling(name))) return;
  std::optional<std::size_t> other;
  for (std::size_t arrow = kArrowTexts.size(); arrow-- > 0;) {
    if (attribute.given[arrow].count != 0) other = arrow;
  }
  for (std::size_t arrow = 0; arrow < kArrowTexts.size(); ++arrow) {
    const Occurrences& read = attribute.read[arrow];
    if (read.count == 0 || attribute.given[arrow].count != 0) continue;
    const std::string label = and_more("used here", read.count - 1, "place");
    if (other) {
      std::string text = context_.text(name);
      text.append(" is used ").append(with_arrow(arrow)).append(", and given ");
      text.append(with_arrow(*other));
      Message& message = context_.tell("other-arrow", context_.place(read.first), text);
      message.label = label;
      message.notes.push_back({context_.place(attribute.given[*other].first), "given here"});
      message.help = *other == 0 ? "use it without a value, too"
                                 : std::string("write ").append(kArrowTexts[*other]) + " here, too";
      continue;
    }
    Message& message = context_.tell(
        "never-given", context_.place(read.first),
        "the attribute " + context_.text(name) + " is used, but no fact and no rule gives it");
    message.label = label;
    if (suggestions_++ >= kMostSuggestions) continue;
    std::vector<std::string_view> candidates;
    for (const auto& [id, each] : attributes_) {
      if (std::ranges::any_of(each.given, [](const auto& given) { return given.count != 0; })) {
        candidates.push_back(context_.spelling(id));
      }
    }
    suggest(message, name, candidates);
  }
}

void Relations::report_frames(const ForeignText& foreign) {
  for (const auto& [name, attribute] : attributes_) report_attribute(name, attribute, foreign);
  if (classes_vary_) return;
  for (const auto& [name, of] : classes_) {
    if (of.read[0].count == 0 || of.given[0].count != 0) continue;
    if (foreign.mentions(context_.spelling(name))) continue;
    Message& message = context_.tell(
        "never-given", context_.place(of.read[0].first),
        "the class " + context_.text(name) + " is used, but no fact and no rule gives it a member");
    message.label = and_more("used here", of.read[0].count - 1, "place");
    if (suggestions_++ >= kMostSuggestions) continue;
    std::vector<std::string_view> candidates;
    for (const auto& [id, each] : classes_) {
      if (each.given[0].count != 0) candidates.push_back(context_.spelling(id));
    }
    suggest(message, name, candidates);
  }
}

// Objects and frame spaces may come from anywhere; so may what has a prefix.
bool Relations::is_named(const ItemPattern& filter, const ItemPattern::Reading& reading,
                         const ForeignText& foreign) const {
  const std::string& spelling = reading.second;
  if (spelling.empty() || spelling.find(':') != std::string::npos || foreign.mentions(spelling))
    return true;
  const auto name = context_.run().names.find(spelling);
  switch (reading.kind) {
    case PatternKind::kRelation: {
      if (!given_by_variable_.empty()) return true;
      const auto found = name ? by_name_.find(*name) : by_name_.end();
      return found != by_name_.end() &&
             std::ranges::any_of(found->second, [&filter](const Relation* relation) {
               return !filter.arity || *filter.arity == relation->key.arity;
             });
    }
    case PatternKind::kAttribute:
      return attributes_vary_ || (name && attributes_.contains(*name));
    case PatternKind::kMembership:
      return classes_vary_ || (name && classes_.contains(*name));
    case PatternKind::kSubclass:
      break;
  }
  return classes_vary_ || name.has_value();
}

// What the user may have meant, if it is clear.
std::string Relations::filter_help(const ItemPattern& filter) const {
  const ItemPattern::Reading& reading = filter.readings.back();
  if (reading.kind != PatternKind::kRelation) return {};
  if (const auto name = context_.run().names.find(reading.second)) {
    const auto found = by_name_.find(*name);
    if (found != by_name_.end()) {
      const std::size_t arity = found->second.front()->key.arity;
      return concat({reading.second, " is given ", with_arguments(arity), ": write ",
                     reading.second, "/", std::to_string(arity)});
    }
    if (classes_.contains(*name))
      return concat({"write :", reading.second, " for the members of the class"});
    if (attributes_.contains(*name))
      return concat({"write [", reading.second, "] for the attribute"});
  }
  const std::string_view near = nearest(reading.second, given_names(0));
  return near.empty() ? std::string() : concat({"did you mean ", near, "?"});
}

void Relations::report_filters(std::span<const ItemPattern> filters, const ForeignText& foreign) {
  for (const ItemPattern& filter : filters) {
    if (std::ranges::any_of(filter.readings, [&](const auto& reading) {
          return is_named(filter, reading, foreign);
        }))
      continue;
    const bool is_relation = filter.readings.back().kind == PatternKind::kRelation;
    Message& message =
        context_.tell("unknown-filter", {},
                      concat({"the filter ", filter.text, " names ",
                              is_relation ? "no predicate" : "nothing", " of the program"}));
    const std::string help = filter_help(filter);
    if (!help.empty()) message.help = help;
  }
}

void Relations::report(std::span<const ItemPattern> filters, const ForeignText& foreign) {
  for (const Relation& relation : relations_) {
    for (const int sign : {0, 1}) {
      report_unknown(relation, sign, foreign);
      report_unused(relation, sign, foreign);
    }
  }
  report_frames(foreign);
  report_filters(filters, foreign);
}

}    // namespace workbench
