#include "workbench/answers/fact_text.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "base/characters.h"
#include "model/generic_encoding.h"
#include "workbench/answers/term_text.h"

namespace workbench {
namespace {

constexpr std::size_t kMostDigits = 9;                     // of an integer in a program
constexpr std::uint64_t kGreatestWritten = 999'999'999;    // that has so many
constexpr std::uint64_t kGreatest = 2'147'483'647;

bool is_string(std::string_view text) {
  return text.starts_with('"');
}

bool is_number(std::string_view text) {
  return !text.empty() && zarel::is_digit(text.front());
}

// Note [words that are no names]
// "v" is a constant, but where only a name may stand it is the sign of disjunctions. Numbers and
// function terms can be relations and spaces by way of variables, and cannot be written as such.
bool is_name(std::string_view text) {
  if (is_string(text)) return true;
  return !text.empty() && text != "v" && text.front() >= 'a' && text.front() <= 'z' &&
         std::ranges::all_of(text, zarel::is_in_word);
}

bool is_function(std::string_view text) {
  return !is_string(text) && text.ends_with(')');
}

// The first integer from there on that has more digits than a program may write.
std::string_view next_long_integer(std::string_view terms) {
  for (std::size_t at = 0; at < terms.size(); ++at) {
    if (terms[at] == '"') {
      at = std::min(terms.find('"', at + 1), terms.size());
    } else if (zarel::is_in_word(terms[at])) {
      const std::size_t begin = at;
      while (at < terms.size() && zarel::is_in_word(terms[at])) ++at;
      const std::string_view word = terms.substr(begin, at - begin);
      if (word.size() > kMostDigits && is_number(word)) return word;
      --at;
    }
  }
  return {};
}

bool has_long_integer(std::string_view terms) {
  return terms.size() > kMostDigits && !next_long_integer(terms).empty();
}

// A head and what has to hold for it.
class Statement {
 public:
  std::string head;

  void add_condition(std::string_view condition) {
    (body_ += body_.empty() ? " :- " : ", ") += condition;
  }

  // Adds terms to the head, with variables for the integers that only sums can name.
  void add_terms(std::string_view terms) {
    while (has_long_integer(terms)) {
      const std::string_view digits = next_long_integer(terms);
      const auto at = static_cast<std::size_t>(digits.data() - terms.data());
      head += terms.substr(0, at);
      head += sum(digits);
      terms.remove_prefix(at + digits.size());
    }
    head += terms;
  }

  void append_to(std::string& out) const { ((out += head) += body_) += ".\n"; }

 private:
  // A variable of that value. What no sum gives stays as it is: no program can say it.
  std::string sum(std::string_view digits) {
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || end != digits.data() + digits.size() || value > kGreatest)
      return std::string(digits);
    if (value <= kGreatestWritten) return std::to_string(value);
    std::string term = std::to_string(kGreatestWritten);
    value -= kGreatestWritten;
    if (value > kGreatestWritten) {
      term = variable_of(term, kGreatestWritten);
      value -= kGreatestWritten;
    }
    return variable_of(term, value);
  }

  std::string variable_of(std::string_view term, std::uint64_t more) {
    std::string name("N");
    name += std::to_string(++variables_);
    std::string condition = name;
    (((condition += " = ") += term) += " + ") += std::to_string(more);
    add_condition(condition);
    return name;
  }

  std::string body_;
  std::size_t variables_ = 0;
};

void add_arguments(Statement& statement, std::string_view terms) {
  if (terms.empty()) return;
  statement.head += '(';
  statement.add_terms(terms);
  statement.head += ')';
}

constexpr auto kArrows = std::to_array<std::string_view>({"->", "->>", "*->", "*->>", "=>", "=>>"});

bool is_subject(std::string_view text) {
  return (is_name(text) || is_number(text) || is_function(text)) && !has_long_integer(text);
}

bool is_class(std::string_view text) {
  return is_subject(text) && !is_number(text);
}

bool is_frame_space(std::string_view space) {
  return is_name(space) && !is_string(space);
}

bool has_label(const zarel::AnswerAttribute& attribute) {
  return is_class(attribute.name.text()) &&
         (attribute.values.empty() || std::ranges::find(kArrows, attribute.arrow) != kArrows.end());
}

// Those that can stand in a frame, several in braces.
std::string written_values(const zarel::AnswerAttribute& attribute) {
  std::string values;
  std::size_t count = 0;
  for (const zarel::AnswerTerm& value : attribute.values) {
    if (!is_subject(value.text())) continue;
    if (count++ != 0) values += ", ";
    values += value.text();
  }
  if (count < 2) return values;
  return std::string("{").append(values) += '}';
}

}    // namespace

