#pragma once
// search_failure.h - why a search ends without a result.

#include <vector>

#include "workbench/messages/message.h"

namespace workbench {

// Thrown where a search cannot go on.
struct SearchFailure {
  Message message;
  std::vector<Message> further = {};
};

}    // namespace workbench
