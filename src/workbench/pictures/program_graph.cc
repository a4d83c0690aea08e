#include "workbench/pictures/program_graph.h"

#include <unordered_set>
#include <utility>
#include <vector>

#include "base/characters.h"
#include "frames/frame.h"
#include "model/generic_encoding.h"
#include "workbench/messages/words.h"

namespace workbench {
namespace {

using zarel::WrittenKind;
using zarel::WrittenNode;
using zarel::WrittenStatement;

std::string key_of(const Arrow& arrow) {
  std::string key = std::to_string(arrow.from);
  (key += ' ') += std::to_string(arrow.to);
  (key += ' ') += std::to_string(static_cast<int>(arrow.kind));
  return (key += ' ') += arrow.label;
}

std::string_view without_quotes(std::string_view arrow) {
  return arrow.starts_with('"') ? arrow.substr(1, arrow.size() - 2) : arrow;
}

// The last of a node's leading parts: in a membership the class.
const WrittenNode& second_part(const WrittenStatement& of, const WrittenNode& node) {
  return of.nodes[of.nodes[node.first_child].next_sibling];
}

class ClassWatch : public ProgramWatch {
 public:
  using ProgramWatch::ProgramWatch;
  const Graph& graph() override;
  std::string left_out() const override;

 private:
  void look_at(const WrittenStatement& statement) override;
  void look_at_head(const WrittenStatement& rule, const WrittenNode& part);
  void look_at_attributes(const WrittenStatement& rule, const WrittenNode& frame,
                          const WrittenNode& object);

  // Of objects that may turn out to be classes, by their name.
  std::unordered_map<std::string, std::vector<std::string>> attributes_;
  std::unordered_set<std::string> known_attributes_;
  std::unordered_map<std::string, std::size_t> members_;    // by class
  std::unordered_set<std::string> known_members_;
  std::size_t general_ = 0;
};

void ClassWatch::look_at(const WrittenStatement& statement) {
  for (const WrittenNode& node : statement.nodes) {
    const bool is_subclass = node.kind == WrittenKind::kSubclass;
    if (!is_subclass && node.kind != WrittenKind::kMembership) continue;
    const WrittenNode& lower = statement.nodes[node.first_child];
    const WrittenNode& upper = second_part(statement, node);
    if (is_subclass && lower.kind != WrittenKind::kVariable) box(name_of(lower));
    if (name_of(upper) != "any") box(name_of(upper));
  }
  if (statement.kind != WrittenStatement::Kind::kRule) return;
  for (const WrittenNode& part : statement.head()) look_at_head(statement, part);
}

void ClassWatch::look_at_head(const WrittenStatement& rule, const WrittenNode& part) {
  if (part.kind == WrittenKind::kFrame) {
    return look_at_attributes(rule, part, rule.nodes[part.first_child]);
  }
  if (part.kind != WrittenKind::kSubclass && part.kind != WrittenKind::kMembership) return;
  const std::string lower = name_of(rule.nodes[part.first_child]);
  const std::string upper = name_of(second_part(rule, part));
  if (upper == "any" || (lower == "any" && part.kind == WrittenKind::kSubclass)) {
    ++general_;
    return;
  }
  if (part.kind == WrittenKind::kSubclass) {
    add({box(lower), box(upper), part.is_strongly_negated ? "-" : "", Arrow::Kind::kSubclass,
         part.is_strongly_negated});
    return;
  }
  // What stands behind a membership is said of the class.
  look_at_attributes(rule, part, second_part(rule, part));
  if (!rule.is_fact() || part.is_strongly_negated) return;
  if (known_members_.insert(lower + '\n' + upper).second) ++members_[upper];
}

void ClassWatch::look_at_attributes(const WrittenStatement& rule, const WrittenNode& frame,
                                    const WrittenNode& object) {
  for (const WrittenNode& attribute : rule.children(frame)) {
    if (attribute.kind != WrittenKind::kAttribute) continue;
    std::string line(attribute.is_negated || attribute.is_strongly_negated ? "-" : "");
    const WrittenNode& name = rule.nodes[attribute.first_child];
    line += name_of(name);
    if (attribute.value != 0)
      ((line += ' ') += without_quotes(zarel::arrows[attribute.value - 1])) += ' ';
    const char* separator = "";
    for (std::uint32_t i = name.next_sibling; i != zarel::kNoNode; i = rule.nodes[i].next_sibling) {
      const WrittenNode& value = rule.nodes[i];
      const bool is_frame = value.kind == WrittenKind::kFrame;
      (line += separator) += name_of(is_frame ? rule.nodes[value.first_child] : value);
      separator = ", ";
    }
    const std::string of = name_of(object);
    std::string key = of;
    (key += '\n') += line;
    if (known_attributes_.insert(std::move(key)).second) attributes_[of].push_back(line);
  }
}

const Graph& ClassWatch::graph() {
  for (Box& box : drawn().boxes) {
    for (std::string& line : attributes_[box.title]) {
      const bool is_negated = line.starts_with('-');
      box.lines.push_back({std::move(line), is_negated});
    }
    const std::size_t members = members_[box.title];
    if (members != 0) box.lines.push_back({counted(members, "stated member")});
  }
  attributes_.clear();
  members_.clear();
  return drawn();
}

std::string ClassWatch::left_out() const {
  if (general_ == 0) return {};
  std::string text = counted(general_, "rule head");
  text += " with a variable for a class";
  return text += general_ == 1 ? " is not drawn" : " are not drawn";
}

class CallWatch : public ProgramWatch {
 public:
  using ProgramWatch::ProgramWatch;
  const Graph& graph() override;

