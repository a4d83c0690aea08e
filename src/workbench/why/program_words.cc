#include "workbench/why/program_words.h"

#include <algorithm>
#include <utility>

#include "dl/explain/literal_words.h"
#include "dl/folding.h"
#include "model/run.h"
#include "workbench/answers/answer_text_reader.h"
#include "workbench/answers/term_text.h"
#include "workbench/why/one_item.h"

namespace workbench {
namespace {

constexpr unsigned kDeepest = 1000;    // function terms that are put together here

std::string joined(std::span<const std::string> texts, std::string_view separator) {
  std::string list;
  for (const std::string& text : texts) {
    if (&text != texts.data()) list += separator;
    list += text;
  }
  return list;
}

// As guards are written, where equality has one sign.
std::string_view guard_sign(dl::Builtin op) {
  return op == dl::kEqual ? "=" : dl::kind_of(op).name;
}

const zarel::NamespaceTable* shown_namespaces(const zarel::Run& run) {
  return run.prefix_was_used ? &run.namespaces : nullptr;
}

}    // namespace

ProgramWords::ProgramWords(zarel::Program& program, dl::ExplainedAnswer& answer,
                           UserStatements& statements)
    : program_(program),
      answer_(answer),
      statements_(statements),
      generated_([&program]() -> const zarel::GeneratedPredicates& {
        const zarel::Run::Scope scope(program.run());
        return zarel::generated_predicates();
      }()),
      namespaces_(shown_namespaces(program.run())) {
  find_frames();
}

const zarel::GeneratedPredicate* ProgramWords::generated(dl::PredicateNumber predicate) const {
  return generated_.find(answer_.terms().spelling(answer_.index().predicate(predicate).name));
}

// Auxiliary predicates of frames are those which only rules made out of frames define or read, and
// which nobody else has a name for.
void ProgramWords::find_frames() {
  const dl::StatementStore& store = answer_.store();
  const zarel::Run& run = program_.run();
  const auto is_unknown = [&](dl::PredicateNumber predicate) {
    const std::string_view name =
        answer_.terms().spelling(answer_.index().predicate(predicate).name);
    if (dl::is_generic(name)) return false;
    const auto id = run.names.find(name);
    return !(id && run.atom_globals.contains(*id)) && generated_.find(name) == nullptr;
  };
  for (dl::StatementNumber number = 0; number < store.statements().size(); ++number) {
    const dl::StoredStatement& statement = store.statement(number);
    if (statement.file != 0 || statement.heads.size() != 1) continue;
    const dl::PredicateNumber head = statement.heads.front().predicate;
    const bool is_body_unknown =
        statement.body.size() == 1 && statement.body.front().kind == dl::kAtom &&
        !statement.body.front().negated && is_unknown(statement.body.front().atom.predicate);
    const bool is_head_unknown = is_unknown(head);
    if (!is_body_unknown && !is_head_unknown) continue;
    if (statements_.made_by(statement) != zarel::OriginKind::kFrame) continue;
    if (is_head_unknown) {
      frames_.emplace(head, PredicateRole::kNegatedFrame);
      frame_rules_[head].push_back(number);
    } else {
      const dl::PredicateNumber whole = statement.body.front().atom.predicate;
      frames_.emplace(whole, PredicateRole::kWholeFrame);
      frame_rules_[whole].push_back(number);
    }
  }
}

PredicateRole ProgramWords::role(dl::PredicateNumber predicate) {
  const auto frame = frames_.find(predicate);
  if (frame != frames_.end()) return frame->second;
  const zarel::GeneratedPredicate* const made = generated(predicate);
  if (made == nullptr) return PredicateRole::kOwn;
  using Role = zarel::GeneratedPredicate::Role;
  if (made->role == Role::kResult) return PredicateRole::kResult;
  if (made->role == Role::kLocal) return PredicateRole::kLocal;
  // Without its rule nothing tells what it stands for.
  return answer_.store().heads_of(predicate).empty() ? PredicateRole::kLocal
                                                     : PredicateRole::kStandsIn;
}

const dl::StoredStatement& ProgramWords::rule_of(dl::PredicateNumber predicate) {
  const auto frame = frame_rules_.find(predicate);
  if (frame != frame_rules_.end()) return answer_.store().statement(frame->second.front());
  return answer_.store().statement(answer_.store().heads_of(predicate).front().statement);
}

bool ProgramWords::is_whole_frame_rule(const dl::StoredStatement& statement) {
  return statement.body.size() == 1 && statement.heads.size() == 1 &&
         statement.body.front().kind == dl::kAtom && !statement.body.front().negated &&
         role(statement.body.front().atom.predicate) == PredicateRole::kWholeFrame;
}

// Prefixes are put in, and a blank behind each comma outside of strings.
std::string ProgramWords::spaced_terms(std::string_view text) const {
  std::string terms;
  append_terms(terms, zarel::AnswerTerms(text, namespaces_));
  std::string spaced;
  bool in_string = false;
  for (const char c : terms) {
    if (c == '"') in_string = !in_string;
    spaced += c;
    if (c == ',' && !in_string) spaced += ' ';
  }
  return spaced;
}

std::string ProgramWords::term(dl::GroundTerm term) const {
  std::string text;
  answer_.terms().append(text, term);
  return spaced_terms(text);
}

std::string ProgramWords::atom(dl::PredicateNumber predicate,
                               std::span<const dl::GroundTerm> arguments) {
  Texts texts;
  for (const dl::GroundTerm argument : arguments) {
    answer_.terms().append(texts.emplace_back(), argument);
  }
  return words(predicate, texts);
}

std::string ProgramWords::atom(dl::AtomNumber atom) {
  return this->atom(answer_.index().predicate_of(atom), answer_.index().arguments(atom));
}

std::string ProgramWords::words(dl::PredicateNumber predicate, const Texts& arguments) {
  switch (role(predicate)) {
    case PredicateRole::kOwn:
      return own_words(predicate, arguments);
    case PredicateRole::kStandsIn:
      return stand_in(predicate, arguments);
    case PredicateRole::kWholeFrame:
    case PredicateRole::kNegatedFrame:
      return frame(predicate, arguments);
    case PredicateRole::kResult:
    case PredicateRole::kLocal:
      break;
  }
  const zarel::GeneratedPredicate* const made = generated(predicate);
  const bool is_negated = answer_.index().predicate(predicate).strongly_negated;
  std::string text = is_negated ? "-" : "";
  if (made->role == zarel::GeneratedPredicate::Role::kStandsIn) return text + "_";
  const std::size_t groups =
      std::min(generated_.expansions()[made->expansion].groups.size(), arguments.size());
  const auto rest = std::span<const std::string>(arguments).subspan(groups);
  std::string list = spaced_terms(joined(rest, ","));
  if (!list.empty()) list = "(" + list + ")";
  const std::string used = invocation(made->expansion, std::span(arguments).first(groups));
  if (made->role == zarel::GeneratedPredicate::Role::kResult) return (text += used) += list;
  return ((text += made->name) += list) += " of " + used;
}

// "maximum{salary(lab, $, *)}".
std::string ProgramWords::invocation(std::uint32_t expansion, std::span<const std::string> groups) {
  const zarel::MadeExpansion& made = generated_.expansions()[expansion];
  std::string text = made.template_name + "{";
  std::size_t group = 0;
  for (const zarel::MadeExpansion::Actual& actual : made.actuals) {
    if (&actual != made.actuals.data()) text += ", ";
    Texts parameters = actual.parameters;
    for (std::string& parameter : parameters) {
      if (parameter == "*" || parameter == "$") continue;
      if (group < groups.size()) parameter = groups[group];
      ++group;
    }
    text += this->actual(actual, std::move(parameters));
  }
  return text += '}';
}

// In a template's body the predicate may be a generated one itself.
std::string ProgramWords::actual(const zarel::MadeExpansion::Actual& actual, Texts parameters) {
  std::string name = actual.predicate;
  std::string sign = actual.is_strongly_negated ? "-" : "";
  const zarel::GeneratedPredicate* const made = generated_.find(name);
  if (made != nullptr && made->role == zarel::GeneratedPredicate::Role::kStandsIn) {
    const dl::Predicate key{answer_.terms().name(name),
                            static_cast<std::uint32_t>(parameters.size()),
                            actual.is_strongly_negated};
    const dl::PredicateNumber predicate = answer_.index().number(key);
    if (role(predicate) == PredicateRole::kStandsIn) return stand_in(predicate, parameters);
    name = "_";
  } else if (made != nullptr) {
    name = made->role == zarel::GeneratedPredicate::Role::kResult
               ? generated_.expansions()[made->expansion].template_name
               : made->name;
  }
  const std::string list = spaced_terms(joined(parameters, ","));
  std::string text = sign + name;
  if (!list.empty()) ((text += '(') += list) += ')';
  if (!actual.frame_space.empty()) append_space(text, actual.frame_space);
  return text;
}

std::unordered_map<dl::VariableId, std::string> ProgramWords::matched(
    const dl::StoredStatement& statement, const dl::AtomPattern& head,
    const Texts& arguments) const {
  std::unordered_map<dl::VariableId, std::string> texts;
  for (std::size_t i = 0; i < std::min(arguments.size(), head.arguments.size()); ++i) {
    const dl::TermPattern& term = statement.terms[head.arguments[i]];
    if (term.kind == dl::TermPattern::Kind::kVariable) texts.emplace(term.variable, arguments[i]);
  }
  return texts;
}

std::string ProgramWords::stand_in(dl::PredicateNumber predicate, const Texts& arguments) {
  const dl::StoredStatement& rule = rule_of(predicate);
  const auto texts = matched(rule, rule.heads.front(), arguments);
  const Names names{rule, nullptr, &texts, nullptr, false};
  return words(rule.body.front().atom.predicate, this->arguments(names, rule.body.front().atom));
}

ProgramWords::Piece ProgramWords::piece(dl::PredicateNumber predicate, const Texts& arguments) {
  Piece piece;
  const dl::Predicate& key = answer_.index().predicate(predicate);
  std::string text = key.strongly_negated ? "{-" : "{";
  text += answer_.terms().spelling(key.name);
  if (!arguments.empty()) ((text += '(') += joined(arguments, ",")) += ')';
  text += "}";
  const OneItem::Take take = [&](const AnswerSet& set, const Item& item) {
    const std::string space_mark = "@";
    if (item.kind == ItemKind::kValue || item.kind == ItemKind::kAttribute) {
      const ObjectStatement said = set.statement(item);
      piece.object = spaced_terms(said.object.text());
      piece.attribute = said.is_negated ? "-" : "";
      piece.attribute += spaced_terms(said.attribute.text());
      if (!said.arrow.empty()) {
        ((piece.attribute += ' ') += said.arrow) += ' ';
        piece.value = spaced_terms(said.value.text());
      }
      append_space(piece.space, said.space);
      return;
    }
    std::string& whole = piece.whole;
    if (item.is_negated) whole += '-';
    if (item.kind == ItemKind::kAtom) {
      const zarel::AnswerAtom atom = set.atom(item);
      whole += spaced_terms(atom.relation.text());
      if (!atom.arguments.is_empty())
        ((whole += '(') += spaced_terms(atom.arguments.text())) += ')';
      if (!atom.space.empty()) append_space(whole, atom.space);
    } else {
      const zarel::ClassStatement said = set.class_statement(item);
      whole += spaced_terms(said.object.text());
      whole += item.kind == ItemKind::kSubclass ? " :: " : " : ";
      whole += spaced_terms(said.class_name.text());
      append_space(whole, said.space);
    }
  };
  OneItem consumer(take);
  AnswerTextReader reader(consumer, nullptr);
  reader.read(text);
  return piece;
}

std::string ProgramWords::own_words(dl::PredicateNumber predicate, const Texts& arguments) {
  std::vector<Piece> pieces{piece(predicate, arguments)};
  return frame_of(pieces, 0);
}

// The statements of the object of the first piece, with those of their values in them.
std::string ProgramWords::frame_of(std::vector<Piece>& pieces, std::size_t first) {
  pieces[first].is_taken = true;
  if (pieces[first].object.empty()) return pieces[first].whole;
  const std::string object = pieces[first].object;
  const std::string space = pieces[first].space;
  std::string text = object;
  const char* separator = "[";
  for (std::size_t i = first; i < pieces.size(); ++i) {
    Piece& piece = pieces[i];
    if ((i != first && piece.is_taken) || piece.object != object || piece.space != space) continue;
    piece.is_taken = true;
    ((text += separator) += piece.attribute);
    separator = ", ";
    const auto inner = std::ranges::find_if(pieces, [&piece](const Piece& other) {
      return !other.is_taken && !piece.value.empty() && other.object == piece.value &&
             other.space == piece.space;
    });
    if (inner == pieces.end()) {
      text += piece.value;
      continue;
    }
    std::string value = frame_of(pieces, static_cast<std::size_t>(inner - pieces.begin()));
    value.resize(value.size() - space.size());    // said once, behind the whole
    text += value;
  }
  return (text += ']') += space;
}

std::string ProgramWords::frame(dl::PredicateNumber predicate, const Texts& arguments) {
  std::vector<Piece> pieces;
  const auto add = [&](const Names& names, const dl::AtomPattern& atom) {
    const Texts texts = this->arguments(names, atom);
    if (role(atom.predicate) == PredicateRole::kOwn) {
      pieces.push_back(piece(atom.predicate, texts));
    } else {
      pieces.emplace_back().whole = words(atom.predicate, texts);
    }
  };
  const bool is_whole = role(predicate) == PredicateRole::kWholeFrame;
  for (const dl::StatementNumber number : frame_rules_.at(predicate)) {
    const dl::StoredStatement& rule = answer_.store().statement(number);
    const dl::AtomPattern& head = is_whole ? rule.body.front().atom : rule.heads.front();
    const auto texts = matched(rule, head, arguments);
    Names names{rule, nullptr, &texts, nullptr, false};
    if (is_whole) {
      add(names, rule.heads.front());
      continue;
    }
    for (const dl::StoredLiteral& literal : rule.body) {
      if (literal.kind == dl::kFunctionTerm) continue;
      if (literal.kind == dl::kAtom && !literal.negated) {
        add(names, literal.atom);
      } else {
        std::string text = literal.negated ? "not " : "";
        pieces.emplace_back().whole = text += this->literal(names, literal);
      }
    }
    break;    // expansions of a template give the same rule again
  }
  Texts frames;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (!pieces[i].is_taken) frames.push_back(frame_of(pieces, i));
  }
  std::string text = joined(frames, ", ");
  return frames.size() > 1 ? "(" + text + ")" : text;
}

