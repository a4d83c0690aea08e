// tables_benchmark.cc - the tables that every token and every atom goes through.

#include <benchmark/benchmark.h>

#include "discarded_output.h"
#include "model/atom.h"
#include "model/generic_atoms.h"
#include "model/name_table.h"
#include "model/predicate_table.h"
#include "model/term.h"
#include "sample_text.h"

namespace zarel {
namespace {

void count_items(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

// Nine of ten spellings are known already.
void interns_names(benchmark::State& state) {
  const std::vector<std::string> all = spellings(static_cast<std::size_t>(state.range(0)));
  for ([[maybe_unused]] auto _ : state) {
    NameTable table;
    for (const std::string& spelling : all) benchmark::DoNotOptimize(table.intern(spelling));
  }
  count_items(state);
}
BENCHMARK(interns_names)->Arg(10'000)->Arg(100'000)->Arg(1'000'000);

std::vector<NameId> interned(std::size_t count) {
  std::vector<NameId> ids;
  for (const std::string& spelling : spellings(count)) ids.push_back(names().intern(spelling));
  return ids;
}

void enters_predicates(benchmark::State& state) {
  const DiscardedOutput run;
  const std::vector<NameId> ids = interned(static_cast<std::size_t>(state.range(0)));
  for ([[maybe_unused]] auto _ : state) {
    PredicateTable table;
    for (const NameId id : ids) table.enter(id, 2, PREDICATE_NAMETS::TYPE::kUnknown);
  }
  count_items(state);
}
BENCHMARK(enters_predicates)->Arg(100'000)->Arg(1'000'000);

void makes_terms(benchmark::State& state) {
  const DiscardedOutput run;
  const std::vector<NameId> ids = interned(static_cast<std::size_t>(state.range(0)));
  for ([[maybe_unused]] auto _ : state) {
    for (const NameId id : ids) benchmark::DoNotOptimize(newTERMT(id));
  }
  count_items(state);
}
BENCHMARK(makes_terms)->Arg(100'000)->Arg(1'000'000);

void encodes_atoms(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  for ([[maybe_unused]] auto _ : state) {
    const DiscardedOutput run;    // the program's storage would grow without end
    const NameId space = names().intern("default");
    const NameId name = names().intern("edge");
    const std::vector<TERMT> terms = {newTERMT("a"), newTERMT("b"), TERMT::integer(1)};
    for (std::size_t i = 0; i < count; ++i) {
      benchmark::DoNotOptimize(encoded_atom(name, space, terms, Negation::kNone));
    }
  }
  count_items(state);
}
BENCHMARK(encodes_atoms)->Arg(100'000)->Arg(1'000'000);

}    // namespace
}    // namespace zarel
