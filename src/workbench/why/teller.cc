#include "workbench/why/teller.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <utility>

#include "dl/folding.h"
#include "model/generic_encoding.h"
#include "workbench/messages/nearest.h"
#include "workbench/why/written_order.h"

namespace workbench {
namespace {

constexpr std::size_t kMostReasons = 3;    // of one failing "not"
constexpr std::uint32_t kNoNumber = 0xffffffffu;

bool is_same(const dl::ToldPlace& left, const dl::ToldPlace& right) {
  const auto is_same_position = [](const dl::ToldPlace& a, const dl::ToldPlace& b) {
    return a.line == b.line && a.column == b.column && a.file == b.file && a.used == b.used;
  };
  return is_same_position(left, right) &&
         std::ranges::equal(left.uses, right.uses, is_same_position);
}

// Several clauses may have been made of one statement.
void add_once(std::vector<dl::ToldStatement>& statements, const dl::ToldStatement& statement) {
  const bool is_there = std::ranges::any_of(statements, [&](const dl::ToldStatement& other) {
    return is_same(other.place, statement.place) && other.text == statement.text;
  });
  if (!is_there) statements.push_back(statement);
}

// With an open question each of a statement's heads may fail alike.
void add_once(std::vector<dl::ToldFailure>& failures, dl::ToldFailure failure) {
  using Literal = dl::ToldFailure::Literal;
  const auto is_same_literal = [](const Literal& left, const Literal& right) {
    return left.text == right.text && left.state == right.state;
  };
  const bool is_there = std::ranges::any_of(failures, [&](const dl::ToldFailure& other) {
    return is_same(other.statement.place, failure.statement.place) && other.with == failure.with &&
           std::ranges::equal(other.literals, failure.literals, is_same_literal) &&
           other.other_heads == failure.other_heads;
  });
  if (!is_there) failures.push_back(std::move(failure));
}

}    // namespace

// Makes told nodes of a proof's, the nearest to the roots first.
class ProofTelling {
 public:
  ProofTelling(Teller& teller, const dl::Proof& proof, std::uint32_t depth,
               const Teller::IsTold& is_told)
      : words_(teller.words_),
        answer_(teller.answer_),
        proof_(proof),
        depth_(depth),
        is_told_(is_told),
        numbers_(proof.nodes.size(), kNoNumber) {}

  dl::ToldProof tell() {
    for (const dl::NodeNumber root : proof_.roots) told_.roots.push_back(number_of(root, 0));
    dl::InterruptionCheck interruption;
    for (std::size_t next = 0; next < waiting_.size(); ++next) {
      interruption.step();
      const Waiting waiting = waiting_[next];
      dl::ToldNode node = told(waiting.node, waiting.depth);
      told_.nodes[waiting.number] = std::move(node);
    }
    return std::move(told_);
  }

 private:
  struct Waiting {
    dl::NodeNumber node;
    std::uint32_t number;
    std::uint32_t depth;
  };

  // What stands for an atom of the program is that atom.
  dl::NodeNumber resolved(dl::NodeNumber number) {
    while (true) {
      const dl::ProofNode& node = proof_.nodes[number];
      if (node.kind != dl::ProofKind::kRule || node.items.empty() || node.atom == dl::kNoAtom)
        return number;
      const dl::PredicateNumber predicate = answer_.index().predicate_of(node.atom);
      if (words_.role(predicate) != PredicateRole::kStandsIn) return number;
      if (node.items.front().node == dl::kNoNode) return number;
      number = node.items.front().node;
    }
  }

  // Which node tells how the atom of this one came: of a frame in a disjunction that of its
  // auxiliary atom.
  const dl::ProofNode& deriving(const dl::ProofNode& node) {
    const bool has_rule = node.kind == dl::ProofKind::kRule && node.items.size() == 1;
    if (!has_rule || node.items.front().node == dl::kNoNode ||
        !words_.is_whole_frame_rule(answer_.store().statement(node.statement)))
      return node;
    return proof_.nodes[node.items.front().node];
  }

