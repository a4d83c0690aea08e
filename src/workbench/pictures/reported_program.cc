#include "workbench/pictures/reported_program.h"

#include <algorithm>

#include "workbench/answers/json_text.h"

namespace workbench {
namespace {

constexpr std::size_t kMostLines = 2000;    // of a file

void append_file(std::string& out, std::string_view name, std::string_view text) {
  out += "{\"name\":";
  append_json_string(out, name);
  out += ",\"lines\":[";
  for (std::size_t line = 0; line < kMostLines && !text.empty(); ++line) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    if (line != 0) out += ',';
    append_json_string(out, text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  auto more = std::ranges::count(text, '\n');
  if (!text.empty() && text.back() != '\n') ++more;
  ((out += "],\"more\":") += std::to_string(more)) += '}';
}

}    // namespace

void append_program(std::string& out, const ReportedProgram& program) {
  out += "{\"files\":[";
  for (std::uint32_t file = 0; file < program.files.size(); ++file) {
    if (file != 0) out += ',';
    append_file(out, program.texts.name(file), program.texts.text(file));
  }
  out += "],\"messages\":[";
  const char* separator = "";
  for (const std::string& message : program.messages) {
    (out += separator) += message;
    separator = ",";
  }
  out += "]}";
}

}    // namespace workbench
