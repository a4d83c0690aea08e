#include "workbench/answers/item_pattern.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "base/characters.h"
#include "workbench/answers/term_text.h"
#include "workbench/messages/words.h"

namespace workbench {
namespace {

using Reading = ItemPattern::Reading;

struct Mistake {
  std::string help;
};

constexpr std::string_view kBlanks = " \t\r\n";

// Splits at the character where it stands outside of quotes, parentheses and brackets. Throws
// Mistake when these do not fit.
std::vector<std::string_view> split(std::string_view text, char at) {
  std::vector<std::string_view> parts;
  std::size_t begin = 0;
  bool in_string = false;
  std::string open;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '"') in_string = !in_string;
    if (in_string) continue;
    if (c == at && open.empty()) {
      parts.push_back(text.substr(begin, i - begin));
      begin = i + 1;
    } else if (c == '(' || c == '[') {
      open += c == '(' ? ')' : ']';
    } else if (c == ')' || c == ']') {
      if (open.empty() || open.back() != c) throw Mistake{std::string("nothing opens ") + c};
      open.pop_back();
    }
  }
  if (in_string) throw Mistake{"a string does not end"};
  if (!open.empty()) throw Mistake{std::string(1, open.back()) + " is missing"};
  parts.push_back(text.substr(begin));
  return parts;
}

// Words and "_" that stand for anything become nothing.
std::string name_of(std::string_view text) {
  if (text.empty() || text == "_" || zarel::is_upper_case(text.front())) return {};
  if (text.front() == ':' || text.back() == ':') throw Mistake{"a name is missing beside a colon"};
  bool in_string = false;
  for (const char c : text) {
    if (c == '"') in_string = !in_string;
    const bool is_inner = in_string || c == '"' || zarel::is_in_word(c) || c == '\'' || c == '-' ||
                          c == '(' || c == ')' || c == ',' || c == ':' ||
                          static_cast<unsigned char>(c) >= 0x80;
    if (!is_inner) throw Mistake{std::string("a name holds no ") + c};
  }
  return std::string(text);
}

std::string needed_name(std::string_view text, std::string_view what) {
  if (text.empty()) throw Mistake{std::string("the name of ").append(what) + " is missing"};
  return name_of(text);
}

class PatternText {
 public:
  explicit PatternText(std::string_view text) : text_(without_blanks(text)), rest_(text_) {
    pattern_.text = text_;
  }

  ItemPattern read() {
    pattern_.leaves_out = take('!');
    pattern_.is_negated = take('-');
    read_space();
    if (rest_.ends_with(']')) {
      read_attributes();
    } else if (rest_.empty()) {
      read_all();
    } else if (!read_subclass() && !read_membership()) {
      read_relation();
    }
    return std::move(pattern_);
  }

 private:
  bool take(char c) {
    if (!rest_.starts_with(c)) return false;
    rest_.remove_prefix(1);
    return true;
  }

  void add(PatternKind kind, std::string first, std::string second) {
    pattern_.readings.push_back({kind, std::move(first), std::move(second)});
  }

  void read_space();
  void read_all();
  void read_attributes();
  bool read_subclass();
  bool read_membership();
  void read_relation();

  std::string text_;
  std::string_view rest_;
  ItemPattern pattern_;
};

void PatternText::read_space() {
  const std::vector<std::string_view> parts = split(rest_, '@');
  if (parts.size() > 2) throw Mistake{"it has two spaces"};
  if (parts.size() == 2) pattern_.space = needed_name(parts[1], "a space");
  rest_ = parts[0];
}

// A space alone is all that it holds.
void PatternText::read_all() {
  if (pattern_.text.find('@') == std::string::npos)
    throw Mistake{"the name of a relation is missing"};
  for (std::size_t kind = 0; kind < kPatternKinds; ++kind) {
    add(static_cast<PatternKind>(kind), {}, {});
  }
}

