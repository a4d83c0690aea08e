#include "model/report.h"

#include "model/run.h"

namespace zarel {
namespace {

// Swallows what nobody asked for.
std::ostream& no_output() {
  static thread_local std::ostream nowhere(nullptr);
  return nowhere;
}

SourceSpan span_at(const SourceLocation& location) {
  return {location.file, {location.line, location.column, location.line, location.column}};
}

}    // namespace

Work& work() {
  return current_run().work;
}

Place work_place() {
  return place_of(work().where());
}

WorkScope::WorkScope(const ClauseSource& source) : before_(work()) {
  work() = {span_at(source.location), source.origin, nullptr};
}

WorkScope::WorkScope(OriginId origin) : before_(work()) {
  work().origin = origin;
}

Place place_of(const SourceLocation& location) {
  return place_of(span_at(location));
}

Place place_of(const SourceSpan& span) {
  return span.file == kNoFile ? Place{} : current_run().files.place(span);
}

void report(Diagnostic finding) {
  Findings& findings = current_run().findings;
  finding.parser_line = findings.parser_line;
  const DiagnosticKind& kind = kind_of(finding.code);
  if (kind.is_counted) ++findings.parser_errors;
  if (kind.severity == Severity::kError) ++findings.errors;
  if (findings.sink) {
    findings.sink(std::move(finding));
  } else if (findings.kept.size() == Findings::kMostKept) {
    ++findings.left_out;
  } else {
    findings.kept.push_back(std::move(finding));
  }
}

void report(Code code, std::string text) {
  report({code, work_place(), std::move(text)});
}

void end_run(int status) {
  throw RunEnd{status};
}

void report_and_end(Diagnostic finding, int status) {
  report(std::move(finding));
  end_run(status);
}

void report_and_end(Code code, std::string text) {
  report(code, std::move(text));
  end_run(1);
}

std::ostream& standard_output() {
  std::ostream* const output = current_run().output;
  return output == nullptr ? no_output() : *output;
}

}    // namespace zarel
