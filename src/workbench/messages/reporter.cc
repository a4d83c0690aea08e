#include "workbench/messages/reporter.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "base/characters.h"
#include "workbench/messages/catalogue.h"
#include "workbench/messages/characters.h"
#include "workbench/messages/message_json.h"
#include "workbench/messages/message_text.h"
#include "workbench/messages/words.h"

namespace workbench {
namespace {

constexpr std::size_t kMostDrawn = 20;

bool is_in_code(char c) {
  return zarel::is_in_word(c) || c == '-';
}

// Adds the codes that the rest of a comment behind "%!" names, if it allows any.
void add_allowed(std::string_view comment, std::set<std::string, std::less<>>& codes) {
  constexpr std::string_view kAllow = "allow";
  comment = trimmed(comment);
  if (!comment.starts_with(kAllow)) return;
  comment.remove_prefix(kAllow.size());
  if (!comment.empty() && is_in_code(comment.front())) return;
  while (!comment.empty()) {
    std::size_t end = 0;
    while (end < comment.size() && is_in_code(comment[end])) ++end;
    if (end != 0) codes.emplace(comment.substr(0, end));
    comment.remove_prefix(std::max<std::size_t>(end, 1));
  }
}

}    // namespace

void Reporter::report(const Message& message) {
  const std::optional<Severity> severity = severity_of(message);
  if (!severity) return;
  if (*severity == Severity::kError) ++errors_;
  if (*severity == Severity::kWarning) ++warnings_;
  if (!is_holding_) return show(message, *severity);
  held_.push_back({message, *severity});
  if (drawn_ + held_.size() > kMostDrawn) release();
}

void Reporter::release() {
  is_holding_ = false;
  const auto place_of = [](const Held& held) {
    const zarel::Position& first = held.message.place.first;
    return std::tuple(first.file, first.line, first.column, held.severity);
  };
  std::ranges::stable_sort(held_, {}, place_of);
  const Message* error = nullptr;
  for (const Held& held : held_) {
    const bool is_known = held.message.place.is_known();
    if (held.severity == Severity::kError) error = &held.message;
    const bool is_same =
        error != nullptr && is_known && error->place.first == held.message.place.first;
    if (held.severity == Severity::kWarning && is_same) {
      --warnings_;
    } else {
      show(held.message, held.severity);
    }
  }
  held_.clear();
}

void Reporter::show(const Message& message, Severity severity) {
  if (listener_) listener_(message, severity);
  if (options_.as_json) {
    write(message_as_json(message, severity, texts_));
  } else if (drawn_ < kMostDrawn) {
    ++drawn_;
    const Colours colours = options_.in_colour ? Colours::kTerminal : Colours::kNone;
    write(workbench::drawn(message, severity, texts_, colours));
  } else {
    ++(severity == Severity::kError ? errors_left_out_ : warnings_left_out_);
  }
}

void Reporter::note(std::string_view text) {
  if (options_.is_quiet) return;
  write(options_.as_json ? note_as_json(text) : shown_text(text, text.size()) += '\n');
}

void Reporter::finish() {
  release();
  std::string text;
  if (errors_left_out_ != 0) text = counted(errors_left_out_, "more error");
  if (errors_left_out_ != 0 && warnings_left_out_ != 0) text += " and ";
  if (warnings_left_out_ != 0) text += counted(warnings_left_out_, "more warning");
  if (text.empty()) return;
  const bool is_one = errors_left_out_ + warnings_left_out_ == 1;
  write((text += is_one ? " is" : " are") += " not shown\n");
  errors_left_out_ = warnings_left_out_ = 0;
}

std::optional<Severity> Reporter::severity_of(const Message& message) {
  const Page* const page = page_of(message.code);
  if (page == nullptr || page->severity == Severity::kError) return Severity::kError;
  const bool is_error = options_.as_errors.contains(message.code);
  const bool is_on = page->is_on || is_error || options_.on.contains(message.code);
  if (!is_on || options_.off.contains(message.code) || is_allowed(message)) return std::nullopt;
  if (page->severity == Severity::kNote && options_.is_quiet) return std::nullopt;
  if (is_error) return Severity::kError;
  return page->severity == Severity::kWarning && options_.is_strict ? Severity::kError
                                                                    : page->severity;
}

bool Reporter::is_allowed(const Message& message) {
  if (!message.place.is_known()) return false;
  const std::uint32_t file = message.place.first.file;
  const auto [entry, is_new] = allowed_.try_emplace(file);
  if (is_new) {
    const std::string_view text = texts_.text(file);
    constexpr std::string_view kMark = "%!";
    for (std::size_t place = text.find(kMark); place != std::string_view::npos;) {
      const std::size_t end = std::min(text.find('\n', place), text.size());
      add_allowed(text.substr(place + kMark.size(), end - place - kMark.size()), entry->second);
      place = text.find(kMark, end);
    }
  }
  return entry->second.contains(message.code);
}

void Reporter::write(std::string_view text) {
  out_.write(text.data(), static_cast<std::streamsize>(text.size())).flush();
}

}    // namespace workbench
