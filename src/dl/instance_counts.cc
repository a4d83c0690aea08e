#include "dl/instance_counts.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

#include "dl/answer_writer.h"
#include "dl/clingo_process.h"
#include "dl/clingo_run.h"
#include "dl/failure.h"
#include "dl/model_reader.h"

namespace dl {
namespace {

// clingo prints each instance of a rule on a line.
std::vector<std::uint64_t> instances_by_number(ClingoProcess& grounder, std::size_t numbers) {
  std::vector<std::uint64_t> counts(numbers, 0);
  LineReader reader(output_of(grounder));
  do {
    std::string_view line;
    while (reader.next(line)) {
      if (const std::optional<std::size_t> number = numbered_helper(line, "_i("))
        ++counts.at(*number);
    }
  } while (reader.wait());
  return counts;
}

}    // namespace

InstanceCounts count_instances(Program program, Options options) {
  options.counts_instances = true;
  ClingoProcess grounder;
  grounder.start(options.clingo, {"--mode=gringo", "--text", "--warn=none", "-"});
  Translated translated =
      translate(std::move(program), options, [&](std::string_view text) { grounder.write(text); });
  if (translated.mistake) throw Failure{*translated.mistake};
  grounder.write(translated.text);
  grounder.finish_input();
  const std::vector<zarel::SourceLocation>& counted = translated.parts.counted;
  const std::vector<std::uint64_t> counts = instances_by_number(grounder, counted.size());
  const ProcessEnd end = grounder.end();
  if (end.signalled || end.code != 0) {
    throw Failure{{zarel::Code::kSolverIncomplete,
                   {},
                   "clingo ended before all instances of the rules were counted"}};
  }
  std::map<std::pair<std::uint32_t, std::size_t>, InstanceCount> by_line;
  for (std::size_t i = 0; i < counts.size(); ++i) {
    InstanceCount& line = by_line[{counted[i].file, counted[i].line}];
    line.location = counted[i];
    line.instances += counts[i];
  }
  InstanceCounts result{std::move(translated.sources), {}};
  for (const auto& [place, line] : by_line) {
    if (line.instances != 0) result.largest.push_back(line);
  }
  std::ranges::stable_sort(result.largest, std::greater<>(), &InstanceCount::instances);
  return result;
}

}    // namespace dl