 private:
  void look_at(const WrittenStatement& statement) override;
  void look_at_calls(const std::string& from, const WrittenStatement& clause);

  std::unordered_set<std::string> called_;
};

constexpr const char* kProgram = "the program";

void CallWatch::look_at(const WrittenStatement& statement) {
  if (statement.kind != WrittenStatement::Kind::kTemplate) {
    return look_at_calls(kProgram, statement);
  }
  box(spelling(statement.name));
  for (const WrittenStatement& clause : statement.clauses) {
    look_at_calls(spelling(statement.name), clause);
  }
}

void CallWatch::look_at_calls(const std::string& from, const WrittenStatement& clause) {
  for (const WrittenNode& node : clause.nodes) {
    if (node.kind != WrittenKind::kInvocation) continue;
    const std::string to = spelling(node.name);
    called_.insert(to);
    const std::uint32_t caller = box(from);
    add({caller, box(to)});
  }
}

const Graph& CallWatch::graph() {
  for (Box& box : drawn().boxes) {
    if (box.title == kProgram) {
      box.shape = Box::Shape::kRelation;
    } else {
      box.is_faint = !called_.contains(box.title);
    }
  }
  for (Arrow& arrow : drawn().arrows) {
    const std::size_t times = times_added(arrow);
    if (times > 1) arrow.label = counted(times, "call");
  }
  return drawn();
}

class PredicateWatch : public ProgramWatch {
 public:
  using ProgramWatch::ProgramWatch;
  const Graph& graph() override;

 private:
  struct Use {
    std::string name;
    bool is_under_not;
    bool is_in_aggregate;
  };
  void look_at(const WrittenStatement& statement) override;
  void look_at(const zarel::WrittenFlatFact& fact) override;
  void add_uses(const WrittenStatement& rule, const WrittenNode& literal,
                std::vector<Use>& uses) const;
  std::string use_of(const WrittenStatement& rule, const WrittenNode& node) const;
  std::string relation(zarel::NameId name, std::size_t arity, zarel::NameId space,
                       bool is_negated) const;
  std::string with_space(std::string text, zarel::NameId space) const;

