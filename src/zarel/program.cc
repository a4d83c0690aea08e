#include "zarel/program.h"

#include <algorithm>
#include <utility>

#include "zarel/phases.h"

namespace zarel {
namespace {

bool has_variable(const ATOMT& atom) {
  const auto is_variable = [](const TERMT& term) { return term.is_variable(); };
  if (!atom.is_aggregate()) return std::ranges::any_of(atom.terms(), is_variable);
  return is_variable(atom.aggregate().lower.term) || is_variable(atom.aggregate().upper.term);
}

// Of the last query, which is the only one that counts.
QueryForm query_form(const std::vector<Body>& queries) {
  if (queries.empty()) return QueryForm::kOpen;
  const Body& query = queries.back();
  for (std::size_t i = 0; i < query.size(); ++i) {
    if (has_variable(query[i].atom)) return QueryForm::kOpen;
  }
  return QueryForm::kGround;
}

}    // namespace

Program::Program(const RunOptions& options, DiagnosticSink sink) : run_(options) {
  const Run::Scope scope(run_);
  reader_.emplace(verbatim_);
  run_.findings.sink = std::move(sink);
}

// False when the run ends in the action, or has ended before.
bool Program::attempt(const std::function<void()>& action) {
  if (has_ended_) return false;
  const Run::Scope scope(run_);
  try {
    action();
  } catch (const RunEnd&) {
    has_ended_ = true;
  }
  return !has_ended_;
}

void Program::read_file(const std::string& path) {
  attempt([&] { reader_->read_file(path, path); });
}

void Program::read_text(std::string_view text, std::string_view name) {
  attempt([&] { reader_->read_text(text, name); });
}

void Program::read_facts(const std::string& path, std::string_view name,
                         const std::function<void(FactBuilder&)>& give) {
  attempt([&] { reader_->read_facts(path, name, give); });
}

bool Program::rewrite(PlainFacts facts) {
  if (run_.findings.errors != 0) return false;
  return attempt([&] {
    std::ostringstream legend;
    expand_templates(legend);
    if (run_.options.OptionSafetyCheck) check_safety();
    rewritten_ = program_text(verbatim_.view(), facts);
  });
}

template <class Source>
int Program::read_answers_from(Source source, AnswerSink& sink) {
  const Run::Scope scope(run_);
  run_.findings.parser_line = 1;
  try {
    return read_answer_sets(source, sink,
                            {&run_.namespaces, query_form_.value_or(query_form(run_.queries))});
  } catch (const RunEnd&) {
    return 1;
  }
}

int Program::read_answers(std::string_view solver_output, AnswerSink& sink) {
  return read_answers_from(solver_output, sink);
}

int Program::read_answers(std::FILE* solver_output, AnswerSink& sink) {
  return read_answers_from(solver_output, sink);
}

void Program::forget_clauses() {
  has_ended_ = true;
  reader_.reset();
  verbatim_ = std::ostringstream();
  query_form_ = query_form(run_.queries);
  run_.queries = std::vector<Body>();
  run_.clauses = std::vector<CLAUSET>();
  run_.storage.release();
}

LineOrigin Program::origin_of_line(std::size_t line) const {
  if (line == 0 || line > rewritten_.lines.lines()) return {};
  const LineSource source = rewritten_.lines.source_of(line);
  LineOrigin result{run_.files.place(source.location), line <= run_.verbatim_lines.lines(), {}};
  for (auto id = static_cast<OriginId>(source.origin); id != OriginId::kWritten;) {
    const Origin& origin = run_.origins[id];
    OriginStep step{origin.kind, {}, {}};
    id = OriginId::kWritten;
    if (origin.template_name) {
      step.template_name = run_.names.spelling(*origin.template_name);
      step.invocation = run_.files.place(origin.invocation.location);
      id = origin.invocation.origin;
    }
    result.steps.push_back(std::move(step));
  }
  return result;
}

}    // namespace zarel