std::string ProgramWords::variable(const Names& names, dl::VariableId variable, unsigned depth) {
  if (variable == dl::kUnnamed || depth > kDeepest) return "_";
  if (names.binding != nullptr && variable < names.binding->size() &&
      (*names.binding)[variable] != dl::kNoTerm) {
    std::string text;
    answer_.terms().append(text, (*names.binding)[variable]);
    return text;
  }
  if (names.texts != nullptr) {
    const auto found = names.texts->find(variable);
    if (found != names.texts->end()) return found->second;
  }
  for (const auto* const body : {names.inner, &names.statement.body}) {
    if (body == nullptr) continue;
    for (const dl::StoredLiteral& literal : *body) {
      if (literal.kind != dl::kFunctionTerm) continue;
      const dl::TermPattern& whole = names.statement.terms[literal.operands[0]];
      if (whole.kind != dl::TermPattern::Kind::kVariable || whole.variable != variable) continue;
      Texts arguments;
      for (std::size_t i = 2; i < literal.operands.size(); ++i) {
        arguments.push_back(pattern(names, literal.operands[i], depth + 1));
      }
      return pattern(names, literal.operands[1], depth + 1) + "(" + joined(arguments, ",") + ")";
    }
  }
  const std::string& spelling = names.statement.variables[variable];
  if (!names.keeps_names) return "_";
  const std::vector<std::string>& written = statements_.of(names.statement).variables;
  if (std::ranges::find(written, spelling) != written.end()) return spelling;
  if (const zarel::MadeExpansion* const expansion = expansion_of(names.statement)) {
    for (const auto& [made, parameter] : expansion->groups) {
      if (made == spelling) return parameter;
    }
  }
  return "_";
}