  std::uint32_t number_of(dl::NodeNumber node, std::uint32_t depth) {
    node = resolved(node);
    if (numbers_[node] == kNoNumber) {
      numbers_[node] = static_cast<std::uint32_t>(told_.nodes.size());
      told_.nodes.emplace_back();
      waiting_.push_back({node, numbers_[node], depth});
    }
    return numbers_[node];
  }

  std::uint32_t statement_of(dl::StatementNumber number) {
    const auto [found, is_new] =
        statements_.try_emplace(number, static_cast<std::uint32_t>(told_.statements.size()));
    if (is_new) {
      told_.statements.push_back(words_.statements().of(answer_.store().statement(number)).told);
    }
    return found->second;
  }

  dl::ToldNode told(dl::NodeNumber number, std::uint32_t depth) {
    const dl::ProofNode& node = proof_.nodes[number];
    dl::ToldNode told;
    if (node.atom != dl::kNoAtom) {
      told.atom = words_.atom(node.atom);
      answer_.index().append(told.key, node.atom);
    }
    const dl::ProofNode& from = deriving(node);
    switch (from.kind) {
      case dl::ProofKind::kFact:
        told.kind = dl::ToldKind::kFact;
        tell_fact(told, from.atom);
        return told;
      case dl::ProofKind::kAssumed:
        told.kind = dl::ToldKind::kAssumed;
        return told;
      case dl::ProofKind::kNotExplained:
        told.kind = dl::ToldKind::kNotExplained;
        return told;
      case dl::ProofKind::kRule:
        told.kind = dl::ToldKind::kRule;
        break;
      case dl::ProofKind::kChoice:
        told.kind = dl::ToldKind::kChoice;
        break;
      case dl::ProofKind::kCases:
        told.kind = dl::ToldKind::kCases;
        break;
    }
    const dl::StoredStatement& statement = answer_.store().statement(from.statement);
    told.statement = statement_of(from.statement);
    told.with = words_.values(statement, from.binding);
    const bool is_left_out =
        is_told_ && node.atom != dl::kNoAtom && depth != 0 && !is_told_(node.atom);
    told.is_cut = is_left_out || (depth_ != 0 && depth >= depth_);
    if (told.is_cut) return told;
    if (told.kind == dl::ToldKind::kChoice) {
      for (std::uint32_t i = 0; i < statement.heads.size(); ++i) {
        if (i == from.head) continue;
        told.instead_of.push_back(words_.head(statement, statement.heads[i], from.binding));
      }
    }
    for (const dl::ProofItem& item : from.items) tell_item(told, statement, from, item, depth);
    put_as_written(told.items, words_.statements().of(statement));
    if (told.kind == dl::ToldKind::kRule && is_written_as_fact(statement)) {
      told.kind = dl::ToldKind::kFact;
      return told;
    }
    for (const dl::ProofNode::Case& each : from.cases) {
      told.cases.push_back({words_.atom(each.assumed), number_of(each.node, depth + 1)});
    }
    return told;
  }

  // Function terms and ranges make bodies for facts.
  bool is_written_as_fact(const dl::StoredStatement& statement) {
    if (statement.body.empty()) return false;
    if (words_.statements().of(statement).made_by == zarel::OriginKind::kRange) return true;
    return std::ranges::all_of(statement.body, [](const dl::StoredLiteral& each) {
      return each.kind == dl::kFunctionTerm;
    });
  }

  void tell_fact(dl::ToldNode& told, dl::AtomNumber atom) {
    const dl::FactPlace& fact = answer_.store().fact(atom);
    if (fact.file == zarel::kNoFile) return;
    told.statement = static_cast<std::uint32_t>(told_.statements.size());
    told_.statements.push_back(words_.statements().of(fact));
  }

