#include "templates/group_terms.h"

#include "templates/template_rules.h"

namespace zarel {

std::vector<TERMT> getGroupBy(const INVOCATIONATOM& invocation) {
  std::vector<TERMT> group_by;
  for (const ATOMT& actual : invocation.actuals.positive()) {
    for (const TERMT& term : actual.terms()) {
      if (term.is_marker()) continue;
      group_by.push_back(template_rules().group_variable(static_cast<int>(group_by.size()), term));
    }
  }
  return group_by;
}

std::vector<ATOMT> modifyCon(const TCONJUNCTION<ATOMT>& atoms) {
  std::vector<ATOMT> modified;
  int count = 0;
  for (const ATOMT& atom : atoms.positive()) {
    const StoredList<TERMT> terms = program_storage().store(atom.terms());
    for (TERMT& term : terms.elements()) {
      if (term.is_marker() || term.kind == TermKind::kAnonymous) continue;
      term = template_rules().group_variable(count++, term);
    }
    modified.push_back(atom.with_terms(terms, atom.asterisk_count()));
  }
  return modified;
}

}    // namespace zarel
