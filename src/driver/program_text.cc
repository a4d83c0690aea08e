#include "driver/program_text.h"

#include "model/printer.h"

namespace zarel {
namespace {

constexpr std::size_t kPiece = std::size_t{64} * 1024;    // bytes handed to a stream at once

void write_piece(std::ostream& out, std::ostream* copy, Text& text) {
  out << text.view();
  if (copy != nullptr) *copy << text.view();
  text.clear();
}

std::size_t written_count() {
  return CLAUSES().size() - static_cast<std::size_t>(nclause());
}

}    // namespace

void write_clauses(std::ostream& out, std::span<const CLAUSET> clauses, std::ostream* copy) {
  Text text;
  for (const CLAUSET& clause : clauses) {
    append_text(text, clause);
    text += '\n';
    if (text.size() >= kPiece) write_piece(out, copy, text);
  }
  write_piece(out, copy, text);
}

void write_queries(std::ostream& out) {
  for (const Body& query : QUERIES()) {
    print_list(out, query, ", ");
    out << "?\n";
  }
}

std::span<const CLAUSET> written_clauses() {
  return std::span<const CLAUSET>(CLAUSES()).first(written_count());
}

std::span<const CLAUSET> generated_clauses() {
  return std::span<const CLAUSET>(CLAUSES()).subspan(written_count());
}

}    // namespace zarel
