#pragma once
// check_frames.h - frames that say something else than they look like.

#include <unordered_set>
#include <vector>

#include "workbench/checks/check_relations.h"

namespace workbench {

class Frames {
 public:
  Frames(CheckContext& context, const Relations& relations)
      : context_(context), relations_(relations) {}

  void look_at(const zarel::WrittenStatement& clause, bool is_of_program);

  // When all was read.
  void report();

 private:
  struct Membership {    // with attributes behind it, or between function terms
    zarel::NameId object, of;
    std::string object_text, class_text, attribute_text;
    zarel::SourceSpan place;
    bool is_fact;
  };
  struct Conditional {
    zarel::SourceSpan place;
    std::vector<std::pair<zarel::NameId, std::size_t>> functors;
    std::string object_text, class_text;
    bool is_certain;    // both sides are function terms with variables
  };

  void look_at_membership(const zarel::WrittenStatement& clause, const zarel::WrittenNode& node);
  void report_head_values(const zarel::WrittenStatement& rule);
  std::unordered_set<zarel::NameId> settled_variables(const zarel::WrittenStatement& rule) const;
  bool comes_from_rows(const zarel::WrittenStatement& rule, zarel::NameId variable) const;
  std::string term_text(const zarel::WrittenStatement& clause,
                        const zarel::WrittenNode& term) const;
  std::string head_of_term(const zarel::WrittenNode& term) const;

  CheckContext& context_;
  const Relations& relations_;
  std::vector<Membership> memberships_;
  std::vector<Conditional> conditionals_;
  std::vector<zarel::WrittenStatement> head_values_;    // rules to be looked at in the end
  std::unordered_set<zarel::NameId> objects_;           // constants that have attributes themselves
  bool has_choice_ = false;    // a disjunctive head, or a template: an answer set may hold one row
};

}    // namespace workbench
