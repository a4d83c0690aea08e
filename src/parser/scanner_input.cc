#include "parser/scanner_input.h"

#include "model/report.h"

namespace zarel {
namespace {

std::size_t read_from(std::FILE* file, char* buffer, std::size_t size) {
  const std::size_t length = std::fread(buffer, 1, size, file);
  if (length == 0 && std::ferror(file) != 0) scanner_failed("input in flex scanner failed");
  return length;
}

std::size_t read_from(std::string_view& text, char* buffer, std::size_t size) {
  const std::size_t length = text.copy(buffer, size);
  text.remove_prefix(length);
  return length;
}

}    // namespace

std::size_t ScannerInput::read(char* buffer, std::size_t size) {
  return std::visit([&](auto& source) { return read_from(source, buffer, size); }, source_);
}

void scanner_failed(const char* message) {
  report_and_end(Code::kReadFailure, message);
}

}    // namespace zarel
