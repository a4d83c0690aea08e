#include "workbench/arguments/option_checks.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace workbench {

CLI::Validator whole_number(std::uint64_t least, std::uint64_t most) {
  const auto check = [least, most](const std::string& text) {
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool is_whole = error == std::errc() && end == text.data() + text.size();
    if (is_whole && value >= least && value <= most) return std::string();
    std::string wanted = "a whole number";
    if (least != 0) (wanted += " from ") += std::to_string(least);
    if (most != kGreatestCount) (wanted += least != 0 ? " to " : " up to ") += std::to_string(most);
    return wanted + " is needed, not " + text;
  };
  return CLI::Validator(check, "");
}

CLI::Validator seconds() {
  const auto check = [](const std::string& text) {
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    const bool is_number = !text.empty() && *end == '\0' && std::isfinite(value);
    return is_number && value > 0 ? std::string() : "seconds are needed, not " + text;
  };
  return CLI::Validator(check, "");
}

CLI::Validator one_of(std::vector<std::string> words) {
  const auto check = [words = std::move(words)](const std::string& text) {
    if (std::ranges::find(words, text) != words.end()) return std::string();
    return "one of " + listed(words) + " is needed, not " + text;
  };
  return CLI::Validator(check, "");
}

std::string listed(const std::vector<std::string>& words) {
  std::string list;
  for (const std::string& word : words) (list += list.empty() ? "" : ", ") += word;
  return list;
}

std::string with_hint(std::string text, std::string_view meant) {
  if (!meant.empty()) ((text += "; did you mean ") += meant) += '?';
  return text;
}

}    // namespace workbench
