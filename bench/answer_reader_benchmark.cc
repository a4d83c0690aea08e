// answer_reader_benchmark.cc - answer sets, read and printed.

#include <benchmark/benchmark.h>

#include "discarded_output.h"
#include "output/answer_set_reader.h"
#include "output/display_settings.h"
#include "sample_text.h"

namespace zarel {
namespace {

void read_repeatedly(benchmark::State& state, const std::string& answers) {
  DiscardedOutput output;
  for ([[maybe_unused]] auto _ : state) {
    if (read_answer_sets(answers) != 0) state.SkipWithError("answers were refused");
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(answers.size()));
}

void reads_one_answer_set(benchmark::State& state) {
  read_repeatedly(state, answer_set_text(static_cast<std::size_t>(state.range(0))));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(reads_one_answer_set)->Arg(10'000)->Arg(100'000)->Arg(1'000'000);

void reads_answer_sets_of_20_atoms(benchmark::State& state) {
  constexpr std::size_t kAtoms = 20;
  const std::string one = answer_set_text(kAtoms);
  std::string answers;
  for (std::int64_t i = 0; i < state.range(0); ++i) answers += one;
  read_repeatedly(state, answers);
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(reads_answer_sets_of_20_atoms)->Arg(1'000)->Arg(10'000);

void reads_frames(benchmark::State& state) {
  read_repeatedly(state, frame_answer_set_text(static_cast<std::size_t>(state.range(0))));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(reads_frames)->Arg(10'000)->Arg(100'000)->Arg(1'000'000);

}    // namespace
}    // namespace zarel
