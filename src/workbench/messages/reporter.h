#pragma once
// reporter.h - takes messages, decides which are shown, counts them, and has them drawn.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "workbench/messages/message.h"
#include "workbench/messages/source_texts.h"

namespace workbench {

// What the user asked for.
struct MessageOptions {
  bool as_json = false;
  bool in_colour = false;
  bool is_quiet = false;                                // no notes
  bool is_strict = false;                               // warnings count as errors
  std::set<std::string, std::less<>> off = {};          // -W no-CODE
  std::set<std::string, std::less<>> on = {};           // -W CODE
  std::set<std::string, std::less<>> as_errors = {};    // -W error=CODE
};

class Reporter {
 public:
  // All must outlive the reporter.
  Reporter(const MessageOptions& options, SourceTexts& texts, std::ostream& out)
      : options_(options), texts_(texts), out_(out) {}

  // Draws the message at once. One that is switched off, by an option or by a comment
  // "%! allow CODE" in its file, is as if it had not been; behind the first 20 they are counted
  // alone, but as JSON, which programs read, all are written.
  void report(const Message& message);

  // From now on messages wait for each other, as far as they would all be drawn, and come in the
  // order of the text, what has no place last. A warning at the place of an error is left out.
  void hold() { is_holding_ = true; }
  void release();

  // Is told of every message that is not switched off, drawn or only counted.
  using Listener = std::function<void(const Message&, Severity)>;
  void tell_also(Listener listener) { listener_ = std::move(listener); }

  // A line that belongs to the run as a whole, such as "2 answer sets". Not with is_quiet.
  void note(std::string_view text);

  // Releases, and tells how many were counted and not drawn, if any.
  void finish();

  std::size_t errors() const { return errors_; }    // those made of warnings among them
  std::size_t warnings() const { return warnings_; }

 private:
  struct Held {
    Message message;
    Severity severity;
  };

  void show(const Message& message, Severity severity);
  std::optional<Severity> severity_of(const Message& message);    // none: it is switched off
  bool is_allowed(const Message& message);                        // by a comment in its file
  void write(std::string_view text);

  const MessageOptions& options_;
  SourceTexts& texts_;
  std::ostream& out_;
  Listener listener_;
  std::size_t errors_ = 0;
  std::size_t warnings_ = 0;
  std::size_t drawn_ = 0;
  bool is_holding_ = false;
  std::vector<Held> held_;
  std::size_t errors_left_out_ = 0;
  std::size_t warnings_left_out_ = 0;
  std::unordered_map<std::uint32_t, std::set<std::string, std::less<>>> allowed_;    // by file
};

}    // namespace workbench