  void tell_item(dl::ToldNode& told, const dl::StoredStatement& statement,
                 const dl::ProofNode& node, const dl::ProofItem& item, std::uint32_t depth) {
    const dl::StoredLiteral& literal = statement.body[item.literal];
    if (literal.kind == dl::kFunctionTerm) return;
    dl::ToldItem added;
    if (literal.kind == dl::kAtom && !literal.negated) {
      added.kind = dl::ToldItem::Kind::kAtom;
      if (item.node != dl::kNoNode) added.node = number_of(item.node, depth + 1);
      // Only to give the groups of a template their values.
      const bool is_repeated = std::ranges::any_of(told.items, [&](const dl::ToldItem& other) {
        return added.node && other.node == added.node;
      });
      if (is_repeated) return;
    } else if (literal.kind == dl::kAggregate) {
      added.kind = dl::ToldItem::Kind::kAggregate;
      if (item.value != dl::kNoTerm) added.value = words_.term(item.value);
      added.others = item.others;
      added.unneeded = item.unneeded;
      for (const dl::ProofItem::Element& element : item.elements) {
        dl::ToldItem::Element& told_element = added.elements.emplace_back();
        for (const dl::GroundTerm term : element.tuple) {
          if (!told_element.tuple.empty()) told_element.tuple += ", ";
          told_element.tuple += words_.term(term);
        }
        for (const dl::NodeNumber each : element.nodes) {
          told_element.nodes.push_back(number_of(each, depth + 1));
        }
      }
    } else {
      added.kind = literal.kind == dl::kAtom ? dl::ToldItem::Kind::kNegation
                                             : dl::ToldItem::Kind::kComparison;
    }
    if (literal.negated) added.text = "not ";
    added.text += words_.literal(statement, literal, node.binding);
    told.items.push_back(std::move(added));
  }