std::string ProgramWords::pattern(const Names& names, dl::PatternNumber number, unsigned depth) {
  const dl::TermPattern& term = names.statement.terms[number];
  switch (term.kind) {
    case dl::TermPattern::Kind::kVariable:
      return variable(names, term.variable, depth);
    case dl::TermPattern::Kind::kAnonymous:
      return "_";
    case dl::TermPattern::Kind::kGround: {
      std::string text;
      answer_.terms().append(text, term.ground);
      return text;
    }
    case dl::TermPattern::Kind::kCompound:
      break;
  }
  if (depth > kDeepest) return "_";
  Texts arguments;
  for (const dl::PatternNumber argument : term.arguments) {
    arguments.push_back(pattern(names, argument, depth + 1));
  }
  return std::string(answer_.terms().spelling(term.functor)) + "(" + joined(arguments, ",") + ")";
}

ProgramWords::Texts ProgramWords::arguments(const Names& names, const dl::AtomPattern& atom) {
  Texts texts;
  for (const dl::PatternNumber argument : atom.arguments) texts.push_back(pattern(names, argument));
  return texts;
}

std::string ProgramWords::comparison(const Names& names, const dl::StoredLiteral& literal) {
  Texts operands;
  for (const dl::PatternNumber operand : literal.operands) {
    operands.push_back(spaced_terms(pattern(names, operand)));
  }
  const std::string_view name = dl::kind_of(literal.kind).name;
  if (literal.kind == dl::kFunctionTerm) {
    const auto arguments = std::span<const std::string>(operands).subspan(2);
    return operands[0] + " == " + operands[1] + "(" + joined(arguments, ", ") + ")";
  }
  const auto infix = [](const std::string& left, std::string_view sign, const std::string& right) {
    return ((left + " ").append(sign) += " ") += right;
  };
  if (dl::kind_of(literal.kind).is_comparison) return infix(operands[0], name, operands[1]);
  if (operands.size() == 3) return infix(operands[2], "=", infix(operands[0], name, operands[1]));
  return ((std::string(name) += '(') += joined(operands, ", ")) += ')';
}

