#pragma once
// check_context.h - what the checks of a program have in common.

#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/characters.h"
#include "model/run.h"
#include "parser/written_statement.h"
#include "workbench/messages/message.h"

namespace workbench {

class CheckContext {
 public:
  explicit CheckContext(const zarel::Run& run) : run_(run) {}

  const zarel::Run& run() const { return run_; }
  std::string_view spelling(zarel::NameId name) const { return run_.names.spelling(name); }
  std::string text(zarel::NameId name) const { return std::string(spelling(name)); }
  bool is_variable(zarel::NameId name) const { return zarel::is_upper_case(spelling(name)[0]); }

  zarel::Place place(const zarel::SourceSpan& span) const { return run_.files.place(span); }
  zarel::Place place(const zarel::WrittenStatement& of, const zarel::SourceRange& range) const {
    return place({of.span.file, range});
  }

  // The message is kept; what is returned may still be filled, until the next one is told. Of a
  // code that many statements have, the rest is kept without what it says.
  Message& tell(std::string_view code, const zarel::Place& place, std::string text);

  // Hands over all messages: errors first, which no number of warnings is to hide, each group in
  // the order of the text.
  void hand_over(const MessageSink& sink);

 private:
  static constexpr std::size_t kMostWhole = 10'000;    // of a code

  const zarel::Run& run_;
  std::vector<Message> messages_;
  std::unordered_map<std::string_view, std::size_t> counts_;    // by code
  std::vector<std::pair<std::string_view, zarel::Place>> rest_;
  Message spare_;
};

inline std::string concat(std::initializer_list<std::string_view> pieces) {
  std::string text;
  for (const std::string_view piece : pieces) text += piece;
  return text;
}

// "X" and 3 others is "X and 3 more".
inline std::string and_more(std::string text, std::size_t others, std::string_view what) {
  if (others == 0) return text;
  text.append(" and in ").append(std::to_string(others)).append(" other ").append(what);
  return others == 1 ? text : text.append("s");
}

}    // namespace workbench
