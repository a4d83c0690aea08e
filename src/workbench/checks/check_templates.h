#pragma once
// check_templates.h - templates that nothing uses, and formal predicates that nothing reads.

#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "workbench/checks/check_context.h"

namespace workbench {

class Templates {
 public:
  explicit Templates(CheckContext& context) : context_(context) {}

  void look_at(const zarel::WrittenStatement& statement);
  void look_at(const zarel::WrittenFlatFact& /*fact*/) { has_program_ = true; }
  void report();

 private:
  struct Definition {
    zarel::NameId name;
    zarel::SourceSpan place;
    std::vector<zarel::NameId> invoked;
  };
  static void note_invoked(const zarel::WrittenStatement& clause,
                           std::vector<zarel::NameId>& names);
  void report_unread(const zarel::WrittenStatement& definition);

  CheckContext& context_;
  std::vector<Definition> definitions_;
  std::vector<zarel::NameId> invoked_;    // by the program itself
  bool has_program_ = false;              // besides templates
};

}    // namespace workbench
