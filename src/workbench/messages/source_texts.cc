#include "workbench/messages/source_texts.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

namespace workbench {

namespace {

namespace fs = std::filesystem;

// A pipe is not read a second time: its text is gone, and one might wait for ever.
std::string text_of_file(const std::string& path) {
  std::error_code error;
  if (!fs::is_regular_file(path, error)) return {};
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  if (in) text << in.rdbuf();
  return std::move(text).str();
}

}    // namespace

SourceTexts::Loaded& SourceTexts::loaded(std::uint32_t file) {
  const auto [entry, is_new] = loaded_.try_emplace(file);
  Loaded& result = entry->second;
  if (!is_new) return result;
  const zarel::ReadFile& source = files_[file];
  if (!source.path.empty()) result.text = text_of_file(source.path);
  result.view = source.path.empty() ? source.text : std::string_view(result.text);
  if (result.view.empty()) return result;
  result.begins.push_back(0);
  for (std::size_t end = result.view.find('\n'); end != std::string_view::npos;
       end = result.view.find('\n', end + 1)) {
    result.begins.push_back(end + 1);
  }
  return result;
}

std::string_view SourceTexts::text(std::uint32_t file) {
  return loaded(file).view;
}

std::uint32_t SourceTexts::column(const zarel::Position& position) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  const bool is_behind_mark = position.line == 1 && position.column > kByteOrderMark.size() &&
                              text(position.file).starts_with(kByteOrderMark);
  return position.character - (is_behind_mark ? 1 : 0);
}

bool SourceTexts::has_line(std::uint32_t file, std::uint32_t line) {
  return line != 0 && line <= loaded(file).begins.size();
}

std::string_view SourceTexts::line(std::uint32_t file, std::uint32_t line) {
  if (!has_line(file, line)) return {};
  const Loaded& source = loaded(file);
  const std::size_t begin = source.begins[line - 1];
  const bool is_last = line == source.begins.size();
  return source.view.substr(begin, is_last ? source.view.npos : source.begins[line] - 1 - begin);
}

std::size_t SourceTexts::offset(std::uint32_t file, std::uint32_t line, std::uint32_t column) {
  const Loaded& source = loaded(file);
  if (line == 0 || line > source.begins.size()) return source.view.size();
  return std::min(source.begins[line - 1] + column - 1, source.view.size());
}

}    // namespace workbench
