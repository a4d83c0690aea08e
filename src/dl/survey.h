#pragma once
// survey.h - what must be known of the whole program before its first statement is translated.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dl/folding.h"
#include "dl/statement_builder.h"

namespace dl {

// An include line of a file.
struct IncludeLine {
  std::string name;
  zarel::SourceRange range;
};

// Takes the statements of the first reading: see Note [two readings]. It finds no mistakes of its
// own.
class Survey : public StatementReceiver {
 public:
  bool has_query() const { return has_query_; }
  bool has_weak_constraints() const { return has_weak_constraints_; }
  bool has_several_levels() const { return has_several_levels_; }    // of them, or it may have
  bool has_sums() const { return has_sums_; }                        // #sum or #avg
  std::optional<std::int64_t> bound() const { return bound_; }       // the first that is given
  // What of the program can be folded, when all of it was taken, but for what is undecided.
  const Folding& folding() const { return folding_; }
  // The next statements come from the next text.
  void begin_text() { rules_.emplace_back(); }
  // Where the statements that are no facts stand in a text.
  const std::vector<Slice>& rules(std::uint32_t text) const { return rules_[text]; }
  std::vector<IncludeLine> take_includes();    // those found since the last call

  MaybeMistake fact(const Statement& statement) override;
  MaybeMistake rule(const Statement& statement) override;
  MaybeMistake weak_constraint(const Statement& statement, const Piece&, const Piece&) override;
  MaybeMistake query(const Statement& statement) override;
  MaybeMistake integer_bound(std::int64_t bound, const Piece&) override;
  void include(std::string_view name, const Piece& directive) override;
  void needs_bound(std::uint32_t, const Piece&) override {}
  std::string projection(const Statement&, const Term&, std::uint32_t, std::uint32_t) override;

 private:
  void see_body(const Statement& statement, const std::vector<Literal>& body);
  void see(const Statement& statement);

  std::vector<std::vector<Slice>> rules_;    // by text
  Folding folding_;
  std::vector<IncludeLine> includes_;
  std::optional<std::int64_t> bound_;
  bool has_query_ = false;
  bool has_weak_constraints_ = false;
  bool has_several_levels_ = false;
  bool has_sums_ = false;
  std::string level_;    // of the last one
};

}    // namespace dl
