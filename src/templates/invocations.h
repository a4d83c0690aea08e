#pragma once
// invocations.h - the template invocations of the program under their signatures, and which
// signatures are still to be expanded.

#include <cstdint>
#include <deque>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/text.h"
#include "model/template_records.h"

namespace zarel {

// What stands for each formal predicate of a definition in one expansion.
using BindingList = std::vector<std::pair<std::string, ATOMT>>;

// Invocations in the order in which they were recorded, overall and under each signature.
class InvocationTable {
 public:
  void add(std::uint32_t signature, INVOCATIONATOM invocation);
  bool contains(std::uint32_t signature) const { return by_signature_.count(signature) != 0; }
  std::span<const INVOCATIONATOM* const> under(std::uint32_t signature) const;
  const std::deque<INVOCATIONATOM>& all() const { return invocations_; }

 private:
  std::deque<INVOCATIONATOM> invocations_;    // a deque: addresses stay put
  std::unordered_map<std::uint32_t, std::vector<const INVOCATIONATOM*>> by_signature_;
};

// The invocations of this process's program, and the signatures that wait to be expanded, the next
// one at the end.
InvocationTable& invhashmap();
std::vector<std::uint32_t>& schedule();

// The signature of an invocation written in the program: of its template's name and its actual
// predicates, their numbers in the predicate table and the kinds of their parameters.
std::uint32_t signature(const INVOCATIONATOM& invocation);

// The signature of an invocation that stands in a template body: the same over names brought back
// to what they were before the expansion around it.
std::uint32_t internal_signature(const INVOCATIONATOM& invocation, const BindingList& binding);

// Schedules the signature unless an invocation is recorded under it.
void insert_in_schedule(std::uint32_t signature);

// Schedules and records an invocation of the program.
void record_invocation(INVOCATIONATOM invocation);

// The arguments of the atom that replaces the invocation: the ordinary parameters of its actual
// predicates, then its output terms.
std::vector<TERMT> getAuxTerms(const INVOCATIONATOM& invocation);

// The marker atom's content as an invocation again.
INVOCATIONATOM invocation_of(const ATOMT& marker);

// "name[actual predicates] (output terms)", as legends and dumps show an invocation.
void append_invocation(Text& out, const INVOCATIONATOM& invocation);

}    // namespace zarel
