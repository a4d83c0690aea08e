#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

#include "base/characters.h"
#include "workbench/messages/findings.h"
#include "workbench/syntax/syntax_characters.h"
#include "workbench/syntax/syntax_foreign.h"
#include "workbench/syntax/syntax_statement.h"

namespace workbench {
namespace {

using enum zarel::Code;

// What is said of a finding whose kind says it all.
struct Words {
  zarel::Code code;
  std::string_view text, help;
};

constexpr Words kWords[] = {
    {kInputTooDeep, "the text is nested too deeply to be read",
     "give inner terms names of their own, or look for a parenthesis that is opened again and "
     "again"},
    {kLongIdentifier, "this name is longer than 1001 characters", "shorten it"},
    {kUnderscoreIdentifier, "a name does not begin with _",
     "variables begin with a capital letter; _ alone is a variable of which nothing is asked"},
    {kLongNumber, "this number has more than nine digits",
     "numbers go up to 999999999; what is only a name may stand in quotes"},
    {kUnclosedVerbatim, "the ASITIS section that begins here is not closed", "close it with *%"},
    {kUnknownPrefix, "this prefix is declared nowhere above",
     "write #namespace(prefix, \"http://...\") in front of its first use"},
    {kRedefinedPrefix, "this prefix was declared before",
     "the first declaration stays: leave this one out"},
    {kQuotedFunctor, "the name of a function has no quotes",
     "write it without them, in small letters"},
    {kQuotedFrameSpace, "the name of a frame space has no quotes", "write it without them"},
    {kQuotedTemplateName, "a predicate or attribute in a template has no quotes",
     "write it without them"},
    {kNegationInHead, "not stands in bodies only",
     "write - in front of the attribute for what is known to be false"},
    {kNegatedValue, "the frame of a value is not negated",
     "give the value by its name, and negate the frame in a literal of its own"},
    {kNestedNegation, "this frame is negated twice, as a whole and inside",
     "keep one of the two signs"},
    {kWeightRange, "this weight is too large", "weights go up to 4294967"},
    {kWeightPrecision, "three digits of a fraction are read, not more",
     "the solver is given whole weights only: multiply them all instead"},
    {kMaxintExceeded, "this number is larger than #maxint", "write a larger #maxint"},
    {kMaxintUnknown, "#maxint is used here and has no value", "write #maxint = 20. further up"},
    {kMaxintRedefined, "#maxint was given before", "the first one stays: leave this one out"},
    {kMaxintNoInteger, "#maxint is given by a number", "write #maxint = 20."},
    {kMaxintTooSmall, "the program has a number that is larger than this #maxint",
     "write a larger one"},
};

const Words* words_of(zarel::Code code) {
  const auto* const found = std::find_if(std::begin(kWords), std::end(kWords),
                                         [code](const Words& words) { return words.code == code; });
  return found == std::end(kWords) ? nullptr : found;
}

bool is_behind(const zarel::Position& first, const zarel::Position& second) {
  if (first.line != second.line) return first.line < second.line;
  return first.column < second.column;
}

bool is_in_line(const zarel::Position& position, const zarel::Position& other) {
  return position.file == other.file && position.line == other.line;
}

// "a, b or c"
std::string listed(const std::vector<std::string_view>& words) {
  std::string text;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (i != 0) text += i + 1 == words.size() ? " or " : ", ";
    text += words[i];
  }
  return text;
}

Message refused(const zarel::Diagnostic& finding, const Statement& statement) {
  Message message{zarel::kind_of(finding.code).name, finding.place, "this cannot stand here"};
  if (statement.found().kind != TokenKind::kEnd) {
    message.text = filled("{} cannot stand here", {shortened(statement.found().text)});
    message.place = statement.found().place;
  } else if (!statement.text_before().empty() || statement.size() != 0) {
    message.text = "the text ends in the middle of a statement";
  }
  if (!statement.expected().empty()) {
    message.label = filled("expected {}", {listed(statement.expected())});
  }
  return message;
}

// What the grammar's actions refuse, once the statement is read.
Message refused_by_action(const zarel::Diagnostic& finding, const Statement& statement) {
  Message message{zarel::kind_of(finding.code).name, finding.place, {}};
  if (statement.found().text == "@" || statement.before().text == "@") {
    message.text = "an atom in a template has no frame space";
    message.help =
        "leave it out: what is read is of the space where the template is invoked, and "
        "global predicates of the one where it is defined";
  } else {
    message.text = "a query has no template invocation";
    message.help = "write a rule whose body has it, and ask for the head of that rule";
  }
  return message;
}

// Whether it was to be a directive that is not known now.
bool may_declare_prefix(const Statement& statement) {
  for (std::size_t i = 0; i <= statement.at(); ++i) {
    const Token& token = statement.token(i);
    if (token.kind == TokenKind::kDirective || token.text == "namespace") return true;
  }
  return false;
}

constexpr std::size_t kCommentBefore = 2'000;
constexpr std::size_t kLongestComment = 4'000;

// "%*" in front of a statement, "*%" in it or behind it: only the first line is a comment.
struct BlockComment {
  std::string_view opening;    // from "%*" to the statement
  std::string_view rest;       // from there to "*%"
};
std::optional<BlockComment> block_comment(std::string_view text, std::size_t statement) {
  const std::size_t from = statement < kCommentBefore ? 0 : statement - kCommentBefore;
  const std::string_view before = text.substr(from, statement - from);
  const std::size_t begin = before.rfind("%*");
  if (begin == std::string_view::npos || before.substr(0, begin).ends_with("ASITIS ") ||
      before.find("*%", begin + 1) != std::string_view::npos) {
    return std::nullopt;
  }
  const std::string_view behind = text.substr(statement, kLongestComment);
  const std::size_t end = behind.find("*%");
  if (end == std::string_view::npos) return std::nullopt;
  return BlockComment{before.substr(begin), behind.substr(0, end + 2)};
}

bool is_plain_name(std::string_view text) {
  return !text.empty() && zarel::is_lower_case(text[0]) &&
         std::all_of(text.begin(), text.end(), zarel::is_in_word);
}

// Says it of the very name or number that stands there.
void name_what_is_there(Message& message, const zarel::Diagnostic& finding, SourceTexts& texts) {
  const Statement line(finding.place, texts);
  const std::string_view found = line.found().text;
  if (line.found().place.first != finding.place.first || found.empty()) return;
  const zarel::Place& place = line.found().place;
  switch (finding.code) {
    case kUnderscoreIdentifier: {
      std::string name(found.substr(std::min(found.find_first_not_of('_'), found.size() - 1)));
      name[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(name[0])));
      message.help =
          filled("write {} for a variable, or _ alone where its value does not matter", {name});
      return;
    }
    case kLongNumber:
      message.fixes = {replaced(place, filled("\"{}\"", {found}))};
      return;
    case kUnknownPrefix:
      message.text = filled("the prefix {} is declared nowhere above", {found});
      message.help =
          filled("write #namespace({}, \"http://...\") in front of its first use", {found});
      return;
    case kMaxintExceeded:
      message.text = filled("{} is larger than #maxint", {found});
      message.help = filled("write #maxint = {}. or more", {found});
      return;
    case kQuotedFunctor:
    case kQuotedFrameSpace:
    case kQuotedTemplateName: {
      const std::string_view inside =
          found.substr(1, found.size() - std::min<std::size_t>(found.size(), 2));
      if (is_plain_name(inside)) message.fixes = {replaced(place, inside)};
      return;
    }
    default:
      return;
  }
}

}    // namespace

