#include <algorithm>
#include <map>
#include <utility>

#include "dl/instance_counts.h"
#include "dl/read_files.h"
#include "workbench/messages/words.h"
#include "workbench/search/search.h"
#include "workbench/search/solver_message.h"

namespace workbench {
namespace {

constexpr std::size_t kMostLines = 20;

std::string place_of(const zarel::Program& program, const dl::Sources& sources,
                     const zarel::SourceLocation& location) {
  std::string place;
  if (sources.name(location.file) != kRewrittenName) {
    place = sources.name(location.file);    // an include line's
    return (place += ':') += std::to_string(location.line);
  }
  const zarel::Place origin = program.origin_of_line(location.line).place;
  if (!origin.is_known()) return "what was added";
  place = program.files()[origin.first.file].name;
  return (place += ':') += std::to_string(origin.first.line);
}

}    // namespace

std::vector<std::string> profile_of(const zarel::Program& program, std::string text,
                                    const dl::Options& options) {
  const dl::InstanceCounts counts = dl::count_instances(
      dl::survey_with_files(std::string(kRewrittenName), std::move(text)), options);
  std::map<std::string, std::uint64_t> by_place;
  for (const dl::InstanceCount& count : counts.largest) {
    by_place[place_of(program, counts.sources, count.location)] += count.instances;
  }
  std::vector<std::pair<std::string, std::uint64_t>> places(by_place.begin(), by_place.end());
  std::ranges::stable_sort(places, std::greater<>(), [](const auto& each) { return each.second; });
  std::vector<std::string> lines;
  for (const auto& [place, instances] : places) {
    if (lines.size() == kMostLines) break;
    std::string line(place);
    lines.push_back((line += ": ") += counted(instances, "ground instance"));
  }
  if (places.size() > lines.size()) {
    lines.push_back(counted(places.size() - lines.size(), "further place") + " with fewer");
  }
  return lines;
}

}    // namespace workbench