void PatternText::read_attributes() {
  if (pattern_.is_negated) throw Mistake{"the - belongs in front of the attribute, as in [-dead]"};
  const std::size_t open = rest_.find('[');
  const std::string owner = name_of(rest_.substr(0, open));
  std::string_view names = rest_.substr(open + 1, rest_.size() - open - 2);
  if (names.find_first_of("<>=") != std::string_view::npos)
    throw Mistake{"attributes are named without their values, as in ann[age]"};
  pattern_.is_negated = names.starts_with('-');
  for (std::string_view name : split(names, ',')) {
    if (name.starts_with('-') != pattern_.is_negated)
      throw Mistake{"[age] and [-dead] are to be two patterns"};
    if (pattern_.is_negated) name.remove_prefix(1);
    add(PatternKind::kAttribute, owner, needed_name(name, "an attribute"));
  }
}

bool PatternText::read_subclass() {
  const std::vector<std::string_view> parts = split(rest_, ':');
  if (parts.size() < 3) return false;
  const auto empty = std::ranges::find(parts.begin() + 1, parts.end() - 1, std::string_view());
  if (empty == parts.end() - 1) return false;
  const auto behind = static_cast<std::size_t>(empty->data() + 1 - rest_.data());
  add(PatternKind::kSubclass, name_of(rest_.substr(0, behind - 2)), name_of(rest_.substr(behind)));
  return true;
}

// Each colon may be the one between object and class, or behind a prefix.
bool PatternText::read_membership() {
  const std::vector<std::string_view> parts = split(rest_, ':');
  if (parts.size() < 2) return false;
  for (std::size_t i = 1; i < parts.size(); ++i) {
    const auto begin = static_cast<std::size_t>(parts[i].data() - rest_.data());
    const std::string_view object = rest_.substr(0, begin - 1);
    const std::string_view of = rest_.substr(begin);
    if (object.starts_with(':') || of.ends_with(':')) continue;
    add(PatternKind::kMembership, name_of(object), name_of(of));
  }
  const bool has_prefix =
      parts.size() == 2 && !parts[0].empty() && !parts[1].empty() && zarel::is_lower_case(rest_[0]);
  if (has_prefix && rest_.find('(') == std::string_view::npos) {
    const std::size_t slash = rest_.rfind('/');
    if (slash != std::string_view::npos) pattern_.readings.clear();
    read_relation();
  }
  return true;
}

void PatternText::read_relation() {
  std::string_view name = rest_;
  const std::vector<std::string_view> parts = split(rest_, '/');
  if (parts.size() == 2) {
    std::size_t arity = 0;
    const std::string_view digits = parts[1];
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), arity);
    if (error != std::errc() || end != digits.data() + digits.size())
      throw Mistake{"a number of arguments belongs behind the /, as in p/2"};
    pattern_.arity = arity;
    name = parts[0];
  }
  const std::size_t open = name.find('(');
  if (open != std::string_view::npos && name[0] != '"') {
    const std::string_view arguments = name.substr(open + 1, name.size() - open - 2);
    const std::size_t count = arguments.empty() ? 0 : split(arguments, ',').size();
    std::string help(name.substr(0, open));
    ((help += '/') += std::to_string(count)) += " names the relation with ";
    throw Mistake{help += counted(count, "argument")};
  }
  add(PatternKind::kRelation, {}, needed_name(name, "a relation"));
}

}    // namespace

ReadPatterns read_item_patterns(std::string_view text) {
  ReadPatterns read;
  std::string_view current = text;
  try {
    for (const std::string_view part : split(text, ',')) {
      current = part;
      if (part.find_first_not_of(kBlanks) == std::string_view::npos) continue;
      read.patterns.push_back(PatternText(part).read());
    }
  } catch (const Mistake& mistake) {
    std::string told("the filter ");
    ((told += current) += " cannot be read: ") += mistake.help;
    read.mistake = std::move(told);
  }
  return read;
}

}    // namespace workbench