bool SyntaxMessages::is_about(zarel::Code code) {
  return code == kSyntaxError || code == kUnknownCharacter || code == kStarredComment ||
         words_of(code) != nullptr;
}

std::optional<Message> SyntaxMessages::message(const zarel::Diagnostic& finding) {
  if (finding.place.first.file == comment_.file && !is_behind(comment_, finding.place.first)) {
    return std::nullopt;
  }
  if (finding.code != kSyntaxError && is_in_line(finding.place.first, refused_)) {
    return std::nullopt;
  }
  if (finding.code == kStarredComment) return of_starred_comment(finding.place);
  if (finding.code == kUnknownCharacter) return of_character(finding);
  if (finding.code == kSyntaxError) return of_refusal(finding);
  const bool is_of_bound = finding.code == kMaxintUnknown || finding.code == kMaxintExceeded ||
                           finding.code == kMaxintRedefined || finding.code == kMaxintTooSmall;
  if (is_of_bound && has_faulty_bound_) return std::nullopt;
  has_faulty_bound_ |= finding.code == kMaxintExceeded;    // which is told once
  // Of a prefix one use is told.
  if (finding.code == kUnknownPrefix &&
      (has_faulty_prefix_ || !prefixes_.insert(finding.text).second)) {
    return std::nullopt;
  }
  if (finding.code == kMaxintUnknown) {
    has_faulty_bound_ = true;
    told_ = finding.place.last;
    if (auto message = of_bound(finding)) return message;
  }
  const Words& words = *words_of(finding.code);
  const bool is_same_line = is_in_line(finding.place.first, told_);
  if (zarel::kind_of(finding.code).severity == zarel::Severity::kError ||
      finding.code == kUnclosedVerbatim) {
    told_ = finding.place.last;    // what else the grammar refuses there may follow from it
  }
  const bool is_of_scanner = finding.code == kUnderscoreIdentifier || finding.code == kLongNumber;
  if (is_same_line && is_of_scanner) return std::nullopt;
  Message message{zarel::kind_of(finding.code).name, finding.place, std::string(words.text)};
  message.notes = finding.notes;
  message.help = words.help;
  name_what_is_there(message, finding, texts_);
  return message;
}

