#pragma once
// expected_words.h - what could stand in place of a refused token, as one says it.

#include <span>
#include <string_view>
#include <vector>

namespace zarel {

inline constexpr std::string_view kFullStop = "a full stop";
inline constexpr std::string_view kQuestionMark = "a question mark";

// Of the grammar's names of tokens: a few words, those first that help most. Many alternatives have
// one word together, such as "a literal"; what is seldom meant has none.
std::vector<std::string_view> expected_words(std::span<const std::string_view> tokens);

}    // namespace zarel