std::string ProgramWords::aggregate(const Names& names, const dl::StoredAggregate& aggregate) {
  const Names inside{names.statement, names.binding, names.texts, &aggregate.body, true};
  Texts terms;
  for (const dl::PatternNumber term : aggregate.terms) {
    terms.push_back(spaced_terms(pattern(inside, term)));
  }
  Texts body;
  for (const dl::StoredLiteral& literal : aggregate.body) {
    if (literal.kind == dl::kFunctionTerm) continue;
    std::string text = literal.negated ? "not " : "";
    body.push_back(text += this->literal(inside, literal));
  }
  std::string text;
  if (aggregate.left.given) {
    (text += spaced_terms(pattern(names, aggregate.left.term))) += ' ';
    (text += guard_sign(aggregate.left.op)) += ' ';
  }
  ((text += dl::aggregate_name(aggregate.function)) += '{') += joined(terms, ", ");
  ((text += " : ") += joined(body, ", ")) += '}';
  if (aggregate.right.given) {
    ((text += ' ') += guard_sign(aggregate.right.op)) += ' ';
    text += spaced_terms(pattern(names, aggregate.right.term));
  }
  return text;
}

std::string ProgramWords::literal(const Names& names, const dl::StoredLiteral& literal) {
  if (literal.kind == dl::kAggregate)
    return aggregate(names, names.statement.aggregates[literal.aggregate]);
  if (literal.kind != dl::kAtom) return comparison(names, literal);
  return words(literal.atom.predicate, arguments(names, literal.atom));
}

