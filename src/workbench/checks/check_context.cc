#include "workbench/checks/check_context.h"

#include <algorithm>
#include <tuple>

#include "workbench/messages/catalogue.h"

namespace workbench {
namespace {

bool is_error(std::string_view code) {
  const Page* const page = page_of(code);
  return page == nullptr || page->severity == Severity::kError;
}

auto order_of(const Message& message) {
  const zarel::Position& first = message.place.first;
  return std::make_tuple(!is_error(message.code), first.file, first.line, first.column);
}

}    // namespace

Message& CheckContext::tell(std::string_view code, const zarel::Place& place, std::string text) {
  if (++counts_[code] <= kMostWhole) {
    return messages_.emplace_back(Message{code, place, std::move(text)});
  }
  rest_.emplace_back(code, place);
  spare_ = Message{};
  return spare_;
}

void CheckContext::hand_over(const MessageSink& sink) {
  std::ranges::stable_sort(messages_, {}, order_of);
  for (Message& message : messages_) sink(std::move(message));
  for (const auto& [code, place] : rest_) sink({code, place, std::string(page_of(code)->title)});
  messages_.clear();
  rest_.clear();
}

}    // namespace workbench
