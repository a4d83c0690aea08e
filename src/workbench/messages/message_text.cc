#include "workbench/messages/message_text.h"

#include <algorithm>
#include <string_view>

#include "workbench/messages/characters.h"

namespace workbench {
namespace {

constexpr std::size_t kLineColumns = 100;      // of a source line
constexpr std::size_t kColumnsInFront = 60;    // of the range, where a line is cut
constexpr std::size_t kTextColumns = 400;      // of a message's own texts
constexpr std::size_t kTabStop = 4;
constexpr std::size_t kBytesOfColumn = 16;    // combining characters do not stretch a line further
constexpr std::uint32_t kLinesShown = 3;      // of a range over several lines
constexpr std::string_view kCut = "...";
constexpr char32_t kByteOrderMark = 0xFEFF;

// The bytes of a line that are underlined: from the first to behind the last.
struct Underlined {
  std::size_t begin;
  std::size_t end;
};

// A piece of a source line as it is drawn, and the columns in it that are underlined.
struct Excerpt {
  std::string text;
  std::size_t begin = 0;
  std::size_t end = 0;
};

// Puts an excerpt together, character by character.
class ExcerptBuilder {
 public:
  ExcerptBuilder(std::string_view line, Underlined range) : line_(line), range_(range) {}

  Excerpt build() {
    std::size_t place = start();
    if (place != 0) add(kCut);
    while (place < line_.size() && column_ <= kLineColumns && !is_stretched(place)) {
      if (place <= range_.begin) excerpt_.begin = column_;
      const Character character = character_at(line_, place);
      add(character, line_.substr(place, character.bytes));
      if (place < range_.end) excerpt_.end = column_;
      place += character.bytes;
    }
    if (place <= range_.begin) excerpt_.begin = column_;
    if (place < line_.size() || column_ > kLineColumns) cut();
    excerpt_.end = std::max(std::min(excerpt_.end, column_), excerpt_.begin + 1);
    return std::move(excerpt_);
  }

 private:
  // The byte at which the excerpt begins.
  std::size_t start() const {
    if (fits()) return 0;
    const std::size_t farthest = kColumnsInFront * kBytesOfColumn;
    const std::size_t first = range_.begin > farthest ? range_.begin - farthest : 0;
    std::size_t place = std::min(range_.begin, line_.size());
    for (std::size_t columns = 0; place > first && columns < kColumnsInFront;) {
      place = previous(place);
      columns += width(character_at(line_, place), kTabStop);
    }
    return place <= kCut.size() ? 0 : place;
  }

  // The beginning of the character in front; a byte that belongs to none stands for itself.
  std::size_t previous(std::size_t place) const {
    constexpr std::size_t kLongest = 4;
    for (std::size_t bytes = 2; bytes <= std::min(kLongest, place); ++bytes) {
      if (character_at(line_, place - bytes).bytes == bytes) return place - bytes;
    }
    return place - 1;
  }

  // Whether the line needs no cut.
  bool fits() const {
    if (line_.size() > kLineColumns * kBytesOfColumn) return false;
    std::size_t columns = 0;
    for (std::size_t place = 0; place < line_.size();) {
      const Character character = character_at(line_, place);
      columns += width(character, kTabStop - columns % kTabStop);
      place += character.bytes;
    }
    return columns <= kLineColumns;
  }

  static std::size_t width(const Character& character, std::size_t tab) {
    if (character.code == U'\t') return tab;
    return character.is_shown ? character.width : 1;
  }

  bool is_stretched(std::size_t place) const {
    return excerpt_.text.size() > kLineColumns * kBytesOfColumn && place > range_.begin;
  }

  void add(const Character& character, std::string_view bytes) {
    if (character.code == U'\t') {
      add(std::string_view("    ").substr(column_ % kTabStop));
      return;
    }
    if (character.code == kByteOrderMark) return;
    excerpt_.text += character.is_shown ? bytes : kReplacement;
    count(character.is_shown ? character.width : 1);
  }

  void add(std::string_view plain) {
    excerpt_.text += plain;
    count(plain.size());
  }

  void count(std::size_t columns) {
    column_ += columns;
    if (column_ > kLineColumns - kCut.size()) return;
    last_fitting_ = excerpt_.text.size();
    last_column_ = column_;
  }

  void cut() {
    excerpt_.text.resize(last_fitting_);
    excerpt_.text += kCut;
    column_ = last_column_ + kCut.size();
    excerpt_.begin = std::min(excerpt_.begin, last_column_);
  }

  std::string_view line_;
  Underlined range_;
  Excerpt excerpt_;
  std::size_t column_ = 0;
  std::size_t last_fitting_ = 0;    // how much of the text leaves room for the sign of a cut
  std::size_t last_column_ = 0;
};

enum class Style { kBold, kError, kWarning, kNote, kHelp, kMargin };

constexpr std::string_view escape_of(Style style) {
  switch (style) {
    case Style::kBold:
      return "\x1B[1m";
    case Style::kError:
      return "\x1B[1;31m";
    case Style::kWarning:
      return "\x1B[1;35m";
    case Style::kNote:
      return "\x1B[1;36m";
    case Style::kHelp:
      return "\x1B[1;32m";
    case Style::kMargin:
      return "\x1B[34m";
  }
  return {};
}

constexpr std::string_view kPlain = "\x1B[0m";

Style style_of(Severity severity) {
  if (severity == Severity::kError) return Style::kError;
  return severity == Severity::kWarning ? Style::kWarning : Style::kNote;
}

// Draws one message.
class Drawing {
 public:
  Drawing(SourceTexts& texts, Colours colours) : texts_(texts), colours_(colours) {}