std::string ProgramWords::literal(const dl::StoredStatement& statement,
                                  const dl::StoredLiteral& literal, const dl::Binding& binding) {
  return this->literal(Names{statement, &binding}, literal);
}

std::string ProgramWords::head(const dl::StoredStatement& statement, const dl::AtomPattern& atom,
                               const dl::Binding& binding) {
  return words(atom.predicate, arguments(Names{statement, &binding}, atom));
}

const zarel::MadeExpansion* ProgramWords::expansion_of(const dl::StoredStatement& statement) {
  const auto of = [this](dl::PredicateNumber predicate) -> const zarel::MadeExpansion* {
    const zarel::GeneratedPredicate* const made = generated(predicate);
    if (made == nullptr || made->role == zarel::GeneratedPredicate::Role::kStandsIn) return nullptr;
    return &generated_.expansions()[made->expansion];
  };
  for (const dl::AtomPattern& head : statement.heads) {
    if (const zarel::MadeExpansion* const found = of(head.predicate)) return found;
  }
  if (!statement.heads.empty() || statements_.of(statement).told.place.uses.empty()) return nullptr;
  for (const dl::StoredLiteral& literal : statement.body) {
    if (literal.kind != dl::kAtom) continue;
    if (const zarel::MadeExpansion* const found = of(literal.atom.predicate)) return found;
  }
  return nullptr;
}

