// printer_benchmark.cc - clauses to text.

#include <benchmark/benchmark.h>
#include <sstream>

#include "discarded_output.h"
#include "model/program.h"
#include "sample_text.h"
#include "zarel/program_text.h"

namespace zarel {
namespace {

std::int64_t printed_bytes() {
  std::ostringstream text;
  write_clauses(text, CLAUSES());
  return text.tellp();
}

void prints(benchmark::State& state, std::string (*text_of)(std::size_t)) {
  DiscardedOutput output;
  read_text(text_of(static_cast<std::size_t>(state.range(0))));
  for ([[maybe_unused]] auto _ : state) write_clauses(output.stream(), CLAUSES());
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(CLAUSES().size()));
  state.SetBytesProcessed(state.iterations() * printed_bytes());
}

BENCHMARK_CAPTURE(prints, facts, fact_text)->Arg(10'000)->Arg(100'000)->Arg(1'000'000);
BENCHMARK_CAPTURE(prints, rules, rule_text)->Arg(10'000)->Arg(100'000);
BENCHMARK_CAPTURE(prints, frames, frame_text)->Arg(100'000);

}    // namespace
}    // namespace zarel
