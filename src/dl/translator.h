#pragma once
// translator.h - turns one statement after the other into clingo's language.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dl/instance_text.h"
#include "dl/instances.h"
#include "dl/options.h"
#include "dl/program_parts.h"
#include "dl/rule_text.h"
#include "dl/statement_builder.h"

namespace dl {

class Translator : public StatementReceiver {
 public:
  // All must outlive the translator.
  Translator(const Options& options, const Sources& sources, ProgramParts& parts, Translation& out);

  // Needed where the folding marks statements as open; must outlive the translator, too.
  void use_instances(Instances& instances) { instances_ = &instances; }

  void begin_file(std::uint32_t file) { file_ = file; }    // statements come from this one now
  // Writes what could not be written before. Returns the mistake that only the whole program shows.
  std::optional<zarel::Diagnostic> end_program();

  MaybeMistake fact(const Statement& statement) override;
  MaybeMistake rule(const Statement& statement) override;
  MaybeMistake weak_constraint(const Statement& statement, const Piece& weight,
                               const Piece& level) override;
  MaybeMistake query(const Statement& statement) override;
  MaybeMistake integer_bound(std::int64_t bound, const Piece& number) override;
  void include(std::string_view, const Piece&) override {}
  void needs_bound(std::uint32_t line, const Piece& what) override;
  std::string projection(const Statement& statement, const Term& atom, std::uint32_t line,
                         std::uint32_t column) override;

 private:
  // What needs a bound, as messages name it, and where.
  struct BoundUser {
    std::string name;
    FileRange range;
    std::uint32_t line;
    std::string detail;    // the variable, or the word
  };

  zarel::SourceLocation location(const Statement& statement) const;
  StatementPlace place(const Statement& statement) const;
  MaybeMistake mark_heads(const Statement& statement);
  void append_heads(const Statement& statement);
  template <typename Write>
  MaybeMistake mistake_in(const Statement& statement, Write&& write) const;
  template <typename Write>
  MaybeMistake each_instance(const Statement& statement, VariableUse use, Write&& write);
  std::string write_view(const Statement& statement, const AtomShape& atom);
  void project_negations(Statement& statement, std::vector<Literal>& body);
  void project_negations(Statement& statement);
  MaybeMistake write_rule(const Statement& statement);
  MaybeMistake write_weak_constraint(const Statement& statement, const Piece& weight,
                                     const Piece& level);
  MaybeMistake write_query(const Statement& statement);
  MaybeMistake prepare(const Statement& statement);
  void write_measure_fault(const WeakConstraint& weak, const Piece& measure);
  void write_weak_constraints(const zarel::SourceLocation& end);
  void write_variable_levels(const zarel::SourceLocation& end);
  void write_bound(const zarel::SourceLocation& end);
  void write_shown(const zarel::SourceLocation& end);
  void write_line(const std::string& line, const zarel::SourceLocation& location);

  const Options& options_;
  const Sources& sources_;
  ProgramParts& parts_;
  Translation& out_;

  std::uint32_t file_ = zarel::kNoFile;
  RuleWriter writer_;
  Instances* instances_ = nullptr;
  std::vector<char> kept_;
  bool uses_bound_ = false;
  std::uint32_t projections_ = 0;
  std::optional<BoundUser> bound_user_;    // the first one
  std::optional<Query> left_out_query_;
  FileRange bound_range_;    // of the directive's number
};

}    // namespace dl