dl::ToldValues ProgramWords::values(const dl::StoredStatement& statement,
                                    const dl::Binding& binding) {
  const std::vector<std::string>& written = statements_.of(statement).variables;
  dl::ToldValues values;
  const auto value_of = [&](const std::string& name) -> std::optional<std::string> {
    for (dl::VariableId id = 0; id < statement.variables.size() && id < binding.size(); ++id) {
      if (statement.variables[id] == name && binding[id] != dl::kNoTerm) return term(binding[id]);
    }
    return std::nullopt;
  };
  for (const std::string& name : written) {
    if (const auto value = value_of(name)) values.emplace_back(name, *value);
  }
  const dl::ToldPlace& place = statements_.of(statement).told.place;
  if (place.uses.empty()) return values;
  const zarel::MadeExpansion* const expansion = expansion_of(statement);
  if (expansion == nullptr || expansion->template_name != place.uses.front().used) return values;
  for (const auto& [made, parameter] : expansion->groups) {
    const auto value = value_of(made);
    if (!value || parameter.empty() || parameter[0] < 'A' || parameter[0] > 'Z') continue;
    const bool is_taken = std::ranges::find(written, parameter) != written.end();
    std::string name = parameter;
    if (is_taken) (name += " of line ") += std::to_string(place.uses.front().line);
    values.emplace_back(std::move(name), *value);
  }
  return values;
}

std::string ProgramWords::name(dl::PredicateNumber predicate) {
  const dl::Predicate& key = answer_.index().predicate(predicate);
  const std::string_view name = answer_.terms().spelling(key.name);
  const bool has_words = role(predicate) == PredicateRole::kOwn && !dl::is_generic(name);
  if (!has_words) return {};
  std::string text = key.strongly_negated ? "-" : "";
  return ((text += name) += '/') += std::to_string(key.arity);
}

}    // namespace workbench
