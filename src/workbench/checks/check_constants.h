#pragma once
// check_constants.h - constants that are hardly what was meant, and facts that contradict each other.

#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "workbench/checks/check_context.h"
#include "workbench/messages/source_texts.h"
#include "workbench/syntax/foreign_text.h"

namespace workbench {

class Constants {
 public:
  explicit Constants(CheckContext& context) : context_(context) {}

  void look_at(const zarel::WrittenStatement& statement);

  // When all was read. Facts that came whole are looked through only for what is in question.
  void report(const ForeignText& foreign);

 private:
  struct Use {
    zarel::SourceSpan first;
    std::uint32_t statement = 0;
    bool is_elsewhere = false;    // in another statement, too
  };
  struct Candidate {    // a rule without variables
    zarel::NameId constant;
    std::uint32_t statement;
    zarel::SourceSpan head, body;
  };

  void look_for_candidate(const zarel::WrittenStatement& rule);
  std::vector<std::pair<zarel::NameId, zarel::NameId>> quoted_pairs() const;
  void find_in_facts(const std::unordered_set<zarel::NameId>& names);
  zarel::Place place_of(zarel::NameId name);
  zarel::Place word_at(const zarel::SourceLocation& location, std::string_view word);
  zarel::Place atom_at(const zarel::SourceLocation& location);
  void report_contradictions();

  CheckContext& context_;
  std::unordered_map<zarel::NameId, Use> uses_;
  std::unordered_map<zarel::NameId, zarel::SourceLocation> in_facts_;    // of those asked for
  std::vector<Candidate> candidates_;
  std::uint32_t statements_ = 0;
  std::optional<SourceTexts> texts_;    // only when a place in a fact is to be shown
};

}    // namespace workbench
