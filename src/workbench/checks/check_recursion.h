#pragma once
// check_recursion.h - rules that hang on themselves: those that never apply, and those that never
// come to an end.

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "workbench/checks/check_relations.h"

namespace workbench {

class Recursion {
 public:
  Recursion(CheckContext& context, const Relations& relations, bool has_maxint)
      : context_(context), relations_(relations), has_maxint_(has_maxint) {}

  // A statement that the relations have looked at. Templates are left out: what they are given is
  // not known.
  void look_at(const zarel::WrittenStatement& statement);
  void report(const ForeignText& foreign);

 private:
  struct Rule {
    std::vector<std::uint32_t> heads;     // relations, each sign one of its own
    std::vector<std::uint32_t> body;      // positive literals alone
    std::vector<zarel::SourceSpan> at;    // of each of those
    zarel::SourceSpan head;
  };
  struct Step {
    std::uint32_t to = 0;    // a relation of the body
    std::uint32_t rule = 0;
  };
  struct Growing {    // a rule that may make ever more, when it is recursive
    zarel::WrittenStatement statement;
    std::uint32_t rule;
  };

  std::uint32_t count() const { return static_cast<std::uint32_t>(2 * relations_.all().size()); }
  std::optional<std::uint32_t> number_of(const zarel::WrittenStatement& of,
                                         const zarel::WrittenNode& atom) const;
  std::string name_of(std::uint32_t relation) const;
  void make_steps();
  void find_components();
  std::vector<char> fireable(const ForeignText& foreign) const;
  void report_never_firing(const ForeignText& foreign);
  struct Round;
  struct Circle {               // of facts
    zarel::SourceSpan place;    // where they are read
    std::string on_it;
  };
  std::optional<Round> round_of(const zarel::WrittenStatement& rule) const;
  static const zarel::WrittenNode* longer_term(const Round& round);
  static const zarel::WrittenNode* greater_number(const Round& round);
  std::optional<Circle> circle_of(const Round& round);
  void report_endless(const Growing& growing);
  void tell_endless(const Growing& growing, const zarel::WrittenNode& grown, const Round& round,
                    bool is_number, const Circle* circle = nullptr);
  std::vector<Step> path(std::uint32_t from, std::uint32_t to) const;

  CheckContext& context_;
  const Relations& relations_;
  bool has_maxint_;
  std::vector<Rule> rules_;
  std::vector<Growing> growing_;
  std::vector<std::vector<Step>> steps_;      // by head
  std::vector<std::uint32_t> component_;      // by relation
  int circles_ = 10;                          // that may still be looked for in facts
  std::unordered_set<std::uint32_t> told_;    // of those, as endless
};

}    // namespace workbench
