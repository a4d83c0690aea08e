#include "zarel/program_text.h"

#include "model/printer.h"

namespace zarel {
namespace {

constexpr std::size_t kPiece = std::size_t{64} * 1024;    // bytes handed to a stream at once

std::size_t write_piece(std::ostream& out, Text& text) {
  const std::size_t length = text.size();
  out << text.view();
  text.clear();
  return length;
}

std::size_t written_count() {
  return CLAUSES().size() - static_cast<std::size_t>(nclause());
}

}    // namespace

std::size_t write_clauses(std::ostream& out, std::span<const CLAUSET> clauses) {
  Text text;
  std::size_t length = 0;
  for (const CLAUSET& clause : clauses) {
    append_text(text, clause);
    text += '\n';
    if (text.size() >= kPiece) length += write_piece(out, text);
  }
  return length + write_piece(out, text);
}

std::size_t write_queries(std::ostream& out) {
  Text text;
  for (const Body& query : QUERIES()) {
    append_list(text, query, ", ");
    text += "?\n";
  }
  return write_piece(out, text);
}

std::span<const CLAUSET> written_clauses() {
  return std::span<const CLAUSET>(CLAUSES()).first(written_count());
}

std::span<const CLAUSET> generated_clauses() {
  return std::span<const CLAUSET>(CLAUSES()).subspan(written_count());
}

}    // namespace zarel
