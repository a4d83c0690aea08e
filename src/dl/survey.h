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
struct Include {
  std::string name;
  std::uint32_t line;
};

// Takes the statements of the first reading: see Note [two readings]. It finds no mistakes of its
// own.
class Survey : public StatementReceiver {
 public:
  bool has_query() const { return has_query_; }
  bool has_weak_constraints() const { return has_weak_constraints_; }
  bool has_sums() const { return has_sums_; }                     // #sum or #avg
  std::optional<std::int64_t> bound() const { return bound_; }    // the first that is given
  // What of the program can be folded, when all of it was taken.
  Folding folding() const;
  std::vector<Include> take_includes();    // those found since the last call

  std::string fact(const Statement& statement) override;
  std::string rule(const Statement& statement) override;
  std::string weak_constraint(const Statement& statement, std::string_view weight,
                              std::string_view level) override;
  std::string query(const Statement& statement) override;
  std::string integer_bound(std::int64_t bound) override;
  std::string include(std::string_view name, std::uint32_t line) override;
  void needs_bound(std::uint32_t, std::string_view) override {}
  std::string projection(const Statement&, const Term& atom, std::uint32_t) override;

 private:
  void see_body(const Statement& statement, const std::vector<Literal>& body);
  void see(const Statement& statement);

  Folding folding_;
  std::vector<Include> includes_;
  std::optional<std::int64_t> bound_;
  bool has_query_ = false;
  bool has_weak_constraints_ = false;
  bool has_sums_ = false;
};

}    // namespace dl
