#include "workbench/checked_program.h"

#include <cstdint>
#include <iterator>

#include "workbench/messages/findings.h"
#include "workbench/progress/run_progress.h"

namespace workbench {
namespace {

zarel::RunOptions run_options(const CommandLine& line) {
  return {.links_templates = line.links_templates, .skips_faulty_statements = true};
}

}    // namespace

CheckedProgram::CheckedProgram(const CommandLine& line, std::ostream& messages)
    : line_(line),
      program_(run_options(line), [this](const zarel::Diagnostic& finding) { take(finding); }),
      texts_(program_.files()),
      reporter_(line.messages, texts_, messages),
      data_(program_, texts_, [this](const Message& message) { reporter_.report(message); }),
      checks_(
          program_,
          {line.answers.filters, line.search.maxint.has_value(), line.search.consequences_option},
          {[this](std::string_view remark, const zarel::SourceLocation& place) {
             data_.look_at(remark, place);
           },
           [this](const zarel::WrittenStatement& statement) { look_at(statement); }}) {}

void CheckedProgram::look_at(const zarel::WrittenStatement& statement) {
  data_.look_at(statement);
  if (statement.kind != zarel::WrittenStatement::Kind::kRange) return;
  // No integer is above #maxint.
  const auto bound = [](const zarel::WrittenNode& term) -> std::uint64_t {
    return term.kind == zarel::WrittenKind::kMaxint ? UINT32_MAX : term.value;
  };
  const zarel::NameTable& names = program_.run().names;
  const auto bounds = statement.body();
  ranges_.push_back({std::string(names.spelling(statement.name)),
                     std::string(names.spelling(statement.frame_space)), bound(bounds.front()),
                     bound(*std::next(bounds.begin()))});
}

void CheckedProgram::take(const zarel::Diagnostic& finding) {
  if (finding.code == zarel::Code::kUnreadableFile) has_unreadable_file_ = true;
  if (!SyntaxMessages::is_about(finding.code)) {
    return reporter_.report(program_message(finding, texts_));
  }
  if (const auto message = syntax_.message(finding)) reporter_.report(*message);
}

std::optional<ExitStatus> CheckedProgram::prepare(zarel::PlainFacts facts) {
  load(program_, line_.files, line_.folders, loaded_, data_);
  if (has_unreadable_file_ || data_.has_unreadable_file()) return ExitStatus::kUsage;
  if (reporter_.errors() == 0) {
    reporter_.hold();
    checks_.report([this](const Message& message) { reporter_.report(message); });
  }
  enter(Phase::kExpanding);
  if (reporter_.errors() != 0 || !program_.rewrite(facts)) return ExitStatus::kProgramErrors;
  return std::nullopt;
}

}    // namespace workbench
