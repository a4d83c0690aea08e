#include "zarel/input_reader.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "model/run.h"
#include "parser/parse.h"
#include "zarel/input_file.h"

namespace zarel {
namespace {

// Room for about as many clauses as a text of this size can hold. Growing step by step, their list
// would touch twice the memory.
void make_room_for_clauses(std::uintmax_t size) {
  constexpr std::uintmax_t kShortClause = 12;    // bytes of text
  constexpr std::uintmax_t kMost = 4'000'000;    // clauses; memory that is not touched costs little
  const std::size_t wanted = CLAUSES().size() + std::min(size / kShortClause, kMost);
  const std::size_t capacity = CLAUSES().capacity();
  if (wanted > capacity) CLAUSES().reserve(std::max(wanted, 2 * capacity));
}

// 0 for what has no size, a pipe, say.
std::uintmax_t size_of(const std::string& path) {
  std::error_code no_size;
  const std::uintmax_t size = std::filesystem::file_size(path, no_size);
  return no_size ? 0 : size;
}

}    // namespace

void InputReader::read_file(const std::string& path, std::string_view shown_name,
                            const std::function<void()>& opened) {
  Run& run = current_run();
  const std::uint32_t number = run.files.add(shown_name, path);
  run.findings.parser_line = 0;
  const InputFile file(path);
  if (!file.is_open()) {
    report({Code::kUnreadableFile, place_of(SourceLocation{0, 0, number}), "can't open input"});
    return;
  }
  if (opened) opened();
  run.findings.parser_line = 1;
  make_room_for_clauses(size_of(path));
  parse_file(file.handle(), number, builder_, verbatim_);
}

void InputReader::read_text(std::string_view text, std::string_view shown_name) {
  Run& run = current_run();
  const std::uint32_t number = run.files.add(shown_name, {}, text);
  run.findings.parser_line = 1;
  make_room_for_clauses(text.size());
  parse_text(text, number, builder_, verbatim_);
}

void InputReader::read_facts(const std::string& path, std::string_view shown_name,
                             const std::function<void(FactBuilder&)>& give) {
  Run& run = current_run();
  const std::uint32_t number = run.files.add(shown_name, path);
  run.findings.parser_line = 1;
  make_room_for_clauses(size_of(path));
  FactBuilder facts(builder_, number);
  give(facts);
}

}    // namespace zarel
