#include "workbench/syntax/syntax_foreign.h"

namespace workbench {

std::optional<Message> foreign_syntax(const Statement& statement) {
  for (const auto recognisers :
       {first_recognisers(), language_recognisers(), directive_recognisers(), sign_recognisers(),
        term_recognisers(), aggregate_recognisers(), clause_recognisers(), slip_recognisers()}) {
    for (const Recogniser recognise : recognisers) {
      if (auto message = recognise(statement)) return message;
    }
  }
  return std::nullopt;
}

std::string shortened(std::string_view text) {
  constexpr std::size_t kMost = 40;
  text = text.substr(0, text.find('\n'));
  if (text.size() <= kMost) return std::string(text);
  return std::string(text.substr(0, kMost)) + "...";
}

std::string filled(std::string_view text, std::initializer_list<std::string_view> pieces) {
  std::string result;
  for (const std::string_view piece : pieces) {
    const std::size_t mark = text.find("{}");
    if (mark == std::string_view::npos) break;
    result.append(text.substr(0, mark)).append(piece);
    text.remove_prefix(mark + 2);
  }
  return result.append(text);
}

}    // namespace workbench
