// frame_molecules_benchmark.cc - attribute values, gathered for their objects and printed.

#include <benchmark/benchmark.h>

#include "output/frame_map.h"
#include "sample_text.h"

namespace zarel {
namespace {

FrameMap gathered(const std::vector<std::string>& objects) {
  FrameMap frames;
  for (const std::string& object : objects) {
    frames.add_value({object, "", "attribute", false, "->>", "value"});
  }
  return frames;
}

void gathers_values(benchmark::State& state) {
  const std::vector<std::string> objects = spellings(static_cast<std::size_t>(state.range(0)));
  for ([[maybe_unused]] auto _ : state) {
    const FrameMap frames = gathered(objects);
    benchmark::DoNotOptimize(&frames);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(gathers_values)->Arg(10'000)->Arg(100'000)->Arg(1'000'000);

void prints_molecules(benchmark::State& state) {
  const FrameMap frames = gathered(spellings(static_cast<std::size_t>(state.range(0))));
  std::string text;
  for ([[maybe_unused]] auto _ : state) {
    text.clear();
    frames.stringMolecules(text);
    benchmark::DoNotOptimize(text.data());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(prints_molecules)->Arg(10'000)->Arg(100'000)->Arg(1'000'000);

}    // namespace
}    // namespace zarel