void FactText::append_atom(std::string& out, const zarel::AnswerAtom& atom) {
  const std::string_view relation = atom.relation.text();
  const std::string_view arguments = atom.arguments.text();
  const bool is_named = is_name(relation) || (relation == "v" && !arguments.empty());
  if (!is_named || !is_name(atom.space)) return append_odd_atom(out, atom);
  Statement statement;
  std::string& head = has_long_integer(arguments) ? statement.head : out;
  if (atom.is_negated) head += '-';
  head += relation;
  if (&head == &out) {
    if (!arguments.empty()) ((out += '(') += arguments) += ')';
  } else {
    add_arguments(statement, arguments);
  }
  append_space(head, atom.space);
  &head == &out ? void(out += ".\n") : statement.append_to(out);
}

// The relation and the space come from an atom that is not shown, by variables.
void FactText::append_odd_atom(std::string& out, const zarel::AnswerAtom& atom) {
  std::string names("names(");
  names += std::to_string(++odd_names_);
  Statement named;
  (named.head += names) += ',';
  named.add_terms(atom.relation.text());
  named.head += ',';
  named.add_terms(atom.space);
  named.head += ")@service";
  named.append_to(out);
  Statement statement;
  statement.head = atom.is_negated ? "-R" : "R";
  add_arguments(statement, atom.arguments.text());
  statement.head += "@S";
  statement.add_condition(names += ",R,S)@service");
  statement.append_to(out);
}

// A subclass that is strongly negated has no notation.
void FactText::append_class(std::string& out, const AnswerSet& set, const Item& item) {
  const zarel::ClassStatement said = set.class_statement(item);
  const bool is_subclass = item.kind == ItemKind::kSubclass;
  const std::string_view object = said.object.text();
  const std::string_view class_name = said.class_name.text();
  const bool has_notation =
      (is_subclass ? is_class(object) && !said.is_negated : is_subject(object)) &&
      is_class(class_name) && is_frame_space(said.space);
  if (!has_notation) return append_atom(out, set.encoded_atom(item));
  if (said.is_negated) out += '-';
  ((out += object) += is_subclass ? " :: " : " : ") += class_name;
  append_space(out, said.space);
  out += ".\n";
}

// The values that the predicate names, each as an atom.
template <typename IsTaken>
void FactText::append_values(std::string& out, const zarel::AnswerObject& object,
                             const zarel::AnswerAttribute& attribute, IsTaken&& is_taken) {
  const std::string space = std::string(object.space).append(zarel::kFrameMarker);
  std::string arguments(object.name.text());
  (arguments += ',') += attribute.name.text();
  const auto append = [&] {
    append_atom(out, {zarel::AnswerTerm(zarel::kValueOf), space, attribute.is_negated,
                      zarel::AnswerTerms(arguments)});
  };
  if (attribute.values.empty() && is_taken(std::string_view())) append();
  const std::size_t size = arguments.size();
  for (const zarel::AnswerTerm& value : attribute.values) {
    if (!is_taken(value.text())) continue;
    arguments.resize(size);
    (((arguments += ',') += value.text()) += ",\"") += attribute.arrow;
    arguments += '"';
    append();
  }
}

// What has no notation stands behind, as atoms.
void FactText::append_object(std::string& out, const zarel::AnswerObject& object) {
  const std::size_t begin = out.size();
  out += object.name.text();
  const bool has_notation = is_subject(object.name.text()) && is_frame_space(object.space);
  const auto is_left_out = [](std::string_view text) { return !text.empty() && !is_subject(text); };
  std::string others;
  bool is_empty = true;
  for (const zarel::AnswerAttribute& attribute : object.attributes) {
    if (!has_notation || !has_label(attribute)) {
      append_values(others, object, attribute, [](std::string_view) { return true; });
      continue;
    }
    const std::string values = written_values(attribute);
    append_values(others, object, attribute, is_left_out);
    if (values.empty() && !attribute.values.empty()) continue;
    out += is_empty ? "[" : ", ";
    is_empty = false;
    if (attribute.is_negated) out += '-';
    out += attribute.name.text();
    if (!values.empty()) (((out += ' ') += attribute.arrow) += ' ') += values;
  }
  if (is_empty) {
    out.resize(begin);
  } else {
    out += ']';
    append_space(out, object.space);
    out += ".\n";
  }
  out += others;
}

}    // namespace workbench