  std::unordered_set<std::string> given_;    // by rules
};

std::string PredicateWatch::with_space(std::string text, zarel::NameId space) const {
  std::string name = spelling(space);
  if (name.ends_with(zarel::kFrameMarker)) name.resize(name.size() - zarel::kFrameMarker.size());
  if (!name.empty() && name != zarel::kDefaultSpace) (text += '@') += name;
  return text;
}

std::string PredicateWatch::relation(zarel::NameId name, std::size_t arity, zarel::NameId space,
                                     bool is_negated) const {
  std::string text(is_negated ? "-" : "");
  text += is_variable(name) ? "any" : spelling(name);
  (text += '/') += std::to_string(arity);
  return with_space(std::move(text), space);
}

// The predicate, attribute, class or template that a node names; nothing for other nodes.
std::string PredicateWatch::use_of(const WrittenStatement& rule, const WrittenNode& node) const {
  std::string name;
  switch (node.kind) {
    case WrittenKind::kAtom:
    case WrittenKind::kActual:
      return relation(node.name, rule.children(node).size(), node.second_name,
                      node.is_strongly_negated);
    case WrittenKind::kAttribute:
      (name += '[') += name_of(rule.nodes[node.first_child]);
      return with_space(name += ']', rule.nodes[node.parent].second_name);
    case WrittenKind::kMembership:
      (name += ": ") += name_of(second_part(rule, node));
      return with_space(std::move(name), node.second_name);
    case WrittenKind::kSubclass:
      return with_space("::", node.second_name);
    case WrittenKind::kInvocation:
      return (name += "template ") += spelling(node.name);
    default:
      return {};
  }
}

// Parents stand behind their parts, and hand down what they say of these.
void PredicateWatch::add_uses(const WrittenStatement& rule, const WrittenNode& literal,
                              std::vector<Use>& uses) const {
  struct Inherited {
    bool is_under_not = false;
    bool is_in_aggregate = false;
  };
  const std::uint32_t last = rule.index(literal);
  const std::uint32_t first = literal.begin;
  std::vector<Inherited> inherited(last - first + 1);
  for (std::uint32_t i = last + 1; i-- > first;) {
    const WrittenNode& node = rule.nodes[i];
    Inherited& own = inherited[i - first];
    if (i != last && node.parent >= first && node.parent <= last)
      own = inherited[node.parent - first];
    own.is_under_not = own.is_under_not || node.is_negated;
    own.is_in_aggregate = own.is_in_aggregate || node.kind == WrittenKind::kAggregate;
    std::string name = use_of(rule, node);
    if (!name.empty()) uses.push_back({std::move(name), own.is_under_not, own.is_in_aggregate});
  }
}

void PredicateWatch::look_at(const WrittenStatement& statement) {
  using enum WrittenStatement::Kind;
  if (statement.kind == kRange) {
    box(relation(statement.name, 1, statement.frame_space, false));
    return;
  }
  if (statement.kind != kRule) return;
  std::vector<Use> heads;
  std::vector<Use> uses;
  for (const WrittenNode& part : statement.head()) add_uses(statement, part, heads);
  for (const WrittenNode& literal : statement.body()) add_uses(statement, literal, uses);
  std::unordered_set<std::string> seen;
  for (const Use& head : heads) {
    const std::uint32_t from = box(head.name);
    if (!statement.is_fact()) given_.insert(head.name);
    if (!seen.insert(head.name).second) continue;
    for (const Use& use : uses) {
      add({from, box(use.name), use.is_in_aggregate ? "aggregate" : "",
           use.is_under_not ? Arrow::Kind::kDashed : Arrow::Kind::kPlain});
    }
  }
}

void PredicateWatch::look_at(const zarel::WrittenFlatFact& fact) {
  box(relation(fact.name, fact.arity, fact.frame_space, false));
}

const Graph& PredicateWatch::graph() {
  for (Box& box : drawn().boxes) {
    if (given_.contains(box.title)) box.shape = Box::Shape::kRelation;
    box.is_negated = box.title.starts_with('-');
  }
  return drawn();
}

}    // namespace

ProgramWatch::ProgramWatch(zarel::Program& program)
    : program_(program), next_(program.run().statement_observer) {
  program.run().statement_observer = this;
}

ProgramWatch::~ProgramWatch() {
  program_.run().statement_observer = next_;
}

void ProgramWatch::statement(const WrittenStatement& statement) {
  if (next_ != nullptr) next_->statement(statement);
  look_at(statement);
}

void ProgramWatch::remark(std::string_view text, const zarel::SourceLocation& place) {
  if (next_ != nullptr) next_->remark(text, place);
}

void ProgramWatch::flat_fact(const zarel::WrittenFlatFact& fact) {
  if (next_ != nullptr) next_->flat_fact(fact);
  look_at(fact);
}

std::string ProgramWatch::spelling(zarel::NameId name) const {
  return std::string(program_.run().names.spelling(name));
}

bool ProgramWatch::is_variable(zarel::NameId name) const {
  return zarel::is_upper_case(program_.run().names.spelling(name)[0]);
}

std::string ProgramWatch::name_of(const WrittenNode& term) const {
  switch (term.kind) {
    case WrittenKind::kVariable:
    case WrittenKind::kAnonymous:
      return "any";
    case WrittenKind::kInteger:
      return std::to_string(term.value);
    case WrittenKind::kMaxint:
      return "#maxint";
    case WrittenKind::kQualified:
      return (spelling(term.name) += ':') += spelling(term.second_name);
    case WrittenKind::kFunction:
      return spelling(term.name) += "(...)";
    default:
      return spelling(term.name);
  }
}

std::uint32_t ProgramWatch::box(const std::string& title) {
  const auto [entry, is_new] = boxes_.try_emplace(title);
  if (is_new) entry->second = graph_.add({title});
  return entry->second;
}

void ProgramWatch::add(const Arrow& arrow) {
  if (++arrows_[key_of(arrow)] == 1) graph_.arrows.push_back(arrow);
}

std::size_t ProgramWatch::times_added(const Arrow& arrow) const {
  return arrows_.at(key_of(arrow));
}

std::unique_ptr<ProgramWatch> watch_for(std::string_view what, zarel::Program& program) {
  if (what == "classes") return std::make_unique<ClassWatch>(program);
  if (what == "calls") return std::make_unique<CallWatch>(program);
  return std::make_unique<PredicateWatch>(program);
}

}    // namespace workbench
