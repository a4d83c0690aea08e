#include "dl/parts/answer_tables.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace dl {
namespace {

constexpr std::string_view kFirstLine = "dl-tables 1";

// A line is a word, numbers, and a text that goes to its end.
class LineWriter {
 public:
  explicit LineWriter(std::string& out, std::string_view word) : out_(out) { out_ += word; }
  ~LineWriter() { out_ += '\n'; }
  LineWriter(const LineWriter&) = delete;
  LineWriter& operator=(const LineWriter&) = delete;

  LineWriter& number(std::int64_t value) {
    (out_ += ' ') += std::to_string(value);
    return *this;
  }
  void text(std::string_view text) {
    out_ += ' ';
    for (const char c : text) {
      if (c == '\\' || c == '\n') out_ += '\\';
      out_ += c == '\n' ? 'n' : c;
    }
  }

 private:
  std::string& out_;
};

class LineParser {
 public:
  explicit LineParser(std::string_view line) : rest_(line) {
    word_ = rest_.substr(0, rest_.find(' '));
    rest_.remove_prefix(std::min(word_.size() + 1, rest_.size()));
  }
  std::string_view word() const { return word_; }
  bool has_more() const { return !rest_.empty(); }
  std::int64_t number() {
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
    is_fine_ = is_fine_ && error == std::errc();
    if (!is_fine_) return 0;
    rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
    if (rest_.starts_with(' ')) rest_.remove_prefix(1);
    return value;
  }
  std::uint32_t small_number() { return static_cast<std::uint32_t>(number()); }
  std::string text() const {
    std::string text;
    for (std::size_t i = 0; i < rest_.size(); ++i) {
      const bool is_escape = rest_[i] == '\\' && i + 1 < rest_.size();
      if (is_escape) ++i;
      text += is_escape && rest_[i] == 'n' ? '\n' : rest_[i];
    }
    return text;
  }
  bool is_fine() const { return is_fine_; }

 private:
  std::string_view word_;
  std::string_view rest_;
  bool is_fine_ = true;
};

// Columns in characters, as they are shown: the texts are not kept.
void write_range(LineWriter& line, const FileRange& range, const Sources& sources) {
  const zarel::Place place = sources.place(range);
  line.number(range.file == zarel::kNoFile ? -1 : static_cast<std::int64_t>(range.file));
  line.number(place.first.line).number(place.first.column);
  line.number(place.last.line).number(place.last.column);
}

FileRange read_range(LineParser& line) {
  FileRange range;
  const std::int64_t file = line.number();
  range.file = file < 0 ? zarel::kNoFile : static_cast<std::uint32_t>(file);
  range.range.first_line = line.small_number();
  range.range.first_column = line.small_number();
  range.range.last_line = line.small_number();
  range.range.last_column = line.small_number();
  return range;
}

bool read_line(LineParser& line, AnswerTables& tables) {
  ProgramParts& parts = tables.program.parts;
  const std::string_view word = line.word();
  if (word == "source") {
    tables.program.sources.add(line.text(), {});
  } else if (word == "brave") {
    tables.reasoning = Reasoning::kBrave;
  } else if (word == "weak") {
    parts.weak_constraints.emplace_back();    // that there is one is all that is asked
    parts.traits.has_weak_constraints = true;
    parts.variable_levels = line.number() != 0;
    while (line.has_more() && line.is_fine()) parts.levels.push_back(line.number());
  } else if (word == "query") {
    Query& query = parts.query.emplace();
    parts.traits.has_query = true;
    query.line = line.small_number();
    query.range = read_range(line);
  } else if (word == "variable" && parts.query) {
    parts.query->variables.push_back(line.text());
  } else if (word == "fault") {
    Fault fault{};
    const std::int64_t kind = line.number();
    if (kind < 0 || kind > static_cast<std::int64_t>(FaultKind::kMeasure)) return false;
    fault.kind = static_cast<FaultKind>(kind);
    fault.line = line.small_number();
    fault.range = read_range(line);
    parts.faults.push_back(fault);
  } else if (word == "fact") {
    parts.facts.insert(line.text());
  } else if (word == "host") {
    tables.host.push_back(line.text());
  } else {
    return false;
  }
  return line.is_fine();
}

}    // namespace

std::string text_of(const AnswerTables& tables) {
  const Sources& sources = tables.program.sources;
  const ProgramParts& parts = tables.program.parts;
  std::string text(kFirstLine);
  text += '\n';
  for (std::uint32_t i = 0; i < sources.size(); ++i) {
    LineWriter(text, "source").text(sources.name(i));
  }
  if (tables.reasoning == Reasoning::kBrave) LineWriter(text, "brave");
  if (!parts.weak_constraints.empty()) {
    LineWriter line(text, "weak");
    line.number(parts.variable_levels ? 1 : 0);
    for (const std::int64_t level : parts.levels) line.number(level);
  }
  if (parts.query) {
    {
      LineWriter line(text, "query");
      write_range(line.number(parts.query->line), parts.query->range, sources);
    }
    for (const std::string& variable : parts.query->variables) {
      LineWriter(text, "variable").text(variable);
    }
  }
  for (const Fault& fault : parts.faults) {
    LineWriter line(text, "fault");
    line.number(static_cast<std::int64_t>(fault.kind)).number(fault.line);
    write_range(line, fault.range, sources);
  }
  std::vector<std::string_view> facts(parts.facts.begin(), parts.facts.end());
  std::ranges::sort(facts);
  for (const std::string_view fact : facts) LineWriter(text, "fact").text(fact);
  for (const std::string& line : tables.host) LineWriter(text, "host").text(line);
  return text;
}

std::optional<AnswerTables> read_tables(std::string_view text) {
  AnswerTables tables;
  bool is_first = true;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    LineParser parser(line);
    if (is_first ? line != kFirstLine : !read_line(parser, tables)) return std::nullopt;
    is_first = false;
  }
  if (is_first) return std::nullopt;
  return tables;
}

}    // namespace dl