  std::string draw(const Message& message, Severity severity) {
    head(message.place, severity, message.text);
    ((text_ += " [") += message.code) += "]\n";
    source(message.place, style_of(severity), message.label);
    if (!message.help.empty()) tail("help", Style::kHelp, message.help);
    for (const zarel::Note& note : message.notes) add(note);
    return std::move(text_);
  }

 private:
  void add(const zarel::Note& note) {
    if (!note.place.is_known()) return tail("note", Style::kNote, note.text);
    head(note.place, Severity::kNote, note.text);
    text_ += '\n';
    source(note.place, Style::kNote, {});
  }

  // "FILE:LINE:COLUMN: error: TEXT"
  void head(const zarel::Place& place, Severity severity, std::string_view text) {
    if (place.is_known()) {
      std::string where = shown_text(texts_.name(place.first.file), kTextColumns);
      if (place.first.line != 0) {
        (where += ':') += std::to_string(place.first.line);
        (where += ':') += std::to_string(texts_.column(place.first));
      }
      styled(Style::kBold, where += ':');
      text_ += ' ';
    }
    styled(style_of(severity), std::string(word_for(severity)) += ':');
    (text_ += ' ') += shown_text(text, kTextColumns);
  }

  void tail(std::string_view word, Style style, std::string_view text) {
    text_ += "  ";
    styled(style, std::string(word) += ':');
    ((text_ += ' ') += shown_text(text, kTextColumns)) += '\n';
  }

  // The lines of the range; what is said of it stands under the last one.
  void source(const zarel::Place& place, Style style, std::string_view label) {
    if (!place.is_known() || !texts_.has_line(place.first.file, place.first.line)) {
      if (!label.empty()) tail("note", Style::kNote, label);
      return;
    }
    const bool is_in_one_file = place.last.file == place.first.file;
    const std::uint32_t last = is_in_one_file ? place.last.line : place.first.line;
    if (last < place.first.line + kLinesShown) {
      for (std::uint32_t line = place.first.line; line <= last; ++line) {
        source_line(place, line, style, line == last ? label : std::string_view());
      }
    } else {
      source_line(place, place.first.line, style, label);
    }
  }

  void source_line(const zarel::Place& place, std::uint32_t number, Style style,
                   std::string_view label) {
    const std::string_view line = line_of(place.first.file, number);
    const Underlined range = range_in(line, place, number);
    const Excerpt excerpt = ExcerptBuilder(line, range).build();
    const std::string digits = std::to_string(number);
    margin(digits);
    if (!excerpt.text.empty()) (text_ += ' ') += excerpt.text;
    text_ += '\n';
    if (range.begin == line.size() && number != place.first.line) return;
    margin(std::string(digits.size(), ' '));
    text_.append(excerpt.begin + 1, ' ');
    std::string marks(excerpt.end - excerpt.begin, '^');
    if (place.last.line >= place.first.line + kLinesShown) marks += kCut;
    if (!label.empty()) (marks += ' ') += shown_text(label, kTextColumns);
    styled(style, marks);
    text_ += '\n';
  }

  void margin(const std::string& number) { styled(Style::kMargin, ("  " + number) += " |"); }

  // Without the signs of its ends.
  std::string_view line_of(std::uint32_t file, std::uint32_t number) {
    std::string_view line = texts_.line(file, number);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
  }

  // Of several lines: the first from the place on, the others from their first sign on.
  static Underlined range_in(std::string_view line, const zarel::Place& place,
                             std::uint32_t number) {
    const bool is_first = number == place.first.line;
    const bool is_last = number == place.last.line && place.first.file == place.last.file;
    const std::size_t first = std::min(line.find_first_not_of(" \t"), line.size());
    const std::size_t begin = is_first ? place.first.column - 1 : first;
    const std::size_t end = is_last ? place.last.column : line.find_last_not_of(" \t") + 1;
    return {begin, std::max(end, begin + 1)};
  }

  void styled(Style style, std::string_view text) {
    if (colours_ == Colours::kNone) {
      text_ += text;
    } else {
      ((text_ += escape_of(style)) += text) += kPlain;
    }
  }

  SourceTexts& texts_;
  Colours colours_;
  std::string text_;
};

}    // namespace

std::string_view word_for(Severity severity) {
  switch (severity) {
    case Severity::kError:
      return "error";
    case Severity::kWarning:
      return "warning";
    case Severity::kNote:
      return "note";
  }
  return {};
}

std::string drawn(const Message& message, Severity severity, SourceTexts& texts, Colours colours) {
  return Drawing(texts, colours).draw(message, severity);
}

}    // namespace workbench
