#include <algorithm>
#include <iostream>
#include <string>

#include "workbench/checked_program.h"
#include "workbench/commands.h"
#include "workbench/messages/words.h"

namespace workbench {
namespace {

constexpr std::size_t kPiece = std::size_t{64} * 1024;    // bytes handed to the stream at once

void append_place(std::string& out, const zarel::Place& place, const SourceTexts& texts) {
  if (!place.is_known()) return;
  ((out += texts.name(place.first.file)) += ':') += std::to_string(place.first.line);
}

// What an expansion does to a line, from the inside outwards.
void append_step(std::string& out, const zarel::OriginStep& step, const SourceTexts& texts) {
  if (step.template_name.empty()) return;
  (out += "%   from the template ") += step.template_name;
  if (step.invocation.is_known()) out += ", used at ";
  append_place(out, step.invocation, texts);
  out += '\n';
}

std::string comment_of(const zarel::LineOrigin& origin, SourceTexts& texts) {
  std::string comment;
  if (!origin.place.is_known()) return comment;
  const zarel::Position& first = origin.place.first;
  comment += "% ";
  append_place(comment, origin.place, texts);
  (comment += "  ") += trimmed(texts.line(first.file, first.line));
  comment += '\n';
  for (const zarel::OriginStep& step : origin.steps) append_step(comment, step, texts);
  return comment;
}

// Each run of lines with the same origin under one comment.
void print_with_origins(const zarel::Program& program, SourceTexts& texts, std::ostream& out) {
  std::string_view rest = program.text();
  std::string last_comment;
  std::string piece;
  for (std::size_t line = 1; !rest.empty(); ++line) {
    const std::size_t end = std::min(rest.find('\n'), rest.size() - 1);
    std::string comment = comment_of(program.origin_of_line(line), texts);
    if (comment != last_comment) {
      if (line != 1) piece += '\n';
      piece += comment;
      last_comment = std::move(comment);
    }
    piece += rest.substr(0, end + 1);
    rest.remove_prefix(end + 1);
    if (piece.size() < kPiece) continue;
    out << piece;
    piece.clear();
  }
  out << piece;
}

}    // namespace

ExitStatus expand(const CommandLine& line) {
  CheckedProgram checked(line);
  const std::optional<ExitStatus> status = checked.prepare();
  checked.reporter().finish();
  if (status) return *status;
  if (line.shows_origins) {
    print_with_origins(checked.program(), checked.texts(), std::cout);
  } else {
    std::cout << checked.program().text();
  }
  return std::cout.flush() ? ExitStatus::kFound : ExitStatus::kOutputFailed;
}

}    // namespace workbench
