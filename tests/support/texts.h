#pragma once
// texts.h - long texts put together, and the names of the cases of a table.

#include <initializer_list>
#include <string>
#include <string_view>

namespace zarel {

inline constexpr auto case_name = [](const auto& test) { return std::string(test.param.name); };

inline std::string repeated(std::string_view text, std::size_t count) {
  std::string all;
  all.reserve(text.size() * count);
  for (std::size_t i = 0; i < count; ++i) all += text;
  return all;
}

// The text so many times, with its number for each N and the next number for each M.
inline std::string numbered(int count, std::string_view text, int first = 0) {
  std::string all;
  for (int i = first; i < first + count; ++i) {
    for (const char c : text) {
      all += c == 'N' ? std::to_string(i) : c == 'M' ? std::to_string(i + 1) : std::string(1, c);
    }
  }
  return all;
}

inline std::string joined(std::initializer_list<std::string_view> pieces) {
  std::string all;
  for (const std::string_view piece : pieces) all += piece;
  return all;
}

}    // namespace zarel
