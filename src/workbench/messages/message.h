#pragma once
// message.h - what `zrl` tells its user, as a value: how it is drawn is another matter.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/diagnostic.h"
#include "base/place.h"

namespace workbench {

enum class Severity : std::uint8_t { kError, kWarning, kNote };

std::string_view word_for(Severity severity);    // "error"

// A change of the text that mends what is wrong.
struct Fix {
  enum class Kind : std::uint8_t { kReplace, kInsertBefore, kInsertBehind };
  Kind kind = Kind::kReplace;
  zarel::Place place;
  std::string text;
};

struct Message {
  std::string_view code;                  // a name in the catalogue, which says how severe it is
  zarel::Place place;                     // not known where no text is at fault
  std::string text;                       // one line, in the user's words, without a full stop
  std::string label = {};                 // what is said under the underlined range; may be empty
  std::vector<zarel::Note> notes = {};    // further places
  std::string help = {};                  // how it is mended, where that is plain
  std::vector<Fix> fixes = {};
};

using MessageSink = std::function<void(Message)>;

}    // namespace workbench
