// check_benchmark.cc - what it costs to look for mistakes while a program is read.

#include <benchmark/benchmark.h>
#include <optional>

#include "sample_text.h"
#include "workbench/checks/checks.h"
#include "zarel/program.h"

namespace workbench {
namespace {

enum class Looks : bool { kNo, kYes };

void reads(benchmark::State& state, std::string (*text_of)(std::size_t), Looks looks) {
  const std::string text = text_of(static_cast<std::size_t>(state.range(0)));
  std::size_t messages = 0;
  for ([[maybe_unused]] auto _ : state) {
    zarel::Program program;
    std::optional<Checks> checks;
    if (looks == Looks::kYes) checks.emplace(program, CheckOptions{});
    program.read_text(text, "sample");
    if (checks) checks->report([&messages](const Message&) { ++messages; });
    if (!program.findings().empty()) state.SkipWithError("the text was refused");
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

BENCHMARK_CAPTURE(reads, facts, zarel::fact_text, Looks::kNo)->Arg(1'000'000);
BENCHMARK_CAPTURE(reads, facts_checked, zarel::fact_text, Looks::kYes)->Arg(1'000'000);
BENCHMARK_CAPTURE(reads, rules, zarel::rule_text, Looks::kNo)->Arg(100'000);
BENCHMARK_CAPTURE(reads, rules_checked, zarel::rule_text, Looks::kYes)->Arg(100'000);
BENCHMARK_CAPTURE(reads, frames, zarel::frame_text, Looks::kNo)->Arg(100'000);
BENCHMARK_CAPTURE(reads, frames_checked, zarel::frame_text, Looks::kYes)->Arg(100'000);

}    // namespace
}    // namespace workbench
