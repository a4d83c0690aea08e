#pragma once
// search_failure.h - why a search ends without a result.

#include <iterator>
#include <utility>
#include <vector>

#include "workbench/messages/message.h"

namespace workbench {

// Thrown where a search cannot go on.
struct SearchFailure {
  Message message;
  std::vector<Message> further = {};
};

// Of one message at least.
inline SearchFailure search_failure(std::vector<Message> messages) {
  SearchFailure failure{std::move(messages.front())};
  failure.further.assign(std::make_move_iterator(messages.begin() + 1),
                         std::make_move_iterator(messages.end()));
  return failure;
}

}    // namespace workbench
