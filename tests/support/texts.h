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

inline std::string joined(std::initializer_list<std::string_view> pieces) {
  std::string all;
  for (const std::string_view piece : pieces) all += piece;
  return all;
}

}    // namespace zarel
