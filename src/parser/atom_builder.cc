#include "parser/atom_builder.h"

#include <string>

#include "model/names.h"
#include "model/run.h"
#include "parser/reading_scope.h"
#include "parser/syntax_error.h"

namespace zarel {

void AtomBuilder::tell(WrittenName name, std::size_t arity, NameId frame_space, Negation negation) {
  WrittenNode& node = tree_.named(WrittenKind::kAtom, arity, name.id, name.place);
  node.second_name = frame_space;
  node.is_strongly_negated = negation == Negation::kStrong;
}

ATOMT AtomBuilder::atom(WrittenName name, NameId frame_space, Negation negation) {
  if (tree_.is_open()) tell(name, 0, frame_space, negation);
  if (definition_.is_open()) return plain_atom(name, {}, negation);
  return addDefaultToAtomt(encoded_bare_atom(name.id, negation), frame_space);
}

ATOMT AtomBuilder::plain_atom(WrittenName name, std::span<const TERMT> terms,
                              Negation negation) const {
  const bool is_labelled = definition_.is_open();
  const std::string_view written = names().spelling(name.id);
  if (is_labelled) {
    const ReadingScope at_name(work(), name.place);
    check_template_name(written);
  }
  const std::string text = is_labelled ? getNameAtomLabeled(written) : std::string(written);
  if (negation == Negation::kStrong) return newNegativeATOMT(text, terms);
  return {text, terms, PREDICATE_NAMETS::TYPE::kUnknown};
}

bool AtomBuilder::allows_frame_space() const {
  if (definition_.is_open()) report_syntax_error();
  return !definition_.is_open() || current_run().options.skips_faulty_statements;
}

Literal AtomBuilder::builtin(BUILTIN code, std::initializer_list<TERMT> terms) {
  if (tree_.is_open()) {
    const bool is_comparison = kBuiltins[static_cast<std::size_t>(code)].is_comparison;
    tree_.node(is_comparison ? WrittenKind::kComparison : WrittenKind::kComputation, terms.size(),
               static_cast<std::uint32_t>(code));
  }
  return literal(newBuiltin(code, {terms.begin(), terms.size()}));
}

Literal AtomBuilder::arithmetic(BUILTIN code, std::initializer_list<TERMT> terms) {
  if (tree_.is_open()) tree_.move_first_behind(terms.size());
  return builtin(code, terms);
}

Literal AtomBuilder::external(NameId name, TermsMark list) {
  const std::span<const TERMT> terms = terms_.take(list);
  if (tree_.is_open()) tree_.named(WrittenKind::kExternal, terms.size(), name);
  return literal(ATOMT::external(names().spelling(name), terms, {}));
}

}    // namespace zarel
