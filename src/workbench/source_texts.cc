#include "workbench/source_texts.h"

#include <fstream>
#include <sstream>
#include <utility>

namespace workbench {

SourceTexts::Loaded& SourceTexts::loaded(std::uint32_t file) {
  const auto [entry, is_new] = loaded_.try_emplace(file);
  Loaded& result = entry->second;
  if (!is_new) return result;
  const zarel::ReadFile& source = files_[file];
  if (!source.path.empty()) {
    std::ifstream in(source.path, std::ios::binary);
    std::ostringstream text;
    if (in) text << in.rdbuf();
    result.text = std::move(text).str();
  }
  result.view = source.path.empty() ? source.text : std::string_view(result.text);
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

std::string_view SourceTexts::line(std::uint32_t file, std::uint32_t line) {
  const Loaded& source = loaded(file);
  if (line == 0 || line > source.begins.size()) return {};
  const std::string_view rest = source.view.substr(source.begins[line - 1]);
  return rest.substr(0, rest.find('\n'));
}

}    // namespace workbench
