#include "templates/marker_replacement.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <type_traits>

#include "model/atom_order.h"
#include "model/printer.h"
#include "model/program.h"
#include "model/run.h"
#include "templates/invocations.h"
#include "templates/legend.h"

namespace zarel {
namespace {

static_assert(std::is_nothrow_move_constructible_v<CLAUSET>,
              "clauses are moved, not copied, when CLAUSES grows: their literals stay in place");

class ContentHash {
 public:
  void add(std::uint64_t value) {
    value_ = (value_ ^ value) * 0x9e3779b97f4a7c15U;
    value_ ^= value_ >> 32U;
  }
  void add(std::span<const TERMT> terms) {
    add(terms.size());
    for (const TERMT& term : terms) {
      add(static_cast<std::uint64_t>(term.kind) << 32U | term.index());
    }
  }
  std::uint64_t value() const { return value_; }

 private:
  std::uint64_t value_ = 1;
};

std::uint64_t content_hash(const ATOMT& marker) {
  ContentHash hash;
  hash.add(marker.predicate());
  hash.add(marker.invocation().expansion_key);
  hash.add(marker.terms());
  for (const ATOMT& actual : marker.invocation().actuals.elements()) {
    hash.add(actual.predicate());
    hash.add(actual.terms());
  }
  return hash.value();
}

}    // namespace

void MarkerIndex::catch_up() {
  std::vector<CLAUSET>& clauses = CLAUSES();
  for (; clauses_seen_ < clauses.size(); ++clauses_seen_) add(clauses[clauses_seen_].body());
}

void MarkerIndex::add(std::span<Literal> body) {
  for (Literal& literal : body) {
    if (literal.atom.payload() == ATOMT::Payload::kInvocation) {
      literals_[content_hash(literal.atom)].push_back(&literal);
    } else if (literal.atom.is_aggregate()) {
      add(literal.atom.aggregate().body.elements());
    }
  }
}

void MarkerIndex::replace(const ATOMT& marker, const ATOMT& replacement) {
  catch_up();
  const auto found = literals_.find(content_hash(marker));
  if (found == literals_.end()) return;
  std::vector<Literal*>& literals = found->second;
  const auto others = std::remove_if(literals.begin(), literals.end(), [&](Literal* literal) {
    if (literal->atom.payload() != ATOMT::Payload::kInvocation) return true;
    if (!equal(literal->atom, marker)) return false;
    literal->atom = replacement;
    return true;
  });
  literals.erase(others, literals.end());
  if (literals.empty()) literals_.erase(found);
}

MarkerIndex& marker_index() {
  return current_run().parts.get<MarkerIndex>();
}

void ReplaceAtom(const INVOCATIONATOM& invocation, const ATOMT& replacement) {
  marker_index().replace(invocation.marker ? *invocation.marker : ATOMT(invocation), replacement);
}

void StandardizeAtomInvocation(const INVOCATIONATOM& invocation, std::string_view generated,
                               std::ostream& legend) {
  const ATOMT replacement(generated, getAuxTerms(invocation), PREDICATE_NAMETS::TYPE::kUnknown);
  Text text;
  append_text(text, replacement);
  text += " : ";
  append_invocation(text, invocation);
  write_legend_line(legend, text.view());
  ReplaceAtom(invocation, replacement);
}

}    // namespace zarel
