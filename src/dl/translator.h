#pragma once
// translator.h - turns one statement after the other into clingo's language.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "dl/options.h"
#include "dl/program_parts.h"
#include "dl/rule_text.h"
#include "dl/statement_builder.h"

namespace dl {

class Translator : public StatementReceiver {
 public:
  Translator(const Options& options, ProgramParts& parts, Translation& out);

  void begin_file(std::string_view name);    // statements come from this file now
  void end_program();    // writes what could not be written before; throws Failure

  std::string fact(const Statement& statement) override;
  std::string rule(const Statement& statement) override;
  std::string weak_constraint(const Statement& statement, std::string_view weight,
                              std::string_view level) override;
  std::string query(const Statement& statement) override;
  std::string integer_bound(std::int64_t bound) override;
  std::string include(std::string_view, std::uint32_t) override { return {}; }
  void needs_bound(std::uint32_t line, std::string_view what) override;
  std::string projection(const Statement& statement, const Term& atom, std::uint32_t line) override;

 private:
  Place place(std::uint32_t line) const;
  std::string mark_heads(const Statement& statement);
  void append_heads(const Statement& statement);
  std::string prepare(const Statement& statement);
  void write_weak_constraints(Place place);
  void write_variable_levels(Place place);
  void write_bound(Place place);
  void write_shown(Place place);
  void write_line(const std::string& line, Place place);

  const Options& options_;
  ProgramParts& parts_;
  Translation& out_;

  RuleWriter writer_;
  std::vector<char> kept_;
  bool uses_integers_ = false;
  std::uint32_t projections_ = 0;
  std::string bound_user_;    // what needs a bound, and where; empty if nothing does
  Place bound_place_{};
};

}    // namespace dl