std::optional<Message> SyntaxMessages::of_character(const zarel::Diagnostic& finding) {
  const zarel::Position& first = finding.place.first;
  if (first.file == passed_.file && !is_behind(passed_, first)) return std::nullopt;
  const bool is_same_line = is_in_line(first, told_);
  CharacterAnswer answer = unknown_character(finding.place, finding.text, texts_,
                                             is_same_line ? character_ : std::string_view{});
  passed_ = answer.last;
  if (!answer.message) return std::nullopt;
  character_ = answer.character;
  told_ = answer.last;
  if (answer.message->code == "foreign-comment") comment_ = answer.last;
  return std::move(answer.message);
}

// Where the scanner had refused something, in the same line or in the same statement, the grammar
// refuses what is left.
bool SyntaxMessages::follows(const zarel::Diagnostic& finding) const {
  const zarel::Position& from =
      finding.refusal ? finding.refusal->statement.first : finding.place.first;
  if (comment_.file == from.file && !is_behind(comment_, from)) return true;
  if (told_.file != from.file) return false;
  return told_.line == finding.place.first.line || told_.line == from.line ||
         is_behind(from, told_);
}

// "#maxint 20." is read as the use of a bound first.
std::optional<Message> SyntaxMessages::of_bound(const zarel::Diagnostic& finding) {
  const Statement line(finding.place, texts_);
  const Token& next = line.behind();
  const bool is_given =
      next.text == "(" || next.text == "=" || (next.text == "==" && line.behind(3).text == ".");
  const bool is_use = next.kind == TokenKind::kSign && !is_given;
  if (line.at() != 0 || next.kind == TokenKind::kEnd || is_use) return std::nullopt;
  told_ = finding.place.last;
  return Message{"directive-form",
                 finding.place,
                 "this is no whole #maxint",
                 "",
                 {},
                 "write it like this: #maxint = 20."};
}

