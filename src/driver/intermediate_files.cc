#include "driver/intermediate_files.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <limits>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

#include "driver/diagnostics.h"
#include "model/program.h"
#include "zarel/program_text.h"

namespace zarel {
namespace {

[[noreturn]] void end_run(std::string_view message) {
  standard_error() << message << '\n';
  SafeExit(1);
}

[[noreturn]] void end_for_writing() {
  end_run("Intermediate rewriting file could not be written.");
}

void close_written(std::ofstream& file) {
  file.close();
  if (!file) end_for_writing();
}

// What the file holds so far; 0 when it is none that keeps what is written to it.
std::uintmax_t size_of(const char* name) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(name, error);
  return error ? 0 : size;
}

// Copies so much, or all there is, and returns how much that was and the last character.
std::pair<std::uintmax_t, char> copy(std::ifstream& in, std::uintmax_t most, std::ostream& out) {
  constexpr std::uintmax_t kPiece = std::uintmax_t{64} * 1024;
  std::vector<char> piece(kPiece);
  std::uintmax_t length = 0;
  char last = '\0';
  while (length < most) {
    in.read(piece.data(), static_cast<std::streamsize>(std::min(kPiece, most - length)));
    if (in.gcount() <= 0) break;
    out.write(piece.data(), in.gcount());
    length += static_cast<std::uintmax_t>(in.gcount());
    last = piece[static_cast<std::size_t>(in.gcount()) - 1];
  }
  return {length, last};
}

// Adds the last character a second time. An empty file is one that does not hold what was written.
void append_with_doubled_end(std::ofstream& out, std::ifstream& in) {
  const auto [length, last] = copy(in, std::numeric_limits<std::uintmax_t>::max(), out);
  if (in.bad() || length == 0) end_for_writing();
  out.put(last);
}

}    // namespace

IntermediateFiles::IntermediateFiles()
    : verbatim_(kSourceName, std::ios::trunc | std::ios::binary) {
  const std::ofstream legend(kLegendName, std::ios::trunc | std::ios::binary);
}

std::unique_ptr<std::ostream> IntermediateFiles::legend() {
  return std::make_unique<std::ofstream>(kLegendName, std::ios::app | std::ios::binary);
}

void IntermediateFiles::begin_program() {
  verbatim_.flush();
  source_.open(kSourceName, std::ios::app | std::ios::binary);
  if (!source_.is_open()) end_run("Intermediate rewriting file could not be opened.");
  if (!verbatim_) end_for_writing();
  for (const std::string& line : Includes()) source_ << line << '\n';
}

// Without anything to say the legend may stay unwritten (false); a query or a generated clause may
// not.
bool IntermediateFiles::write_legend() {
  std::ofstream legend(kLegendName, std::ios::app | std::ios::binary);
  if (!legend.is_open() && QUERIES().empty() && generated_clauses().empty()) return false;
  legend << '\n' << std::flush;
  generated_.begin = size_of(kLegendName);
  generated_.length = write_clauses(legend, generated_clauses()) + write_queries(legend);
  close_written(legend);
  return true;
}

void IntermediateFiles::write_program() {
  source_.flush();
  clauses_.begin = size_of(kSourceName);
  clauses_.length = write_clauses(source_, written_clauses());
  const bool has_legend = write_legend();
  source_ << '\n';
  if (has_legend) {
    std::ifstream legend(kLegendName, std::ios::binary);
    append_with_doubled_end(source_, legend);
  }
  close_written(source_);
}

// False when the file is none that keeps what was written; nothing is copied then.
bool IntermediateFiles::copy_part(const char* name, Part part, std::ostream& out) {
  std::ifstream file(name, std::ios::binary);
  if (!file.is_open() || size_of(name) < part.begin + part.length) return false;
  file.seekg(static_cast<std::streamoff>(part.begin));
  if (copy(file, part.length, out).first != part.length) end_for_writing();
  return true;
}

// Nothing is shown of a program that could not be written to its end, so it has to wait until it
// was; and what was written is read back in a tenth of the time that making its text takes.
void IntermediateFiles::show_program(std::ostream& out) const {
  if (!copy_part(kSourceName, clauses_, out)) write_clauses(out, written_clauses());
  if (copy_part(kLegendName, generated_, out)) return;
  write_clauses(out, generated_clauses());
  write_queries(out);
}

InputFile open_output() {
  constexpr mode_t kAsAShellMakesIt = 0666;
  const int file =
      ::open(kOutputName, O_RDWR | O_CREAT | O_TRUNC | O_NONBLOCK | O_CLOEXEC, kAsAShellMakesIt);
  InputFile output(file);
  struct stat status {};
  const bool is_file = file >= 0 && ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
  return is_file ? std::move(output) : InputFile(-1);
}

}    // namespace zarel
