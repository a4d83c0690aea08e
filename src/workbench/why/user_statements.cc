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

// Goes through the body of a statement, on one line without comments.
class BodyReader {
 public:
  explicit BodyReader(std::string_view text) : text_(text) {
    begins_literal_ = text.ends_with('?');    // a query is a body alone
  }

  std::vector<UserStatement::Literal> read() {
    for (at_ = 0; at_ < text_.size() && !has_ended(); ++at_) {
      if (text_[at_] != ' ') look();
    }
    return std::move(body_);
  }

 private:
  using Parts = std::optional<std::uint32_t>;

  // A weight stands behind the full stop.
  bool has_ended() const {
    return text_[at_] == '.' && depth_ == 0 && !body_.empty() &&
           (at_ + 1 == text_.size() || text_[at_ + 1] == ' ');
  }

  void look() {
    const std::string_view rest = text_.substr(at_);
    if (std::exchange(begins_literal_, false)) {
      body_.push_back({rest.starts_with("not ") || rest.starts_with("non "), 1});
    }
    if (text_[at_] == '"') {
      at_ = end_of_passed(text_, at_) - 1;
    } else if (body_.empty() &&
               (rest.starts_with(":-") || rest.starts_with("<-") || rest.starts_with(":~"))) {
      begins_literal_ = true;
      ++at_;
    } else if (!body_.empty()) {
      look_at_sign(body_.back().parts);
    }
  }

  // A frame has as many parts as statements, if nothing in it has parts of its own.
  void look_at_sign(Parts& parts) {
    const char sign = text_[at_];
    if (is_in_frame_ && (sign == '[' || sign == '{')) parts.reset();
    if (sign == '[' && depth_ == 0) is_in_frame_ = has_frame_ = true;
    if (sign == ':' && depth_ == 0) has_class_ = true;
    if (has_frame_ && has_class_) parts.reset();
    if (sign == '(' || sign == '[' || sign == '{') ++depth_;
    if (sign == ')' || sign == ']' || sign == '}') --depth_;
    if (sign == ']' && depth_ == 0) is_in_frame_ = false;
    if (sign == ',' && depth_ == 1 && is_in_frame_ && parts) ++*parts;
    if (sign == ',' && depth_ == 0) {
      begins_literal_ = true;
      has_frame_ = has_class_ = false;
    }
  }

  std::string_view text_;
  std::size_t at_ = 0;
  bool begins_literal_ = false;
  int depth_ = 0;    // of parentheses, brackets and braces
  bool is_in_frame_ = false;
  bool has_frame_ = false;
  bool has_class_ = false;    // or a prefix
  std::vector<UserStatement::Literal> body_;
};

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
  statement.body = BodyReader(told.text).read();
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
