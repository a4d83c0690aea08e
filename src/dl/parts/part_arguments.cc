#include "dl/parts/part_arguments.h"

#include <algorithm>
#include <charconv>

namespace dl {
namespace {

constexpr std::string_view kModels = "--models=";
constexpr std::string_view kOptMode = "--opt-mode=";
constexpr std::string_view kEnumMode = "--enum-mode=";
constexpr std::string_view kConfiguration = "--configuration=";

}    // namespace

SearchAim aim_of(const std::vector<std::string>& arguments) {
  SearchAim aim;
  for (const std::string_view word : arguments) {
    if (word.starts_with(kOptMode)) aim.has_costs = true;
    if (word.starts_with(kEnumMode)) {
      aim.has_query = true;
      aim.is_brave = word.ends_with("brave");
    }
    if (word.starts_with(kModels)) {
      std::from_chars(word.data() + kModels.size(), word.data() + word.size(), aim.limit);
    }
  }
  return aim;
}

std::vector<std::string> part_arguments(std::vector<std::string> arguments) {
  std::erase_if(arguments, [](std::string_view word) {
    return word.starts_with("--parallel-mode=") || word.starts_with("--stats") ||
           word.starts_with("--verbose=");
  });
  arguments.insert(arguments.begin(), {"--mode=clasp", "--verbose=0"});
  return arguments;
}

void limit_models(std::vector<std::string>& arguments, std::uint64_t most) {
  if (!aim_of(arguments).enumerates()) return;
  for (std::string& word : arguments) {
    if (word.starts_with(kModels)) word = std::string(kModels) + std::to_string(most);
  }
}

void bound_costs(std::vector<std::string>& arguments, std::int64_t highest) {
  for (std::string& word : arguments) {
    if (word.starts_with(kOptMode)) (word += ',') += std::to_string(highest);
  }
}

void set_configuration(std::vector<std::string>& arguments, std::string_view name) {
  std::erase_if(arguments, [](std::string_view word) { return word.starts_with(kConfiguration); });
  std::string word(kConfiguration);
  arguments.insert(arguments.begin(), word += name);
}

}    // namespace dl
