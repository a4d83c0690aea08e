#include "zarel/program_text.h"

#include <algorithm>

#include "model/printer.h"
#include "model/run.h"

namespace zarel {
namespace {

constexpr std::ptrdiff_t kSample = 1000;    // clauses that tell how long the text will be
constexpr std::size_t kPiece = std::size_t{64} * 1024;    // bytes handed to a stream at once

std::size_t write_piece(std::ostream& out, Text& text) {
  const std::size_t length = text.size();
  out << text.view();
  text.clear();
  return length;
}

void append_query(Text& text, const Body& query) {
  append_list(text, query, ", ");
  text += "?\n";
}

bool is_plain(const TERMT& term) {
  return term.kind == TermKind::kConstant || term.kind == TermKind::kInteger;
}

bool is_plain_fact(const CLAUSET& clause) {
  const std::span<const ATOMT> head = clause.head();
  return head.size() == 1 && clause.body().empty() && !head.front().is_aggregate() &&
         std::ranges::all_of(head.front().terms(), is_plain);
}

// Whether it is of use to nobody who looks for what must be known before the facts are read. An
// integer that has wrapped is none that can be read.
bool tells_itself_alone(const CLAUSET& plain_fact) {
  const ATOMT& atom = plain_fact.head().front();
  const std::span<const TERMT> terms = atom.terms();
  return atom.payload() == ATOMT::Payload::kTerms && terms.size() > 1 &&
         std::ranges::none_of(terms, [](const TERMT& term) {
           return term.kind == TermKind::kInteger && term.value() < 0;
         });
}

void append_clauses(MappedText& program, std::span<const CLAUSET> clauses, PlainFacts facts) {
  Text text;
  const std::size_t begin = program.text.size();
  for (const CLAUSET& clause : clauses) {
    if (&clause - clauses.data() == kSample) {
      const std::size_t length = (program.text.size() - begin) / kSample * clauses.size();
      program.text.reserve(begin + length + length / 8);
    }
    const bool is_plain = is_plain_fact(clause);
    if (facts == PlainFacts::kLeftOut && is_plain) continue;
    append_text(text, clause);
    text += '\n';
    const auto origin = static_cast<std::uint32_t>(clause.source().origin);
    const LineSource source{clause.source().location, origin};
    if (is_plain && tells_itself_alone(clause)) {
      program.append_plain_fact(text.view(), source);
    } else {
      program.append(text.view(), source);
    }
    text.clear();
  }
}

// Where names are more than the caches hold, those of the facts that come soon are brought from
// memory while others are written.
constexpr std::size_t kNamesInCache = std::size_t{1} << 17U;

template <typename Visit>
void each_constant(const CLAUSET& clause, Visit&& visit) {
  const Fact* const fact = std::get_if<Fact>(&clause.payload());
  if (fact == nullptr) return;
  for (const TERMT& term : fact->head().front().terms()) {
    if (term.kind == TermKind::kConstant) visit(NameId{term.index()});
  }
}

void expect_names(std::span<const CLAUSET> coming) {
  constexpr std::size_t kToText = 6;    // clauses
  constexpr std::size_t kToName = 2 * kToText;
  if (coming.size() <= kToName) return;
  const NameTable& table = names();
  each_constant(coming[kToName], [&](NameId id) { table.expect(id); });
  each_constant(coming[kToText], [&](NameId id) { table.expect_text(id); });
}

std::size_t written_count() {
  return CLAUSES().size() - static_cast<std::size_t>(nclause());
}

}    // namespace

void MappedText::append(std::string_view piece, const LineSource& source) {
  text += piece;
  const std::size_t end = piece.find('\n');
  if (end != piece.npos && end + 1 == piece.size()) return lines.add(source);    // as a rule
  for (auto ends = std::count(piece.begin(), piece.end(), '\n'); ends > 0; --ends) {
    lines.add(source);
  }
}

// Verbatim text may end within a line, which the first fact then ends.
void MappedText::append_plain_fact(std::string_view piece, const LineSource& source) {
  const std::size_t begin = text.size();
  const std::size_t first_line = lines.lines();
  const bool begins_line = begin == 0 || text.back() == '\n';
  append(piece, source);
  if (!begins_line) return;
  if (plain_facts.empty() || plain_facts.back().end != begin) plain_facts.push_back({begin, 0, 0});
  plain_facts.back().end = text.size();
  plain_facts.back().lines += lines.lines() - first_line;
}

std::size_t write_clauses(std::ostream& out, std::span<const CLAUSET> clauses) {
  Text text;
  std::size_t length = 0;
  const bool looks_ahead = names().size() > kNamesInCache;
  for (std::size_t i = 0; i < clauses.size(); ++i) {
    if (looks_ahead) expect_names(clauses.subspan(i));
    append_text(text, clauses[i]);
    text += '\n';
    if (text.size() >= kPiece) length += write_piece(out, text);
  }
  return length + write_piece(out, text);
}

std::size_t write_queries(std::ostream& out) {
  Text text;
  for (const Body& query : QUERIES()) append_query(text, query);
  return write_piece(out, text);
}

MappedText program_text(std::string_view verbatim, PlainFacts facts) {
  const Run& run = current_run();
  MappedText program{std::string(verbatim), run.verbatim_lines};
  for (std::size_t i = 0; i < run.includes.size(); ++i) {
    program.append(run.includes[i] + '\n', {run.include_places[i]});
  }
  append_clauses(program, run.clauses, facts);
  Text text;
  for (std::size_t i = 0; i < run.queries.size(); ++i) {
    append_query(text, run.queries[i]);
    program.append(text.view(), {run.query_places[i]});
    text.clear();
  }
  return program;
}

std::span<const CLAUSET> written_clauses() {
  return std::span<const CLAUSET>(CLAUSES()).first(written_count());
}

std::span<const CLAUSET> generated_clauses() {
  return std::span<const CLAUSET>(CLAUSES()).subspan(written_count());
}

}    // namespace zarel
