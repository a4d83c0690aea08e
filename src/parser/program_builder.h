#pragma once
// program_builder.h - what the grammar's actions call: a builder for each kind of construct, and
// what is common to all statements.

#include <optional>
#include <string_view>
#include <vector>

#include "model/report.h"
#include "parser/aggregate_builder.h"
#include "parser/atom_builder.h"
#include "parser/body_builder.h"
#include "parser/clause_builder.h"
#include "parser/frame_builder.h"
#include "parser/frame_spaces.h"
#include "parser/invocation_builder.h"
#include "parser/reading_scope.h"
#include "parser/statement_builder.h"
#include "parser/template_builder.h"
#include "parser/term_builder.h"
#include "parser/written_tree.h"

namespace zarel {

// One builder reads all files of a program. Its parts own everything that semantic values refer to
// until the statement's end, so that a statement dropped in the middle leaks nothing; finished
// clauses and queries go to CLAUSES and QUERIES. Errors are reported to the run.
class ProgramBuilder {
 public:
  ProgramBuilder() : work_(work()), tree_(work_) {}
  ProgramBuilder(const ProgramBuilder&) = delete;
  ProgramBuilder& operator=(const ProgramBuilder&) = delete;

  void start_file();

  // While a file is parsed, the place of the construct whose action runs.
  void follow(const SourceRange& place) { work_.reading = &place; }

  // The builder, for one call, with what it reports and makes at another place.
  class Placed {
   public:
    Placed(ProgramBuilder& builder, const SourceRange& place)
        : builder_(builder), scope_(builder.work_, &place) {}
    ProgramBuilder* operator->() const { return &builder_; }

   private:
    ProgramBuilder& builder_;
    ReadingScope scope_;
  };
  Placed at(const SourceRange& place) { return {*this, place}; }

  TermBuilder& terms() { return terms_; }
  FrameSpaces& frame_spaces() { return frame_spaces_; }
  AtomBuilder& atoms() { return atoms_; }
  AggregateBuilder& aggregates() { return aggregates_; }
  FrameBuilder& frames() { return frames_; }
  BodyBuilder& bodies() { return bodies_; }
  ClauseBuilder& clauses() { return clauses_; }
  StatementBuilder& statements() { return statements_; }
  TemplateBuilder& templates() { return templates_; }
  InvocationBuilder& invocations() { return invocations_; }

  void end_statement();                                  // drops what it was made of
  void skipped_statement();                              // after a syntax error: counts it
  void parser_failed(std::string_view message) const;    // as the generated parser says it

  // The parser refuses a token, where something of these words could stand.
  void refuse(const SourceRange& token, std::vector<std::string_view> expected);
  // Of what was refused and not told so far: whether a whole statement stands in front of it, and
  // the place of what was read last.
  bool could_end_statement() const;
  const SourceRange& read_last() const { return read_last_; }
  // Tells it; nothing where an action had told what is wrong. The statement stands from its first
  // token to the refused one.
  void report_refusal(const SourceRange& statement, bool lacks_full_stop);

 private:
  Place place_in_file(const SourceRange& range) const;

  Work& work_;    // the run's
  std::vector<std::string_view> expected_;
  std::optional<SourceRange> refused_;    // the token
  SourceRange read_last_{};
  WrittenTree tree_;
  FrameSpaces frame_spaces_{tree_};
  TermBuilder terms_{tree_};
  FrameBuilder frames_{tree_, terms_.bounds()};
  TemplateBuilder templates_{frame_spaces_, tree_};
  AtomBuilder atoms_{terms_, templates_, tree_};
  AggregateBuilder aggregates_{terms_, tree_};
  BodyBuilder bodies_{templates_, tree_};
  InvocationBuilder invocations_{terms_, atoms_, frame_spaces_, templates_, tree_};
  ClauseBuilder clauses_{terms_, atoms_, bodies_, frame_spaces_, templates_, tree_};
  StatementBuilder statements_{terms_.bounds(), invocations_, tree_};
};

}    // namespace zarel