  ProgramWords& words_;
  dl::ExplainedAnswer& answer_;
  const dl::Proof& proof_;
  const std::uint32_t depth_;
  const Teller::IsTold& is_told_;
  dl::ToldProof told_;
  std::vector<std::uint32_t> numbers_;    // by node of the proof: its told one
  std::vector<Waiting> waiting_;
  std::unordered_map<dl::StatementNumber, std::uint32_t> statements_;
};

dl::ToldProof Teller::proof(const dl::Proof& proof, std::uint32_t depth, const IsTold& is_told) {
  return ProofTelling(*this, proof, depth, is_told).tell();
}

dl::ToldStatement Teller::statement(dl::StatementNumber number) {
  return words_.statements().of(answer_.store().statement(number)).told;
}

std::string Teller::reason(dl::AtomNumber atom) {
  std::string text = words_.atom(atom);
  dl::ProofSearch search(answer_.terms(), answer_.index(), answer_.store());
  const dl::ToldProof proof = this->proof(search.prove({atom}), 1);
  const dl::ToldNode& root = proof.nodes[proof.roots.front()];
  if (!root.statement) return text;
  const dl::ToldPlace& place = proof.statements[*root.statement].place;
  text += root.kind == dl::ToldKind::kFact ? "    [fact, " : "    [by ";
  (text += place.file) += ':';
  return (text += std::to_string(place.line)) += ']';
}

// What is under a failing "not" holds: its atoms, those of an auxiliary atom in its rule.
void Teller::add_reasons(std::vector<std::string>& reasons, const dl::StoredStatement& statement,
                         const dl::StoredLiteral& literal, const dl::Binding& binding) {
  dl::BodyEvaluator evaluator(answer_.terms(), answer_.index(), answer_.store());
  for (const dl::AtomNumber atom :
       evaluator.atoms_of(statement, literal.atom, binding, kMostReasons)) {
    const dl::PredicateNumber predicate = answer_.index().predicate_of(atom);
    if (words_.role(predicate) != PredicateRole::kNegatedFrame) {
      reasons.push_back(reason(atom));
      continue;
    }
    const dl::StoredStatement& rule = words_.rule_of(predicate);
    dl::Binding inner(rule.variables.size(), dl::kNoTerm);
    if (!evaluator.match(rule, rule.heads.front(), answer_.index().arguments(atom), inner))
      continue;
    evaluator.each(rule, inner, {}, [&](const dl::Binding& whole) {
      for (const dl::StoredLiteral& each : rule.body) {
        if (each.kind != dl::kAtom || each.negated) continue;
        for (const dl::AtomNumber held : evaluator.atoms_of(rule, each.atom, whole, 1)) {
          reasons.push_back(reason(held));
        }
      }
      return false;
    });
  }
}

// To the solver a function term in an atom is a literal of its own, and the atom has a variable.
// Where the literal fails since the atom holds for no such term, the atom is told to fail instead.
void Teller::make_terms_whole(dl::FailedRule& failed) {
  const dl::StoredStatement& statement = answer_.store().statement(failed.statement);
  dl::BodyEvaluator evaluator(answer_.terms(), answer_.index(), answer_.store());
  for (std::uint32_t i = 0; i < statement.body.size(); ++i) {
    const dl::StoredLiteral& function = statement.body[i];
    if (function.kind != dl::kFunctionTerm || failed.literals[i] != dl::LiteralState::kFails)
      continue;
    const dl::TermPattern& whole = statement.terms[function.operands[0]];
    if (whole.kind != dl::TermPattern::Kind::kVariable) continue;
    std::vector<std::uint32_t> users;
    for (std::uint32_t user = 0; user < statement.body.size(); ++user) {
      const std::vector<dl::VariableId>& used = statement.body[user].variables;
      if (user != i && std::ranges::find(used, whole.variable) != used.end()) users.push_back(user);
    }
    if (users.size() != 1) continue;
    const dl::StoredLiteral& atom = statement.body[users.front()];
    if (atom.kind != dl::kAtom || atom.negated) continue;
    dl::Binding binding = failed.binding;
    binding[whole.variable] = dl::kNoTerm;
    const std::uint32_t both[] = {i, users.front()};
    const bool has_none = evaluator.each_of(statement, both, dl::OpenOperands::kUnknown, binding,
                                            [](const dl::Binding&) { return false; });
    if (!has_none) continue;
    failed.binding[whole.variable] = dl::kNoTerm;
    failed.bindings = 1;    // with any other values the atom fails, too
    failed.was_cut = false;
    failed.literals[i] = dl::LiteralState::kHolds;
    failed.literals[users.front()] = dl::LiteralState::kFails;
  }
}

dl::ToldFailure Teller::failure(dl::FailedRule failed) {
  make_terms_whole(failed);
  const dl::StoredStatement& statement = answer_.store().statement(failed.statement);
  dl::ToldFailure told;
  told.statement = words_.statements().of(statement).told;
  told.with = words_.values(statement, failed.binding);
  told.bindings = std::max<std::uint64_t>(failed.bindings, 1);
  told.was_cut = failed.was_cut;
  for (std::size_t i = 0; i < statement.body.size(); ++i) {
    const dl::StoredLiteral& literal = statement.body[i];
    const auto state = static_cast<dl::ToldFailure::Literal::State>(failed.literals[i]);
    const bool fails = failed.literals[i] == dl::LiteralState::kFails;
    if (literal.kind == dl::kFunctionTerm && !fails) continue;
    dl::ToldFailure::Literal added{state, literal.negated ? "not " : "", {}, {}};
    added.text += words_.literal(statement, literal, failed.binding);
    if (literal.kind == dl::kAggregate && failed.values[i] != dl::kNoTerm)
      added.value = words_.term(failed.values[i]);
    if (literal.kind == dl::kAtom && literal.negated && fails)
      add_reasons(added.because, statement, literal, failed.binding);
    const bool is_repeated =
        std::ranges::any_of(told.literals, [&added](const dl::ToldFailure::Literal& other) {
          return other.text == added.text && other.state == added.state;
        });
    if (!is_repeated) told.literals.push_back(std::move(added));
  }
  put_as_written(told.literals, words_.statements().of(statement));
  for (const dl::AtomNumber atom : failed.other_heads) {
    told.other_heads.push_back(words_.atom(atom));
  }
  return told;
}

void Teller::add_failures(dl::ToldMissing& told, const dl::MissingAtom& missing) {
  dl::BodyEvaluator evaluator(answer_.terms(), answer_.index(), answer_.store());
  dl::FailureSearch search(answer_.terms(), answer_.index(), answer_.store());
  for (const dl::FailedRule& failed : missing.rules) {
    const dl::StoredStatement& statement = answer_.store().statement(failed.statement);
    if (!words_.is_whole_frame_rule(statement)) {
      add_once(told.rules, failure(failed));
      continue;
    }
    // The frame is chosen, or not, by the rule of its auxiliary atom.
    const dl::AtomPattern& whole = statement.body.front().atom;
    Arguments arguments;
    for (const dl::PatternNumber pattern : whole.arguments) {
      arguments.push_back(evaluator.value(statement, pattern, failed.binding));
    }
    const dl::MissingAtom inner = search.explain(whole.predicate, arguments);
    for (const dl::FailedRule& each : inner.rules) add_once(told.rules, failure(each));
  }
}

dl::ToldMissing Teller::missing(dl::PredicateNumber predicate, const Arguments& arguments) {
  dl::ToldMissing told;
  told.atom = words_.atom(predicate, arguments);
  answer_.index().append(told.key, predicate, arguments);
  add_rules(told, predicate, arguments);
  return told;
}

dl::ToldMissing Teller::missing(const AtomQuestion& question, dl::PredicateNumber predicate,
                                const Arguments& arguments) {
  dl::ToldMissing told;
  told.atom = question.written;
  told.key = question.body;
  add_rules(told, predicate, arguments);
  return told;
}

void Teller::add_rules(dl::ToldMissing& told, dl::PredicateNumber predicate,
                       const Arguments& arguments) {
  dl::FailureSearch search(answer_.terms(), answer_.index(), answer_.store());
  const dl::MissingAtom missing = search.explain(predicate, arguments);
  add_failures(told, missing);
  if (missing.contrary != dl::kNoAtom) told.contrary = words_.atom(missing.contrary);
  tell_relation(told, predicate, arguments, missing);
}

dl::ToldMissing Teller::missing(const AtomQuestion& question, const QueryRow& row) {
  dl::FailureSearch search(answer_.terms(), answer_.index(), answer_.store());
  dl::ToldMissing told;
  told.atom = question.written;
  told.key = question.written;
  told.rules.push_back(failure(search.explain_body(row.query, row.start)));
  return told;
}

std::vector<std::uint32_t> Teller::naming_places(dl::PredicateNumber predicate,
                                                 const Arguments& arguments) const {
  const std::string_view name = answer_.terms().spelling(answer_.index().predicate(predicate).name);
  if (!dl::is_generic(name) || arguments.empty()) return {};
  if (arguments[0] == dl::kNoTerm) return {};
  std::vector<std::uint32_t> places{0};
  if (arguments.size() > 1) places.push_back(1);
  const bool is_name = answer_.terms().kind(arguments[0]) == dl::GroundKind::kConstant;
  const std::string_view relation =
      is_name ? answer_.terms().spelling(answer_.terms().name_of(arguments[0])) : "";
  constexpr std::uint32_t kAttributePlace = 3;
  if (relation == zarel::kValueOf && arguments.size() > kAttributePlace)
    places.push_back(kAttributePlace);
  std::erase_if(places, [&](std::uint32_t place) { return arguments[place] == dl::kNoTerm; });
  return places;
}

// All relations are of few predicates to the solver.
void Teller::tell_relation(dl::ToldMissing& told, dl::PredicateNumber predicate,
                           const Arguments& arguments, const dl::MissingAtom& missing) {
  const std::vector<std::uint32_t> places = naming_places(predicate, arguments);
  const dl::StatementStore& store = answer_.store();
  for (const dl::HeadUse& use : missing.other_rules) {
    const dl::StoredStatement& statement = store.statement(use.statement);
    const dl::AtomPattern& head = statement.heads[use.head];
    const bool is_of_relation = std::ranges::all_of(places, [&](std::uint32_t place) {
      const dl::TermPattern& term = statement.terms[head.arguments[place]];
      return term.kind != dl::TermPattern::Kind::kGround || term.ground == arguments[place];
    });
    const dl::ToldStatement& rule = words_.statements().of(statement).told;
    const bool is_told = std::ranges::any_of(told.rules, [&rule](const dl::ToldFailure& failure) {
      return is_same(failure.statement.place, rule.place);
    });
    if (is_of_relation && !is_told) add_once(told.other_rules, rule);
  }
  if (places.empty()) {
    told.has_other_facts = missing.has_other_facts;
  } else {
    const std::uint32_t last = places.back();
    const auto others = answer_.index().atoms_with(predicate, last, arguments[last]);
    told.has_other_facts = std::ranges::any_of(others, [&](dl::AtomNumber atom) {
      const auto given = answer_.index().arguments(atom);
      return store.fact(atom).file != zarel::kNoFile &&
             std::ranges::all_of(
                 places, [&](std::uint32_t place) { return given[place] == arguments[place]; });
    });
  }
  const bool is_unknown = told.rules.empty() && told.other_rules.empty() && !told.has_other_facts;
  if (is_unknown) told.similar = similar_names(predicate, arguments);
}

std::vector<std::string> Teller::similar_names(dl::PredicateNumber predicate,
                                               const Arguments& arguments) {
  const std::vector<std::uint32_t> places = naming_places(predicate, arguments);
  if (places.empty()) return {};
  const bool is_attribute = places.size() == 3;
  dl::AnswerIndex& index = answer_.index();
  const auto text_of = [this](dl::GroundTerm term) { return words_.term(term); };
  const std::string wanted = text_of(arguments[places.back() == 1 ? 0 : places.back()]);
  std::set<std::pair<std::string, std::size_t>> given;    // with the number of arguments
  const auto add = [&](dl::PredicateNumber number, auto&& argument) {
    const dl::Predicate& key = index.predicate(number);
    if (!dl::is_generic(answer_.terms().spelling(key.name)) || key.arity < 2) return;
    if (is_attribute ? number != predicate : key.arity < 2) return;
    const dl::GroundTerm name = argument(is_attribute ? places.back() : 0);
    const dl::GroundTerm space = argument(1);
    if (name == dl::kNoTerm || space == dl::kNoTerm) return;
    const bool is_of_frames = text_of(space).ends_with(zarel::kFrameMarker);
    if (is_attribute != is_of_frames) return;
    given.emplace(text_of(name), key.arity - 2);
  };
  for (dl::AtomNumber atom = 0; atom < index.size(); ++atom) {
    if (answer_.store().fact(atom).file == zarel::kNoFile) continue;
    const auto all = index.arguments(atom);
    add(index.predicate_of(atom), [&](std::uint32_t place) { return all[place]; });
  }
  for (const dl::StoredStatement& statement : answer_.store().statements()) {
    for (const dl::AtomPattern& head : statement.heads) {
      add(head.predicate, [&](std::uint32_t place) {
        const dl::TermPattern& term = statement.terms[head.arguments[place]];
        return term.kind == dl::TermPattern::Kind::kGround ? term.ground : dl::kNoTerm;
      });
    }
  }
  std::vector<std::string_view> names;
  names.reserve(given.size());
  for (const auto& [name, arity] : given) names.push_back(name);
  const auto same = std::ranges::find(names, wanted);
  const std::string_view near = same != names.end() ? *same : nearest(wanted, names);
  std::vector<std::string> similar;
  if (near.empty()) return similar;
  for (const auto& [name, arity] : given) {
    if (name != near) continue;
    if (is_attribute) return {"the attribute " + name};
    similar.push_back(name + "/" + std::to_string(arity));
  }
  return similar;
}

dl::ToldLines Teller::lines(const std::vector<dl::StatementNumber>& rules, bool is_proven) {
  dl::ToldLines told;
  told.is_proven = is_proven;
  for (const dl::StatementNumber number : rules) add_once(told.statements, statement(number));
  return told;
}

// To the solver a clash is of a predicate that stands for many relations.
dl::ToldLines Teller::lines(const dl::ConstraintSet& set, bool is_proven) {
  dl::ToldLines told = lines(set.statements, is_proven);
  for (const dl::PredicateNumber predicate : set.clashes) {
    std::set<std::string> names;
    const dl::PredicateNumber contrary = answer_.index().contrary(predicate);
    for (const dl::HeadUse& use : answer_.store().heads_of(contrary)) {
      const dl::StoredStatement& rule = answer_.store().statement(use.statement);
      const dl::AtomPattern& head = rule.heads[use.head];
      std::string text = words_.name(predicate);
      if (text.empty() && !head.arguments.empty()) {
        const dl::TermPattern& relation = rule.terms[head.arguments[0]];
        text = relation.kind == dl::TermPattern::Kind::kGround ? words_.term(relation.ground) : "_";
        (text += '/') +=
            std::to_string(head.arguments.size() - std::min<std::size_t>(head.arguments.size(), 2));
      }
      names.insert(text);
    }
    if (names.empty()) names.insert("an atom");
    told.clashes.insert(told.clashes.end(), names.begin(), names.end());
  }
  return told;
}

dl::ToldInstances Teller::instances(const std::vector<dl::ConstraintInstance>& instances,
                                    bool is_proven) {
  dl::ToldInstances told;
  told.is_proven = is_proven;
  std::map<std::pair<dl::StatementNumber, dl::ToldValues>, std::size_t> seen;
  for (const dl::ConstraintInstance& instance : instances) {
    dl::ToldInstance added;
    if (!instance.statement) {
      const dl::PredicateNumber contrary = answer_.index().contrary(instance.predicate);
      added.clash = words_.atom(instance.predicate, instance.arguments);
      (added.clash += " and ") += words_.atom(contrary, instance.arguments);
      told.instances.push_back(std::move(added));
      continue;
    }
    added.statement = statement(*instance.statement);
    added.with = words_.values(answer_.store().statement(*instance.statement), instance.binding);
    const auto [found, is_new] =
        seen.try_emplace({*instance.statement, added.with}, told.instances.size());
    if (is_new) {
      told.instances.push_back(std::move(added));
    } else {
      ++told.instances[found->second].times;
    }
  }
  return told;
}

std::vector<dl::ToldPayment> Teller::payments(const std::vector<dl::PaidInstance>& paid,
                                              std::vector<std::size_t>* firsts) {
  std::vector<dl::ToldPayment> told;
  using Seen = std::pair<std::pair<dl::StatementNumber, std::int64_t>, dl::ToldValues>;
  std::map<Seen, std::size_t> seen;
  for (const dl::PaidInstance& each : paid) {
    dl::ToldPayment added{each.level, each.weight, {}};
    added.instance.statement = statement(each.statement);
    added.instance.with = words_.values(answer_.store().statement(each.statement), each.binding);
    const auto [found, is_new] =
        seen.try_emplace(Seen{{each.statement, each.level}, added.instance.with}, told.size());
    if (is_new) {
      if (firsts != nullptr) firsts->push_back(static_cast<std::size_t>(&each - paid.data()));
      told.push_back(std::move(added));
    } else {
      told[found->second].weight += each.weight;
      ++told[found->second].instance.times;
    }
  }
  return told;
}

}    // namespace workbench
