#include "dl/explain/literal_words.h"

#include <algorithm>
#include <array>
#include <utility>

namespace dl {
namespace {

constexpr std::array<std::string_view, 5> kAggregateNames{"#count", "#sum", "#min", "#max", "#avg"};

}    // namespace

std::string_view aggregate_name(AggregateFunction function) {
  return kAggregateNames[static_cast<std::size_t>(function)];
}

void PlainSpeller::append_compound(std::string& out, std::string_view functor,
                                   std::span<const WordedTerm> arguments) const {
  char separator = '(';
  out += functor;
  for (const WordedTerm& argument : arguments) {
    out += std::exchange(separator, ',');
    append_term(out, argument);
  }
  if (!arguments.empty()) out += ')';
}

void PlainSpeller::append_atom(std::string& out, const Predicate& predicate,
                               std::span<const WordedTerm> arguments) const {
  if (predicate.strongly_negated) out += '-';
  append_compound(out, terms_.spelling(predicate.name), arguments);
}

WordedTerm LiteralWords::term(PatternNumber pattern) const {
  WordedTerm worded;
  worded.ground = vocabulary_.evaluator.value(statement_, pattern, binding_);
  if (worded.ground != kNoTerm) return worded;
  const TermPattern& each = statement_.terms[pattern];
  if (each.kind == TermPattern::Kind::kAnonymous) {
    worded.words += '_';
  } else if (each.kind == TermPattern::Kind::kVariable) {
    worded.words = statement_.variables[each.variable];
  } else {
    std::vector<WordedTerm> arguments;
    for (const PatternNumber argument : each.arguments) arguments.push_back(term(argument));
    vocabulary_.speller.append_compound(worded.words, vocabulary_.terms.spelling(each.functor),
                                        arguments);
  }
  return worded;
}

std::string LiteralWords::atom(const AtomPattern& atom) const {
  std::vector<WordedTerm> arguments;
  for (const PatternNumber argument : atom.arguments) arguments.push_back(term(argument));
  std::string words;
  vocabulary_.speller.append_atom(words, vocabulary_.index.predicate(atom.predicate), arguments);
  return words;
}

std::string LiteralWords::literal(const StoredLiteral& literal) const {
  std::string words;
  append_literal(words, literal);
  return words;
}

ToldValues LiteralWords::values() const {
  ToldValues values;
  for (VariableId variable = 0; variable < binding_.size(); ++variable) {
    const std::string& name = statement_.variables[variable];
    if (name == "_" || statement_.is_outer[variable] == 0 || binding_[variable] == kNoTerm) {
      continue;
    }
    std::string value;
    vocabulary_.speller.append_term(value, binding_[variable]);
    values.emplace_back(name, std::move(value));
  }
  return values;
}

void LiteralWords::append_literal(std::string& out, const StoredLiteral& literal) const {
  if (literal.negated) out += "not ";
  if (literal.kind == kAtom) {
    out += atom(literal.atom);
  } else if (literal.kind == kAggregate) {
    append_aggregate(out, statement_.aggregates[literal.aggregate]);
  } else {
    append_builtin(out, literal);
  }
}

void LiteralWords::append_operand(std::string& out, PatternNumber pattern) const {
  vocabulary_.speller.append_term(out, term(pattern));
}

// "#succ(1,2)".
void LiteralWords::append_call(std::string& out, const StoredLiteral& literal) const {
  char separator = '(';
  out += kind_of(literal.kind).name;
  for (const PatternNumber operand : literal.operands) {
    out += std::exchange(separator, ',');
    append_operand(out, operand);
  }
  out += ')';
}

void LiteralWords::append_builtin(std::string& out, const StoredLiteral& literal) const {
  const BuiltinKind& kind = kind_of(literal.kind);
  if (kind.is_comparison) {
    append_operand(out, literal.operands[0]);
    out += kind.name;
    append_operand(out, literal.operands[1]);
  } else if (literal.kind == kSum || literal.kind == kProduct) {
    append_operand(out, literal.operands[2]);
    out += '=';
    append_operand(out, literal.operands[0]);
    out += kind.name;
    append_operand(out, literal.operands[1]);
  } else {
    append_call(out, literal);
  }
}

void LiteralWords::append_aggregate(std::string& out, const StoredAggregate& aggregate) const {
  const auto append_operator = [&out](Builtin op) { out += op == kEqual ? "=" : kind_of(op).name; };
  if (aggregate.left.given) {
    append_operand(out, aggregate.left.term);
    append_operator(aggregate.left.op);
  }
  out += aggregate_name(aggregate.function);
  char separator = '{';
  for (const PatternNumber each : aggregate.terms) {
    out += std::exchange(separator, ',');
    append_operand(out, each);
  }
  std::string_view between = " : ";
  for (const StoredLiteral& each : aggregate.body) {
    out += std::exchange(between, ", ");
    append_literal(out, each);
  }
  out += '}';
  if (!aggregate.right.given) return;
  append_operator(aggregate.right.op);
  append_operand(out, aggregate.right.term);
}

std::string tuple_words(const Speller& speller, std::span<const GroundTerm> terms) {
  std::string words;
  for (const GroundTerm term : terms) {
    if (!words.empty()) words += ',';
    speller.append_term(words, term);
  }
  return words;
}

std::string on_one_line(std::string_view written) {
  constexpr std::string_view kBlanks = " \t\r\n";
  std::string line;
  while (!written.empty()) {
    std::size_t end = written.find_first_of("\"%\n");
    if (end == written.npos) end = written.size();
    line += written.substr(0, end);
    written.remove_prefix(end);
    if (written.empty()) break;
    if (written.front() == '"') {
      const std::size_t close = std::min(written.find('"', 1), written.size() - 1);
      line += written.substr(0, close + 1);
      written.remove_prefix(close + 1);
      continue;
    }
    if (written.front() == '%') written.remove_prefix(std::min(written.find('\n'), written.size()));
    written.remove_prefix(std::min(written.find_first_not_of(kBlanks), written.size()));
    line.erase(line.find_last_not_of(kBlanks) + 1);
    if (!line.empty() && !written.empty()) line += ' ';
  }
  return line;
}

}    // namespace dl
