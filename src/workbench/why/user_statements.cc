#include "workbench/why/user_statements.h"

#include <algorithm>
#include <utility>

#include "base/characters.h"
#include "model/run.h"
#include "parser/written_clause.h"

namespace workbench {
namespace {

// The end of what is no part of words at this place: a string or a comment; the place itself else.
std::size_t end_of_passed(std::string_view text, std::size_t at) {
  if (text[at] == '"') return std::min(text.find('"', at + 1), text.size() - 1) + 1;
  if (text[at] == '%') return std::min(text.find('\n', at), text.size());
  return at;
}

std::vector<std::string> variables_in(std::string_view text) {
  std::vector<std::string> variables;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t passed = end_of_passed(text, at);
    if (passed != at) {
      at = passed;
      continue;
    }
    const std::size_t begin = at++;
    if (!zarel::is_in_word(text[begin])) continue;
    while (at < text.size() && zarel::is_in_word(text[at])) ++at;
    if (!zarel::is_upper_case(text[begin])) continue;
    std::string word(text.substr(begin, at - begin));
    if (std::ranges::find(variables, word) == variables.end()) variables.push_back(std::move(word));
  }
  return variables;
}

// Of the literals behind the mark of a rule, in a text on one line without comments.
std::vector<char> negations_in(std::string_view text) {
  std::vector<char> negations;
  bool begins_literal = false;
  int depth = 0;    // of parentheses, brackets and braces
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::string_view rest = text.substr(at);
    if (text[at] == ' ') continue;
    if (std::exchange(begins_literal, false)) {
      negations.push_back(rest.starts_with("not ") || rest.starts_with("non ") ? 1 : 0);
    }
    if (text[at] == '"') {
      at = end_of_passed(text, at) - 1;
    } else if (negations.empty() &&
               (rest.starts_with(":-") || rest.starts_with("<-") || rest.starts_with(":~"))) {
      begins_literal = true;
      ++at;
    } else if (text[at] == '(' || text[at] == '[' || text[at] == '{') {
      ++depth;
    } else if (text[at] == ')' || text[at] == ']' || text[at] == '}') {
      --depth;
    } else if (text[at] == ',' && depth == 0 && !negations.empty()) {
      begins_literal = true;
    }
  }
  return negations;
}

}    // namespace

std::string on_one_line(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  std::string line;
  bool has_blank = false;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t passed = end_of_passed(text, at);
    const bool is_string = passed != at && text[at] == '"';
    const bool is_blank = kBlanks.find(text[at]) != std::string_view::npos;
    const std::size_t begin = at;
    at = std::max(passed, at + 1);
    if (!is_string && (is_blank || passed != begin)) {
      has_blank = true;
      continue;
    }
    if (has_blank && !line.empty()) line += ' ';
    has_blank = false;
    line += text.substr(begin, at - begin);
  }
  return line;
}

dl::ToldPlace UserStatements::place(const zarel::Place& place) const {
  dl::ToldPlace told;
  if (!place.is_known()) return told;
  told.file = texts_.name(place.first.file);
  told.line = place.first.line;
  told.column = place.first.character;
  told.end_line = place.last.line;
  told.end_column = place.last.character;
  return told;
}

std::string UserStatements::text_at(const zarel::Place& place) {
  if (!place.is_known()) return {};
  const std::string_view text = texts_.text(place.first.file);
  const auto [file, line, column, character] = place.first;
  const std::size_t begin = texts_.offset(file, line, column);
  const std::size_t end = texts_.offset(file, place.last.line, place.last.column);
  if (begin >= text.size() || end < begin) return {};
  return on_one_line(text.substr(begin, end + 1 - begin));
}

// A line of the rewritten program is a whole clause; verbatim text is as the user wrote it.
UserStatement UserStatements::read(std::uint32_t file, const zarel::SourceRange& range,
                                   std::string_view written) {
  UserStatement statement;
  dl::ToldStatement& told = statement.told;
  if (file != 0) {
    told.place = {sources_->name(file),
                  range.first_line,
                  range.first_column,
                  range.last_line,
                  range.last_column,
                  {},
                  {}};
    told.text = on_one_line(written);
  } else {
    const zarel::LineOrigin origin = program_.origin_of_line(range.first_line);
    const zarel::Position& first = origin.place.first;
    if (origin.is_verbatim) {
      const std::uint32_t shift = first.column - 1;    // it may begin behind a mark
      const std::uint32_t last_shift = range.last_line == range.first_line ? shift : 0;
      told.place = {std::string(texts_.name(first.file)),
                    first.line,
                    range.first_column + shift,
                    first.line + (range.last_line - range.first_line),
                    range.last_column + last_shift,
                    {},
                    {}};
      told.text = on_one_line(written);
    } else if (origin.place.is_known()) {
      const zarel::Run::Scope scope(program_.run());
      const zarel::SourceSpan span =
          zarel::written_clause({first.line, first.column, first.file}, {}).clause;
      const zarel::Place whole = program_.files().place(span);
      told.place = place(whole);
      told.text = text_at(whole);
    }
    for (const zarel::OriginStep& step : origin.steps) {
      if (step.template_name.empty() || !step.invocation.is_known()) continue;
      dl::ToldPlace use = place(step.invocation);
      use.used = step.template_name;
      told.place.uses.push_back(std::move(use));
    }
    if (!origin.steps.empty()) statement.made_by = origin.steps.front().kind;
  }
  statement.variables = variables_in(told.text);
  statement.negations = negations_in(told.text);
  return statement;
}

const UserStatement& UserStatements::of(const dl::StoredStatement& statement) {
  const auto [found, is_new] =
      read_.try_emplace({statement.file, statement.range.first_line}, UserStatement());
  // Verbatim text may have several on a line.
  const bool is_other =
      !is_new && found->second.told.text != on_one_line(statement.written) &&
      (statement.file != 0 || program_.origin_of_line(statement.range.first_line).is_verbatim);
  if (is_new || is_other) found->second = read(statement.file, statement.range, statement.written);
  return found->second;
}

dl::ToldStatement UserStatements::of(const dl::FactPlace& fact) {
  const auto [found, is_new] = facts_.try_emplace({fact.file, fact.line}, dl::ToldStatement());
  dl::ToldStatement& told = found->second;
  if (!is_new && fact.file == 0) return told;
  if (fact.file != 0) {
    told.place = {sources_->name(fact.file), fact.line, fact.column, 0, 0, {}, {}};
    return told;
  }
  const zarel::LineOrigin origin = program_.origin_of_line(fact.line);
  told.place = place(origin.place);
  told.place.end_line = told.place.end_column = 0;
  const bool is_range =
      !origin.steps.empty() && origin.steps.front().kind == zarel::OriginKind::kRange;
  // The others are what the atom says; and there may be millions.
  if (is_range) told.text = read(0, {fact.line, fact.column, fact.line, fact.column}, {}).told.text;
  return told;
}

zarel::OriginKind UserStatements::made_by(const dl::StoredStatement& statement) const {
  if (statement.file != 0) return zarel::OriginKind::kWritten;
  const zarel::LineOrigin origin = program_.origin_of_line(statement.range.first_line);
  return origin.steps.empty() ? zarel::OriginKind::kWritten : origin.steps.front().kind;
}

}    // namespace workbench
