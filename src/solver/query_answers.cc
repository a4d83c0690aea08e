#include "solver/query_answers.h"

#include <algorithm>
#include <compare>
#include <vector>

#include "solver/answer_writer.h"
#include "solver/model_reader.h"
#include "solver/names.h"

namespace dl {
namespace {

// An answer's values as the input spells them.
using Values = std::vector<std::string>;

// Splits the arguments at the commas outside parentheses and strings.
Values values_of(std::string_view arguments) {
  Values values;
  std::size_t begin = 0;
  std::size_t depth = 0;
  bool in_string = false;
  const auto add = [&](std::size_t end) {
    append_input_spelling(values.emplace_back(), arguments.substr(begin, end - begin));
    begin = end + 1;
  };
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const char c = arguments[i];
    if (c == '"') in_string = !in_string;
    if (in_string) {
      if (c == '\\') ++i;
      continue;
    }
    if (c == '(') ++depth;
    if (c == ')') --depth;
    if (c == ',' && depth == 0) add(i);
  }
  add(arguments.size());
  return values;
}

bool is_integer(const std::string& value) {
  return value.front() >= '0' && value.front() <= '9';
}

// Integers come first, by their value; they have no leading zeros, so the shorter is the smaller.
std::strong_ordering compare(const std::string& left, const std::string& right) {
  if (is_integer(left) != is_integer(right)) {
    return is_integer(left) ? std::strong_ordering::less : std::strong_ordering::greater;
  }
  if (is_integer(left) && left.size() != right.size()) return left.size() <=> right.size();
  return left <=> right;
}

bool comes_before(const Values& left, const Values& right) {
  return std::is_lt(std::lexicographical_compare_three_way(left.begin(), left.end(), right.begin(),
                                                           right.end(), compare));
}

}    // namespace

std::string query_answers(std::string_view line) {
  constexpr std::string_view kBegin = "_q(";
  std::vector<Values> answers;
  each_atom(line, [&](std::string_view atom) {
    if (atom.starts_with(kBegin))
      answers.push_back(values_of(atom.substr(kBegin.size(), atom.size() - kBegin.size() - 1)));
  });
  std::ranges::sort(answers, comes_before);
  std::string text;
  for (const Values& answer : answers) {
    for (std::size_t i = 0; i < answer.size(); ++i) (text += i == 0 ? "" : ", ") += answer[i];
    text += '\n';
  }
  return text;
}

bool query_holds(std::string_view line) {
  bool holds = false;
  each_atom(line, [&](std::string_view atom) { holds = holds || atom == "_q"; });
  return holds;
}

std::optional<std::size_t> query_overflow(std::string_view line, bool holds_in_all,
                                          std::size_t places) {
  std::vector<char> fine(places, 0);
  std::optional<std::size_t> overflow;
  each_atom(line, [&](std::string_view atom) {
    if (const auto place = numbered_helper(atom, "_overflow(")) overflow = place;
    if (const auto place = numbered_helper(atom, "_fine(")) fine[*place] = 1;
  });
  if (overflow || !holds_in_all) return overflow;
  const auto missing = std::ranges::find(fine, 0);
  if (missing != fine.end()) overflow = static_cast<std::size_t>(missing - fine.begin());
  return overflow;
}

}    // namespace dl
