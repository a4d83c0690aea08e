#pragma once
// term_builder.h - what the grammar's actions on terms call, and the lists of terms.

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/report.h"
#include "model/term.h"
#include "parser/flat_atom.h"
#include "parser/integer_bounds.h"
#include "parser/list_stack.h"
#include "parser/qualified_constants.h"
#include "parser/token_values.h"
#include "parser/written_tree.h"

namespace zarel {

using TermsMark = ListStack<TERMT>::Mark;

class TermBuilder {
 public:
  explicit TermBuilder(WrittenTree& tree) : tree_(tree) {}

  TERMT constant(NameId name) {    // of a small letter or quoted
    if (tree_.is_open()) tree_.leaf(WrittenKind::kConstant, name);
    return TERMT::constant(name);
  }
  TERMT variable(NameId name) {
    if (tree_.is_open()) tree_.leaf(WrittenKind::kVariable, name);
    return newTERMT(name);
  }
  TERMT anonymous() {
    if (tree_.is_open()) tree_.leaf(WrittenKind::kAnonymous);
    return TERMT::anonymous();
  }
  TERMT integer(Number number) {
    if (tree_.is_open()) tree_.leaf(WrittenKind::kInteger, {}, number.value);
    return bounds_.integer(number.value);
  }
  TERMT maxint() {
    if (tree_.is_open()) tree_.leaf(WrittenKind::kMaxint);
    return bounds_.maxint();
  }
  TERMT qualified(const NamePair& prefix_and_local);    // an unknown prefix counts an error
  TERMT function(WrittenName functor,
                 TermsMark arguments);                         // a quoted functor counts an error
  NameId disjunction_name() { return names().intern("v"); }    // where the word stands for a name

  // The markers among the parameters of an actual predicate.
  TERMT asterisk() {
    if (tree_.is_open()) tree_.leaf(WrittenKind::kAsterisk);
    return TERMT::asterisk();
  }
  TERMT dollar() {
    if (tree_.is_open()) tree_.leaf(WrittenKind::kDollar);
    return TERMT::dollar();
  }

  // The parts of a weak constraint's cost. A weight that is cut or too great is reported.
  TERMT weight(Number whole);
  TERMT weight(Number whole, Number fraction);
  TERMT level(Number number);

  // The arguments of a flat atom, which is what is read, as the parts one by one would be.
  TermsMark flat_arguments(const FlatAtom& atom);

  // Lists of terms while they are read.
  TermsMark empty_list() const { return lists_.empty_list(); }
  TermsMark first(const TERMT& term) { return lists_.first(term); }
  TermsMark next(TermsMark list, const TERMT& term) { return lists_.next(list, term); }
  std::span<const TERMT> take(TermsMark list) { return lists_.take(list); }
  std::size_t size(TermsMark list) const { return lists_.size(list); }

  IntegerBounds& bounds() { return bounds_; }
  const ShortQualifiedConstants& short_constants() const { return short_constants_; }

  void clear() { lists_.clear(); }    // drops the lists that nothing has taken

 private:
  std::optional<TERMT> new_qualified(NameId prefix, std::string_view local);
  TERMT flat_integer(const FlatPart& part);
  TERMT flat_qualified(const FlatAtom& atom, const FlatPart& prefix, const FlatPart& local);

  WrittenTree& tree_;
  IntegerBounds bounds_;
  QualifiedConstants qualified_constants_;
  ShortQualifiedConstants short_constants_;
  std::string address_;    // of the last new qualified constant
  std::size_t address_opening_ = 0;
  std::optional<NameId> address_prefix_;
  ListStack<TERMT> lists_;

  struct OpenFunction {
    NameId functor;
    TermsMark around;    // the list that it stands in
  };
  std::vector<OpenFunction> open_functions_;    // of a flat atom
};

// Where a part of the flat atom stands that the work is at.
SourceRange place_in_flat_atom(const Work& work, const FlatPart& part);

}    // namespace zarel
