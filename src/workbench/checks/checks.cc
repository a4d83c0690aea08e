#include "workbench/checks/checks.h"

#include <utility>

#include "workbench/checks/check_constants.h"
#include "workbench/checks/check_frames.h"
#include "workbench/checks/check_recursion.h"
#include "workbench/checks/check_relations.h"
#include "workbench/checks/check_safety.h"
#include "workbench/checks/check_statement.h"
#include "workbench/checks/check_templates.h"

namespace workbench {
struct Checks::State : zarel::StatementObserver {
  State(zarel::Program& of, CheckOptions chosen, ReadingWatch told)
      : program(of), options(std::move(chosen)), watch(std::move(told)), context(program.run()) {
    program.run().statement_observer = this;
  }
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  ~State() override { program.run().statement_observer = nullptr; }

  void statement(const zarel::WrittenStatement& statement) override {
    using enum zarel::WrittenStatement::Kind;
    watch.statement(statement);
    if (statement.kind == kInclude || statement.kind == kIncludeLibrary) {
      foreign.add_file(context.spelling(statement.name), program.files()[statement.span.file].path);
      return;
    }
    templates.look_at(statement);
    relations.look_at(statement);
    recursion.look_at(statement);
    constants.look_at(statement);
    if (statement.kind == kTemplate) {
      for (const auto& clause : statement.clauses) clause_of(ClauseScope::kTemplate, clause);
    } else {
      clause_of(ClauseScope::kProgram, statement);
    }
  }

  void flat_fact(const zarel::WrittenFlatFact& fact) override {
    templates.look_at(fact);
    relations.look_at(fact);
  }

  void remark(std::string_view text, const zarel::SourceLocation& place) override {
    watch.remark(text, place);
  }

  // What only follows from a variable without a value is not told.
  void clause_of(ClauseScope scope, const zarel::WrittenStatement& clause) {
    frames.look_at(clause, scope == ClauseScope::kProgram);
    check_weight(clause, context);
    if (clause.kind == zarel::WrittenStatement::Kind::kQuery) check_query(clause, context);
    if (!check_safety(clause, scope, context)) check_single_variables(clause, context);
  }

  // A verbatim text may hold a query.
  void report_query_option() {
    if (options.query_option.empty() || !program.run().queries.empty() || !foreign.is_empty())
      return;
    context
        .tell("no-query", {},
              concat({"there is no query that ", options.query_option, " is about"}))
        .help = "write one at the end of the program: p(X)?";
  }

  zarel::Program& program;
  CheckOptions options;
  ReadingWatch watch;
  CheckContext context;
  ForeignText foreign;
  Templates templates{context};
  Relations relations{context};
  Recursion recursion{context, relations, options.has_maxint};
  Constants constants{context};
  Frames frames{context, relations};
};

Checks::Checks(zarel::Program& program, const CheckOptions& options, ReadingWatch watch)
    : state_(std::make_unique<State>(program, options, std::move(watch))) {}

Checks::~Checks() = default;

void Checks::report(const MessageSink& sink) {
  const zarel::Run::Scope scope(state_->program.run());
  if (!state_->program.verbatim().empty()) state_->foreign.add(state_->program.verbatim());
  state_->templates.report();
  state_->relations.report(state_->options.filters, state_->foreign);
  state_->recursion.report(state_->foreign);
  state_->constants.report(state_->foreign);
  state_->frames.report();
  state_->report_query_option();
  state_->context.hand_over(sink);
}

}    // namespace workbench
