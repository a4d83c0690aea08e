#include "dl/search_plan.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "dl/clingo_failure.h"
#include "dl/clingo_run.h"
#include "dl/cores.h"

namespace dl {
namespace {

constexpr std::size_t kPartsOfWorker =
    16;    // so that the longest is small against a worker's share
constexpr std::string_view kKinds[] = {"plain", "race", "parts", "auto"};

std::optional<std::size_t> number_in(std::string_view text) {
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

}    // namespace

bool is_configuration(std::string_view name) {
  return name == kRaceWord || std::ranges::find(kConfigurations, name) != std::end(kConfigurations);
}

std::string configuration_list() {
  std::string list;
  for (const std::string_view name : kConfigurations) (list += name) += ", ";
  list.erase(list.size() - 2);
  return (list += " or ") += kRaceWord;
}

// Note [threads]
// clasp 3.3.5, which is that of clingo 5.4.1, can omit answer sets when several threads enumerate
// them; its authors say so of all before 3.3.9, which came with clingo 5.6. There the threads get
// parts of the search instead, which have nothing in common.
constexpr int kThreadsMended = 6;

SearchPlan plan_search(const Options& options, const Traits& traits) {
  SearchPlan plan;
  plan.clingo = options.clingo;
  plan.arguments = clingo_arguments(options, traits);
  plan.workers = options.threads > 1 ? static_cast<std::size_t>(options.threads) : cores();
  plan.parts = options.parts == 0 ? kPartsOfWorker * plan.workers : options.parts;
  plan.cuts_easy_parts = options.parts != 0;
  // What asks for answer sets that show the same but once would get one from each part.
  if (options.differ_in_shown || options.question != QuestionKind::kNone) return plan;
  if (options.configuration == kRaceWord) {
    plan.kind = SearchKind::kRace;
  } else if (options.cuts == Cuts::kAuto) {
    plan.kind = SearchKind::kAuto;
  } else if (options.cuts == Cuts::kLocal ||
             (options.threads > 1 && !traits.has_query && options.answer_sets != 1 &&
              is_older_clingo(options.clingo, kThreadsMended))) {
    plan.kind = SearchKind::kParts;
  }
  return plan;
}

SearchCommand command_of(const SearchPlan& plan) {
  if (plan.kind == SearchKind::kPlain) return {plan.clingo, plan.arguments};
  SearchCommand command{
      "/proc/self/exe",
      {std::string(kDivideSearch), std::string(kKinds[static_cast<std::size_t>(plan.kind)]),
       std::to_string(plan.workers), std::to_string(plan.parts), plan.cuts_easy_parts ? "1" : "0",
       plan.clingo}};
  command.arguments.insert(command.arguments.end(), plan.arguments.begin(), plan.arguments.end());
  return command;
}

std::optional<SearchPlan> read_plan(std::span<char* const> arguments) {
  constexpr std::size_t kFixed = 5;
  if (arguments.size() < kFixed) return std::nullopt;
  const auto* const kind = std::ranges::find(kKinds, std::string_view(arguments[0]));
  const std::optional<std::size_t> workers = number_in(arguments[1]);
  const std::optional<std::size_t> parts = number_in(arguments[2]);
  if (kind == std::end(kKinds) || !workers || !parts) return std::nullopt;
  SearchPlan plan{static_cast<SearchKind>(kind - kKinds), arguments[4], {}, *workers, *parts,
                  std::string_view(arguments[3]) == "1"};
  plan.arguments.assign(arguments.begin() + kFixed, arguments.end());
  return plan;
}

}    // namespace dl
