#include "dl/query_answers.h"

#include <algorithm>
#include <compare>
#include <vector>

#include "dl/answer_writer.h"
#include "dl/model_reader.h"
#include "dl/names.h"

namespace dl {
namespace {

// Calls `visit` with each piece between the commas outside parentheses and strings. In what clingo
// printed, a backslash in a string takes the next character with it.
enum class Escapes : bool { kNone, kBackslash };
template <typename Visit>
void each_argument(std::string_view arguments, Escapes escapes, Visit&& visit) {
  std::size_t begin = 0;
  std::size_t depth = 0;
  bool in_string = false;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const char c = arguments[i];
    if (c == '"') in_string = !in_string;
    if (in_string) {
      if (c == '\\' && escapes == Escapes::kBackslash) ++i;
      continue;
    }
    if (c == '(') ++depth;
    if (c == ')') --depth;
    if (c != ',' || depth != 0) continue;
    visit(arguments.substr(begin, i - begin));
    begin = i + 1;
  }
  visit(arguments.substr(begin));
}

enum class ValueKind { kInteger, kConstant, kString, kFunction };

ValueKind kind_of(std::string_view value) {
  if (value.front() >= '0' && value.front() <= '9') return ValueKind::kInteger;
  if (value.front() == '"') return ValueKind::kString;
  return value.back() == ')' ? ValueKind::kFunction : ValueKind::kConstant;
}

std::strong_ordering compare(std::string_view left, std::string_view right);

// By name, number of arguments, and arguments.
std::strong_ordering compare_functions(std::string_view left, std::string_view right) {
  const std::size_t left_open = left.find('(');
  const std::size_t right_open = right.find('(');
  const auto names = left.substr(0, left_open) <=> right.substr(0, right_open);
  if (std::is_neq(names)) return names;
  const auto arguments_of = [](std::string_view value, std::size_t open) {
    std::vector<std::string_view> arguments;
    each_argument(value.substr(open + 1, value.size() - open - 2), Escapes::kNone,
                  [&](std::string_view argument) { arguments.push_back(argument); });
    return arguments;
  };
  const std::vector<std::string_view> lefts = arguments_of(left, left_open);
  const std::vector<std::string_view> rights = arguments_of(right, right_open);
  if (lefts.size() != rights.size()) return lefts.size() <=> rights.size();
  return std::lexicographical_compare_three_way(lefts.begin(), lefts.end(), rights.begin(),
                                                rights.end(), compare);
}

// Integers by their value: they have no leading zeros, so the shorter is the smaller.
std::strong_ordering compare(std::string_view left, std::string_view right) {
  const ValueKind kind = kind_of(left);
  if (kind != kind_of(right)) return kind <=> kind_of(right);
  if (kind == ValueKind::kFunction) return compare_functions(left, right);
  if (kind == ValueKind::kInteger && left.size() != right.size()) {
    return left.size() <=> right.size();
  }
  if (kind == ValueKind::kString) {    // without the last quote, which is greater than a blank
    left.remove_suffix(1);
    right.remove_suffix(1);
  }
  return left <=> right;
}

bool comes_before(const QueryRow& left, const QueryRow& right) {
  return std::is_lt(std::lexicographical_compare_three_way(left.begin(), left.end(), right.begin(),
                                                           right.end(), compare));
}

}    // namespace

std::vector<QueryRow> query_rows(std::string_view line) {
  constexpr std::string_view kBegin = "_q(";
  std::vector<QueryRow> rows;
  each_atom(line, [&](std::string_view atom) {
    if (!atom.starts_with(kBegin)) return;
    QueryRow& values = rows.emplace_back();
    each_argument(
        atom.substr(kBegin.size(), atom.size() - kBegin.size() - 1), Escapes::kBackslash,
        [&](std::string_view value) { append_input_spelling(values.emplace_back(), value); });
  });
  std::ranges::sort(rows, comes_before);
  return rows;
}

std::string query_text(const std::vector<QueryRow>& rows) {
  std::string text;
  for (const QueryRow& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) (text += i == 0 ? "" : ", ") += row[i];
    text += '\n';
  }
  return text;
}

bool query_holds(std::string_view line) {
  bool holds = false;
  each_atom(line, [&](std::string_view atom) { holds = holds || atom == "_q"; });
  return holds;
}

std::optional<std::size_t> query_fault(std::string_view line, bool holds_in_all,
                                       std::size_t places) {
  std::vector<char> fine(places, 0);
  std::optional<std::size_t> fault;
  each_atom(line, [&](std::string_view atom) {
    if (const auto place = numbered_helper(atom, "_fault(")) fault = place;
    if (const auto place = numbered_helper(atom, "_fine(")) fine[*place] = 1;
  });
  if (fault || !holds_in_all) return fault;
  const auto missing = std::ranges::find(fine, 0);
  if (missing != fine.end()) fault = static_cast<std::size_t>(missing - fine.begin());
  return fault;
}

}    // namespace dl