// "%* note *% p(a).": the comment goes on to the line's end, and p(a) is lost.
std::optional<Message> SyntaxMessages::of_starred_comment(const zarel::Place& mark) {
  constexpr std::string_view kBlanks = " \t\r%*-=";    // frames of headings are made of these
  const zarel::Position& first = mark.first;
  const std::string_view line = texts_.line(first.file, first.line);
  const std::size_t end = line.find("*%", first.column + 1);
  if (end == std::string_view::npos) return std::nullopt;
  const std::size_t lost = line.find_first_not_of(kBlanks, end);
  if (lost == std::string_view::npos) return std::nullopt;
  const std::size_t last = line.find_last_not_of(" \t\r");
  const auto position = [&](std::size_t offset) {    // the scanner has not been there yet
    const auto character = std::ranges::count_if(
        line.substr(0, offset + 1), [](char c) { return !zarel::continues_character(c); });
    return zarel::Position{first.file, first.line, static_cast<std::uint32_t>(offset) + 1,
                           static_cast<std::uint32_t>(character)};
  };
  return Message{"starred-comment",
                 {position(lost), position(last)},
                 "this belongs to the comment, which goes on to the end of the line",
                 "",
                 {},
                 "write it in a line of its own; *% ends no comment"};
}

// The lines of a comment of another language are read as statements: told once.
std::optional<Message> SyntaxMessages::of_block_comment(const zarel::Diagnostic& finding) {
  if (!finding.refusal) return std::nullopt;
  const zarel::Position& first = finding.refusal->statement.first;
  const std::string_view text = texts_.text(first.file);
  const auto comment = block_comment(text, texts_.offset(first.file, first.line, first.column));
  if (!comment) return std::nullopt;
  const auto lines = [](std::string_view part) {
    return static_cast<std::uint32_t>(std::count(part.begin(), part.end(), '\n'));
  };
  comment_ = first;
  comment_.line += lines(comment->rest);
  comment_.column = static_cast<std::uint32_t>(comment->rest.size() - comment->rest.rfind('\n'));
  zarel::Position begin = first;
  begin.line -= lines(comment->opening);
  const std::string_view line = texts_.line(first.file, begin.line);
  begin.column = static_cast<std::uint32_t>(comment->opening.data() - line.data()) + 1;
  begin.character = static_cast<std::uint32_t>(
      std::count_if(line.begin(), line.begin() + begin.column,
                    [](char c) { return !zarel::continues_character(c); }));
  zarel::Position end = begin;
  ++end.column;
  ++end.character;
  return Message{"block-comment",
                 {begin, end},
                 "a comment ends with its line",
                 "",
                 {{finding.place, "read as a statement"}},
                 "write % in front of each line"};
}

std::optional<Message> SyntaxMessages::of_refusal(const zarel::Diagnostic& finding) {
  const zarel::Position before = refused_;
  const zarel::Position& found = finding.place.first;
  const zarel::Position& begin = finding.refusal ? finding.refusal->statement.first : found;
  // What is left of a line is seldom what was meant; the rest of a definition ends with a brace.
  if (follows(finding) || is_in_line(found, before) || is_in_line(begin, before)) {
    return std::nullopt;
  }
  refused_ = found;
  if (auto message = of_block_comment(finding)) {
    if (is_in_line(message->place.first, before)) return std::nullopt;
    return message;
  }
  const Statement statement(finding, texts_);
  if (statement.at() == 0 && statement.found().text == "}" &&
      (before.file == refused_.file || told_.file == refused_.file)) {
    return std::nullopt;
  }
  if (statement.lacks_full_stop()) refused_ = statement.before().place.last;
  has_faulty_bound_ |= statement.text(0) == "#maxint";
  has_faulty_prefix_ |= may_declare_prefix(statement);
  if (!finding.refusal) return refused_by_action(finding, statement);
  // The rest of the statement was skipped: its characters are no matter.
  if (!statement.lacks_full_stop() && statement.size() != 0) {
    passed_ = statement.token(statement.size() - 1).place.last;
  }
  if (auto message = foreign_syntax(statement)) {
    // What else stands in the line is no statement either.
    if (message->code == "foreign-comment") told_ = finding.place.last;
    return message;
  }
  return refused(finding, statement);
}

}    // namespace workbench
