// parser_benchmark.cc - scanner and grammar, up to the clauses in memory.

#include <benchmark/benchmark.h>

#include "discarded_output.h"
#include "sample_text.h"

namespace zarel {
namespace {

void parses(benchmark::State& state, std::string (*text_of)(std::size_t)) {
  DiscardedOutput output;
  const auto count = static_cast<std::size_t>(state.range(0));
  const std::string program = text_of(count);
  for ([[maybe_unused]] auto _ : state) {
    output.begin_run();
    read_text(program);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(program.size()));
}

BENCHMARK_CAPTURE(parses, facts, fact_text)->Arg(10'000)->Arg(100'000)->Arg(1'000'000);
BENCHMARK_CAPTURE(parses, rules, rule_text)->Arg(10'000)->Arg(100'000);
BENCHMARK_CAPTURE(parses, frames, frame_text)->Arg(10'000)->Arg(100'000);
BENCHMARK_CAPTURE(parses, function_terms, function_rule_text)->Arg(10'000)->Arg(100'000);

}    // namespace
}    // namespace zarel
