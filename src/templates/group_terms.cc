#include "templates/group_terms.h"

#include "templates/linking.h"

namespace zarel {

bool is_marker(const TERMT& parameter) {
  return parameter.kind == TermKind::kAsterisk || parameter.kind == TermKind::kDollar;
}

std::vector<TERMT> getGroupBy(const INVOCATIONATOM& invocation) {
  std::vector<TERMT> group_by;
  for (const ATOMT& actual : invocation.actuals.positive()) {
    for (const TERMT& term : actual.terms()) {
      if (is_marker(term)) continue;
      group_by.push_back(group_variable(static_cast<int>(group_by.size()), term));
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
      if (is_marker(term) || term.kind == TermKind::kAnonymous) continue;
      term = group_variable(count++, term);
    }
    modified.push_back(atom.with_terms(terms, atom.asterisk_count()));
  }
  return modified;
}

}    // namespace zarel
